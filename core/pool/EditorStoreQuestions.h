#pragma once
#include "pool/PoolContext.h"

namespace tavlo {

// The editor's commands that may end in a store: they live above the
// editor, with the store they run.

// InitPresetButton. While ProgramInit is true it first offers to store edits
// ("Store Preset in Pool?"); Cancel leaves everything as it was and returns
// false. A flow that must not ask calls InitializePreset.
bool InitPresetButton(const PoolContext& session);

// The editor window's close: it offers to store an edited preset (or stores
// without asking when the preset stands in the memory image) and then only
// hides. False when the window stays: the user cancelled, or the store
// asked for it to stay open.
bool EditorQueryClose(const PoolContext& session);

}  // namespace tavlo
