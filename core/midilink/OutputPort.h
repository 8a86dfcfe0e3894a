#pragma once
#include <memory>
#include <string>

#include "midilink/SelectedPort.h"

namespace tavlo {

// An output port object (MIDIOut, MIDISimOut).
class OutputPort : public SelectedPort<OutputConnection> {
public:
    explicit OutputPort(const DeviceDirectory& devices) : SelectedPort(devices) {}

    bool open(std::string& error);

    // A whole sysex message, F0 to F7. False when the port is closed or the
    // backend refused; the reason is kept in lastError().
    bool sendSysex(const std::string& message);
    // A short message: status and up to two data bytes.
    bool sendShort(int status, int data1 = -1, int data2 = -1);
    const std::string& lastError() const { return lastError_; }

private:
    bool send(const std::string& bytes);

    std::string lastError_;
};

}  // namespace tavlo
