#include "midilink/InputPort.h"

namespace tavlo {

bool InputPort::open(std::string& error) {
    const std::string name = nameToOpen(error);
    if (name.empty()) return false;
    // The sink holds the queue, not the port: a backend thread that still
    // delivers while the connection closes finds a live queue.
    std::weak_ptr<MessageQueue> queue = queue_;
    return opened(devices_.openInput(
                      name,
                      [queue](std::string bytes, std::int64_t timeMs) {
                          if (auto q = queue.lock()) q->push(bytes, timeMs);
                      },
                      error),
                  name);
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
