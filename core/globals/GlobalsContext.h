#pragma once
#include "midilink/LinkContext.h"

namespace tavlo {

struct GlobalsState;

// What the flows of the global settings work with: the link to the device
// (Get and Send), the pool, the prompter and the settings' own state.
struct GlobalsContext {
    MidiLink& midiLink;
    MidiConfig& midi;
    PoolDatabase& pool;
    Prompter& prompter;
    StatusView& status;
    Pump& pump;
    Clock& clock;
    GlobalsState& globals;

    operator LinkContext() const { return {midiLink, midi, pool, prompter, status, pump, clock}; }
};

}  // namespace tavlo
