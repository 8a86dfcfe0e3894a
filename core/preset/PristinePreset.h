#pragma once
#include "editor/EditorState.h"

namespace tavlo {

// Brings the editor's PristinePreset level with its preset. Run after every
// initialisation, load and store.
void UpdateINITData(EditorState& editor);

// True when the preset holds edits since UpdateINITData. Moving a fader, the
// preset's name and its scenes are no edits; a fader's string counts by its
// text, a button's and the setup's slot by slot.
bool INITDataChanged(const EditorState& editor);

}  // namespace tavlo
