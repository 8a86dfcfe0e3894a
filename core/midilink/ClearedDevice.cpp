#include "midilink/VirtualPC1600.h"

namespace tavlo {

std::string InitializedPresetDump(bool /*pc1600Model*/) {
    // Filled in from the preset encoder.
    return {};
}

}  // namespace tavlo
