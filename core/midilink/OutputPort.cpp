#include "midilink/OutputPort.h"

namespace tavlo {

bool OutputPort::open(std::string& error) {
    const std::string name = nameToOpen(error);
    if (name.empty()) return false;
    return opened(devices_.openOutput(name, error), name);
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
