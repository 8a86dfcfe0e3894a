// MidiStreamAssembler on any bytes in any pieces: the messages don't depend
// on how the backend cut the stream, and each is one a MIDI line can carry:
// a real-time byte alone, a sysex from F0 to F7 with only data between, or a
// status byte with exactly its data bytes.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "midilink/MidiStreamAssembler.h"

namespace {

std::size_t DataLength(unsigned char status) {
    if (status < 0xF0) return (status & 0xF0) == 0xC0 || (status & 0xF0) == 0xD0 ? 1 : 2;
    if (status == 0xF1 || status == 0xF3) return 1;
    return status == 0xF2 ? 2 : 0;
}

bool Sound(const std::string& m) {
    if (m.empty()) return false;
    const auto first = static_cast<unsigned char>(m[0]);
    if (first >= 0xF8) return m.size() == 1;
    if (first == 0xF0) {
        if (m.size() < 2 || static_cast<unsigned char>(m.back()) != 0xF7) return false;
        for (std::size_t i = 1; i + 1 < m.size(); ++i)
            if (static_cast<unsigned char>(m[i]) >= 0x80) return false;
        return m.size() <= tavlo::MidiStreamAssembler::kMaxSysex + 1;
    }
    if (first < 0x80 || first == 0xF7 || m.size() != 1 + DataLength(first)) return false;
    for (std::size_t i = 1; i < m.size(); ++i)
        if (static_cast<unsigned char>(m[i]) >= 0x80) return false;
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::size_t piece = data[0] % 16 + 1;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);

    tavlo::MidiStreamAssembler whole;
    const std::vector<std::string> expected = whole.feed(bytes);
    tavlo::MidiStreamAssembler pieces;
    std::vector<std::string> got;
    for (std::size_t at = 0; at < bytes.size(); at += piece)
        for (auto& m : pieces.feed(bytes.substr(at, piece))) got.push_back(std::move(m));
    if (got != expected) __builtin_trap();
    for (const auto& m : expected)
        if (!Sound(m)) __builtin_trap();
    return 0;
}
