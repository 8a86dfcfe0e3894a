// Preset text files: the writer's exact lines, the round trip between pools,
// the rewrites for the PC1600 and the files that are refused.
#include <random>
#include <sstream>

#include "../pool/PoolFixture.h"
#include "presetfile/TavloFormat.h"
#include "presetfile/TavloFormatLoad.h"

namespace tavlo::testing {
namespace {

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t pos = 0;
    for (std::size_t end; (end = text.find("\r\n", pos)) != std::string::npos; pos = end + 2)
        lines.push_back(text.substr(pos, end - pos));
    EXPECT_EQ(pos, text.size()) << "every line ends in CR LF";
    return lines;
}

class TavloFormat : public PoolFixture {
protected:
    std::string exportOf(std::int64_t id) {
        EXPECT_TRUE(LoadPC1600xFormFromPool(s, id));
        return EditorTavloText(s);
    }
    void addModel(Database& pool, const std::string& make, const std::string& model) {
        pool.prepare("INSERT OR IGNORE INTO MakeTable (Make) VALUES (:Make)").bind(":Make", make).run();
        pool.prepare("INSERT INTO ModelTable (Make, Model) VALUES (:Make, :Model)")
            .bind(":Make", make).bind(":Model", model).run();
    }
    std::int32_t load(TestProgram& into, const std::string& text) {
        return LoadTavloFormat(*into, text, "p.tpr", false);
    }
    std::int64_t rowsOfAllTables(Database& pool) {
        std::int64_t n = 0;
        for (const char* table : {"PresetRec", "FaderRec", "ButtonRec", "SceneRec", "MessageStringRec",
                                  "MakeModelAssocRec", "ModelTable"})
            n += pool.queryInt(std::string("SELECT COUNT(*) FROM ") + table);
        return n;
    }
};

TEST_F(TavloFormat, TheWriterGivesTheLinesInOrder) {
    const std::int64_t other = storeNew("Other", 2);
    newPreset("Small", 1);
    WorkingPreset& p = s.editor.preset;
    p.Notes = "  two words ";
    p.DataWheelLink = 3;
    p.Faders[16] = FaderDef{"Cut", 5, 3, 1, 99, 2, 74, 0, 1, "B0 4A", 4, "x  y" + std::string(14, ' '), "dev"};
    p.FaderStrings[16].Count = 1;
    p.FaderStrings[16].Slots[0] = {.CommandType = 2, .CommandChannel = 0, .Value1 = 74, .Value2 = 9,
                                   .SysexMake = "Mk", .SysexModel = "Md", .EnteredString = "B0 4A", .ListItem = "CC"};
    p.Buttons[1] = ButtonDef{"Go", 6, 3, 5, 100, 61, "90 3C", "80 3C", "Scene 2", 0, ""};
    p.SetupChannels[0] = {2, 1, 3, 4};
    s.editor.AssociatedList.addItem("Acme : Box 1");
    StoreInPoolButton(s);
    sendScene(s.editor.preset.ID, 1, "Scene 2", other);
    const std::vector<std::string> lines = linesOf(exportOf(s.editor.preset.ID));

    const std::vector<std::string> expected = {
        "[PRESET] Small", "[DATAWHEEL] 3", "[NOTES START]", "two words", "[NOTES END]",
        std::string(42, '-'), "[FADER 1 DEFINITION]",
        "[CV 1 DEFINITION]", "[NAME] Cut", "[FUNCTION] 3", "[MIN] 1", "[MAX] 99", "[CCNUM] 74", "[CHANNEL] 2",
        "[DEVICEMAPSTRING] dev", "[MASTEROF] _x  y" + std::string(14, ' ') + "_", "[MIDISTRING] B0 4A", "[PARAMFORMAT] 4",
        "[POLARITY] False", "[REPLACEMODE] 1", "[VALUE] 5", "[START MIDI STRING DEFINITION]", "[NUMSUBSTRINGS] 1",
        "    [COMMANDCHANNEL] 0", "    [COMMANDTYPE] 2", "    [ENTEREDSTRING] B0 4A", "    [SYSEXMAKE] Mk",
        "    [SYSEXMODEL] Md", "    [VALUE1] 74", "    [VALUE2] 9", "    [LISTITEM] CC", "    [OWNCHECK] 1", " ",
        "[END MIDI STRING DEFINITION]", "[CV 2 DEFINITION]", "[NO MIDI STRING DEFINITION]",
        "[BUTTON 2 DEFINITION]", "[NAME] Go", "[CHANNEL] 3", "[FUNCTION] 9", "[DEVICEMAPSTRING] ", "[NOTE] 61",
        "[PROGCHANGE] 5", "[SCENE] Scene 2", "[SCENEPRESETNAME] Other", "[STRING1] 90 3C", "[STRING2] 80 3C",
        "[VELOCITY] 100", "[NO MIDI STRING1 DEFINITION]", "[NO MIDI STRING2 DEFINITION]",
        "[BUTTON 16 DEFINITION]", "[SCENEPRESETNAME] <none>", "[NO MIDI STRING2 DEFINITION]", " ",
        std::string(49, '-'), "[SETUP INFORMATION]", "[SETUPSCENE] <none>", "[SETUPSCENEPRESET] <none>",
        "[NO SETUP STRING DEFINITION]", "[BEGIN SETUP CHANNEL MAP]", "    [CHANNEL 01 BANK] 2",
        "    [CHANNEL 01 BANKMSB] 1", "    [CHANNEL 01 PROG] 3", "    [CHANNEL 01 VOLUME] 4",
        "    [CHANNEL 16 VOLUME] 0", "[END SETUP CHANNEL MAP]", std::string(42, '-'), "[START DEVICE MAPS]",
        "    [MAKE 00] Acme", "    [MODEL 00] Box 1", "[END DEVICE MAPS]", " ", std::string(42, '-'), "[SCENES] 1",
        "[SCENE NAME] Scene 1", "[FADER 1] 0", "[FADER 16] 30", "[CV 1] 32", "[CV 2] 34", " "};
    std::size_t at = 0;
    for (const std::string& line : expected) {
        while (at < lines.size() && lines[at] != line) ++at;
        ASSERT_LT(at, lines.size()) << "missing or out of order: " << line;
        ++at;
    }
    EXPECT_EQ(at, lines.size()) << "the file ends after the last scene";
    EXPECT_EQ(lines.size(), 646u);
}

// A random preset of pool `t` with strings, scenes, a device pair, and
// references to itself and to "Other".
std::int64_t randomPreset(TavloFormat& f, std::mt19937& rng, int n, std::int64_t other) {
    auto pick = [&rng](int low, int high) { return std::uniform_int_distribution<int>(low, high)(rng); };
    auto word = [&pick] {
        static const std::string chars = "AZaz09 '\"|-+";
        std::string w = "w";
        for (int i = pick(0, 6); i > 0; --i) w += chars[pick(0, static_cast<int>(chars.size()) - 1)];
        return w + "z";
    };
    auto strings = [&](MessageStringSet& set) {
        set.Count = static_cast<std::int16_t>(pick(0, 3));
        for (int i = 0; i < set.Count; ++i)
            set.Slots[i] = {.CommandType = static_cast<std::int16_t>(pick(-1, 9)),
                            .CommandChannel = static_cast<std::int16_t>(pick(0, 16)),
                            .Value1 = static_cast<std::int16_t>(pick(1, 127)),
                            .Value2 = static_cast<std::int16_t>(pick(1, 127)), .SysexMake = word(),
                            .SysexModel = word(), .EnteredString = "B0 " + std::to_string(pick(10, 99)),
                            .ListItem = word(), .OwnCheck = static_cast<std::int16_t>(pick(0, 1))};
    };
    f.newPreset("Rand " + std::to_string(n), pick(1, 4));
    WorkingPreset& p = f.s.editor.preset;
    p.Notes = word();
    p.DataWheelLink = static_cast<std::int16_t>(pick(0, 17));
    for (int i = 0; i < kFaderCount; ++i) {
        p.Faders[i] = FaderDef{word(), static_cast<std::int16_t>(pick(0, 127)), static_cast<std::int16_t>(pick(0, 3)),
                               static_cast<std::int16_t>(pick(0, 20)), static_cast<std::int16_t>(pick(21, 127)),
                               static_cast<std::int16_t>(pick(0, 16)), static_cast<std::int16_t>(pick(0, 127)),
                               static_cast<std::int16_t>(-pick(0, 1)), static_cast<std::int16_t>(pick(0, 2)),
                               "B0 07", static_cast<std::int16_t>(pick(0, 12)), std::string(kFaderCount, ' '), word()};
        p.Faders[i].MasterOf[pick(0, 17)] = 'M';
        if (p.Faders[i].Function == 3) strings(p.FaderStrings[i]);
    }
    for (int i = 0; i < kButtonCount; ++i) {
        const auto function = static_cast<std::int16_t>(pick(0, 7));
        p.Buttons[i] = ButtonDef{word(), function, static_cast<std::int16_t>(pick(0, 16)),
                                 static_cast<std::int16_t>(pick(0, 127)), static_cast<std::int16_t>(pick(0, 129)),
                                 static_cast<std::int16_t>(pick(0, 129)), "90 3C", "80 3C", kNoScene, -1, word()};
        if (function >= 5) strings(p.ButtonStrings1[i]);
        if (function >= 6) strings(p.ButtonStrings2[i]);
    }
    p.SetupString = "C0 0" + std::to_string(pick(0, 9));
    strings(p.SetupStrings);
    for (SetupChannelDef& c : p.SetupChannels)
        c = {static_cast<std::int16_t>(pick(0, 128)), static_cast<std::int16_t>(pick(0, 1)),
             static_cast<std::int16_t>(pick(0, 128)), static_cast<std::int16_t>(pick(0, 128))};
    f.s.editor.AssociatedList.addItem("Acme: Box " + std::to_string(pick(1, 2)));
    StoreInPoolButton(f.s);
    const std::int64_t id = p.ID;
    f.sendScene(id, 14, "Scene 1", id);
    f.sendScene(id, 15, "Scene 2", other);
    f.setupScene(id, "Scene 1", pick(0, 1) ? id : other);
    return id;
}

// Every field but Value1 and Value2 survives the way through a second pool;
// from there on the text stays the same.
TEST_F(TavloFormat, RandomPresetsComeBackThroughFreshPools) {
    TestProgram second, third;
    for (TestProgram* pool : {&t, &second, &third})
        for (const char* model : {"Box 1", "Box 2"}) addModel((*pool)->pool.db(), "Acme", model);
    const std::int64_t other = storeNew("Other", 3);
    const std::string otherText = exportOf(other);
    ASSERT_GT(load(second, otherText), 0);
    ASSERT_GT(load(third, otherText), 0);
    std::mt19937 rng(14);
    for (int n = 0; n < 12; ++n) {
        SCOPED_TRACE(n);
        const std::string first = exportOf(randomPreset(*this, rng, n, other));
        const std::int32_t inSecond = load(second, first);
        ASSERT_GT(inSecond, 0);
        const std::string again = EditorTavloText(*second);
        ASSERT_GT(load(third, again), 0);
        EXPECT_EQ(EditorTavloText(*third), again);
        const std::vector<std::string> a = linesOf(first), b = linesOf(again);
        ASSERT_EQ(a.size(), b.size());
        for (std::size_t i = 0; i < a.size(); ++i)
            if (a[i].find("[VALUE1]") == std::string::npos && a[i].find("[VALUE2]") == std::string::npos) {
                EXPECT_EQ(a[i], b[i]) << "line " << i;
            }
        EXPECT_TRUE(second.prompter.seen().empty() && third.prompter.seen().empty());
    }
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

// A PC1600 takes no Send Fader or Send Scene, no setup scene and no Bank MSB.
TEST_F(TavloFormat, APC1600RewritesWhatItCannotDo) {
    const std::int64_t id = storeNew("Xonly", 1);
    sendScene(id, 3, "Scene 1", id);
    run("UPDATE ButtonRec SET Function = 8 WHERE PresetREF = :ID AND \"Index\" = 4", id);
    setupScene(id, "Scene 1", id);
    const std::string text = replaced(replaced(exportOf(id), "[CHANNEL 01 BANKMSB] 0", "[CHANNEL 01 BANKMSB] 1"),
                                      "[CHANNEL 01 BANK] 0", "[CHANNEL 01 BANK] 1");
    run("UPDATE PresetRec SET Name = 'Moved' WHERE ID = :ID", id);
    InitializePreset(s);
    s.midi.PC1600Model = true;
    prompter.expectMessage("PC1600 Incompatibility", MessageAnswer::OK);
    prompter.expectMessage("Incompatibility to PC1600", MessageAnswer::OK);
    const std::int32_t loaded = load(t, text);
    ASSERT_GT(loaded, id);
    EXPECT_TRUE(prompter.done());
    EXPECT_EQ(count("SELECT COUNT(*) FROM ButtonRec WHERE Function IN (8, 9) AND PresetREF = " + std::to_string(loaded)), 0);
    EXPECT_EQ(textOf("SELECT SetupScene FROM PresetRec WHERE ID = :ID", loaded), kNoScene);
    EXPECT_EQ(s.editor.preset.SetupChannels[0].BankIsMSB, 0);
    EXPECT_EQ(s.editor.preset.SetupChannels[0].Bank, 1);
}

// Files gone wrong by hand are refused with the one message, nothing stored.
TEST_F(TavloFormat, MalformedFilesAreRefusedAndStoreNothing) {
    const std::int64_t id = storeNew("Good", 1);
    run("UPDATE FaderRec SET Function = 3 WHERE PresetREF = :ID AND \"Index\" = 1", id);
    const std::string good = exportOf(id);
    run("UPDATE PresetRec SET Name = 'Kept' WHERE ID = :ID", id);
    const std::string crlf = "\r\n";
    const std::vector<std::pair<const char*, std::string>> cases = {
        {"empty", ""},
        {"missing keyword", replaced(good, "[MIN] 0" + crlf, "")},
        {"reordered keywords", replaced(good, "[MIN] 0" + crlf + "[MAX] 127", "[MAX] 127" + crlf + "[MIN] 0")},
        {"wrong fader number", replaced(good, "[FADER 2 DEFINITION]", "[FADER 3 DEFINITION]")},
        {"wrong CV number", replaced(good, "[CV 2 DEFINITION]", "[CV 1 DEFINITION]")},
        {"too many substrings", replaced(good, "[NUMSUBSTRINGS] 0", "[NUMSUBSTRINGS] 52")},
        {"more scenes than present", replaced(good, "[SCENES] 1", "[SCENES] 2")},
        {"over a hundred scenes", replaced(good, "[SCENES] 1", "[SCENES] 101")},
        {"velocity not a number", replaced(good, "[VELOCITY] 127", "[VELOCITY] 12x")},
        {"number beyond its field", replaced(good, "[MAX] 127", "[MAX] 99999")},
        {"function beyond its list", replaced(good, "[FUNCTION] 0", "[FUNCTION] 4")},
        {"channel beyond ChOut", replaced(good, "[CHANNEL] 16", "[CHANNEL] 17")},
        {"setup value beyond a byte", replaced(good, "[CHANNEL 02 VOLUME] 0", "[CHANNEL 02 VOLUME] 300")},
        {"a line of 10,000 characters", replaced(good, "[NOTES START]", std::string(10000, 'N'))},
        {"cut in the middle", good.substr(0, good.size() / 2)},
        {"blank line in the wrong place", replaced(good, "[FADER 4 DEFINITION]", "[FADER 4 DEFINITION]" + crlf)},
        {"no notes end", replaced(good, "[NOTES END]", "[NOTES FIN]")},
    };
    const std::int64_t before = rowsOfAllTables(db());
    for (const auto& [what, text] : cases) {
        SCOPED_TRACE(what);
        prompter.expectMessage("Cannot Load Tavlo Format Preset",
                               "The file 'p.tpr' does not appear to be a Tavlo Format Preset File.", MessageAnswer::OK);
        EXPECT_EQ(load(t, text), -1);
        EXPECT_TRUE(prompter.done());
        EXPECT_EQ(rowsOfAllTables(db()), before);
        EXPECT_FALSE(s.editor.Visible);
    }
    EXPECT_GT(load(t, good), id) << "the unchanged file loads";
}

// References to a pool that lacks them: No stops the load; Yes unmaps them.
// A device the library lacks is created blank but not associated.
TEST_F(TavloFormat, MissingReferencesAskAndMissingDevicesAreCreated) {
    const std::int64_t other = storeNew("Gone", 1);
    const std::int64_t id = storeNew("Refers", 0);
    sendScene(id, 2, "Scene 1", other);
    setupScene(id, "Scene 1", other);
    s.editor.AssociatedList.addItem("Nobody: Thing");
    const std::string text = replaced(exportOf(id), "[END DEVICE MAPS]",
                                      "    [MAKE 00] Nobody\r\n    [MODEL 00] Thing\r\n[END DEVICE MAPS]");
    run("DELETE FROM PresetRec WHERE ID = :ID", other);
    run("UPDATE PresetRec SET Name = 'Old' WHERE ID = :ID", id);
    const std::string question = "The Preset being Imported contains references to Scenes on Other Presets not in "
        "your Pool, including\n\tPreset: Gone,   Scene: Scene 1 on Button #3\n\tPreset: Gone,   Scene: CENE] Scene 1 "
        "on SetupString\nDo you want to import it anyway?";
    prompter.expectMessage("Resolve Scene Maps to Nonexistent Presets", MessageAnswer::No);
    const std::int64_t presets = rows("PresetRec");
    EXPECT_EQ(load(t, text), -1);
    EXPECT_EQ(prompter.seen().back().text.substr(0, question.size()), question);
    EXPECT_EQ(rows("PresetRec"), presets);

    prompter.expectMessage("Resolve Scene Maps to Nonexistent Presets", MessageAnswer::Yes);
    prompter.expectMessage("Make/Model Does Not Exist",
                           "The Preset you're importing is mapped to a Device 'Nobody Thing' which doesn't exist in "
                           "your database.  Tavlo will create a blank one which can be overwritten later with a "
                           "complete Device Import.", MessageAnswer::OK);
    const std::int32_t loaded = load(t, text);
    ASSERT_GT(loaded, id);
    EXPECT_TRUE(prompter.done());
    EXPECT_EQ(s.editor.preset.Buttons[2].Function, 0);
    EXPECT_EQ(s.editor.preset.Buttons[2].Scene, kNoScene);
    EXPECT_EQ(s.editor.preset.SetupScene, kNoScene);
    EXPECT_TRUE(s.editor.Visible);
    EXPECT_EQ(textOf("SELECT Description FROM ModelTable WHERE Model = 'Thing' AND :ID > 0", 1),
              "Created for Import of Refers");
    EXPECT_EQ(count("SELECT COUNT(*) FROM MakeModelAssocRec WHERE PresetREF = " + std::to_string(loaded)), 0);

    EXPECT_EQ(load(t, "[PRESET] --Initialized--\r\nanything"), s.pool.InitializedPresetID());

    // A memory image load asks nothing and keeps the reference for later.
    run("DELETE FROM PresetRec WHERE ID = :ID", loaded);
    const std::int32_t bulk = LoadTavloFormat(s, text, "p.tpr", true);
    ASSERT_GT(bulk, loaded);
    EXPECT_TRUE(prompter.done());
    EXPECT_EQ(textOf("SELECT Scene || '|' || ScenePreset FROM ButtonRec WHERE PresetREF = :ID AND \"Index\" = 2", bulk),
              "Scene 1:::Gone|-111");
    EXPECT_FALSE(s.poolFlags.BulkImportActive) << "the flag is the load's own";
}

}  // namespace
}  // namespace tavlo::testing
