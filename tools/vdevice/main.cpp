// tavlo-vdevice: the virtual PC1600 on MIDI ports of its own (JACK or ALSA),
// so that Tavlo, tavlo-cli or any other program can talk to a device without
// the hardware.
#include <atomic>
#include <chrono>
#include <csignal>
#include <iostream>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "midilink/MessageQueue.h"
#include "midilink/RtMidiBackend.h"
#include "midilink/VirtualPC1600.h"

using namespace tavlo;

namespace {

std::atomic<bool> gStop{false};

void OnSignal(int) { gStop = true; }

void Usage(std::ostream& out) {
    out << "usage: tavlo-vdevice [--api jack|alsa] [--name NAME] [--device-id N] [--model x|1600]\n"
           "                     [--reply-delay MS] [--pacing] [--load FILE.syx] [--save-on-exit FILE.syx]\n"
           "  Opens the ports NAME:in and NAME-out:out and answers as a PC1600(x) until stopped.\n"
           "  --pacing sends at MIDI wire speed, as a real device does.\n";
}

bool ToInt(const std::string& text, int low, int high, int& value) {
    try {
        std::size_t used = 0;
        value = std::stoi(text, &used);
        return used == text.size() && value >= low && value <= high;
    } catch (const std::exception&) {
        return false;
    }
}


struct Options {
    MidiApi api = DefaultMidiApi();
    std::string name = "Tavlo-VDevice";
    std::string loadPath, savePath;
    VirtualDeviceSettings settings;
};

// Reads the command line into `o`; an exit status when the run ends here
// (after --help, or on an argument it can't read).
std::optional<int> ReadArguments(const std::vector<std::string>& args, Options& o) {
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        auto value = [&](std::string& out) {
            if (i + 1 >= args.size()) return false;
            out = args[++i];
            return true;
        };
        std::string v;
        if (a == "--help" || a == "-h") {
            Usage(std::cout);
            return 0;
        } else if (a == "--pacing") {
            o.settings.wirePacing = true;
        } else if (a == "--api" && value(v) && ParseMidiApi(v, o.api)) {
        } else if (a == "--name" && value(v) && !v.empty()) {
            o.name = v;
        } else if (a == "--device-id" && value(v) && ToInt(v, 0, 15, o.settings.deviceId)) {
        } else if (a == "--model" && value(v) && (v == "x" || v == "1600")) {
            o.settings.pc1600Model = v == "1600";
        } else if (a == "--reply-delay" && value(v) && ToInt(v, 0, 600000, o.settings.replyDelayMs)) {
        } else if (a == "--load" && value(o.loadPath)) {
        } else if (a == "--save-on-exit" && value(o.savePath)) {
        } else {
            std::cerr << "tavlo-vdevice: bad argument: " << a << "\n";
            Usage(std::cerr);
            return 64;
        }
    }
    return std::nullopt;
}

}  // namespace

int main(int argc, char** argv) {
    Options o;
    if (const auto status = ReadArguments({argv + 1, argv + argc}, o)) return *status;
    const MidiApi api = o.api;
    const std::string& name = o.name;
    const std::string& loadPath = o.loadPath;
    const std::string& savePath = o.savePath;
    const VirtualDeviceSettings& settings = o.settings;

    VirtualPC1600 device(settings);
    std::string error;
    if (!loadPath.empty() && !device.loadFile(loadPath, error)) {
        std::cerr << "tavlo-vdevice: " << error << "\n";
        return 2;
    }

    RtMidiOptions options;
    options.api = api;
    options.clientName = name;
    options.wirePacing = settings.wirePacing;
    RtMidiBackend backend(options);
    MessageQueue queue;
    queue.setBuffering(true);
    // One client per port, as RtMidi has it: NAME:in and NAME-out:out.
    auto input = backend.openVirtualInput(name, "in", [&](std::string bytes, std::int64_t t) { queue.push(bytes, t); },
                                          error);
    if (!input) {
        std::cerr << "tavlo-vdevice: can't open the input port on " << MidiApiName(api) << ": " << error << "\n";
        return 1;
    }
    auto output = backend.openVirtualOutput(name + "-out", "out", error);
    if (!output) {
        std::cerr << "tavlo-vdevice: can't open the output port on " << MidiApiName(api) << ": " << error << "\n";
        return 1;
    }

    std::signal(SIGINT, OnSignal);
    std::signal(SIGTERM, OnSignal);
    std::cout << "tavlo-vdevice ready: " << MidiApiName(api) << " ports " << name << ":in " << name << "-out:out, device id "
              << settings.deviceId << (settings.pc1600Model ? ", PC1600" : ", PC1600X") << std::endl;

    while (!gStop) {
        const bool answered = AnswerOldest(queue, device, [&](const std::string& reply) {
            if (settings.replyDelayMs > 0 && !gStop)
                std::this_thread::sleep_for(std::chrono::milliseconds(settings.replyDelayMs));
            if (!output->send(reply, error)) std::cerr << "tavlo-vdevice: reply not sent: " << error << "\n";
        });
        if (!answered) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }

    if (!savePath.empty() && !device.saveFile(savePath, error)) {
        std::cerr << "tavlo-vdevice: " << error << "\n";
        return 1;
    }
    return 0;
}
