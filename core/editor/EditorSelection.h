#pragma once
#include <string>

#include "editor/EditorState.h"
#include "editor/PresetOperations.h"

namespace tavlo {

// How the panel of the editor is selected and how the frames are filled.

// "Volume  (cc)": a fader's caption on the panel, by its function's tag.
std::string FaderCaption(const FaderDef& fader);
// "Piano (pc)": a button's caption; a function without a tag shows the name.
std::string ButtonCaption(const ButtonDef& button);
// Redraws every FaderLabel and PCButton caption from the preset.
void RedrawCaptions(EditorState& editor);

// "Control Settings for FADER 3", "Control Settings for CV 1".
std::string FaderFrameCaptionFor(int index);

// A PCSlider spans Min to Max in whichever order they stand. With Polarity
// off the slider is read backward, so that its top gives Min.
ValueRange PCSliderRange(const FaderDef& fader);
int PCSliderPosition(const FaderDef& fader);
int FaderValueAt(const FaderDef& fader, int position);
// PCSlider_Change: the fader's Value follows the slider.
void SetPCSliderPosition(EditorState& editor, int index, int position);

// Fills the fader frame from Faders(index) and shows it; changes no data.
void ShowFaderParams(EditorState& editor, int index);
// Fills the button frame from Buttons(index) and shows it.
void ShowButtonParams(EditorState& editor, int index);
// PCSlider or FaderLabel click: selects the fader unless it already shows.
// True when the frame was filled.
bool ClickFader(EditorState& editor, int index);
// PCButton click, alike.
bool ClickButton(EditorState& editor, int index);
// SetupStringButton: no control selected, channel 1 of the setup shown.
void ShowSetupFrame(EditorState& editor);

// The line of BSceneCombo or SelectPresetSceneCombo that stands for a
// scene reference; 0 ("<none>") when none does.
int SceneLineFor(const ListState& list, const std::string& scene, std::int64_t scenePreset, std::int64_t ownID);
// A scene line's name: the text before "  - from" or " [p:".
std::string SceneNameOfLine(const std::string& line);

}  // namespace tavlo
