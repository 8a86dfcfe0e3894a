#pragma once
#include <memory>
#include <string>
#include <vector>

#include "midilink/MidiBackend.h"

namespace tavlo {

// All MIDI devices Tavlo can reach, from every backend, in one numbered list
// per direction: the system's devices first, then those of later backends.
class DeviceDirectory {
public:
    void add(std::shared_ptr<MidiBackend> backend);
    void remove(const MidiBackend* backend);

    std::vector<std::string> inputNames() const;
    std::vector<std::string> outputNames() const;

    // Opens the first device of that name. Error text names the device.
    std::unique_ptr<InputConnection> openInput(const std::string& name, MessageSink sink, std::string& error) const;
    std::unique_ptr<OutputConnection> openOutput(const std::string& name, std::string& error) const;

private:
    std::vector<std::shared_ptr<MidiBackend>> backends_;
};

}  // namespace tavlo
