#pragma once
#include <string>
#include <string_view>

#include "preset/PresetDecoder.h"

namespace tavlo {

class Prompter;
struct EditorState;
struct MidiConfig;

// The editor's preset as the device takes it: its setup scene as the editor
// shows it, scene numbers from the memory image's SceneList, the model and
// device identifier from the MIDI settings. Callers commit pending edits
// (UpdateDefs) first.
std::string EditorPresetSysex(const EditorState& editor, const ListState& imageScenes, const MidiConfig& midi);

// A decode into the editor starts from what the editor holds.
DecodedPreset DecodingFrom(const EditorState& editor);
// Makes a decoded preset the editor's: preset, captions and scene lists,
// the first fader and button selected; then shows the decode's messages.
void TakeDecodedPreset(EditorState& editor, DecodedPreset decoded, Prompter& prompter);

// PresetSysex2Form: decodes a preset dump into the editor, or refuses it
// with the reason and leaves the editor exactly as it was. The caller runs
// UpdateINITData afterwards.
DecodeResult PresetSysex2Form(std::string_view dump, EditorState& editor, const ListState& imageScenes,
                              bool pc1600Model, Prompter& prompter);

}  // namespace tavlo
