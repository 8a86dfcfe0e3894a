#pragma once
#include <string>
#include <string_view>

#include <array>
#include <utility>
#include <vector>

#include "preset/WorkingPreset.h"
#include "sysex/StringNotation.h"
#include "ui/ListState.h"

namespace tavlo {

struct DecodeResult {
    bool ok = true;
    std::string reason;  // why a damaged dump was refused
};

// What a preset dump decodes into: the preset with the panel's captions,
// the scene lists its scene numbers are read through, and the messages the
// user is to see once the dump is taken.
struct DecodedPreset {
    WorkingPreset preset;
    std::array<std::string, kFaderCount> FaderLabel{};
    std::array<std::string, kButtonCount> PCButton{};
    ListState BSceneCombo;
    ListState SelectPresetSceneCombo;
    std::vector<std::pair<std::string, std::string>> messages;  // title, text
};

// Reads a preset dump over `into`, which holds an initialised preset: fields
// the dump doesn't carry keep their values. `imageScenes` is the memory
// image's SceneList, whose lines the dump's scene numbers name. The caller
// hands it a dump of the right kind (IsPresetDump).
//
// The dump is walked with every position checked: a dump that would read
// past its end, holds a byte that is no nibble where nibbles stand, or names
// a list entry that doesn't exist is refused with a reason, and `into` is
// left exactly as it was.
DecodeResult DecodePresetDump(std::string_view dump, const ListState& imageScenes, bool pc1600Model,
                              DecodedPreset& into);

// BSceneCombo takes the memory image's 100 scene lines, SelectPresetSceneCombo
// "<none>" and the same lines; the lines' data are temporary references,
// minus (the SceneList data plus 3), resolved once the owners are stored.
void FillDumpSceneLists(ListState& BSceneCombo, ListState& SelectPresetSceneCombo, const ListState& sceneList);

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
