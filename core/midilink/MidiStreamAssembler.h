#pragma once
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tavlo {

// Cuts the bytes of one input into whole messages, as the receiver of a MIDI
// line does. Backends hand over what they get: a message, a piece of one, or
// several run together (RtMidi joins whatever arrives while a sysex is open).
// The rules, the same for every backend:
// - real-time bytes (F8 to FF) are messages of their own, wherever they
//   fall, and leave a sysex in progress untouched;
// - a sysex is whole only from its F0 to its F7: any other status byte ends
//   it and what came of it is dropped, and a new F0 drops a partial one, so
//   a dump cut off and sent again is never joined to its first part;
// - channel messages follow running status.
// Not locked: its owner feeds it from one thread at a time.
class MidiStreamAssembler {
public:
    // The messages that `bytes` complete, in order.
    std::vector<std::string> feed(std::string_view bytes);
    // Drops a sysex in progress: the reception of it is over.
    void endSysex();

    // A sysex longer than this can't be a dump of the device: it is dropped
    // rather than let grow without end.
    static constexpr std::size_t kMaxSysex = 1 << 20;

private:
    void drop();

    std::string partial_;     // the message being received, from its status byte
    bool inSysex_ = false;
    std::size_t expected_ = 0;  // data bytes that complete `partial_`
    unsigned char running_ = 0;  // running status of channel messages
};

}  // namespace tavlo
