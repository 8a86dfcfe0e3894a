#pragma once
#include <array>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <string_view>

#include "midilink/MidiStreamAssembler.h"

namespace tavlo {

// The queue of an input port: whole messages, oldest first. A backend's
// thread pushes, the program's one thread polls; the lock covers just that.
class MessageQueue {
public:
    MessageQueue() { accepted_.fill(true); }

    // From the backend: bytes as it got them (a message, a piece of one, or
    // several together), made into whole messages by the one assembler of
    // the port. A message is kept only while buffering is on and its kind
    // (its status byte) is let through.
    void push(std::string_view bytes, std::int64_t timeMs);
    // Drops a sysex whose reception is in progress.
    void endReception();

    void setBuffering(bool on);
    bool buffering() const;
    void accept(int kind, bool on);
    bool accepts(int kind) const;

    int count() const;
    // The oldest message, whole; empty when the queue is empty.
    std::string current() const;
    std::int64_t currentTime() const;
    void remove();
    void clear();

private:
    struct Entry {
        std::string bytes;
        std::int64_t timeMs;
    };
    mutable std::mutex mutex_;
    std::deque<Entry> entries_;
    MidiStreamAssembler assembler_;
    std::array<bool, 256> accepted_{};
    bool buffering_ = false;
};

}  // namespace tavlo
