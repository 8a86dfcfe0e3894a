// The pool window's list, details and operations: delete with its cascade,
// duplicate, rename and edit, and the one rule for every name that comes in.
#include <functional>

#include "PoolFixture.h"
#include "base/MSBModule.h"
#include "pool/EditorStoreQuestions.h"
#include "pool/PoolOperations.h"
#include "pool/PresetSysexImport.h"
#include "preset/PristinePreset.h"

namespace tavlo::testing {
namespace {

class Pool : public PoolFixture {
protected:
    std::vector<std::string> lines() {
        std::vector<std::string> out;
        for (const auto& line : s.poolForm.PoolList.lines()) out.push_back(line.text);
        return out;
    }
    void associate(std::int64_t id, const std::string& make, const std::string& model) {
        db().prepare("INSERT INTO MakeModelAssocRec (PresetREF, Make, Model) VALUES (:ID, :Make, :Model)")
            .bind(":ID", id).bind(":Make", make).bind(":Model", model).run();
    }
};

TEST_F(Pool, BothOrders) {
    const std::int64_t b = storeNew("bravo");
    const std::int64_t a = storeNew("Alpha");
    storeNew("Ch'arlie");
    associate(b, "Roland", "JV-1080");
    associate(a, "Roland", "JV-1080");
    associate(a, "Korg", "M1");
    select(a);
    EXPECT_EQ(lines(), (std::vector<std::string>{"--Initialized--", "Alpha", "bravo", "Ch'arlie"}));
    s.poolForm.OrderOption = PoolOrder::ByDevice;
    ReloadPoolList(s);
    const std::string pad(10, ' ');
    EXPECT_EQ(lines(), (std::vector<std::string>{"> UNASSOCIATED ", pad + "--Initialized--", pad + "Ch'arlie",
                                                 "> Korg M1", pad + "Alpha", "> Roland JV-1080", pad + "Alpha",
                                                 pad + "bravo"}));
    EXPECT_TRUE(IsPoolHeaderLine(s, 0));
    EXPECT_FALSE(IsPoolHeaderLine(s, 1));
    EXPECT_EQ(s.poolForm.PoolList.itemData(4), a);
    // A reload keeps the selected preset.
    storeNew("Aardvark");
    const ListState& list = s.poolForm.PoolList;
    ASSERT_GE(list.listIndex(), 0);
    EXPECT_EQ(list.itemData(list.listIndex()), a);
}

TEST_F(Pool, DetailsOfTheSelectedPreset) {
    const std::int64_t id = storeNew("Detailed", 3);
    run("UPDATE PresetRec SET Notes = 'It' || char(732) || 's fine', CreatedDate = '2019-07-04 10:00:00', "
        "UpdatedDate = '2020-12-31 23:59:00' WHERE ID = :ID", id);
    run("UPDATE FaderRec SET Function = 1, Name = 'Vol' WHERE PresetREF = :ID AND \"Index\" = 0", id);
    run("UPDATE SceneRec SET Name = 'Zulu' WHERE PresetREF = :ID AND Name = 'Scene 1'", id);
    associate(id, "Korg", "M1");
    db().exec("INSERT INTO MemoryImageRec (ImageName, CreatedDate, EditedDate) VALUES ('Gig', '', '')");
    run("INSERT INTO MemoryImage2PresetMapRec (MemoryImageREF, PresetREF, \"Index\") "
        "VALUES ((SELECT ID FROM MemoryImageRec WHERE ImageName = 'Gig'), :ID, 4)", id);
    select(id);
    const PoolFormState& f = s.poolForm;
    EXPECT_EQ(f.NotesText, "It's fine");
    EXPECT_EQ(f.CreatedDateText + " " + f.UpdatedDateText, "07/04/2019 12/31/2020");
    EXPECT_EQ(f.MemLabel, "Memory Used: 8");
    ASSERT_EQ(f.SceneList.listCount(), 3);
    EXPECT_EQ(f.SceneList.list(0) + "," + f.SceneList.list(2), "Scene 2,Zulu");  // by name
    ASSERT_EQ(f.AssociatedDeviceList.listCount() + f.MIsUsingList.listCount(), 2);
    EXPECT_EQ(f.AssociatedDeviceList.list(0) + "," + f.MIsUsingList.list(0), "Korg:M1,Gig");
    select(s.pool.InitializedPresetID());
    EXPECT_EQ(s.poolForm.MemLabel, "Fixed System Preset");
    EXPECT_EQ(s.poolForm.MIsUsingList.listCount(), 50);
}

TEST_F(Pool, DeleteAsksThenCascades) {
    const std::int64_t victim = storeNew("Victim", 2);
    const std::int64_t user = storeNew("User");
    sendScene(user, 5, "Scene 1", victim);
    setupScene(user, "Scene 2", victim);
    run("INSERT INTO MessageStringRec (MapType, MapREF, \"Index\") SELECT 'F', ID, 0 FROM FaderRec "
        "WHERE PresetREF = :ID UNION ALL SELECT 'P', :ID, 0",
        victim);
    associate(victim, "Korg", "M1");
    run("UPDATE MemoryImage2PresetMapRec SET PresetREF = :ID WHERE \"Index\" = 3", victim);
    for (int slot = 0; slot < 50; ++slot) s.memImage.PresetList.addItem(TwoDigits(slot) + ":  x", slot == 9 ? victim : 1);

    select(victim);
    prompter.expectMessage("About to Delete Preset",
                           "This will delete the Preset 'Victim' and all attached Scenes and MIDI Messages.  All "
                           "Memory Images which reference this Preset will now point to the '--Initialized--' "
                           "Preset.  Are you sure?",
                           MessageAnswer::No)
        .expectMessage("About to Delete Preset", MessageAnswer::Yes);
    DeleteButton(s);
    EXPECT_EQ(idOf("Victim"), victim);
    DeleteButton(s);
    for (const char* table : {"FaderRec", "ButtonRec", "SceneRec", "MakeModelAssocRec"})
        EXPECT_EQ(intOf(std::string("SELECT COUNT(*) FROM ") + table + " WHERE PresetREF = :ID", victim), 0) << table;
    EXPECT_EQ(idOf("Victim"), -1);
    EXPECT_EQ(count("SELECT COUNT(*) FROM MessageStringRec"), 0);
    EXPECT_EQ(textOf("SELECT Function || '|' || ScenePreset FROM ButtonRec WHERE PresetREF = :ID AND \"Index\" = 5", user), "0|-1");
    EXPECT_EQ(textOf("SELECT SetupScene FROM PresetRec WHERE ID = :ID", user), "<none>");
    EXPECT_EQ(intOf("SELECT PresetREF FROM MemoryImage2PresetMapRec WHERE \"Index\" = :ID", 3), s.pool.InitializedPresetID());
    EXPECT_EQ(s.memImage.PresetList.list(9), "09:  --Initialized--");
    EXPECT_EQ(s.poolForm.PoolList.findText("Victim"), -1);
}

TEST_F(Pool, InitializedCannotBeDeletedOrRenamed) {
    select(s.pool.InitializedPresetID());
    prompter.expectMessage("Cannot Delete", "You cannot delete the --Initialized-- Preset.  It is kept for system use.",
                           MessageAnswer::OK)
        .expectMessage("Cannot Update --Initialized-- Preset", MessageAnswer::OK);
    DeleteButton(s);
    RenameButton(s);
    EXPECT_TRUE(prompter.done());
    EXPECT_GT(s.pool.InitializedPresetID(), 0);
}

// One rule for every way a name comes in: filtered, trimmed, at most 16
// characters after filtering, never a name the system keeps, and unique in
// any letter case. A rename keeps the references, which use the ID.
TEST_F(Pool, EveryWayInFollowsTheNameRule) {
    enum Way { Rename, Duplicate, Store };
    const std::int64_t source = storeNew("Source", 1);
    const std::int64_t user = storeNew("User");
    sendScene(user, 0, "Scene 1", source);
    storeNew("Caf");
    const char* const tooLong = "A Preset's Name can only be a maximum of 16 characters long";
    const struct {
        Way way;
        std::optional<std::string> typed;
        const char* refusal;  // its title, or nullptr
        const char* text;     // its text, where checked
        std::string stored;   // the source's new name, or the new row's; "" for none
    } cases[] = {
        {Rename, std::nullopt, nullptr, nullptr, ""},
        {Rename, "   ", nullptr, nullptr, ""},
        {Rename, "Seventeen chars!!", "Cannot Rename Preset", tooLong, ""},
        {Rename, "user", "Cannot Rename", "That name 'user' is already in use in the database.", ""},
        {Rename, "  Café  ", "Cannot Rename", nullptr, ""},  // "Caf" once filtered
        {Rename, ">>>temp>>>", "Cannot Rename Preset", nullptr, ""},
        {Rename, "--Initialized--", "Cannot Rename Preset", nullptr, ""},
        {Rename, "\xE9\xE9", "Cannot Rename Preset", nullptr, ""},
        {Rename, "SOURCE", nullptr, nullptr, "SOURCE"},
        {Rename, "Jo's | \"Mark\"", nullptr, nullptr, "Jo\x98s \x96 Mark"},
        {Rename, "Sixteen Letters!\xE9", nullptr, nullptr, "Sixteen Letters!"},
        {Duplicate, std::nullopt, nullptr, nullptr, ""},
        {Duplicate, "Source Copy Long!", "Cannot Duplicate Preset", tooLong, ""},
        {Duplicate, "sixteen letters!", "Cannot Duplicate", "That name is already taken.  Please enter another.", ""},
        {Duplicate, "Café", "Cannot Duplicate", nullptr, ""},
        {Duplicate, "--INITIALIZED--", "Cannot Duplicate Preset", nullptr, ""},
        {Duplicate, "Sixteen Copies!!\xE9", nullptr, nullptr, "Sixteen Copies!!"},
        {Store, "Twenty Four Characters!!", "Cannot Store Preset", nullptr, ""},
        {Store, ">>>TEMP>>>", "Cannot Store Preset", nullptr, ""},
    };
    const ListState& list = s.poolForm.PoolList;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.typed.value_or("<cancel>"));
        select(source);
        const std::string shown = list.list(list.listIndex());
        const std::string before = textOf("SELECT Name FROM PresetRec WHERE ID = :ID", source);
        const std::int64_t presets = rows("PresetRec");
        const std::size_t asked = prompter.seen().size();
        if (c.way != Store) prompter.expectInput(c.way == Rename ? "Rename Preset" : "Duplicate Preset", c.typed);
        if (c.refusal && c.text) prompter.expectMessage(c.refusal, c.text, MessageAnswer::OK);
        else if (c.refusal) prompter.expectMessage(c.refusal);
        if (c.way == Rename) RenameButton(s);
        if (c.way == Duplicate) DuplicateButton(s);
        if (c.way == Store) storeNew(*c.typed);
        EXPECT_TRUE(prompter.done());
        if (c.way == Rename) {
            EXPECT_EQ(prompter.seen().at(asked).text, "Enter the new name for the Preset '" + shown + "' (leave blank to cancel).");
            EXPECT_EQ(textOf("SELECT Name FROM PresetRec WHERE ID = :ID", source), c.stored.empty() ? before : c.stored);
            EXPECT_EQ(list.itemData(list.listIndex()), source) << "the renamed preset stays selected";
            continue;
        }
        if (c.way == Duplicate) {
            EXPECT_EQ(prompter.seen().at(asked).text, "Enter the Name of the new Preset copy.");
        }
        EXPECT_EQ(rows("PresetRec"), presets + (c.stored.empty() ? 0 : 1));
        EXPECT_EQ(idOf(c.stored) > 0, !c.stored.empty());
    }
    EXPECT_EQ(intOf("SELECT ScenePreset FROM ButtonRec WHERE PresetREF = :ID AND \"Index\" = 0", user), source);
}

// The copy gets every companion row, and owns its scenes: its references to
// the source's own scenes point at the copy.
TEST_F(Pool, ADuplicateCopiesEveryCompanionRowAndOwnsItsScenes) {
    newPreset("Source", 4);
    s.editor.preset.FaderStrings[2].Count = 2;
    s.editor.preset.ButtonStrings2[1].Count = 1;
    s.editor.preset.SetupStrings.Count = 3;
    s.editor.AssociatedList.addItem("Korg: M1");
    StoreInPoolButton(s);
    const std::int64_t source = s.editor.preset.ID;
    sendScene(source, 4, "Scene 2", source);
    setupScene(source, "Scene 1", source);
    select(source);
    prompter.expectInput("Duplicate Preset", std::string("Copy"));
    DuplicateButton(s);
    const std::int64_t copy = idOf("Copy");
    ASSERT_GT(copy, 0);
    for (const char* table : {"FaderRec", "ButtonRec", "SceneRec", "MakeModelAssocRec"}) {
        const std::string companions = std::string("SELECT COUNT(*) FROM ") + table + " WHERE PresetREF = :ID";
        EXPECT_EQ(intOf(companions, copy), intOf(companions, source)) << table;
    }
    for (const auto& [type, n] : {std::pair{"F", 4}, std::pair{"B", 2}, std::pair{"P", 6}})
        EXPECT_EQ(count(std::string("SELECT COUNT(*) FROM MessageStringRec WHERE MapType = '") + type + "'"), n);
    const std::string sent = "SELECT ScenePreset FROM ButtonRec WHERE PresetREF = :ID AND \"Index\" = 4";
    EXPECT_EQ(intOf(sent, copy), copy);
    EXPECT_EQ(intOf(sent, source), source);
    EXPECT_EQ(intOf("SELECT SetupScenePreset FROM PresetRec WHERE ID = :ID", copy), copy);
    EXPECT_EQ(s.editor.preset.ID, copy);
    EXPECT_EQ(s.editor.preset.Buttons[4].ScenePreset, copy);
}

// Flows that replace the editor's preset offer its unsaved work first:
// Cancel leaves the editor and the pool as they were, Yes stores it.
TEST_F(Pool, ReplacingTheEditorsPresetOffersToStoreItsEdits) {
    select(storeNew("Listed"));
    const std::string path = exported("FromFile");
    db().exec("UPDATE PresetRec SET Name = 'Moved Aside' WHERE Name = 'FromFile'");
    const std::int64_t presets = rows("PresetRec");
    const std::function<bool()> flows[] = {
        [&] {
            DuplicateButton(s);
            return s.editor.preset.Notes != "edited";
        },
        [&] { return ImportPresetSysexFile(s, path); },
        [&] { return InitPresetButton(s); },
    };
    for (const MessageAnswer answer : {MessageAnswer::Cancel, MessageAnswer::Yes}) {
        for (int flow = 0; flow < 3; ++flow) {
            SCOPED_TRACE(flow);
            newPreset("Unsaved " + std::to_string(flow));
            UpdateINITData(s.editor);
            s.editor.preset.Notes = "edited";
            s.editor.Visible = s.editor.ProgramInit = true;
            if (flow == 0) prompter.expectInput("Duplicate Preset", "Copy " + std::to_string(int(answer)));
            prompter.expectMessage("Store Preset in Pool?", "Do you want to store this Preset in the Preset Pool?", answer);
            EXPECT_EQ(flows[flow](), answer == MessageAnswer::Yes);
            EXPECT_TRUE(prompter.done());
            if (answer == MessageAnswer::Cancel) {
                EXPECT_EQ(s.editor.preset.Notes, "edited");
                EXPECT_EQ(rows("PresetRec"), presets);
            } else EXPECT_EQ(textOf("SELECT Notes FROM PresetRec WHERE ID = :ID", idOf("Unsaved " + std::to_string(flow))), "edited");
        }
    }
}

TEST_F(Pool, EditLoadsUnboundUnlessBusy) {
    const std::int64_t id = storeNew("Editable", 1);
    InitializePreset(s);
    select(id);
    s.poolFlags.TransferBusy = true;
    prompter.expectMessage("Cannot Edit Preset",
                           "The PC1600(x) Edit Window is busy with another operation.  Please try again later.",
                           MessageAnswer::OK);
    EditButton(s);
    EXPECT_EQ(s.editor.preset.Name, "");
    s.poolFlags.TransferBusy = false;
    s.memImage.MemoryImageBound = true;
    EditButton(s);
    EXPECT_FALSE(s.memImage.MemoryImageBound);
    EXPECT_EQ(s.editor.preset.ID, id);
    EXPECT_EQ(s.editor.Caption, "Edit Preset from Pool");
    EXPECT_TRUE(s.editor.Visible);
    InitializePreset(s);
    select(s.pool.InitializedPresetID());
    EditButton(s);
    EXPECT_EQ(s.editor.preset.ID, 0) << "the system preset isn't edited";
}

}  // namespace
}  // namespace tavlo::testing
