#pragma once
#include "preset/WorkingPreset.h"

namespace tavlo {

// Brings the pristine copy of a preset level with it. Run after every
// initialisation, load and store.
void UpdateINITData(const WorkingPreset& preset, WorkingPreset& pristine);

// True when the preset holds edits since its pristine copy was made. Moving a
// fader, the preset's name and its scenes are no edits; a fader's string
// counts by its text, a button's and the setup's slot by slot.
bool INITDataChanged(const WorkingPreset& now, const WorkingPreset& was);

}  // namespace tavlo
