#include "midistrings/StringEditor.h"

#include <gtest/gtest.h>

#include "TestProgram.h"
#include "editor/EditorDefaults.h"
#include "sysex/StringNotation.h"
#include "db/PoolDatabase.h"
#include "editor/EditorState.h"
#include "sysex/StringWorkArea.h"

namespace tavlo {
namespace {

using testing::TestProgram;

struct StringEditorTest : ::testing::Test {
    TestProgram t;
    StringEditState state;
    MessageStringSet& work() { return t->stringWork.Strings; }
    WorkingPreset& preset() { return t->editor.preset; }

    void open(StringDoor door, int index = 0) { OpenStringEditor(state, *t, door, index); }
    // Opens the string of fader 0, the selected one, with its parameter format.
    void openFader(int format) {
        preset().Faders[0].ParamFormat = static_cast<std::int16_t>(format);
        t->editor.CurrentFader = 0;
        open(StringDoor::Fader, 0);
    }
    // Appends a message built from the controls.
    bool appendMessage(int kind, int channel, int v1, int v2) {
        MessageComboClick(state, *t, kind);
        SetChannel(state, channel);
        SetValue1(state, v1);
        SetValue2(state, v2);
        return AppendString(state, *t);
    }
    bool appendTyped(int kind, const std::string& text) {
        MessageComboClick(state, *t, kind);
        SetStringText(state, text);
        return AppendString(state, *t);
    }
};

TEST_F(StringEditorTest, CaptionsAndNotesByDoor) {
    preset().Faders[16].Name = "Pedal";
    preset().Faders[0].ParamFormat = 3;  // the selected fader's format, whichever string is open
    t->editor.CurrentFader = 0;
    open(StringDoor::Fader, 16);
    EXPECT_EQ(state.Caption, "Editing MIDI String for CV #1  (Pedal)");
    EXPECT_EQ(state.PRNumberNotificationLabel,
              "NOTE: the Param Format '3 byte, 7 bits ,lo to hi' requires 3 pr bytes in a row to properly represent "
              "the data!");
    open(StringDoor::Setup);
    EXPECT_EQ(state.Caption, "Editing Preset Setup String");
    EXPECT_EQ(state.ChannelCombo, 16) << "an empty string starts on the global channel";
}

TEST_F(StringEditorTest, BuildAStringAndHandItBack) {
    open(StringDoor::Button1, 2);
    ASSERT_TRUE(appendMessage(0, 0, 60, 127));
    ASSERT_TRUE(appendMessage(3, 16, 7, 100));
    ASSERT_TRUE(appendTyped(kSysexKind, "f0  41 10 42 12 40 00 7f 00 cs f7"));
    ASSERT_EQ(work().Count, 3);
    EXPECT_EQ(state.StringList.list(0), "90 3C 7F  (noteon)");
    EXPECT_EQ(state.StringList.list(1), "B0-gc 07 64  (ctrlch)");
    EXPECT_EQ(work().Slots[2].EnteredString, "F0 41 10 42 12 40 00 7F 00 cs F7");
    EXPECT_TRUE(state.StringText.empty()) << "typed kinds clear after an append";
    ASSERT_TRUE(UpdateStringButton(state, *t));
    ApplyStringEdit(state, *t);
    EXPECT_EQ(preset().Buttons[2].String1, "90 3C 7F B0-gc 07 64 F0 41 10 42 12 40 00 7F 00 41 F7");
}

TEST_F(StringEditorTest, CancelLeavesTheControlUntouched) {
    preset().FaderStrings[1].Slots[0].CommandType = 4;
    preset().FaderStrings[1].Slots[0].ListItem = "C0 05  (progch)";
    preset().FaderStrings[1].Slots[0].EnteredString = "C0 05";
    preset().FaderStrings[1].Count = 1;
    preset().Faders[1].MIDIString = "C0 05";
    const WorkingPreset before = preset();
    open(StringDoor::Fader, 1);
    EXPECT_EQ(state.MessageCombo, 4) << "substring 0 is loaded";
    ASSERT_TRUE(appendMessage(4, 1, 9, 0));
    CancelStringEdit(state);
    ApplyStringEdit(state, *t);
    EXPECT_EQ(preset(), before);
}

TEST_F(StringEditorTest, LimitsOfFiftyLinesAndEightyBytes) {
    open(StringDoor::Button1, 0);
    for (int i = 0; i < 50; ++i) ASSERT_TRUE(appendMessage(10, 0, 0, 0)) << i;  // one byte each
    EXPECT_EQ(NumberOfStringBytes(work(), -1), 50);
    t.prompter.expectMessage("Cannot Append This String",
                             "You can only have 50 different MIDI Message Strings per Control Function (Fader or "
                             "Button).",
                             MessageAnswer::OK);
    EXPECT_FALSE(appendMessage(10, 0, 0, 0));
    EXPECT_EQ(work().Slots[50].CommandType, -1) << "the 51st slot is never used";

    // 79 bytes may take three more and end at 82; then nothing more.
    open(StringDoor::Button2, 0);
    for (int i = 0; i < 38; ++i) ASSERT_TRUE(appendMessage(4, 0, 1, 0));
    ASSERT_TRUE(appendMessage(0, 0, 1, 1));  // 76 + 3 = 79
    ASSERT_TRUE(appendMessage(0, 0, 1, 1));
    EXPECT_EQ(NumberOfStringBytes(work(), -1), 82);
    t.prompter.expectMessage("Cannot Append This String",
                             "You can only have 80 total bytes in all MIDI Messages per Control Function (Fader or "
                             "Button).",
                             MessageAnswer::OK);
    EXPECT_FALSE(appendMessage(4, 0, 1, 0));
    state.StringList.setListIndex(0);
    t.prompter.expectMessage("Cannot Duplicate This String", MessageAnswer::OK);
    EXPECT_FALSE(DuplicateString(state, *t));
    EXPECT_TRUE(t.prompter.done());
}

TEST_F(StringEditorTest, PrRunsAreCheckedAgainstTheFormat) {
    struct Case {
        const char* text;
        int prBytes;
        bool mismatch;
    };
    const Case cases[] = {
        {"pr pr pr F7", 2, true}, {"pr pr F7", 2, false}, {"F0 pr pr pr", 2, false},  // a run at the end isn't tested
        {"PR F7", 1, false},      {"pr pr pr pr F7", 2, false}, {"F0 pr 10 pr pr F7", 2, true},
    };
    for (const auto& c : cases) EXPECT_EQ(PrRunMismatch(c.text, c.prBytes), c.mismatch) << c.text;

    openFader(1);
    t.prompter.expectMessage("PR Byte Count Doesn't Match Encoding Scheme", MessageAnswer::No);
    EXPECT_FALSE(appendTyped(kFreeByteKind, "pr pr pr F7"));
    EXPECT_EQ(work().Count, 0);
    t.prompter.expectMessage("PR Byte Count Doesn't Match Encoding Scheme", MessageAnswer::Yes);
    EXPECT_TRUE(appendTyped(kFreeByteKind, "pr pr pr F7"));
    EXPECT_TRUE(appendTyped(kFreeByteKind, "pr pr F7"));
    EXPECT_TRUE(t.prompter.done());
}

TEST_F(StringEditorTest, TypedErrorsLeaveTheListAsItWas) {
    open(StringDoor::Button1, 0);
    for (const auto& [kind, text] : {std::pair{kFreeByteKind, "pr 10"}, std::pair{kSysexKind, "F0 -01 F7"}}) {
        t.prompter.expectMessage(kStringErrorTitle, MessageAnswer::OK);
        EXPECT_FALSE(appendTyped(kind, text)) << text;
        EXPECT_EQ(work().Count, 0);
        EXPECT_EQ(state.RenderLabel, kErrorRendering);
    }
    EXPECT_TRUE(appendTyped(kSysexKind, "F0 001 F7")) << "a decimal with a leading zero is a byte";
    EXPECT_TRUE(t.prompter.done());
}

TEST_F(StringEditorTest, DeleteDuplicateAndMove) {
    open(StringDoor::Setup);
    ASSERT_TRUE(appendMessage(4, 0, 1, 0));
    ASSERT_TRUE(appendMessage(4, 0, 2, 0));
    ASSERT_TRUE(appendMessage(4, 0, 3, 0));
    state.StringList.setListIndex(0);
    MoveStringUp(state, *t);
    MoveStringDown(state, *t);
    EXPECT_EQ(state.StringList.list(1), "C0 01  (progch)") << "line 0 doesn't move up, then down";
    ASSERT_TRUE(DuplicateString(state, *t));
    EXPECT_EQ(state.StringList.list(2), "C0 01  (progch)");
    t.prompter.expectMessage("About to Remove", "About to remove the current MIDI Message.  Are you sure?",
                             MessageAnswer::Yes);
    ASSERT_TRUE(DeleteString(state, *t));
    EXPECT_EQ(work().Slots[3].CommandType, -1);
    EXPECT_EQ(state.StringList.list(2), "C0 03  (progch)");
}

// Update asks before it hands back an emptied string or leaves controls
// that were changed but not appended; pitch bend warns about the encoding.
TEST_F(StringEditorTest, UpdateAsksAboutAnEmptyStringAndUnappendedChanges) {
    open(StringDoor::Button1, 3);
    ASSERT_TRUE(appendMessage(5, 2, 64, 0));
    t.prompter.expectMessage("About to Remove", MessageAnswer::Yes);
    ASSERT_TRUE(DeleteString(state, *t));
    state.StringChanged = false;
    t.prompter.expectMessage("Empty String Update", MessageAnswer::No);
    EXPECT_FALSE(UpdateStringButton(state, *t));
    t.prompter.expectMessage("Empty String Update", MessageAnswer::Yes);
    EXPECT_TRUE(UpdateStringButton(state, *t));

    open(StringDoor::Button1, 0);
    ASSERT_TRUE(appendMessage(6, 0, 0, 64));
    ASSERT_TRUE(appendMessage(6, 1, 0, 64));
    SetValue1(state, 5);
    t.prompter.expectMessage("Close String Editor Window", MessageAnswer::No);
    EXPECT_FALSE(UpdateStringButton(state, *t));
    t.prompter.expectMessage("Close String Editor Window", MessageAnswer::Yes)
        .expectMessage("Check Fader Encoding Type", MessageAnswer::OK);  // once for two pitch bends
    EXPECT_TRUE(UpdateStringButton(state, *t));
    EXPECT_TRUE(t.prompter.done());
}

TEST_F(StringEditorTest, DefaultsApplyWhenTheKindChanges) {
    WriteDefault(t->pool.db(), "NoteOnNote", 48);
    WriteDefault(t->pool.db(), "NoteOnVelocity", 100);
    WriteDefault(t->pool.db(), "StringChannel", 9);
    open(StringDoor::Button1, 0);
    MessageComboClick(state, *t, 4);
    MessageComboClick(state, *t, 0);
    EXPECT_EQ(state.Value1Slider, 48);
    EXPECT_EQ(state.Value2Slider, 100);
    EXPECT_EQ(state.RenderLabel, "  99 30 64");
    SetValue1(state, 50);
    SetChannel(state, 0);
    MessageComboClick(state, *t, 0);  // same kind: no defaults, sliders back to their minimum
    EXPECT_EQ(state.ChannelCombo, 0);
}

TEST_F(StringEditorTest, ValueTextsAndTheirParsing) {
    EXPECT_EQ(ValueText(0, 60, true), "C4  (60 = 3Ch)");
    EXPECT_EQ(ValueText(0, 60, false), "60 = 3Ch");
    EXPECT_EQ(ValueText(3, 130, true), "dv");
    struct Case {
        const char* text;
        int value;
    };
    const Case cases[] = {{"p", 128}, {"PR", 128}, {" cs", 129}, {"d", 130}, {"gc", 131}, {"R", 132},
                          {"40h", 64}, {"84H", 132}, {"85h", 0}, {"127", 127}, {"133", 0}, {"x1", 0}, {"", 0}};
    for (const auto& c : cases) EXPECT_EQ(ParseValueText(c.text), c.value) << c.text;
    open(StringDoor::Button1, 0);
    MessageComboClick(state, *t, 3);
    SetValue1(state, 127);
    EXPECT_EQ(state.Value1Slider, 124) << "a controller number above 124 is set back";
}

TEST_F(StringEditorTest, SpecialTokensGoInAtTheCaret) {
    openFader(5);
    MessageComboClick(state, *t, kSysexKind);
    SetStringText(state, "F0 41 F7");
    InsertSpecial(state, *t, 2, 5);
    EXPECT_EQ(state.RenderLabel, "F0 41 pr pr F7");
    InsertSpecial(state, *t, 4, 0);
    EXPECT_EQ(state.StringText, "gc F0 41 pr pr F7");
    EXPECT_FALSE(SpecialButtonShown(StringDoor::Fader, 1)) << "rv: buttons only";
    EXPECT_FALSE(SpecialButtonShown(StringDoor::Setup, 2)) << "pr: faders only";
}

TEST(StringEditor, SpecialBytesTheModelTakes) {
    struct Case {
        StringDoor door;
        int button;  // dv, rv, pr, cs, gc
        bool pc1600, enabled;
    };
    const Case cases[] = {
        {StringDoor::Button1, 3, true, true},   {StringDoor::Button2, 3, true, true},
        {StringDoor::Fader, 3, true, false},    {StringDoor::Setup, 3, true, false},
        {StringDoor::Fader, 2, true, true},     {StringDoor::Button1, 0, true, false},
        {StringDoor::Button1, 4, true, false},  {StringDoor::Button1, 0, false, true},
    };
    for (const auto& c : cases)
        EXPECT_EQ(SpecialButtonEnabled(c.door, c.button, c.pc1600), c.enabled)
            << int(c.door) << " button " << c.button << (c.pc1600 ? " PC1600" : "");
}

TEST_F(StringEditorTest, SysexPrefixFromTheDeviceLibrary) {
    Database& db = t->pool.db();
    db.exec("INSERT INTO MakeTable (Make) VALUES ('Roland')");
    db.exec("INSERT INTO ModelTable (Make, Model, SysexPrefix, Own) VALUES ('Roland', 'JV-1080', 'F0 41 10 6A 12', -1)");
    db.exec("INSERT INTO ModelTable (Make, Model, SysexPrefix, Own) VALUES ('Roland', 'D-50', '', 0)");
    open(StringDoor::Button1, 0);
    MessageComboClick(state, *t, kSysexKind);
    ChooseMake(state, db, state.MakeCombo.findText("Roland"));
    ASSERT_EQ(state.ModelCombo.listCount(), 2);
    ChooseModel(state, db, state.ModelCombo.findText("JV-1080"));
    EXPECT_EQ(state.SysexPrefixButton, "&Paste Sysex Prefix Into String");
    SetStringText(state, "00 7F ");
    PasteSysexPrefix(state);
    EXPECT_EQ(state.StringText, "F0 41 10 6A 12 00 7F F7");
    ASSERT_TRUE(AppendString(state, *t));
    EXPECT_EQ(work().Slots[0].SysexMake, "Roland");
    EXPECT_EQ(work().Slots[0].SysexModel, "JV-1080");
    SetShowOwnOnly(state, db, true);
    ChooseMake(state, db, 0);
    EXPECT_EQ(state.ModelCombo.listCount(), 1);
    // Selecting the line brings the make and model back.
    StringListClick(state, *t, 0);
    EXPECT_EQ(state.MakeCombo.text(), "Roland");
    EXPECT_EQ(state.ModelCombo.text(), "JV-1080");
}

}  // namespace
}  // namespace tavlo
