// VirtualPC1600::loadMemory, what tavlo-vdevice --load does with a .syx
// file, on any bytes: it takes the dumps it can or says why it took none,
// and the memory it is left with still dumps whole.
#include <cstddef>
#include <cstdint>
#include <string>

#include "sysex/AllGlobalsDump.h"
#include "sysex/AllPresetsDump.h"
#include "sysex/AllScenesDump.h"
#include "midilink/VirtualPC1600.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    for (bool pc1600Model : {false, true}) {
        tavlo::VirtualDeviceSettings settings;
        settings.pc1600Model = pc1600Model;
        tavlo::VirtualPC1600 device(settings);
        const std::string before = device.memoryAsSyx();
        std::string error;
        if (!device.loadMemory(bytes, error)) {
            if (error.empty() || device.memoryAsSyx() != before) __builtin_trap();
            continue;
        }
        if (!tavlo::ParseAllPresetsDump(device.allPresetsDump())) __builtin_trap();
        if (!tavlo::IsAllScenesDump(device.allScenesDump())) __builtin_trap();
        if (!tavlo::IsAllGlobalsDump(device.allGlobalsDump())) __builtin_trap();
    }
    return 0;
}
