// The ALL GLOBALS decoder and SplitSysex on anything: the stream splits into
// whole messages from F0 to F7 within the input, an original PC1600's ALL
// GLOBALS (an F7 inside) stays whole, a dump read on either model writes back
// as one that reads the same, and the virtual device gives back what it took.
#include <cstddef>
#include <cstdint>
#include <string>

#include "globals/GlobalSettings.h"
#include "midilink/VirtualPC1600.h"
#include "sysex/AllGlobalsDump.h"
#include "sysex/DeviceMessages.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    std::size_t total = 0;
    for (const std::string& message : tavlo::SplitSysex(bytes)) {
        if (message.size() < 2 || message.front() != '\xF0' || message.back() != '\xF7') __builtin_trap();
        total += message.size();
        for (const bool pc1600 : {false, true}) {
            const tavlo::DecodedGlobals decoded = tavlo::Sysex2GlobalForm(message, pc1600);
            if (!decoded.settings) {
                if (decoded.problem.empty()) __builtin_trap();
                continue;
            }
            const auto again = tavlo::GlobalForm2Sysex(*decoded.settings, pc1600, 0);
            if (!again) __builtin_trap();
            const tavlo::DecodedGlobals reread = tavlo::Sysex2GlobalForm(*again, pc1600);
            if (!reread.settings || *reread.settings != *decoded.settings) __builtin_trap();
            // The virtual device of the same model keeps what it was sent.
            tavlo::VirtualDeviceSettings settings;
            settings.pc1600Model = pc1600;
            tavlo::VirtualPC1600 device(settings);
            device.receive(tavlo::DeviceDumpHeader(0, tavlo::DeviceCommand::AllGlobals) + message.substr(7));
            const tavlo::DecodedGlobals kept = tavlo::Sysex2GlobalForm(device.allGlobalsDump(), pc1600);
            if (!pc1600 && (!kept.settings || *kept.settings != *decoded.settings)) __builtin_trap();
        }
    }
    if (total > bytes.size()) __builtin_trap();
    return 0;
}
