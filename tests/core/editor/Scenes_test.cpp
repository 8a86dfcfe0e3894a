#include "editor/Scenes.h"

#include <gtest/gtest.h>

#include "EditorTestHelpers.h"
#include "TestProgram.h"
#include "preset/PristinePreset.h"
#include "editor/CopyPasteSpread.h"
#include "editor/EditorSelection.h"
#include "db/PoolDatabase.h"
#include "editor/EditorState.h"
#include "memimage/MemImageState.h"

namespace tavlo {
namespace {

using testing::AddButtonRow;
using testing::AddPresetRow;
using testing::BindEditorToRow;
using testing::TestProgram;

struct ScenesTest : ::testing::Test {
    TestProgram t;
    std::int64_t id = 0;
    void SetUp() override {
        id = AddPresetRow(t->pool.db(), "Live Set");
        BindEditorToRow(*t, id, "Live Set");
        RefillSceneLists(t->editor);
    }
    EditorState& editor() { return t->editor; }
    Database& db() { return t->pool.db(); }
    bool make(const std::string& name) {
        t.prompter.expectInput("Make a New Scene", name);
        return MakeScene(*t);
    }
    std::int64_t count(const std::string& sql) { return db().queryInt(sql); }
};

TEST_F(ScenesTest, MakeStoresTwiceTheSliderPositions) {
    for (int i = 0; i < kFaderCount; ++i) editor().preset.Faders[i].Value = static_cast<std::int16_t>(i * 7);
    editor().PristinePreset = editor().preset;
    ASSERT_TRUE(make("  Verse "));
    EXPECT_EQ(editor().preset.SceneCount, 1);
    EXPECT_EQ(editor().preset.Scenes[0].Name, "Verse");
    EXPECT_EQ(editor().SelectSceneCombo.text(), "Verse");
    EXPECT_EQ(count("SELECT Fader3 FROM SceneRec WHERE Name = 'Verse'"), 28);
    EXPECT_EQ(count("SELECT CV2 FROM SceneRec WHERE Name = 'Verse'"), 2 * 17 * 7);
    EXPECT_FALSE(INITDataChanged(editor())) << "the scene went to the pool with the preset";
    // The other two lists start with <none> and now hold the scene.
    EXPECT_EQ(editor().BSceneCombo.list(0), "<none>");
    EXPECT_EQ(editor().BSceneCombo.list(1), "Verse");
    EXPECT_EQ(editor().SelectPresetSceneCombo.list(1), "Verse");
}

TEST_F(ScenesTest, MakeRefusesReservedAndUsedNames) {
    struct Case {
        const char* name;
        const char* title;
    };
    ASSERT_TRUE(make("Chorus"));
    const Case cases[] = {
        {"<mine>", "Cannot Save Scene"},
        {"--Empty--", "Cannot Make Scene"},
        {"chorus", "Cannot Make Scene"},
    };
    for (const auto& c : cases) {
        t.prompter.expectInput("Make a New Scene", c.name).expectMessage(c.title);
        EXPECT_FALSE(MakeScene(*t)) << c.name;
    }
    t.prompter.expectInput("Make a New Scene", std::string("   "));
    EXPECT_FALSE(MakeScene(*t));
    EXPECT_EQ(count("SELECT COUNT(*) FROM SceneRec"), 1);
    EXPECT_TRUE(t.prompter.done());
}

TEST_F(ScenesTest, MakeNeedsAStoredUnchangedPreset) {
    editor().preset.Faders[0].Name = "edited";
    t.prompter.expectMessage("Cannot Make Scene",
                             "The current Preset has been changed and not Stored.  You cannot make Scenes until the "
                             "current changes have been Stored to the Pool.",
                             MessageAnswer::OK);
    EXPECT_FALSE(MakeScene(*t));

    BindEditorToRow(*t, 0, "New");
    t.prompter.expectMessage("Cannot Store Scene");
    EXPECT_FALSE(MakeScene(*t));

    BindEditorToRow(*t, t->pool.InitializedPresetID(), "--Initialized--");
    t.prompter.expectMessage("Cannot Make Scene");
    EXPECT_FALSE(MakeScene(*t));
    EXPECT_EQ(count("SELECT COUNT(*) FROM SceneRec"), 0);
    EXPECT_TRUE(t.prompter.done());
}

TEST_F(ScenesTest, MakingTheNameOfADeletedSceneWorks) {
    ASSERT_TRUE(make("Intro"));
    editor().SelectSceneCombo.setListIndex(0);
    t.prompter.expectMessage("Delete Scene?", "About to delete the Scene 'Intro'.  Are you sure?", MessageAnswer::Yes);
    ASSERT_TRUE(DeleteScene(*t));
    EXPECT_EQ(editor().preset.SceneCount, 0);
    EXPECT_TRUE(make("Intro"));
    EXPECT_EQ(count("SELECT COUNT(*) FROM SceneRec WHERE Name = 'Intro'"), 1);
}

TEST_F(ScenesTest, SelectingASceneCutsValuesToTheFadersRange) {
    ASSERT_TRUE(make("Big"));
    SceneDef& scene = editor().preset.Scenes[0];
    scene.Values[0] = 254;
    scene.Values[1] = 201;
    editor().preset.Faders[0].Max = 50;
    SelectScene(editor(), 0);
    EXPECT_EQ(editor().preset.Faders[0].Value, 50);
    EXPECT_EQ(scene.Values[0], 100) << "the cut stays in the scene";
    EXPECT_EQ(editor().preset.Faders[1].Value, 100) << "half the stored value, whole part";
}

TEST_F(ScenesTest, RenameFollowsReferencesAcrossThePool) {
    ASSERT_TRUE(make("Solo"));
    const std::int64_t other = AddPresetRow(db(), "Other");
    AddButtonRow(db(), other, 3, 9, "Solo", id);
    AddButtonRow(db(), other, 4, 9, "Solo", other);  // another preset's own "Solo"
    db().prepare("UPDATE PresetRec SET SetupScene = 'Solo', SetupScenePreset = :ID WHERE ID = :Other")
        .bind(":ID", id).bind(":Other", other).run();
    editor().preset.Buttons[2].Function = 9;
    editor().preset.Buttons[2].Scene = "Solo";
    editor().preset.Buttons[2].ScenePreset = static_cast<std::int32_t>(id);
    editor().PristinePreset = editor().preset;

    editor().SelectSceneCombo.setListIndex(0);
    t.prompter.expectInput("Rename Scene", std::string("Lead"));
    ASSERT_TRUE(RenameScene(*t));
    EXPECT_EQ(count("SELECT COUNT(*) FROM SceneRec WHERE Name = 'Lead'"), 1);
    EXPECT_EQ(count("SELECT COUNT(*) FROM ButtonRec WHERE Scene = 'Lead' AND \"Index\" = 3"), 1);
    EXPECT_EQ(count("SELECT COUNT(*) FROM ButtonRec WHERE Scene = 'Solo' AND \"Index\" = 4"), 1);
    EXPECT_EQ(count("SELECT COUNT(*) FROM PresetRec WHERE SetupScene = 'Lead'"), 1);
    EXPECT_EQ(editor().preset.Buttons[2].Scene, "Lead");
    EXPECT_EQ(editor().SelectSceneCombo.list(0), "Lead");
    EXPECT_EQ(editor().BSceneCombo.findText("Lead"), 1);
}

TEST_F(ScenesTest, RenameToAUsedNameIsRefused) {
    ASSERT_TRUE(make("A"));
    ASSERT_TRUE(make("B"));
    editor().SelectSceneCombo.setListIndex(0);
    t.prompter.expectInput("Rename Scene", std::string("b"))
        .expectMessage("Cannot Rename Scene", "The Scene Name 'b' is already used for this Preset.", MessageAnswer::OK);
    EXPECT_FALSE(RenameScene(*t));
    EXPECT_EQ(editor().preset.Scenes[0].Name, "A");
}

TEST_F(ScenesTest, DeleteTurnsOffSendSceneButtonsEverywhere) {
    ASSERT_TRUE(make("Gone"));
    ASSERT_TRUE(make("Kept"));
    const std::int64_t other = AddPresetRow(db(), "Other");
    AddButtonRow(db(), other, 0, 9, "Gone", id);
    AddButtonRow(db(), other, 1, 9, "Kept", id);
    editor().preset.Buttons[0].Function = 9;
    editor().preset.Buttons[0].Scene = "Gone";
    editor().preset.Buttons[0].ScenePreset = static_cast<std::int32_t>(id);
    editor().preset.SetupScene = "Gone";
    editor().preset.SetupScenePreset = static_cast<std::int32_t>(id);
    editor().PristinePreset = editor().preset;

    editor().SelectSceneCombo.setListIndex(0);
    t.prompter.expectMessage("Delete Scene?", MessageAnswer::No);
    EXPECT_FALSE(DeleteScene(*t));
    t.prompter.expectMessage("Delete Scene?", MessageAnswer::Yes);
    ASSERT_TRUE(DeleteScene(*t));
    const std::string ofOther = " AND PresetREF = " + std::to_string(other);
    EXPECT_EQ(count("SELECT Function FROM ButtonRec WHERE \"Index\" = 0" + ofOther), 0);
    EXPECT_EQ(count("SELECT ScenePreset FROM ButtonRec WHERE \"Index\" = 0" + ofOther), -1);
    EXPECT_EQ(count("SELECT Function FROM ButtonRec WHERE \"Index\" = 1" + ofOther), 9);
    EXPECT_EQ(editor().preset.Buttons[0].Function, 0);
    EXPECT_EQ(editor().preset.SetupScene, "<none>");
    EXPECT_EQ(editor().preset.Scenes[0].Name, "Kept");
    EXPECT_EQ(editor().SelectSceneCombo.listCount(), 1);
    EXPECT_EQ(editor().BSceneCombo.findText("Gone"), -1);
}

TEST_F(ScenesTest, AnOpenImageGetsTheLongerPromptAndItsSceneListRefilled) {
    int refills = 0;
    t->memImage.followUps.MemImageFormOpen = [] { return true; };
    t->memImage.followUps.FillSceneList = [&] { ++refills; };
    t.prompter.expectInput("Make a New Scene", std::string("Bridge"));
    ASSERT_TRUE(MakeScene(*t));
    ASSERT_FALSE(t.prompter.seen().empty());
    EXPECT_NE(t.prompter.seen().back().text.find("NOTE that Scene info is not sent to the PC1600(x)"), std::string::npos);
    editor().SelectSceneCombo.setListIndex(0);
    t.prompter.expectMessage("Delete Scene?", MessageAnswer::Yes);
    ASSERT_TRUE(DeleteScene(*t));
    EXPECT_EQ(refills, 1);
}

TEST_F(ScenesTest, DeleteRefusedOnAChangedPreset) {
    ASSERT_TRUE(make("X"));
    editor().SelectSceneCombo.setListIndex(0);
    editor().preset.Notes = "changed";
    t.prompter.expectMessage("Cannot Delete Scene");
    EXPECT_FALSE(DeleteScene(*t));
    EXPECT_EQ(count("SELECT COUNT(*) FROM SceneRec"), 1);
}

TEST_F(ScenesTest, SceneListsSetTheReferences) {
    ASSERT_TRUE(make("Mine"));
    ClickButton(editor(), 2);
    ChooseButtonScene(editor(), editor().BSceneCombo.findText("Mine"));
    EXPECT_EQ(editor().preset.Buttons[2].Scene, "Mine");
    EXPECT_EQ(editor().preset.Buttons[2].ScenePreset, id);
    ChooseButtonScene(editor(), 0);
    EXPECT_EQ(editor().preset.Buttons[2].Scene, "<none>");
    EXPECT_EQ(editor().preset.Buttons[2].ScenePreset, -1);
    ChooseSetupScene(editor(), 1);
    EXPECT_EQ(editor().preset.SetupScene, "Mine");
    EXPECT_EQ(editor().preset.SetupScenePreset, id);
}

TEST_F(ScenesTest, OtherScenesComeFromTheWholePoolButThisPreset) {
    ListState list;
    t.prompter.expectMessage("Cannot Select a Scene", "There are no Scenes in the Preset Pool.", MessageAnswer::OK);
    EXPECT_FALSE(FillSceneList(*t, "Live Set", list));
    ASSERT_TRUE(make("Mine"));
    const std::int64_t other = AddPresetRow(db(), "Ballad's");
    db().prepare("INSERT INTO SceneRec (PresetREF, Name) VALUES (:P, 'Soft')").bind(":P", other).run();
    const std::int64_t softID = db().lastInsertId();
    ASSERT_TRUE(FillSceneList(*t, "Live Set", list));
    ASSERT_EQ(list.listCount(), 1);
    EXPECT_EQ(list.list(0), "'Soft'  - from Preset 'Ballad's'");
    EXPECT_EQ(list.itemData(0), softID);

    ClickButton(editor(), 1);
    AddOtherScene(*t, true, softID);
    EXPECT_EQ(editor().preset.Buttons[1].Scene, "Soft");
    EXPECT_EQ(editor().preset.Buttons[1].ScenePreset, other);
    EXPECT_EQ(editor().BSceneCombo.text(), "Soft  - from Ballad's");
    // Showing the button again finds the line by name and owner.
    ClickFader(editor(), 0);
    editor().BSceneCombo.setListIndex(0);
    ClickButton(editor(), 1);
    EXPECT_EQ(editor().BSceneCombo.text(), "Soft  - from Ballad's");
    // Making another scene keeps the line.
    editor().PristinePreset = editor().preset;
    ASSERT_TRUE(make("Two"));
    EXPECT_GE(editor().BSceneCombo.findText("Soft  - from Ballad's"), 0);
}

TEST_F(ScenesTest, CopiedSceneLeavesTheLastCVOut) {
    ASSERT_TRUE(make("Snap"));
    for (int i = 0; i < kFaderCount; ++i) editor().preset.Scenes[0].Values[i] = 100;
    editor().SelectSceneCombo.setListIndex(0);
    CopyScene(editor());
    EXPECT_EQ(editor().PasteButtonCaption, "Paste Scene 'Snap'");
    editor().preset.Faders[17].Value = 3;
    ASSERT_TRUE(PasteControl(*t, false));
    EXPECT_EQ(editor().preset.Faders[0].Value, 50);
    EXPECT_EQ(editor().preset.Faders[16].Value, 50);
    EXPECT_EQ(editor().preset.Faders[17].Value, 3);
}

}  // namespace
}  // namespace tavlo
