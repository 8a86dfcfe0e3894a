#pragma once

namespace tavlo {

class PoolDatabase;
class Prompter;
struct EditorState;
struct ImageSlots;
struct MidiConfig;

// What the editor's flows work with: the editor's own state, the pool for
// defaults and scenes, the model from the MIDI settings, and the slots of the
// open memory image.
struct EditorContext {
    PoolDatabase& pool;
    Prompter& prompter;
    EditorState& editor;
    const MidiConfig& midi;
    ImageSlots& memImage;
};

}  // namespace tavlo
