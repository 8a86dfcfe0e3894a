#include "midilink/VirtualDeviceBackend.h"

#include <algorithm>

#include "sysex/DeviceMessages.h"
#include "ui/Pump.h"

namespace tavlo {

class VirtualDeviceBackend::Input : public InputConnection {
public:
    Input(VirtualDeviceBackend& owner, MessageSink sink) : owner_(owner), alive_(owner.alive_), sink_(std::move(sink)) {
        owner_.sinks_.push_back(&sink_);
    }
    ~Input() override {
        if (!alive_.expired()) std::erase(owner_.sinks_, &sink_);
    }
    void poll() override {
        if (!alive_.expired()) owner_.deliverDue();
    }

private:
    VirtualDeviceBackend& owner_;
    std::weak_ptr<bool> alive_;
    MessageSink sink_;
};

class VirtualDeviceBackend::Output : public OutputConnection {
public:
    explicit Output(VirtualDeviceBackend& owner) : owner_(owner), alive_(owner.alive_) {}
    bool send(const std::string& bytes, std::string& error) override {
        if (alive_.expired()) {
            error = "The virtual PC1600 is gone.";
            return false;
        }
        owner_.received(bytes);
        return true;
    }

private:
    VirtualDeviceBackend& owner_;
    std::weak_ptr<bool> alive_;
};

VirtualDeviceBackend::VirtualDeviceBackend(const Clock& clock) : clock_(clock) {}

VirtualDeviceBackend::~VirtualDeviceBackend() { *alive_ = false; }

std::unique_ptr<InputConnection> VirtualDeviceBackend::openInput(const std::string& name, MessageSink sink,
                                                                 std::string& error) {
    if (name != kVirtualDeviceName) {
        error = "no such device";
        return nullptr;
    }
    return std::make_unique<Input>(*this, std::move(sink));
}

std::unique_ptr<OutputConnection> VirtualDeviceBackend::openOutput(const std::string& name, std::string& error) {
    if (name != kVirtualDeviceName) {
        error = "no such device";
        return nullptr;
    }
    return std::make_unique<Output>(*this);
}

void VirtualDeviceBackend::received(const std::string& message) {
    const auto& settings = device_.settings();
    const std::int64_t now = clock_.now();
    // Replies follow one another, each after the one before has gone out.
    std::int64_t start = std::max(now, pending_.empty() ? now : pending_.back().due) + settings.replyDelayMs;
    for (auto& reply : device_.receive(message)) {
        const std::int64_t due = start + (settings.wirePacing ? WireTimeMs(reply.size()) : 0);
        pending_.push_back({std::move(reply), due});
        start = due;
    }
    deliverDue();
}

void VirtualDeviceBackend::deliverDue() {
    const std::int64_t now = clock_.now();
    while (!pending_.empty() && pending_.front().due <= now) {
        Pending reply = std::move(pending_.front());
        pending_.pop_front();
        const auto sinks = sinks_;
        for (MessageSink* sink : sinks) (*sink)(reply.bytes, reply.due);
    }
}

}  // namespace tavlo
