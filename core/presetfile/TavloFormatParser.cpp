#include "presetfile/TavloFormatParser.h"

#include <cmath>
#include <cstdint>
#include <optional>

#include "base/MSBModule.h"
#include "sysex/PresetCodes.h"
#include "sysex/StringNotation.h"

namespace tavlo {
namespace {

using MSBModule::Trim;

// A read that went wrong; caught once at the top.
struct Mismatch {};

// Blanks, and only blanks, off both ends, without a copy.
std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

class Reader {
public:
    explicit Reader(std::string_view text) : text_(text) {}

    std::string_view next() {
        if (pos_ >= text_.size()) throw Mismatch{};
        std::size_t end = text_.find_first_of("\r\n", pos_);
        if (end == std::string_view::npos) end = text_.size();
        const std::string_view line = text_.substr(pos_, end - pos_);
        pos_ = end;
        if (pos_ < text_.size() && text_[pos_] == '\r') ++pos_;
        if (pos_ < text_.size() && text_[pos_] == '\n') ++pos_;
        return line;
    }
    void skip() { next(); }
    void exact(std::string_view expected) {
        if (trimmed(next()) != expected) throw Mismatch{};
    }
    // A keyword tested on its own length from the first column; the value
    // behind it, trimmed. Indented lines are trimmed first.
    std::string_view value(std::string_view keyword, bool indented) {
        const std::string_view line = indented ? trimmed(next()) : next();
        if (line.substr(0, keyword.size()) != keyword) throw Mismatch{};
        return trimmed(line.substr(keyword.size()));
    }
    std::string text(std::string_view keyword, bool indented = false) { return std::string(value(keyword, indented)); }
    std::int16_t number(std::string_view keyword, bool indented = false) {
        return toInt16(NumericPrefixValue(value(keyword, indented)));
    }
    // A number that picks an entry of a fixed list: one beyond it is refused.
    std::int16_t entry(std::string_view keyword, int entries, bool indented = false) {
        const std::int16_t value = number(keyword, indented);
        if (value < 0 || value >= entries) throw Mismatch{};
        return value;
    }
    void separator() {
        if (trimmed(next()).substr(0, 5) != "-----") throw Mismatch{};
    }
    static std::int16_t toInt16(double value) {
        if (!std::isfinite(value) || value < -32768.0 || value > 32767.0) throw Mismatch{};
        return static_cast<std::int16_t>(value);
    }

private:
    std::string_view text_;
    std::size_t pos_ = 0;
};

// A true number: an optional sign and digits, nothing else.
std::int16_t strictNumber(const std::string& value) {
    std::size_t i = (!value.empty() && (value[0] == '-' || value[0] == '+')) ? 1 : 0;
    if (i == value.size() || value.size() > 7) throw Mismatch{};
    for (std::size_t k = i; k < value.size(); ++k)
        if (value[k] < '0' || value[k] > '9') throw Mismatch{};
    return Reader::toInt16(std::stod(value));
}

void stringBlock(Reader& in, const std::string& start, const std::string& end, const std::string& none,
                 MessageStringSet& set) {
    set.clear();
    const std::string_view first = trimmed(in.next());
    if (first == none) return;
    if (first != start) throw Mismatch{};
    const std::int16_t count = in.number("[NUMSUBSTRINGS]", true);
    // The set has room for 51; the writer never gives more.
    if (count < 0 || count > kStringSlots) throw Mismatch{};
    set.Count = count;
    for (int i = 0; i < count; ++i) {
        MessageSubstring& s = set.Slots[i];
        s.CommandChannel = in.number("[COMMANDCHANNEL]", true);
        s.CommandType = in.number("[COMMANDTYPE]", true);
        s.EnteredString = in.text("[ENTEREDSTRING]", true);
        s.SysexMake = in.text("[SYSEXMAKE]", true);
        s.SysexModel = in.text("[SYSEXMODEL]", true);
        // The numbers are derived again from the entered text when needed.
        in.text("[VALUE1]", true);
        in.text("[VALUE2]", true);
        s.Value1 = s.Value2 = 0;
        s.ListItem = in.text("[LISTITEM]", true);
        s.OwnCheck = in.number("[OWNCHECK]", true);
        in.skip();
    }
    in.exact(end);
}

void fader(Reader& in, ParsedTavloPreset& out, int index) {
    in.separator();
    const std::string_view header = in.next();
    if (index < 16) {
        if (trimmed(header.substr(0, 21)) != "[FADER " + std::to_string(index + 1) + " DEFINITION]") throw Mismatch{};
    } else if (trimmed(header.substr(0, 18)) != "[CV " + std::to_string(index - 15) + " DEFINITION]") {
        throw Mismatch{};
    }
    FaderDef& f = out.preset.Faders[index];
    f.Name = in.text("[NAME]");
    f.Function = in.entry("[FUNCTION]", PresetCodes::kFaderDeviceEntry);
    f.Min = in.number("[MIN]");
    f.Max = in.number("[MAX]");
    f.CCNum = in.number("[CCNUM]");
    f.Channel = in.entry("[CHANNEL]", kChannelOut + 1);
    f.DeviceMapString = in.text("[DEVICEMAPSTRING]");
    // The underscores keep the field's blanks from the trimming.
    const std::string master = in.text("[MASTEROF]");
    f.MasterOf = master.size() > 1 ? master.substr(1, 32) : std::string();
    f.MasterOf.resize(kFaderCount, ' ');
    f.MIDIString = in.text("[MIDISTRING]");
    f.ParamFormat = in.entry("[PARAMFORMAT]", static_cast<int>(PresetCodes::kParamFormats.size()));
    f.Polarity = MSBModule::ToUpper(in.text("[POLARITY]")) == "TRUE" ? -1 : 0;
    f.ReplaceMode = in.entry("[REPLACEMODE]", static_cast<int>(PresetCodes::kReplaceModes.size()));
    f.Value = in.number("[VALUE]");
    stringBlock(in, "[START MIDI STRING DEFINITION]", "[END MIDI STRING DEFINITION]", "[NO MIDI STRING DEFINITION]",
                out.preset.FaderStrings[index]);
    // Only a string function carries a string, as the writer has it.
    if (f.Function != 3) out.preset.FaderStrings[index].clear();
}

void button(Reader& in, ParsedTavloPreset& out, int index) {
    in.separator();
    in.exact("[BUTTON " + std::to_string(index + 1) + " DEFINITION]");
    ButtonDef& b = out.preset.Buttons[index];
    b.Name = in.text("[NAME]");
    b.Channel = in.entry("[CHANNEL]", kChannelOut + 1);
    b.Function = in.entry("[FUNCTION]", PresetCodes::kButtonDeviceEntry);
    b.DeviceMapString = in.text("[DEVICEMAPSTRING]");
    b.Note = in.number("[NOTE]");
    b.ProgChange = in.number("[PROGCHANGE]");
    b.Scene = in.text("[SCENE]");
    out.buttonRefs[index] = in.text("[SCENEPRESETNAME]");
    b.String1 = in.text("[STRING1]");
    b.String2 = in.text("[STRING2]");
    b.Velocity = strictNumber(in.text("[VELOCITY]"));
    stringBlock(in, "[START MIDI STRING1 DEFINITION]", "[END MIDI STRING1 DEFINITION]",
                "[NO MIDI STRING1 DEFINITION]", out.preset.ButtonStrings1[index]);
    stringBlock(in, "[START MIDI STRING2 DEFINITION]", "[END MIDI STRING2 DEFINITION]",
                "[NO MIDI STRING2 DEFINITION]", out.preset.ButtonStrings2[index]);
    if (b.Function < 5 || b.Function > 7) out.preset.ButtonStrings1[index].clear();
    if (b.Function != 6 && b.Function != 7) out.preset.ButtonStrings2[index].clear();
}

void setup(Reader& in, ParsedTavloPreset& out) {
    WorkingPreset& p = out.preset;
    in.skip();  // the blank line that sets the setup part apart
    in.separator();
    in.exact("[SETUP INFORMATION]");
    p.SetupScene = in.text("[SETUPSCENE]");
    out.setupSceneRef = in.text("[SETUPSCENEPRESET]");
    p.SetupString = in.text("[SETUPSTRING]");
    stringBlock(in, "[START SETUP STRING DEFINITION]", "[END SETUP STRING DEFINITION]",
                "[NO SETUP STRING DEFINITION]", p.SetupStrings);
    in.exact("[BEGIN SETUP CHANNEL MAP]");
    for (int n = 0; n < kSetupChannelCount; ++n) {
        const std::string channel = "[CHANNEL " + TwoDigits(n + 1);
        SetupChannelDef& c = p.SetupChannels[n];
        // Each is kept in one byte of the pool's channel map.
        c.Bank = in.entry(channel + " BANK]", 130, true);
        c.BankIsMSB = in.entry(channel + " BANKMSB]", 130, true);
        c.ProgChange = in.entry(channel + " PROG]", 130, true);
        c.Volume = in.entry(channel + " VOLUME]", 130, true);
    }
    in.exact("[END SETUP CHANNEL MAP]");
    in.separator();
    in.exact("[START DEVICE MAPS]");
    for (int i = 0;; ++i) {
        const std::string_view line = trimmed(in.next());
        if (line == "[END DEVICE MAPS]") break;
        const std::string make = "[MAKE " + TwoDigits(i) + "]";
        if (line.compare(0, make.size(), make) != 0) throw Mismatch{};
        out.devices.emplace_back(std::string(trimmed(line.substr(make.size()))), in.text("[MODEL " + TwoDigits(i) + "]", true));
    }
    in.skip();
    in.separator();
}

void scenes(Reader& in, ParsedTavloPreset& out) {
    const std::int16_t count = in.number("[SCENES]");
    if (count < 0 || count > kSceneLimit) throw Mismatch{};
    for (int i = 0; i < count; ++i) {
        SceneDef scene;
        scene.Name = in.text("[SCENE NAME]");
        for (int v = 0; v < kFaderCount; ++v) {
            const std::string_view line = in.next();
            const bool cv = v >= 16;
            const std::string keyword = cv ? "[CV " + std::to_string(v - 15) + "]" : "[FADER " + std::to_string(v + 1) + "]";
            const std::size_t width = cv ? 6 : 10;
            if (trimmed(line.substr(0, width)) != keyword) throw Mismatch{};
            scene.Values[v] = Reader::toInt16(NumericPrefixValue(line.size() > width ? line.substr(width) : ""));
        }
        in.skip();
        out.scenes.push_back(std::move(scene));
    }
}

void notes(Reader& in, WorkingPreset& preset) {
    in.exact("[NOTES START]");
    std::string joined;
    for (std::string_view line = in.next(); line != "[NOTES END]"; line = in.next()) joined.append(line).append(" ");
    preset.Notes = Trim(joined);
}

}  // namespace

ParsedTavloPreset ParseTavloText(std::string_view text) {
    ParsedTavloPreset out;
    try {
        Reader in(text);
        const std::string head(in.next());
        if (head.compare(0, 8, "[PRESET]") != 0) return out;
        out.preset.Name = Trim(head.substr(8));
        if (out.preset.Name == kInitializedName) {
            out.initialized = out.ok = true;
            return out;
        }
        out.preset.DataWheelLink = in.entry("[DATAWHEEL]", PresetCodes::kDataWheelEntries);
        notes(in, out.preset);
        for (int i = 0; i < kFaderCount; ++i) fader(in, out, i);
        for (int i = 0; i < kButtonCount; ++i) button(in, out, i);
        setup(in, out);
        scenes(in, out);
        out.ok = true;
    } catch (const Mismatch&) {
        out.ok = false;
    }
    return out;
}

}  // namespace tavlo
