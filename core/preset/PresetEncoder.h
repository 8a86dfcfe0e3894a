#pragma once
#include <string>
#include <string_view>

#include "editor/EditorState.h"
#include "memimage/MemImageState.h"
#include "midilink/MidiConfig.h"

namespace tavlo {

// The preset dump of the editor's preset, byte for byte as the device takes
// it. Reads the model and device identifier from the MIDI settings, the setup
// scene's line from SelectPresetSceneCombo and the scene positions from the
// memory image's SceneList. Callers commit pending edits (UpdateDefs) first.
std::string Form2PresetSysex(const EditorState& editor, const MemImageState& memImage, const MidiConfig& midi);

// The dump carries no checksum; this stays for callers that ask, and is 0.
int CheckSum(std::string_view message);

}  // namespace tavlo
