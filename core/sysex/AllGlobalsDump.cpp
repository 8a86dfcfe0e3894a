#include "sysex/AllGlobalsDump.h"

#include "sysex/DeviceMessages.h"

namespace tavlo {

std::string DefaultAllGlobalsDump(int deviceId, bool pc1600Model) {
    std::string dump = DeviceDumpHeader(deviceId, DeviceCommand::AllGlobals);
    for (int map = 1; map <= 3; ++map)
        for (int program = 0; program < 128; ++program) {
            int value = 0;
            if (map < 3) value = program < 50 ? program : 0;
            else value = program < 78 ? program + 50 : 50;
            dump += static_cast<char>(value);
        }
    dump.resize(kAllGlobalsLengthX - 1, '\0');
    dump[GlobalsOffset::DeviceNumber] = static_cast<char>(deviceId & 0x7F);
    if (pc1600Model) {
        // The original model sends F7 in the record channel's place; that is
        // how a receiver tells its dumps apart.
        dump[GlobalsOffset::RecordChannel] = '\xF7';
        dump.resize(kAllGlobalsLength1600 - 1);
    }
    dump += '\xF7';
    return dump;
}

bool IsAllGlobalsDump(std::string_view dump) {
    return DeviceMessageCommand(dump) == DeviceCommand::AllGlobals &&
           (dump.size() == kAllGlobalsLengthX || dump.size() == kAllGlobalsLength1600) &&
           static_cast<unsigned char>(dump.back()) == 0xF7;
}

}  // namespace tavlo
