#include "midilink/RtMidiBackend.h"

#include <RtMidi.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "midilink/AlsaSequencerOutput.h"

namespace tavlo {
namespace {

RtMidi::Api ToRtApi(MidiApi api) { return api == MidiApi::Alsa ? RtMidi::LINUX_ALSA : RtMidi::UNIX_JACK; }

std::int64_t SteadyMs() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

// RtMidi reports through this instead of throwing; the text is kept for the
// caller, who turns it into a message.
struct ErrorSlot {
    std::string text;
    std::string warning;
    bool failed = false;
    static void callback(RtMidiError::Type type, const std::string& text, void* user) {
        auto* slot = static_cast<ErrorSlot*>(user);
        if (type == RtMidiError::WARNING || type == RtMidiError::DEBUG_WARNING) {
            slot->warning = text;
            return;
        }
        slot->text = text;
        slot->failed = true;
    }
};

template <typename Port>
std::vector<std::string> PortNames(MidiApi api, const std::string& client, std::string& error) {
    std::vector<std::string> names;
    try {
        ErrorSlot slot;
        Port port(ToRtApi(api), client + " list");
        port.setErrorCallback(&ErrorSlot::callback, &slot);
        const unsigned count = port.getPortCount();
        for (unsigned i = 0; i < count; ++i) {
            const std::string name = port.getPortName(i);
            if (!name.empty()) names.push_back(name);
        }
        if (slot.failed) error = slot.text;
    } catch (const RtMidiError& e) {
        error = e.getMessage();
    }
    return names;
}

template <typename Port>
int FindPort(Port& port, const std::string& name) {
    const unsigned count = port.getPortCount();
    for (unsigned i = 0; i < count; ++i)
        if (port.getPortName(i) == name) return static_cast<int>(i);
    return -1;
}

class RtInput : public InputConnection {
public:
    RtInput(MidiApi api, const std::string& client, MessageSink sink) : sink_(std::move(sink)) {
        port_ = std::make_unique<RtMidiIn>(ToRtApi(api), client);
        port_->setErrorCallback(&ErrorSlot::callback, &errors_);
        // Sysex, timing and active sensing all come through: the filter is
        // the port's own (SetInputFilters), not RtMidi's.
        port_->ignoreTypes(false, false, false);
        port_->setCallback(&RtInput::received, this);
    }
    ~RtInput() override {
        try {
            port_->cancelCallback();
            port_->closePort();
        } catch (const RtMidiError&) {
        }
    }
    bool openDevice(const std::string& name, std::string& error) {
        const int index = FindPort(*port_, name);
        if (index < 0) {
            error = "the device is gone";
            return false;
        }
        port_->openPort(static_cast<unsigned>(index), "in");
        return ok(error);
    }
    bool openVirtual(const std::string& portName, std::string& error) {
        // RtMidi doesn't count a virtual port as open: only errors tell.
        port_->openVirtualPort(portName);
        if (!errors_.failed && errors_.warning.empty()) return true;
        error = errors_.failed ? errors_.text : errors_.warning;
        return false;
    }

private:
    bool ok(std::string& error) {
        if (errors_.failed || !port_->isPortOpen()) {
            error = !errors_.text.empty()      ? errors_.text
                    : !errors_.warning.empty() ? errors_.warning
                                               : "the MIDI system refused";
            return false;
        }
        return true;
    }
    static void received(double, std::vector<unsigned char>* message, void* user) {
        if (!message || message->empty()) return;
        auto* self = static_cast<RtInput*>(user);
        self->sink_(std::string(message->begin(), message->end()), SteadyMs());
    }

    MessageSink sink_;
    ErrorSlot errors_;
    std::unique_ptr<RtMidiIn> port_;
};

class RtOutput : public OutputConnection {
public:
    RtOutput(MidiApi api, const std::string& client, PacingPlan plan, std::function<void(std::int64_t)> wait)
        : plan_(plan), wait_(std::move(wait)) {
        port_ = std::make_unique<RtMidiOut>(ToRtApi(api), client);
        port_->setErrorCallback(&ErrorSlot::callback, &errors_);
    }
    ~RtOutput() override {
        try {
            port_->closePort();
        } catch (const RtMidiError&) {
        }
    }
    bool openDevice(const std::string& name, std::string& error) {
        const int index = FindPort(*port_, name);
        if (index < 0) {
            error = "the device is gone";
            return false;
        }
        port_->openPort(static_cast<unsigned>(index), "out");
        return ok(error);
    }
    bool openVirtual(const std::string& portName, std::string& error) {
        // RtMidi doesn't count a virtual port as open: only errors tell.
        port_->openVirtualPort(portName);
        if (!errors_.failed && errors_.warning.empty()) return true;
        error = errors_.failed ? errors_.text : errors_.warning;
        return false;
    }
    bool send(const std::string& bytes, std::string& error) override {
        errors_ = {};
        const bool sent = SendInPieces(
            bytes, plan_,
            [&](std::string_view piece) {
                port_->sendMessage(reinterpret_cast<const unsigned char*>(piece.data()), piece.size());
                return !errors_.failed;
            },
            wait_, SteadyMs);
        if (!sent) error = errors_.text.empty() ? "the MIDI system refused the message" : errors_.text;
        return sent;
    }

private:
    bool ok(std::string& error) {
        if (errors_.failed || !port_->isPortOpen()) {
            error = !errors_.text.empty()      ? errors_.text
                    : !errors_.warning.empty() ? errors_.warning
                                               : "the MIDI system refused";
            return false;
        }
        return true;
    }

    PacingPlan plan_;
    std::function<void(std::int64_t)> wait_;
    ErrorSlot errors_;
    std::unique_ptr<RtMidiOut> port_;
};

}  // namespace

bool ParseMidiApi(const std::string& text, MidiApi& api) {
    if (text == "alsa") api = MidiApi::Alsa;
    else if (text == "jack") api = MidiApi::Jack;
    else return false;
    return true;
}

const char* MidiApiName(MidiApi api) { return api == MidiApi::Alsa ? "alsa" : "jack"; }

MidiApi DefaultMidiApi() {
    std::error_code ec;
    return std::filesystem::exists("/dev/snd/seq", ec) ? MidiApi::Alsa : MidiApi::Jack;
}

RtMidiBackend::RtMidiBackend(RtMidiOptions options) : options_(std::move(options)) {
    if (!options_.wait)
        options_.wait = [](std::int64_t ms) { std::this_thread::sleep_for(std::chrono::milliseconds(ms)); };
}

RtMidiBackend::~RtMidiBackend() = default;

std::vector<std::string> RtMidiBackend::inputNames() {
    lastError_.clear();
    return PortNames<RtMidiIn>(options_.api, options_.clientName, lastError_);
}

std::vector<std::string> RtMidiBackend::outputNames() {
    lastError_.clear();
    return PortNames<RtMidiOut>(options_.api, options_.clientName, lastError_);
}

std::unique_ptr<InputConnection> RtMidiBackend::openInput(const std::string& name, MessageSink sink,
                                                          std::string& error) {
    try {
        auto input = std::make_unique<RtInput>(options_.api, options_.clientName, std::move(sink));
        if (input->openDevice(name, error)) return input;
    } catch (const RtMidiError& e) {
        error = e.getMessage();
    }
    return nullptr;
}

std::unique_ptr<OutputConnection> RtMidiBackend::openOutput(const std::string& name, std::string& error) {
    try {
        if (options_.api == MidiApi::Alsa) return AlsaSequencerOutput::open(name, options_.clientName, plan(),
                                                                            options_.wait, error);
        auto output = std::make_unique<RtOutput>(options_.api, options_.clientName, plan(), options_.wait);
        if (output->openDevice(name, error)) return output;
    } catch (const RtMidiError& e) {
        error = e.getMessage();
    }
    return nullptr;
}

std::unique_ptr<InputConnection> RtMidiBackend::openVirtualInput(const std::string& clientName,
                                                                 const std::string& portName, MessageSink sink,
                                                                 std::string& error) {
    try {
        auto input = std::make_unique<RtInput>(options_.api, clientName, std::move(sink));
        if (input->openVirtual(portName, error)) return input;
    } catch (const RtMidiError& e) {
        error = e.getMessage();
    }
    return nullptr;
}

std::unique_ptr<OutputConnection> RtMidiBackend::openVirtualOutput(const std::string& clientName,
                                                                   const std::string& portName, std::string& error) {
    try {
        if (options_.api == MidiApi::Alsa)
            return AlsaSequencerOutput::openVirtual(portName, clientName, plan(), options_.wait, error);
        auto output = std::make_unique<RtOutput>(options_.api, clientName, plan(), options_.wait);
        if (output->openVirtual(portName, error)) return output;
    } catch (const RtMidiError& e) {
        error = e.getMessage();
    }
    return nullptr;
}

}  // namespace tavlo
