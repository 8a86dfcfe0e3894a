// IsAllGlobalsDump and SplitSysex on anything: the stream splits into whole
// messages from F0 to F7 within the input, an original PC1600's ALL GLOBALS
// (an F7 inside) stays whole, and an accepted dump is stored by the virtual
// device and given back byte for byte.
#include <cstddef>
#include <cstdint>
#include <string>

#include "sysex/AllGlobalsDump.h"
#include "sysex/DeviceMessages.h"
#include "midilink/VirtualPC1600.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    std::size_t total = 0;
    for (const std::string& message : tavlo::SplitSysex(bytes)) {
        if (message.size() < 2 || message.front() != '\xF0' || message.back() != '\xF7') __builtin_trap();
        total += message.size();
        if (!tavlo::IsAllGlobalsDump(message)) continue;
        tavlo::VirtualDeviceSettings settings;
        settings.deviceId = static_cast<unsigned char>(message[tavlo::kDeviceIdOffset]);
        tavlo::VirtualPC1600 device(settings);
        device.receive(message);
        // The identifier byte comes back as the device's own, seven bits.
        if (device.allGlobalsDump().substr(tavlo::kCommandOffset) != message.substr(tavlo::kCommandOffset))
            __builtin_trap();
    }
    if (total > bytes.size()) __builtin_trap();
    return 0;
}
