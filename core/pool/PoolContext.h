#pragma once
#include "editor/EditorContext.h"

namespace tavlo {

struct PoolFlags;
struct PoolFormState;

// What the pool's flows work with: the pool and its window, their flags, and
// the editor whose preset they store and load.
struct PoolContext {
    PoolDatabase& pool;
    Prompter& prompter;
    EditorState& editor;
    const MidiConfig& midi;
    ImageSlots& memImage;
    PoolFormState& poolForm;
    PoolFlags& flags;

    operator EditorContext() const { return {pool, prompter, editor, midi, memImage}; }
};

}  // namespace tavlo
