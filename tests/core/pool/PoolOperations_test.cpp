// The pool window's list, details and operations: delete with its cascade,
// duplicate, rename and edit.
#include "PoolFixture.h"
#include "base/MSBModule.h"
#include "pool/PoolList.h"
#include "pool/PoolOperations.h"

namespace tavlo::testing {
namespace {

class Pool : public PoolFixture {
protected:
    std::vector<std::string> lines() {
        std::vector<std::string> out;
        for (const auto& line : s.poolForm.PoolList.lines()) out.push_back(line.text);
        return out;
    }
    void selectName(const std::string& name) {
        s.poolForm.OrderOption = PoolOrder::ByName;
        ReloadPoolList(s);
        const int line = s.poolForm.PoolList.findText(name);
        ASSERT_GE(line, 0) << name;
        SelectPoolLine(s, line);
    }
    void associate(std::int64_t id, const std::string& make, const std::string& model) {
        db().prepare("INSERT INTO MakeModelAssocRec (PresetREF, Make, Model) VALUES (:ID, :Make, :Model)")
            .bind(":ID", id)
            .bind(":Make", make)
            .bind(":Model", model)
            .run();
    }
};

TEST_F(Pool, BothOrders) {
    const std::int64_t b = storeNew("bravo");
    const std::int64_t a = storeNew("Alpha");
    storeNew("Ch'arlie");
    associate(b, "Roland", "JV-1080");
    associate(a, "Roland", "JV-1080");
    associate(a, "Korg", "M1");
    selectName("Alpha");
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
    selectName("Detailed");
    const PoolFormState& f = s.poolForm;
    EXPECT_EQ(f.NotesText, "It's fine");
    EXPECT_EQ(f.CreatedDateText + " " + f.UpdatedDateText, "07/04/2019 12/31/2020");
    EXPECT_EQ(f.MemLabel, "Memory Used: 8");
    ASSERT_EQ(f.SceneList.listCount(), 3);
    EXPECT_EQ(f.SceneList.list(0) + "," + f.SceneList.list(2), "Scene 2,Zulu");  // by name
    ASSERT_EQ(f.AssociatedDeviceList.listCount() + f.MIsUsingList.listCount(), 2);
    EXPECT_EQ(f.AssociatedDeviceList.list(0) + "," + f.MIsUsingList.list(0), "Korg:M1,Gig");
    selectName("--Initialized--");
    EXPECT_EQ(s.poolForm.MemLabel, "Fixed System Preset");
    EXPECT_EQ(s.poolForm.MIsUsingList.listCount(), 50);
}

TEST_F(Pool, DeleteAsksThenCascades) {
    const std::int64_t victim = storeNew("Victim", 2);
    const std::int64_t user = storeNew("User");
    sendScene(user, 5, "Scene 1", victim);
    db().prepare("UPDATE PresetRec SET SetupScene = 'Scene 2', SetupScenePreset = :V WHERE ID = :U")
        .bind(":V", victim)
        .bind(":U", user)
        .run();
    run("INSERT INTO MessageStringRec (MapType, MapREF, \"Index\") SELECT 'F', ID, 0 FROM FaderRec "
        "WHERE PresetREF = :ID UNION ALL SELECT 'P', :ID, 0",
        victim);
    associate(victim, "Korg", "M1");
    run("UPDATE MemoryImage2PresetMapRec SET PresetREF = :ID WHERE \"Index\" = 3", victim);
    for (int slot = 0; slot < 50; ++slot) s.memImage.PresetList.addItem(TwoDigits(slot) + ":  x", slot == 9 ? victim : 1);

    selectName("Victim");
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
    selectName("--Initialized--");
    prompter.expectMessage("Cannot Delete", "You cannot delete the --Initialized-- Preset.  It is kept for system use.",
                           MessageAnswer::OK)
        .expectMessage("Cannot Update --Initialized-- Preset", MessageAnswer::OK);
    DeleteButton(s);
    RenameButton(s);
    EXPECT_TRUE(prompter.done());
    EXPECT_GT(s.pool.InitializedPresetID(), 0);
}

TEST_F(Pool, RenameKeepsReferences) {
    const std::int64_t target = storeNew("Target", 1);
    const std::int64_t user = storeNew("User");
    sendScene(user, 0, "Scene 1", target);
    storeNew("Other");
    selectName("Target");
    const struct {
        std::optional<std::string> typed;
        const char* refusal;  // the refusal's text, or nullptr
        std::string nameAfter;
    } cases[] = {
        {std::nullopt, nullptr, "Target"},
        {std::string("   "), nullptr, "Target"},
        {std::string("Seventeen chars!!"), "A Preset's Name can only be a maximum of 16 characters long", "Target"},
        {std::string("other"), "That name 'other' is already in use in the database.", "Target"},
        {std::string("TARGET"), nullptr, "TARGET"},
        {std::string("Jo's | \"Mark\""), nullptr, "Jo\x98s \x96 Mark"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.typed.value_or("<cancel>"));
        const std::size_t asked = prompter.seen().size();
        const std::string shown = s.poolForm.PoolList.list(s.poolForm.PoolList.listIndex());
        prompter.expectInput("Rename Preset", c.typed);
        if (c.refusal) prompter.expectMessage(c.refusal[0] == 'A' ? "Cannot Rename Preset" : "Cannot Rename", c.refusal, MessageAnswer::OK);
        RenameButton(s);
        EXPECT_TRUE(prompter.done());
        EXPECT_EQ(prompter.seen().at(asked).text, "Enter the new name for the Preset '" + shown + "' (leave blank to cancel).");
        EXPECT_EQ(textOf("SELECT Name FROM PresetRec WHERE ID = :ID", target), c.nameAfter);
    }
    EXPECT_EQ(intOf("SELECT ScenePreset FROM ButtonRec WHERE PresetREF = :ID AND \"Index\" = 0", user), target);
    EXPECT_EQ(s.poolForm.PoolList.itemData(s.poolForm.PoolList.listIndex()), target);
}

TEST_F(Pool, DuplicateCopiesEveryCompanionRow) {
    newPreset("Source", 4);
    s.editor.preset.FaderStrings[2].Count = 2;
    s.editor.preset.ButtonStrings2[1].Count = 1;
    s.editor.preset.SetupStrings.Count = 3;
    s.editor.AssociatedList.addItem("Korg: M1");
    StoreInPoolButton(s);
    const std::int64_t source = s.editor.preset.ID;
    selectName("Source");
    prompter.expectInput("Duplicate Preset", std::string("Source Copy Long!"))
        .expectMessage("Cannot Duplicate Preset", "A Preset's Name can only be a maximum of 16 characters long",
                       MessageAnswer::OK)
        .expectInput("Duplicate Preset", std::string("source"))
        .expectMessage("Cannot Duplicate", "That name is already taken.  Please enter another.", MessageAnswer::OK)
        .expectInput("Duplicate Preset", std::nullopt)
        .expectInput("Duplicate Preset", std::string("Source 2"));
    for (int i = 0; i < 4; ++i) DuplicateButton(s);
    EXPECT_TRUE(prompter.done());
    EXPECT_EQ(prompter.seen()[0].text, "Enter the Name of the new Preset copy.");
    const std::int64_t copy = idOf("Source 2");
    ASSERT_GT(copy, 0);
    for (const char* table : {"FaderRec", "ButtonRec", "SceneRec", "MakeModelAssocRec"}) {
        const std::string rows = std::string("SELECT COUNT(*) FROM ") + table + " WHERE PresetREF = :ID";
        EXPECT_EQ(intOf(rows, copy), intOf(rows, source)) << table;
    }
    for (const auto& [type, rows] : {std::pair{"F", 4}, std::pair{"B", 2}, std::pair{"P", 6}})
        EXPECT_EQ(count(std::string("SELECT COUNT(*) FROM MessageStringRec WHERE MapType = '") + type + "'"), rows);
    EXPECT_EQ(s.editor.preset.ID, copy);
}

TEST_F(Pool, EditLoadsUnboundUnlessBusy) {
    const std::int64_t id = storeNew("Editable", 1);
    InitializePreset(s);
    selectName("Editable");
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
    selectName("--Initialized--");
    EditButton(s);
    EXPECT_EQ(s.editor.preset.ID, 0) << "the system preset isn't edited";
}

}  // namespace
}  // namespace tavlo::testing
