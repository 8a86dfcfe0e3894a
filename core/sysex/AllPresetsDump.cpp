#include "sysex/AllPresetsDump.h"

#include "sysex/DeviceMessages.h"

namespace tavlo {
namespace {

constexpr std::size_t kSizeOffset = 39;
constexpr std::size_t kBodyOffset = 43;

// Four bytes, one hex digit each, high first; -1 when a byte isn't a digit.
int ReadDigits(std::string_view digits) {
    int value = 0;
    for (char c : digits) {
        const auto d = static_cast<unsigned char>(c);
        if (d > 15) return -1;
        value = value * 16 + d;
    }
    return value;
}

std::string WriteDigits(int value) {
    std::string digits(4, '\0');
    for (int i = 3; i >= 0; --i, value >>= 4) digits[static_cast<std::size_t>(i)] = static_cast<char>(value & 15);
    return digits;
}

}  // namespace

std::optional<AllPresetsEntry> EntryFromPresetDump(std::string_view dump) {
    if (dump.size() < kBodyOffset + 1) return std::nullopt;
    const int size = ReadDigits(dump.substr(kSizeOffset, 4));
    if (size < 0) return std::nullopt;
    const std::size_t bodyLength = dump.size() - kBodyOffset - 1;  // without the F7
    if (static_cast<std::size_t>(size) * 2 > bodyLength) return std::nullopt;
    AllPresetsEntry entry;
    entry.name = std::string(dump.substr(7, kPresetNameNibbles));
    entry.size = size;
    entry.body = std::string(dump.substr(kBodyOffset, static_cast<std::size_t>(size) * 2));
    return entry;
}

std::string PresetDumpFromEntry(int deviceId, const AllPresetsEntry& entry) {
    return DeviceDumpHeader(deviceId, DeviceCommand::PresetDump) + entry.name + WriteDigits(entry.size) + entry.body +
           '\xF7';
}

std::string BuildAllPresetsDump(int deviceId, int selectedSlot, const AllPresetsEntries& entries) {
    std::string dump = DeviceDumpHeader(deviceId, DeviceCommand::AllPresets);
    dump += '\x32';
    dump += static_cast<char>(selectedSlot & 0x7F);
    std::size_t bodies = 0;
    for (const auto& entry : entries) {
        if (entry.name.size() != kPresetNameNibbles || entry.body.size() != static_cast<std::size_t>(entry.size) * 2)
            return {};
        dump += entry.name;
        bodies += entry.body.size();
    }
    dump.append(4, '\0');
    int total = 0;
    for (const auto& entry : entries) {
        total += entry.size;
        if (total > 0xFFFF) return {};
        dump += WriteDigits(total);
    }
    dump.reserve(dump.size() + bodies + 1);
    for (const auto& entry : entries) dump += entry.body;
    dump += '\xF7';
    return dump;
}

std::optional<ParsedAllPresets> ParseAllPresetsDump(std::string_view dump, std::string* reason) {
    auto refuse = [&](const char* why) -> std::optional<ParsedAllPresets> {
        if (reason) *reason = why;
        return std::nullopt;
    };
    if (DeviceMessageCommand(dump) != DeviceCommand::AllPresets) return refuse("not an ALL PRESETS dump");
    if (dump.size() < kAllPresetsBodiesOffset + 1) return refuse("the dump is too short for its directory");
    if (static_cast<unsigned char>(dump.back()) != 0xF7) return refuse("the dump does not end with F7");
    ParsedAllPresets parsed;
    parsed.deviceId = static_cast<unsigned char>(dump[kDeviceIdOffset]);
    parsed.selectedSlot = static_cast<unsigned char>(dump[8]);
    const std::size_t bodiesEnd = dump.size() - 1;
    int previous = 0;
    for (int k = 0; k < kAllPresetsEntries; ++k) {
        const auto index = static_cast<std::size_t>(k);
        const int total = ReadDigits(dump.substr(kAllPresetsDirectoryOffset + 4 * index, 4));
        if (total < 0) return refuse("a directory entry is not made of hex digits");
        if (total < previous) return refuse("the directory's running totals go down");
        auto& entry = parsed.entries[index];
        entry.name = std::string(dump.substr(kAllPresetsNamesOffset + kPresetNameNibbles * index, kPresetNameNibbles));
        entry.size = total - previous;
        const std::size_t start = kAllPresetsBodiesOffset + 2 * static_cast<std::size_t>(previous);
        const std::size_t length = 2 * static_cast<std::size_t>(entry.size);
        if (start + length > bodiesEnd) return refuse("a preset body reaches past the end of the dump");
        entry.body = std::string(dump.substr(start, length));
        previous = total;
    }
    return parsed;
}

std::string NameFromNibbles(std::string_view nibbles) {
    std::string name;
    for (std::size_t i = 0; i + 1 < nibbles.size(); i += 2)
        name += static_cast<char>(((static_cast<unsigned char>(nibbles[i]) & 15) << 4) |
                                  (static_cast<unsigned char>(nibbles[i + 1]) & 15));
    return name;
}

std::array<std::string, kAllPresetsEntries> AllPresetsNames(std::string_view dump) {
    std::array<std::string, kAllPresetsEntries> names;
    for (std::size_t k = 0; k < names.size(); ++k) {
        const std::size_t at = kAllPresetsNamesOffset + kPresetNameNibbles * k;
        if (at + kPresetNameNibbles <= dump.size()) names[k] = NameFromNibbles(dump.substr(at, kPresetNameNibbles));
    }
    return names;
}

}  // namespace tavlo
