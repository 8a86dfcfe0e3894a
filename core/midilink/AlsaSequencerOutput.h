#pragma once
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "midilink/MidiBackend.h"
#include "midilink/PacedSender.h"

namespace tavlo {

// Output on the ALSA sequencer without RtMidi. RtMidi's ALSA output encodes
// each call as one complete message: it refuses a piece of sysex without its
// F7 and fails above about 16 KB, the size of the sequencer's buffer. A
// device's memory is 40+ KB, so Tavlo opens a sequencer client of its own and
// sends a long sysex as several SYSEX events, each a piece of the message,
// paced; ALSA receivers (RtMidi's input among them) join the pieces again.
class AlsaSequencerOutput {
public:
    // Connects to the destination named as RtMidi lists it on ALSA
    // ("client:port name  client:port"): the numbers at its end say where.
    static std::unique_ptr<OutputConnection> open(const std::string& deviceName, const std::string& clientName,
                                                  PacingPlan plan, std::function<void(std::int64_t)> wait,
                                                  std::string& error);
    // A port of Tavlo's own that others subscribe to.
    static std::unique_ptr<OutputConnection> openVirtual(const std::string& portName, const std::string& clientName,
                                                         PacingPlan plan, std::function<void(std::int64_t)> wait,
                                                         std::string& error);
};

// "name 24:0" gives 24 and 0; false when the name doesn't end so.
bool ParseAlsaAddress(const std::string& deviceName, int& client, int& port);

}  // namespace tavlo
