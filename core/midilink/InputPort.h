#pragma once
#include <cstdint>
#include <memory>
#include <string>

#include "midilink/DeviceDirectory.h"
#include "midilink/MessageQueue.h"

namespace tavlo {

// An input port object (MIDIIn, MIDILearnIn): pick a device by number, open,
// buffer whole messages, and poll them.
class InputPort {
public:
    explicit InputPort(const DeviceDirectory& devices) : devices_(devices), queue_(std::make_shared<MessageQueue>()) {}
    ~InputPort() { close(); }
    InputPort(const InputPort&) = delete;
    InputPort& operator=(const InputPort&) = delete;

    int deviceCount() const;
    void setDeviceNumber(int number) { deviceNumber_ = number; }
    int deviceNumber() const { return deviceNumber_; }
    // Name of the selected device; empty when the number is out of range.
    std::string productName() const;

    // Opens the selected device and starts reception. False, with a message
    // that names the device, when it couldn't; the port is then closed.
    bool open(std::string& error);
    void close();
    bool isOpen() const { return connection_ != nullptr; }
    const std::string& openName() const { return openName_; }

    void accept(int kind, bool on) { queue_->accept(kind, on); }
    void setBuffering(bool on) { queue_->setBuffering(on); }
    bool buffering() const { return queue_->buffering(); }

    int count();
    // The oldest message, a whole sysex at a time.
    std::string current();
    std::int64_t currentTime();
    void remove() { queue_->remove(); }
    // Ends the current reception: the message being looked at is let go.
    void clear() { queue_->remove(); }
    // Drops everything queued.
    void flush() { queue_->clear(); }

private:
    const DeviceDirectory& devices_;
    std::shared_ptr<MessageQueue> queue_;
    std::unique_ptr<InputConnection> connection_;
    std::string openName_;
    int deviceNumber_ = -1;
};

}  // namespace tavlo
