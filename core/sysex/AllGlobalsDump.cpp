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
        // The original model sends F7 in the record channel's place and ends
        // there; that is how a receiver tells its dumps apart.
        dump.resize(GlobalsOffset::RecordChannel);
    } else {
        dump[GlobalsOffset::StartingNote] = 60;
    }
    dump += '\xF7';
    return dump;
}

bool IsDevice1600GlobalsDump(std::string_view dump) {
    return dump.size() > GlobalsOffset::RecordChannel &&
           static_cast<unsigned char>(dump[GlobalsOffset::RecordChannel]) == 0xF7;
}

bool IsAllGlobalsDump(std::string_view dump) {
    if (DeviceMessageCommand(dump) != DeviceCommand::AllGlobals || dump.empty() ||
        static_cast<unsigned char>(dump.back()) != 0xF7)
        return false;
    if (dump.size() == kAllGlobalsLengthDevice1600) return true;
    return dump.size() == kAllGlobalsLengthX || dump.size() == kAllGlobalsLength1600;
}

std::string AllGlobalsBody(std::string_view dump) {
    std::string body(kAllGlobalsBodyLength, '\0');
    const std::size_t end = IsDevice1600GlobalsDump(dump) && dump.size() == kAllGlobalsLengthDevice1600
                                ? GlobalsOffset::RecordChannel
                                : dump.size() - 1;
    for (std::size_t at = GlobalsOffset::Map1; at < end && at - GlobalsOffset::Map1 < body.size(); ++at)
        body[at - GlobalsOffset::Map1] = dump[at];
    if (IsDevice1600GlobalsDump(dump)) body[GlobalsOffset::RecordChannel - GlobalsOffset::Map1] = '\0';
    return body;
}

}  // namespace tavlo
