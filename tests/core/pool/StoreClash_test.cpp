// Name clashes of a download: the choice dialogue, each of its choices alone
// and for all, and the questions about scenes that other presets use.
#include "PoolFixture.h"
#include "pool/MemImageOrPoolChoiceForm.h"

namespace tavlo::testing {
namespace {

class Clash : public PoolFixture {
protected:
    std::int64_t poolId = 0;
    void SetUp() override {
        poolId = storeNew("Clash", 2);
        s.flags.DownloadInProgress = true;
        newPreset("Clash", 1);
        s.editor.preset.Faders[0].Name = "downloaded";
    }
    // Answers the dialogue by pressing `button` with `newName` typed.
    void press(ClashButton button, std::string newName = {}) {
        prompter.expectChoice("MemImageOrPoolChoiceForm", [button, newName](const ChoiceRequest& request) {
            EXPECT_EQ(request.text,
                      "How would you like to resolve the duplicate Preset Name 'Clash' found in the Pool which "
                      "matches the one you've got from your PC1600(x)?");
            EXPECT_FALSE(request.buttons.at(static_cast<int>(ClashButton::Compare)).enabled);
            EXPECT_EQ(request.buttons.at(static_cast<int>(button)).objectName.empty(), false);
            ChoiceAnswer answer;
            answer.button = static_cast<int>(button);
            answer.fields = {newName};
            return answer;
        });
    }
    std::string faderName(std::int64_t id) {
        return textOf("SELECT Name FROM FaderRec WHERE PresetREF = :ID AND \"Index\" = 0", id);
    }
};

TEST_F(Clash, EachChoiceAlone) {
    struct Case {
        ClashButton button;
        std::string newName;
        int result;
        // Afterwards: the name of the row that holds the downloaded preset,
        // and the name the pool's old row goes by ("" when it was replaced).
        std::string downloadedAs;
        std::string oldRowAs;
    };
    const Case cases[] = {
        {ClashButton::KeepPool, "", 0, "", "Clash"},
        {ClashButton::UseDownloaded, "", 1, "Clash", ""},
        {ClashButton::RenamePool, "Old Clash", 2, "Clash", "Old Clash"},
        {ClashButton::RenameSysex, "New Clash", 3, "New Clash", "Clash"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.result);
        TestSession fresh;
        // Each case on its own pool: rebuild the fixture's state in it.
        Session& f = *fresh;
        InitPresetWithoutQuestions(f);
        f.editor.preset.Name = "Clash";
        f.editor.preset.SceneCount = 2;
        f.editor.preset.Scenes[0].Name = "A";
        f.editor.preset.Scenes[1].Name = "B";
        StoreInPoolButton(f);
        const std::int64_t old = f.editor.preset.ID;
        f.flags.DownloadInProgress = true;
        InitPresetWithoutQuestions(f);
        f.editor.preset.Name = "Clash";
        f.editor.preset.Faders[0].Name = "downloaded";
        const ClashButton button = c.button;
        const std::string newName = c.newName;
        fresh.prompter.expectChoice("MemImageOrPoolChoiceForm", [button, newName](const ChoiceRequest&) {
            ChoiceAnswer answer;
            answer.button = static_cast<int>(button);
            answer.fields = {newName};
            return answer;
        });
        StoreInPoolButton(f);
        EXPECT_TRUE(fresh.prompter.done());
        EXPECT_EQ(f.flags.ChoiceResult, c.result);
        EXPECT_FALSE(f.flags.ChoiceForAll);
        Database& d = f.pool.db();
        auto nameOf = [&](std::int64_t id) {
            Statement q = d.prepare("SELECT Name FROM PresetRec WHERE ID = :ID");
            q.bind(":ID", id);
            return q.step() ? q.getText(0) : std::string();
        };
        auto faderOf = [&](const std::string& name) {
            Statement q = d.prepare("SELECT FaderRec.Name FROM FaderRec, PresetRec WHERE FaderRec.PresetREF = "
                                    "PresetRec.ID AND PresetRec.Name = :Name AND FaderRec.\"Index\" = 0");
            q.bind(":Name", name);
            return q.step() ? q.getText(0) : std::string("<none>");
        };
        EXPECT_EQ(nameOf(old), c.oldRowAs == "" ? "Clash" : c.oldRowAs);
        if (c.downloadedAs.empty()) {
            EXPECT_TRUE(f.editor.PresetKeptInPool);
            EXPECT_EQ(f.editor.preset.Faders[0].Name, "") << "the editor now holds the pool's version";
            EXPECT_EQ(faderOf("Clash"), "");
        } else {
            EXPECT_FALSE(f.editor.PresetKeptInPool);
            EXPECT_EQ(faderOf(c.downloadedAs), "downloaded");
        }
        if (c.result == 1) {
            EXPECT_EQ(f.editor.preset.ID, old) << "overwrite keeps the ID";
        }
        if (c.result >= 2) {
            EXPECT_NE(f.editor.preset.ID, old);
        }
    }
}

TEST_F(Clash, RenameNeedsAFreshName) {
    storeNew("Taken");
    s.flags.DownloadInProgress = true;
    newPreset("Clash");
    press(ClashButton::RenamePool, "  ");
    prompter.expectMessage("Please Enter New Name", "You must enter a new Name in the Textbox to the right first.",
                           MessageAnswer::OK);
    press(ClashButton::RenameSysex, "TAKEN");
    prompter.expectMessage("Cannot Continue Store",
                           "That Preset Name already exists in the database.  Please choose another.",
                           MessageAnswer::OK);
    press(ClashButton::RenameSysex, "Clash Two");
    StoreInPoolButton(s);
    EXPECT_TRUE(prompter.done());
    EXPECT_EQ(s.flags.ChoiceResult, 3);
    EXPECT_GT(idOf("Clash Two"), 0);
    EXPECT_EQ(idOf("Clash"), poolId);
}

TEST_F(Clash, KeepAllAsksOnceThenHoldsForTheRest) {
    press(ClashButton::KeepALLPool);
    prompter.expectMessage("Are You Sure?", MessageAnswer::No);
    press(ClashButton::KeepALLPool);
    prompter.expectMessage("Are You Sure?",
                           "Are you sure you want to keep the Presets in the Pool (all new Presets downloaded from "
                           "your PC1600(x) with the same Name will be ignored)?",
                           MessageAnswer::Yes);
    StoreInPoolButton(s);
    EXPECT_TRUE(s.flags.ChoiceForAll);
    EXPECT_EQ(s.flags.ChoiceResult, 0);
    EXPECT_TRUE(s.editor.PresetKeptInPool);

    newPreset("Clash");
    s.editor.preset.Faders[0].Name = "again";
    StoreInPoolButton(s);  // nothing more is asked
    EXPECT_TRUE(prompter.done());
    EXPECT_EQ(faderName(poolId), "");
}

TEST_F(Clash, UseAllDownloadedAsksTwice) {
    press(ClashButton::KeepALLSysex);
    prompter.expectMessage("Are You Sure?",
                           "Are you sure you want to keep the Presets from this PC1600(x) Download and overwrite any "
                           "same-named Presets in the Pool?",
                           MessageAnswer::Yes)
        .expectMessage("About to Overwrite Preset in Pool", MessageAnswer::No);
    press(ClashButton::KeepALLSysex);
    prompter.expectMessage("Are You Sure?", MessageAnswer::Yes)
        .expectMessage("About to Overwrite Preset in Pool", MessageAnswer::Yes);
    StoreInPoolButton(s);
    EXPECT_TRUE(prompter.done());
    EXPECT_TRUE(s.flags.ChoiceForAll);
    EXPECT_EQ(s.flags.ChoiceResult, 1);
    EXPECT_EQ(faderName(poolId), "downloaded");
    const std::string note = prompter.seen()[5].text;
    EXPECT_EQ(note.rfind("NOTE that if the Preset in the Pool that you're overwriting contains Scenes which are "
                         "referenced by other Preset Send Scene Buttons or other Presets SetupScene, then those "
                         "Preset functions will be removed",
                         0),
              0u);
}

TEST_F(Clash, ClosedByItsFrameActsOnTheChoiceAsItStands) {
    s.flags.ChoiceResult = 0;
    prompter.expectChoice("MemImageOrPoolChoiceForm", [](const ChoiceRequest&) { return ChoiceAnswer{}; });
    StoreInPoolButton(s);
    EXPECT_TRUE(s.editor.PresetKeptInPool);
}

class SceneReferences : public PoolFixture {
protected:
    std::int64_t target = 0, user = 0, setupUser = 0;
    void SetUp() override {
        target = storeNew("Target", 2);
        user = storeNew("User");
        sendScene(user, 3, "Scene 1", target);
        newPreset("Setup User");
        s.editor.SelectPresetSceneCombo.addItem("Scene 2  - from Target", target);
        s.editor.SelectPresetSceneCombo.setListIndex(1);
        s.editor.preset.SetupScene = "Scene 2";
        s.editor.preset.SetupScenePreset = static_cast<std::int32_t>(target);
        StoreInPoolButton(s);
        setupUser = s.editor.preset.ID;

        s.flags.DownloadInProgress = true;
        newPreset("Target", 1);
        s.editor.preset.Scenes[0].Name = "Downloaded scene";
        prompter.expectChoice("MemImageOrPoolChoiceForm", [](const ChoiceRequest&) {
            ChoiceAnswer answer;
            answer.button = static_cast<int>(ClashButton::UseDownloaded);
            return answer;
        });
    }
};

const char* const kResolveText =
    "You can either move the Scenes from the old Preset onto the newly downloaded one (to keep referential integrity "
    "in tact) or remove all references to those Scenes in the Pool.  Do you want to move Scenes to the new Preset "
    "(Select 'YES')?  Otherwise (to remove references), select 'NO'.  Selecting 'CANCEL' will override your earlier "
    "response to 'Overwrite the Preset in the Pool' and make it 'Keep the Preset in the Pool '";

TEST_F(SceneReferences, YesMovesTheOldScenesOntoTheNewVersion) {
    prompter.expectMessage("Resolve Scene References", kResolveText, MessageAnswer::Yes);
    StoreInPoolButton(s);
    EXPECT_EQ(s.editor.preset.ID, target);
    EXPECT_EQ(intOf("SELECT COUNT(*) FROM SceneRec WHERE PresetREF = :ID", target), 2) << "KeepOldScenes";
    EXPECT_EQ(intOf("SELECT COUNT(*) FROM SceneRec WHERE Name = 'Downloaded scene' AND PresetREF = :ID", target), 0);
    EXPECT_EQ(intOf("SELECT Function FROM ButtonRec WHERE PresetREF = :ID AND \"Index\" = 3", user), 9);
    EXPECT_EQ(intOf("SELECT SetupScenePreset FROM PresetRec WHERE ID = :ID", setupUser), target);
}

TEST_F(SceneReferences, NoRemovesTheReferences) {
    prompter.expectMessage("Resolve Scene References", MessageAnswer::No);
    StoreInPoolButton(s);
    EXPECT_EQ(intOf("SELECT Function FROM ButtonRec WHERE PresetREF = :ID AND \"Index\" = 3", user), 0);
    EXPECT_EQ(textOf("SELECT Name FROM ButtonRec WHERE PresetREF = :ID AND \"Index\" = 3", user), "");
    EXPECT_EQ(textOf("SELECT Scene FROM ButtonRec WHERE PresetREF = :ID AND \"Index\" = 3", user), "<none>");
    EXPECT_EQ(intOf("SELECT SetupScenePreset FROM PresetRec WHERE ID = :ID", setupUser), -1);
    EXPECT_EQ(textOf("SELECT SetupScene FROM PresetRec WHERE ID = :ID", setupUser), "<none>");
    EXPECT_EQ(intOf("SELECT COUNT(*) FROM SceneRec WHERE PresetREF = :ID", target), 1);
}

TEST_F(SceneReferences, CancelKeepsThePoolVersion) {
    prompter.expectMessage("Resolve Scene References", MessageAnswer::Cancel);
    StoreInPoolButton(s);
    EXPECT_TRUE(s.editor.PresetKeptInPool);
    EXPECT_EQ(intOf("SELECT COUNT(*) FROM SceneRec WHERE PresetREF = :ID", target), 2);
    EXPECT_EQ(intOf("SELECT Function FROM ButtonRec WHERE PresetREF = :ID AND \"Index\" = 3", user), 9);
    EXPECT_EQ(s.editor.preset.SceneCount, 2) << "the editor holds the pool's version";
}

TEST_F(SceneReferences, AnUnansweredQuestionChangesNothing) {
    // A prompter that refuses to answer (as the command line does) ends the
    // store with an exception; the transaction leaves every row as it was.
    struct Refusing : ScriptedPrompter {
        MessageAnswer message(const std::string& title, const std::string& text, MessageButtons buttons) override {
            if (title == "Resolve Scene References") throw std::runtime_error("no answer");
            return ScriptedPrompter::message(title, text, buttons);
        }
    };
    (void)kResolveText;
    TestSession fresh;
    Refusing refusing;
    Session other(fresh.pool, refusing, fresh.status, fresh.pump, fresh.clock);
    InitPresetWithoutQuestions(other);
    other.editor.preset.Name = "T";
    other.editor.preset.SceneCount = 1;
    other.editor.preset.Scenes[0].Name = "S";
    StoreInPoolButton(other);
    const std::int64_t t = other.editor.preset.ID;
    fresh.pool.db().prepare("UPDATE ButtonRec SET Function = 9, Scene = 'S', ScenePreset = :T WHERE ID = "
                            "(SELECT MIN(ID) FROM ButtonRec WHERE PresetREF = :T)")
        .bind(":T", t)
        .run();
    other.flags.DownloadInProgress = true;
    other.flags.ChoiceForAll = true;
    other.flags.ChoiceResult = 1;
    InitPresetWithoutQuestions(other);
    other.editor.preset.Name = "T";
    other.editor.preset.Faders[0].Name = "changed";
    EXPECT_THROW(StoreInPoolButton(other), std::runtime_error);
    Statement q = fresh.pool.db().prepare("SELECT COUNT(*) FROM SceneRec WHERE PresetREF = :T");
    q.bind(":T", t);
    ASSERT_TRUE(q.step());
    EXPECT_EQ(q.getInt(0), 1);
    EXPECT_EQ(fresh.pool.db().queryInt("SELECT COUNT(*) FROM FaderRec WHERE Name = 'changed'"), 0);
}

}  // namespace
}  // namespace tavlo::testing
