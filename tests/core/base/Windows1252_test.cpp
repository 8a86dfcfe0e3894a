#include "base/Windows1252.h"

#include <gtest/gtest.h>

using namespace tavlo;

TEST(Windows1252, EveryByteSurvivesTheRoundTrip) {
    std::string all;
    for (int b = 0; b < 256; ++b) all += static_cast<char>(b);
    EXPECT_EQ(Utf8ToWindows1252(Windows1252ToUtf8(all)), all);
}

TEST(Windows1252, KnownCharacters) {
    const std::pair<int, const char*> cases[] = {{0x41, "A"},      {0x80, "\u20AC"}, {0x96, "\u2013"},
                                                 {0x98, "\u02DC"}, {0xE9, "\u00E9"}, {0x81, "\u0081"}};
    for (const auto& [byte, utf8] : cases) EXPECT_EQ(Windows1252ToUtf8(std::string(1, static_cast<char>(byte))), utf8);
}

// What the code page can't hold becomes "?"; malformed UTF-8 keeps its bytes.
TEST(Windows1252, UnmappableAndMalformedInput) {
    EXPECT_EQ(Utf8ToWindows1252("a\U0001F3B9b\u4E2D"), "a?b?");
    const std::string broken = std::string("x") + static_cast<char>(0xC3) + "y" + static_cast<char>(0xFF);
    EXPECT_EQ(Utf8ToWindows1252(broken), broken);
}
