#pragma once
#include <string>

#include "midilink/ExchangeDump.h"
#include "midilink/LinkContext.h"

namespace tavlo {

inline constexpr int kEditBufferSlot = -1;

// Getting one preset from the device: select the slot (also in manual mode,
// so the device shows the right preset), pause, ask for the edit buffer and
// wait for its dump, pause, select again. The status line ends at "Parsing
// the New Preset Sysex data..."; the caller decodes the dump it is given.
// The editor has been initialised before (InitPresetButton, questions held
// back). `slot` is 0 to 49, or kEditBufferSlot for the edit buffer as it is.
ExchangeResult GetPresetFromDevice(const LinkContext& session, const std::string& title, int slot);

// Sending one preset to a slot: the dump into the edit buffer, 20 nn to
// write it to the slot, 00 nn to select it. False (the reason in the
// output port's lastError) when a message couldn't be sent.
bool SendPresetToDevice(const LinkContext& session, const std::string& presetDump, int slot);

}  // namespace tavlo
