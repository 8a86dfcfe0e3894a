#include "midilink/DeviceMessages.h"

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

bool IsDeviceMessage(std::string_view message) {
    return message.size() > kCommandOffset && message.substr(0, kDeviceHeader.size()) == kDeviceHeader;
}

int DeviceMessageCommand(std::string_view message) {
    return IsDeviceMessage(message) ? static_cast<unsigned char>(message[kCommandOffset]) : -1;
}

int DeviceMessageId(std::string_view message) {
    return IsDeviceMessage(message) ? static_cast<unsigned char>(message[kDeviceIdOffset]) : -1;
}

long long WireTimeMs(std::size_t bytes) {
    return static_cast<long long>(bytes) * 1000 / kWireBytesPerSecond;
}

}  // namespace tavlo
