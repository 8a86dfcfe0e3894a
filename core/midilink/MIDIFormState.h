#pragma once
#include <string>

#include "ui/ListState.h"
#include "ui/Observable.h"

namespace tavlo {

// What MIDIForm shows beyond the settings in MidiConfig: the device lists,
// the free memory as typed, the printers, and the window's own state. The
// scalar controls (MIDIChannelCombo, ModelOption, TimeoutCombo, ManualCheck)
// are MidiConfig's fields, which every other part reads.
struct MIDIFormState : Observable {
    ListState MIDIInDevicesList;
    ListState MIDIOutDevicesList;
    ListState MIDILearnInDeviceList;
    ListState MIDISimOutDeviceList;
    ListState PrinterCombo;
    std::string FreeMemText = "20904";
    std::string Caption = "Midi Configuration";
    bool ControlsEnabled = true;
    bool Visible = false;
};

}  // namespace tavlo
