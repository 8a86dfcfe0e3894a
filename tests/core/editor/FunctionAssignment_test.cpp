#include "editor/FunctionAssignment.h"

#include <gtest/gtest.h>

#include "TestProgram.h"
#include "editor/EditorDefaults.h"
#include "editor/EditorSelection.h"
#include "db/PoolDatabase.h"
#include "editor/EditorState.h"

namespace tavlo {
namespace {

using testing::TestProgram;

struct FunctionAssignmentTest : ::testing::Test {
    TestProgram t;
    EditorState& editor() { return t->editor; }
    Database& db() { return t->pool.db(); }
    FaderDef& fader(int i) { return editor().preset.Faders[i]; }
    ButtonDef& button(int i) { return editor().preset.Buttons[i]; }
};

TEST_F(FunctionAssignmentTest, DefaultsApplyOnlyWhenTheFunctionChanges) {
    WriteDefault(db(), "ReplaceMode", 2);
    WriteDefault(db(), "FaderChannel", 9);
    WriteDefault(db(), "CCNum", 74);
    ClickFader(editor(), 3);
    ChooseFaderFunction(editor(), db(), 1);
    EXPECT_EQ(fader(3).ReplaceMode, 2);
    EXPECT_EQ(fader(3).Channel, 9);
    EXPECT_EQ(fader(3).CCNum, 74);

    // The user changes the fields; choosing the same function again keeps them.
    SetFaderCCNum(editor(), 7);
    SetFaderChannel(editor(), 0);
    ChooseFaderFunction(editor(), db(), 1);
    EXPECT_EQ(fader(3).CCNum, 7);
    EXPECT_EQ(fader(3).Channel, 0);
}

TEST_F(FunctionAssignmentTest, MissingDefaultRowsLeaveFieldsAlone) {
    ClickFader(editor(), 0);
    fader(0).Channel = 4;
    fader(0).ParamFormat = 6;
    ChooseFaderFunction(editor(), db(), 1);
    EXPECT_EQ(fader(0).Channel, 4);
    ChooseFaderFunction(editor(), db(), 3);
    EXPECT_EQ(fader(0).ParamFormat, 6);
    WriteDefault(db(), "ParamFormat", 2);
    ChooseFaderFunction(editor(), db(), 0);
    ChooseFaderFunction(editor(), db(), 3);
    EXPECT_EQ(fader(0).ParamFormat, 2);
}

TEST_F(FunctionAssignmentTest, NamesAndCaptionsFollowTheFunction) {
    struct Case {
        int index;
        int function;
        const char* name;
        const char* expectedName;
        const char* caption;
    };
    const Case cases[] = {
        {2, 1, "", "Fader #3", "Fader #3 (cc)"},
        {16, 2, "", "CV #1", "CV #1 (mf)"},
        {17, 3, "  ", "CV #2", "CV #2 (st)"},
        {5, 1, "Volume ", "Volume ", "Volume  (cc)"},
        {6, 0, "Volume", "", ""},
    };
    for (const auto& c : cases) {
        ClickFader(editor(), c.index);
        fader(c.index).Name = c.name;
        fader(c.index).DeviceMapString = "Roland:JV:Cutoff";
        ChooseFaderFunction(editor(), db(), c.function);
        EXPECT_EQ(fader(c.index).Name, c.expectedName) << c.index;
        EXPECT_EQ(editor().FaderLabel[c.index], c.caption) << c.index;
        EXPECT_EQ(fader(c.index).Function, c.function);
        EXPECT_TRUE(fader(c.index).DeviceMapString.empty()) << "a manual choice breaks a device mapping";
    }
}

TEST_F(FunctionAssignmentTest, DeviceEntryIsNeverStoredAndShowsOnlyTheDeviceControls) {
    ClickFader(editor(), 1);
    ChooseFaderFunction(editor(), db(), 1);
    ChooseFaderFunction(editor(), db(), 4);
    EXPECT_EQ(fader(1).Function, 1);
    EXPECT_EQ(editor().FunctionComboIndex, 4);
    const FaderControls device = FaderControlsFor(4);
    EXPECT_TRUE(device.DeviceGroup);
    EXPECT_FALSE(device.NameAndValue || device.MinMax || device.Channel || device.CCNum || device.Mode ||
                 device.ParamFormat || device.EditString || device.MasterFader || device.MapFaderButton);
    const ButtonControls deviceButton = ButtonControlsFor(10);
    EXPECT_TRUE(deviceButton.DeviceGroup);
    EXPECT_FALSE(deviceButton.Name || deviceButton.InitButtonButton || deviceButton.MapButtonButton);
}

TEST_F(FunctionAssignmentTest, VisibilityTables) {
    // One row per function: NameAndValue, MinMax, Channel, ParamFormat, EditString, MasterFader.
    const bool fader[4][6] = {{0, 0, 0, 0, 0, 0}, {1, 1, 1, 0, 0, 0}, {1, 0, 0, 0, 0, 1}, {1, 1, 0, 1, 1, 0}};
    for (int f = 0; f < 4; ++f) {
        const FaderControls c = FaderControlsFor(f);
        const bool got[6] = {c.NameAndValue, c.MinMax, c.Channel, c.ParamFormat, c.EditString, c.MasterFader};
        for (int k = 0; k < 6; ++k) EXPECT_EQ(got[k], fader[f][k]) << "function " << f << " column " << k;
    }
    // Channel, ProgChange, Note, String1, String2, Scene by button function 0..9.
    const bool button[10][6] = {{0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0}, {1, 1, 0, 0, 0, 0},
                                {1, 0, 1, 0, 0, 0}, {0, 0, 0, 1, 0, 0}, {0, 0, 0, 1, 1, 0}, {0, 0, 0, 1, 1, 0},
                                {0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 1}};
    for (int f = 0; f < 10; ++f) {
        const ButtonControls c = ButtonControlsFor(f);
        const bool got[6] = {c.Channel, c.ProgChange, c.Note, c.String1, c.String2, c.Scene};
        for (int k = 0; k < 6; ++k) EXPECT_EQ(got[k], button[f][k]) << "button function " << f << " column " << k;
        EXPECT_EQ(c.Name, f != 0);
    }
}

TEST_F(FunctionAssignmentTest, ParamFormatRanges) {
    const std::pair<int, ValueRange> cases[] = {
        {0, {-128, 127}},    {1, {-16384, 16383}}, {3, {-16384, 16383}}, {4, {-16384, 16383}}, {5, {-256, 255}},
        {6, {-256, 255}},    {7, {-4096, 4095}},   {8, {-4096, 4095}},   {9, {-16384, 16383}}, {10, {-16384, 16383}},
        {11, {-100, 99}},    {12, {-100, 99}},
    };
    for (const auto& [format, range] : cases) {
        EXPECT_EQ(ParamFormatRange(format).low, range.low) << format;
        EXPECT_EQ(ParamFormatRange(format).high, range.high) << format;
    }
}

TEST_F(FunctionAssignmentTest, ChoosingAStringFormatNarrowsTheRange) {
    ClickFader(editor(), 0);
    ChooseFaderFunction(editor(), db(), 3);
    SetParamFormat(editor(), 1);
    SetFaderMin(editor(), -1000);
    SetFaderMax(editor(), 1000);
    EXPECT_EQ(fader(0).Min, -1000);
    SetParamFormat(editor(), 11);
    EXPECT_EQ(editor().MinMaxSliderMin, -100);
    EXPECT_EQ(fader(0).Min, -100);
    EXPECT_EQ(fader(0).Max, 99);
}

TEST_F(FunctionAssignmentTest, MinAndMaxAreKeptApartAndSetPolarity) {
    ClickFader(editor(), 0);
    ChooseFaderFunction(editor(), db(), 1);
    SetFaderMax(editor(), 100);
    SetFaderMin(editor(), 100);
    EXPECT_EQ(fader(0).Min, 99) << "Min steps down when it meets Max";
    EXPECT_EQ(fader(0).Polarity, -1);

    SetFaderMax(editor(), 0);
    EXPECT_EQ(fader(0).Max, 0);
    EXPECT_EQ(fader(0).Polarity, 0) << "Max below Min reverses the fader";
    SetFaderMin(editor(), 0);
    EXPECT_EQ(fader(0).Min, 1) << "at the bottom of the range the changed end steps up";

    SetFaderMin(editor(), 500);
    EXPECT_EQ(fader(0).Min, 127) << "clamped to the slider's range";
}

TEST_F(FunctionAssignmentTest, ValueStaysWithinTheRangeInPolarityOrder) {
    ClickFader(editor(), 0);
    ChooseFaderFunction(editor(), db(), 1);
    fader(0).Value = 120;
    SetFaderMax(editor(), 100);
    EXPECT_EQ(fader(0).Value, 100);
    SetFaderMin(editor(), 110);  // reversed: 110 down to 100
    SetFaderValueText(editor(), "5");
    EXPECT_EQ(fader(0).Value, 100);
    SetFaderValueText(editor(), "500");
    EXPECT_EQ(fader(0).Value, 110);
}

TEST_F(FunctionAssignmentTest, ReversedSliderGivesMinAtItsTop) {
    FaderDef f;
    f.Min = 100;
    f.Max = 10;
    f.Polarity = 0;
    const ValueRange range = PCSliderRange(f);
    EXPECT_EQ(range.low, 10);
    EXPECT_EQ(FaderValueAt(f, range.low), 100) << "the top of the slider (its lowest position) gives Min";
    EXPECT_EQ(FaderValueAt(f, range.high), 10);
    f.Polarity = -1;
    f.Min = 10;
    f.Max = 100;
    EXPECT_EQ(FaderValueAt(f, 40), 40);
}

TEST_F(FunctionAssignmentTest, MasterChecksWriteMasterOfButNeverTheFadersOwn) {
    ClickFader(editor(), 2);
    ChooseFaderFunction(editor(), db(), 2);
    SetMasterCheck(editor(), 0, true);
    SetMasterCheck(editor(), 17, true);
    SetMasterCheck(editor(), 2, true);
    EXPECT_EQ(fader(2).MasterOf, "X                X");
    fader(2).MasterOf[2] = 'X';  // as a stored preset might hold it
    ClickFader(editor(), 0);
    ClickFader(editor(), 2);
    EXPECT_FALSE(editor().Check1[2]) << "own box unchecked";
    EXPECT_TRUE(editor().Check1[0]);
    EXPECT_EQ(fader(2).MasterOf[2], 'X') << "showing changes nothing";
}

TEST_F(FunctionAssignmentTest, ButtonDefaultsAndThePC1600Refusal) {
    WriteDefault(db(), "ButtonChannel", 3);
    WriteDefault(db(), "ProgChange", 42);
    WriteDefault(db(), "Note", 48);
    WriteDefault(db(), "Velocity", 129);
    ClickButton(editor(), 4);
    ASSERT_TRUE(ChooseButtonFunction(editor(), db(), t.prompter, false, 3));
    EXPECT_EQ(button(4).Channel, 3);
    EXPECT_EQ(button(4).ProgChange, 42);
    EXPECT_EQ(button(4).Note, 60) << "a note default is for function 4 only";
    ASSERT_TRUE(ChooseButtonFunction(editor(), db(), t.prompter, false, 4));
    EXPECT_EQ(button(4).Note, 48);
    EXPECT_EQ(button(4).Velocity, 129);
    EXPECT_EQ(editor().PCButton[4], " (note)");

    t.prompter.expectMessage("Cannot Set Button", "The PC1600 version (non-X) cannot set buttons to SEND FADER or SEND SCENE",
                             MessageAnswer::OK);
    EXPECT_FALSE(ChooseButtonFunction(editor(), db(), t.prompter, true, 9));
    EXPECT_EQ(button(4).Function, 0) << "the list returns to Off, and the button with it";
    EXPECT_EQ(editor().BFunctionComboIndex, 0);
    EXPECT_TRUE(t.prompter.done());
    EXPECT_TRUE(ChooseButtonFunction(editor(), db(), t.prompter, false, 9));
}

TEST_F(FunctionAssignmentTest, SelectingAgainRefillsOnlyWhenAnotherFrameShowed) {
    EXPECT_TRUE(ClickButton(editor(), 5));
    EXPECT_EQ(editor().ButtonFrameCaption, "Settings for Button #6");
    EXPECT_EQ(editor().HighlightedButton, 5);
    EXPECT_EQ(editor().BorderedSlider, -1);
    EXPECT_FALSE(ClickButton(editor(), 5));
    ShowSetupFrame(editor());
    EXPECT_TRUE(ClickButton(editor(), 5));
    EXPECT_TRUE(ClickFader(editor(), 16));
    EXPECT_EQ(editor().FaderFrameCaption, "Control Settings for CV 1");
    EXPECT_EQ(editor().HighlightedButton, -1);
    EXPECT_FALSE(ClickFader(editor(), 16));
}

TEST_F(FunctionAssignmentTest, FilteringHandlersDoNothing) {
    ClickFader(editor(), 0);
    editor().ShowingParams = true;
    ChooseFaderFunction(editor(), db(), 1);
    SetFaderMin(editor(), 50);
    EXPECT_EQ(fader(0).Function, 0);
    EXPECT_EQ(fader(0).Min, 0);
}

TEST_F(FunctionAssignmentTest, InitFaderUsesChannelOne) {
    ClickFader(editor(), 7);
    ChooseFaderFunction(editor(), db(), 1);
    InitFader(editor(), 7);
    EXPECT_EQ(fader(7).Function, 0);
    EXPECT_EQ(fader(7).Channel, 1);
    EXPECT_EQ(editor().FaderLabel[7], "");
}

TEST_F(FunctionAssignmentTest, LabelFields) {
    EXPECT_EQ(DefaultFieldOfLabel("BChannelLabel"), "ButtonChannel");
    EXPECT_EQ(DefaultFieldOfLabel("ModeLabel"), "ReplaceMode");
    EXPECT_EQ(DefaultFieldOfLabel("DataWheelLabel1"), "DataWheelLink");
    EXPECT_EQ(DefaultFieldOfLabel("NameLabel"), "");
}

}  // namespace
}  // namespace tavlo

namespace tavlo {
namespace {

TEST(SetFaderFunctionRange, StringFaderRangeFollowsTheLibraryFormat) {
    struct Case {
        const char* format;
        int bytes;
        int wantMin, wantMax;
    };
    const Case cases[] = {
        {"7 bits per byte, H-L", 2, -16384, 16383},
        {"Nibs, L-H", 2, -256, 255},
        {"Nibs, L-H", 3, -4096, 4095},
        {"BCD, H-L", 2, -100, 99},
        {"Single byte", 1, -128, 127},
    };
    for (const auto& c : cases) {
        EditorState editor;
        PC1600xSetFaderFunction(editor, 0, "S", 3, -20000, 20000, 1, 0, "F0 pr F7", c.format, std::string(18, ' '),
                                c.bytes);
        EXPECT_EQ(editor.preset.Faders[0].Min, c.wantMin) << c.format;
        EXPECT_EQ(editor.preset.Faders[0].Max, c.wantMax) << c.format;
        EXPECT_EQ(editor.MinMaxSliderMin, c.wantMin) << "the frame shows the same range";
    }
}

}  // namespace
}  // namespace tavlo
