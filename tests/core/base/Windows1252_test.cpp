#include "base/Windows1252.h"

#include <gtest/gtest.h>

using namespace tavlo;

TEST(Windows1252, EveryByteSurvivesTheRoundTrip) {
    std::string all;
    for (int b = 0; b < 256; ++b) all += static_cast<char>(b);
    EXPECT_EQ(Utf8ToWindows1252(Windows1252ToUtf8(all)), all);
}

TEST(Windows1252, KnownCharacters) {
    struct Case {
        int byte;
        const char* utf8;
    };
    for (const Case& c : {Case{0x41, "A"}, Case{0x80, "\u20AC"}, Case{0x96, "\u2013"}, Case{0x97, "\u2014"},
                          Case{0x98, "\u02DC"}, Case{0xE9, "\u00E9"}, Case{0xFF, "\u00FF"}, Case{0x81, "\u0081"}}) {
        const std::string one(1, static_cast<char>(c.byte));
        EXPECT_EQ(Windows1252ToUtf8(one), c.utf8) << c.byte;
        EXPECT_EQ(Utf8ToWindows1252(c.utf8), one) << c.byte;
    }
}

TEST(Windows1252, WhatItCannotHoldBecomesQuestionMark) {
    EXPECT_EQ(Utf8ToWindows1252("\u4E2D"), "?");
    EXPECT_EQ(Utf8ToWindows1252("a\U0001F3B9b"), "a?b");
}

TEST(Windows1252, MalformedUtf8KeepsItsBytes) {
    const std::string broken = std::string("x") + static_cast<char>(0xC3) + "y" + static_cast<char>(0xFF);
    EXPECT_EQ(Utf8ToWindows1252(broken), broken);
}
