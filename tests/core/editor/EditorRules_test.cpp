#include <gtest/gtest.h>

#include "TestProgram.h"
#include "editor/CopyPasteSpread.h"
#include "editor/EditorSelection.h"
#include "editor/EditorState.h"
#include "editor/FunctionAssignment.h"
#include "editor/ParameterText.h"

namespace tavlo {
namespace {

using testing::TestProgram;

// The panel's sliders draw their minimum at the top: Up and Page Up must
// still move the handle up, so the value goes down.
TEST(EditorRules, SliderKeysFollowTheHandleOnASliderDrawnUpsideDown) {
    using ParameterText::SliderKey;
    struct Case {
        SliderKey key;
        bool minimumOnTop;
        int expected;
    };
    const Case cases[] = {
        {SliderKey::Up, true, 49},       {SliderKey::PageUp, true, 38}, {SliderKey::Down, true, 51},
        {SliderKey::PageDown, true, 62}, {SliderKey::Up, false, 51},    {SliderKey::PageUp, false, 62},
        {SliderKey::Plus, true, 51},     {SliderKey::End, true, 127},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ParameterText::StepSlider(50, c.key, 0, 127, c.minimumOnTop), c.expected)
            << int(c.key) << (c.minimumOnTop ? " on top" : "");
}

TEST(EditorRules, ControlNamesTakeTwelveCharacters) {
    TestProgram t;
    EditorState& editor = t->editor;
    ClickFader(editor, 0);
    SetFaderName(editor, "Fifteen chars!!");
    EXPECT_EQ(editor.preset.Faders[0].Name, "Fifteen char");
    ClickButton(editor, 0);
    SetButtonName(editor, "ABCDEFGHIJKLMNO");
    EXPECT_EQ(editor.preset.Buttons[0].Name, "ABCDEFGHIJKL");
}

// A fader back to its defaults sends on channel 1, not on the global channel
// a new preset's faders start with.
TEST(EditorRules, InitFaderSetsChannelOne) {
    TestProgram t;
    EditorState& editor = t->editor;
    editor.preset.Faders[4].Function = 1;
    editor.preset.Faders[4].Channel = 9;
    InitFader(editor, 4);
    EXPECT_EQ(editor.preset.Faders[4].Channel, 1);
    EXPECT_EQ(editor.preset.Faders[4].Function, 0);
}

TEST(EditorRules, ThePasteQuestionNamesACVAsAFader) {
    TestProgram t;
    EditorState& editor = t->editor;
    ClickFader(editor, 2);
    editor.preset.Faders[2].Function = 1;
    CopyControl(editor);
    ClickFader(editor, 16);
    editor.preset.Faders[16].Function = 1;
    editor.preset.Faders[16].Name = "Pedal";
    t.prompter.expectMessage("About to Paste",
                             "About to overwrite the configuration of Fader #17 (Pedal) with the copied information "
                             "(from Fader '3').  Are you sure?",
                             MessageAnswer::No);
    EXPECT_FALSE(PasteControl(*t, false));
    EXPECT_TRUE(t.prompter.done());
}

}  // namespace
}  // namespace tavlo
