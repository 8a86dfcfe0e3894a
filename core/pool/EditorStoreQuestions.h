#pragma once
#include "pool/PoolContext.h"

namespace tavlo {

// The editor's commands that may end in a store: they live above the
// editor, with the store they run.

// InitPresetButton. While ProgramInit is true it first offers to store edits
// ("Store Preset in Pool?"); Cancel leaves everything as it was and returns
// false. A flow that must not ask calls InitializePreset.
bool InitPresetButton(const PoolContext& session);

// Before a flow replaces the editor's preset (a duplicate, a preset file
// loaded from the pool window): unsaved work in the shown editor is offered
// for storing. False when the user cancelled or the store was refused; the
// flow then leaves the editor alone.
bool StoreEditsFirst(const PoolContext& session);

// The end of a run: the shown editor's unsaved preset is offered for storing
// (Yes, No, Cancel) and the window hidden. False when the user cancelled or
// the store wants the window kept open.
bool StoreBeforeQuit(const PoolContext& session);

// The editor window's close: it offers to store an edited preset (or stores
// without asking when the preset stands in the memory image) and then only
// hides. False when the window stays: the user cancelled, or the store
// asked for it to stay open.
bool EditorQueryClose(const PoolContext& session);

}  // namespace tavlo
