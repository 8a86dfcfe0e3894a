// The pool of settings and the flows of the settings window, on a fresh
// pool with the virtual PC1600 on the ports.
#include <gtest/gtest.h>

#include <fstream>
#include <functional>

#include "TestProgram.h"
#include "db/PoolDatabase.h"
#include "globals/GlobalPool.h"
#include "globals/GlobalsFlows.h"
#include "globals/GlobalsState.h"
#include "midilink/MidiConfig.h"
#include "midilink/MidiLink.h"
#include "shell/Program.h"
#include "sysex/AllGlobalsDump.h"

namespace tavlo::testing {
namespace {

struct GlobalsSession {
    TestProgram t;
    Program& s = *t;
    GlobalsContext g = s;
    GlobalsState& state = s.globals;

    std::int64_t count(const std::string& sql) { return s.pool.db().queryInt(sql); }
    std::int64_t store(const std::string& name, bool isDefault = false, int chIn = 1) {
        GlobalSettings settings = NewGlobalSettings();
        settings.Name = name;
        settings.Default = isDefault;
        settings.ChIn = chIn;
        state.settings = settings;
        return StoreGlobals(g).value_or(-1);
    }
    void select(const std::string& name) {
        LoadGlobalPoolList(g);
        for (int k = 0; k < state.GlobalPoolList.listCount(); ++k)
            if (GlobalsNameOfLine(state.GlobalPoolList.list(k)) == name) state.GlobalPoolList.setListIndex(k);
    }
    std::vector<std::string> lines(bool combo = false) {
        ListState list;
        FillGlobalsList(s.pool, list, combo);
        std::vector<std::string> out;
        for (const auto& line : list.lines()) out.push_back(line.text);
        return out;
    }
    void openVirtualDevice() {
        std::string error;
        s.midiLink.MIDIIn.setDeviceNumber(0);
        s.midiLink.MIDIOut.setDeviceNumber(0);
        ASSERT_TRUE(s.midiLink.MIDIIn.open(error) && s.midiLink.MIDIOut.open(error)) << error;
    }
};

class GlobalsPool : public ::testing::Test, public GlobalsSession {};

// A pool flow as a step of a table.
std::function<bool(GlobalsSession&)> On(bool (*flow)(const GlobalsContext&)) {
    return [flow](GlobalsSession& f) { return flow(f.g); };
}

TEST_F(GlobalsPool, StoreListsAndMovesTheDefault) {
    const std::int64_t first = store("Stage", true, 2);
    store("alpha", false, 12);
    EXPECT_EQ(lines(), (std::vector<std::string>{"alpha  (IN=12, OUT=01)", "Stage  (IN=02, OUT=01) [DEFAULT]"}));
    EXPECT_EQ(lines(true)[1], "Stage  (IN=02, OUT=01)  [DEFAULT]");
    // The same name in another case asks, and No changes nothing.
    t.prompter.expectMessage("About to Overwrite", "Overwrite existing Global Settings 'STAGE' with these settings?",
                             MessageAnswer::No);
    EXPECT_EQ(store("STAGE", false, 9), -1);
    t.prompter.expectMessage("About to Overwrite", MessageAnswer::Yes);
    EXPECT_EQ(store("ALPHA", true, 3), state.GlobalPoolList.itemData(0));
    EXPECT_EQ(lines(), (std::vector<std::string>{"ALPHA  (IN=03, OUT=01) [DEFAULT]", "Stage  (IN=02, OUT=01)"}));
    EXPECT_NE(state.DefaultGlobalsID, first);
    state.GlobalPoolList.setListIndex(1);
    ShowGlobalDetails(g);
    EXPECT_EQ(state.ChInText, "2");
    EXPECT_EQ(state.CreatedDateText.size(), 10u);  // mm/dd/yyyy
    EXPECT_TRUE(t.prompter.done());
}

TEST_F(GlobalsPool, DuplicateIsNoDefaultAndDeleteMovesImagesToTheDefault) {
    const std::int64_t stage = store("Stage", true);
    s.pool.db().exec("UPDATE GlobalRec SET DeviceID = 7");
    select("Stage");
    t.prompter.expectInput("Duplicate Global Settings", std::string("Copy"));
    ASSERT_TRUE(DuplicateGlobals(g));
    EXPECT_EQ(count("SELECT \"Default\" * 10 + DeviceID FROM GlobalRec WHERE Name = 'Copy'"), 0);
    const std::int64_t copy = count("SELECT ID FROM GlobalRec WHERE Name = 'Copy'");
    s.pool.db().exec("UPDATE MemoryImageRec SET GlobalSettings = " + std::to_string(stage));

    // Deleting the default in use: a warning, the question of images, then the
    // first row left is the default and the images follow it.
    select("Stage");
    t.prompter.expectMessage("Delete Globals", MessageAnswer::OK)
        .expectMessage("About to Delete Globals used in Memory Images", MessageAnswer::Yes);
    ASSERT_TRUE(DeleteGlobals(g));
    EXPECT_EQ(state.DefaultGlobalsID, copy);
    EXPECT_EQ(count("SELECT COUNT(*) FROM MemoryImageRec WHERE GlobalSettings <> " + std::to_string(copy)), 0);
    EXPECT_TRUE(t.prompter.done());
}

// Every refusal: the message, and a pool that is as it was.
struct Refusal {
    const char* name;
    std::function<void(GlobalsSession&)> setUp;  // after "A" and "B" are stored and "A" selected
    std::function<bool(GlobalsSession&)> act;
    const char* title;
};

TEST_F(GlobalsPool, RefusalsChangeNothing) {
    const auto typed = [](const char* title, const char* answer) {
        return [=](GlobalsSession& f) { f.t.prompter.expectInput(title, std::string(answer)); };
    };
    const auto editing = [](GlobalsSession& f) {
        f.state.Visible = true;
        f.state.settings.Name = "a";
    };
    const auto got = [](int option, const char* name, int line) {
        return [=](GlobalsSession& f) {
            f.t.prompter.expectChoice("GotGlobalsForm", [=](const ChoiceRequest& r) {
                EXPECT_EQ(r.lists.at(0).items.size(), 2u);
                return ChoiceAnswer{0, {}, option, {line}, {name}};
            });
        };
    };
    const std::vector<Refusal> cases{
        {"rename to a name in another case", typed("Rename Globals", " b "), On(RenameGlobals), "Cannot Rename Globals"},
        {"rename of the set being edited", editing, On(RenameGlobals), "Cannot Rename Globals"},
        {"duplicate to a name in use", typed("Duplicate Global Settings", "B"), On(DuplicateGlobals),
         "Cannot Duplicate Globals"},
        {"delete of the set being edited", editing, On(DeleteGlobals), "Cannot Delete Globals"},
        {"delete of the last set", [](GlobalsSession& f) { f.s.pool.db().exec("DELETE FROM GlobalRec WHERE Name = 'B'"); },
         On(DeleteGlobals), "Cannot Delete Globals"},
        {"store over a row with a value past a byte",
         [](GlobalsSession& f) { f.state.settings.Name = "A", f.state.settings.StartingNote = 128; },
         [](GlobalsSession& f) { return StoreGlobals(f.g).has_value(); }, "Cannot Store Globals"},
        {"got globals: empty new name", got(1, "  ", -1),
         [](GlobalsSession& f) { return ShowGotGlobalsForm(f.g) != kDontStore; }, "Cannot Store"},
        {"got globals: a name in use", got(1, "a", -1),
         [](GlobalsSession& f) { return ShowGotGlobalsForm(f.g) != kDontStore; }, "Cannot Store Globals"},
        {"got globals: overwrite without a line", got(2, "", -1),
         [](GlobalsSession& f) { return ShowGotGlobalsForm(f.g) != kDontStore; }, "Cannot Overwrite"},
    };
    for (const Refusal& c : cases) {
        SCOPED_TRACE(c.name);
        GlobalsSession f;
        f.store("A");
        f.store("B");
        f.select("A");
        c.setUp(f);
        const std::vector<std::string> before = f.lines();
        f.t.prompter.expectMessage(c.title);
        // The dialogue comes back after a refusal; closing it stores nothing.
        if (std::string(c.name).rfind("got", 0) == 0)
            f.t.prompter.expectChoice("GotGlobalsForm", [](const ChoiceRequest&) { return ChoiceAnswer{}; });
        EXPECT_FALSE(c.act(f));
        EXPECT_EQ(f.lines(), before);
        EXPECT_TRUE(f.t.prompter.done());
    }
}

TEST_F(GlobalsPool, GotGlobalsOverwriteKeepsTheRowsNameAndDefault) {
    const std::int64_t a = store("A", true);
    store("B");
    t.prompter.expectChoice("GotGlobalsForm", [](const ChoiceRequest&) { return ChoiceAnswer{0, {}, 2, {0}, {""}}; });
    const std::string word = ShowGotGlobalsForm(g);
    EXPECT_EQ(word, "__ID=" + std::to_string(a));
    state.settings = NewGlobalSettings();
    state.settings.Name = "Received from PC1600(x)";
    state.settings.ChOut = 5;
    EXPECT_EQ(StoreGotGlobals(g, word), a);  // no overwrite question
    EXPECT_EQ(lines()[0], "A  (IN=01, OUT=05) [DEFAULT]");
}

TEST_F(GlobalsPool, FirstRunStoresTheDevicesSettingsAsDefault) {
    openVirtualDevice();
    std::string dump = DefaultAllGlobalsDump(0, false);
    dump[GlobalsOffset::ChannelOut] = 4;
    s.midiLink.virtualDevice().receive(dump);
    EXPECT_EQ(FirstRunGlobals(g), "");
    EXPECT_EQ(lines(), (std::vector<std::string>{"Initial Default Globals  (IN=01, OUT=05) [DEFAULT]"}));
    EXPECT_EQ(FirstRunGlobals(g), "");  // only on an empty pool
    EXPECT_EQ(count("SELECT COUNT(*) FROM GlobalRec"), 1);
}

TEST_F(GlobalsPool, FirstRunWithoutADeviceStoresNewSettings) {
    t.prompter.expectMessage("Cannot Communicate with PC1600(x)");
    EXPECT_EQ(FirstRunGlobals(g), kErrorFirstGet);
    EXPECT_EQ(lines(), (std::vector<std::string>{"No Connection to PC1600(x)  (IN=01, OUT=01) [DEFAULT]"}));
    EXPECT_TRUE(t.prompter.done());
}

// The virtual device's settings fetched, edited, stored, sent back and
// fetched again unchanged; its original model answers in its own form.
TEST_F(GlobalsPool, GetEditStoreSendGetAgain) {
    openVirtualDevice();
    t.prompter.expectMessage("Get Globals from PC1600(x)", MessageAnswer::Yes);
    ASSERT_TRUE(GetGlobalsButton(g));
    EXPECT_EQ(state.settings.Name, "Received from PC1600(x)");
    state.EditMapCombo = 1;
    LoadMapFrame(state);
    state.ProgChangeList.setListIndex(3);
    state.MapList.setListIndex(state.MapList.findItemData(127));
    MapListDoubleClick(state);
    EXPECT_EQ(state.ProgChangeList.list(3), "003  ->  Scene77");
    EXPECT_TRUE(state.changed());
    ASSERT_TRUE(StoreGlobals(g));
    const GlobalSettings edited = state.settings;
    ASSERT_TRUE(SendGlobalsButton(g));
    t.prompter.expectMessage("Get Globals from PC1600(x)", MessageAnswer::Yes);
    ASSERT_TRUE(GetGlobalsButton(g));
    EXPECT_EQ(state.settings, edited);

    VirtualDeviceSettings original = s.midiLink.virtualDevice().settings();
    original.pc1600Model = true;
    s.midiLink.virtualDevice().setSettings(original);
    EXPECT_EQ(s.midiLink.virtualDevice().allGlobalsDump().size(), kAllGlobalsLengthDevice1600);
    t.prompter.expectMessage("Get Globals from PC1600(x)", MessageAnswer::Yes).expectMessage("PC1600 Sysex Received");
    ASSERT_TRUE(GetGlobalsButton(g));
    EXPECT_EQ(state.settings.MidiMaps[1][3], 127);
    EXPECT_TRUE(t.prompter.done());
}

TEST_F(GlobalsPool, TextFileWithTheDefaultMarkAsks) {
    state.settings.Name = "Club";
    state.settings.Default = true;
    const std::string path = t.dir.file("club.tgl");
    ASSERT_TRUE(WriteGlobalsFile(g, path));
    state.settings = NewGlobalSettings();
    t.prompter.expectMessage("Importimg Globals as Defaults", MessageAnswer::No);
    ASSERT_TRUE(ReadGlobalsFile(g, path));
    EXPECT_EQ(state.settings.Name, "Club");
    EXPECT_FALSE(state.settings.Default);
    std::ofstream(t.dir.file("bad.tgl")) << "[GLOBAL DATA] x\r\n[CHOUT] 1\r\n";
    t.prompter.expectMessage("Cannot Import");
    EXPECT_FALSE(ReadGlobalsFile(g, t.dir.file("bad.tgl")));
    EXPECT_EQ(state.settings.Name, "Club");
    EXPECT_TRUE(t.prompter.done());
}

}  // namespace
}  // namespace tavlo::testing
