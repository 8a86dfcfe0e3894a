#include "editor/PresetOperations.h"

#include <algorithm>
#include <stdexcept>

#include "editor/EditorSelection.h"
#include "editor/FunctionAssignment.h"
#include "base/MSBModule.h"
#include "sysex/PresetCodes.h"
#include "ui/Prompter.h"

namespace tavlo {

int PC1600xFormFaderFunction(const EditorState& editor, int index) {
    if (index < 0 || index >= kFaderCount) return -1;
    return editor.preset.Faders[index].Function;
}

int PC1600xFormButtonFunction(const EditorState& editor, int index) {
    if (index < 0 || index >= kButtonCount) return -1;
    return editor.preset.Buttons[index].Function;
}

void PC1600xInitSetupParams(EditorState& editor) {
    for (SetupChannelDef& channel : editor.preset.SetupChannels) channel = SetupChannelDef{};
    editor.notifyChanged();
}

void PC1600xSetSetupParams(EditorState& editor, bool pc1600Model, Prompter& prompter, int channel, int bankMSB,
                           int bankLSB, int program, int volume) {
    SetupChannelDef& setup = editor.preset.SetupChannels.at(channel);
    if (program >= 0) setup.ProgChange = static_cast<std::int16_t>(program + 1);
    if (volume >= 0) setup.Volume = static_cast<std::int16_t>(volume + 1);
    if (bankLSB >= 0 && bankMSB >= 0) {
        // Both given: the LSB wins.
        setup.BankIsMSB = 0;
        setup.Bank = static_cast<std::int16_t>(bankLSB + 1);
    } else if (bankMSB >= 0) {
        if (pc1600Model) {
            prompter.message("Cannot Send BankMSB",
                             "The PC1600 version 1.1 Model cannot support BankMSBs in the Channel Setup information.  "
                             "This Preset will send the BankLSB instead.");
            setup.BankIsMSB = 0;
        } else {
            setup.BankIsMSB = 1;
        }
        setup.Bank = static_cast<std::int16_t>(bankMSB + 1);
    } else if (bankLSB >= 0) {
        setup.BankIsMSB = 0;
        setup.Bank = static_cast<std::int16_t>(bankLSB + 1);
    }
    editor.notifyChanged();
}

namespace {

// Format names of the device library, by whether the value fills 2 bytes.
int paramFormatFromLibrary(const std::string& formatName, int byteCount, int current) {
    struct Row {
        const char* name;
        int twoBytes;
        int otherwise;
    };
    static constexpr Row kRows[] = {
        {"", 0, 0},
        {"Single byte", 0, 0},
        {"7 bits per byte, H-L", 1, 4},
        {"7 bits per byte, L-H", 2, 3},
        {"Nibs, H-L", 5, 7},
        {"Nibs, L-H", 6, 8},
        {"BCD, H-L", 11, 11},
        {"BCD, L-H", 12, 12},
    };
    for (const Row& row : kRows)
        if (formatName == row.name) return byteCount == 2 ? row.twoBytes : row.otherwise;
    return current;
}

}  // namespace

ValueRange FaderRangeLimits(int function) {
    switch (function) {
        case 2: return {-32000, 32000};
        case 3: return {-16384, 16383};
        default: return {0, 127};
    }
}

void ClampFaderRange(FaderDef& fader) {
    // The range sliders as showing the fader sets them: a string fader's
    // range follows its parameter format.
    const ValueRange limits = MinMaxRangeShown(fader.Function, fader.ParamFormat);
    fader.Min = static_cast<std::int16_t>(std::clamp<int>(fader.Min, limits.low, limits.high));
    fader.Max = static_cast<std::int16_t>(std::clamp<int>(fader.Max, limits.low, limits.high));
    // The two ends are kept apart: Min steps down, or up at the bottom of the range.
    if (fader.Min == fader.Max) {
        if (fader.Min > limits.low) --fader.Min;
        else ++fader.Max;
    }
    fader.Polarity = fader.Max > fader.Min ? -1 : 0;
    const int low = std::min(fader.Min, fader.Max);
    const int high = std::max(fader.Min, fader.Max);
    fader.Value = static_cast<std::int16_t>(std::clamp<int>(fader.Value, low, high));
}

void SelectFader(EditorState& editor, int index) {
    if (index < 0 || index >= kFaderCount) throw std::out_of_range("fader index");
    editor.CurrentFader = static_cast<std::int16_t>(index);
    editor.BorderedSlider = index;
    editor.ShownFrame = EditorFrame::Fader;
    // Selecting shows: the frame is filled from the fader (also after a load).
    ShowFaderParams(editor, index);
}

void PC1600xSetFaderFunction(EditorState& editor, int index, const std::string& name, int function, int min, int max,
                             int channel, int ccNum, const std::string& midiString, const std::string& formatName,
                             const std::string& masterOf, int byteCount) {
    FaderDef& fader = editor.preset.Faders.at(index);
    editor.preset.FaderStrings.at(index).Count = 0;
    const std::string format = MSBModule::Trim(formatName);

    fader.Name = name;
    fader.CCNum = static_cast<std::int16_t>(ccNum);
    fader.Channel = static_cast<std::int16_t>(channel - 1);
    fader.DeviceMapString.clear();
    fader.Function = static_cast<std::int16_t>(function);
    fader.MasterOf = masterOf;
    fader.Max = static_cast<std::int16_t>(max);
    fader.Min = static_cast<std::int16_t>(min);
    fader.MIDIString = midiString;
    fader.ParamFormat = static_cast<std::int16_t>(paramFormatFromLibrary(format, byteCount, fader.ParamFormat));

    fader.Polarity = -1;
    fader.ReplaceMode = 0;
    fader.Value = fader.Min;

    const std::string_view tag =
        function >= 1 && function <= 3 ? PresetCodes::kFaderFunctions[function].tag : std::string_view();
    editor.FaderLabel.at(index) = PresetCodes::CaptionWithTag(name, tag);

    SelectFader(editor, index);
    ClampFaderRange(fader);
    ShowFaderParams(editor, index);
    editor.notifyChanged();
}

void PC1600xSetButtonFunction(EditorState& editor, int index, const std::string& name, int function, int channel,
                              int progChange, int velocity, int note, const std::string& string1,
                              const std::string& string2) {
    ButtonDef& button = editor.preset.Buttons.at(index);
    editor.preset.ButtonStrings1.at(index).Count = 0;
    editor.preset.ButtonStrings2.at(index).Count = 0;

    std::string tag;
    switch (function) {
        case 3: tag = "pc"; break;
        case 5: tag = "st"; break;
        case 6: tag = "pr/r"; break;
        case 7: tag = "togl"; break;
        case 4: tag = "note"; break;
        default: break;
    }

    button.Channel = static_cast<std::int16_t>(channel);
    button.DeviceMapString.clear();
    button.Function = static_cast<std::int16_t>(function);
    button.Name = name;
    button.Note = static_cast<std::int16_t>(note);
    button.ProgChange = static_cast<std::int16_t>(progChange);
    button.Scene = kNoScene;
    button.ScenePreset = -1;
    button.String1 = string1;
    button.String2 = string2;
    button.Velocity = static_cast<std::int16_t>(velocity);

    // The caption always carries the brackets here, empty tag or not.
    editor.PCButton.at(index) = name + " (" + tag + ")";
    editor.notifyChanged();
}

namespace {

void writeSubstring(MessageStringSet& set, int slot, int commandType, int commandChannel, int value1, int value2,
                    const std::string& enteredString, const std::string& listItem) {
    ++set.Count;
    MessageSubstring& s = set.Slots.at(slot);
    s.CommandChannel = static_cast<std::int16_t>(commandChannel);
    s.CommandType = static_cast<std::int16_t>(commandType);
    s.EnteredString = enteredString;
    s.ListItem = listItem;
    s.OwnCheck = 0;
    s.SysexMake.clear();
    s.SysexModel.clear();
    s.Value1 = static_cast<std::int16_t>(value1);
    s.Value2 = static_cast<std::int16_t>(value2);
}

}  // namespace

void PC1600xSetFaderString(EditorState& editor, int index, int slot, int commandType, int commandChannel, int value1,
                           int value2, const std::string& enteredString, const std::string& listItem) {
    writeSubstring(editor.preset.FaderStrings.at(index), slot, commandType, commandChannel, value1, value2,
                   enteredString, listItem);
    editor.notifyChanged();
}

void PC1600xSetButtonString(EditorState& editor, int index, int slot, int whichString, int commandType,
                            int commandChannel, int value1, int value2, const std::string& enteredString,
                            const std::string& listItem) {
    auto& sets = whichString == 2 ? editor.preset.ButtonStrings2 : editor.preset.ButtonStrings1;
    writeSubstring(sets.at(index), slot, commandType, commandChannel, value1, value2, enteredString, listItem);
    editor.notifyChanged();
}

}  // namespace tavlo
