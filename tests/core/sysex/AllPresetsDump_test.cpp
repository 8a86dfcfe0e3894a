#include "sysex/AllPresetsDump.h"

#include <gtest/gtest.h>

#include "DumpSamples.h"
#include "sysex/DeviceMessages.h"

using namespace tavlo;
using namespace tavlo::testing;

namespace {

int Digits(const std::string& dump, std::size_t at) {
    int value = 0;
    for (std::size_t i = 0; i < 4; ++i) value = value * 16 + static_cast<unsigned char>(dump[at + i]);
    return value;
}

TEST(AllPresetsDump, LayoutHasNamesDirectoryOfRunningTotalsAndBodiesAndParsesBack) {
    const AllPresetsEntries entries = SampleEntries(100);
    const std::string dump = BuildAllPresetsDump(3, 7, entries);
    ASSERT_FALSE(dump.empty());
    EXPECT_EQ(dump.substr(0, 9), Bytes({0xF0, 0x00, 0x00, 0x1B, 0x0B, 0x03, 0x01, 0x32, 0x07}));
    EXPECT_EQ(dump.substr(1641, 4), std::string(4, '\0'));  // between the names and the directory
    int total = 0;
    std::size_t bodies = 0;
    for (int k = 0; k < kAllPresetsEntries; ++k) {
        const auto& entry = entries[static_cast<std::size_t>(k)];
        EXPECT_EQ(dump.substr(9 + 32 * static_cast<std::size_t>(k), 32), entry.name) << "name " << k;
        total += entry.size;
        EXPECT_EQ(Digits(dump, 1645 + 4 * static_cast<std::size_t>(k)), total) << "directory " << k;
        // Entry k's body starts at 1850 + 2 x (Total(k) - Size(k)), counted from 1.
        const std::size_t start = 1849 + 2 * static_cast<std::size_t>(total - entry.size);
        EXPECT_EQ(dump.substr(start, entry.body.size()), entry.body) << "body " << k;
        bodies += entry.body.size();
    }
    EXPECT_EQ(dump.size(), 1849 + bodies + 1);
    EXPECT_EQ(static_cast<unsigned char>(dump.back()), 0xF7);

    const auto parsed = ParseAllPresetsDump(dump);
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->deviceId, 3);
    EXPECT_EQ(parsed->selectedSlot, 7);
    EXPECT_EQ(parsed->entries, entries);
    EXPECT_EQ(AllPresetsNames(dump)[50], "Preset 50       ");
}

TEST(AllPresetsDump, RefusesWhatFourDigitsCannotCarry) {
    AllPresetsEntries entries = SampleEntries(10);
    entries[3] = SampleEntry("Huge", 0xFFFF, 1);
    EXPECT_TRUE(BuildAllPresetsDump(0, 0, entries).empty());
    entries = SampleEntries(10);
    entries[4].body.pop_back();  // no longer twice its size
    EXPECT_TRUE(BuildAllPresetsDump(0, 0, entries).empty());
}

TEST(AllPresetsDump, DamagedDumpsAreRefusedWithAReason) {
    const std::string good = BuildAllPresetsDump(0, 0, SampleEntries(30));
    struct Case {
        const char* what;
        std::string dump;
    };
    std::string badDigit = good;
    badDigit[1645 + 4 * 10] = '\x10';
    std::string goingDown = good;
    goingDown.replace(1645 + 4 * 20, 4, std::string(4, '\0'));  // the running total drops
    std::string tooLong = good;
    tooLong[1645 + 4 * 50] = '\x0F';  // the last total reaches past the end
    std::string noF7 = good;
    noF7.back() = 0;
    std::string otherCommand = good;
    otherCommand[6] = 2;
    const Case cases[] = {
        {"header only", good.substr(0, 7)},
        {"cut inside the directory", good.substr(0, 1700)},
        {"cut inside the bodies", good.substr(0, good.size() / 2) + '\xF7'},
        {"a directory byte that is no digit", badDigit},
        {"totals going down", goingDown},
        {"a total past the end", tooLong},
        {"no F7", noF7},
        {"another command", otherCommand},
    };
    for (const auto& c : cases) {
        std::string reason;
        EXPECT_FALSE(ParseAllPresetsDump(c.dump, &reason)) << c.what;
        EXPECT_FALSE(reason.empty()) << c.what;
        EXPECT_NO_THROW(AllPresetsNames(c.dump)) << c.what;  // names are read only where the dump has them
    }
}

TEST(AllPresetsDump, EntryOfASinglePresetDumpAndBack) {
    const AllPresetsEntry entry = SampleEntry("Strings", 72, 9);
    const std::string dump = PresetDumpFromEntry(4, entry);
    EXPECT_EQ(dump.size(), 188u);  // 7 header + 32 name + 4 size + 144 body + F7
    EXPECT_EQ(dump.substr(39, 4), Bytes({0, 0, 4, 8}));
    const auto back = EntryFromPresetDump(dump);
    ASSERT_TRUE(back);
    EXPECT_EQ(*back, entry);
    std::string claimsMore = dump;
    claimsMore[39] = 1;  // size 1048h: more than the dump holds
    EXPECT_FALSE(EntryFromPresetDump(claimsMore));
    EXPECT_FALSE(EntryFromPresetDump(dump.substr(0, 40)));
}

}  // namespace
