// tavlo-cli midi ports / midi get / midi send: dumps to and from a device
// from scripts, through the same ports and exchange as the program.
#include <algorithm>
#include <fstream>
#include <iostream>

#include <alsa/asoundlib.h>
#include <jack/jack.h>

#include "CliCommand.h"
#include "CliWait.h"
#include "GlobalsCli.h"
#include "base/FileBytes.h"
#include "sysex/DeviceMessages.h"
#include "midilink/ExchangeDump.h"
#include "midilink/MIDIFormOperations.h"
#include "midilink/RtMidiBackend.h"
#include "db/PoolDatabase.h"
#include "shell/Program.h"
#include "midilink/MidiConfig.h"
#include "midilink/MidiLink.h"
#include "ui/StreamPrompter.h"
#include "ui/SteadyClock.h"

namespace tavlo::cli {
namespace {

void IgnoreAlsaError(const char*, int, const char*, int, const char*, ...) {}

// RtMidi's warnings go to std::cerr, which is ours again afterwards.
template <typename Call>
auto Quietly(Call call) {
    struct Restore {
        std::streambuf* kept;
        ~Restore() { std::cerr.rdbuf(kept); }
    } restore{std::cerr.rdbuf(nullptr)};
    return call();
}

// The system's MIDI with the libraries' own chatter kept off stderr. With no
// JACK server running, libjack writes every failed connection attempt of a
// port probe there (dozens of lines), alsa-lib does the same without a
// sequencer, and RtMidi adds a warning for each port it makes, from
// constructors that take no error callback. What was found, or that a device
// is missing, the commands say themselves.
class QuietSystemMidi : public MidiBackend {
public:
    explicit QuietSystemMidi(std::shared_ptr<MidiBackend> system) : system_(std::move(system)) {
        jack_set_error_function([](const char*) {});
        jack_set_info_function([](const char*) {});
        snd_lib_error_set_handler(&IgnoreAlsaError);
    }

    std::vector<std::string> inputNames() override {
        return Quietly([&] { return system_->inputNames(); });
    }
    std::vector<std::string> outputNames() override {
        return Quietly([&] { return system_->outputNames(); });
    }
    std::unique_ptr<InputConnection> openInput(const std::string& name, MessageSink sink,
                                               std::string& error) override {
        return Quietly([&] { return system_->openInput(name, std::move(sink), error); });
    }
    std::unique_ptr<OutputConnection> openOutput(const std::string& name, std::string& error) override {
        return Quietly([&] { return system_->openOutput(name, error); });
    }

private:
    std::shared_ptr<MidiBackend> system_;
};

// A session with no pool: the MIDI link is all these commands need.
struct MidiSession {
    // Progress goes to stderr whatever stream the messages go to.
    MidiSession(const CliArgs& args, std::ostream& err)
        : prompter(&err, MessageAnswer::OK),
          status(std::cerr, clock),
          session(std::make_unique<Program>(prompter, status, pump, clock)) {
        RtMidiOptions options;
        if (const auto api = args.option("--api"); !api || !ParseMidiApi(*api, options.api))
            options.api = DefaultMidiApi();
        options.clientName = "tavlo-cli";
        options.wirePacing = !args.flag("--no-pacing");
        options.wait = [this](std::int64_t ms) { Pause(*session, ms); };
        session->midiLink.setSystemBackend(std::make_shared<QuietSystemMidi>(std::make_shared<RtMidiBackend>(options)));
    }

    template <typename Port>
    bool open(Port& port, const std::vector<std::string>& names, const std::string& name, std::ostream& err) {
        const auto it = std::find(names.begin(), names.end(), name);
        if (it == names.end()) {
            err << "tavlo-cli: no MIDI device named \"" << name << "\" (see: tavlo-cli midi ports)\n";
            return false;
        }
        port.setDeviceNumber(static_cast<int>(it - names.begin()));
        std::string error;
        if (!port.open(error)) {
            err << "tavlo-cli: " << error << "\n";
            return false;
        }
        return true;
    }

    // MIDIIn and MIDIOut on the devices of those names.
    bool openPorts(const std::string& in, const std::string& out, std::ostream& err) {
        MidiLink& link = session->midiLink;
        return open(link.MIDIIn, link.devices.inputNames(), in, err) &&
               open(link.MIDIOut, link.devices.outputNames(), out, err);
    }

    StreamPrompter prompter;
    SteadyClock clock;
    CliStatus status;
    CliPump pump{status};
    std::unique_ptr<Program> session;
};

bool BadApi(const CliArgs& args, std::ostream& err) {
    MidiApi api;
    if (const auto text = args.option("--api"); text && !ParseMidiApi(*text, api)) {
        err << "tavlo-cli: --api takes jack or alsa\n";
        return true;
    }
    return false;
}

int midiPorts(const CliArgs& args, std::ostream& out, std::ostream& err) {
    if (BadApi(args, err)) return kExitUsage;
    MidiSession midi(args, err);
    const DeviceDirectory& devices = midi.session->midiLink.devices;
    for (const auto& name : devices.inputNames()) out << "in:  " << name << "\n";
    for (const auto& name : devices.outputNames()) out << "out: " << name << "\n";
    return kExitOk;
}

struct DumpKind {
    const char* word;
    const char* what;  // what the wait says it waits for
    unsigned char request;
    unsigned char answer;
    IntervalRow row;
    TimeoutFlow flow;
};
constexpr DumpKind kDumpKinds[] = {
    {"all-presets", "ALL PRESETS", DeviceCommand::RequestAllPresets, DeviceCommand::AllPresets,
     IntervalRow::MemoryImage, TimeoutFlow::AllPresets},
    {"all-scenes", "ALL SCENES", DeviceCommand::RequestAllScenes, DeviceCommand::AllScenes, IntervalRow::MemoryImage,
     TimeoutFlow::AllScenes},
    {"all-globals", "ALL GLOBALS", DeviceCommand::RequestAllGlobals, DeviceCommand::AllGlobals,
     IntervalRow::MemoryImage, TimeoutFlow::AllGlobals},
    {"edit-buffer", "the Preset in the edit buffer", DeviceCommand::RequestEditBuffer, DeviceCommand::PresetDump,
     IntervalRow::SinglePreset, TimeoutFlow::SinglePreset},
};

// One exchange of a command: `--timeout` in force (the whole wait is two
// ticks), the device number in the request. The dump, or nothing with the
// exit status in `status`.
std::optional<std::string> Exchange(MidiSession& midi, ExchangeRequest request, double timeout, int deviceId,
                                    std::ostream& err, int& status) {
    if (timeout > 0) request.interval = std::max<std::int64_t>(1, static_cast<std::int64_t>(timeout * 500));
    midi.session->midi.DeviceId = deviceId;
    const ExchangeResult result = ExchangeDump(*midi.session, request);
    if (result.outcome == ExchangeResult::Outcome::Cancelled) {
        err << "tavlo-cli: cancelled\n";
        status = kExitCancelled;
        return std::nullopt;
    }
    if (!result.received()) {
        status = kExitTimedOut;
        return std::nullopt;
    }
    return result.dump;
}

int midiGet(const CliArgs& args, std::ostream& out, std::ostream& err) {
    if (BadApi(args, err)) return kExitUsage;
    const DumpKind* kind = nullptr;
    if (args.positional().size() == 1)
        for (const auto& k : kDumpKinds)
            if (args.positional()[0] == k.word) kind = &k;
    const auto in = args.option("--in"), outName = args.option("--out"), file = args.option("-o");
    if (!kind || !in || !outName || !file) {
        err << "usage: tavlo-cli " << Commands().at("midi get").usage << "\n";
        return kExitUsage;
    }
    const int deviceId = static_cast<int>(args.wholeNumber("--device-id", 0, 15, 0));
    // 0 is the flow's own time-out; a day is more than any dump needs.
    const double timeout = args.seconds("--timeout", 86400, 0);

    MidiSession midi(args, err);
    if (!midi.openPorts(*in, *outName, err)) return kExitFailed;

    ExchangeRequest request;
    request.title = "Getting data from PC1600(x)";
    request.request = DeviceRequest(deviceId, kind->request);
    request.awaitedCommand = kind->answer;
    request.automaticPrompt = std::string("Waiting for ") + kind->what + " from PC1600(x)...";
    request.row = kind->row;
    request.flow = kind->flow;
    int status = 0;
    const std::optional<std::string> dump = Exchange(midi, request, timeout, deviceId, err, status);
    if (!dump) return status;

    std::ofstream file_(*file, std::ios::binary | std::ios::trunc);
    file_.write(dump->data(), static_cast<std::streamsize>(dump->size()));
    if (!file_) {
        err << "tavlo-cli: can't write " << *file << "\n";
        return kExitFailed;
    }
    out << kind->word << ": " << dump->size() << " bytes written to " << *file << "\n";
    return kExitOk;
}

int midiSend(const CliArgs& args, std::ostream& out, std::ostream& err) {
    if (BadApi(args, err)) return kExitUsage;
    const auto outName = args.option("--out");
    if (args.positional().size() != 1 || !outName) {
        err << "usage: tavlo-cli " << Commands().at("midi send").usage << "\n";
        return kExitUsage;
    }
    // Up to an hour between dumps.
    const std::int64_t pauseMs = args.wholeNumber("--pause", 0, 3600000, kPauseTimerMs);
    const std::string& path = args.positional()[0];
    const auto bytes = ReadInputFile(path, err);
    if (!bytes) return kExitBadInput;
    const auto messages = SplitSysex(*bytes);
    if (messages.empty()) {
        err << "tavlo-cli: " << path << " holds no system exclusive message\n";
        return kExitBadInput;
    }

    MidiSession midi(args, err);
    MidiLink& link = midi.session->midiLink;
    if (!midi.open(link.MIDIOut, link.devices.outputNames(), *outName, err)) return kExitFailed;
    for (std::size_t i = 0; i < messages.size(); ++i) {
        // The device needs a pause between dumps.
        if (i > 0) {
            midi.status.begin("Pausing before message " + std::to_string(i + 1) + " of " +
                              std::to_string(messages.size()));
            Pause(*midi.session, pauseMs);
        }
        midi.status.begin("Sending message " + std::to_string(i + 1) + " of " + std::to_string(messages.size()) +
                          " (" + std::to_string(messages[i].size()) + " bytes) to " + *outName);
        const bool sent = link.MIDIOut.sendSysex(messages[i]);
        midi.status.hide();
        if (!sent) {
            err << "tavlo-cli: sending failed: " << link.MIDIOut.lastError() << "\n";
            return kExitFailed;
        }
    }
    out << messages.size() << " message(s), " << bytes->size() << " bytes sent to " << *outName << "\n";
    return kExitOk;
}

// ALL GLOBALS from the device into a dump or a .tgl file.
int midiGetGlobals(const CliArgs& args, std::ostream& out, std::ostream& err) {
    if (BadApi(args, err)) return kExitUsage;
    const auto in = args.option("--in"), outName = args.option("--out"), file = args.option("-o");
    if (!args.positional().empty() || !in || !outName || !file) return UsageOf("midi get-globals", err);
    bool pc1600 = false;
    if (!ModelOption(args, pc1600, err)) return kExitUsage;
    const int deviceId = static_cast<int>(args.wholeNumber("--device-id", 0, 15, 0));
    const double timeout = args.seconds("--timeout", 86400, 0);

    MidiSession midi(args, err);
    if (!midi.openPorts(*in, *outName, err)) return kExitFailed;
    ExchangeRequest request;
    request.title = "Getting Globals from PC1600(x)";
    request.request = DeviceRequest(deviceId, DeviceCommand::RequestAllGlobals);
    request.awaitedCommand = DeviceCommand::AllGlobals;
    request.automaticPrompt = "Waiting for ALL GLOBALS from PC1600(x)...";
    request.row = IntervalRow::GlobalsWindow;
    request.flow = TimeoutFlow::GlobalSettings;
    int status = 0;
    const std::optional<std::string> dump = Exchange(midi, request, timeout, deviceId, err, status);
    if (!dump) return status;
    auto settings = SettingsFromBytes(*dump, false, pc1600, err);
    if (!settings) return kExitBadInput;
    settings->Name = "Received from PC1600(x)";
    // A dump is written as it came; the text from what it says.
    const std::string bytes = IsTglPath(*file) ? *SettingsToBytes(*settings, true, pc1600, deviceId, err) : *dump;
    if (!WriteWholeFile(*file, bytes)) {
        err << "tavlo-cli: can't write " << *file << "\n";
        return kExitFailed;
    }
    out << "all-globals: " << dump->size() << " bytes received, written to " << *file << "\n";
    return kExitOk;
}

// A dump or a .tgl file to the device as one ALL GLOBALS of the model.
int midiSendGlobals(const CliArgs& args, std::ostream& out, std::ostream& err) {
    if (BadApi(args, err)) return kExitUsage;
    const auto outName = args.option("--out");
    if (args.positional().size() != 1 || !outName) return UsageOf("midi send-globals", err);
    bool pc1600 = false;
    if (!ModelOption(args, pc1600, err)) return kExitUsage;
    const int deviceId = static_cast<int>(args.wholeNumber("--device-id", 0, 15, 0));
    const std::string& path = args.positional()[0];
    const auto bytes = ReadInputFile(path, err);
    if (!bytes) return kExitBadInput;
    const auto settings = SettingsFromBytes(*bytes, IsTglPath(path), pc1600, err);
    if (!settings) return kExitBadInput;
    const auto dump = SettingsToBytes(*settings, false, pc1600, deviceId, err);
    if (!dump) return kExitBadInput;

    MidiSession midi(args, err);
    MidiLink& link = midi.session->midiLink;
    if (!midi.open(link.MIDIOut, link.devices.outputNames(), *outName, err)) return kExitFailed;
    midi.status.begin("Sending ALL GLOBALS (" + std::to_string(dump->size()) + " bytes) to " + *outName);
    const bool sent = link.MIDIOut.sendSysex(*dump);
    midi.status.hide();
    if (!sent) {
        err << "tavlo-cli: sending failed: " << link.MIDIOut.lastError() << "\n";
        return kExitFailed;
    }
    out << "all-globals: " << dump->size() << " bytes sent to " << *outName << "\n";
    return kExitOk;
}

// The channel search of the configuration window: which identifier answers.
int midiSearch(const CliArgs& args, std::ostream& out, std::ostream& err) {
    if (BadApi(args, err)) return kExitUsage;
    const auto in = args.option("--in"), outName = args.option("--out");
    if (!in || !outName) {
        err << "usage: tavlo-cli " << Commands().at("midi search").usage << "\n";
        return kExitUsage;
    }
    MidiSession midi(args, out);
    if (!midi.openPorts(*in, *outName, err)) return kExitFailed;
    midi.status.begin("Searching for the PC1600(x) on MIDI channels 1 to 16");
    return TestButton(*midi.session) ? kExitOk : kExitTimedOut;
}

const CommandRegistrar search{{"midi search",
                               "midi search --in NAME --out NAME [--api jack|alsa]   find the device's identifier "
                               "(channel search; exit 3: no answer)",
                               {"--in", "--out", "--api"},
                               {"--no-pacing"},
                               midiSearch}};
const CommandRegistrar ports{{"midi ports", "midi ports [--api jack|alsa]   list the MIDI devices", {"--api"}, {}, midiPorts}};
const CommandRegistrar get{
    {"midi get",
     "midi get all-presets|all-scenes|all-globals|edit-buffer --in NAME --out NAME [--device-id N] [--timeout S] "
     "[--api jack|alsa] [--no-pacing] -o FILE.syx   get a dump from the device (exit 3: no answer, 4: Ctrl-C)",
     {"--in", "--out", "--device-id", "--timeout", "--api", "-o"},
     {"--no-pacing"},
     midiGet}};
const CommandRegistrar getGlobals{
    {"midi get-globals",
     "midi get-globals --in NAME --out NAME [--device-id N] [--timeout S] [--model pc1600|pc1600x] [--api jack|alsa] "
     "[--no-pacing] -o FILE.syx|FILE.tgl   get the device's global settings (exit 3: no answer, 4: Ctrl-C)",
     {"--in", "--out", "--device-id", "--timeout", "--model", "--api", "-o"},
     {"--no-pacing"},
     midiGetGlobals}};
const CommandRegistrar sendGlobals{
    {"midi send-globals",
     "midi send-globals FILE.syx|FILE.tgl --out NAME [--device-id N] [--model pc1600|pc1600x] [--api jack|alsa] "
     "[--no-pacing]   send global settings to the device",
     {"--out", "--device-id", "--model", "--api"},
     {"--no-pacing"},
     midiSendGlobals}};
const CommandRegistrar send{{"midi send",
                             "midi send FILE.syx --out NAME [--api jack|alsa] [--no-pacing] [--pause MS]   send the "
                             "dumps of a file to the device",
                             {"--out", "--api", "--pause"},
                             {"--no-pacing"},
                             midiSend}};

}  // namespace
}  // namespace tavlo::cli
