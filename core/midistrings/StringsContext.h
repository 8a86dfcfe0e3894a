#pragma once
#include "editor/EditorContext.h"

namespace tavlo {

class Clock;
class Pump;
struct StringWorkArea;

// What the string editor works with: the editor's flows, the one string work
// area, and for recording, the program's time.
struct StringsContext {
    PoolDatabase& pool;
    Prompter& prompter;
    EditorState& editor;
    const MidiConfig& midi;
    ImageSlots& memImage;
    StringWorkArea& stringWork;
    Pump& pump;
    Clock& clock;

    operator EditorContext() const { return {pool, prompter, editor, midi, memImage}; }
};

}  // namespace tavlo
