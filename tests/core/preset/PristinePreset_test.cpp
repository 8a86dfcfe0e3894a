// Which changes of a preset count as edits since its pristine copy: the
// comparison goes field by field, so every field has its row.
#include "preset/PristinePreset.h"

#include <gtest/gtest.h>

#include <functional>

using namespace tavlo;

namespace {

struct Edit {
    const char* what;
    std::function<void(WorkingPreset&)> apply;
};

// A loaded preset and its pristine copy.
struct Loaded {
    WorkingPreset preset, pristine;
    Loaded() {
        WorkingPreset& p = preset;
        p.Name = "Loaded";
        p.Notes = "  Some notes  ";  // kept trimmed in the copy, compared trimmed
        p.Faders[3].Function = 1;
        p.Faders[3].Name = "Vol";
        p.Buttons[2].Function = 5;
        p.Buttons[2].String1 = "90 3C 7F";
        p.ButtonStrings1[2].Slots[0].EnteredString = "90 3C 7F";
        p.ButtonStrings1[2].Count = 1;
        p.SetupStrings.Slots[0].EnteredString = "F6";
        p.SetupStrings.Count = 1;
        UpdateINITData(preset, pristine);
    }
    bool changed() const { return INITDataChanged(preset, pristine); }
};

TEST(INITDataChanged, EditsThatCount) {
    const Edit edits[] = {
        {"notes", [](WorkingPreset& p) { p.Notes = "Other notes"; }},
        {"fader name", [](WorkingPreset& p) { p.Faders[0].Name = "X"; }},
        {"fader function", [](WorkingPreset& p) { p.Faders[3].Function = 2; }},
        {"fader min", [](WorkingPreset& p) { p.Faders[5].Min = 1; }},
        {"fader max", [](WorkingPreset& p) { p.Faders[5].Max = 1; }},
        {"CV2 channel", [](WorkingPreset& p) { p.Faders[17].Channel = 3; }},
        {"fader CC", [](WorkingPreset& p) { p.Faders[16].CCNum = 7; }},
        {"replace mode", [](WorkingPreset& p) { p.Faders[1].ReplaceMode = 1; }},
        {"fader string text", [](WorkingPreset& p) { p.Faders[1].MIDIString = "F6"; }},
        {"param format", [](WorkingPreset& p) { p.Faders[1].ParamFormat = 3; }},
        {"master of", [](WorkingPreset& p) { p.Faders[1].MasterOf[4] = 'X'; }},
        {"polarity", [](WorkingPreset& p) { p.Faders[1].Polarity = 0; }},
        {"fader mapping", [](WorkingPreset& p) { p.Faders[1].DeviceMapString = "Synth"; }},
        {"button name", [](WorkingPreset& p) { p.Buttons[15].Name = "B"; }},
        {"button function", [](WorkingPreset& p) { p.Buttons[0].Function = 1; }},
        {"button channel", [](WorkingPreset& p) { p.Buttons[0].Channel = 1; }},
        {"program", [](WorkingPreset& p) { p.Buttons[0].ProgChange = 1; }},
        {"velocity", [](WorkingPreset& p) { p.Buttons[0].Velocity = 1; }},
        {"note", [](WorkingPreset& p) { p.Buttons[0].Note = 1; }},
        {"string 1 text", [](WorkingPreset& p) { p.Buttons[2].String1 = "90 3C 00"; }},
        {"string 2 text", [](WorkingPreset& p) { p.Buttons[2].String2 = "F6"; }},
        {"scene", [](WorkingPreset& p) { p.Buttons[2].Scene = "Verse"; }},
        {"button mapping", [](WorkingPreset& p) { p.Buttons[2].DeviceMapString = "Synth"; }},
        {"string 1 count", [](WorkingPreset& p) { p.ButtonStrings1[2].Count = 0; }},
        {"string 2 count", [](WorkingPreset& p) { p.ButtonStrings2[9].Count = 1; }},
        {"string 1 slot", [](WorkingPreset& p) { p.ButtonStrings1[2].Slots[0].Value1 = 9; }},
        {"string 2 last slot", [](WorkingPreset& p) { p.ButtonStrings2[4].Slots[49].ListItem = "x"; }},
        {"string make", [](WorkingPreset& p) { p.ButtonStrings1[4].Slots[1].SysexMake = "Roland"; }},
        {"setup bank type", [](WorkingPreset& p) { p.SetupChannels[15].BankIsMSB = 1; }},
        {"setup volume", [](WorkingPreset& p) { p.SetupChannels[0].Volume = 1; }},
        {"setup string slot", [](WorkingPreset& p) { p.SetupStrings.Slots[3].OwnCheck = 0; }},
        {"setup string entered", [](WorkingPreset& p) { p.SetupStrings.Slots[0].EnteredString = "FA"; }},
        {"setup scene", [](WorkingPreset& p) { p.SetupScene = "Intro"; }},
        {"setup scene owner", [](WorkingPreset& p) { p.SetupScenePreset = 12; }},
        {"data wheel", [](WorkingPreset& p) { p.DataWheelLink = 19; }},
    };
    for (const Edit& edit : edits) {
        Loaded l;
        EXPECT_FALSE(l.changed()) << edit.what << " before the edit";
        edit.apply(l.preset);
        EXPECT_TRUE(l.changed()) << edit.what;
        UpdateINITData(l.preset, l.pristine);
        EXPECT_FALSE(l.changed()) << edit.what << " after storing";
    }
}

TEST(INITDataChanged, ChangesThatAreNoEdits) {
    const Edit edits[] = {
        {"moving a fader", [](WorkingPreset& p) { p.Faders[0].Value = 99; }},
        {"renaming the preset", [](WorkingPreset& p) { p.Name = "Renamed"; }},
        {"notes gaining blanks", [](WorkingPreset& p) { p.Notes = "  Some notes "; }},
        {"a scene's values", [](WorkingPreset& p) { p.Scenes[0].Values[3] = 40; }},
        {"the scene count", [](WorkingPreset& p) { p.SceneCount = 4; }},
        {"a scene's owner on a button", [](WorkingPreset& p) { p.Buttons[1].ScenePreset = 77; }},
        {"a fader's substring alone", [](WorkingPreset& p) { p.FaderStrings[3].Slots[0].EnteredString = "F6"; }},
        {"the setup string's count alone", [](WorkingPreset& p) { p.SetupStrings.Count = 4; }},
        {"the setup string's text alone", [](WorkingPreset& p) { p.SetupString = "FA"; }},
        {"slot 50", [](WorkingPreset& p) { p.ButtonStrings1[0].Slots[50].ListItem = "x"; }},
        {"the pool ID", [](WorkingPreset& p) { p.ID = 8; }},
    };
    for (const Edit& edit : edits) {
        Loaded l;
        edit.apply(l.preset);
        EXPECT_FALSE(l.changed()) << edit.what;
    }
}

// The comparison is with the copy, not a flag: undoing every edit by hand
// makes the preset clean again.
TEST(INITDataChanged, UndoingAnEditByHandMakesItCleanAgain) {
    Loaded l;
    l.preset.Buttons[7].Channel = 4;
    l.preset.Faders[3].Channel = 2;
    l.preset.Buttons[7].Channel = kChannelOut;
    EXPECT_TRUE(l.changed());
    l.preset.Faders[3].Channel = kChannelOut;
    EXPECT_FALSE(l.changed());
}

}  // namespace
