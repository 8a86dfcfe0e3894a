#pragma once
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "midilink/MidiBackend.h"
#include "midilink/VirtualPC1600.h"

namespace tavlo {

class Clock;

// The virtual PC1600 as a device of Tavlo's lists, "Tavlo Virtual PC1600"
// in and out. Replies wait for the device's delay (and, with pacing, for the
// time the bytes would take on a cable) and are handed to the inputs when
// the program polls them: no thread, so tests on a fake clock see it all.
class VirtualDeviceBackend : public MidiBackend {
public:
    explicit VirtualDeviceBackend(const Clock& clock);
    ~VirtualDeviceBackend() override;

    VirtualPC1600& device() { return device_; }

    std::vector<std::string> inputNames() override { return {kVirtualDeviceName}; }
    std::vector<std::string> outputNames() override { return {kVirtualDeviceName}; }
    std::unique_ptr<InputConnection> openInput(const std::string& name, MessageSink sink, std::string& error) override;
    std::unique_ptr<OutputConnection> openOutput(const std::string& name, std::string& error) override;

    // Hands over the replies that are due.
    void deliverDue();

private:
    class Input;
    class Output;
    void received(const std::string& message);

    const Clock& clock_;
    VirtualPC1600 device_;
    struct Pending {
        std::string bytes;
        std::int64_t due;
    };
    std::deque<Pending> pending_;
    std::vector<MessageSink*> sinks_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace tavlo
