#include "midilink/MessageQueue.h"

namespace tavlo {

void MessageQueue::push(std::string_view bytes, std::int64_t timeMs) {
    std::lock_guard lock(mutex_);
    for (auto& message : assembler_.feed(bytes)) {
        if (!buffering_ || !accepted_[static_cast<unsigned char>(message[0])]) continue;
        entries_.push_back({std::move(message), timeMs});
    }
}

void MessageQueue::endReception() {
    std::lock_guard lock(mutex_);
    assembler_.endSysex();
}

void MessageQueue::setBuffering(bool on) {
    std::lock_guard lock(mutex_);
    buffering_ = on;
}

bool MessageQueue::buffering() const {
    std::lock_guard lock(mutex_);
    return buffering_;
}

void MessageQueue::accept(int kind, bool on) {
    if (kind < 0 || kind > 255) return;
    std::lock_guard lock(mutex_);
    accepted_[static_cast<std::size_t>(kind)] = on;
}

bool MessageQueue::accepts(int kind) const {
    if (kind < 0 || kind > 255) return false;
    std::lock_guard lock(mutex_);
    return accepted_[static_cast<std::size_t>(kind)];
}

int MessageQueue::count() const {
    std::lock_guard lock(mutex_);
    return static_cast<int>(entries_.size());
}

std::string MessageQueue::current() const {
    std::lock_guard lock(mutex_);
    return entries_.empty() ? std::string() : entries_.front().bytes;
}

std::int64_t MessageQueue::currentTime() const {
    std::lock_guard lock(mutex_);
    return entries_.empty() ? 0 : entries_.front().timeMs;
}

void MessageQueue::remove() {
    std::lock_guard lock(mutex_);
    if (!entries_.empty()) entries_.pop_front();
}

void MessageQueue::clear() {
    std::lock_guard lock(mutex_);
    entries_.clear();
}

}  // namespace tavlo
