#include "midilink/DeviceDirectory.h"

#include <algorithm>

namespace tavlo {

void DeviceDirectory::add(std::shared_ptr<MidiBackend> backend) {
    if (backend) backends_.push_back(std::move(backend));
}

void DeviceDirectory::remove(const MidiBackend* backend) {
    std::erase_if(backends_, [&](const auto& b) { return b.get() == backend; });
}

std::vector<std::string> DeviceDirectory::inputNames() const {
    std::vector<std::string> names;
    for (const auto& backend : backends_)
        for (auto& name : backend->inputNames()) names.push_back(std::move(name));
    return names;
}

std::vector<std::string> DeviceDirectory::outputNames() const {
    std::vector<std::string> names;
    for (const auto& backend : backends_)
        for (auto& name : backend->outputNames()) names.push_back(std::move(name));
    return names;
}

std::unique_ptr<InputConnection> DeviceDirectory::openInput(const std::string& name, MessageSink sink,
                                                            std::string& error) const {
    for (const auto& backend : backends_) {
        const auto names = backend->inputNames();
        if (std::find(names.begin(), names.end(), name) == names.end()) continue;
        std::string reason;
        auto connection = backend->openInput(name, sink, reason);
        if (!connection) error = "The MIDI input \"" + name + "\" could not be opened: " + reason;
        return connection;
    }
    error = "The MIDI input \"" + name + "\" is not present on this system.";
    return nullptr;
}

std::unique_ptr<OutputConnection> DeviceDirectory::openOutput(const std::string& name, std::string& error) const {
    for (const auto& backend : backends_) {
        const auto names = backend->outputNames();
        if (std::find(names.begin(), names.end(), name) == names.end()) continue;
        std::string reason;
        auto connection = backend->openOutput(name, reason);
        if (!connection) error = "The MIDI output \"" + name + "\" could not be opened: " + reason;
        return connection;
    }
    error = "The MIDI output \"" + name + "\" is not present on this system.";
    return nullptr;
}

}  // namespace tavlo
