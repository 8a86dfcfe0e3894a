#include "db/ControllerNames.h"

#include <array>

namespace tavlo {
namespace {

constexpr std::array<std::string_view, 128> kNames = {
    "Bank Select (MSB)", "Modulation Wheel", "Breath Controller", "Undefined",
    "Foot Controller", "Portamento Time", "Data Entry (MSB)", "Channel Volume",
    "Balance", "Undefined", "Pan", "Expression Controller",
    "Effect Control 1", "Effect Control 2", "Undefined", "Undefined",
    "General Purpose Controller 1", "General Purpose Controller 2",
    "General Purpose Controller 3", "General Purpose Controller 4",
    "Undefined", "Undefined", "Undefined", "Undefined",
    "Undefined", "Undefined", "Undefined", "Undefined",
    "Undefined", "Undefined", "Undefined", "Undefined",
    // 32-63: the LSBs of 0-31.
    "Bank Select (LSB)", "Modulation Wheel (LSB)", "Breath Controller (LSB)", "Undefined",
    "Foot Controller (LSB)", "Portamento Time (LSB)", "Data Entry (LSB)", "Channel Volume (LSB)",
    "Balance (LSB)", "Undefined", "Pan (LSB)", "Expression Controller (LSB)",
    "Effect Control 1 (LSB)", "Effect Control 2 (LSB)", "Undefined", "Undefined",
    "General Purpose Controller 1 (LSB)", "General Purpose Controller 2 (LSB)",
    "General Purpose Controller 3 (LSB)", "General Purpose Controller 4 (LSB)",
    "Undefined", "Undefined", "Undefined", "Undefined",
    "Undefined", "Undefined", "Undefined", "Undefined",
    "Undefined", "Undefined", "Undefined", "Undefined",
    // 64-
    "Damper Pedal (Sustain)", "Portamento On/Off", "Sostenuto", "Soft Pedal",
    "Legato Footswitch", "Hold 2", "Sound Controller 1 (Sound Variation)",
    "Sound Controller 2 (Timbre)", "Sound Controller 3 (Release Time)",
    "Sound Controller 4 (Attack Time)", "Sound Controller 5 (Brightness)",
    "Sound Controller 6 (Decay Time)", "Sound Controller 7 (Vibrato Rate)",
    "Sound Controller 8 (Vibrato Depth)", "Sound Controller 9 (Vibrato Delay)",
    "Sound Controller 10",
    "General Purpose Controller 5", "General Purpose Controller 6",
    "General Purpose Controller 7", "General Purpose Controller 8",
    "Portamento Control", "Undefined", "Undefined", "Undefined",
    "High Resolution Velocity Prefix", "Undefined", "Undefined",
    "Effects 1 Depth (Reverb)", "Effects 2 Depth (Tremolo)", "Effects 3 Depth (Chorus)",
    "Effects 4 Depth (Detune)", "Effects 5 Depth (Phaser)",
    "Data Increment", "Data Decrement",
    "Non-Registered Parameter Number (LSB)", "Non-Registered Parameter Number (MSB)",
    "Registered Parameter Number (LSB)", "Registered Parameter Number (MSB)",
    "Undefined", "Undefined", "Undefined", "Undefined", "Undefined", "Undefined",
    "Undefined", "Undefined", "Undefined", "Undefined", "Undefined", "Undefined",
    "Undefined", "Undefined", "Undefined", "Undefined", "Undefined", "Undefined",
    // 120-127: channel mode messages.
    "All Sound Off", "Reset All Controllers", "Local Control On/Off", "All Notes Off",
    "Omni Mode Off", "Omni Mode On", "Mono Mode On", "Poly Mode On",
};

}  // namespace

std::string_view ControllerName(int ccNum) {
    return ccNum >= 0 && ccNum < 128 ? kNames[static_cast<std::size_t>(ccNum)] : std::string_view("Undefined");
}

}  // namespace tavlo
