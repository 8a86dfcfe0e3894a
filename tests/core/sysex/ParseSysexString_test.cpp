#include "sysex/ParseSysexString.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

#include "sysex/StringNotation.h"

using namespace tavlo;

namespace {

TEST(MakeMultipleNotesSingle, WritesRunningStatusOut) {
    struct Case {
        const char* in;
        const char* out;
    };
    const Case cases[] = {
        {"B0 07 40 08 50", "B0 07 40 B0 08 50"}, {"90 3C 7F 3E 7F", "90 3C 7F 90 3E 7F"},
        {"B0-gc 07 40 08 50", "B0-gc 07 40 B0-gc 08 50"}, {"B0 07 40 08 50 0A 60", "B0 07 40 B0 08 50 B0 0A 60"},
        {"B0 07 40 08 90 3C 7F", "B0 07 40 08 90 3C 7F"},  // an odd data byte stays on its own
        {"B0 07 F7", "B0 07 F7"}, {"B0 F7", "B0 F7"}, {"90 3C", "90 3C"}, {"E0 00 40 00 41", "E0 00 40 E0 00 41"},
        {"C0 05 06", "C0 05 06"},  // one data byte: not repeated
        {"F0 90 01 02 03 04 F7 B0 01 02 03 04", "F0 90 01 02 03 04 F7 B0 01 02 B0 03 04"},
        {"B0 07 pr pr pr", "B0 07 pr B0 pr pr"}, {"", ""},
    };
    for (const Case& c : cases) EXPECT_EQ(MakeMultipleNotesSingle(c.in), c.out) << c.in;
}

struct Expected {
    const char* listItem;
    int type;
    int channel;
    int value1;
    int value2;
};

struct ParseCase {
    const char* text;
    std::vector<Expected> substrings;
};

class Parse : public ::testing::TestWithParam<ParseCase> {};

TEST_P(Parse, GivesTheSubstrings) {
    const ParseCase& c = GetParam();
    StringWorkArea work;
    work.Strings.Count = 7;  // whatever was there before
    std::string text = c.text;
    ParseSysexString(text, work);
    ASSERT_EQ(work.Strings.Count, static_cast<int>(c.substrings.size())) << c.text;
    for (std::size_t i = 0; i < c.substrings.size(); ++i) {
        const MessageSubstring& s = work.Strings.Slots[i];
        const Expected& e = c.substrings[i];
        SCOPED_TRACE(std::string(c.text) + " #" + std::to_string(i));
        EXPECT_EQ(s.ListItem, e.listItem);
        EXPECT_EQ(std::tuple(s.CommandType, s.CommandChannel, s.Value1, s.Value2),
                  std::tuple(e.type, e.channel, e.value1, e.value2));
        EXPECT_EQ(s.EnteredString + "  (", std::string(e.listItem).substr(0, s.EnteredString.size() + 3));
    }
    // The text becomes what the set holds: running status written out.
    EXPECT_EQ(text, JoinedStringText(work.Strings));
}

INSTANTIATE_TEST_SUITE_P(
    Messages, Parse,
    ::testing::Values(
        ParseCase{"90 3C 7F 3E 7F", {{"90 3C 7F  (noteon)", 0, 0, 0x3C, 0x7F}, {"90 3E 7F  (noteon)", 0, 0, 0x3E, 0x7F}}},
        ParseCase{"B0 07 40 08 50", {{"B0 07 40  (ctrlch)", 3, 0, 7, 0x40}, {"B0 08 50  (ctrlch)", 3, 0, 8, 0x50}}},
        ParseCase{"8F 3C 00", {{"8F 3C 00  (noteoff)", 1, 15, 0x3C, 0}}},
        ParseCase{"A1 3C 10", {{"A1 3C 10  (polyat)", 2, 1, 0x3C, 0x10}}},
        ParseCase{"B0-gc 07 pr", {{"B0-gc 07 pr  (ctrlch)", 3, 16, 7, 128}}},
        ParseCase{"C2 cs D3 dv", {{"C2 cs  (progch)", 4, 2, 129, 0}, {"D3 dv  (chanat)", 5, 3, 130, 0}}},
        ParseCase{"E5 gc rv", {{"E5 gc rv  (pitchb)", 6, 5, 131, 132}}},
        ParseCase{"F0 41 10 F7 F2 01 02 F3 05",
                  {{"F0 41 10 F7  (sysex)", 7, 16, 0, 0}, {"F2 01 02  (sngpos)", 8, 16, 0, 0},
                   {"F3 05  (sngsel)", 9, 16, 5, 0}}},
        ParseCase{"F6 FA FC FB FE FF",
                  {{"F6  (tunerq)", 10, 16, 0, 0}, {"FA  (midistart)", 11, 16, 0, 0}, {"FC  (midistop)", 12, 16, 0, 0},
                   {"FB  (midicont)", 13, 16, 0, 0}, {"FE  (actsens)", 14, 16, 0, 0},
                   {"FF  (sysreset)", 15, 16, 0, 0}}}));

INSTANTIATE_TEST_SUITE_P(
    FreeByteFallbacks, Parse,
    ::testing::Values(
        ParseCase{"90 3C", {{"90 3C  (freebyte)", 16, 16, 0, 0}}},
        ParseCase{"C0 80", {{"C0  (freebyte)", 16, 16, 0, 0}, {"80  (freebyte)", 16, 16, 0, 0}}},
        ParseCase{"90 3C 90 3E 7F", {{"90 3C  (freebyte)", 16, 16, 0, 0}, {"90 3E 7F  (noteon)", 0, 0, 0x3E, 0x7F}}},
        ParseCase{"F0 41 10 42", {{"F0 41 10 42  (freebyte)", 16, 16, 0, 0}}},
        ParseCase{"F1 05 06 90 3C 7F", {{"F1 05 06  (freebyte)", 16, 16, 0, 0}, {"90 3C 7F  (noteon)", 0, 0, 0x3C, 0x7F}}},
        ParseCase{"05 06", {{"05 06  (freebyte)", 16, 16, 0, 0}}},
        ParseCase{"cs F7", {{"cs  (freebyte)", 16, 16, 0, 0}, {"F7  (freebyte)", 16, 16, 0, 0}}},
        ParseCase{"F3", {{"F3  (freebyte)", 16, 16, 0, 0}}},
        ParseCase{"", {}}));

TEST(ParseSysexString, MoreThanFiftyMessagesKeepTheirBytesInTheLastSlot) {
    std::string text;
    for (int i = 0; i < 60; ++i) text += "F6 ";
    text += "90 3C 7F";
    StringWorkArea work;
    work.Strings.Slots[50].EnteredString = "untouched";
    ParseSysexString(text, work);
    ASSERT_EQ(work.Strings.Count, 50);
    EXPECT_EQ(work.Strings.Slots[48].ListItem, "F6  (tunerq)");
    EXPECT_EQ(work.Strings.Slots[49].EnteredString, "F6 F6 F6 F6 F6 F6 F6 F6 F6 F6 F6 90 3C 7F");
    EXPECT_EQ(work.Strings.Slots[49].CommandType, 16);
    EXPECT_EQ(work.Strings.Slots[50].EnteredString, "untouched");
}

}  // namespace
