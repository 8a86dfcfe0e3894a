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
    ClickFader(editor(), 0);
    fader(0).Channel = 4;
    ChooseFaderFunction(editor(), db(), 1);
    EXPECT_EQ(fader(0).Channel, 4) << "without a default row the field stays";
    WriteDefault(db(), "ReplaceMode", 2);
    WriteDefault(db(), "FaderChannel", 9);
    ClickFader(editor(), 3);
    ChooseFaderFunction(editor(), db(), 1);
    EXPECT_EQ(fader(3).ReplaceMode, 2);
    EXPECT_EQ(fader(3).Channel, 9);
    // The user changes the field; choosing the same function again keeps it.
    SetFaderChannel(editor(), 0);
    ChooseFaderFunction(editor(), db(), 1);
    EXPECT_EQ(fader(3).Channel, 0);
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

TEST_F(FunctionAssignmentTest, ControlNamesTakeTwelveCharacters) {
    ClickFader(editor(), 0);
    SetFaderName(editor(), "Fifteen chars!!");
    EXPECT_EQ(fader(0).Name, "Fifteen char");
    ClickButton(editor(), 0);
    SetButtonName(editor(), "ABCDEFGHIJKLMNO");
    EXPECT_EQ(button(0).Name, "ABCDEFGHIJKL");
}

// A fader back to its defaults sends on channel 1, not on the global channel
// a new preset's faders start with.
TEST_F(FunctionAssignmentTest, InitFaderSetsChannelOne) {
    fader(4).Function = 1;
    fader(4).Channel = 9;
    InitFader(editor(), 4);
    EXPECT_EQ(fader(4).Channel, 1);
    EXPECT_EQ(fader(4).Function, 0);
}

// The device entry of the list opens the device controls; it is no function.
TEST_F(FunctionAssignmentTest, DeviceEntryIsNeverStored) {
    ClickFader(editor(), 1);
    ChooseFaderFunction(editor(), db(), 1);
    ChooseFaderFunction(editor(), db(), 4);
    EXPECT_EQ(fader(1).Function, 1);
    EXPECT_EQ(editor().FunctionComboIndex, 4);
    EXPECT_TRUE(FaderControlsFor(4).DeviceGroup && !FaderControlsFor(4).NameAndValue);
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
    WriteDefault(db(), "Note", 48);
    ClickButton(editor(), 4);
    ASSERT_TRUE(ChooseButtonFunction(editor(), db(), t.prompter, false, 3));
    EXPECT_EQ(button(4).Channel, 3);
    EXPECT_EQ(button(4).Note, 60) << "a note default is for function 4 only";
    ASSERT_TRUE(ChooseButtonFunction(editor(), db(), t.prompter, false, 4));
    EXPECT_EQ(button(4).Note, 48);

    t.prompter.expectMessage("Cannot Set Button", "The PC1600 version (non-X) cannot set buttons to SEND FADER or SEND SCENE",
                             MessageAnswer::OK);
    EXPECT_FALSE(ChooseButtonFunction(editor(), db(), t.prompter, true, 9));
    EXPECT_EQ(button(4).Function, 0) << "the list returns to Off, and the button with it";
    EXPECT_EQ(editor().BFunctionComboIndex, 0);
    EXPECT_TRUE(ChooseButtonFunction(editor(), db(), t.prompter, false, 9));
}

// While the frame is being filled, its change handlers write nothing back.
TEST_F(FunctionAssignmentTest, FillingTheFrameWritesNothing) {
    ClickFader(editor(), 0);
    editor().ShowingParams = true;
    ChooseFaderFunction(editor(), db(), 1);
    SetFaderMin(editor(), 50);
    EXPECT_EQ(fader(0).Function, 0);
    EXPECT_EQ(fader(0).Min, 0);
}

}  // namespace
}  // namespace tavlo
