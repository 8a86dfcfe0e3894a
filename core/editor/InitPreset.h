#pragma once
#include "editor/EditorContext.h"

namespace tavlo {

// The initialisation of InitPresetButton: a new, empty preset, with the
// setup channels, setup string and data wheel link that DefaultsTable holds,
// and the editor's lists and captions back to their start.
void InitializePreset(const EditorContext& session);

}  // namespace tavlo
