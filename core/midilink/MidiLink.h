#pragma once
#include <memory>
#include <string>

#include "midilink/DeviceDirectory.h"
#include "midilink/InputPort.h"
#include "midilink/MIDIFormState.h"
#include "midilink/OutputPort.h"
#include "midilink/VirtualDeviceBackend.h"
#include "midilink/WaitTimer.h"

namespace tavlo {

class Clock;

// The four MIDI ports of the program and what goes with them: the devices
// they can reach (the system's, and the virtual PC1600 that is always
// there), WaitTimer, the learn tolerance, and the configuration window's
// lists.
class MidiLink {
public:
    explicit MidiLink(const Clock& clock);
    ~MidiLink();
    MidiLink(const MidiLink&) = delete;
    MidiLink& operator=(const MidiLink&) = delete;

    // The system's MIDI (or a test's loopback): listed before the virtual
    // device. Ports open on the old backend are closed first.
    void setSystemBackend(std::shared_ptr<MidiBackend> backend);
    MidiBackend* systemBackend() const { return system_.get(); }

    VirtualPC1600& virtualDevice() { return virtual_->device(); }

    DeviceDirectory devices;
    InputPort MIDIIn{devices};
    OutputPort MIDIOut{devices};
    InputPort MIDILearnIn{devices};
    OutputPort MIDISimOut{devices};

    WaitTimer waitTimer;
    // Raised by WaitTimer's second tick: the awaited message did not come.
    bool TimedOut = false;
    std::string LearnTolerance;  // kept in the Tag of MIDIIn, as ever
    MIDIFormState form;
    // PeekForm's list of the names in the device.
    ListState PeekList;

private:
    std::shared_ptr<VirtualDeviceBackend> virtual_;
    std::shared_ptr<MidiBackend> system_;
};

}  // namespace tavlo
