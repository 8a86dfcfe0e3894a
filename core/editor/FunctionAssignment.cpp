#include "editor/FunctionAssignment.h"

#include <algorithm>
#include <utility>

#include "editor/EditorDefaults.h"
#include "editor/ParameterRanges.h"
#include "editor/EditorSelection.h"
#include "editor/ParameterText.h"
#include "base/MSBModule.h"
#include "sysex/PresetCodes.h"
#include "ui/Prompter.h"

namespace tavlo {

FaderControls FaderControlsFor(int f) {
    FaderControls c;
    c.InitFaderButton = f >= 1 && f <= 4;
    c.NameAndValue = f >= 1 && f <= 3;
    c.MinMax = f == 1 || f == 3;
    c.Channel = f == 1;
    c.CCNum = f == 1;
    c.Mode = f == 1;
    c.ParamFormat = f == 3;
    c.EditString = f == 3;
    c.MasterFader = f == 2;
    c.MapFaderButton = f >= 1 && f <= 3;
    c.DeviceGroup = f == 4;
    return c;
}

ButtonControls ButtonControlsFor(int f) {
    ButtonControls c;
    c.InitButtonButton = f >= 1 && f <= 9;
    c.Name = f >= 1 && f <= 9;
    c.Channel = f == 3 || f == 4;
    c.ProgChange = f == 3;
    c.Note = f == 4;
    c.Velocity = f == 4;
    c.String1 = f >= 5 && f <= 7;
    c.String2 = f == 6 || f == 7;
    c.Scene = f == 9;
    c.MapButtonButton = f >= 0 && f <= 9;
    c.DeviceGroup = f == 10;
    return c;
}

ValueRange ParamFormatRange(int paramFormat) {
    switch (paramFormat) {
        case 0: return {-128, 127};
        case 5:
        case 6: return {-256, 255};
        case 7:
        case 8: return {-4096, 4095};
        case 11:
        case 12: return {-100, 99};
        default: return {-16384, 16383};  // 1-4, 9, 10: one fixed limit
    }
}

ValueRange MinMaxRangeOnChoice(int function, int paramFormat) {
    if (function == 3) return ParamFormatRange(paramFormat);
    if (function == 4) return {-16384, 16383};
    return {0, 127};
}

ValueRange MinMaxRangeShown(int function, int paramFormat) {
    if (function == 3) return ParamFormatRange(paramFormat);
    if (function == 2) return {-32000, 32000};
    return {0, 127};
}

namespace {

FaderDef& currentFader(EditorState& editor) { return editor.preset.Faders.at(editor.CurrentFader); }
ButtonDef& currentButton(EditorState& editor) { return editor.preset.Buttons.at(editor.CurrentButton); }

// Narrowing the range sliders moves Min and Max inside, as the sliders'
// own change handlers would.
void narrowRange(EditorState& editor, ValueRange range) {
    editor.MinMaxSliderMin = range.low;
    editor.MinMaxSliderMax = range.high;
    FaderDef& fader = currentFader(editor);
    const int min = std::clamp<int>(fader.Min, range.low, range.high);
    const int max = std::clamp<int>(fader.Max, range.low, range.high);
    if (min != fader.Min) SetFaderMin(editor, min);
    if (max != fader.Max) SetFaderMax(editor, max);
}

std::string defaultFaderName(int index) {
    return index < 16 ? "Fader #" + std::to_string(index + 1) : "CV #" + std::to_string(index - 15);
}

void afterRangeChange(FaderDef& fader) {
    fader.Polarity = fader.Max > fader.Min ? -1 : 0;
    const ValueRange range = PCSliderRange(fader);
    fader.Value = static_cast<std::int16_t>(std::clamp<int>(fader.Value, range.low, range.high));
}

// The changed end steps down by one, or up when it stands at the bottom of
// the sliders' range: the two ends are never equal.
int apart(int changed, int other, int low) {
    if (changed != other) return changed;
    return changed > low ? changed - 1 : changed + 1;
}

}  // namespace

void ChooseFaderFunction(EditorState& editor, Database& db, int function) {
    if (editor.ShowingParams) return;
    const int index = editor.CurrentFader;
    FaderDef& fader = currentFader(editor);
    fader.DeviceMapString.clear();
    editor.FunctionComboIndex = function;
    if (function == PresetCodes::kFaderDeviceEntry) {
        editor.notifyChanged();
        return;
    }
    if (function != fader.Function) {
        if (function == 1) {
            if (auto mode = ReadDefaultNumber(db, "ReplaceMode"); mode && *mode >= 0 && *mode <= 2)
                fader.ReplaceMode = static_cast<std::int16_t>(*mode);
            if (auto channel = ReadDefaultNumber(db, "FaderChannel"))
                fader.Channel = ClampedTo(kChannelRange, *channel);
            if (auto cc = ReadDefaultNumber(db, "CCNum")) fader.CCNum = ClampedTo(kCCNumRange, *cc);
        } else if (function == 3) {
            if (auto format = ReadDefaultNumber(db, "ParamFormat"); format && *format >= 0 && *format <= 12)
                fader.ParamFormat = static_cast<std::int16_t>(*format);
        }
    }
    fader.Function = static_cast<std::int16_t>(function);
    narrowRange(editor, MinMaxRangeOnChoice(function, fader.ParamFormat));
    if (function == 0) {
        fader.Name.clear();
        editor.FaderLabel[index].clear();
    } else if (MSBModule::Trim(fader.Name).empty()) {
        fader.Name = defaultFaderName(index);
        editor.FaderLabel[index] = PresetCodes::CaptionWithTag(fader.Name, PresetCodes::kFaderFunctions[function].tag);
    } else {
        editor.FaderLabel[index] = FaderCaption(fader);
    }
    editor.notifyChanged();
}

bool ChooseButtonFunction(EditorState& editor, Database& db, Prompter& prompter, bool pc1600Model, int function) {
    if (editor.ShowingParams) return true;
    if (pc1600Model &&
        (function == PresetCodes::kButtonSendFader || function == PresetCodes::kButtonSendScene)) {
        prompter.message("Cannot Set Button",
                         "The PC1600 version (non-X) cannot set buttons to SEND FADER or SEND SCENE");
        // The list goes back to "Off (Fader ID)", and that choice is made.
        ChooseButtonFunction(editor, db, prompter, pc1600Model, 0);
        return false;
    }
    ButtonDef& button = currentButton(editor);
    button.DeviceMapString.clear();
    editor.BFunctionComboIndex = function;
    if (function == PresetCodes::kButtonDeviceEntry) {
        editor.notifyChanged();
        return true;
    }
    if (function != button.Function && (function == 3 || function == 4)) {
        if (auto channel = ReadDefaultNumber(db, "ButtonChannel"))
            button.Channel = ClampedTo(kChannelRange, *channel);
        if (function == 3) {
            if (auto program = ReadDefaultNumber(db, "ProgChange"))
                button.ProgChange = ClampedTo(kProgChangeRange, *program);
        } else {
            if (auto note = ReadDefaultNumber(db, "Note")) button.Note = ClampedTo(kNoteRange, *note);
            if (auto velocity = ReadDefaultNumber(db, "Velocity"))
                button.Velocity = ClampedTo(kVelocityRange, *velocity);
        }
    }
    button.Function = static_cast<std::int16_t>(function);
    editor.PCButton[editor.CurrentButton] = ButtonCaption(button);
    editor.notifyChanged();
    return true;
}

void SetFaderName(EditorState& editor, const std::string& text) {
    if (editor.ShowingParams) return;
    FaderDef& fader = currentFader(editor);
    fader.Name = MSBModule::FilterNameCharacters(text).substr(0, kControlNameLength);
    editor.FaderLabel[editor.CurrentFader] = FaderCaption(fader);
    editor.notifyChanged();
}

void SetFaderChannel(EditorState& editor, int channel) {
    if (editor.ShowingParams) return;
    currentFader(editor).Channel = ClampedTo(kChannelRange, channel);
    editor.notifyChanged();
}

void SetFaderCCNum(EditorState& editor, int ccNum) {
    if (editor.ShowingParams) return;
    currentFader(editor).CCNum = ClampedTo(kCCNumRange, ccNum);
    editor.notifyChanged();
}

void SetReplaceMode(EditorState& editor, int mode) {
    if (editor.ShowingParams) return;
    currentFader(editor).ReplaceMode = ClampedTo(kReplaceModeRange, mode);
    editor.notifyChanged();
}

void SetParamFormat(EditorState& editor, int paramFormat) {
    if (editor.ShowingParams || editor.FormatLock) return;
    FaderDef& fader = currentFader(editor);
    fader.ParamFormat = ClampedTo(kParamFormatRange, paramFormat);
    if (fader.Function == 3) narrowRange(editor, ParamFormatRange(fader.ParamFormat));
    editor.notifyChanged();
}

void SetMasterCheck(EditorState& editor, int k, bool checked) {
    if (editor.ShowingParams || k == editor.CurrentFader) return;
    FaderDef& fader = currentFader(editor);
    fader.MasterOf.resize(kFaderCount, ' ');
    fader.MasterOf.at(k) = checked ? 'X' : ' ';
    editor.Check1.at(k) = checked;
    editor.notifyChanged();
}

void SetFaderMin(EditorState& editor, int value) {
    if (editor.ShowingParams) return;
    FaderDef& fader = currentFader(editor);
    value = std::clamp(value, editor.MinMaxSliderMin, editor.MinMaxSliderMax);
    fader.Min = static_cast<std::int16_t>(apart(value, fader.Max, editor.MinMaxSliderMin));
    afterRangeChange(fader);
    editor.notifyChanged();
}

void SetFaderMax(EditorState& editor, int value) {
    if (editor.ShowingParams) return;
    FaderDef& fader = currentFader(editor);
    value = std::clamp(value, editor.MinMaxSliderMin, editor.MinMaxSliderMax);
    fader.Max = static_cast<std::int16_t>(apart(value, fader.Min, editor.MinMaxSliderMin));
    afterRangeChange(fader);
    editor.notifyChanged();
}

void SwapMinMax(EditorState& editor) {
    if (editor.ShowingParams) return;
    FaderDef& fader = currentFader(editor);
    std::swap(fader.Min, fader.Max);
    afterRangeChange(fader);
    editor.notifyChanged();
}

void SetFaderValueText(EditorState& editor, std::string_view text) {
    if (editor.ShowingParams) return;
    FaderDef& fader = currentFader(editor);
    const ValueRange range = PCSliderRange(fader);
    fader.Value = static_cast<std::int16_t>(ParameterText::ParseRangeText(text, range.low, range.high));
    editor.notifyChanged();
}

void SetButtonName(EditorState& editor, const std::string& text) {
    if (editor.ShowingParams) return;
    ButtonDef& button = currentButton(editor);
    button.Name = MSBModule::FilterNameCharacters(text).substr(0, kControlNameLength);
    editor.PCButton[editor.CurrentButton] = ButtonCaption(button);
    editor.notifyChanged();
}

void SetButtonChannel(EditorState& editor, int channel) {
    if (editor.ShowingParams) return;
    currentButton(editor).Channel = ClampedTo(kChannelRange, channel);
    editor.notifyChanged();
}

void SetButtonNote(EditorState& editor, int note) {
    if (editor.ShowingParams) return;
    currentButton(editor).Note = ClampedTo(kNoteRange, note);
    editor.notifyChanged();
}

void SetButtonVelocity(EditorState& editor, int velocity) {
    if (editor.ShowingParams) return;
    currentButton(editor).Velocity = ClampedTo(kVelocityRange, velocity);
    editor.notifyChanged();
}

void SetButtonProgChange(EditorState& editor, int progChange) {
    if (editor.ShowingParams) return;
    currentButton(editor).ProgChange = ClampedTo(kProgChangeRange, progChange);
    editor.notifyChanged();
}

void SwapButtonStrings(EditorState& editor) {
    if (editor.ShowingParams) return;
    const int index = editor.CurrentButton;
    ButtonDef& button = currentButton(editor);
    std::swap(button.String1, button.String2);
    std::swap(editor.preset.ButtonStrings1.at(index), editor.preset.ButtonStrings2.at(index));
    editor.notifyChanged();
}

void InitFader(EditorState& editor, int index) {
    FaderDef& fader = editor.preset.Faders.at(index);
    fader = FaderDef{};
    fader.Channel = 1;  // deliberately 1 here, where a whole new preset has 16
    editor.preset.FaderStrings.at(index).clear();
    editor.FaderLabel.at(index).clear();
    if (index == editor.CurrentFader && editor.ShownFrame == EditorFrame::Fader) ShowFaderParams(editor, index);
    editor.notifyChanged();
}

void InitButton(EditorState& editor, int index) {
    editor.preset.Buttons.at(index) = ButtonDef{};
    editor.preset.ButtonStrings1.at(index).clear();
    editor.preset.ButtonStrings2.at(index).clear();
    editor.PCButton.at(index).clear();
    if (index == editor.CurrentButton && editor.ShownFrame == EditorFrame::Button) ShowButtonParams(editor, index);
    editor.notifyChanged();
}

std::string_view DefaultFieldOfLabel(std::string_view labelName) {
    static constexpr std::pair<std::string_view, std::string_view> kLabels[] = {
        {"BChannelLabel", "ButtonChannel"}, {"BNoteLabel", "Note"},
        {"VelocityLabel", "Velocity"},      {"BProgChangeLabel", "ProgChange"},
        {"ChannelLabel", "FaderChannel"},   {"CCNumLabel", "CCNum"},
        {"ModeLabel", "ReplaceMode"},       {"ParamFormatLabel", "ParamFormat"},
        {"DataWheelLabel1", "DataWheelLink"},
    };
    for (const auto& [label, field] : kLabels)
        if (label == labelName) return field;
    return {};
}

}  // namespace tavlo
