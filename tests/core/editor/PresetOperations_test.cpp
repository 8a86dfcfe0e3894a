#include "editor/PresetOperations.h"

#include <gtest/gtest.h>

#include "ScriptedPrompter.h"

using namespace tavlo;
using tavlo::testing::ScriptedPrompter;

namespace {

// Device libraries address the panel by index: outside it the getters answer
// -1 and the setters refuse rather than write past the arrays.
TEST(PresetOperations, IndexesOutsideThePanel) {
    EditorState editor;
    editor.preset.Faders[17].Function = 3;
    editor.preset.Buttons[15].Function = 7;
    EXPECT_EQ(PC1600xFormFaderFunction(editor, 17), 3);
    EXPECT_EQ(PC1600xFormFaderFunction(editor, 18), -1);
    EXPECT_EQ(PC1600xFormButtonFunction(editor, 15), 7);
    EXPECT_EQ(PC1600xFormButtonFunction(editor, 16), -1);
    EXPECT_EQ(PC1600xFormButtonFunction(editor, -1), -1);
    EXPECT_THROW(PC1600xSetFaderFunction(editor, 18, "", 1, 0, 127, 1, 0, "", "", "", 1), std::out_of_range);
    EXPECT_THROW(PC1600xSetButtonFunction(editor, 16, "", 1, 0, 0, 0, 0, "", ""), std::out_of_range);
}

// A string fader's format comes from the library's name and byte count, and
// its range, asked wider, is cut to what that format can carry.
struct FormatCase {
    const char* name;
    int byteCount, format, low, high;
};

class FaderFormatName : public ::testing::TestWithParam<FormatCase> {};

TEST_P(FaderFormatName, SetsParamFormatAndItsRange) {
    EditorState editor;
    editor.preset.Faders[2].ParamFormat = 9;  // reachable only from the list; kept for unknown names
    const auto& c = GetParam();
    PC1600xSetFaderFunction(editor, 2, "S", 3, -20000, 20000, 1, 0, "F0 pr F7", c.name, std::string(18, ' '),
                            c.byteCount);
    const FaderDef& f = editor.preset.Faders[2];
    EXPECT_EQ(f.ParamFormat, c.format);
    EXPECT_EQ(f.Min, c.low);
    EXPECT_EQ(f.Max, c.high);
    EXPECT_EQ(editor.MinMaxSliderMin, c.low) << "the frame shows the same range";
}

INSTANTIATE_TEST_SUITE_P(
    LibraryNames, FaderFormatName,
    ::testing::Values(FormatCase{"", 2, 0, -128, 127}, FormatCase{"  Single byte ", 3, 0, -128, 127},
                      FormatCase{"7 bits per byte, H-L", 2, 1, -16384, 16383},
                      FormatCase{"7 bits per byte, H-L", 3, 4, -16384, 16383},
                      FormatCase{"7 bits per byte, L-H", 2, 2, -16384, 16383},
                      FormatCase{"7 bits per byte, L-H", 3, 3, -16384, 16383},
                      FormatCase{"Nibs, H-L", 2, 5, -256, 255}, FormatCase{"Nibs, H-L", 3, 7, -4096, 4095},
                      FormatCase{"Nibs, L-H", 2, 6, -256, 255}, FormatCase{"Nibs, L-H", 4, 8, -4096, 4095},
                      FormatCase{"BCD, H-L", 3, 11, -100, 99}, FormatCase{"BCD, L-H", 2, 12, -100, 99},
                      FormatCase{"Something else", 2, 9, -16384, 16383}));

// Channel 17 is the global channel; the fader set becomes the selected one.
TEST(SetFaderFunction, RangeAndPolarityByFunction) {
    EditorState selected;
    PC1600xSetFaderFunction(selected, 4, "A", 1, 0, 127, 17, 0, "", "", std::string(18, ' '), 1);
    EXPECT_EQ(selected.preset.Faders[4].Channel, kChannelOut);
    EXPECT_EQ(selected.CurrentFader, 4);
    struct Case {
        int function, min, max;
        const char* caption;
        int wantMin, wantMax, polarity;
    };
    for (const Case& c : {Case{0, 0, 127, "Off", 0, 127, -1}, Case{1, 200, -5, "Vol (cc)", 127, 0, 0},
                          Case{2, -32000, 32000, "Master (mf)", -32000, 32000, -1},
                          Case{1, 64, 64, "Same (cc)", 63, 64, -1}, Case{1, 0, 0, "Zero (cc)", 0, 1, -1}}) {
        EditorState editor;
        const std::string name = std::string(c.caption).substr(0, std::string(c.caption).find(" ("));
        PC1600xSetFaderFunction(editor, 1, name, c.function, c.min, c.max, 1, 0, "", "", std::string(18, ' '), 1);
        const FaderDef& f = editor.preset.Faders[1];
        EXPECT_EQ(editor.FaderLabel[1], c.caption);
        EXPECT_EQ(f.Min, c.wantMin) << c.caption;
        EXPECT_EQ(f.Max, c.wantMax) << c.caption;
        EXPECT_EQ(f.Polarity, c.polarity) << c.caption;
    }
}

struct SetupCase {
    const char* name;
    bool pc1600;
    int msb, lsb, program, volume;
    SetupChannelDef expected;
    bool warns;
};

class SetupParams : public ::testing::TestWithParam<SetupCase> {};

TEST_P(SetupParams, BankRulesAndOffsets) {
    const auto& c = GetParam();
    EditorState editor;
    editor.preset.SetupChannels[9] = {0, 0, 7, 8};  // what isn't given stays
    ScriptedPrompter prompter;
    if (c.warns)
        prompter.expectMessage("Cannot Send BankMSB",
                               "The PC1600 version 1.1 Model cannot support BankMSBs in the Channel Setup information.  "
                               "This Preset will send the BankLSB instead.",
                               MessageAnswer::OK);
    PC1600xSetSetupParams(editor, c.pc1600, prompter, 9, c.msb, c.lsb, c.program, c.volume);
    EXPECT_EQ(editor.preset.SetupChannels[9], c.expected);
    EXPECT_TRUE(prompter.done());
}

INSTANTIATE_TEST_SUITE_P(
    Cases, SetupParams,
    ::testing::Values(SetupCase{"BothBanksLsbWinsOnPC1600", true, 5, 3, -1, -1, {4, 0, 7, 8}, false},
                      SetupCase{"MsbOnX", false, 5, -1, -1, -1, {6, 1, 7, 8}, false},
                      SetupCase{"MsbOnPC1600Warns", true, 5, -1, -1, -1, {6, 0, 7, 8}, true},
                      SetupCase{"LsbOnly", false, -1, 0, -1, -1, {1, 0, 7, 8}, false},
                      SetupCase{"ProgramAndVolumeCountFromOne", false, -1, -1, 0, 127, {0, 0, 1, 128}, false}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
