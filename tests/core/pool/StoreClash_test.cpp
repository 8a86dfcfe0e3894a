// Name clashes of a download: the choice dialogue, each of its choices alone
// and for all, and the questions about scenes that other presets use.
#include "PoolFixture.h"
#include "pool/MemImageOrPoolChoiceForm.h"
#include "db/PoolDatabase.h"
#include "editor/EditorState.h"
#include "pool/PoolFlags.h"
#include "memimage/MemImageState.h"
#include "pool/PoolContext.h"
#include "pool/PoolFormState.h"
#include "pool/PresetStore.h"
#include "editor/InitPreset.h"
#include "midilink/MidiConfig.h"

namespace tavlo::testing {
namespace {

class Clash : public PoolFixture {
protected:
    std::int64_t poolId = 0;
    void SetUp() override {
        poolId = storeNew("Clash", 2);
        s.poolFlags.DownloadInProgress = true;
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

struct ChoiceCase {
    ClashButton button;
    std::string newName;
    int result;
    // Afterwards: the name of the row that holds the downloaded preset ("":
    // none, the pool's version stays), and the name the old row goes by.
    std::string downloadedAs;
    std::string oldRowAs;
};

class EachChoice : public Clash, public ::testing::WithParamInterface<ChoiceCase> {};

TEST_P(EachChoice, Alone) {
    const ChoiceCase& c = GetParam();
    answerClash(c.button, c.newName);
    StoreInPoolButton(s);
    EXPECT_TRUE(prompter.done());
    EXPECT_EQ(s.poolFlags.ChoiceResult, c.result);
    EXPECT_FALSE(s.poolFlags.ChoiceForAll);
    EXPECT_EQ(textOf("SELECT Name FROM PresetRec WHERE ID = :ID", poolId), c.oldRowAs);
    if (c.downloadedAs.empty()) {
        EXPECT_TRUE(s.editor.PresetKeptInPool);
        EXPECT_EQ(s.editor.preset.Faders[0].Name, "") << "the editor now holds the pool's version";
        EXPECT_EQ(faderName(poolId), "");
    } else {
        EXPECT_FALSE(s.editor.PresetKeptInPool);
        EXPECT_EQ(faderName(idOf(c.downloadedAs)), "downloaded");
    }
    // Overwriting keeps the pool row's ID; a renamed copy gets a new one.
    EXPECT_EQ(s.editor.preset.ID == poolId, c.result <= 1);
}

INSTANTIATE_TEST_SUITE_P(Clash, EachChoice,
                         ::testing::Values(ChoiceCase{ClashButton::KeepPool, "", 0, "", "Clash"},
                                           ChoiceCase{ClashButton::UseDownloaded, "", 1, "Clash", "Clash"},
                                           ChoiceCase{ClashButton::RenamePool, "Old Clash", 2, "Clash", "Old Clash"},
                                           ChoiceCase{ClashButton::RenameSysex, "New Clash", 3, "New Clash", "Clash"}));

TEST_F(Clash, RenameNeedsAFreshName) {
    storeNew("Taken");
    s.poolFlags.DownloadInProgress = true;
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
    EXPECT_EQ(s.poolFlags.ChoiceResult, 3);
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
    EXPECT_TRUE(s.poolFlags.ChoiceForAll);
    EXPECT_EQ(s.poolFlags.ChoiceResult, 0);
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
    EXPECT_TRUE(s.poolFlags.ChoiceForAll);
    EXPECT_EQ(s.poolFlags.ChoiceResult, 1);
    EXPECT_EQ(faderName(poolId), "downloaded");
    const std::string note = prompter.seen()[5].text;
    EXPECT_EQ(note.rfind("NOTE that if the Preset in the Pool that you're overwriting contains Scenes which are "
                         "referenced by other Preset Send Scene Buttons or other Presets SetupScene, then those "
                         "Preset functions will be removed",
                         0),
              0u);
}

TEST_F(Clash, ClosedByItsFrameActsOnTheChoiceAsItStands) {
    s.poolFlags.ChoiceResult = 0;
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

        s.poolFlags.DownloadInProgress = true;
        newPreset("Target", 1);
        s.editor.preset.Scenes[0].Name = "Downloaded scene";
        answerClash(ClashButton::UseDownloaded);
    }
    std::int64_t buttonFunction() { return intOf("SELECT Function FROM ButtonRec WHERE PresetREF = :ID AND \"Index\" = 3", user); }
    std::int64_t targetScenes() { return intOf("SELECT COUNT(*) FROM SceneRec WHERE PresetREF = :ID", target); }
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
    EXPECT_EQ(targetScenes(), 2) << "KeepOldScenes";
    EXPECT_EQ(intOf("SELECT COUNT(*) FROM SceneRec WHERE Name = 'Downloaded scene' AND PresetREF = :ID", target), 0);
    EXPECT_EQ(buttonFunction(), 9);
    EXPECT_EQ(intOf("SELECT SetupScenePreset FROM PresetRec WHERE ID = :ID", setupUser), target);
}

TEST_F(SceneReferences, NoRemovesTheReferences) {
    prompter.expectMessage("Resolve Scene References", MessageAnswer::No);
    StoreInPoolButton(s);
    EXPECT_EQ(buttonFunction(), 0);
    EXPECT_EQ(textOf("SELECT Name || '|' || Scene FROM ButtonRec WHERE PresetREF = :ID AND \"Index\" = 3", user),
              "|<none>");
    EXPECT_EQ(textOf("SELECT SetupScene || '|' || SetupScenePreset FROM PresetRec WHERE ID = :ID", setupUser),
              "<none>|-1");
    EXPECT_EQ(targetScenes(), 1);
}

TEST_F(SceneReferences, CancelKeepsThePoolVersion) {
    prompter.expectMessage("Resolve Scene References", MessageAnswer::Cancel);
    StoreInPoolButton(s);
    EXPECT_TRUE(s.editor.PresetKeptInPool);
    EXPECT_EQ(targetScenes(), 2);
    EXPECT_EQ(buttonFunction(), 9);
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
    TestProgram fresh;
    Refusing refusing;
    const PoolContext other{fresh->pool,     refusing,          fresh->editor,   fresh->midi,
                           fresh->memImage, fresh->poolForm, fresh->poolFlags};
    InitializePreset(other);
    other.editor.preset.Name = "T";
    other.editor.preset.SceneCount = 1;
    other.editor.preset.Scenes[0].Name = "S";
    StoreInPoolButton(other);
    const std::int64_t t = other.editor.preset.ID;
    fresh->pool.db().prepare("UPDATE ButtonRec SET Function = 9, Scene = 'S', ScenePreset = :T WHERE ID = "
                            "(SELECT MIN(ID) FROM ButtonRec WHERE PresetREF = :T)")
        .bind(":T", t)
        .run();
    other.flags.DownloadInProgress = true;
    other.flags.ChoiceForAll = true;
    other.flags.ChoiceResult = 1;
    InitializePreset(other);
    other.editor.preset.Name = "T";
    other.editor.preset.Faders[0].Name = "changed";
    EXPECT_THROW(StoreInPoolButton(other), std::runtime_error);
    Statement q = fresh->pool.db().prepare("SELECT COUNT(*) FROM SceneRec WHERE PresetREF = :T");
    q.bind(":T", t);
    ASSERT_TRUE(q.step());
    EXPECT_EQ(q.getInt(0), 1);
    EXPECT_EQ(fresh->pool.db().queryInt("SELECT COUNT(*) FROM FaderRec WHERE Name = 'changed'"), 0);
}

}  // namespace
}  // namespace tavlo::testing
