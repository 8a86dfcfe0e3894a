// Store and load of the editor's preset: every field there and back, and the
// refusals and questions of a store outside a download.
#include "PoolFixture.h"
#include "base/MSBModule.h"
#include "pool/EditorStoreQuestions.h"
#include "preset/PristinePreset.h"
#include "base/MSBModule.h"
#include "editor/EditorState.h"
#include "midilink/MidiConfig.h"
#include "memimage/MemImageState.h"
#include "pool/PoolFormState.h"
#include "pool/PoolFlags.h"

namespace tavlo::testing {
namespace {

using Store = PoolFixture;

MessageSubstring substring(int n) {
    MessageSubstring s;
    s.CommandType = static_cast<std::int16_t>(n % 7);
    s.CommandChannel = static_cast<std::int16_t>(n % 17);
    s.Value1 = static_cast<std::int16_t>(n * 3);
    s.Value2 = static_cast<std::int16_t>(-n);
    s.SysexMake = "Make" + std::to_string(n);
    s.SysexModel = "Model" + std::to_string(n);
    s.EnteredString = "F0 " + std::to_string(10 + n) + " F7";
    s.ListItem = "Item " + std::to_string(n);
    s.OwnCheck = static_cast<std::int16_t>(n % 2);
    return s;
}

void fill(MessageStringSet& set, int count, int seed) {
    for (int i = 0; i < count; ++i) set.Slots[i] = substring(seed + i);
    set.Count = static_cast<std::int16_t>(count);
}

// Every field of a preset set to something other than its default.
void fillEverything(EditorState& editor) {
    WorkingPreset& p = editor.preset;
    p.Name = "Round Trip";
    p.Notes = "Notes with 'quotes' and \"double\" | bars";
    for (int i = 0; i < kFaderCount; ++i) {
        FaderDef& f = p.Faders[i];
        f.Name = "F'" + std::to_string(i) + "\"|";
        f.Value = static_cast<std::int16_t>(i + 3);
        f.Function = static_cast<std::int16_t>(i % 4);
        f.Min = static_cast<std::int16_t>(-i);
        f.Max = static_cast<std::int16_t>(100 + i);
        f.Channel = static_cast<std::int16_t>(i % 17);
        f.CCNum = static_cast<std::int16_t>(i * 7);
        f.Polarity = static_cast<std::int16_t>(i % 2 ? -1 : 0);
        f.ReplaceMode = static_cast<std::int16_t>(i % 3);
        f.MIDIString = "B0 07 pr";
        f.ParamFormat = static_cast<std::int16_t>(i % 13);
        f.MasterOf = std::string(kFaderCount, ' ');
        f.MasterOf[i] = 'X';
        f.DeviceMapString = "Dev:" + std::to_string(i);
        fill(p.FaderStrings[i], i % 4, i);
    }
    for (int i = 0; i < kButtonCount; ++i) {
        ButtonDef& b = p.Buttons[i];
        b.Name = "B" + std::to_string(i);
        b.Function = static_cast<std::int16_t>(i % 9);
        b.Channel = static_cast<std::int16_t>(i);
        b.ProgChange = static_cast<std::int16_t>(i + 1);
        b.Velocity = static_cast<std::int16_t>(100 - i);
        b.Note = static_cast<std::int16_t>(40 + i);
        b.String1 = "90 3C 7F";
        b.String2 = "80 3C 00";
        b.DeviceMapString = "Dev:B" + std::to_string(i);
        fill(p.ButtonStrings1[i], i % 3, 50 + i);
        fill(p.ButtonStrings2[i], (i + 1) % 3, 80 + i);
    }
    p.DataWheelLink = 19;
    for (int c = 0; c < kSetupChannelCount; ++c)
        p.SetupChannels[c] = {static_cast<std::int16_t>(c), static_cast<std::int16_t>(c % 2),
                              static_cast<std::int16_t>(129 - c), static_cast<std::int16_t>(c * 8)};
    p.SetupString = "C0 05";
    fill(p.SetupStrings, 5, 200);
    p.SceneCount = 3;
    for (int sc = 0; sc < 3; ++sc) {
        p.Scenes[sc].Name = "Sc'" + std::to_string(sc);
        for (int v = 0; v < kFaderCount; ++v) p.Scenes[sc].Values[v] = static_cast<std::int16_t>(sc * 40 + v * 2);
    }
    editor.AssociatedList.clear();
    editor.AssociatedList.addItem("Roland: JV-1080");
    editor.AssociatedList.addItem("Korg: M1");
}

TEST_F(Store, EveryFieldSurvivesStoreAndLoad) {
    newPreset("x");
    fillEverything(s.editor);
    const WorkingPreset before = s.editor.preset;
    StoreInPoolButton(s);
    EXPECT_TRUE(prompter.seen().empty()) << "a new name asks nothing";
    const std::int64_t id = s.editor.preset.ID;
    ASSERT_GT(id, 0);

    InitializePreset(s);
    ASSERT_TRUE(LoadPC1600xFormFromPool(s, id));
    WorkingPreset expected = before;
    expected.ID = static_cast<std::int32_t>(id);
    EXPECT_EQ(expected, s.editor.preset);

    // What the window shows of it.
    EXPECT_EQ(s.editor.FaderLabel[1], "F'1\"|  (cc)");
    EXPECT_EQ(s.editor.FaderLabel[0], "F'0\"|");
    EXPECT_EQ(s.editor.PCButton[1], "B1 (mute)");
    EXPECT_EQ(s.editor.PCButton[3], "B3");
    EXPECT_EQ(s.editor.AssociatedList.list(0), "Korg: M1");
    EXPECT_EQ(s.editor.AssociatedList.list(1), "Roland: JV-1080");
    ASSERT_EQ(s.editor.SelectSceneCombo.listCount(), 3);
    EXPECT_EQ(s.editor.SelectSceneCombo.list(2), "Sc'2");
    EXPECT_EQ(s.editor.SelectPresetSceneCombo.list(0), "<none>");
    EXPECT_EQ(s.editor.SelectPresetSceneCombo.listCount(), 4);
    EXPECT_EQ(s.editor.CurrentFader, 0);
    EXPECT_FALSE(INITDataChanged(s.editor)) << "right after a load nothing counts as an edit";
}

TEST_F(Store, NamesAreStoredThroughTheNameEncoding) {
    struct Case {
        std::string typed;
        std::string stored;
        std::string loaded;
    };
    const Case cases[] = {
        {"It's \"Q\"|x", "It\x98s \x97Q\x97\x96x", "It's \"Q\"|x"},
        {"'); DROP", "\x98); DROP", "'); DROP"},
        {"Caf\xE9 Bar", "Caf  Bar", "Caf  Bar"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.typed);
        newPreset("Names");
        s.editor.preset.Faders[0].Name = c.typed;
        s.editor.preset.Buttons[0].Name = c.typed;
        s.editor.preset.Notes = c.typed;
        s.editor.preset.Name = "N" + std::to_string(&c - cases);
        StoreInPoolButton(s);
        const std::int64_t id = s.editor.preset.ID;
        EXPECT_EQ(textOf("SELECT Name FROM FaderRec WHERE PresetREF = :ID AND \"Index\" = 0", id), c.stored);
        EXPECT_EQ(textOf("SELECT Notes FROM PresetRec WHERE ID = :ID", id), c.stored);
        ASSERT_TRUE(LoadPC1600xFormFromPool(s, id));
        EXPECT_EQ(s.editor.preset.Faders[0].Name, c.loaded);
        EXPECT_EQ(s.editor.preset.Buttons[0].Name, c.loaded);
        EXPECT_EQ(s.editor.preset.Notes, c.loaded);
    }
    EXPECT_EQ(count("SELECT COUNT(*) FROM PresetRec"), 4);
}

TEST_F(Store, PresetNameWithApostropheIsFoundAgainOnOverwrite) {
    const std::int64_t id = storeNew("Joe's \"Mix\"");
    // The double quote is no name character and goes; the apostrophe stays.
    EXPECT_EQ(s.editor.preset.Name, "Joe's Mix");
    EXPECT_EQ(idOf("Joe\x98s Mix"), id);
    prompter.expectMessage("About to Store", "Overwrite existing Preset 'Joe's Mix' in the Pool?",
                           MessageAnswer::Yes);
    newPreset("Joe's \"Mix\"");
    StoreInPoolButton(s);
    EXPECT_EQ(s.editor.preset.ID, id);
    EXPECT_TRUE(prompter.done());
    EXPECT_EQ(count("SELECT COUNT(*) FROM PresetRec"), 2);
}

TEST_F(Store, InitializedPresetIsRefusedAndSkippedInADownload) {
    const std::int64_t before = count("SELECT COUNT(*) FROM FaderRec");
    prompter.expectMessage(
        "Cannot Update --Initialized-- Preset",
        "You cannot change the --Initialized-- Preset in the Pool.  It is kept for System functionality.",
        MessageAnswer::OK);
    newPreset("--Initialized--");
    StoreInPoolButton(s);
    s.poolFlags.DownloadInProgress = true;
    StoreInPoolButton(s);
    EXPECT_EQ(prompter.seen().size(), 1u);
    EXPECT_EQ(count("SELECT COUNT(*) FROM FaderRec"), before);
}

TEST_F(Store, SendSceneButtonWithoutSceneIsRefused) {
    struct Case {
        std::string scene;
        std::int32_t scenePreset;
        bool refused;
    };
    const Case cases[] = {{"<none>", 5, true}, {"", 5, true}, {"A", 0, true}, {"A", -1, false}, {"A", 7, false}};
    int n = 0;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.scene + " " + std::to_string(c.scenePreset));
        newPreset("Send " + std::to_string(n++));
        s.editor.preset.Buttons[4].Function = 9;
        s.editor.preset.Buttons[4].Scene = c.scene;
        s.editor.preset.Buttons[4].ScenePreset = c.scenePreset;
        if (c.refused)
            prompter.expectMessage("Cannot Store in Pool",
                                   "This Preset has Buttons set to SEND SCENE but no Scene was selected.  Either "
                                   "select a Scene to send for those buttons or change those Buttons to another "
                                   "function.",
                                   MessageAnswer::OK);
        const std::int64_t before = count("SELECT COUNT(*) FROM PresetRec");
        StoreInPoolButton(s);
        EXPECT_EQ(count("SELECT COUNT(*) FROM PresetRec"), before + (c.refused ? 0 : 1));
    }
    EXPECT_TRUE(prompter.done());
}

TEST_F(Store, BlankNameOutsideADownload) {
    newPreset("   ");
    prompter.expectMessage("Cannot Store Preset", "You must name the Preset before storing it in the Pool.",
                           MessageAnswer::OK);
    StoreInPoolButton(s);
    EXPECT_TRUE(s.editor.CancelClose);
    EXPECT_TRUE(s.poolFlags.StoreAborted);
    EXPECT_TRUE(s.editor.FocusPresetNameText);

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
    prompter.expectInput("Enter New Preset Name", std::string("   "))
        .expectInput("Enter New Preset Name", std::string("--Mine"))
        .expectInput("Enter New Preset Name", std::string("taken"))
        .expectInput("Enter New Preset Name", std::string(" Fresh "));
    StoreInPoolButton(s);
    const auto& seen = prompter.seen();
    ASSERT_EQ(seen.size(), 4u);
    const std::string blank =
        "The Preset being loaded has a BLANK Name, which violates the Preset Naming rules of the Tavlo Database.  "
        "Please enter a new name for this Preset.";
    EXPECT_EQ(seen[0].text, blank);
    EXPECT_EQ(seen[1].text, blank);
    EXPECT_EQ(seen[2].text, "The new name for this Preset cannot start with '--'.  Please enter a different new name.");
    EXPECT_EQ(seen[3].text, "The name 'taken' already exists in your Preset Pool.  Please enter another name.");
    EXPECT_GT(idOf("Fresh"), 0);
    EXPECT_EQ(s.editor.LastEnteredBlankName, "") << "kept only when duplicate names were accepted";
}

TEST_F(Store, TwoBlankNamesWithDuplicatesAcceptedGiveOneRow) {
    s.poolFlags.DownloadInProgress = true;
    s.poolFlags.DuplicateNamesAccepted = true;
    newPreset("");
    s.editor.preset.Faders[0].Name = "first";
    prompter.expectInput("Enter New Preset Name", std::string("Blank One"));
    StoreInPoolButton(s);
    EXPECT_TRUE(s.poolFlags.ChoiceForAll);
    newPreset("");
    s.editor.preset.Faders[0].Name = "second";
    StoreInPoolButton(s);
    EXPECT_EQ(prompter.seen().size(), 1u);
    EXPECT_EQ(count("SELECT COUNT(*) FROM PresetRec WHERE Name = 'Blank One'"), 1);
    EXPECT_TRUE(s.editor.PresetKeptInPool);
    EXPECT_EQ(s.editor.preset.Faders[0].Name, "first") << "the editor holds the pool's version";
}

TEST_F(Store, OverwriteKeepsIdAndCreatedDateAndRenewsCompanionRows) {
    const std::int64_t id = storeNew("Keep Me", 2);
    db().prepare("UPDATE PresetRec SET CreatedDate = '2001-02-03 04:05:06' WHERE ID = :ID").bind(":ID", id).run();
    const std::int64_t oldFader = intOf("SELECT MIN(ID) FROM FaderRec WHERE PresetREF = :ID", id);

    newPreset("keep me", 5);
    s.editor.preset.Faders[3].Name = "New";
    prompter.expectMessage("About to Store", "Overwrite existing Preset 'keep me' in the Pool?", MessageAnswer::Yes);
    StoreInPoolButton(s);
    EXPECT_EQ(s.editor.preset.ID, id);
    EXPECT_EQ(textOf("SELECT CreatedDate FROM PresetRec WHERE ID = :ID", id), "2001-02-03 04:05:06");
    EXPECT_NE(textOf("SELECT UpdatedDate FROM PresetRec WHERE ID = :ID", id), "2001-02-03 04:05:06");
    EXPECT_GT(intOf("SELECT MIN(ID) FROM FaderRec WHERE PresetREF = :ID", id), oldFader);
    EXPECT_EQ(intOf("SELECT COUNT(*) FROM FaderRec WHERE PresetREF = :ID", id), 18);
    EXPECT_EQ(intOf("SELECT COUNT(*) FROM ButtonRec WHERE PresetREF = :ID", id), 16);
    EXPECT_EQ(intOf("SELECT COUNT(*) FROM SceneRec WHERE PresetREF = :ID", id), 5);
    EXPECT_EQ(textOf("SELECT Name FROM FaderRec WHERE PresetREF = :ID AND \"Index\" = 3", id), "New");
}

TEST_F(Store, AnsweringNoKeepsThePoolVersion) {
    const std::int64_t id = storeNew("Mine");
    newPreset("Mine");
    s.editor.preset.Faders[0].Name = "changed";
    prompter.expectMessage("About to Store", MessageAnswer::No);
    StoreInPoolButton(s);
    EXPECT_TRUE(s.editor.PresetKeptInPool);
    EXPECT_EQ(textOf("SELECT Name FROM FaderRec WHERE PresetREF = :ID AND \"Index\" = 0", id), "");
    EXPECT_EQ(s.editor.preset.Faders[0].Name, "changed") << "outside a download the editor keeps its preset";
}

TEST_F(Store, ClosingTheEditorAsksStoreWithCancel) {
    storeNew("Closing");
    struct Case {
        MessageAnswer answer;
        bool cancelClose;
        bool kept;
    };
    for (const Case& c : {Case{MessageAnswer::Yes, false, false}, Case{MessageAnswer::No, false, true},
                          Case{MessageAnswer::Cancel, true, false}}) {
        newPreset("Closing");
        s.editor.ClosingEditor = true;
        s.editor.CancelClose = false;
        prompter.expectMessage("About to Store", "Store Preset 'Closing' in the Pool?", c.answer);
        StoreInPoolButton(s);
        EXPECT_EQ(s.editor.CancelClose, c.cancelClose);
        EXPECT_EQ(s.editor.PresetKeptInPool, c.kept);
    }
}

TEST_F(Store, SetupSceneRules) {
    const std::int64_t other = storeNew("Other", 2);
    struct Case {
        const char* what;
        std::string comboLine;
        bool bound;
        bool bulk;
        std::string expectScene;
        std::int64_t expectPreset;  // 0: the preset's own ID
    };
    const Case cases[] = {
        {"none", "<none>", false, false, "<none>", -1},
        {"own scene", "Mine", false, false, "Mine", 0},
        {"scene of another preset", "Scene 1  - from Other", false, false, "Scene 1", other},
        {"memory image bound", "Mine", true, false, "Scene 2", other},
        {"bulk import", "Mine", false, true, "Scene 2", other},
    };
    int n = 0;
    for (const Case& c : cases) {
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
        // A new preset's own ID is the one the editor held before the store: 0.
        EXPECT_EQ(intOf("SELECT SetupScenePreset FROM PresetRec WHERE ID = :ID", id),
                  c.expectPreset == 0 ? 0 : c.expectPreset);
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
        s.memImage.followUps.CalculateMemoryImageSize = [&] {
            calls += "C";
            return 1234L;
        };
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
    const std::int64_t presets = count("SELECT COUNT(*) FROM PresetRec");
    prompter.expectMessage("Database Error", "There has been a Database Error", MessageAnswer::OK);
    EXPECT_FALSE(LoadPC1600xFormFromPool(s, 4242));
    EXPECT_TRUE(s.poolFlags.FatalDatabaseError);
    EXPECT_EQ(count("SELECT COUNT(*) FROM PresetRec"), presets);
}

TEST_F(Store, LoadOnThePC1600ModelDropsWhatItCannotDo) {
    const std::int64_t other = storeNew("Scenes", 1);
    newPreset("X Only");
    s.editor.preset.Buttons[2].Function = 8;
    s.editor.preset.Buttons[5].Function = 9;
    s.editor.preset.Buttons[5].Scene = "Scene 1";
    s.editor.preset.Buttons[5].ScenePreset = static_cast<std::int32_t>(other);
    s.editor.preset.SetupChannels[0].BankIsMSB = 1;
    s.editor.SelectPresetSceneCombo.addItem("Scene 1  - from Scenes", other);
    s.editor.SelectPresetSceneCombo.setListIndex(1);
    s.editor.preset.SetupScene = "Scene 1";
    s.editor.preset.SetupScenePreset = static_cast<std::int32_t>(other);
    StoreInPoolButton(s);
    const std::int64_t id = s.editor.preset.ID;

    s.midi.PC1600Model = true;
    prompter.expectMessage("Incompatibility to PC1600", MessageAnswer::OK)
        .expectMessage("PC1600 Incompatibility", MessageAnswer::OK);
    ASSERT_TRUE(LoadPC1600xFormFromPool(s, id));
    EXPECT_TRUE(prompter.done());
    EXPECT_EQ(s.editor.preset.SetupScene, "<none>");
    EXPECT_EQ(s.editor.preset.SetupScenePreset, -1);
    EXPECT_EQ(s.editor.preset.Buttons[2].Function, 0);
    EXPECT_EQ(s.editor.preset.Buttons[5].Function, 0);
    EXPECT_EQ(s.editor.preset.SetupChannels[0].BankIsMSB, 0);
    EXPECT_EQ(intOf("SELECT Function FROM ButtonRec WHERE PresetREF = :ID AND \"Index\" = 5", id), 9)
        << "the pool keeps its version until the user stores";

    s.midi.PC1600Model = false;
    ASSERT_TRUE(LoadPC1600xFormFromPool(s, id));
    EXPECT_EQ(s.editor.SelectPresetSceneCombo.text(), "Scene 1  - from Scenes");
    EXPECT_GE(s.editor.BSceneCombo.findText("Scene 1  - from Scenes"), 0);
}

TEST_F(Store, InitializationTakesTheDefaultsTable) {
    db().exec("INSERT INTO DefaultsTable (Field, Value) VALUES ('SetupChannel03', '005:001:010:100'), "
              "('SetupChannelXX', 'junk'), ('SetupChannel04', 'junk'), ('DataWheelLink', '17'), "
              "('SetupString', 'C0 05: 1')");
    db().exec("INSERT INTO MessageStringRec (MapType, MapREF, \"Index\", CommandType, EnteredString) "
              "VALUES ('D', 0, 0, 4, 'C0 05')");
    s.editor.preset.Name = "left over";
    InitializePreset(s);
    const WorkingPreset& p = s.editor.preset;
    EXPECT_EQ(p.Name, "");
    EXPECT_EQ(p.SetupChannels[2], (SetupChannelDef{5, 1, 10, 100}));
    EXPECT_EQ(p.SetupChannels[3], SetupChannelDef{});
    EXPECT_EQ(p.DataWheelLink, 17);
    EXPECT_EQ(p.SetupString, "C0 05");
    ASSERT_EQ(p.SetupStrings.Count, 1);
    EXPECT_EQ(p.SetupStrings.Slots[0].EnteredString, "C0 05");
    EXPECT_EQ(s.editor.BSceneCombo.text(), "<none>");
}

TEST_F(Store, InitPresetButtonOffersToStoreEdits) {
    storeNew("Edited");
    s.editor.preset.Faders[2].Function = 1;
    s.editor.ProgramInit = true;
    prompter.expectMessage("Store Preset in Pool?", "Do you want to store this Preset in the Preset Pool?",
                           MessageAnswer::Cancel);
    EXPECT_FALSE(InitPresetButton(s));
    EXPECT_EQ(s.editor.preset.Name, "Edited");

    prompter.expectMessage("Store Preset in Pool?", MessageAnswer::Yes)
        .expectMessage("About to Store", MessageAnswer::Yes);
    EXPECT_TRUE(InitPresetButton(s));
    EXPECT_EQ(s.editor.preset.Name, "");
    EXPECT_EQ(intOf("SELECT Function FROM FaderRec WHERE PresetREF = :ID AND \"Index\" = 2", idOf("Edited")), 1);
}

}  // namespace
}  // namespace tavlo::testing
