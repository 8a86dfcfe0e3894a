#pragma once

namespace tavlo {

class PoolDatabase;
class Prompter;
class Pump;
struct MemImageState;
struct MidiConfig;

// What the memory image's flows work with: the pool its slots refer to,
// the prompter, the free memory of the MIDI settings, the image itself and
// the pump that lets the window repaint while the size is summed.
struct MemImageContext {
    PoolDatabase& pool;
    Prompter& prompter;
    const MidiConfig& midi;
    MemImageState& memImage;
    Pump& pump;
};

}  // namespace tavlo
