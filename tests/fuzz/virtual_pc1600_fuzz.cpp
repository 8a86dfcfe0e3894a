// The virtual PC1600 fed any MIDI traffic: the first byte picks its
// identifier and model, the rest is cut into messages after each F7. Every
// reply is a whole message of the family, and whatever it was sent, its
// memory still dumps, and the dumps load into another device unchanged.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "sysex/AllGlobalsDump.h"
#include "sysex/AllPresetsDump.h"
#include "sysex/AllScenesDump.h"
#include "sysex/DeviceMessages.h"
#include "midilink/VirtualPC1600.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    tavlo::VirtualDeviceSettings settings;
    settings.deviceId = data[0] & 0x0F;
    settings.pc1600Model = (data[0] & 0x10) != 0;
    tavlo::VirtualPC1600 device(settings);
    const std::string_view traffic(reinterpret_cast<const char*>(data + 1), size - 1);
    std::size_t at = 0;
    while (at < traffic.size()) {
        std::size_t end = traffic.find('\xF7', at);
        end = end == std::string_view::npos ? traffic.size() : end + 1;
        for (const std::string& reply : device.receive(traffic.substr(at, end - at)))
            if (tavlo::DeviceMessageId(reply) != settings.deviceId || reply.back() != '\xF7') __builtin_trap();
        at = end;
    }
    if (!tavlo::ParseAllPresetsDump(device.allPresetsDump())) __builtin_trap();
    if (!tavlo::IsAllScenesDump(device.allScenesDump())) __builtin_trap();
    if (!tavlo::IsAllGlobalsDump(device.allGlobalsDump())) __builtin_trap();
    if (device.selectedPreset() < 0 || device.selectedPreset() >= 50) __builtin_trap();
    tavlo::VirtualPC1600 copy(settings);
    std::string error;
    if (!copy.loadMemory(device.memoryAsSyx(), error)) __builtin_trap();
    if (copy.memoryAsSyx() != device.memoryAsSyx()) __builtin_trap();
    return 0;
}
