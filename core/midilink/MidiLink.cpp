#include "midilink/MidiLink.h"

namespace tavlo {

MidiLink::MidiLink(const Clock& clock) : virtual_(std::make_shared<VirtualDeviceBackend>(clock)) {
    devices.add(virtual_);
}

MidiLink::~MidiLink() {
    MIDIIn.close();
    MIDIOut.close();
    MIDILearnIn.close();
    MIDISimOut.close();
}

void MidiLink::setSystemBackend(std::shared_ptr<MidiBackend> backend) {
    MIDIIn.close();
    MIDIOut.close();
    MIDILearnIn.close();
    MIDISimOut.close();
    if (system_) devices.remove(system_.get());
    system_ = std::move(backend);
    // The system's devices come first in the lists, the virtual device last.
    devices.remove(virtual_.get());
    devices.add(system_);
    devices.add(virtual_);
}

}  // namespace tavlo
