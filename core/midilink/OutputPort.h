#pragma once
#include <memory>
#include <string>

#include "midilink/DeviceDirectory.h"

namespace tavlo {

// An output port object (MIDIOut, MIDISimOut).
class OutputPort {
public:
    explicit OutputPort(const DeviceDirectory& devices) : devices_(devices) {}
    OutputPort(const OutputPort&) = delete;
    OutputPort& operator=(const OutputPort&) = delete;

    int deviceCount() const;
    void setDeviceNumber(int number) { deviceNumber_ = number; }
    int deviceNumber() const { return deviceNumber_; }
    std::string productName() const;

    bool open(std::string& error);
    void close();
    bool isOpen() const { return connection_ != nullptr; }
    const std::string& openName() const { return openName_; }

    // A whole sysex message, F0 to F7. False when the port is closed or the
    // backend refused; the reason is kept in lastError().
    bool sendSysex(const std::string& message);
    // A short message: status and up to two data bytes.
    bool sendShort(int status, int data1 = -1, int data2 = -1);
    const std::string& lastError() const { return lastError_; }

private:
    bool send(const std::string& bytes);

    const DeviceDirectory& devices_;
    std::unique_ptr<OutputConnection> connection_;
    std::string openName_;
    std::string lastError_;
    int deviceNumber_ = -1;
};

}  // namespace tavlo
