#include "midilink/AlsaSequencerOutput.h"

#include <alsa/asoundlib.h>

#include <chrono>
#include <regex>

namespace tavlo {
namespace {

std::int64_t SteadyMs() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

class AlsaOutput : public OutputConnection {
public:
    AlsaOutput(PacingPlan plan, std::function<void(std::int64_t)> wait) : plan_(plan), wait_(std::move(wait)) {}
    ~AlsaOutput() override {
        if (coder_) snd_midi_event_free(coder_);
        if (seq_) snd_seq_close(seq_);
    }

    bool start(const std::string& clientName, const std::string& portName, std::string& error) {
        int rc = snd_seq_open(&seq_, "default", SND_SEQ_OPEN_OUTPUT, 0);
        if (rc < 0) {
            seq_ = nullptr;
            error = std::string("the ALSA sequencer can't be opened: ") + snd_strerror(rc);
            return false;
        }
        snd_seq_set_client_name(seq_, clientName.c_str());
        port_ = snd_seq_create_simple_port(seq_, portName.c_str(), SND_SEQ_PORT_CAP_READ | SND_SEQ_PORT_CAP_SUBS_READ,
                                           SND_SEQ_PORT_TYPE_MIDI_GENERIC | SND_SEQ_PORT_TYPE_APPLICATION);
        if (port_ < 0) {
            error = std::string("no ALSA port: ") + snd_strerror(port_);
            return false;
        }
        // Room for a whole piece and its event in the client's buffers.
        snd_seq_set_output_buffer_size(seq_, 4 * plan_.pieceBytes + 1024);
        if (snd_midi_event_new(16, &coder_) < 0) {
            coder_ = nullptr;
            error = "no ALSA event encoder";
            return false;
        }
        return true;
    }

    bool connectTo(int client, int port, std::string& error) {
        const int rc = snd_seq_connect_to(seq_, port_, client, port);
        if (rc < 0) {
            error = std::string("the ALSA connection failed: ") + snd_strerror(rc);
            return false;
        }
        return true;
    }

    bool send(const std::string& bytes, std::string& error) override {
        if (bytes.empty()) return true;
        if (static_cast<unsigned char>(bytes[0]) != 0xF0) return sendShort(bytes, error);
        return SendInPieces(
            bytes, plan_,
            [&](std::string_view piece) {
                snd_seq_event_t ev;
                snd_seq_ev_clear(&ev);
                snd_seq_ev_set_source(&ev, port_);
                snd_seq_ev_set_subs(&ev);
                snd_seq_ev_set_direct(&ev);
                snd_seq_ev_set_sysex(&ev, static_cast<unsigned>(piece.size()), const_cast<char*>(piece.data()));
                const int rc = snd_seq_event_output_direct(seq_, &ev);
                if (rc < 0) error = std::string("ALSA refused a sysex piece: ") + snd_strerror(rc);
                return rc >= 0;
            },
            wait_, SteadyMs);
    }

private:
    bool sendShort(const std::string& bytes, std::string& error) {
        snd_seq_event_t ev;
        snd_seq_ev_clear(&ev);
        snd_midi_event_reset_encode(coder_);
        const long used = snd_midi_event_encode(coder_, reinterpret_cast<const unsigned char*>(bytes.data()),
                                                static_cast<long>(bytes.size()), &ev);
        if (used < 0 || ev.type == SND_SEQ_EVENT_NONE) {
            error = "the message is not complete MIDI";
            return false;
        }
        snd_seq_ev_set_source(&ev, port_);
        snd_seq_ev_set_subs(&ev);
        snd_seq_ev_set_direct(&ev);
        const int rc = snd_seq_event_output_direct(seq_, &ev);
        if (rc < 0) error = std::string("ALSA refused the message: ") + snd_strerror(rc);
        return rc >= 0;
    }

    PacingPlan plan_;
    std::function<void(std::int64_t)> wait_;
    snd_seq_t* seq_ = nullptr;
    snd_midi_event_t* coder_ = nullptr;
    int port_ = -1;
};

}  // namespace

bool ParseAlsaAddress(const std::string& deviceName, int& client, int& port) {
    static const std::regex address(R"((\d+):(\d+)\s*$)");
    std::smatch match;
    if (!std::regex_search(deviceName, match, address)) return false;
    client = std::stoi(match[1]);
    port = std::stoi(match[2]);
    return true;
}

std::unique_ptr<OutputConnection> AlsaSequencerOutput::open(const std::string& deviceName,
                                                            const std::string& clientName, PacingPlan plan,
                                                            std::function<void(std::int64_t)> wait,
                                                            std::string& error) {
    int client = 0, port = 0;
    if (!ParseAlsaAddress(deviceName, client, port)) {
        error = "the name carries no ALSA address";
        return nullptr;
    }
    auto output = std::make_unique<AlsaOutput>(plan, std::move(wait));
    if (!output->start(clientName, "out", error) || !output->connectTo(client, port, error)) return nullptr;
    return output;
}

std::unique_ptr<OutputConnection> AlsaSequencerOutput::openVirtual(const std::string& portName,
                                                                   const std::string& clientName, PacingPlan plan,
                                                                   std::function<void(std::int64_t)> wait,
                                                                   std::string& error) {
    auto output = std::make_unique<AlsaOutput>(plan, std::move(wait));
    if (!output->start(clientName, portName, error)) return nullptr;
    return output;
}

}  // namespace tavlo
