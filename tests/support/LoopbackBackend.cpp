#include "LoopbackBackend.h"

#include <algorithm>

#include "ui/Pump.h"

namespace tavlo {

class LoopbackBackend::Input : public InputConnection {
public:
    Input(LoopbackBackend& owner, std::string name, MessageSink sink)
        : owner_(owner), alive_(owner.alive_), name_(std::move(name)), sink_(std::move(sink)) {
        owner_.inputs_.emplace(name_, this);
    }
    ~Input() override {
        if (alive_.expired()) return;
        auto range = owner_.inputs_.equal_range(name_);
        for (auto it = range.first; it != range.second; ++it)
            if (it->second == this) {
                owner_.inputs_.erase(it);
                break;
            }
    }
    void deliver(const std::string& bytes, std::int64_t timeMs) { sink_(bytes, timeMs); }

private:
    LoopbackBackend& owner_;
    std::weak_ptr<bool> alive_;
    std::string name_;
    MessageSink sink_;
};

class LoopbackBackend::Output : public OutputConnection {
public:
    Output(LoopbackBackend& owner, std::string name) : owner_(owner), alive_(owner.alive_), name_(std::move(name)) {}
    bool send(const std::string& bytes, std::string& error) override {
        if (alive_.expired()) {
            error = "The loopback device is gone.";
            return false;
        }
        owner_.delivered(name_, bytes);
        return true;
    }

private:
    LoopbackBackend& owner_;
    std::weak_ptr<bool> alive_;
    std::string name_;
};

LoopbackBackend::LoopbackBackend(std::vector<std::string> names, const Clock* clock)
    : names_(std::move(names)), clock_(clock) {}

LoopbackBackend::~LoopbackBackend() { *alive_ = false; alive_.reset(); }

std::unique_ptr<InputConnection> LoopbackBackend::openInput(const std::string& name, MessageSink sink,
                                                            std::string& error) {
    if (auto it = refused_.find(name); it != refused_.end()) {
        error = it->second;
        return nullptr;
    }
    return std::make_unique<Input>(*this, name, std::move(sink));
}

std::unique_ptr<OutputConnection> LoopbackBackend::openOutput(const std::string& name, std::string& error) {
    if (auto it = refused_.find(name); it != refused_.end()) {
        error = it->second;
        return nullptr;
    }
    return std::make_unique<Output>(*this, name);
}

void LoopbackBackend::inject(const std::string& name, const std::string& bytes) {
    const std::int64_t now = clock_ ? clock_->now() : 0;
    // Copy first: a sink may open or close ports.
    std::vector<Input*> targets;
    auto range = inputs_.equal_range(name);
    for (auto it = range.first; it != range.second; ++it) targets.push_back(it->second);
    for (Input* input : targets) input->deliver(bytes, now);
}

void LoopbackBackend::delivered(const std::string& name, const std::string& bytes) {
    sent.emplace_back(name, bytes);
    if (echo) inject(name, bytes);
    if (onSend) onSend(name, bytes);
}

}  // namespace tavlo
