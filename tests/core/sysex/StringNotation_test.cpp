#include "sysex/StringNotation.h"

#include <gtest/gtest.h>

#include "ScriptedPrompter.h"

using namespace tavlo;
using tavlo::testing::ScriptedPrompter;

namespace {

constexpr const char* kSame = nullptr;     // the text given back is the input
constexpr const char* kRefused = nullptr;  // the check fails: "<error>" rendered, the input given back
constexpr auto F = StringContext::Fader;
constexpr auto B = StringContext::Button;
constexpr auto S = StringContext::Setup;

TEST(CheckEnteredString, CleansRendersOrRefuses) {
    const struct {
        const char* input;
        StringContext context;
        bool pc1600;
        const char *entered, *rendered;
    } cases[] = {
        {"", F, false, kSame, ""}, {"f0  41   f7", F, false, "F0 41 F7", "F0 41 F7"},
        {"240 065 247", B, false, kSame, "F0 41 F7"}, {"256", F, false, kSame, kRefused},
        {"255", F, false, kSame, "FF"}, {"abc", F, false, kSame, "00"}, {"&HF", F, false, "&hf", "0F"},
        {"1e2", F, false, kSame, "64"}, {"4", F, false, kSame, kRefused}, {"1234", F, false, kSame, kRefused},
        {"zz-gc", F, false, kSame, "zz-gc"}, {"B0-gc 07 pr", F, false, "b0-gc 07 pr", "b0-gc 07 pr"},
        {"90 3c 7g", F, false, kSame, kRefused}, {" 90", F, false, kSame, kRefused},
        {"90 3C ", F, false, "90 3C", "90 3C"},
        // Special tokens by kind of string.
        {"B0 07 rv", F, false, kSame, kRefused}, {"90 3C rv", B, false, kSame, "90 3C rv"},
        {"90 3C pr", S, false, kSame, kRefused}, {"pr 10", B, false, kSame, kRefused},
        {"PR 10", B, false, kSame, kRefused}, {"GC 10", B, false, "gc 10", "gc 10"},
        {"gc 10", B, false, kSame, kRefused}, {"gc 10", S, false, kSame, "gc 10"},
        // The version 1.1 device.
        {"90 3C rv", B, true, kSame, kRefused}, {"B0 gc 10", S, true, kSame, kRefused},
        {"F0 dv F7", F, true, kSame, kRefused}, {"B0-gc 07 10", F, true, kSame, kRefused},
        {"B0 07 pr", F, true, kSame, "B0 07 pr"}, {"F0 41 10 42 12 40 00 7F 00 cs F7", F, true, kSame, kRefused},
        {"F0 41 10 42 12 40 00 7F 00 cs F7", B, true, kSame, "F0 41 10 42 12 40 00 7F 00 41 F7"},
        // Summed over 40 00 7F 00: the fifth byte behind F0 up to the one before "cs".
        {"F0 41 10 42 12 40 00 7F 00 cs F7", B, false, kSame, "F0 41 10 42 12 40 00 7F 00 41 F7"},
        {"F0 41 10 42 12 40 00 7F 00 cs F7", S, false, kSame, "F0 41 10 42 12 40 00 7F 00 41 F7"},
        {"F0 41 10 42 12 40 00 7F 00 cs F7", F, false, kSame, "F0 41 10 42 12 40 00 7F 00 cs F7"},
        // A 00 as third byte behind F0 moves the summed range one byte on.
        {"F0 41 10 00 42 12 40 00 7F 00 cs F7", B, false, kSame, "F0 41 10 00 42 12 40 00 7F 00 41 F7"},
        // Bytes summing to a multiple of 128 give 00.
        {"F0 41 10 42 12 40 40 cs F7", B, false, kSame, "F0 41 10 42 12 40 40 00 F7"},
        // Specials inside the summed range refuse; before it they don't.
        {"F0 41 10 42 12 dv 00 cs F7", B, false, kSame, kRefused},
        {"F0 41 10 42 12 40 rv cs F7", B, false, kSame, kRefused},
        {"F0 41 10 42 12 40 gc cs F7", S, false, kSame, kRefused},
        {"F0 41 dv 42 12 40 00 cs F7", B, false, kSame, "F0 41 dv 42 12 40 00 40 F7"},
        {"F0 41 10 cs F7", B, false, kSame, kRefused},
        {"F0 41 10 42 12 40 cs F7", F, false, kSame, "F0 41 10 42 12 40 cs F7"},
        {"F0 41 10 42 12 cs F7", F, false, kSame, kRefused}, {"41 10 42 12 40 00 cs F7", F, false, kSame, kRefused},
        {"F0 41 10 42 12 40 00 cs", F, false, kSame, kRefused},
        {"F0 41 F7 42 12 40 00 cs F7", F, false, kSame, kRefused},
    };
    for (const auto& c : cases) {
        const EnteredStringCheck check = CheckEnteredString(c.input, c.context, c.pc1600);
        SCOPED_TRACE(std::string(c.input) + " context " + std::to_string(static_cast<int>(c.context)) +
                     (c.pc1600 ? " PC1600" : ""));
        EXPECT_EQ(check.ok, c.rendered != kRefused);
        EXPECT_EQ(check.entered, c.entered ? c.entered : c.input);
        EXPECT_EQ(check.rendered, c.rendered ? c.rendered : "<error>");
    }
}

// The box around the check: an error shows the one box and gives the input
// back as typed (the text collapsed); good text asks nothing.
TEST(ValidateEnteredString, ShowsTheOneErrorBoxOrNothing) {
    ScriptedPrompter prompter;
    prompter.expectMessage(kStringErrorTitle, StringErrorText(), MessageAnswer::OK);
    StringWorkArea work;
    std::string text = "90  3C   7G";
    EXPECT_EQ(ValidateEnteredString(text, StringContext::Fader, false, work, prompter), "90  3C   7G");
    EXPECT_EQ(text, "90 3C 7G");
    EXPECT_EQ(work.RenderedMessage, "<error>");
    EXPECT_TRUE(prompter.done());
    text = "f0 41  10 42 12 40 00 7f 00 cs f7";
    EXPECT_EQ(ValidateEnteredString(text, StringContext::Button, false, work, prompter),
              "F0 41 10 42 12 40 00 7F 00 cs F7");
    EXPECT_EQ(work.RenderedMessage, "F0 41 10 42 12 40 00 7F 00 41 F7");
    EXPECT_EQ(prompter.seen().size(), 1u);
    // The box's text is the system's own, typing slip included.
    EXPECT_NE(StringErrorText().find("\r\n   - Entere hex values as two-characters"), std::string::npos);
}

struct GenerateCase {
    int kind, channel, value1, value2;
    bool fader;
    const char* expected;
};

TEST(GenerateMessageBytes, BuildsStatusAndValuesByKind) {
    const GenerateCase cases[] = {
        {0, 0, 60, 127, false, "  90 3C 7F"}, {1, 9, 60, 0, false, "  89 3C 00"},
        {3, 16, 7, 100, false, "  B0-gc 07 64"}, {3, 15, 128, 128, true, "  BF pr pr"},
        {3, 15, 128, 128, false, "  BF rv rv"}, {6, 2, 129, 130, false, "  E2 cs dv"},
        {2, 1, 131, 132, false, "  A1 gc rv"},
        {0, 0, 132, 133, false, "  90  "},  // 132 gives nothing as first value
        {4, 4, 5, 99, false, "  C4 05 "}, {5, 16, 127, 0, false, "  D0-gc 7F "}, {9, 3, 12, 0, false, "  F3 0C "},
        {8, 3, 1, 2, false, "  F2 01 02"}, {13, 0, 1, 2, false, "  FB  "}, {7, 0, 1, 2, false, "  F0  "},
        {16, 0, 1, 2, false, "    "},
    };
    for (const GenerateCase& c : cases) {
        const auto text = GenerateMessageBytes(c.kind, c.channel, c.value1, c.value2, c.fader);
        ASSERT_TRUE(text.has_value()) << c.kind;
        EXPECT_EQ(*text, c.expected) << "kind " << c.kind;
    }
    EXPECT_FALSE(GenerateMessageBytes(-1, 0, 0, 0, false).has_value());
}

TEST(NumberOfStringBytes, CountsBlanksAndDashesOfListLines) {
    MessageStringSet set;
    const char* lines[] = {"90-gc 3C 7F  (noteon)", "F0 41 10 42 12 40 00 7F 00 41 F7  (sysex)", "", "C0 05  (progch)"};
    for (const char* line : lines) set.Slots[static_cast<std::size_t>(set.Count++)].ListItem = line;
    EXPECT_EQ(NumberOfStringBytes(set, 0), 4);
    EXPECT_EQ(NumberOfStringBytes(set, 1), 11);
    EXPECT_EQ(NumberOfStringBytes(set, 2), 1);  // an empty line counts one
    EXPECT_EQ(NumberOfStringBytes(set, 3), 2);
    EXPECT_EQ(NumberOfStringBytes(set, -1), 18);
    EXPECT_EQ(NumberOfStringBytes(set, 60), 0);
}

}  // namespace
