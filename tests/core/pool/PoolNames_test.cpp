// Names entering the pool: one rule for every way in, the system's own names
// kept for it in any letter case, the clash dialogue that only its buttons
// answer, and a duplicate that owns its scenes.
#include <fstream>

#include "PoolFixture.h"
#include "editor/EditorState.h"
#include "pool/PoolFlags.h"
#include "pool/PoolFormState.h"
#include "pool/PoolList.h"
#include "pool/PoolOperations.h"
#include "pool/PresetSysexFile.h"
#include "pool/PresetSysexImport.h"

namespace tavlo::testing {
namespace {

class PoolNames : public PoolFixture {
protected:
    void selectName(const std::string& name) {
        s.poolForm.OrderOption = PoolOrder::ByName;
        ReloadPoolList(s);
        const int line = s.poolForm.PoolList.findText(name);
        ASSERT_GE(line, 0) << name;
        SelectPoolLine(s, line);
    }
    std::string exported(const std::string& name) {
        const std::int64_t id = storeNew(name);
        const std::string path = t.dir.file(name + std::to_string(id) + ".syx");
        EXPECT_TRUE(WritePresetSysexFile(s, id, path));
        return path;
    }
    std::vector<std::string> names() {
        std::vector<std::string> out;
        Statement all = db().prepare("SELECT Name FROM PresetRec ORDER BY ID");
        while (all.step()) out.push_back(all.getText(0));
        return out;
    }
};

TEST_F(PoolNames, TheSystemPresetCannotBeTakenOverInAnyCase) {
    const std::vector<std::string> before = names();
    // A download of that name is passed over without a question.
    newPreset("--INITIALIZED--");
    s.poolFlags.DownloadInProgress = true;
    StoreInPoolButton(s);
    s.poolFlags.DownloadInProgress = false;
    // The editor is refused.
    newPreset("--initialized--");
    prompter.expectMessage("Cannot Update --Initialized-- Preset", MessageAnswer::OK);
    StoreInPoolButton(s);
    EXPECT_TRUE(prompter.done());
    EXPECT_EQ(names(), before);
}

// One rule for every way a name comes in: filtered, trimmed, at most 16
// characters after filtering, and never a name the system keeps.
TEST_F(PoolNames, EveryWayInFollowsTheNameRule) {
    enum Way { Rename, Duplicate, Store, BlankBox };
    struct Case {
        Way way;
        std::string typed;
        const char* refusal;   // title of the refusal, or nullptr
        std::string stored;    // the new row's name, or "" for none
    };
    const std::string seventeen = "Sixteen Letters!\xE9";  // the accent filtered away
    const Case cases[] = {
        {Rename, "  Café  ", "Cannot Rename", ""},  // "Caf" stands in the pool already
        {Rename, "Twenty Four Characters!!", "Cannot Rename Preset", ""},
        {Rename, ">>>temp>>>", "Cannot Rename Preset", ""},
        {Rename, "--Initialized--", "Cannot Rename Preset", ""},
        {Rename, "\xE9\xE9", "Cannot Rename Preset", ""},
        {Rename, seventeen, nullptr, "Sixteen Letters!"},
        {Duplicate, "Café", "Cannot Duplicate", ""},
        {Duplicate, "A Much Too Long Name", "Cannot Duplicate Preset", ""},
        {Duplicate, "--INITIALIZED--", "Cannot Duplicate Preset", ""},
        {Duplicate, seventeen, nullptr, "Sixteen Letters!"},
        {Store, "Twenty Four Characters!!", "Cannot Store Preset", ""},
        {Store, ">>>TEMP>>>", "Cannot Store Preset", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.typed);
        TestProgram fresh;
        Program& p = *fresh;
        ScriptedPrompter& asked = fresh.prompter;
        auto storeAs = [&](const std::string& name) {
            InitializePreset(p);
            p.editor.preset.Name = name;
            StoreInPoolButton(p);
            return p.editor.preset.ID;
        };
        const std::int64_t source = storeAs("Source");
        storeAs("Caf");
        const std::int64_t rows = p.pool.db().queryInt("SELECT COUNT(*) FROM PresetRec");
        p.poolForm.OrderOption = PoolOrder::ByName;
        ReloadPoolList(p);
        SelectPoolLine(p, p.poolForm.PoolList.findText("Source"));
        switch (c.way) {
            case Rename: asked.expectInput("Rename Preset", c.typed); break;
            case Duplicate: asked.expectInput("Duplicate Preset", c.typed); break;
            default: break;
        }
        if (c.refusal) asked.expectMessage(c.refusal, MessageAnswer::OK);
        switch (c.way) {
            case Rename: RenameButton(p); break;
            case Duplicate: DuplicateButton(p); break;
            default: storeAs(c.typed); break;
        }
        EXPECT_TRUE(asked.done());
        Database& db = p.pool.db();
        if (c.way == Rename) {
            Statement name = db.prepare("SELECT Name FROM PresetRec WHERE ID = :ID");
            name.bind(":ID", source);
            ASSERT_TRUE(name.step());
            EXPECT_EQ(name.getText(0), c.stored.empty() ? "Source" : c.stored);
        } else {
            EXPECT_EQ(db.queryInt("SELECT COUNT(*) FROM PresetRec"), rows + (c.stored.empty() ? 0 : 1));
            if (!c.stored.empty()) {
                Statement found = db.prepare("SELECT COUNT(*) FROM PresetRec WHERE Name = :Name");
                found.bind(":Name", c.stored);
                ASSERT_TRUE(found.step());
                EXPECT_EQ(found.getInt(0), 1);
            }
        }
    }
}

TEST_F(PoolNames, TheBlankNameBoxRefusesReservedNames) {
    storeNew("Taken");
    newPreset("");
    s.poolFlags.DownloadInProgress = true;
    prompter.expectInput("Enter New Preset Name", std::string(">>>TEMP>>>"))
        .expectInput("Enter New Preset Name", std::string("A Name Far Too Long For It"))
        .expectInput("Enter New Preset Name", std::string("taken"))
        .expectInput("Enter New Preset Name", std::string(" Fine "));
    StoreInPoolButton(s);
    s.poolFlags.DownloadInProgress = false;
    EXPECT_TRUE(prompter.done());
    EXPECT_GT(idOf("Fine"), 0);
    EXPECT_EQ(count("SELECT COUNT(*) FROM PresetRec WHERE Name LIKE '%TEMP%' OR Name LIKE 'A Name%'"), 0);
}

TEST_F(PoolNames, TheClashRenamesFollowTheRule) {
    const std::string path = exported("Clash");
    answerClash(ClashButton::RenamePool, "--initialized--");
    prompter.expectMessage("Cannot Continue Store", MessageAnswer::OK);
    answerClash(ClashButton::RenameSysex, "Way Too Long A New Name");
    prompter.expectMessage("Cannot Continue Store", MessageAnswer::OK);
    answerClash(ClashButton::RenameSysex, "  New\xE9  ");
    EXPECT_TRUE(ImportPresetSysexFile(s, path));
    EXPECT_TRUE(prompter.done());
    EXPECT_GT(idOf("New"), 0);
    EXPECT_EQ(textOf("SELECT Name FROM PresetRec WHERE ID = :ID", 1), "--Initialized--");
}

TEST_F(PoolNames, TheClashDialogueWithoutAButtonKeepsThePoolsPresetEveryFile) {
    const std::string first = exported("First");
    const std::string second = exported("Second");
    db().exec("UPDATE PresetRec SET Notes = 'keep me' WHERE Name = 'Second'");
    answerClash(ClashButton::UseDownloaded);
    EXPECT_TRUE(ImportPresetSysexFile(s, first));
    // Esc or the close box: no button at all.
    prompter.expectChoice("MemImageOrPoolChoiceForm", [](const ChoiceRequest& request) {
        EXPECT_FALSE(request.closable);
        return ChoiceAnswer{};
    });
    EXPECT_TRUE(ImportPresetSysexFile(s, second));
    EXPECT_TRUE(prompter.done());
    EXPECT_EQ(textOf("SELECT Notes FROM PresetRec WHERE ID = :ID", idOf("Second")), "keep me");
}

TEST_F(PoolNames, ADuplicateOwnsItsScenes) {
    newPreset("Source", 2);
    StoreInPoolButton(s);
    const std::int64_t source = s.editor.preset.ID;
    sendScene(source, 4, "Scene 2", source);
    db().prepare("UPDATE PresetRec SET SetupScene = 'Scene 1', SetupScenePreset = :ID WHERE ID = :ID")
        .bind(":ID", source)
        .run();
    selectName("Source");
    prompter.expectInput("Duplicate Preset", std::string("Copy"));
    DuplicateButton(s);
    const std::int64_t copy = idOf("Copy");
    ASSERT_GT(copy, 0);
    EXPECT_EQ(intOf("SELECT SetupScenePreset FROM PresetRec WHERE ID = :ID", copy), copy);
    EXPECT_EQ(intOf("SELECT ScenePreset FROM ButtonRec WHERE PresetREF = :ID AND \"Index\" = 4", copy), copy);
    EXPECT_EQ(intOf("SELECT ScenePreset FROM ButtonRec WHERE PresetREF = :ID AND \"Index\" = 4", source), source);
    EXPECT_EQ(s.editor.preset.Buttons[4].ScenePreset, copy);
}

// Flows that replace the editor's preset offer its unsaved work first;
// Cancel leaves the editor and the pool as they were.
TEST_F(PoolNames, ReplacingTheEditorsPresetAsksToStoreItsEdits) {
    storeNew("Listed");
    const std::string path = exported("FromFile");
    selectName("Listed");
    const std::int64_t rows = count("SELECT COUNT(*) FROM PresetRec");
    for (int flow = 0; flow < 2; ++flow) {
        SCOPED_TRACE(flow);
        newPreset("Unsaved Work");
        UpdateINITData(s.editor);
        s.editor.preset.Notes = "edited";
        s.editor.Visible = true;
        if (flow == 0) prompter.expectInput("Duplicate Preset", std::string("Copy"));
        prompter.expectMessage("Store Preset in Pool?", MessageAnswer::Cancel);
        if (flow == 0) DuplicateButton(s);
        else EXPECT_FALSE(ImportPresetSysexFile(s, path));
        EXPECT_TRUE(prompter.done());
        EXPECT_EQ(s.editor.preset.Notes, "edited");
        EXPECT_EQ(count("SELECT COUNT(*) FROM PresetRec"), rows);
    }
}

}  // namespace
}  // namespace tavlo::testing
