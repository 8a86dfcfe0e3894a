#include "midilink/VirtualPC1600.h"
#include "preset/PresetEncoder.h"

namespace tavlo {

std::string InitializedPresetDump(bool pc1600Model) {
    // A cleared device holds what the encoder makes of a fresh preset under
    // the reserved name: nothing is written here by hand.
    WorkingPreset preset;
    preset.Name = kInitializedName;
    const ListState noImage;
    return Form2PresetSysex(preset, {noImage, kNoScene}, pc1600Model, 0);
}

}  // namespace tavlo
