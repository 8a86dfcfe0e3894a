#include "editor/CopyPasteSpread.h"

#include <gtest/gtest.h>

#include "TestProgram.h"
#include "editor/EditorSelection.h"
#include "db/Database.h"
#include "db/PoolDatabase.h"
#include "editor/EditorState.h"
#include "memimage/MemImageState.h"

namespace tavlo {
namespace {

using testing::TestProgram;

struct CopyPasteTest : ::testing::Test {
    TestProgram t;
    EditorState& editor() { return t->editor; }
    WorkingPreset& preset() { return t->editor.preset; }
};

TEST_F(CopyPasteTest, PasteGoesToTheKindHeld) {
    ClickFader(editor(), 2);
    preset().Faders[2].Function = 1;
    preset().Faders[2].Name = "Cut";
    preset().FaderStrings[2].Count = 1;
    CopyControl(editor());
    EXPECT_EQ(editor().PasteButtonCaption, "Paste Fader 3");

    // With a button selected, the fader on the clipboard still lands on the
    // selected fader, never on the button.
    ClickFader(editor(), 9);
    ClickButton(editor(), 0);
    ASSERT_TRUE(PasteControl(*t, false));
    EXPECT_EQ(preset().Faders[9].Name, "Cut");
    EXPECT_EQ(preset().FaderStrings[9].Count, 1);
    EXPECT_EQ(preset().Buttons[0].Function, 0);
}

TEST_F(CopyPasteTest, OverwritingAControlWithAFunctionAsks) {
    ClickButton(editor(), 1);
    preset().Buttons[1].Name = "Play";
    preset().Buttons[1].Function = 3;
    preset().Buttons[1].Channel = 0;
    preset().Buttons[1].ProgChange = 5;
    CopyControl(editor());
    EXPECT_EQ(editor().PasteButtonCaption, "Paste Button 2");
    ClickButton(editor(), 4);
    preset().Buttons[4].Function = 1;
    preset().Buttons[4].Name = "Mute";
    t.prompter.expectMessage("About to Paste",
                             "About to overwrite the configuration of Button #5 (Mute) with the copied information "
                             "(from Button 2).  Are you sure?",
                             MessageAnswer::No);
    EXPECT_FALSE(PasteControl(*t, false));
    EXPECT_EQ(preset().Buttons[4].Name, "Mute");
    // Part of a drag: no question.
    ASSERT_TRUE(PasteControl(*t, true));
    EXPECT_EQ(preset().Buttons[4].Name, "Play");
    EXPECT_EQ(editor().PCButton[4], "Play (pc)");
    // A CV is named a fader.
    ClickFader(editor(), 2);
    preset().Faders[2].Function = 1;
    CopyControl(editor());
    ClickFader(editor(), 16);
    preset().Faders[16].Function = 1;
    preset().Faders[16].Name = "Pedal";
    t.prompter.expectMessage("About to Paste",
                             "About to overwrite the configuration of Fader #17 (Pedal) with the copied information "
                             "(from Fader '3').  Are you sure?",
                             MessageAnswer::No);
    EXPECT_FALSE(PasteControl(*t, false));
    EXPECT_TRUE(t.prompter.done());
}

TEST_F(CopyPasteTest, SendSceneButtonNeedsItsPresetInTheOpenImage) {
    Database& db = t->pool.db();
    db.exec("INSERT INTO PresetRec (Name, CreatedDate, UpdatedDate, SetupChannelMap) VALUES ('Far', 'x', 'x', X'')");
    const auto far = static_cast<std::int32_t>(db.lastInsertId());
    ClickButton(editor(), 0);
    preset().Buttons[0].Function = 9;
    preset().Buttons[0].Scene = "Calm";
    preset().Buttons[0].ScenePreset = far;
    CopyControl(editor());
    ClickButton(editor(), 1);

    bool imageOpen = true;
    t->memImage.followUps.MemImageFormOpen = [&] { return imageOpen; };
    t.prompter.expectMessage("Cannot Paste SENDSCENE Button",
                             "The Button you're pasting is defined as a SEND SCENE Button, sending the Scene 'Calm' on "
                             "the Preset named 'Far', which isn't in the current Memory Image.  Please add that Preset "
                             "to the current MI before pasting this Button function.",
                             MessageAnswer::OK);
    EXPECT_FALSE(PasteControl(*t, false));
    EXPECT_EQ(preset().Buttons[1].Function, 0);

    t->memImage.PresetList.addItem("00:  Far", far);
    EXPECT_TRUE(PasteControl(*t, false));
    EXPECT_EQ(preset().Buttons[1].Scene, "Calm");
    EXPECT_GE(editor().BSceneCombo.findText("Calm  - from Far"), 0);
    imageOpen = false;
    ClickButton(editor(), 2);
    t->memImage.PresetList.clear();
    EXPECT_TRUE(PasteControl(*t, false)) << "without an open image there is nothing to check";
    EXPECT_TRUE(t.prompter.done());
}

TEST_F(CopyPasteTest, MoveSwapsWithTheNeighbourAndStopsAtTheEnds) {
    for (int i = 0; i < kButtonCount; ++i) preset().Buttons[i].Name = "B" + std::to_string(i);
    ClickButton(editor(), 0);
    MoveControlDown(editor());
    EXPECT_EQ(preset().Buttons[0].Name, "B0");
    ClickButton(editor(), 5);
    preset().ButtonStrings2[5].Count = 2;
    MoveControlDown(editor());
    EXPECT_EQ(preset().Buttons[5].Name, "B4");
    EXPECT_EQ(preset().ButtonStrings2[4].Count, 2);
    EXPECT_EQ(editor().CurrentButton, 4);
    ClickButton(editor(), 15);
    MoveControlUp(editor());
    EXPECT_EQ(preset().Buttons[15].Name, "B15");

    ClickFader(editor(), 16);
    preset().Faders[16].Value = 77;
    MoveControlUp(editor());
    EXPECT_EQ(preset().Faders[17].Value, 77);
    MoveControlUp(editor());
    EXPECT_EQ(editor().CurrentFader, 17);
}

// A drop of the wrong kind is refused; a fader dropped on a fader copies it there.
TEST_F(CopyPasteTest, DropsCopyOntoTheirOwnKindOnly) {
    const struct {
        const char* kind;
        bool onButton;
        const char* text;
    } cases[] = {
        {"BUTTON", false, "Cannot Drop a BUTTON onto a FADER"},
        {"FADER", true, "Cannot Drop a FADER onto a BUTTON"},
        {"DEVPRESET", true, "Cannot Drop a DEVPRESET onto a BUTTON"},
    };
    for (const auto& c : cases) {
        t->editor.DragType = c.kind;
        t.prompter.expectMessage("Cannot Drop", c.text, MessageAnswer::OK);
        if (c.onButton) DropOnButton(*t, 3);
        else DropOnFader(*t, 3);
    }
    EXPECT_TRUE(t.prompter.done());
    ClickFader(editor(), 0);
    preset().Faders[0].Function = 2;
    CopyControl(editor());
    preset().Faders[5].Function = 1;
    t->editor.DragType = "FADER";
    DropOnFader(*t, 5);
    EXPECT_EQ(preset().Faders[5].Function, 2);
    EXPECT_EQ(editor().CurrentFader, 5);
    EXPECT_TRUE(t->editor.DragType.empty());
}

// Which spreads a source offers; the captions are the form's own texts.
TEST(SpreadOptions, BySourceFunction) {
    EXPECT_FALSE(SpreadOptionsFor(false, 0)->option1) << "Off can only be made the same";
    EXPECT_EQ(*SpreadOptionsFor(true, 4)->option1, "Spread across Note Number");
    EXPECT_EQ(*SpreadOptionsFor(true, 6)->option1, "Spread across Channels within MIDI Strings");
    EXPECT_FALSE(SpreadOptionsFor(false, 2)) << "a Master Fader has no spread";
}

// Spreading steps one field by the distance from the source and cuts it at
// that field's limits: channels at 1 and ChOut, controllers at 120, notes at 127.
TEST_F(CopyPasteTest, SpreadStepsAndCutsAtTheLimits) {
    struct Case {
        bool button;
        int function, source, from, to, option, start;
        int at, expected;
    };
    const Case cases[] = {
        {false, 1, 4, 0, 7, 0, 3, 0, 1},     {false, 1, 4, 0, 7, 0, 3, 7, 6},
        {false, 1, 0, 0, 5, 1, 118, 1, 119}, {false, 1, 0, 0, 5, 1, 118, 5, 120},
        {true, 4, 2, 0, 4, 1, 126, 0, 124},  {true, 4, 2, 0, 4, 1, 126, 4, 127},
        {true, 4, 2, 0, 4, 0, 15, 4, 16},    {true, 4, 2, 0, 4, 0, 15, 0, 13},
    };
    for (const auto& c : cases) {
        preset() = WorkingPreset{};
        int copied = 0;
        if (c.button) {
            ButtonDef& b = preset().Buttons[c.source];
            b.Function = static_cast<std::int16_t>(c.function);
            (c.option ? b.Note : b.Channel) = static_cast<std::int16_t>(c.start);
            ApplySpread(editor(), true, c.source, c.from, c.to, c.option);
            const ButtonDef& got = preset().Buttons[c.at];
            copied = c.option ? got.Note : got.Channel;
        } else {
            FaderDef& f = preset().Faders[c.source];
            f.Function = static_cast<std::int16_t>(c.function);
            f.Name = "Vol";
            (c.option ? f.CCNum : f.Channel) = static_cast<std::int16_t>(c.start);
            const FaderDef before = f;
            ApplySpread(editor(), false, c.source, c.from, c.to, c.option);
            const FaderDef& got = preset().Faders[c.at];
            copied = c.option ? got.CCNum : got.Channel;
            EXPECT_EQ(got.Name, "Vol");
            EXPECT_EQ(preset().Faders[c.source], before) << "the source never changes";
            EXPECT_EQ(preset().Faders[c.to + 1].Function, 0) << "beyond To";
        }
        EXPECT_EQ(copied, c.expected) << "from " << c.start << " to line " << c.at;
    }
    ApplySpread(editor(), false, 0, 9, 3, 1);  // From above To: nothing
    EXPECT_EQ(preset().Faders[9].Function, 0);
    preset().Buttons[2].Function = 0;  // an Off source clears the strings
    preset().ButtonStrings1[3].Count = 4;
    ApplySpread(editor(), true, 2, 3, 3, 0);
    EXPECT_EQ(preset().ButtonStrings1[3].Count, 0);
    preset().Faders[16].Name = "Pedal";
    EXPECT_EQ(SpreadLine(editor(), false, 16), "CV #1 (Pedal)");
    EXPECT_EQ(SpreadLine(editor(), true, 11), "Button #12 (<no name>)");
}

TEST_F(CopyPasteTest, SpreadWithinStringsMovesChannelsButNotGlobalOnes) {
    ButtonDef& source = preset().Buttons[0];
    source.Function = 5;
    MessageStringSet& set = preset().ButtonStrings1[0];
    set.Slots[0] = {.CommandType = 0, .CommandChannel = 2, .EnteredString = "92 3C 7F", .ListItem = "92 3C 7F  (noteon)"};
    set.Slots[1] = {.CommandType = 3, .EnteredString = "B0-gc 07 64", .ListItem = "B0-gc 07 64  (ctrlch)"};
    set.Slots[2] = {.CommandType = 7, .EnteredString = "F0 41 F7", .ListItem = "F0 41 F7  (sysex)"};
    set.Count = 3;
    ApplySpread(editor(), true, 0, 0, 2, 1);
    const MessageStringSet& spread = preset().ButtonStrings1[2];
    EXPECT_EQ(spread.Slots[0].CommandChannel, 4);
    EXPECT_EQ(spread.Slots[0].ListItem, "94 3C 7F  (noteon)");
    EXPECT_EQ(spread.Slots[1].CommandChannel, 16);
    EXPECT_EQ(preset().Buttons[2].String1, "94 3C 7F B0-gc 07 64 F0 41 F7");
    EXPECT_EQ(preset().ButtonStrings1[0].Slots[0].EnteredString, "92 3C 7F") << "source unchanged";

    // Channel 15 stays at 15 (cut).
    set.Slots[0].CommandChannel = 14;
    ApplySpread(editor(), true, 0, 0, 3, 1);
    EXPECT_EQ(preset().ButtonStrings1[3].Slots[0].EnteredString, "9F 3C 7F");
}

}  // namespace
}  // namespace tavlo
