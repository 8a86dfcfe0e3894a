#pragma once
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "midilink/MidiBackend.h"
#include "midilink/PacedSender.h"

namespace tavlo {

enum class MidiApi { Alsa, Jack };

// "alsa" or "jack"; nothing for anything else.
bool ParseMidiApi(const std::string& text, MidiApi& api);
const char* MidiApiName(MidiApi api);
// The API for a machine: ALSA where its sequencer exists, else JACK.
MidiApi DefaultMidiApi();

struct RtMidiOptions {
    MidiApi api = MidiApi::Jack;
    std::string clientName = "Tavlo";
    // Wire speed for a real device; off for the virtual device and benches.
    bool wirePacing = true;
    // Lets time pass while a long dump goes out in pieces; the program hands
    // in its pump, so that the window stays alive. Sleeps when empty.
    std::function<void(std::int64_t ms)> wait;
};

// The system's MIDI through RtMidi, on JACK or ALSA. Input runs in callback
// mode: RtMidi's thread only pushes what it got (sysex let through) into
// the port's locked queue, which makes whole messages of it: RtMidi joins
// everything that arrives while a sysex is open, clock bytes, notes and a
// new F0 alike, so its messages can't be taken as they are. Every RtMidi
// error goes to an error callback and becomes a returned reason; nothing is
// thrown at the caller. Long sysex leaves in paced pieces; on ALSA, whose
// RtMidi output refuses a piece without its F7, through a sequencer client
// of Tavlo's own.
class RtMidiBackend : public MidiBackend {
public:
    explicit RtMidiBackend(RtMidiOptions options);
    ~RtMidiBackend() override;

    const RtMidiOptions& options() const { return options_; }
    void setWirePacing(bool on) { options_.wirePacing = on; }

    std::vector<std::string> inputNames() override;
    std::vector<std::string> outputNames() override;
    std::unique_ptr<InputConnection> openInput(const std::string& name, MessageSink sink, std::string& error) override;
    std::unique_ptr<OutputConnection> openOutput(const std::string& name, std::string& error) override;

    // Ports of Tavlo's own that other programs connect to (tavlo-vdevice),
    // each in a client of that name: the system lists "client:port".
    std::unique_ptr<InputConnection> openVirtualInput(const std::string& clientName, const std::string& portName,
                                                      MessageSink sink, std::string& error);
    std::unique_ptr<OutputConnection> openVirtualOutput(const std::string& clientName, const std::string& portName,
                                                        std::string& error);

    // The last error RtMidi reported while listing devices; empty if none.
    const std::string& lastError() const { return lastError_; }

private:
    PacingPlan plan() const { return options_.wirePacing ? kWirePacing : kFastPacing; }

    RtMidiOptions options_;
    std::string lastError_;
};

}  // namespace tavlo
