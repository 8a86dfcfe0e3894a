// Which changes of a preset count as edits since its pristine copy: the
// comparison goes field by field, so every field has its row.
#include "preset/PristinePreset.h"

#include <gtest/gtest.h>

#include <functional>

using namespace tavlo;

namespace {

// An edit, named by its own code.
struct Edit {
    const char* what;
    std::function<void(WorkingPreset&)> apply;
};
#define EDIT(code) Edit{#code, [](WorkingPreset& p) { code; }}

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
        EDIT(p.Notes = "Other notes"), EDIT(p.Faders[0].Name = "X"), EDIT(p.Faders[3].Function = 2),
        EDIT(p.Faders[5].Min = 1), EDIT(p.Faders[5].Max = 1), EDIT(p.Faders[17].Channel = 3),
        EDIT(p.Faders[16].CCNum = 7), EDIT(p.Faders[1].ReplaceMode = 1), EDIT(p.Faders[1].MIDIString = "F6"),
        EDIT(p.Faders[1].ParamFormat = 3), EDIT(p.Faders[1].MasterOf[4] = 'X'), EDIT(p.Faders[1].Polarity = 0),
        EDIT(p.Faders[1].DeviceMapString = "Synth"), EDIT(p.Buttons[15].Name = "B"), EDIT(p.Buttons[0].Function = 1),
        EDIT(p.Buttons[0].Channel = 1), EDIT(p.Buttons[0].ProgChange = 1), EDIT(p.Buttons[0].Velocity = 1),
        EDIT(p.Buttons[0].Note = 1), EDIT(p.Buttons[2].String1 = "90 3C 00"), EDIT(p.Buttons[2].String2 = "F6"),
        EDIT(p.Buttons[2].Scene = "Verse"), EDIT(p.Buttons[2].DeviceMapString = "Synth"),
        EDIT(p.ButtonStrings1[2].Count = 0), EDIT(p.ButtonStrings2[9].Count = 1),
        EDIT(p.ButtonStrings1[2].Slots[0].Value1 = 9), EDIT(p.ButtonStrings2[4].Slots[49].ListItem = "x"),
        EDIT(p.ButtonStrings1[4].Slots[1].SysexMake = "Roland"), EDIT(p.SetupChannels[15].BankIsMSB = 1),
        EDIT(p.SetupChannels[0].Volume = 1), EDIT(p.SetupStrings.Slots[3].OwnCheck = 0),
        EDIT(p.SetupStrings.Slots[0].EnteredString = "FA"), EDIT(p.SetupScene = "Intro"), EDIT(p.SetupScenePreset = 12),
        EDIT(p.DataWheelLink = 19),
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

// Moving a fader, renaming, scenes, a fader's substrings and the setup
// string's text and count alone, slot 50 and the pool ID are no edits.
TEST(INITDataChanged, ChangesThatAreNoEdits) {
    const Edit edits[] = {
        EDIT(p.Faders[0].Value = 99), EDIT(p.Name = "Renamed"), EDIT(p.Notes = "  Some notes "),
        EDIT(p.Scenes[0].Values[3] = 40), EDIT(p.SceneCount = 4), EDIT(p.Buttons[1].ScenePreset = 77),
        EDIT(p.FaderStrings[3].Slots[0].EnteredString = "F6"), EDIT(p.SetupStrings.Count = 4),
        EDIT(p.SetupString = "FA"), EDIT(p.ButtonStrings1[0].Slots[50].ListItem = "x"), EDIT(p.ID = 8),
    };
    for (const Edit& edit : edits) {
        Loaded l;
        edit.apply(l.preset);
        EXPECT_FALSE(l.changed()) << edit.what;
    }
}

}  // namespace
