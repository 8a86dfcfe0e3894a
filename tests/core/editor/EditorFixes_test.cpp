// The button frame follows what a scene deletion did to the button it shows.
#include <gtest/gtest.h>

#include "EditorTestHelpers.h"
#include "TestProgram.h"
#include "db/PoolDatabase.h"
#include "editor/EditorSelection.h"
#include "editor/EditorState.h"
#include "editor/Scenes.h"

namespace tavlo {
namespace {

using testing::AddPresetRow;
using testing::BindEditorToRow;
using testing::TestProgram;

TEST(EditorFixes, DeletingASceneTurnsTheShownSendSceneButtonOffInItsFrame) {
    TestProgram t;
    EditorState& editor = t->editor;
    const std::int64_t id = AddPresetRow(t->pool.db(), "Live Set");
    BindEditorToRow(*t, id, "Live Set");
    RefillSceneLists(editor);
    t.prompter.expectInput("Make a New Scene", std::string("Gone"));
    ASSERT_TRUE(MakeScene(*t));
    ButtonDef& button = editor.preset.Buttons[3];
    button.Function = 9;
    button.Scene = "Gone";
    button.ScenePreset = static_cast<std::int32_t>(id);
    editor.PristinePreset = editor.preset;
    ASSERT_TRUE(ClickButton(editor, 3));
    ASSERT_EQ(editor.BFunctionComboIndex, 9);

    editor.SelectSceneCombo.setListIndex(0);
    t.prompter.expectMessage("Delete Scene?", MessageAnswer::Yes);
    ASSERT_TRUE(DeleteScene(*t));
    EXPECT_EQ(editor.BFunctionComboIndex, 0) << "the frame no longer offers Send Scene";
}

}  // namespace
}  // namespace tavlo
