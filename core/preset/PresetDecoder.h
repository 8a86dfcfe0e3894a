#pragma once
#include <string>
#include <string_view>

#include "editor/EditorState.h"
#include "memimage/MemImageState.h"
#include "midilink/MidiConfig.h"
#include "midistrings/StringNotation.h"

namespace tavlo {

class Prompter;

struct DecodeResult {
    bool ok = true;
    std::string reason;  // why a damaged dump was refused
};

// Reads a preset dump into the editor: preset fields, captions, the scene
// lists, the setup string and every control's substrings. The caller hands
// it a dump of the right kind (IsPresetDump) over an initialised preset and
// runs UpdateINITData afterwards.
//
// The dump is walked with every position checked: a dump that would read
// past its end, holds a byte that is no nibble where nibbles stand, or names
// a list entry that doesn't exist is refused with a reason, and the editor is
// left exactly as it was. A dump that decodes is taken whole; the message of
// a setup scene on the PC1600 comes only then.
DecodeResult PresetSysex2Form(std::string_view dump, EditorState& editor, const MemImageState& memImage,
                              const MidiConfig& midi, Prompter& prompter);

// BSceneCombo takes the memory image's 100 scene lines, SelectPresetSceneCombo
// "<none>" and the same lines; the lines' data are temporary references,
// minus (the SceneList data plus 3), resolved once the owners are stored.
void FillDumpSceneLists(EditorState& editor, const ListState& sceneList);

// A string's device bytes in notation: two upper-case hexadecimal digits a
// byte, FE as "gc" (with "-gc" on a status when it is the second byte), FF
// as "pr" in a fader string and "rv" in others, FD as "dv", FC as "cs" in a
// fader string; a button or setup string keeps FC, already calculated.
std::string DeviceStringToNotation(std::string_view bytes, StringContext context);

inline constexpr const char* kIncompatibleTitle = "Incompatibility to PC1600";
inline constexpr const char* kIncompatibleSetupSceneText =
    "This Preset has a Setup Scene, which is incompatible with your PC1600 (non-X) model.  The Setup Scene will be "
    "set to <none>.  Be sure to Store this Preset in the Pool if you'd like this compatibility change to be "
    "permanent.";

}  // namespace tavlo
