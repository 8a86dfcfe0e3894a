#pragma once
#include <string>
#include <string_view>

#include "preset/WorkingPreset.h"
#include "ui/ListState.h"

namespace tavlo {

// The scenes a preset dump refers to by number: the memory image's SceneList,
// whose line a scene has is its number, and the line of the setup scene as
// the editor shows it ("<none>" when the preset has none).
struct DumpScenes {
    const ListState& imageScenes;
    std::string_view setupSceneLine;
};

// The preset dump of a preset, byte for byte as the device takes it, for
// the model and the device identifier given.
std::string Form2PresetSysex(const WorkingPreset& preset, const DumpScenes& scenes, bool pc1600Model, int deviceId);

// The dump carries no checksum; this stays for callers that ask, and is 0.
int CheckSum(std::string_view message);

}  // namespace tavlo
