#pragma once
#include <array>
#include <string>

#include "preset/WorkingPreset.h"
#include "ui/ListState.h"
#include "ui/Observable.h"

namespace tavlo {

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
};

}  // namespace tavlo
