#include "editor/ParameterText.h"

#include <gtest/gtest.h>

namespace tavlo {
namespace {

using namespace ParameterText;

struct ParseCase {
    const char* text;
    int expected;
};

TEST(ParameterText, ChannelTextReadsGlobalNamesAndClampsNumbers) {
    const ParseCase cases[] = {
        {"global", 16}, {"ChOut", 16}, {"cho", 16}, {"  G", 16}, {"01", 0},  {"16", 15},
        {"17", 15},     {"0", 0},      {"-3", 0},   {"x", 0},    {"10", 9},  {" 5 ", 4},
    };
    for (const auto& c : cases) EXPECT_EQ(ParseChannelText(c.text), c.expected) << c.text;
}

TEST(ParameterText, VelocityTextKeepsDeviceValuesAndClamps) {
    const ParseCase cases[] = {
        {"Rem", 129}, {"rv", 129}, {"Fdr", 128}, {"f", 128}, {"200", 127}, {"-5", 0},
        {"7Fh", 127}, {"10H", 16}, {"064", 64},  {"", 0},
    };
    for (const auto& c : cases) EXPECT_EQ(ParseVelocityText(c.text), c.expected) << c.text;
    EXPECT_EQ(VelocityText(5), "005");
    EXPECT_EQ(VelocityText(128), "Fdr");
    EXPECT_EQ(VelocityText(129), "Rem");
}

TEST(ParameterText, ProgChangeOutsideRangeGivesZero) {
    const ParseCase cases[] = {{"127", 127}, {"128", 0}, {"-1", 0}, {"7fH", 127}, {"80h", 0}, {"12", 12}, {"abc", 0}};
    for (const auto& c : cases) EXPECT_EQ(ParseProgChangeText(c.text), c.expected) << c.text;
}

TEST(ParameterText, NoteTextReadsNamesNumbersHexAndSpecials) {
    const ParseCase cases[] = {
        {"C4", 60},  {"c4", 60},  {"G9", 127}, {"C-1", 0},  {"60", 60}, {"3Ch", 60},
        {"rv", 129}, {"fd", 128}, {"fad", 128}, {"200", 127}, {"H1", 0}, {"C4 060", 60},
    };
    for (const auto& c : cases) EXPECT_EQ(ParseNoteText(c.text), c.expected) << c.text;
    EXPECT_EQ(NoteText(60), "C4 060");
    // The text rule's own output reads back to the same value.
    for (int note = 0; note < 130; ++note) EXPECT_EQ(ParseNoteText(NoteText(note)), note) << note;
}

TEST(ParameterText, SetupValuesStorePlusOneAndShowOff) {
    EXPECT_EQ(SetupValueText(0), "Off");
    EXPECT_EQ(SetupValueText(1), "000");
    EXPECT_EQ(SetupValueText(128), "127");
    const ParseCase cases[] = {{"off", 0}, {"O", 0}, {"", 1}, {"200", 128}, {"0", 1}, {"7Fh", 128}, {"64", 65}, {"-4", 1}};
    for (const auto& c : cases) EXPECT_EQ(ParseSetupValueText(c.text), c.expected) << c.text;
    EXPECT_EQ(ParseSetupChannelText("16"), 15);
    EXPECT_EQ(ParseSetupChannelText("40"), 15);
    EXPECT_EQ(ParseSetupChannelText("0"), 0);
}

TEST(ParameterText, RangeTextIsClampedToTheSlider) {
    EXPECT_EQ(ParseRangeText("500", -128, 127), 127);
    EXPECT_EQ(ParseRangeText("-500", -128, 127), -128);
    EXPECT_EQ(ParseRangeText("-20", -128, 127), -20);
    EXPECT_EQ(ParseRangeText("", 10, 20), 10);
}

// The panel's sliders draw their minimum at the top: there Up and Page Up
// still move the handle up, so the value goes down.
TEST(ParameterText, SliderKeysStepWithinTheRange) {
    struct Case {
        int value;
        SliderKey key;
        int min, max, expected;
        bool minimumOnTop = false;
    };
    const Case cases[] = {
        {50, SliderKey::End, 0, 127, 127},      {50, SliderKey::Home, 0, 127, 0},
        {50, SliderKey::Left, 0, 127, 49},      {50, SliderKey::Right, 0, 127, 51},
        {50, SliderKey::PageUp, 0, 127, 62},    {50, SliderKey::PageDown, 0, 127, 38},
        {127, SliderKey::Plus, 0, 127, 127},    {0, SliderKey::Minus, 0, 127, 0},
        {120, SliderKey::PageUp, 0, 127, 127},  {0, SliderKey::PageUp, -16384, 16383, 3276},
        {5, SliderKey::PageDown, 0, 16, 4},     {3, SliderKey::Up, 0, 16, 4},
        {50, SliderKey::Up, 0, 127, 49, true},  {50, SliderKey::PageUp, 0, 127, 38, true},
        {50, SliderKey::Down, 0, 127, 51, true}, {50, SliderKey::PageDown, 0, 127, 62, true},
        {50, SliderKey::Plus, 0, 127, 51, true}, {50, SliderKey::End, 0, 127, 127, true},
    };
    for (const auto& c : cases)
        EXPECT_EQ(StepSlider(c.value, c.key, c.min, c.max, c.minimumOnTop), c.expected)
            << c.value << " key " << int(c.key) << (c.minimumOnTop ? " on top" : "");
}

}  // namespace
}  // namespace tavlo
