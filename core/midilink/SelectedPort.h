#pragma once
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "midilink/DeviceDirectory.h"

namespace tavlo {

// What the input and the output port objects share: a device picked by its
// number in the directory's list for that direction, and the connection
// opened on it under that device's name.
template <typename Connection>
class SelectedPort {
public:
    explicit SelectedPort(const DeviceDirectory& devices) : devices_(devices) {}
    SelectedPort(const SelectedPort&) = delete;
    SelectedPort& operator=(const SelectedPort&) = delete;

    int deviceCount() const { return static_cast<int>(names().size()); }
    void setDeviceNumber(int number) { deviceNumber_ = number; }
    int deviceNumber() const { return deviceNumber_; }
    // Name of the selected device; empty when the number is out of range.
    std::string productName() const {
        const auto all = names();
        if (deviceNumber_ < 0 || deviceNumber_ >= static_cast<int>(all.size())) return {};
        return all[static_cast<std::size_t>(deviceNumber_)];
    }

    bool isOpen() const { return connection_ != nullptr; }
    const std::string& openName() const { return openName_; }
    void close() {
        connection_.reset();
        openName_.clear();
    }

protected:
    ~SelectedPort() = default;

    std::vector<std::string> names() const {
        if constexpr (std::is_same_v<Connection, InputConnection>) return devices_.inputNames();
        else return devices_.outputNames();
    }
    // Closes the port and gives the selected device's name to open; empty,
    // with the reason, when no device is selected.
    std::string nameToOpen(std::string& error) {
        close();
        std::string name = productName();
        if (name.empty())
            error = std::is_same_v<Connection, InputConnection> ? "No MIDI input device is selected."
                                                                : "No MIDI output device is selected.";
        return name;
    }
    // Takes a connection just opened on `name`; false when there is none.
    bool opened(std::unique_ptr<Connection> connection, const std::string& name) {
        connection_ = std::move(connection);
        if (!connection_) return false;
        openName_ = name;
        return true;
    }

    const DeviceDirectory& devices_;
    std::unique_ptr<Connection> connection_;

private:
    std::string openName_;
    int deviceNumber_ = -1;
};

}  // namespace tavlo
