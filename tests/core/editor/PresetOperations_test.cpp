#include "editor/PresetOperations.h"

#include <gtest/gtest.h>

#include "ScriptedPrompter.h"

using namespace tavlo;
using tavlo::testing::ScriptedPrompter;

namespace {

TEST(FunctionGetters, AnswerMinusOneOutsideThePanel) {
    EditorState editor;
    editor.preset.Faders[17].Function = 3;
    editor.preset.Buttons[15].Function = 7;
    struct Case {
        int index, fader, button;
    };
    for (const Case& c : {Case{-1, -1, -1}, Case{0, 0, 0}, Case{15, 0, 7}, Case{16, 0, -1}, Case{17, 3, -1},
                          Case{18, -1, -1}}) {
        EXPECT_EQ(PC1600xFormFaderFunction(editor, c.index), c.fader) << c.index;
        EXPECT_EQ(PC1600xFormButtonFunction(editor, c.index), c.button) << c.index;
    }
}

struct FormatCase {
    const char* name;
    int byteCount;
    int expected;
};

class FaderFormatName : public ::testing::TestWithParam<FormatCase> {};

TEST_P(FaderFormatName, SetsParamFormatFromLibraryNameAndByteCount) {
    EditorState editor;
    editor.preset.Faders[2].ParamFormat = 9;  // reachable only from the list; kept for unknown names
    const auto& c = GetParam();
    PC1600xSetFaderFunction(editor, 2, "Cutoff", 3, 0, 127, 1, 0, "F0 pr F7", c.name, std::string(18, ' '), c.byteCount);
    EXPECT_EQ(editor.preset.Faders[2].ParamFormat, c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    LibraryNames, FaderFormatName,
    ::testing::Values(FormatCase{"", 2, 0}, FormatCase{"Single byte", 3, 0}, FormatCase{"  Single byte ", 1, 0},
                      FormatCase{"7 bits per byte, H-L", 2, 1}, FormatCase{"7 bits per byte, H-L", 3, 4},
                      FormatCase{"7 bits per byte, L-H", 2, 2}, FormatCase{"7 bits per byte, L-H", 3, 3},
                      FormatCase{"Nibs, H-L", 2, 5}, FormatCase{"Nibs, H-L", 3, 7}, FormatCase{"Nibs, L-H", 2, 6},
                      FormatCase{"Nibs, L-H", 4, 8}, FormatCase{"BCD, H-L", 2, 11}, FormatCase{"BCD, H-L", 3, 11},
                      FormatCase{"BCD, L-H", 2, 12}, FormatCase{"Something else", 2, 9}));

TEST(SetFaderFunction, WritesTheWholeFaderAndSelectsIt) {
    EditorState editor;
    editor.preset.FaderStrings[4].Count = 3;
    editor.preset.Faders[4].Value = 99;
    editor.preset.Faders[4].ReplaceMode = 2;
    editor.preset.Faders[4].DeviceMapString = "Synth|Cutoff";
    std::string master(18, ' ');
    master[0] = 'X';
    PC1600xSetFaderFunction(editor, 4, "Volume", 1, 10, 100, 3, 7, "", "", master, 1);
    const FaderDef& f = editor.preset.Faders[4];
    EXPECT_EQ(f.Name, "Volume");
    EXPECT_EQ(f.Function, 1);
    EXPECT_EQ(f.Min, 10);
    EXPECT_EQ(f.Max, 100);
    EXPECT_EQ(f.Channel, 2);  // the argument counts from 1
    EXPECT_EQ(f.CCNum, 7);
    EXPECT_EQ(f.MasterOf, master);
    EXPECT_EQ(f.Value, 10);  // Value becomes Min, whatever it held
    EXPECT_EQ(f.ReplaceMode, 0);
    EXPECT_EQ(f.Polarity, -1);
    EXPECT_EQ(f.DeviceMapString, "");
    EXPECT_EQ(editor.preset.FaderStrings[4].Count, 0);
    EXPECT_EQ(editor.FaderLabel[4], "Volume (cc)");
    EXPECT_EQ(editor.CurrentFader, 4);
    EXPECT_EQ(editor.BorderedSlider, 4);
    EXPECT_EQ(editor.ShownFrame, EditorFrame::Fader);
}

TEST(SetFaderFunction, ChannelSeventeenIsTheGlobalChannel) {
    EditorState editor;
    PC1600xSetFaderFunction(editor, 0, "A", 1, 0, 127, 17, 0, "", "", std::string(18, ' '), 1);
    EXPECT_EQ(editor.preset.Faders[0].Channel, kChannelOut);
}

TEST(SetFaderFunction, CaptionTagsAndRangeByFunction) {
    struct Case {
        int function, min, max;
        const char* caption;
        int wantMin, wantMax, polarity;
    };
    for (const Case& c : {Case{0, 0, 127, "Off", 0, 127, -1}, Case{1, 200, -5, "Vol (cc)", 127, 0, 0},
                          Case{2, -32000, 32000, "Master (mf)", -32000, 32000, -1},
                          // A string fader's range follows its format; no format name is Single byte.
                          Case{3, -20000, 20000, "Str (st)", -128, 127, -1},
                          Case{1, 64, 64, "Same (cc)", 63, 64, -1}, Case{1, 0, 0, "Zero (cc)", 0, 1, -1}}) {
        EditorState editor;
        const std::string name = std::string(c.caption).substr(0, std::string(c.caption).find(" ("));
        PC1600xSetFaderFunction(editor, 1, name, c.function, c.min, c.max, 1, 0, "", "", std::string(18, ' '), 1);
        const FaderDef& f = editor.preset.Faders[1];
        EXPECT_EQ(editor.FaderLabel[1], c.caption);
        EXPECT_EQ(f.Min, c.wantMin) << c.caption;
        EXPECT_EQ(f.Max, c.wantMax) << c.caption;
        EXPECT_EQ(f.Polarity, c.polarity) << c.caption;
        EXPECT_GE(f.Value, std::min(f.Min, f.Max));
        EXPECT_LE(f.Value, std::max(f.Min, f.Max));
    }
}

TEST(SetFaderFunction, IndexOutsideThePanelIsAProgrammingError) {
    EditorState editor;
    EXPECT_THROW(PC1600xSetFaderFunction(editor, 18, "", 1, 0, 127, 1, 0, "", "", "", 1), std::out_of_range);
    EXPECT_THROW(PC1600xSetButtonFunction(editor, 16, "", 1, 0, 0, 0, 0, "", ""), std::out_of_range);
}

TEST(SetButtonFunction, WritesTheWholeButtonWithItsCaption) {
    struct Case {
        int function;
        const char* caption;
    };
    for (const Case& c : {Case{3, "Pad (pc)"}, Case{4, "Pad (note)"}, Case{5, "Pad (st)"}, Case{6, "Pad (pr/r)"},
                          Case{7, "Pad (togl)"}, Case{1, "Pad ()"}, Case{9, "Pad ()"}}) {
        EditorState editor;
        editor.preset.ButtonStrings1[6].Count = 2;
        editor.preset.ButtonStrings2[6].Count = 1;
        editor.preset.Buttons[6].Scene = "Intro";
        editor.preset.Buttons[6].ScenePreset = 12;
        editor.preset.Buttons[6].DeviceMapString = "x";
        PC1600xSetButtonFunction(editor, 6, "Pad", c.function, 16, 5, 100, 64, "90 3C 7F", "80 3C 00");
        const ButtonDef& b = editor.preset.Buttons[6];
        EXPECT_EQ(editor.PCButton[6], c.caption);
        EXPECT_EQ(b.Function, c.function);
        EXPECT_EQ(b.Channel, 16);
        EXPECT_EQ(b.ProgChange, 5);
        EXPECT_EQ(b.Velocity, 100);
        EXPECT_EQ(b.Note, 64);
        EXPECT_EQ(b.String1, "90 3C 7F");
        EXPECT_EQ(b.String2, "80 3C 00");
        EXPECT_EQ(b.Scene, "<none>");
        EXPECT_EQ(b.ScenePreset, -1);
        EXPECT_EQ(b.DeviceMapString, "");
        EXPECT_EQ(editor.preset.ButtonStrings1[6].Count, 0);
        EXPECT_EQ(editor.preset.ButtonStrings2[6].Count, 0);
    }
}

TEST(SetStrings, FillSlotsInOrderAndCountThem) {
    EditorState editor;
    PC1600xSetFaderString(editor, 3, 0, 3, 0, 7, 128, "B0 07 pr", "B0 07 pr  (ctrlch)");
    PC1600xSetFaderString(editor, 3, 1, 16, 16, 0, 0, "F7", "F7  (freebyte)");
    const auto& set = editor.preset.FaderStrings[3];
    EXPECT_EQ(set.Count, 2);
    EXPECT_EQ(set.Slots[0].EnteredString, "B0 07 pr");
    EXPECT_EQ(set.Slots[0].Value2, 128);
    EXPECT_EQ(set.Slots[0].OwnCheck, 0);
    EXPECT_EQ(set.Slots[1].ListItem, "F7  (freebyte)");

    PC1600xSetButtonString(editor, 2, 0, 1, 0, 1, 60, 127, "91 3C 7F", "91 3C 7F  (noteon)");
    PC1600xSetButtonString(editor, 2, 0, 2, 1, 1, 60, 0, "81 3C 00", "81 3C 00  (noteoff)");
    PC1600xSetButtonString(editor, 2, 1, 2, 1, 1, 61, 0, "81 3D 00", "81 3D 00  (noteoff)");
    EXPECT_EQ(editor.preset.ButtonStrings1[2].Count, 1);
    EXPECT_EQ(editor.preset.ButtonStrings2[2].Count, 2);
    EXPECT_EQ(editor.preset.ButtonStrings2[2].Slots[1].Value1, 61);
    EXPECT_EQ(editor.preset.ButtonStrings1[2].Slots[0].CommandChannel, 1);
}

TEST(SetupParams, InitZeroesEveryChannel) {
    EditorState editor;
    editor.preset.SetupChannels[5] = {3, 1, 4, 5};
    PC1600xInitSetupParams(editor);
    for (const auto& channel : editor.preset.SetupChannels) EXPECT_EQ(channel, SetupChannelDef{});
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
    ::testing::Values(SetupCase{"BothBanksLsbWins", false, 5, 3, -1, -1, {4, 0, 7, 8}, false},
                      SetupCase{"BothBanksLsbWinsOnPC1600", true, 5, 3, -1, -1, {4, 0, 7, 8}, false},
                      SetupCase{"MsbOnX", false, 5, -1, -1, -1, {6, 1, 7, 8}, false},
                      SetupCase{"MsbOnPC1600Warns", true, 5, -1, -1, -1, {6, 0, 7, 8}, true},
                      SetupCase{"LsbOnly", false, -1, 0, -1, -1, {1, 0, 7, 8}, false},
                      SetupCase{"ProgramAndVolumeCountFromOne", false, -1, -1, 0, 127, {0, 0, 1, 128}, false},
                      SetupCase{"NothingGiven", false, -1, -1, -1, -1, {0, 0, 7, 8}, false}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
