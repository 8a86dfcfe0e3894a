// The cost of a preset in the device's memory, row by row of the cost table.
#include "PoolFixture.h"
#include "pool/PresetMemorySize.h"
#include "db/PoolDatabase.h"
#include "editor/EditorState.h"

namespace tavlo::testing {
namespace {

TEST(PresetMemoryCost, Faders) {
    struct Case {
        int function;
        std::string name, string;
        int cost;
    };
    const Case cases[] = {
        {0, "Anything", "F0 01 F7", 0}, {1, "Vol", "", 8},      {1, "", "", 5},
        {2, "Master", "", 9},           {3, "St", "F0 01 F7", 11}, {3, "St", "F0 01 F", 10},
        {4, "Dev", "", 0},              {1, "  Vol  ", "", 8},
    };
    for (const Case& c : cases)
        EXPECT_EQ(FaderMemoryCost(c.function, c.name, c.string), c.cost) << c.function << " " << c.name;
}

TEST(PresetMemoryCost, Buttons) {
    struct Case {
        int function;
        std::string name, one, two;
        int cost;
    };
    const Case cases[] = {
        {0, "Off", "", "", 0},        {1, "Mute", "", "", 4},        {2, "So", "", "", 2},
        {8, "SF", "", "", 2},         {3, "PC", "", "", 4},          {4, "Note", "", "", 7},
        {5, "S", "90 3C 7F", "", 5},  {6, "PR", "90 3C 7F", "80", 8}, {7, "T", "90", "80 3C", 6},
        {9, "Scene", "", "", 6},      {10, "Dev", "", "", 0},
    };
    for (const Case& c : cases)
        EXPECT_EQ(ButtonMemoryCost(c.function, c.name, c.one, c.two), c.cost) << c.function << " " << c.name;
}

TEST(PresetMemoryCost, PresetRow) {
    const std::string none(64, '\0');
    std::string msbOnly = none;
    msbOnly[4 * 5 + 1] = 1;
    std::string two = none;
    two[0] = 3;
    two[4 * 15 + 3] = 100;
    struct Case {
        const char* what;
        int wheel;
        std::string map;
        long scenePreset;
        std::string scene, setup;
        int cost;
    };
    const Case cases[] = {
        {"nothing", 0, none, -1, "<none>", "", 0},
        {"data wheel", 4, none, -1, "<none>", "", 1},
        {"only BankIsMSB on a channel", 0, msbOnly, -1, "<none>", "", 6},
        {"two channels", 0, two, -1, "<none>", "", 9},
        {"setup scene", 0, none, 12, "Intro", "", 5},
        {"scene name without owner", 0, none, -1, "Intro", "", 0},
        {"setup string", 0, none, -1, "<none>", " C0 05 B0 07 7F ", 8},
        {"everything", 1, two, 12, "Intro", "C0 05", 1 + 6 + 2 + 2 + 3},
    };
    for (const Case& c : cases)
        EXPECT_EQ(PresetRowMemoryCost(c.wheel, c.map, c.scenePreset, c.scene, c.setup), c.cost) << c.what;
}

using StoredPresetCost = PoolFixture;

TEST_F(StoredPresetCost, SumsItsRows) {
    newPreset("Costly", 5);
    WorkingPreset& p = s.editor.preset;
    p.Faders[0].Function = 1;
    p.Faders[0].Name = "Vol";                      // 8
    p.Faders[17].Function = 3;
    p.Faders[17].MIDIString = "F0 01 02 F7";       // 6 + 4
    p.Buttons[3].Function = 6;
    p.Buttons[3].Name = "AB";
    p.Buttons[3].String1 = "90 3C 7F";
    p.Buttons[3].String2 = "80 3C";                // 2 + 2 + 3 + 2
    p.DataWheelLink = 3;                           // 1
    p.SetupChannels[2].Volume = 90;                // 3 + 3
    StoreInPoolButton(s);
    EXPECT_EQ(CalculatePresetMemorySize(db(), s.editor.preset.ID), 8 + 10 + 9 + 1 + 6);
    EXPECT_EQ(CalculatePresetMemorySize(db(), s.editor.preset.ID, false), 8 + 10 + 9);
    EXPECT_EQ(CalculatePresetMemorySize(db(), s.pool.InitializedPresetID()), 0);
}

}  // namespace
}  // namespace tavlo::testing
