#include "midilink/MidiStreamAssembler.h"

namespace tavlo {
namespace {

// Data bytes after a status byte other than F0, F7 and real time.
std::size_t DataLength(unsigned char status) {
    if (status < 0xF0) {
        const unsigned char kind = status & 0xF0;
        return kind == 0xC0 || kind == 0xD0 ? 1 : 2;
    }
    switch (status) {
    case 0xF1:  // time code quarter frame
    case 0xF3:  // song select
        return 1;
    case 0xF2:  // song position
        return 2;
    default:  // tune request, and the undefined F4 and F5
        return 0;
    }
}

}  // namespace

void MidiStreamAssembler::drop() {
    partial_.clear();
    inSysex_ = false;
    expected_ = 0;
}

void MidiStreamAssembler::endSysex() {
    if (inSysex_) drop();
}

std::vector<std::string> MidiStreamAssembler::feed(std::string_view bytes) {
    std::vector<std::string> messages;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0xF8) {
            messages.emplace_back(1, c);
        } else if (byte == 0xF0) {
            drop();
            running_ = 0;
            partial_ = c;
            inSysex_ = true;
        } else if (byte == 0xF7) {
            if (inSysex_) {
                partial_ += c;
                messages.push_back(std::move(partial_));
            }
            // An F7 without its F0 belongs to nothing.
            drop();
            running_ = 0;
        } else if (byte >= 0x80) {
            drop();
            running_ = byte < 0xF0 ? byte : 0;
            partial_ = c;
            expected_ = DataLength(byte);
            if (expected_ == 0) {
                messages.push_back(std::move(partial_));
                drop();
            }
        } else if (inSysex_) {
            partial_ += c;
            if (partial_.size() > kMaxSysex) drop();
        } else if (!partial_.empty() || running_ != 0) {
            if (partial_.empty()) {
                partial_ = static_cast<char>(running_);
                expected_ = DataLength(running_);
            }
            partial_ += c;
            if (partial_.size() == expected_ + 1) {
                messages.push_back(std::move(partial_));
                drop();
            }
        }
        // Else a data byte with no status to belong to: a line's receiver
        // drops it.
    }
    return messages;
}

}  // namespace tavlo
