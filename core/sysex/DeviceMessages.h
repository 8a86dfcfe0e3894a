#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace tavlo {

// The device's memory: preset slots and scene slots.
inline constexpr int kPresetSlots = 50;
inline constexpr int kSceneSlots = 100;

// Command bytes of the PC1600(x) system exclusive messages.
namespace DeviceCommand {
inline constexpr unsigned char SelectPreset = 0x00;
inline constexpr unsigned char AllPresets = 0x01;
inline constexpr unsigned char AllScenes = 0x02;
inline constexpr unsigned char AllGlobals = 0x03;
inline constexpr unsigned char PresetDump = 0x04;
inline constexpr unsigned char RequestAllPresets = 0x11;
inline constexpr unsigned char RequestAllScenes = 0x12;
inline constexpr unsigned char RequestAllGlobals = 0x13;
inline constexpr unsigned char RequestEditBuffer = 0x14;
inline constexpr unsigned char WriteEditBuffer = 0x20;
}  // namespace DeviceCommand

// F0 00 00 1B 0B: every message of the device family starts so.
inline constexpr std::string_view kDeviceHeader{"\xF0\x00\x00\x1B\x0B", 5};
inline constexpr std::size_t kDeviceIdOffset = 5;
inline constexpr std::size_t kCommandOffset = 6;

// Wire speed of MIDI: 31250 baud, ten bits a byte.
inline constexpr int kWireBytesPerSecond = 3125;

// F0 00 00 1B 0B dd cc F7: a request without data.
std::string DeviceRequest(int deviceId, unsigned char command);
// F0 00 00 1B 0B dd cc nn F7: select (00) or write (20) with a slot.
std::string DeviceSlotCommand(int deviceId, unsigned char command, int slot);
// The seven header bytes of a dump, without data or F7.
std::string DeviceDumpHeader(int deviceId, unsigned char command);

// The length of a dump whose length is fixed, whole with header and F7:
// ALL SCENES is always 4409 bytes. 0 for the others.
std::size_t FixedDumpLength(int command);

// True when the message starts with the family header and is long enough to
// carry a command byte.
bool IsDeviceMessage(std::string_view message);
// The command byte, or -1 for a message that isn't one of the family.
int DeviceMessageCommand(std::string_view message);
// The device identifier byte, or -1.
int DeviceMessageId(std::string_view message);

// The system exclusive messages of a byte stream (a .syx file), each from
// its F0 to its F7; bytes outside them are skipped. An ALL GLOBALS of the
// original PC1600, which carries an F7 inside, is kept whole.
std::vector<std::string> SplitSysex(std::string_view bytes);

// Milliseconds that `bytes` take on a MIDI cable.
long long WireTimeMs(std::size_t bytes);

}  // namespace tavlo
