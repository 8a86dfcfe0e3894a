#pragma once
#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace tavlo {

// ALL PRESETS, the device's 50 presets (and its edit buffer) in one message:
//   header (command 01), 32h, selected slot,
//   51 names of 32 nibble bytes, four zeros,
//   51 directory entries: four hex digits a byte each, the running total of
//   body sizes (in raw bytes) up to and including the entry,
//   the 51 bodies as nibble pairs, F7.
// Entries 0 to 49 are the slots; entry 50 is the edit buffer.
inline constexpr int kAllPresetsEntries = 51;
inline constexpr std::size_t kAllPresetsNamesOffset = 9;
inline constexpr std::size_t kAllPresetsDirectoryOffset = 1645;
inline constexpr std::size_t kAllPresetsBodiesOffset = 1849;
inline constexpr std::size_t kPresetNameNibbles = 32;

// One preset as ALL PRESETS carries it, in nibble bytes as on the wire.
struct AllPresetsEntry {
    std::string name;  // 32 nibble bytes: 16 characters
    std::string body;  // 2 x size nibble bytes
    int size = 0;      // raw bytes of the body, as the size field gives it

    bool operator==(const AllPresetsEntry&) const = default;
};
using AllPresetsEntries = std::array<AllPresetsEntry, kAllPresetsEntries>;

// Takes name, size field and body out of a single preset dump (command 04):
// name at offset 7, size at 39 (four hex digits), body from 43 up to the F7.
// Nothing when the dump is too short, a size digit isn't below 16, or the
// size field claims more than the dump holds.
std::optional<AllPresetsEntry> EntryFromPresetDump(std::string_view dump);
// The single preset dump of an entry, with that device identifier.
std::string PresetDumpFromEntry(int deviceId, const AllPresetsEntry& entry);

// Builds the dump. Empty when an entry is malformed (a name not 32 bytes, a
// body not twice its size) or the running total passes FFFF, which four
// digits can't carry.
std::string BuildAllPresetsDump(int deviceId, int selectedSlot, const AllPresetsEntries& entries);

struct ParsedAllPresets {
    int deviceId = 0;
    int selectedSlot = 0;
    AllPresetsEntries entries;
};
// Reads a dump back, checking every offset against its length: a damaged
// dump gives nothing and a reason, never a read past its end.
std::optional<ParsedAllPresets> ParseAllPresetsDump(std::string_view dump, std::string* reason = nullptr);

// The 16 characters of a name held as 32 nibble bytes (high nibble first,
// each byte AND 15).
std::string NameFromNibbles(std::string_view nibbles);
// The 51 names of an ALL PRESETS dump, read where they stand; names that the
// dump is too short to hold come out empty.
std::array<std::string, kAllPresetsEntries> AllPresetsNames(std::string_view dump);

}  // namespace tavlo
