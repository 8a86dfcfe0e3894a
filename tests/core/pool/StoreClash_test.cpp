// Name clashes of a download: the choice dialogue, each of its choices alone
// and for all, and the questions about scenes that other presets use.
#include "PoolFixture.h"
#include "pool/PoolContext.h"
#include "pool/PoolFlags.h"

namespace tavlo::testing {
namespace {

class Clash : public PoolFixture {
public:
    std::int64_t poolId = 0;
    void SetUp() override {
        poolId = storeNew("Clash", 2);
        storeNew("Taken");
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
            EXPECT_FALSE(request.closable);
            return ChoiceAnswer{.button = static_cast<int>(button), .fields = {newName}};
        });
    }
    std::string faderName(std::int64_t id) {
        return textOf("SELECT Name FROM FaderRec WHERE PresetREF = :ID AND \"Index\" = 0", id);
    }
};

struct ChoiceCase {
    const char* what;
    std::function<void(Clash&)> answer;
    int result;
    bool forAll;
    // Afterwards: the name of the row that holds the downloaded preset ("":
    // none, the pool's version stays), and the name the old row goes by.
    std::string downloadedAs;
    std::string oldRowAs;
};

const char* const kOverwriteNote =
    "NOTE that if the Preset in the Pool that you're overwriting contains Scenes which are referenced by other "
    "Preset Send Scene Buttons or other Presets SetupScene, then those Preset functions will be removed";

class EachChoice : public Clash, public ::testing::WithParamInterface<ChoiceCase> {};

TEST_P(EachChoice, StoresAsChosen) {
    const ChoiceCase& c = GetParam();
    c.answer(*this);
    StoreInPoolButton(s);
    EXPECT_TRUE(prompter.done());
    EXPECT_EQ(s.poolFlags.ChoiceResult, c.result);
    EXPECT_EQ(s.poolFlags.ChoiceForAll, c.forAll);
    EXPECT_EQ(textOf("SELECT Name FROM PresetRec WHERE ID = :ID", poolId), c.oldRowAs);
    EXPECT_EQ(s.editor.PresetKeptInPool, c.downloadedAs.empty());
    if (c.downloadedAs.empty()) {
        EXPECT_EQ(s.editor.preset.Faders[0].Name, "") << "the editor now holds the pool's version";
        EXPECT_EQ(faderName(poolId), "");
    } else {
        EXPECT_EQ(faderName(idOf(c.downloadedAs)), "downloaded");
    }
    // Overwriting keeps the pool row's ID; a renamed copy gets a new one.
    EXPECT_EQ(s.editor.preset.ID == poolId, c.result <= 1);
    for (const auto& seen : prompter.seen())
        EXPECT_TRUE(seen.title != "About to Overwrite Preset in Pool" || seen.text.rfind(kOverwriteNote, 0) == 0);
    if (!c.forAll) return;
    // A choice for all holds for the next clash: nothing more is asked.
    newPreset("Clash");
    s.editor.preset.Faders[0].Name = "again";
    StoreInPoolButton(s);
    EXPECT_TRUE(prompter.done());
    EXPECT_EQ(faderName(poolId), c.result == 0 ? "" : "again");
}

INSTANTIATE_TEST_SUITE_P(
    Clash, EachChoice,
    ::testing::Values(
        ChoiceCase{"KeepPool", [](Clash& f) { f.press(ClashButton::KeepPool); }, 0, false, "", "Clash"},
        ChoiceCase{"UseDownloaded", [](Clash& f) { f.press(ClashButton::UseDownloaded); }, 1, false, "Clash", "Clash"},
        ChoiceCase{"RenamePool", [](Clash& f) { f.press(ClashButton::RenamePool, "Old Clash"); }, 2, false, "Clash",
                   "Old Clash"},
        ChoiceCase{"RenameSysex", [](Clash& f) { f.press(ClashButton::RenameSysex, "New Clash"); }, 3, false,
                   "New Clash", "Clash"},
        ChoiceCase{"RenameNeedsAFreshName",
                   [](Clash& f) {
                       f.press(ClashButton::RenamePool, "  ");
                       f.prompter.expectMessage("Please Enter New Name",
                                                "You must enter a new Name in the Textbox to the right first.",
                                                MessageAnswer::OK);
                       f.press(ClashButton::RenameSysex, "TAKEN");
                       f.prompter.expectMessage(
                           "Cannot Continue Store",
                           "That Preset Name already exists in the database.  Please choose another.",
                           MessageAnswer::OK);
                       // The one rule for names: nothing the system keeps, 16 characters after filtering.
                       for (const char* refused : {"--initialized--", "Way Too Long A New Name"}) {
                           f.press(ClashButton::RenamePool, refused);
                           f.prompter.expectMessage("Cannot Continue Store");
                       }
                       f.press(ClashButton::RenameSysex, "  Clash Two\xE9 ");
                   },
                   3, false, "Clash Two", "Clash"},
        ChoiceCase{"KeepAllAsksOnce",
                   [](Clash& f) {
                       f.press(ClashButton::KeepALLPool);
                       f.prompter.expectMessage("Are You Sure?", MessageAnswer::No);
                       f.press(ClashButton::KeepALLPool);
                       f.prompter.expectMessage(
                           "Are You Sure?",
                           "Are you sure you want to keep the Presets in the Pool (all new Presets downloaded from "
                           "your PC1600(x) with the same Name will be ignored)?",
                           MessageAnswer::Yes);
                   },
                   0, true, "", "Clash"},
        ChoiceCase{"UseAllDownloadedAsksTwice",
                   [](Clash& f) {
                       f.press(ClashButton::KeepALLSysex);
                       f.prompter
                           .expectMessage("Are You Sure?",
                                          "Are you sure you want to keep the Presets from this PC1600(x) Download "
                                          "and overwrite any same-named Presets in the Pool?",
                                          MessageAnswer::Yes)
                           .expectMessage("About to Overwrite Preset in Pool", MessageAnswer::No);
                       f.press(ClashButton::KeepALLSysex);
                       f.prompter.expectMessage("Are You Sure?", MessageAnswer::Yes)
                           .expectMessage("About to Overwrite Preset in Pool", MessageAnswer::Yes);
                   },
                   1, true, "Clash", "Clash"},
        // A prompter that comes back without a button gets the choice that
        // changes nothing, never the answer given to an earlier preset.
        ChoiceCase{"NoButton",
                   [](Clash& f) {
                       f.s.poolFlags.ChoiceResult = 1;
                       f.prompter.expectChoice("MemImageOrPoolChoiceForm",
                                               [](const ChoiceRequest&) { return ChoiceAnswer{}; });
                   },
                   0, false, "", "Clash"}),
    [](const auto& info) { return std::string(info.param.what); });

class SceneReferences : public PoolFixture {
protected:
    std::int64_t target = 0, user = 0, setupUser = 0;
    void SetUp() override {
        target = storeNew("Target", 2);
        user = storeNew("User");
        sendScene(user, 3, "Scene 1", target);
        newPreset("Setup User");
        pickSetupScene(target, "Target", "Scene 2");
        StoreInPoolButton(s);
        setupUser = s.editor.preset.ID;

        s.poolFlags.DownloadInProgress = true;
        newPreset("Target", 1);
        s.editor.preset.Scenes[0].Name = "Downloaded scene";
    }
    std::string button() { return textOf("SELECT Function || '|' || Scene FROM ButtonRec WHERE PresetREF = :ID AND \"Index\" = 3", user); }
    std::string setup() { return textOf("SELECT SetupScene || '|' || SetupScenePreset FROM PresetRec WHERE ID = :ID", setupUser); }
    std::string scenes() { return textOf("SELECT group_concat(Name, ',') FROM SceneRec WHERE PresetREF = :ID", target); }
};

const char* const kResolveText =
    "You can either move the Scenes from the old Preset onto the newly downloaded one (to keep referential integrity "
    "in tact) or remove all references to those Scenes in the Pool.  Do you want to move Scenes to the new Preset "
    "(Select 'YES')?  Otherwise (to remove references), select 'NO'.  Selecting 'CANCEL' will override your earlier "
    "response to 'Overwrite the Preset in the Pool' and make it 'Keep the Preset in the Pool '";

struct ResolveCase {
    MessageAnswer answer;
    const char* button;
    bool setupKept;
    const char* scenes;
    bool kept;
};

class EachAnswer : public SceneReferences, public ::testing::WithParamInterface<ResolveCase> {};

// Overwriting a preset whose scenes others use: Yes moves the old scenes onto
// the new version, No removes the references, Cancel keeps the pool's version.
TEST_P(EachAnswer, ResolvesTheReferences) {
    const ResolveCase& c = GetParam();
    answerClash(ClashButton::UseDownloaded);
    prompter.expectMessage("Resolve Scene References", kResolveText, c.answer);
    StoreInPoolButton(s);
    EXPECT_TRUE(prompter.done());
    EXPECT_EQ(button(), c.button);
    EXPECT_EQ(setup(), c.setupKept ? "Scene 2|" + std::to_string(target) : "<none>|-1");
    EXPECT_EQ(scenes(), c.scenes);
    EXPECT_EQ(s.editor.PresetKeptInPool, c.kept);
    EXPECT_EQ(s.editor.preset.ID, target);
    if (c.kept) {
        EXPECT_EQ(s.editor.preset.SceneCount, 2) << "the editor holds the pool's version";
    }
}

INSTANTIATE_TEST_SUITE_P(SceneReferences, EachAnswer,
                         ::testing::Values(ResolveCase{MessageAnswer::Yes, "9|Scene 1", true, "Scene 1,Scene 2", false},
                                           ResolveCase{MessageAnswer::No, "0|<none>", false, "Downloaded scene", false},
                                           ResolveCase{MessageAnswer::Cancel, "9|Scene 1", true, "Scene 1,Scene 2", true}));

// A prompter that refuses to answer (as the command line does) ends the store
// with an exception; the transaction leaves every row as it was.
TEST_F(SceneReferences, AnUnansweredQuestionChangesNothing) {
    struct Refusing : ScriptedPrompter {
        MessageAnswer message(const std::string& title, const std::string& text, MessageButtons buttons) override {
            if (title == "Resolve Scene References") throw std::runtime_error("no answer");
            return ScriptedPrompter::message(title, text, buttons);
        }
    } refusing;
    s.poolFlags.ChoiceForAll = true;
    s.poolFlags.ChoiceResult = 1;
    s.editor.preset.Faders[0].Name = "changed";
    const PoolContext context{s.pool, refusing, s.editor, s.midi, s.memImage, s.poolForm, s.poolFlags};
    EXPECT_THROW(StoreInPoolButton(context), std::runtime_error);
    EXPECT_EQ(scenes(), "Scene 1,Scene 2");
    EXPECT_EQ(button(), "9|Scene 1");
    EXPECT_EQ(count("SELECT COUNT(*) FROM FaderRec WHERE Name = 'changed'"), 0);
}

}  // namespace
}  // namespace tavlo::testing
