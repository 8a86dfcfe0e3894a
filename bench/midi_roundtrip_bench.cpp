// A whole device memory out and back through JACK, pacing off: ALL PRESETS
// (40+ KB), ALL SCENES and ALL GLOBALS sent to a virtual PC1600 on real
// RtMidi ports, then requested and received again, as Tavlo does it. The
// figure that counts is "ratio": the time taken over the time the same bytes
// need on a MIDI cable (3125 bytes/s). At or below 1.0 the program adds
// nothing over the wire; the device's own five-second pauses between dumps
// are left out, being the device's and not the program's.
//
// Starts its own JACK server on the dummy backend (server name of its own)
// and stops it at the end; skips when jackd is missing.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <thread>

#include "sysex/AllGlobalsDump.h"
#include "sysex/AllPresetsDump.h"
#include "sysex/AllScenesDump.h"
#include "sysex/DeviceMessages.h"
#include "midilink/ExchangeDump.h"
#include "midilink/MessageQueue.h"
#include "midilink/RtMidiBackend.h"
#include "midilink/VirtualPC1600.h"
#include "base/MSBModule.h"
#include "db/PoolDatabase.h"
#include "shell/Program.h"
#include "midilink/MidiLink.h"
#include "ui/SteadyClock.h"
#include "ui/StreamPrompter.h"

extern char** environ;

namespace tavlo {
namespace {

// jackd on the dummy backend, for as long as the program runs.
class JackServer {
public:
    bool start(std::string& error) {
        const std::string name = "tavlo-bench-" + std::to_string(getpid());
        setenv("JACK_DEFAULT_SERVER", name.c_str(), 1);
        setenv("JACK_NO_AUDIO_RESERVATION", "1", 1);
        char* argv[] = {const_cast<char*>("jackd"), const_cast<char*>("--no-realtime"), const_cast<char*>("-d"),
                        const_cast<char*>("dummy"),  const_cast<char*>("-r"),            const_cast<char*>("48000"),
                        const_cast<char*>("-p"),     const_cast<char*>("1024"),          nullptr};
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
        const int rc = posix_spawnp(&pid_, "jackd", &actions, nullptr, argv, environ);
        posix_spawn_file_actions_destroy(&actions);
        if (rc != 0) {
            pid_ = 0;
            error = "jackd is not installed";
            return false;
        }
        return true;
    }
    ~JackServer() {
        if (pid_ > 0) {
            kill(pid_, SIGTERM);
            waitpid(pid_, nullptr, 0);
        }
    }

private:
    pid_t pid_ = 0;
};

// The virtual PC1600 on JACK ports, answering from a thread of its own.
class JackDevice {
public:
    bool start(std::string& error) {
        RtMidiOptions options;
        options.api = MidiApi::Jack;
        options.wirePacing = false;
        backend_ = std::make_unique<RtMidiBackend>(options);
        queue_.setBuffering(true);
        // The server takes a moment to come up.
        std::this_thread::sleep_for(std::chrono::milliseconds(500));
        for (int attempt = 0; attempt < 100 && !input_; ++attempt) {
            input_ = backend_->openVirtualInput("bench-vdev", "in",
                                                [this](std::string b, std::int64_t t) { queue_.push(b, t); }, error);
            if (!input_) std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
        if (!input_) return false;
        output_ = backend_->openVirtualOutput("bench-vdev-out", "out", error);
        if (!output_) return false;
        thread_ = std::thread([this] { run(); });
        return true;
    }
    ~JackDevice() {
        stop_ = true;
        if (thread_.joinable()) thread_.join();
    }

private:
    void run() {
        std::string error;
        while (!stop_)
            if (!AnswerOldest(queue_, device_, [&](const std::string& reply) { output_->send(reply, error); }))
                std::this_thread::sleep_for(std::chrono::microseconds(200));
    }

    VirtualPC1600 device_;
    MessageQueue queue_;
    std::unique_ptr<RtMidiBackend> backend_;
    std::unique_ptr<InputConnection> input_;
    std::unique_ptr<OutputConnection> output_;
    std::thread thread_;
    std::atomic<bool> stop_{false};
};

AllPresetsEntries SampleEntries() {
    AllPresetsEntries entries;
    unsigned seed = 1600;
    for (int k = 0; k < kAllPresetsEntries; ++k) {
        auto& entry = entries[static_cast<std::size_t>(k)];
        std::string name = "Bench " + std::to_string(k);
        name.resize(16, ' ');
        entry.name = MSBModule::TextToNibbles(name);
        entry.size = 400 + k % 9;
        for (int i = 0; i < 2 * entry.size; ++i) {
            seed = seed * 1103515245u + 12345u;
            entry.body += static_cast<char>((seed >> 16) & 15);
        }
    }
    return entries;
}

void BM_FullMemoryRoundTripOverJack(benchmark::State& state) {
    static JackServer server;
    static JackDevice device;
    static std::string startError;
    static const bool started = server.start(startError) && device.start(startError);
    if (!started) {
        state.SkipWithError(startError.c_str());
        return;
    }

    StreamPrompter prompter;
    SilentStatusView status;
    SleepingPump pump;
    SteadyClock clock;
    Program session(prompter, status, pump, clock);
    RtMidiOptions options;
    options.api = MidiApi::Jack;
    options.clientName = "tavlo-bench";
    options.wirePacing = false;
    session.midiLink.setSystemBackend(std::make_shared<RtMidiBackend>(options));
    auto openPort = [](auto& port, const std::vector<std::string>& names, const std::string& name) {
        for (std::size_t i = 0; i < names.size(); ++i)
            if (names[i] == name) port.setDeviceNumber(static_cast<int>(i));
        std::string error;
        return port.open(error);
    };
    MidiLink& link = session.midiLink;
    if (!openPort(link.MIDIIn, link.devices.inputNames(), "bench-vdev-out:out") ||
        !openPort(link.MIDIOut, link.devices.outputNames(), "bench-vdev:in")) {
        state.SkipWithError("the device's ports can't be opened");
        return;
    }

    const std::string dumps[] = {BuildAllPresetsDump(0, 0, SampleEntries()),
                                 BuildAllScenesDump(0, {}, false), DefaultAllGlobalsDump(0, false)};
    const unsigned char requests[] = {DeviceCommand::RequestAllPresets, DeviceCommand::RequestAllScenes,
                                      DeviceCommand::RequestAllGlobals};
    std::size_t wireBytes = 0;
    for (const auto& dump : dumps) wireBytes += 2 * dump.size() + 8;  // out, request, back

    double seconds = 0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        for (const auto& dump : dumps)
            if (!link.MIDIOut.sendSysex(dump)) state.SkipWithError("sending failed");
        for (int i = 0; i < 3; ++i) {
            ExchangeRequest request;
            request.title = "Round trip";
            request.request = DeviceRequest(0, requests[i]);
            request.awaitedCommand = DeviceMessageCommand(dumps[i]);
            request.row = IntervalRow::MemoryImage;
            request.flow = TimeoutFlow::AllPresets;
            const ExchangeResult result = ExchangeDump(session, request);
            if (result.dump != dumps[static_cast<std::size_t>(i)]) state.SkipWithError("a dump came back changed");
        }
        seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }
    const double wireSeconds = static_cast<double>(wireBytes) / kWireBytesPerSecond;
    state.counters["bytes"] = static_cast<double>(wireBytes);
    state.counters["wire_s"] = wireSeconds;
    state.counters["ratio"] = seconds / static_cast<double>(state.iterations()) / wireSeconds;
}
BENCHMARK(BM_FullMemoryRoundTripOverJack)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

}  // namespace
}  // namespace tavlo
