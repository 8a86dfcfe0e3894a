// tavlo-rawpeer: a test-only device on JACK that answers every message it
// hears with bytes exactly as given, each argument one MIDI event, as a
// device on a real MIDI line can send them: a clock byte inside a dump, a
// note in the middle, a dump cut off and sent again. Or it floods the line.
//
//   tavlo-rawpeer NAME [--gap MS] [--flood MS] EVENT...
//
// EVENT is hexadecimal ("F8", "903C40") or @FILE for a file's bytes. The
// ports are NAME:in and NAME-out:out; "ready" is printed once they exist.
// --flood sends clock and notes for MS milliseconds after each message heard,
// before the events.
#include <RtMidi.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

namespace {

std::atomic<int> heard{0};
volatile std::sig_atomic_t stop = 0;

void Heard(double, std::vector<unsigned char>* message, void*) {
    if (message && !message->empty() && (*message)[0] == 0xF0) ++heard;
}

bool Event(const std::string& arg, std::vector<unsigned char>& bytes) {
    if (!arg.empty() && arg[0] == '@') {
        std::ifstream in(arg.substr(1), std::ios::binary);
        bytes.assign(std::istreambuf_iterator<char>(in), {});
        return static_cast<bool>(in) || in.eof();
    }
    if (arg.size() % 2 != 0) return false;
    for (std::size_t i = 0; i < arg.size(); i += 2)
        bytes.push_back(static_cast<unsigned char>(std::stoi(arg.substr(i, 2), nullptr, 16)));
    return true;
}

void Sleep(int ms) { std::this_thread::sleep_for(std::chrono::milliseconds(ms)); }

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "usage: tavlo-rawpeer NAME [--gap MS] [--flood MS] EVENT...\n";
        return 64;
    }
    const std::string name = argv[1];
    int gap = 20, flood = 0;
    std::vector<std::vector<unsigned char>> events;
    try {
        for (int i = 2; i < argc; ++i) {
            const std::string arg = argv[i];
            if (arg == "--gap" && i + 1 < argc) gap = std::stoi(argv[++i]);
            else if (arg == "--flood" && i + 1 < argc) flood = std::stoi(argv[++i]);
            else if (std::vector<unsigned char> bytes; Event(arg, bytes)) events.push_back(std::move(bytes));
            else throw std::invalid_argument(arg);
        }
    } catch (const std::exception& e) {
        std::cerr << "tavlo-rawpeer: bad argument " << e.what() << "\n";
        return 64;
    }
    std::signal(SIGTERM, [](int) { stop = 1; });
    std::signal(SIGINT, [](int) { stop = 1; });
    try {
        RtMidiIn in(RtMidi::UNIX_JACK, name);
        in.ignoreTypes(false, false, false);
        in.setCallback(&Heard);
        in.openVirtualPort("in");
        RtMidiOut out(RtMidi::UNIX_JACK, name + "-out");
        out.openVirtualPort("out");
        std::cout << "ready" << std::endl;
        int answered = 0;
        while (!stop) {
            if (heard.load() == answered) {
                Sleep(5);
                continue;
            }
            ++answered;
            const auto start = std::chrono::steady_clock::now();
            const unsigned char clock = 0xF8, note[3] = {0x90, 0x3C, 0x40};
            while (!stop && std::chrono::steady_clock::now() - start < std::chrono::milliseconds(flood)) {
                out.sendMessage(&clock, 1);
                out.sendMessage(note, 3);
                Sleep(1);
            }
            for (const auto& event : events) {
                Sleep(gap);
                out.sendMessage(event.data(), event.size());
            }
        }
    } catch (const RtMidiError& e) {
        std::cerr << "tavlo-rawpeer: " << e.getMessage() << "\n";
        return 1;
    }
    return 0;
}
