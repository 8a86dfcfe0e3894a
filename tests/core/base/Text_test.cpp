#include "base/MSBModule.h"
#include "base/Windows1252.h"

#include <gtest/gtest.h>

#include <string>

using namespace tavlo;
using namespace tavlo::MSBModule;

namespace {

std::string ch(int code) { return std::string(1, static_cast<char>(code)); }

TEST(SafeDBString, EncodesEveryBoundaryKeepsTheLengthAndDisplaysBack) {
    const std::pair<std::string, std::string> cases[] = {
        {"Plain Name", "Plain Name"},
        {ch(0) + "A" + ch(31), " A "},  // below blank
        {ch(32) + ch(126), " ~"},       // blank and the last printable stay
        {ch(127) + ch(150) + ch(255), "   "},  // above "~", and stored forms are no input
        {"Joe's \"Lead\" | Pad", "Joe" + ch(152) + "s " + ch(151) + "Lead" + ch(151) + " " + ch(150) + " Pad"},
        {"", ""},
    };
    for (const auto& [in, stored] : cases) EXPECT_EQ(SafeDBString(in), stored) << in;
    for (const std::string name : {"It's", "\"quoted\"", "a|b", "mixed 'n' \"all\" |"})
        EXPECT_EQ(DisplayDBString(SafeDBString(name)), name) << name;
    EXPECT_EQ(DisplayDBString("a~b" + ch(153)), "a~b" + ch(153));  // only the stored forms turn back
}

TEST(NoteNames, AllNotesRoundTripAndKnownNames) {
    for (int note = 0; note < 128; ++note) EXPECT_EQ(NoteNumber(NoteName(note)), note) << NoteName(note);
    const std::pair<int, const char*> cases[] = {{0, "C-1"}, {1, "C#-1"}, {11, "B-1"}, {12, "C0"},
                                                 {60, "C4"}, {61, "C#4"},  {69, "A4"},  {127, "G9"}};
    for (const auto& [note, name] : cases) EXPECT_EQ(NoteName(note), name) << note;
}

TEST(NoteNumber, RefusesBadForms) {
    for (const char* bad : {"", "H1", "c4", "C", "C#", "C44", "C#4-", "C-#1", "Cb4", "C4x", "X#-1", "C#10", "Db4",
                            "E#4", "C-a", "C#-x"})
        EXPECT_EQ(NoteNumber(bad), -1) << bad;
    EXPECT_EQ(NoteNumber("  G9  "), 127);
}

TEST(TextFilters, DropWhatTheirSetLacks) {
    EXPECT_EQ(SafeFileName("a/b\\c:d*e?f<g>h|i\"j"), "abcdefghij");
    EXPECT_EQ(SafeFileName("Lead Pad #1"), "Lead Pad #1");
    EXPECT_EQ(FilterNameCharacters("Abc 09+-=()*&^%$#@!>`{}[]|':;?/,._"), "Abc 09+-=()*&^%$#@!>`{}[]|':;?/,._");
    EXPECT_EQ(FilterNameCharacters("a\"b~c\\d<e" + ch(233)), "abcde");
    // Trim takes blanks only.
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(Trim("\ta\t"), "\ta\t");
}

// Every byte survives the round trip; what the code page can't hold becomes
// "?", and malformed UTF-8 keeps its bytes.
TEST(Windows1252, ConvertsBothWays) {
    std::string all;
    for (int b = 0; b < 256; ++b) all += ch(b);
    EXPECT_EQ(Utf8ToWindows1252(Windows1252ToUtf8(all)), all);
    const std::pair<int, const char*> cases[] = {{0x41, "A"},      {0x80, "\u20AC"}, {0x96, "\u2013"},
                                                 {0x98, "\u02DC"}, {0xE9, "\u00E9"}, {0x81, "\u0081"}};
    for (const auto& [byte, utf8] : cases) EXPECT_EQ(Windows1252ToUtf8(ch(byte)), utf8);
    EXPECT_EQ(Utf8ToWindows1252("a\U0001F3B9b\u4E2D"), "a?b?");
    const std::string broken = "x" + ch(0xC3) + "y" + ch(0xFF);
    EXPECT_EQ(Utf8ToWindows1252(broken), broken);
}

}  // namespace
