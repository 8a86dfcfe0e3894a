#pragma once
#include <cstddef>
#include <string>
#include <string_view>

#include "editor/EditorState.h"
#include "editor/PresetOperations.h"

namespace tavlo {

class Database;
class Prompter;

// Which controls of the fader frame show for a FunctionCombo entry.
struct FaderControls {
    bool InitFaderButton = false;
    bool NameAndValue = false;   // NameText, NameLabel, ValueText, ValueLabel
    bool MinMax = false;         // MinVal/MaxVal sliders, texts, labels; SwapMinMaxButton
    bool Channel = false;        // ChannelSlider, ChannelText, ChannelLabel
    bool CCNum = false;          // CCNumSlider, CCNameListCombo, CCNumLabel
    bool Mode = false;           // ModeCombo, ModeLabel
    bool ParamFormat = false;    // ParamFormatCombo, ParamFormatLabel
    bool EditString = false;     // EditStringText, EditStringButton, EditStringLabel
    bool MasterFader = false;    // MasterFaderLabel and the 18 Check1 boxes
    bool MapFaderButton = false;
    bool DeviceGroup = false;    // make, model, own-only, device function, get
};
FaderControls FaderControlsFor(int functionComboIndex);

// Which controls of the button frame show for a BFunctionCombo entry.
struct ButtonControls {
    bool InitButtonButton = false;
    bool Name = false;
    bool Channel = false;
    bool ProgChange = false;
    bool Note = false;
    bool Velocity = false;
    bool String1 = false;
    bool String2 = false;        // with SwapStringsButton
    bool Scene = false;          // BSceneCombo, BSceneLabel, BOtherSceneButton
    bool MapButtonButton = false;
    bool DeviceGroup = false;
};
ButtonControls ButtonControlsFor(int functionComboIndex);

// Range of MinValSlider and MaxValSlider for a Single byte .. BCD format.
ValueRange ParamFormatRange(int paramFormat);
// The range as choosing a function sets it.
ValueRange MinMaxRangeOnChoice(int function, int paramFormat);
// The range as showing a fader sets it.
ValueRange MinMaxRangeShown(int function, int paramFormat);

// FunctionCombo_Click for the selected fader. Defaults from DefaultsTable
// apply only when the function changes. The device entry only shows the
// device controls: a device function has to be picked to become one of 1-3.
void ChooseFaderFunction(EditorState& editor, Database& db, int function);
// BFunctionCombo_Click. On the PC1600 Send Fader and Send Scene are refused
// with a message and the list goes back to 0; false then.
bool ChooseButtonFunction(EditorState& editor, Database& db, Prompter& prompter, bool pc1600Model, int function);

// The fields of the selected fader, as their controls write them.
// The name boxes of faders and buttons take at most this many characters
// (the dump could carry a few more; the boxes never let them in).
inline constexpr std::size_t kControlNameLength = 12;
void SetFaderName(EditorState& editor, const std::string& text);
void SetFaderChannel(EditorState& editor, int channel);
void SetFaderCCNum(EditorState& editor, int ccNum);
void SetReplaceMode(EditorState& editor, int mode);
void SetParamFormat(EditorState& editor, int paramFormat);
void SetMasterCheck(EditorState& editor, int k, bool checked);
// MinValSlider_Change, MaxValSlider_Change: the two ends are kept apart,
// Polarity follows their order and Value is brought into the range.
void SetFaderMin(EditorState& editor, int value);
void SetFaderMax(EditorState& editor, int value);
void SwapMinMax(EditorState& editor);
// ValueText lost focus: the number, clamped between Min and Max.
void SetFaderValueText(EditorState& editor, std::string_view text);

// The fields of the selected button.
void SetButtonName(EditorState& editor, const std::string& text);
void SetButtonChannel(EditorState& editor, int channel);
void SetButtonNote(EditorState& editor, int note);
void SetButtonVelocity(EditorState& editor, int velocity);
void SetButtonProgChange(EditorState& editor, int progChange);
void SwapButtonStrings(EditorState& editor);

// InitFaderButton, InitButtonButton: the control back to its defaults; a
// fader's channel becomes 1 here, unlike the whole preset's.
void InitFader(EditorState& editor, int index);
void InitButton(EditorState& editor, int index);

// The DefaultsTable field that a click on a label sets, or empty.
std::string_view DefaultFieldOfLabel(std::string_view labelName);

}  // namespace tavlo
