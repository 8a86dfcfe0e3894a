#pragma once
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tavlo {

// Where an open input connection delivers what it receives: the bytes as
// they came (a message, a piece of a sysex, or several messages together),
// with their arrival time in milliseconds. The port makes whole messages of
// them. May be called from a backend's own thread.
using MessageSink = std::function<void(std::string bytes, std::int64_t timeMs)>;

// An open link from one input device.
class InputConnection {
public:
    virtual ~InputConnection() = default;
    // Backends that don't run a thread of their own deliver here, when the
    // polling side looks at its queue.
    virtual void poll() {}
};

// An open link to one output device.
class OutputConnection {
public:
    virtual ~OutputConnection() = default;
    // Sends one whole message. A long sysex goes out in pieces, as the
    // backend needs. Returns false (with the reason) when it couldn't.
    virtual bool send(const std::string& bytes, std::string& error) = 0;
};

// One family of devices: the system's MIDI (RtMidi), the in-process virtual
// PC1600, a loopback in tests.
class MidiBackend {
public:
    virtual ~MidiBackend() = default;
    virtual std::vector<std::string> inputNames() = 0;
    virtual std::vector<std::string> outputNames() = 0;
    // Nothing (and the reason in `error`) when the device can't be opened.
    virtual std::unique_ptr<InputConnection> openInput(const std::string& name, MessageSink sink,
                                                       std::string& error) = 0;
    virtual std::unique_ptr<OutputConnection> openOutput(const std::string& name, std::string& error) = 0;
};

}  // namespace tavlo
