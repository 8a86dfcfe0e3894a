#include "editor/EditorSelection.h"

#include <algorithm>
#include <stdexcept>

#include "editor/FunctionAssignment.h"
#include "base/MSBModule.h"
#include "sysex/PresetCodes.h"

namespace tavlo {

std::string FaderCaption(const FaderDef& fader) {
    if (fader.Function < 1 || fader.Function > 3) return MSBModule::Trim(fader.Name);
    return MSBModule::Trim(fader.Name) + "  (" + std::string(PresetCodes::kFaderFunctions[fader.Function].tag) + ")";
}

std::string ButtonCaption(const ButtonDef& button) {
    std::string_view tag;
    if (button.Function >= 1 && button.Function <= 9) tag = PresetCodes::kButtonFunctions[button.Function].tag;
    return PresetCodes::CaptionWithTag(MSBModule::Trim(button.Name), tag);
}

void RedrawCaptions(EditorState& editor) {
    for (int i = 0; i < kFaderCount; ++i) editor.FaderLabel[i] = FaderCaption(editor.preset.Faders[i]);
    for (int i = 0; i < kButtonCount; ++i) editor.PCButton[i] = ButtonCaption(editor.preset.Buttons[i]);
}

std::string FaderFrameCaptionFor(int index) {
    if (index < 16) return "Control Settings for FADER " + std::to_string(index + 1);
    return "Control Settings for CV " + std::to_string(index - 15);
}

ValueRange PCSliderRange(const FaderDef& fader) {
    return {std::min<int>(fader.Min, fader.Max), std::max<int>(fader.Min, fader.Max)};
}

int FaderValueAt(const FaderDef& fader, int position) {
    return fader.Polarity != 0 ? position : fader.Max - position + fader.Min;
}

int PCSliderPosition(const FaderDef& fader) {
    const ValueRange range = PCSliderRange(fader);
    const int position = fader.Polarity != 0 ? fader.Value : fader.Max - fader.Value + fader.Min;
    return std::clamp(position, range.low, range.high);
}

void SetPCSliderPosition(EditorState& editor, int index, int position) {
    FaderDef& fader = editor.preset.Faders.at(index);
    const ValueRange range = PCSliderRange(fader);
    fader.Value = static_cast<std::int16_t>(FaderValueAt(fader, std::clamp(position, range.low, range.high)));
    editor.notifyChanged();
}

void ShowFaderParams(EditorState& editor, int index) {
    const FaderDef& fader = editor.preset.Faders.at(index);
    editor.ShowingParams = true;
    editor.FaderFrameCaption = FaderFrameCaptionFor(index);
    editor.FunctionComboIndex = fader.Function;
    const ValueRange range = MinMaxRangeShown(fader.Function, fader.ParamFormat);
    editor.MinMaxSliderMin = range.low;
    editor.MinMaxSliderMax = range.high;
    editor.HighlightedButton = -1;
    for (int k = 0; k < kFaderCount; ++k)
        editor.Check1[k] = k < static_cast<int>(fader.MasterOf.size()) && fader.MasterOf[k] == 'X';
    // A fader can't be master of itself: its own box shows unchecked and
    // disabled, whatever MasterOf holds.
    editor.Check1[index] = false;
    editor.BorderedSlider = index;
    editor.ShownFrame = EditorFrame::Fader;
    editor.ShowingParams = false;
    editor.notifyChanged();
}

std::string SceneNameOfLine(const std::string& line) {
    size_t cut = line.find("  - from");
    cut = std::min(cut, line.find(" [p:"));
    return line.substr(0, cut);
}

int SceneLineFor(const ListState& list, const std::string& scene, std::int64_t scenePreset, std::int64_t ownID) {
    if (scene.empty() || scene == kNoScene || scenePreset == 0 || scenePreset == -1) return list.listCount() > 0 ? 0 : -1;
    int byName = -1;
    for (int i = 0; i < list.listCount(); ++i) {
        if (SceneNameOfLine(list.list(i)) != scene) continue;
        const bool other = list.list(i).find("  - from") != std::string::npos;
        if (list.itemData(i) == scenePreset || (!other && scenePreset == ownID)) return i;
        if (byName < 0) byName = i;
    }
    return byName >= 0 ? byName : (list.listCount() > 0 ? 0 : -1);
}

void ShowButtonParams(EditorState& editor, int index) {
    const ButtonDef& button = editor.preset.Buttons.at(index);
    editor.ShowingParams = true;
    editor.BorderedSlider = -1;
    editor.BFunctionComboIndex = button.Function;
    editor.ButtonFrameCaption = "Settings for Button #" + std::to_string(index + 1);
    if (editor.BSceneCombo.listCount() > 0)
        editor.BSceneCombo.setListIndex(
            SceneLineFor(editor.BSceneCombo, button.Scene, button.ScenePreset, editor.preset.ID));
    editor.ShownFrame = EditorFrame::Button;
    editor.ShowingParams = false;
    editor.notifyChanged();
}

bool ClickFader(EditorState& editor, int index) {
    if (index < 0 || index >= kFaderCount) throw std::out_of_range("fader index");
    if (index == editor.CurrentFader && editor.ShownFrame == EditorFrame::Fader) return false;
    SelectFader(editor, index);
    return true;
}

bool ClickButton(EditorState& editor, int index) {
    if (index < 0 || index >= kButtonCount) throw std::out_of_range("button index");
    if (index == editor.CurrentButton && editor.ShownFrame == EditorFrame::Button) return false;
    editor.CurrentButton = static_cast<std::int16_t>(index);
    editor.HighlightedButton = index;
    ShowButtonParams(editor, index);
    return true;
}

void ShowSetupFrame(EditorState& editor) {
    editor.BorderedSlider = -1;
    editor.HighlightedButton = -1;
    editor.SChannel = 0;
    editor.ShownFrame = EditorFrame::Setup;
    editor.notifyChanged();
}

}  // namespace tavlo
