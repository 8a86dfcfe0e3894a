#pragma once
// The device's global settings: the model of one set (GlobalForm's
// controls), its ALL GLOBALS form and the texts its window shows.
//
// How a window uses this floor: GlobalForm, GlobalPoolForm and
// GotGlobalsForm hold no data of their own. GlobalForm renders
// GlobalsState::settings (each slider/text pair shows one field; the combo
// lines come from RemoteButtonLines(), FootSwitchLines(), CurrentMapLines(),
// the filter captions from kFilterCaptions, the device number's text from
// DeviceNumberText()), GlobalsState::ProgChangeList and MapList, and writes
// each edit back into the state, then calls notifyChanged(). Its buttons call
// the flows of GlobalsFlows.h and GlobalPool.h with a GlobalsContext;
// every question, refusal and file dialog comes through the Prompter, and
// GotGlobalsForm is the typed request of GlobalPool.h. A window subscribes
// to GlobalsState and refreshes from it when told.
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavlo {

inline constexpr int kMapEntries = 128;
inline constexpr int kFilterCount = 15;

// One set of global settings. Every number is what the form shows: the
// channels 1 to 16 (the byte is one less), the record channel 0 for "Off",
// the combos their list index, the delays their bytes. A received byte that
// has no line in a combo is kept as that byte.
struct GlobalSettings {
    // Three program change maps: 0-49 a preset, 50 and above the scene plus 50.
    std::array<std::array<int, kMapEntries>, 3> MidiMaps{};
    int ViewAngle = 0;
    int ChIn = 1;
    int ChOut = 1;
    std::array<bool, kFilterCount> Filters{};  // Check1 index 0 to 14
    int DevNum = 0;
    int RemoteButton = 0;
    int RemoteChannel = 1;  // 1 to 16; 0 once the original model's dump cleared it
    int StartingNote = 60;
    int RecChannel = 0;
    int CurrentMap = 0;
    int FootSwitch1 = 0;
    int FootSwitch2 = 0;
    int PerMessage = 0;
    int PerByte = 0;  // the text shows ten times this
    std::string Name;      // GlobalNameText
    bool Default = false;  // DefaultCheck

    bool operator==(const GlobalSettings&) const = default;
};

// New settings: what a cleared device holds, the settings of a failed first
// run, of Initialize All and of keys missing from `globals build`'s JSON.
GlobalSettings NewGlobalSettings();

// InitMidiMap: 0 fills all three maps with their defaults, 1 to 3 that map.
void InitMidiMap(GlobalSettings& settings, int which);

// Check1's captions by index: index 0 is "All MIDI Information".
extern const std::array<const char*, kFilterCount> kFilterCaptions;

// The lines of the combos. A value past the last line shows as "Value N".
const std::vector<std::string>& RemoteButtonLines();
const std::vector<std::string>& FootSwitchLines();
const std::vector<std::string>& CurrentMapLines();
std::string ComboText(const std::vector<std::string>& lines, int value);
// The value of a combo's text: its line, or N of "Value N"; nothing when the
// text is neither.
std::optional<int> ComboValue(const std::vector<std::string>& lines, std::string_view text);

// The sliders' ranges, in the numbers their texts stand for (PerByteSlider
// in its byte): a text that loses focus is clamped into them.
struct SliderRange {
    int low;
    int high;
    int clamp(int value) const { return value < low ? low : value > high ? high : value; }
};
inline constexpr SliderRange kChannelSlider{1, 16};    // ChIn, ChOut, RemoteButtonChannel
inline constexpr SliderRange kRecChannelSlider{0, 16};
inline constexpr SliderRange kByteSlider{0, 127};      // DevNum, ViewAngle, RemoteButtonStart, PerMessage, PerByte

// DevNumText: "10 (0Ah)", "200 (C8h)".
std::string DeviceNumberText(int number);
// RecChannelText: "Off" for 0, else the number. PerByteText: ten times the byte.
std::string RecChannelText(int channel);
std::string PerByteText(int perByte);

// A line of ProgChangeList: "005  ->  Preset05", "100  ->  Scene27".
std::string ProgChangeLine(int program, int value);
// MapList's targets: "Preset 00" to "Preset 49", then "Scene 00" to
// "Scene 77", each with its map value (0 to 127) as line data.
std::vector<std::pair<std::string, int>> MapTargets();

// The dump of the settings for the model, with the device identifier of the
// MIDI configuration in its header. Empty when no identifier is chosen
// (deviceId below 0). Nothing, with `problem` set, when a field's byte would
// be 128 or more (or below 0): such a dump would be broken.
std::optional<std::string> GlobalForm2Sysex(const GlobalSettings& settings, bool pc1600Model, int deviceId,
                                            std::string* problem = nullptr);

struct DecodedGlobals {
    std::optional<GlobalSettings> settings;  // nothing when refused
    std::string problem;                     // why it was refused
    // The dump came from an original PC1600 but the model is set to the
    // PC1600X: the caller shows kPC1600SysexNotice.
    bool modelNotice = false;
};
// Reads an ALL GLOBALS in any accepted form. Name and default flag are left
// empty; the caller names the set.
DecodedGlobals Sysex2GlobalForm(std::string_view dump, bool pc1600Model);

inline constexpr const char* kPC1600SysexTitle = "PC1600 Sysex Received";
extern const char* const kPC1600SysexNotice;

}  // namespace tavlo
