// Store and load of the editor's preset: every field there and back, and the
// refusals and questions of a store outside a download.
#include "PoolFixture.h"
#include "preset/PristinePreset.h"

namespace tavlo::testing {
namespace {

using Store = PoolFixture;

std::int16_t i16(int v) { return static_cast<std::int16_t>(v); }

void fill(MessageStringSet& set, int count, int seed) {
    for (int i = 0, n = seed; i < count; ++i, ++n)
        set.Slots[i] = {i16(n % 7), i16(n % 17), i16(n * 3), i16(-n), "Make" + std::to_string(n),
                        "Model" + std::to_string(n), "F0 " + std::to_string(10 + n) + " F7",
                        "Item " + std::to_string(n), i16(n % 2)};
    set.Count = i16(count);
}

// Every field of a preset set to something other than its default.
void fillEverything(EditorState& editor) {
    WorkingPreset& p = editor.preset;
    p.Name = "Round Trip";
    p.Notes = "Notes with 'quotes' and \"double\" | bars";
    for (int i = 0; i < kFaderCount; ++i) {
        std::string master(kFaderCount, ' ');
        master[i] = 'X';
        p.Faders[i] = {"F'" + std::to_string(i) + "\"|", i16(i + 3), i16(i % 4), i16(-i), i16(100 + i), i16(i % 17),
                       i16(i * 7), i16(i % 2 ? -1 : 0), i16(i % 3), "B0 07 pr", i16(i % 13), master,
                       "Dev:" + std::to_string(i)};
        fill(p.FaderStrings[i], i % 4, i);
    }
    for (int i = 0; i < kButtonCount; ++i) {
        p.Buttons[i] = {"B" + std::to_string(i), i16(i % 9), i16(i), i16(i + 1), i16(100 - i), i16(40 + i),
                        "90 3C 7F", "80 3C 00", kNoScene, -1, "Dev:B" + std::to_string(i)};
        fill(p.ButtonStrings1[i], i % 3, 50 + i);
        fill(p.ButtonStrings2[i], (i + 1) % 3, 80 + i);
    }
    p.DataWheelLink = 19;
    for (int c = 0; c < kSetupChannelCount; ++c) p.SetupChannels[c] = {i16(c), i16(c % 2), i16(129 - c), i16(c * 8)};
    p.SetupString = "C0 05";
    fill(p.SetupStrings, 5, 200);
    p.SceneCount = 3;
    for (int sc = 0; sc < 3; ++sc) {
        p.Scenes[sc].Name = "Sc'" + std::to_string(sc);
        for (int v = 0; v < kFaderCount; ++v) p.Scenes[sc].Values[v] = i16(sc * 40 + v * 2);
    }
    editor.AssociatedList.clear();
    editor.AssociatedList.addItem("Roland: JV-1080");
    editor.AssociatedList.addItem("Korg: M1");
}

TEST_F(Store, EveryFieldSurvivesStoreAndLoad) {
    newPreset("x");
    fillEverything(s.editor);
    WorkingPreset expected = s.editor.preset;
    StoreInPoolButton(s);
    EXPECT_TRUE(prompter.seen().empty()) << "a new name asks nothing";
    const std::int64_t id = s.editor.preset.ID;
    ASSERT_GT(id, 0);
    // Quotes and bars are stored in their own forms and shown back as typed.
    EXPECT_EQ(textOf("SELECT Notes FROM PresetRec WHERE ID = :ID", id),
              "Notes with \x98quotes\x98 and \x97" "double\x97 \x96 bars");

    InitializePreset(s);
    ASSERT_TRUE(LoadPC1600xFormFromPool(s, id));
    expected.ID = static_cast<std::int32_t>(id);
    EXPECT_EQ(expected, s.editor.preset);
    // What the window shows of it.
    EXPECT_EQ(s.editor.FaderLabel[1], "F'1\"|  (cc)");
    EXPECT_EQ(s.editor.PCButton[1], "B1 (mute)");
    EXPECT_EQ(s.editor.AssociatedList.list(0), "Korg: M1");
    ASSERT_EQ(s.editor.SelectSceneCombo.listCount(), 3);
    EXPECT_EQ(s.editor.SelectSceneCombo.list(2), "Sc'2");
    EXPECT_EQ(s.editor.SelectPresetSceneCombo.listCount(), 4);
    EXPECT_FALSE(INITDataChanged(s.editor)) << "right after a load nothing counts as an edit";
}

// A store over a preset of the same name asks first: closing the editor
// adds Cancel, which keeps the editor open; No keeps the pool's version. The
// name with an apostrophe is found again in its stored form.
TEST_F(Store, AStoreOverAnExistingNameAsksFirst) {
    struct Case {
        bool closing;
        MessageAnswer answer;
        const char* question;
        bool cancelClose, kept;
    };
    const Case cases[] = {
        {false, MessageAnswer::No, "Overwrite existing Preset 'Joe's Mix' in the Pool?", false, true},
        {false, MessageAnswer::Yes, "Overwrite existing Preset 'Joe's Mix' in the Pool?", false, false},
        {true, MessageAnswer::Yes, "Store Preset 'Joe's Mix' in the Pool?", false, false},
        {true, MessageAnswer::No, "Store Preset 'Joe's Mix' in the Pool?", false, true},
        {true, MessageAnswer::Cancel, "Store Preset 'Joe's Mix' in the Pool?", true, false},
    };
    const std::int64_t id = storeNew("Joe's Mix", 2);
    db().prepare("UPDATE PresetRec SET CreatedDate = '2001-02-03 04:05:06' WHERE ID = :ID").bind(":ID", id).run();
    int n = 0;
    for (const Case& c : cases) {
        SCOPED_TRACE(n);
        newPreset("Joe's Mix", 5);
        const std::string mark = "edit " + std::to_string(n++);
        s.editor.preset.Faders[3].Name = mark;
        s.editor.ClosingEditor = c.closing;
        s.editor.CancelClose = false;
        prompter.expectMessage("About to Store", c.question, c.answer);
        StoreInPoolButton(s);
        EXPECT_EQ(s.editor.CancelClose, c.cancelClose);
        EXPECT_EQ(s.editor.PresetKeptInPool, c.kept);
        EXPECT_EQ(s.editor.preset.Faders[3].Name, mark) << "outside a download the editor keeps its preset";
        if (c.kept || c.cancelClose) continue;
        // Overwritten: the ID and the created date stay, the companion rows are new.
        EXPECT_EQ(s.editor.preset.ID, id);
        EXPECT_EQ(textOf("SELECT Name FROM FaderRec WHERE PresetREF = :ID AND \"Index\" = 3", id), mark);
        EXPECT_EQ(intOf("SELECT COUNT(*) FROM SceneRec WHERE PresetREF = :ID", id), 5);
        EXPECT_EQ(textOf("SELECT CreatedDate FROM PresetRec WHERE ID = :ID", id), "2001-02-03 04:05:06");
        EXPECT_NE(textOf("SELECT UpdatedDate FROM PresetRec WHERE ID = :ID", id), "2001-02-03 04:05:06");
    }
    EXPECT_EQ(count("SELECT COUNT(*) FROM FaderRec"), 2 * kFaderCount);
}

// The system's preset is refused to the editor and passed over in a download,
// whatever the letter case of its name.
TEST_F(Store, InitializedPresetIsRefusedAndSkippedInADownload) {
    prompter.expectMessage(
        "Cannot Update --Initialized-- Preset",
        "You cannot change the --Initialized-- Preset in the Pool.  It is kept for System functionality.",
        MessageAnswer::OK);
    for (const char* name : {"--initialized--", "--INITIALIZED--"}) {
        newPreset(name);
        s.editor.preset.Faders[0].Name = "changed";
        StoreInPoolButton(s);
        s.poolFlags.DownloadInProgress = true;
    }
    EXPECT_TRUE(prompter.done());
    EXPECT_EQ(rows("PresetRec"), 1);
    EXPECT_EQ(count("SELECT COUNT(*) FROM FaderRec WHERE Name = 'changed'"), 0);
}

TEST_F(Store, SendSceneButtonWithoutSceneIsRefused) {
    const struct {
        std::string scene;
        std::int32_t owner;
        bool refused;
    } cases[] = {{"<none>", 5, true}, {"", 5, true}, {"A", 0, true}, {"A", -1, false}, {"A", 7, false}};
    int n = 0;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.scene + " " + std::to_string(c.owner));
        newPreset("Send " + std::to_string(n++));
        s.editor.preset.Buttons[4] = ButtonDef{"Go", 9, 16, 0, 127, 60, "", "", c.scene, c.owner, ""};
        if (c.refused)
            prompter.expectMessage("Cannot Store in Pool",
                                   "This Preset has Buttons set to SEND SCENE but no Scene was selected.  Either "
                                   "select a Scene to send for those buttons or change those Buttons to another "
                                   "function.",
                                   MessageAnswer::OK);
        StoreInPoolButton(s);
        EXPECT_EQ(idOf(s.editor.preset.Name) > 0, !c.refused);
    }
    EXPECT_TRUE(prompter.done());
}

TEST_F(Store, BlankNameOutsideADownload) {
    newPreset("   ");
    prompter.expectMessage("Cannot Store Preset", "You must name the Preset before storing it in the Pool.",
                           MessageAnswer::OK);
    StoreInPoolButton(s);
    EXPECT_TRUE(s.editor.CancelClose && s.poolFlags.StoreAborted && s.editor.FocusPresetNameText);
    // Closing the editor: OK closes it unstored, Cancel keeps it open.
    for (MessageAnswer answer : {MessageAnswer::OK, MessageAnswer::Cancel}) {
        s.editor.CancelClose = false;
        s.editor.ClosingEditor = true;
        prompter.expectMessage("Preset Name is Blank",
                               "The current Preset Name is blank, so it cannot be stored.  Do you want to close the "
                               "Preset Editor Window without Storing the Preset to the Pool?",
                               answer);
        StoreInPoolButton(s);
        EXPECT_EQ(s.editor.CancelClose, answer == MessageAnswer::Cancel);
    }
    EXPECT_EQ(count("SELECT COUNT(*) FROM PresetRec"), 1);
}

TEST_F(Store, BlankNameInADownloadIsAskedUntilAcceptable) {
    storeNew("Taken");
    s.poolFlags.DownloadInProgress = true;
    newPreset("");
    for (const char* typed : {"   ", "--Mine", "taken", ">>>TEMP>>>", "A Name Far Too Long For It", " Fresh "})
        prompter.expectInput("Enter New Preset Name", std::string(typed));
    StoreInPoolButton(s);
    const auto& seen = prompter.seen();
    ASSERT_EQ(seen.size(), 6u);
    EXPECT_EQ(seen[1].text,
              "The Preset being loaded has a BLANK Name, which violates the Preset Naming rules of the Tavlo Database.  "
              "Please enter a new name for this Preset.");
    EXPECT_EQ(seen[2].text, "The new name for this Preset cannot start with '--'.  Please enter a different new name.");
    EXPECT_EQ(seen[3].text, "The name 'taken' already exists in your Preset Pool.  Please enter another name.");
    EXPECT_GT(idOf("Fresh"), 0);
    EXPECT_EQ(rows("PresetRec"), 3);
    EXPECT_EQ(s.editor.LastEnteredBlankName, "") << "kept only when duplicate names were accepted";
}

// With duplicate names accepted, the name given to the first blank one is
// taken for the next: one row, and the editor holds the pool's version.
TEST_F(Store, TwoBlankNamesWithDuplicatesAcceptedGiveOneRow) {
    s.poolFlags.DownloadInProgress = s.poolFlags.DuplicateNamesAccepted = true;
    prompter.expectInput("Enter New Preset Name", std::string("Blank One"));
    for (const char* fader : {"first", "second"}) {
        newPreset("");
        s.editor.preset.Faders[0].Name = fader;
        StoreInPoolButton(s);
    }
    EXPECT_EQ(prompter.seen().size(), 1u);
    EXPECT_EQ(count("SELECT COUNT(*) FROM PresetRec WHERE Name = 'Blank One'"), 1);
    EXPECT_TRUE(s.poolFlags.ChoiceForAll && s.editor.PresetKeptInPool);
    EXPECT_EQ(s.editor.preset.Faders[0].Name, "first");
}

TEST_F(Store, SetupSceneRules) {
    const std::int64_t other = storeNew("Other", 2);
    // A new preset's own ID is the one the editor held before the store: 0.
    const struct {
        const char* what;
        std::string comboLine;
        bool bound, bulk;
        std::string expectScene;
        std::int64_t expectPreset;
    } cases[] = {
        {"none", "<none>", false, false, "<none>", -1},
        {"own scene", "Mine", false, false, "Mine", 0},
        {"scene of another preset", "Scene 1  - from Other", false, false, "Scene 1", other},
        {"memory image bound", "Mine", true, false, "Scene 2", other},
        {"bulk import", "Mine", false, true, "Scene 2", other},
    };
    int n = 0;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        newPreset("Setup " + std::to_string(n++));
        ListState& combo = s.editor.SelectPresetSceneCombo;
        combo.addItem(c.comboLine, other);
        combo.setListIndex(c.comboLine == "<none>" ? 0 : 1);
        s.editor.preset.SetupScene = c.comboLine == "Scene 1  - from Other" ? "Scene 1" : "Scene 2";
        s.editor.preset.SetupScenePreset = static_cast<std::int32_t>(other);
        s.memImage.MemoryImageBound = c.bound;
        s.poolFlags.BulkImportActive = c.bulk;
        StoreInPoolButton(s);
        const std::int64_t id = s.editor.preset.ID;
        EXPECT_EQ(textOf("SELECT SetupScene FROM PresetRec WHERE ID = :ID", id), c.expectScene);
        EXPECT_EQ(intOf("SELECT SetupScenePreset FROM PresetRec WHERE ID = :ID", id), c.expectPreset);
        s.memImage.MemoryImageBound = false;
        s.poolFlags.BulkImportActive = false;
    }
}

TEST_F(Store, BoundToTheMemoryImageTheSlotLineFollows) {
    for (int slot = 0; slot < 50; ++slot) s.memImage.PresetList.addItem("x", 1);
    s.memImage.MemoryImageBound = true;
    s.memImage.MemoryImageSlot = 7;
    const std::int64_t id = storeNew("Slotted");
    EXPECT_EQ(s.memImage.PresetList.list(7), "07:  Slotted");
    EXPECT_EQ(s.memImage.PresetList.itemData(7), id);
    EXPECT_TRUE(s.memImage.ImageChanged);
}

TEST_F(Store, WhatFollowsAStore) {
    struct Case {
        const char* what;
        bool imageLoad, importingText, imageOpen;
        std::string expected;  // R rescan, F fill scenes, C calculate, P pool list
    };
    const Case cases[] = {
        {"plain store, image window closed", false, false, false, "FCP"},
        {"plain store, image window open", false, false, true, "RFCP"},
        {"during a dump parse", true, false, true, ""},
        {"during a preset text import", false, true, true, "R"},
    };
    int n = 0;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        std::string calls;
        s.memImage.followUps.MemImageFormOpen = [&] { return c.imageOpen; };
        s.memImage.followUps.RescanDependencies = [&] { calls += "R"; };
        s.memImage.followUps.FillSceneList = [&] { calls += "F"; };
        s.memImage.followUps.CalculateMemoryImageSize = [&] { return calls += "C", 1234L; };
        s.poolForm.PoolList.clear();
        s.memImage.FreeMemLabel.clear();
        s.memImage.ImageLoadRunning = c.imageLoad;
        s.editor.ImportingPresetText = c.importingText;
        newPreset("Follow " + std::to_string(n++), 2);
        StoreInPoolButton(s);
        const bool reloaded = s.poolForm.PoolList.listCount() > 0;
        EXPECT_EQ(calls + (reloaded ? "P" : ""), c.expected);
        EXPECT_EQ(s.memImage.FreeMemLabel, c.expected.find('C') != std::string::npos ? "Free Memory: 1234" : "");
        // A preset text file brings its scenes later: none are written now.
        EXPECT_EQ(intOf("SELECT COUNT(*) FROM SceneRec WHERE PresetREF = :ID", s.editor.preset.ID),
                  c.importingText ? 0 : 2);
    }
}

TEST_F(Store, LoadOfAMissingRowWritesNothing) {
    prompter.expectMessage("Database Error", "There has been a Database Error", MessageAnswer::OK);
    EXPECT_FALSE(LoadPC1600xFormFromPool(s, 4242));
    EXPECT_TRUE(s.poolFlags.FatalDatabaseError);
    EXPECT_EQ(count("SELECT COUNT(*) FROM PresetRec"), 1);
}

// The PC1600 has no send fader, send scene, setup scene or MSB banks: a load
// drops them with a word to the user, and the pool keeps its version.
TEST_F(Store, LoadOnThePC1600ModelDropsWhatItCannotDo) {
    const std::int64_t other = storeNew("Scenes", 1);
    newPreset("X Only");
    WorkingPreset& p = s.editor.preset;
    p.Buttons[2].Function = 8;
    p.Buttons[5] = ButtonDef{"Go", 9, 16, 0, 127, 60, "", "", "Scene 1", static_cast<std::int32_t>(other), ""};
    p.SetupChannels[0].BankIsMSB = 1;
    pickSetupScene(other, "Scenes", "Scene 1");
    StoreInPoolButton(s);
    const std::int64_t id = p.ID;

    s.midi.PC1600Model = true;
    prompter.expectMessage("Incompatibility to PC1600", MessageAnswer::OK)
        .expectMessage("PC1600 Incompatibility", MessageAnswer::OK);
    ASSERT_TRUE(LoadPC1600xFormFromPool(s, id));
    EXPECT_TRUE(prompter.done());
    EXPECT_EQ(p.SetupScene + "|" + std::to_string(p.SetupScenePreset), "<none>|-1");
    EXPECT_EQ(p.Buttons[2].Function + p.Buttons[5].Function + p.SetupChannels[0].BankIsMSB, 0);
    EXPECT_EQ(intOf("SELECT Function FROM ButtonRec WHERE PresetREF = :ID AND \"Index\" = 5", id), 9);

    s.midi.PC1600Model = false;
    ASSERT_TRUE(LoadPC1600xFormFromPool(s, id));
    EXPECT_EQ(s.editor.SelectPresetSceneCombo.text(), "Scene 1  - from Scenes");
    EXPECT_GE(s.editor.BSceneCombo.findText("Scene 1  - from Scenes"), 0);
}

}  // namespace
}  // namespace tavlo::testing
