#include "globals/GlobalSettings.h"

#include <cstdio>

#include "base/MSBModule.h"
#include "sysex/AllGlobalsDump.h"
#include "sysex/DeviceMessages.h"

namespace tavlo {

namespace O = GlobalsOffset;

const std::array<const char*, kFilterCount> kFilterCaptions = {
    "All MIDI Information", "All Notes",         "Mod Wheel",          "Foot Pedal",         "Volume",
    "Sustain",              "Reset Controllers", "All Notes Off",      "Program Change",     "Polyphonic Aftertouch",
    "Channel Aftertouch",   "Pitch Bend",        "System Exclusive",   "System Common",      "System Realtime",
};

const char* const kPC1600SysexNotice =
    "You have your PC1600 Model set to 2.2 (X version) but the ALL GLOBALS Sysex just received was from a non-X "
    "version (1.1) device.  Please reconcile this discrepancy on the MIDI Config Form";

namespace {

// Check1 index 0 fills the last filter byte; 1 to 14 the ones before it.
std::size_t FilterOffset(int index) {
    return index == 0 ? O::Filters + kFilterCount - 1 : O::Filters + static_cast<std::size_t>(index) - 1;
}

int Byte(std::string_view body, std::size_t offset) {
    return static_cast<unsigned char>(body[offset - O::Map1]);
}

}  // namespace

GlobalSettings NewGlobalSettings() {
    // The one definition lives with the dump a cleared device sends.
    return *Sysex2GlobalForm(DefaultAllGlobalsDump(0, false), false).settings;
}

void InitMidiMap(GlobalSettings& settings, int which) {
    for (int map = 1; map <= 3; ++map) {
        if (which != 0 && which != map) continue;
        auto& entries = settings.MidiMaps[static_cast<std::size_t>(map - 1)];
        for (int program = 0; program < kMapEntries; ++program) {
            int value = 0;
            if (map < 3) value = program < 50 ? program : 0;
            else value = program < 78 ? program + 50 : 50;
            entries[static_cast<std::size_t>(program)] = value;
        }
    }
}

const std::vector<std::string>& RemoteButtonLines() {
    static const std::vector<std::string> lines{"Off", "On"};
    return lines;
}

const std::vector<std::string>& FootSwitchLines() {
    static const std::vector<std::string> lines = [] {
        std::vector<std::string> made{"Enter"};
        for (int n = 1; n <= 16; ++n) made.push_back("Button" + std::to_string(n));
        return made;
    }();
    return lines;
}

const std::vector<std::string>& CurrentMapLines() {
    static const std::vector<std::string> lines{"None", "Map 1", "Map 2", "Map 3"};
    return lines;
}

std::string ComboText(const std::vector<std::string>& lines, int value) {
    if (value >= 0 && value < static_cast<int>(lines.size())) return lines[static_cast<std::size_t>(value)];
    return "Value " + std::to_string(value);
}

std::optional<int> ComboValue(const std::vector<std::string>& lines, std::string_view text) {
    for (std::size_t k = 0; k < lines.size(); ++k)
        if (lines[k] == text) return static_cast<int>(k);
    constexpr std::string_view prefix = "Value ";
    if (text.substr(0, prefix.size()) != prefix) return std::nullopt;
    const std::string_view digits = text.substr(prefix.size());
    if (digits.empty() || digits.size() > 3) return std::nullopt;
    int value = 0;
    for (char c : digits) {
        if (c < '0' || c > '9') return std::nullopt;
        value = value * 10 + (c - '0');
    }
    return value;
}

std::string DeviceNumberText(int number) {
    char hex[16];
    std::snprintf(hex, sizeof hex, "%02X", static_cast<unsigned>(number));
    return std::to_string(number) + " (" + hex + "h)";
}

std::string RecChannelText(int channel) { return channel == 0 ? "Off" : std::to_string(channel); }

std::string PerByteText(int perByte) { return std::to_string(perByte * 10); }

std::string ProgChangeLine(int program, int value) {
    char number[8];
    std::snprintf(number, sizeof number, "%03d", program);
    if (value < 50) return std::string(number) + "  ->  Preset" + TwoDigits(value);
    return std::string(number) + "  ->  Scene" + TwoDigits(value - 50);
}

std::vector<std::pair<std::string, int>> MapTargets() {
    std::vector<std::pair<std::string, int>> targets;
    for (int preset = 0; preset < 50; ++preset) targets.emplace_back("Preset " + TwoDigits(preset), preset);
    // Scenes stop at 77: a map entry is one data byte.
    for (int scene = 0; scene <= 77; ++scene) targets.emplace_back("Scene " + TwoDigits(scene), scene + 50);
    return targets;
}

std::optional<std::string> GlobalForm2Sysex(const GlobalSettings& s, bool pc1600Model, int deviceId,
                                            std::string* problem) {
    if (deviceId < 0) return std::string();
    std::string dump = DeviceDumpHeader(deviceId, DeviceCommand::AllGlobals);
    std::string bad;
    const auto put = [&](int value, const char* field) {
        if ((value < 0 || value > 127) && bad.empty())
            bad = std::string("The ") + field + " value " + std::to_string(value) +
                  " does not fit in a byte of the ALL GLOBALS message (0 to 127).";
        dump += static_cast<char>(value & 0x7F);
    };
    for (int map = 0; map < 3; ++map)
        for (int value : s.MidiMaps[static_cast<std::size_t>(map)]) put(value, "program change map");
    put(s.ViewAngle, "view angle");
    put(s.ChIn - 1, "MIDI channel in");
    put(s.ChOut - 1, "MIDI channel out");
    std::array<int, kFilterCount> filters{};
    for (int k = 0; k < kFilterCount; ++k) filters[FilterOffset(k) - O::Filters] = s.Filters[static_cast<std::size_t>(k)];
    for (int on : filters) dump += static_cast<char>(on ? 1 : 0);
    put(s.DevNum, "device number");
    if (pc1600Model) {
        dump.append(4, '\0');
    } else {
        put(s.RemoteButton, "remote button");
        // A remote channel cleared by an original PC1600's dump shows 0.
        put(s.RemoteChannel == 0 ? 0 : s.RemoteChannel - 1, "remote channel");
        put(s.StartingNote, "starting note");
        put(s.RecChannel, "record channel");
    }
    put(s.CurrentMap, "current map");
    put(s.FootSwitch1, "foot switch 1");
    put(s.FootSwitch2, "foot switch 2");
    if (!pc1600Model) {
        put(s.PerMessage, "delay after a sysex message");
        put(s.PerByte, "delay per byte");
    }
    dump += '\xF7';
    if (!bad.empty()) {
        if (problem) *problem = bad;
        return std::nullopt;
    }
    return dump;
}

DecodedGlobals Sysex2GlobalForm(std::string_view dump, bool pc1600Model) {
    DecodedGlobals result;
    if (DeviceMessageCommand(dump) != DeviceCommand::AllGlobals) {
        result.problem = "This is not an ALL GLOBALS message of the PC1600(x).";
        return result;
    }
    if (!IsAllGlobalsDump(dump)) {
        result.problem = "An ALL GLOBALS message is 420 bytes long (418 or 414 from a PC1600); this one has " +
                         std::to_string(dump.size()) + " bytes.";
        return result;
    }
    // Only the original device's own lengths carry an F7 inside.
    const bool fromDevice1600 = IsDevice1600GlobalsDump(dump) && dump.size() != kAllGlobalsLengthX;
    for (std::size_t at = 1; at + 1 < dump.size(); ++at)
        if (static_cast<unsigned char>(dump[at]) > 127 && !(fromDevice1600 && at == O::RecordChannel)) {
            result.problem = "The ALL GLOBALS message holds a byte above 127 at position " + std::to_string(at + 1) + ".";
            return result;
        }
    const std::string body = AllGlobalsBody(dump);
    // Tavlo's own form of the original model carries no delays: its F7 sits
    // where the first delay would be.
    const bool hasDelays = dump.size() == kAllGlobalsLengthX;
    GlobalSettings s;
    s.ViewAngle = Byte(body, O::ViewAngle);
    s.ChIn = Byte(body, O::ChannelIn) + 1;
    s.ChOut = Byte(body, O::ChannelOut) + 1;
    s.RecChannel = pc1600Model ? 0 : Byte(body, O::RecordChannel);
    for (int k = 0; k < kFilterCount; ++k) s.Filters[static_cast<std::size_t>(k)] = Byte(body, FilterOffset(k)) == 1;
    s.DevNum = Byte(body, O::DeviceNumber);
    s.FootSwitch1 = Byte(body, O::FootSwitch1);
    s.FootSwitch2 = Byte(body, O::FootSwitch2);
    if (fromDevice1600) {
        result.modelNotice = !pc1600Model;
        s.PerMessage = s.PerByte = 0;
    } else {
        s.PerMessage = pc1600Model || !hasDelays ? 0 : Byte(body, O::MessageDelay);
        s.PerByte = pc1600Model || !hasDelays ? 0 : Byte(body, O::ByteDelay);
    }
    s.CurrentMap = Byte(body, O::CurrentMap);
    if (pc1600Model) {
        s.RemoteButton = s.RemoteChannel = s.StartingNote = 0;
    } else {
        s.RemoteButton = Byte(body, O::RemoteFunction);
        s.RemoteChannel = Byte(body, O::RemoteChannel) + 1;
        s.StartingNote = Byte(body, O::StartingNote);
    }
    for (int map = 0; map < 3; ++map)
        for (int program = 0; program < kMapEntries; ++program)
            s.MidiMaps[static_cast<std::size_t>(map)][static_cast<std::size_t>(program)] =
                Byte(body, O::Map1 + static_cast<std::size_t>(map * kMapEntries + program));
    result.settings = s;
    return result;
}

}  // namespace tavlo
