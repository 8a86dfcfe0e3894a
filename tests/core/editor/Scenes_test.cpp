#include "editor/Scenes.h"

#include <gtest/gtest.h>

#include "TestProgram.h"
#include "db/PoolDatabase.h"
#include "editor/CopyPasteSpread.h"
#include "editor/EditorSelection.h"
#include "editor/EditorState.h"
#include "memimage/MemImageState.h"
#include "preset/PristinePreset.h"

namespace tavlo {
namespace {

using testing::TestProgram;

// The editor holds "Live Set", stored and unchanged, as scenes need.
struct ScenesTest : ::testing::Test {
    TestProgram t;
    std::int64_t id = 0;
    void SetUp() override {
        id = addPreset("Live Set");
        bind(id, "Live Set");
        RefillSceneLists(t->editor);
    }
    EditorState& editor() { return t->editor; }
    Database& db() { return t->pool.db(); }
    std::int64_t addPreset(const std::string& name) {
        db().prepare("INSERT INTO PresetRec (Name, CreatedDate, UpdatedDate, SetupChannelMap) VALUES (:N, 'x', 'x', X'')")
            .bind(":N", name)
            .run();
        return db().lastInsertId();
    }
    // A Send Scene button of another preset pointing at `scene` of `owner`.
    void addSendScene(std::int64_t preset, int index, const std::string& scene, std::int64_t owner) {
        db().prepare("INSERT INTO ButtonRec (PresetREF, \"Index\", Function, Scene, ScenePreset) VALUES (:P, :I, 9, :S, "
                     ":O)")
            .bind(":P", preset).bind(":I", index).bind(":S", scene).bind(":O", owner).run();
    }
    void bind(std::int64_t row, const std::string& name) {
        editor().preset.ID = static_cast<std::int32_t>(row);
        editor().preset.Name = name;
        editor().PristinePreset = editor().preset;
    }
    void sendSceneOnButton(int index, const std::string& scene) {
        editor().preset.Buttons[index].Function = 9;
        editor().preset.Buttons[index].Scene = scene;
        editor().preset.Buttons[index].ScenePreset = static_cast<std::int32_t>(id);
        editor().PristinePreset = editor().preset;
    }
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
    EXPECT_EQ(editor().preset.Scenes[0].Name, "Verse");
    EXPECT_EQ(count("SELECT CV2 FROM SceneRec WHERE Name = 'Verse'"), 2 * 17 * 7);
    EXPECT_FALSE(INITDataChanged(editor())) << "the scene went to the pool with the preset";
    EXPECT_EQ(editor().BSceneCombo.list(0), "<none>");
    EXPECT_EQ(editor().SelectPresetSceneCombo.list(1), "Verse");
}

TEST_F(ScenesTest, MakeRefusesReservedAndUsedNames) {
    ASSERT_TRUE(make("Chorus"));
    for (const auto& [name, title] : {std::pair{"<mine>", "Cannot Save Scene"}, std::pair{"--Empty--", "Cannot Make Scene"},
                                      std::pair{"chorus", "Cannot Make Scene"}}) {
        t.prompter.expectInput("Make a New Scene", std::string(name)).expectMessage(title);
        EXPECT_FALSE(MakeScene(*t)) << name;
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
    bind(0, "New");
    t.prompter.expectMessage("Cannot Store Scene");
    EXPECT_FALSE(MakeScene(*t));
    bind(t->pool.InitializedPresetID(), "--Initialized--");
    t.prompter.expectMessage("Cannot Make Scene");
    EXPECT_FALSE(MakeScene(*t));
    EXPECT_EQ(count("SELECT COUNT(*) FROM SceneRec"), 0);
    EXPECT_TRUE(t.prompter.done());
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
    ASSERT_TRUE(make("Used"));
    const std::int64_t other = addPreset("Other");
    addSendScene(other, 3, "Solo", id);
    addSendScene(other, 4, "Solo", other);  // another preset's own "Solo"
    db().prepare("UPDATE PresetRec SET SetupScene = 'Solo', SetupScenePreset = :ID WHERE ID = :Other")
        .bind(":ID", id).bind(":Other", other).run();
    sendSceneOnButton(2, "Solo");
    editor().SelectSceneCombo.setListIndex(0);
    t.prompter.expectInput("Rename Scene", std::string("used"))
        .expectMessage("Cannot Rename Scene", "The Scene Name 'used' is already used for this Preset.", MessageAnswer::OK);
    EXPECT_FALSE(RenameScene(*t));
    t.prompter.expectInput("Rename Scene", std::string("Lead"));
    ASSERT_TRUE(RenameScene(*t));
    EXPECT_EQ(count("SELECT COUNT(*) FROM ButtonRec WHERE Scene = 'Lead' AND \"Index\" = 3"), 1);
    EXPECT_EQ(count("SELECT COUNT(*) FROM ButtonRec WHERE Scene = 'Solo' AND \"Index\" = 4"), 1);
    EXPECT_EQ(count("SELECT COUNT(*) FROM PresetRec WHERE SetupScene = 'Lead'"), 1);
    EXPECT_EQ(editor().preset.Buttons[2].Scene, "Lead");
    EXPECT_EQ(editor().BSceneCombo.findText("Lead"), 1);
}

// Deleting a scene turns off the Send Scene buttons that send it, in the pool
// and in the editor, whose button frame follows.
TEST_F(ScenesTest, DeleteTurnsOffSendSceneButtonsEverywhere) {
    ASSERT_TRUE(make("Gone"));
    ASSERT_TRUE(make("Kept"));
    const std::int64_t other = addPreset("Other");
    addSendScene(other, 0, "Gone", id);
    addSendScene(other, 1, "Kept", id);
    editor().preset.SetupScene = "Gone";
    editor().preset.SetupScenePreset = static_cast<std::int32_t>(id);
    sendSceneOnButton(0, "Gone");
    ASSERT_TRUE(ClickButton(editor(), 0));
    ASSERT_EQ(editor().BFunctionComboIndex, 9);
    editor().SelectSceneCombo.setListIndex(0);
    editor().preset.Notes = "changed";
    t.prompter.expectMessage("Cannot Delete Scene");
    EXPECT_FALSE(DeleteScene(*t));
    editor().preset.Notes = "";
    t.prompter.expectMessage("Delete Scene?", MessageAnswer::No);
    EXPECT_FALSE(DeleteScene(*t));
    t.prompter.expectMessage("Delete Scene?", "About to delete the Scene 'Gone'.  Are you sure?", MessageAnswer::Yes);
    ASSERT_TRUE(DeleteScene(*t));
    const std::string ofOther = " AND PresetREF = " + std::to_string(other);
    EXPECT_EQ(count("SELECT ScenePreset FROM ButtonRec WHERE Function = 0 AND \"Index\" = 0" + ofOther), -1);
    EXPECT_EQ(count("SELECT Function FROM ButtonRec WHERE \"Index\" = 1" + ofOther), 9);
    EXPECT_EQ(editor().preset.Buttons[0].Function, 0);
    EXPECT_EQ(editor().preset.SetupScene, "<none>");
    EXPECT_EQ(editor().BSceneCombo.findText("Gone"), -1);
    EXPECT_EQ(editor().BFunctionComboIndex, 0) << "the frame shows the button turned off";
}

TEST_F(ScenesTest, AnOpenImageGetsTheLongerPromptAndItsSceneListRefilled) {
    int refills = 0;
    t->memImage.followUps.MemImageFormOpen = [] { return true; };
    t->memImage.followUps.FillSceneList = [&] { ++refills; };
    ASSERT_TRUE(make("Bridge"));
    EXPECT_NE(t.prompter.seen().back().text.find("NOTE that Scene info is not sent to the PC1600(x)"), std::string::npos);
    editor().SelectSceneCombo.setListIndex(0);
    t.prompter.expectMessage("Delete Scene?", MessageAnswer::Yes);
    ASSERT_TRUE(DeleteScene(*t));
    EXPECT_EQ(refills, 1);
    EXPECT_TRUE(make("Bridge")) << "the name of a deleted scene is free again";
}

TEST_F(ScenesTest, NoneInASceneListClearsTheReference) {
    ASSERT_TRUE(make("Mine"));
    ClickButton(editor(), 2);
    ChooseButtonScene(editor(), editor().BSceneCombo.findText("Mine"));
    EXPECT_EQ(editor().preset.Buttons[2].ScenePreset, id);
    ChooseButtonScene(editor(), 0);
    EXPECT_EQ(editor().preset.Buttons[2].Scene, "<none>");
    EXPECT_EQ(editor().preset.Buttons[2].ScenePreset, -1);
}

TEST_F(ScenesTest, OtherScenesComeFromTheWholePoolButThisPreset) {
    ListState list;
    t.prompter.expectMessage("Cannot Select a Scene", "There are no Scenes in the Preset Pool.", MessageAnswer::OK);
    EXPECT_FALSE(FillSceneList(*t, "Live Set", list));
    ASSERT_TRUE(make("Mine"));
    const std::int64_t other = addPreset("Ballad's");
    db().prepare("INSERT INTO SceneRec (PresetREF, Name) VALUES (:P, 'Soft')").bind(":P", other).run();
    const std::int64_t softID = db().lastInsertId();
    ASSERT_TRUE(FillSceneList(*t, "Live Set", list));
    ASSERT_EQ(list.listCount(), 1);
    EXPECT_EQ(list.itemData(0), softID);

    ClickButton(editor(), 1);
    AddOtherScene(*t, true, softID);
    EXPECT_EQ(editor().preset.Buttons[1].ScenePreset, other);
    // Showing the button again finds the line by name and owner; a new scene keeps it.
    ClickFader(editor(), 0);
    editor().BSceneCombo.setListIndex(0);
    ClickButton(editor(), 1);
    EXPECT_EQ(editor().BSceneCombo.text(), "Soft  - from Ballad's");
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
    EXPECT_EQ(editor().preset.Faders[16].Value, 50);
    EXPECT_EQ(editor().preset.Faders[17].Value, 3);
}

}  // namespace
}  // namespace tavlo
