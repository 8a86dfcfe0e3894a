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

MessageSubstring substring(int type, int channel, std::string entered, std::string item) {
    MessageSubstring s;
    s.CommandType = static_cast<std::int16_t>(type);
    s.CommandChannel = static_cast<std::int16_t>(channel);
    s.EnteredString = std::move(entered);
    s.ListItem = std::move(item);
    return s;
}

TEST_F(CopyPasteTest, PasteGoesToTheKindHeld) {
    ClickFader(editor(), 2);
    preset().Faders[2].Function = 1;
    preset().Faders[2].Name = "Cut";
    preset().FaderStrings[2].Count = 1;
    CopyControl(editor());
    EXPECT_EQ(editor().PasteButtonCaption, "Paste Fader 3");
    EXPECT_EQ(editor().Clipboard.ButtonFunction, kClipboardEmptyFunction);

    // With a button selected, the fader on the clipboard still lands on the
    // selected fader, never on the button.
    ClickFader(editor(), 9);
    ClickButton(editor(), 0);
    ASSERT_TRUE(PasteControl(*t, false));
    EXPECT_EQ(preset().Faders[9].Name, "Cut");
    EXPECT_EQ(preset().FaderStrings[9].Count, 1);
    EXPECT_EQ(preset().Buttons[0].Function, 0);
    EXPECT_EQ(editor().FaderLabel[9], "Cut  (cc)");
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
    EXPECT_EQ(editor().CurrentButton, 0);
    ClickButton(editor(), 5);
    preset().ButtonStrings2[5].Count = 2;
    MoveControlDown(editor());
    EXPECT_EQ(preset().Buttons[4].Name, "B5");
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
    EXPECT_EQ(editor().CurrentFader, 17);
    MoveControlUp(editor());
    EXPECT_EQ(editor().CurrentFader, 17);
}

TEST_F(CopyPasteTest, DropsOfTheWrongKindAreRefused) {
    struct Case {
        const char* kind;
        bool onButton;
        const char* text;
    };
    const Case cases[] = {
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
}

TEST_F(CopyPasteTest, DragOfAFaderCopiesItOntoTheTarget) {
    ClickFader(editor(), 0);
    preset().Faders[0].Function = 2;
    preset().Faders[0].Name = "Master";
    CopyControl(editor());
    preset().Faders[5].Function = 1;
    t->editor.DragType = "FADER";
    DropOnFader(*t, 5);
    EXPECT_EQ(preset().Faders[5].Function, 2);
    EXPECT_EQ(editor().CurrentFader, 5);
    EXPECT_TRUE(t->editor.DragType.empty());
}

TEST(SpreadOptions, CaptionsBySourceFunction) {
    struct Case {
        bool button;
        int function;
        const char* option0;
        const char* option1;  // nullptr: hidden
    };
    const Case cases[] = {
        {false, 0, "Make all the Same (OFF)", nullptr},
        {false, 1, "Spread across Channels", "Spread across CCs"},
        {false, 3, "Make all the Same (MIDI String)", "Spread across Channels within MIDI Strings"},
        {true, 0, "Make all the Same (OFF)", nullptr},
        {true, 1, "Make all the Same (MUTE)", nullptr},
        {true, 2, "Make all the Same (SOLO)", nullptr},
        {true, 3, "Spread across Channels", "Spread across Program Change"},
        {true, 4, "Spread across Channels", "Spread across Note Number"},
        {true, 5, "Make all the Same (MIDI String)", "Spread across Channels within MIDI Strings"},
        {true, 6, "Make all the Same (Press/Release String)", "Spread across Channels within MIDI Strings"},
        {true, 7, "Make all the Same (Toggle String)", "Spread across Channels within MIDI Strings"},
        {true, 8, "Make all the Same (SF)", nullptr},
        {true, 9, "Make all the Same (SS)", nullptr},
    };
    for (const auto& c : cases) {
        const auto options = SpreadOptionsFor(c.button, c.function);
        ASSERT_TRUE(options) << c.function;
        EXPECT_EQ(options->option0, c.option0);
        EXPECT_EQ(options->option1.has_value(), c.option1 != nullptr);
        if (c.option1) {
            EXPECT_EQ(*options->option1, c.option1);
        }
    }
    EXPECT_FALSE(SpreadOptionsFor(false, 2)) << "a Master Fader has no spread";
}

TEST_F(CopyPasteTest, SpreadLines) {
    preset().Faders[16].Name = "Pedal";
    EXPECT_EQ(SpreadLine(editor(), false, 0), "Fader #1 (<no name>)");
    EXPECT_EQ(SpreadLine(editor(), false, 16), "CV #1 (Pedal)");
    EXPECT_EQ(SpreadLine(editor(), true, 11), "Button #12 (<no name>)");
}

TEST_F(CopyPasteTest, SpreadAcrossChannelsCutsAtOneAndSixteen) {
    FaderDef& source = preset().Faders[4];
    source.Function = 1;
    source.Channel = 3;
    source.CCNum = 7;
    source.Name = "Vol";
    const FaderDef before = source;
    ApplySpread(editor(), false, 4, 0, 7, 0);
    EXPECT_EQ(preset().Faders[0].Channel, 1);
    EXPECT_EQ(preset().Faders[1].Channel, 1);
    EXPECT_EQ(preset().Faders[7].Channel, 6);
    EXPECT_EQ(preset().Faders[7].CCNum, 7);
    EXPECT_EQ(preset().Faders[7].Name, "Vol");
    EXPECT_EQ(preset().Faders[8].Function, 0) << "beyond To";
    EXPECT_EQ(preset().Faders[4], before) << "the source never changes";
    EXPECT_EQ(editor().FaderLabel[7], "Vol  (cc)");
}

TEST_F(CopyPasteTest, SpreadAcrossControllersCutsAt120) {
    FaderDef& source = preset().Faders[0];
    source.Function = 1;
    source.CCNum = 118;
    source.Channel = 2;
    ApplySpread(editor(), false, 0, 0, 5, 1);
    EXPECT_EQ(preset().Faders[2].CCNum, 120);
    EXPECT_EQ(preset().Faders[5].CCNum, 120);
    EXPECT_EQ(preset().Faders[1].CCNum, 119);
    EXPECT_EQ(preset().Faders[5].Channel, 2);
    ApplySpread(editor(), false, 0, 9, 3, 1);  // From above To: nothing
    EXPECT_EQ(preset().Faders[9].Function, 0);
}

TEST_F(CopyPasteTest, SpreadOfButtonsStepsProgramsAndNotes) {
    ButtonDef& source = preset().Buttons[2];
    source.Function = 4;
    source.Note = 126;
    source.Channel = 15;
    ApplySpread(editor(), true, 2, 0, 4, 1);
    EXPECT_EQ(preset().Buttons[0].Note, 124);
    EXPECT_EQ(preset().Buttons[4].Note, 127);
    EXPECT_EQ(preset().Buttons[4].Channel, 15);
    ApplySpread(editor(), true, 2, 0, 4, 0);
    EXPECT_EQ(preset().Buttons[4].Channel, 16) << "channels cut at ChOut";
    EXPECT_EQ(preset().Buttons[0].Channel, 13);
    source.Function = 0;
    preset().ButtonStrings1[3].Count = 4;
    ApplySpread(editor(), true, 2, 3, 3, 0);
    EXPECT_EQ(preset().Buttons[3].Function, 0);
    EXPECT_EQ(preset().ButtonStrings1[3].Count, 0);
}

TEST_F(CopyPasteTest, SpreadWithinStringsMovesChannelsButNotGlobalOnes) {
    ButtonDef& source = preset().Buttons[0];
    source.Function = 5;
    MessageStringSet& set = preset().ButtonStrings1[0];
    set.Slots[0] = substring(0, 2, "92 3C 7F", "92 3C 7F  (noteon)");
    set.Slots[1] = substring(3, 16, "B0-gc 07 64", "B0-gc 07 64  (ctrlch)");
    set.Slots[2] = substring(7, 16, "F0 41 F7", "F0 41 F7  (sysex)");
    set.Count = 3;
    ApplySpread(editor(), true, 0, 0, 2, 1);
    const MessageStringSet& spread = preset().ButtonStrings1[2];
    EXPECT_EQ(spread.Slots[0].CommandChannel, 4);
    EXPECT_EQ(spread.Slots[0].EnteredString, "94 3C 7F");
    EXPECT_EQ(spread.Slots[0].ListItem, "94 3C 7F  (noteon)");
    EXPECT_EQ(spread.Slots[1].EnteredString, "B0-gc 07 64");
    EXPECT_EQ(spread.Slots[1].CommandChannel, 16);
    EXPECT_EQ(spread.Slots[2].EnteredString, "F0 41 F7");
    EXPECT_EQ(spread.Count, 3);
    EXPECT_EQ(preset().Buttons[2].String1, "94 3C 7F B0-gc 07 64 F0 41 F7");
    EXPECT_EQ(preset().ButtonStrings1[0].Slots[0].EnteredString, "92 3C 7F") << "source unchanged";

    // Channel 15 stays at 15 (cut).
    set.Slots[0].CommandChannel = 14;
    ApplySpread(editor(), true, 0, 0, 3, 1);
    EXPECT_EQ(preset().ButtonStrings1[3].Slots[0].CommandChannel, 15);
    EXPECT_EQ(preset().ButtonStrings1[3].Slots[0].EnteredString, "9F 3C 7F");
}

}  // namespace
}  // namespace tavlo
