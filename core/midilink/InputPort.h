#pragma once
#include <cstdint>
#include <memory>
#include <string>

#include "midilink/MessageQueue.h"
#include "midilink/SelectedPort.h"

namespace tavlo {

// An input port object (MIDIIn, MIDILearnIn): pick a device by number, open,
// buffer whole messages (assembled from what the device sends), and poll them.
class InputPort : public SelectedPort<InputConnection> {
public:
    explicit InputPort(const DeviceDirectory& devices)
        : SelectedPort(devices), queue_(std::make_shared<MessageQueue>()) {}
    ~InputPort() { close(); }

    // Opens the selected device and starts reception. False, with a message
    // that names the device, when it couldn't; the port is then closed.
    bool open(std::string& error);

    void accept(int kind, bool on) { queue_->accept(kind, on); }
    void setBuffering(bool on) { queue_->setBuffering(on); }
    bool buffering() const { return queue_->buffering(); }

    int count();
    // The oldest message, a whole sysex at a time.
    std::string current();
    std::int64_t currentTime();
    void remove() { queue_->remove(); }
    // Ends the current reception: the message being looked at is let go,
    // and so is a sysex still arriving, which can't be whole any more.
    void clear() {
        queue_->remove();
        queue_->endReception();
    }
    // Drops everything queued.
    void flush() { queue_->clear(); }

private:
    std::shared_ptr<MessageQueue> queue_;
};

}  // namespace tavlo
