#include "midilink/InputPort.h"

namespace tavlo {

int InputPort::deviceCount() const { return static_cast<int>(devices_.inputNames().size()); }

std::string InputPort::productName() const {
    const auto names = devices_.inputNames();
    if (deviceNumber_ < 0 || deviceNumber_ >= static_cast<int>(names.size())) return {};
    return names[static_cast<std::size_t>(deviceNumber_)];
}

bool InputPort::open(std::string& error) {
    close();
    const std::string name = productName();
    if (name.empty()) {
        error = "No MIDI input device is selected.";
        return false;
    }
    // The sink holds the queue, not the port: a backend thread that still
    // delivers while the connection closes finds a live queue.
    std::weak_ptr<MessageQueue> queue = queue_;
    connection_ = devices_.openInput(
        name,
        [queue](std::string bytes, std::int64_t timeMs) {
            if (auto q = queue.lock()) q->push(std::move(bytes), timeMs);
        },
        error);
    if (!connection_) return false;
    openName_ = name;
    return true;
}

void InputPort::close() {
    connection_.reset();
    openName_.clear();
}

int InputPort::count() {
    if (connection_) connection_->poll();
    return queue_->count();
}

std::string InputPort::current() {
    if (connection_) connection_->poll();
    return queue_->current();
}

std::int64_t InputPort::currentTime() { return queue_->currentTime(); }

}  // namespace tavlo
