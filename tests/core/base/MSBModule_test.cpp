#include "base/MSBModule.h"

#include <gtest/gtest.h>

#include <string>

using namespace tavlo::MSBModule;

namespace {

std::string ch(int code) { return std::string(1, static_cast<char>(code)); }

struct NameCase {
    std::string in;
    std::string stored;
};

class SafeDBStringTest : public ::testing::TestWithParam<NameCase> {};

TEST_P(SafeDBStringTest, EncodesEveryBoundaryAndKeepsLength) {
    const auto& c = GetParam();
    const std::string stored = SafeDBString(c.in);
    EXPECT_EQ(stored, c.stored);
    EXPECT_EQ(stored.size(), c.in.size());
}

INSTANTIATE_TEST_SUITE_P(
    Boundaries, SafeDBStringTest,
    ::testing::Values(NameCase{"Plain Name", "Plain Name"},
                      NameCase{ch(31), " "},        // below blank
                      NameCase{ch(32), " "},        // blank itself stays
                      NameCase{ch(126), "~"},       // last printable stays
                      NameCase{ch(127), " "},       // above "~"
                      NameCase{ch(150), " "},       // stored forms are not printable input
                      NameCase{ch(151), " "}, NameCase{ch(152), " "}, NameCase{ch(255), " "},
                      NameCase{ch(0) + "A", " A"},
                      NameCase{"Joe's \"Lead\" | Pad", "Joe" + ch(152) + "s " + ch(151) + "Lead" + ch(151) + " " + ch(150) + " Pad"},
                      NameCase{"", ""}));

TEST(DisplayDBString, TurnsStoredFormsBackAndLeavesTheRest) {
    EXPECT_EQ(DisplayDBString(ch(151) + "x" + ch(152) + ch(150)), "\"x'|");
    EXPECT_EQ(DisplayDBString("a~b" + ch(153)), "a~b" + ch(153));
    for (const std::string name : {"It's", "\"quoted\"", "a|b", "mixed 'n' \"all\" |"})
        EXPECT_EQ(DisplayDBString(SafeDBString(name)), name) << name;
}

TEST(DoubleAmpersands, DoublesEachAmpersand) {
    EXPECT_EQ(DoubleAmpersands("R&B && Soul"), "R&&B &&&& Soul");
    EXPECT_EQ(DoubleAmpersands("none"), "none");
}

TEST(BinaryHex, ConvertsPadsAndRefuses) {
    struct Case {
        std::string bits, hex;
    };
    for (const Case& c : {Case{"10100101", "A5"}, Case{"1", "01"}, Case{"111111111", "01FF"}, Case{"", ""},
                          Case{"0000000011110000", "00F0"}})
        EXPECT_EQ(BinaryToHex(c.bits), c.hex) << c.bits;
    // A group that is no 4-bit pattern adds nothing.
    EXPECT_EQ(BinaryToHex("1010x101"), "A");
    EXPECT_EQ(HexToBinary("A5"), "10100101");
    EXPECT_EQ(HexToBinary("0f"), "00001111");
    EXPECT_EQ(HexToBinary("FG"), "");
    EXPECT_EQ(HexToBinary(""), "");
    for (int v = 0; v < 256; ++v) {
        char hex[3];
        std::snprintf(hex, sizeof hex, "%02X", v);
        EXPECT_EQ(BinaryToHex(HexToBinary(hex)), hex);
    }
}

TEST(Nibbles, SplitsEachByteHighFirst) {
    EXPECT_EQ(TextToNibbles("A"), ch(4) + ch(1));
    EXPECT_EQ(TextToNibbles(ch(0xF7) + ch(0)), ch(15) + ch(7) + ch(0) + ch(0));
    EXPECT_EQ(TextToNibbles(""), "");
}

TEST(BytesToHexText, EveryByteWithTrailingBlank) {
    EXPECT_EQ(BytesToHexText(ch(0xF0) + ch(0) + ch(0x1B) + ch(0x0B)), "F0 00 1B 0B ");
    EXPECT_EQ(BytesToHexText(""), "");
    EXPECT_EQ(BytesToHexText(ch(255)), "FF ");
}

TEST(TildeGreater, SwapOneForOne) {
    EXPECT_EQ(GreaterToTilde(">>>TEMP>>>"), "~~~TEMP~~~");
    EXPECT_EQ(TildeToGreater("~~~TEMP~~~"), ">>>TEMP>>>");
    EXPECT_EQ(TildeToGreater("no tilde"), "no tilde");
}

TEST(NoteNames, AllNotesRoundTrip) {
    for (int note = 0; note < 128; ++note) EXPECT_EQ(NoteNumber(NoteName(note)), note) << NoteName(note);
}

TEST(NoteNames, KnownNames) {
    struct Case {
        int note;
        const char* name;
    };
    for (const Case& c : {Case{0, "C-1"}, Case{1, "C#-1"}, Case{11, "B-1"}, Case{12, "C0"}, Case{60, "C4"},
                          Case{61, "C#4"}, Case{69, "A4"}, Case{127, "G9"}})
        EXPECT_EQ(NoteName(c.note), c.name) << c.note;
}

TEST(NoteNumber, RefusesBadForms) {
    for (const char* bad : {"", "H1", "c4", "C", "C#", "C44", "C#4-", "C-#1", "Cb4", "C4x", "X#-1", "C#10", "Db4",
                            "E#4", "C-a", "C#-x"})
        EXPECT_EQ(NoteNumber(bad), -1) << bad;
    EXPECT_EQ(NoteNumber("  G9  "), 127);
    EXPECT_EQ(NoteNumber("C-1"), 0);
}

TEST(SafeFileName, DropsForbiddenCharacters) {
    EXPECT_EQ(SafeFileName("a/b\\c:d*e?f<g>h|i\"j"), "abcdefghij");
    EXPECT_EQ(SafeFileName("Lead Pad #1"), "Lead Pad #1");
}

TEST(FilterNameCharacters, KeepsOnlyTheFixedSet) {
    EXPECT_EQ(FilterNameCharacters("Abc 09+-=()*&^%$#@!>`{}[]|':;?/,._"), "Abc 09+-=()*&^%$#@!>`{}[]|':;?/,._");
    EXPECT_EQ(FilterNameCharacters("a\"b~c\\d<e" + ch(233)), "abcde");
    for (int code = 0; code < 256; ++code) {
        const std::string one = ch(code);
        const bool kept = FilterNameCharacters(one) == one;
        EXPECT_EQ(kept, kNameCharacters.find(static_cast<char>(code)) != std::string_view::npos) << code;
    }
}

TEST(RolandChecksum, SumsModulo128) {
    EXPECT_EQ(RolandChecksum(""), 0);
    EXPECT_EQ(RolandChecksum(ch(0x40) + ch(0) + ch(0x7F) + ch(0)), 0x41);
    EXPECT_EQ(RolandChecksum(ch(0x40) + ch(0x40)), 0);  // a multiple of 128 gives 0, never 128
    EXPECT_EQ(RolandChecksum(ch(1)), 127);
    EXPECT_EQ(RolandChecksum(ch(255) + ch(255)), 2);  // 510 % 128 = 126
}

TEST(SysexChecksum, FindsDataStartByZeroBytes) {
    // Roland: F0 41 10 42 12 | 40 00 7F 00 | cs F7; data from byte 6.
    const std::string roland = ch(0xF0) + ch(0x41) + ch(0x10) + ch(0x42) + ch(0x12) + ch(0x40) + ch(0) + ch(0x7F) +
                               ch(0) + ch(0x41) + ch(0xF7);
    EXPECT_EQ(SysexChecksum(roland), 0x41);
    EXPECT_TRUE(HasGoodChecksum(roland));
    std::string wrong = roland;
    wrong[9] = 0x40;
    EXPECT_FALSE(HasGoodChecksum(wrong));

    // Byte 5 zero (p = 5): data start moves to 7, skipping that zero.
    const std::string zeroAtP = ch(0xF0) + ch(1) + ch(2) + ch(3) + ch(0) + ch(0x10) + ch(0x20) + ch(0x50) + ch(0xF7);
    EXPECT_EQ(SysexChecksum(zeroAtP), RolandChecksum(ch(0x20)));
    // Byte 4 zero makes p 6; bytes 6 and 7 zero move the start to 8.
    const std::string zeros = ch(0xF0) + ch(1) + ch(2) + ch(0) + ch(5) + ch(0) + ch(0) + ch(0x33) + ch(0x11) + ch(0xF7);
    EXPECT_EQ(SysexChecksum(zeros), RolandChecksum(ch(0x33)));
}

TEST(SysexChecksum, RefusesWhatIsNoSysex) {
    EXPECT_EQ(SysexChecksum(""), -1);
    EXPECT_NE(SysexChecksum(ch(0xF0) + "123456" + ch(0xF7)), -1);   // 8 bytes is enough
    EXPECT_EQ(SysexChecksum(ch(0xF0) + "12345" + ch(0xF7)), -1);   // 7 bytes
    EXPECT_EQ(SysexChecksum(ch(0x90) + "123456" + ch(0xF7)), -1);  // no F0
    EXPECT_EQ(SysexChecksum(ch(0xF0) + "1234567"), -1);            // no F7
    EXPECT_FALSE(HasGoodChecksum(""));
    EXPECT_FALSE(HasGoodChecksum(ch(0xF7)));
}

TEST(Trim, OnlyBlanks) {
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(Trim("\ta\t"), "\ta\t");
    EXPECT_EQ(TrimRight("  a  "), "  a");
}

}  // namespace
