#pragma once
#include <array>
#include <string>
#include <string_view>

// The fixed code tables of a preset: function lists, parameter formats,
// replace modes and the data wheel list, with their texts as shown.
namespace tavlo::PresetCodes {

struct FunctionEntry {
    std::string_view text;  // list text
    std::string_view tag;   // caption tag, empty for none
};

inline constexpr std::array<FunctionEntry, 5> kFaderFunctions = {{
    {"No Function", ""},
    {"Continuous Controller", "cc"},
    {"Master Fader", "mf"},
    {"MIDI String", "st"},
    {"DEVICE FADER!", ""},
}};
inline constexpr int kFaderDeviceEntry = 4;

inline constexpr std::array<FunctionEntry, 11> kButtonFunctions = {{
    {"Off (Fader ID)", ""},
    {"Mute Fader", "mute"},
    {"Solo Fader", "solo"},
    {"Program Change", "pc"},
    {"Note On/Off", "note"},
    {"MIDI String", "st"},
    {"MIDI String on Press/Release", "pr/r"},
    {"Toggle between MIDI Strings", "togl"},
    {"Send Fader", "sf"},
    {"Send Scene", "ss"},
    {"DEVICE BUTTON!", ""},
}};
inline constexpr int kButtonSendFader = 8;
inline constexpr int kButtonSendScene = 9;
inline constexpr int kButtonDeviceEntry = 10;

struct ParamFormatEntry {
    std::string_view text;
    int bytes;  // number of "pr" bytes the value fills
};

inline constexpr std::array<ParamFormatEntry, 13> kParamFormats = {{
    {"Single byte", 1},
    {"2 byte, 7 bits, hi to lo", 2},
    {"2 byte, 7 bits, lo to hi", 2},
    {"3 byte, 7 bits ,lo to hi", 3},
    {"3 byte, 7 bits, hi to lo", 3},
    {"2 byte, Nibs, hi to lo", 2},
    {"2 byte, Nibs, lo to hi", 2},
    {"3 byte, Nibs, hi to lo", 3},
    {"3 byte, Nibs, lo to hi", 3},
    {"4 byte, Nibs, hi to lo", 4},
    {"4 byte, Nibs, lo to hi", 4},
    {"2 byte, BCD Nibs, hi to lo", 2},
    {"2 byte, BCD Nibs, lo to hi", 2},
}};

inline constexpr std::array<std::string_view, 3> kReplaceModes = {"Merge", "Replace", "Update"};

// DataWheelCombo: "Off", "Fader #1".."Fader #16", "CV #1", "CV #2", "Last Fader!".
inline constexpr int kDataWheelEntries = 20;
std::string DataWheelText(int index);

// "Volume (cc)": a control's caption from its name and its function's tag.
std::string CaptionWithTag(std::string_view name, std::string_view tag);

// Channel as a fader shows it: "01".."16", "ChO" for the global channel.
std::string FaderChannelText(int channel);
// Channel as a button shows it: "01".."16", "ChOut".
std::string ButtonChannelText(int channel);

}  // namespace tavlo::PresetCodes
