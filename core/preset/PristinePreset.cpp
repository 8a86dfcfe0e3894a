#include "preset/PristinePreset.h"

#include "base/MSBModule.h"

namespace tavlo {
namespace {

void copySlots(const MessageStringSet& from, MessageStringSet& to) {
    for (int slot = 0; slot < kSubstringLimit; ++slot)
        to.Slots[static_cast<std::size_t>(slot)] = from.Slots[static_cast<std::size_t>(slot)];
    to.Count = from.Count;
}

bool sameSlot(const MessageSubstring& a, const MessageSubstring& b) {
    return a.CommandType == b.CommandType && a.Value1 == b.Value1 && a.Value2 == b.Value2 &&
           a.CommandChannel == b.CommandChannel && a.SysexMake == b.SysexMake && a.SysexModel == b.SysexModel &&
           a.EnteredString == b.EnteredString && a.ListItem == b.ListItem && a.OwnCheck == b.OwnCheck;
}

bool sameSlots(const MessageStringSet& a, const MessageStringSet& b) {
    for (int slot = 0; slot < kSubstringLimit; ++slot)
        if (!sameSlot(a.Slots[static_cast<std::size_t>(slot)], b.Slots[static_cast<std::size_t>(slot)])) return false;
    return true;
}

bool sameFader(const FaderDef& a, const FaderDef& b) {
    return a.Name == b.Name && a.Function == b.Function && a.Min == b.Min && a.Max == b.Max &&
           a.Channel == b.Channel && a.CCNum == b.CCNum && a.ReplaceMode == b.ReplaceMode &&
           a.MIDIString == b.MIDIString && a.ParamFormat == b.ParamFormat && a.MasterOf == b.MasterOf &&
           a.Polarity == b.Polarity && a.DeviceMapString == b.DeviceMapString;
}

// ScenePreset isn't compared: the name of the scene stands for the reference.
bool sameButton(const ButtonDef& a, const ButtonDef& b) {
    return a.Name == b.Name && a.Function == b.Function && a.Channel == b.Channel && a.ProgChange == b.ProgChange &&
           a.Velocity == b.Velocity && a.String1 == b.String1 && a.String2 == b.String2 && a.Scene == b.Scene &&
           a.Note == b.Note && a.DeviceMapString == b.DeviceMapString;
}

}  // namespace

void UpdateINITData(const WorkingPreset& from, WorkingPreset& to) {
    // The notes are kept trimmed, as they are compared.
    to.Notes = MSBModule::Trim(from.Notes);
    for (std::size_t i = 0; i < kFaderCount; ++i) {
        const std::int16_t value = to.Faders[i].Value;
        to.Faders[i] = from.Faders[i];
        to.Faders[i].Value = value;  // a fader's position is no part of the preset's edits
        copySlots(from.FaderStrings[i], to.FaderStrings[i]);
    }
    for (std::size_t i = 0; i < kButtonCount; ++i) {
        to.Buttons[i] = from.Buttons[i];
        copySlots(from.ButtonStrings1[i], to.ButtonStrings1[i]);
        copySlots(from.ButtonStrings2[i], to.ButtonStrings2[i]);
    }
    to.SetupChannels = from.SetupChannels;
    copySlots(from.SetupStrings, to.SetupStrings);
    to.SetupScene = from.SetupScene;
    to.SetupScenePreset = from.SetupScenePreset;
    to.DataWheelLink = from.DataWheelLink;
    to.SceneCount = from.SceneCount;
}

bool INITDataChanged(const WorkingPreset& now, const WorkingPreset& was) {
    if (MSBModule::Trim(now.Notes) != was.Notes) return true;
    for (std::size_t i = 0; i < kFaderCount; ++i) {
        if (!sameFader(now.Faders[i], was.Faders[i])) return true;
        if (i >= kButtonCount) continue;
        if (!sameButton(now.Buttons[i], was.Buttons[i])) return true;
        if (now.ButtonStrings1[i].Count != was.ButtonStrings1[i].Count ||
            now.ButtonStrings2[i].Count != was.ButtonStrings2[i].Count)
            return true;
        if (!sameSlots(now.ButtonStrings1[i], was.ButtonStrings1[i]) ||
            !sameSlots(now.ButtonStrings2[i], was.ButtonStrings2[i]))
            return true;
    }
    for (std::size_t ch = 0; ch < kSetupChannelCount; ++ch)
        if (!(now.SetupChannels[ch] == was.SetupChannels[ch])) return true;
    if (!sameSlots(now.SetupStrings, was.SetupStrings)) return true;
    return now.SetupScene != was.SetupScene || now.SetupScenePreset != was.SetupScenePreset ||
           now.DataWheelLink != was.DataWheelLink;
}

}  // namespace tavlo
