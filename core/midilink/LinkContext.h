#pragma once

namespace tavlo {

class Clock;
class MidiLink;
class PoolDatabase;
class Prompter;
class Pump;
class StatusView;
struct MidiConfig;

// What an exchange with the device works with: the ports and their
// settings, the status window, the program's time, and the pool that keeps
// the configuration.
struct LinkContext {
    MidiLink& midiLink;
    MidiConfig& midi;
    PoolDatabase& pool;
    Prompter& prompter;
    StatusView& status;
    Pump& pump;
    Clock& clock;
};

}  // namespace tavlo
