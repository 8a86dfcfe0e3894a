#pragma once
#include <array>
#include <string>

#include "preset/PristinePreset.h"
#include "preset/WorkingPreset.h"
#include "ui/ListState.h"
#include "ui/Observable.h"

namespace tavlo {

// What CopyButton put aside for PasteButton: one fader or one button with
// its strings, or the values of a scene. The empty side of a control copy
// carries the function 65535.
inline constexpr int kClipboardEmptyFunction = 65535;
struct EditorClipboard {
    FaderDef Fader;
    MessageStringSet FaderStrings;
    ButtonDef Button;
    MessageStringSet ButtonStrings1;
    MessageStringSet ButtonStrings2;
    int FaderFunction = kClipboardEmptyFunction;
    int ButtonFunction = kClipboardEmptyFunction;
    int SourceIndex = -1;
    // A copied scene: 17 values (the last CV is left out) and its name.
    bool HoldsScene = false;
    std::array<std::int16_t, kFaderCount> SceneValues{};
    std::string SceneName;
};

// Which of the editor's detail frames shows.
enum class EditorFrame { Fader, Button, Setup, Associate };

// Everything the preset editor window (PC1600XForm) holds, in core. The
// window renders this and writes the user's edits back; rules read it under
// the controls' names. Text fields that mirror a WorkingPreset field live in
// the preset only: PresetNameText is preset.Name, PresetNotesText is
// preset.Notes, InvisiblePresetID is preset.ID, DataWheelCombo's index is
// preset.DataWheelLink and SStringText is preset.SetupString.
struct EditorState : Observable {
    WorkingPreset preset;
    // Copy of the preset as last loaded or stored; see INITDataChanged.
    WorkingPreset PristinePreset;

    std::string Caption;  // the window's caption
    bool Visible = false;

    // Captions of the panel: FaderLabel(0..17) and PCButton(0..15).
    std::array<std::string, kFaderCount> FaderLabel{};
    std::array<std::string, kButtonCount> PCButton{};

    std::int16_t CurrentFader = 0;
    std::int16_t CurrentButton = 0;
    // The slider that carries the selection border, -1 for none.
    int BorderedSlider = 0;
    EditorFrame ShownFrame = EditorFrame::Fader;

    // Scene lists: the preset's own scenes, the lines a Send Scene button can
    // pick, and the setup scene with "<none>" first.
    ListState SelectSceneCombo;
    ListState BSceneCombo;
    ListState SelectPresetSceneCombo;
    ListState AssociatedList;

    // ---- Editor window: selection, frames, function lists, clipboard ----
    // True while a frame is filled from the preset: the frames' handlers
    // then change nothing.
    bool ShowingParams = false;
    // True while ParamFormatCombo is set by the program.
    bool FormatLock = false;
    // The button with the white background, -1 for none.
    int HighlightedButton = -1;
    std::string FaderFrameCaption;
    std::string ButtonFrameCaption;
    // List indexes of FunctionCombo and BFunctionCombo: the stored function,
    // or the device entry while a device function is being picked.
    int FunctionComboIndex = 0;
    int BFunctionComboIndex = 0;
    // Range of MinValSlider and MaxValSlider.
    int MinMaxSliderMin = 0;
    int MinMaxSliderMax = 127;
    // Check1(0..17) of the Master Fader list; the selected fader's own box
    // is disabled and unchecked.
    std::array<bool, kFaderCount> Check1{};
    // SChannelSlider: the setup channel shown, 0 to 15.
    int SChannel = 0;
    EditorClipboard Clipboard;
    std::string PasteButtonCaption;
    bool PasteButtonVisible = false;
    // ---- end of the editor window block ----

    // ---- Pool store and load (PresetStore, PresetLoad, InitPreset) ----
    // True while a preset text file is being stored: its scenes come later.
    bool ImportingPresetText = false;
    // The store was asked for by the closing of the window.
    bool ClosingEditor = false;
    // Set by the store when the window must stay open.
    bool CancelClose = false;
    // Set by the store when the pool's version was kept.
    bool PresetKeptInPool = false;
    // The name given to the last blank-named preset of a download.
    std::string LastEnteredBlankName;
    // False while a load fills the editor: nothing counts as an edit then.
    bool PristineComparison = true;
    // The store asks the window to put the focus on PresetNameText.
    bool FocusPresetNameText = false;
    // ---- end of pool store and load ----

    // The running drag: "FADER", "BUTTON", ... and the control it started on.
    std::string DragType;
    int DragSource = -1;
    // The program is starting (false while a flow must not be asked about
    // unsaved edits) and quitting (the quit command has asked already).
    bool ProgramInit = true;
    bool Quitting = false;
};

// The editor's preset against its pristine copy. While a load fills the
// editor (PristineComparison false) nothing counts as an edit.
inline void UpdateINITData(EditorState& editor) { UpdateINITData(editor.preset, editor.PristinePreset); }
inline bool INITDataChanged(const EditorState& editor) {
    return editor.PristineComparison && INITDataChanged(editor.preset, editor.PristinePreset);
}

}  // namespace tavlo
