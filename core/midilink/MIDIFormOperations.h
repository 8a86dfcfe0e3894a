#pragma once
#include <string>
#include "midilink/LinkContext.h"

namespace tavlo {

// The operations of the MIDI configuration window (MIDIForm), in core. The
// window only renders MidiLink::form and MidiConfig and calls these.

// Every message kind through MIDIIn's filter; run after a port opens.
void SetInputFilters(const LinkContext& session);

// The device list Clicks: close the port, take the list's line as the device
// number, open again. A port that can't be opened is named in a message and
// stays closed; the others keep working. True when the port is open.
bool MIDIInDevicesList_Click(const LinkContext& session);
bool MIDIOutDevicesList_Click(const LinkContext& session);
bool MIDILearnInDeviceList_Click(const LinkContext& session);
bool MIDISimOutDeviceList_Click(const LinkContext& session);

// The checks, the MIDIConfigTable row and the model's effects. False when a
// check failed: the user has been told, and the window stays.
bool OKButton(const LinkContext& session);

// The channel search: asks for the global settings on each identifier in
// turn until a device of the family answers. Ends with its message; true
// when found, MIDIChannelCombo then at that channel.
bool TestButton(const LinkContext& session);

// The MIDI half of the start-up: the configuration row into MidiConfig and
// the window, the device lists filled from the ports, the ports opened. With
// no row, and no device but the virtual PC1600, that one is selected. True
// when this is a first run and the window must be shown.
bool LoadMidiConfiguration(const LinkContext& session);

// The number in FreeMemText as the old text-to-number reading gives it:
// its leading digits, 0 when there are none.
long FreeMemoryValue(const std::string& text);

// "5|1I0": tolerance, "|", TimeoutCombo index, "I", ManualCheck.
std::string PackLearnTolerance(const std::string& tolerance, int timeoutIndex, bool manual);
// The reverse; a value without "|" is a tolerance alone (timeout 1, manual off).
void UnpackLearnTolerance(const std::string& packed, std::string& tolerance, int& timeoutIndex, bool& manual);

}  // namespace tavlo
