#include "midilink/OutputPort.h"

namespace tavlo {

int OutputPort::deviceCount() const { return static_cast<int>(devices_.outputNames().size()); }

std::string OutputPort::productName() const {
    const auto names = devices_.outputNames();
    if (deviceNumber_ < 0 || deviceNumber_ >= static_cast<int>(names.size())) return {};
    return names[static_cast<std::size_t>(deviceNumber_)];
}

bool OutputPort::open(std::string& error) {
    close();
    const std::string name = productName();
    if (name.empty()) {
        error = "No MIDI output device is selected.";
        return false;
    }
    connection_ = devices_.openOutput(name, error);
    if (!connection_) return false;
    openName_ = name;
    return true;
}

void OutputPort::close() {
    connection_.reset();
    openName_.clear();
}

bool OutputPort::send(const std::string& bytes) {
    if (!connection_) {
        lastError_ = "The MIDI output port is not open.";
        return false;
    }
    lastError_.clear();
    return connection_->send(bytes, lastError_);
}

bool OutputPort::sendSysex(const std::string& message) { return send(message); }

bool OutputPort::sendShort(int status, int data1, int data2) {
    std::string bytes(1, static_cast<char>(status & 0xFF));
    if (data1 >= 0) bytes += static_cast<char>(data1 & 0x7F);
    if (data2 >= 0) bytes += static_cast<char>(data2 & 0x7F);
    return send(bytes);
}

}  // namespace tavlo
