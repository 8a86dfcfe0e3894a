#include "sysex/DeviceMessages.h"

#include "sysex/AllScenesDump.h"

namespace tavlo {

std::string DeviceDumpHeader(int deviceId, unsigned char command) {
    std::string message(kDeviceHeader);
    message += static_cast<char>(deviceId & 0x7F);
    message += static_cast<char>(command);
    return message;
}

std::string DeviceRequest(int deviceId, unsigned char command) {
    return DeviceDumpHeader(deviceId, command) + '\xF7';
}

std::string DeviceSlotCommand(int deviceId, unsigned char command, int slot) {
    return DeviceDumpHeader(deviceId, command) + static_cast<char>(slot & 0x7F) + '\xF7';
}

std::size_t FixedDumpLength(int command) { return command == DeviceCommand::AllScenes ? kAllScenesLength : 0; }

bool IsDeviceMessage(std::string_view message) {
    return message.size() > kCommandOffset && message.substr(0, kDeviceHeader.size()) == kDeviceHeader;
}

int DeviceMessageCommand(std::string_view message) {
    return IsDeviceMessage(message) ? static_cast<unsigned char>(message[kCommandOffset]) : -1;
}

int DeviceMessageId(std::string_view message) {
    return IsDeviceMessage(message) ? static_cast<unsigned char>(message[kDeviceIdOffset]) : -1;
}

std::vector<std::string> SplitSysex(std::string_view bytes) {
    // Length of the original model's ALL GLOBALS, whose byte 414 is F7.
    constexpr std::size_t kOldGlobalsLength = 418;
    std::vector<std::string> messages;
    std::size_t at = bytes.find('\xF0');
    while (at != std::string_view::npos) {
        const std::size_t end = bytes.find('\xF7', at);
        if (end == std::string_view::npos) break;
        std::size_t stop = end;
        if (DeviceMessageCommand(bytes.substr(at)) == DeviceCommand::AllGlobals && end - at + 1 < kOldGlobalsLength &&
            at + kOldGlobalsLength <= bytes.size() &&
            static_cast<unsigned char>(bytes[at + kOldGlobalsLength - 1]) == 0xF7)
            stop = at + kOldGlobalsLength - 1;
        messages.emplace_back(bytes.substr(at, stop - at + 1));
        at = bytes.find('\xF0', stop + 1);
    }
    return messages;
}

long long WireTimeMs(std::size_t bytes) {
    return static_cast<long long>(bytes) * 1000 / kWireBytesPerSecond;
}

}  // namespace tavlo
