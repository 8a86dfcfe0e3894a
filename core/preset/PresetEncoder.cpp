#include "preset/PresetEncoder.h"
#include "preset/PresetNames.h"

#include <algorithm>

#include "base/MSBModule.h"
#include "preset/PresetDump.h"

namespace tavlo {
namespace {

// The name a control sends: ">" travels as "~", and its length has to fit
// the four bits of the record's head.
std::string controlName(const std::string& name) { return MSBModule::GreaterToTilde(name).substr(0, 15); }

class RecordWriter {
public:
    explicit RecordWriter(std::string& body) : body_(body) {}

    // A record of `fixed` bytes after the Length, not counting the name and strings.
    void begin(int fixed) {
        start_ = body_.size();
        fixed_ = fixed;
        variable_ = 0;
        body_ += '\0';  // Length, set in end()
    }
    void byte(int value) { body_ += static_cast<char>(WireByte(value)); }
    void head(int nameLength, int function) { body_ += static_cast<char>((nameLength << 4) | (function & 0x0F)); }
    void string(const std::string& bytes) {
        byte(static_cast<int>(bytes.size()));
        body_ += bytes;
        variable_ += static_cast<int>(bytes.size());
    }
    void name(const std::string& text) {
        body_ += text;
        variable_ += static_cast<int>(text.size());
    }
    void end() { body_[start_] = static_cast<char>(WireByte(fixed_ + variable_)); }

private:
    std::string& body_;
    std::size_t start_ = 0;
    int fixed_ = 0;
    int variable_ = 0;
};

void writeOff(RecordWriter& w) {
    w.begin(1);
    w.head(0, 0);
    w.end();
}

void writeFader(RecordWriter& w, const FaderDef& fader, const MessageStringSet& strings) {
    const std::string name = controlName(fader.Name);
    const int n = static_cast<int>(name.size());
    switch (fader.Function) {
        case 0: writeOff(w); return;  // a name is not sent
        case 1:
            w.begin(6);
            w.head(n, 1);
            w.byte(fader.Min);
            w.byte(fader.Max);
            w.byte(fader.Channel);
            w.byte(fader.CCNum);
            w.byte(fader.ReplaceMode);
            break;
        case 2: {
            int masks[3] = {0, 0, 0};
            for (std::size_t i = 0; i < kFaderCount && i < fader.MasterOf.size(); ++i)
                if (fader.MasterOf[i] == 'X') masks[i / 8] |= 1 << (i % 8);
            w.begin(4);
            w.head(n, 2);
            for (int mask : masks) w.byte(mask);
            break;
        }
        case 3: {
            const auto min = static_cast<std::uint16_t>(fader.Min);
            const auto max = static_cast<std::uint16_t>(fader.Max);
            w.begin(7);
            w.head(n, 3);
            w.byte(fader.ParamFormat + 1);
            w.byte(min >> 8);
            w.byte(min & 0xFF);
            w.byte(max >> 8);
            w.byte(max & 0xFF);
            w.string(DeviceStringBytes(strings));
            break;
        }
        default: return;  // no record at all
    }
    w.name(name);
    w.end();
}

void writeButton(RecordWriter& w, const ButtonDef& button, const MessageStringSet& strings1,
                 const MessageStringSet& strings2, const ListState& sceneList, bool pc1600Model) {
    const std::string name = controlName(button.Name);
    const int n = static_cast<int>(name.size());
    const int function = button.Function;
    switch (function) {
        case 0: writeOff(w); return;
        case 1:
        case 2:
            w.begin(1);
            w.head(n, function);
            break;
        case 3:
            w.begin(3);
            w.head(n, 3);
            w.byte(button.Channel);
            w.byte(button.ProgChange);
            break;
        case 4:
            w.begin(4);
            w.head(n, 4);
            w.byte(button.Channel);
            w.byte(button.Note);
            w.byte(button.Velocity);
            break;
        case 5:
            w.begin(2);
            w.head(n, 5);
            w.string(DeviceStringBytes(strings1));
            break;
        case 6:
        case 7:
            w.begin(3);
            w.head(n, function);
            w.string(DeviceStringBytes(strings1));
            w.string(DeviceStringBytes(strings2));
            break;
        case 8:
            if (pc1600Model) return writeOff(w);  // the version 1.1 device has no Send Fader
            w.begin(1);
            w.head(n, 8);
            break;
        case 9:
            if (pc1600Model) return writeOff(w);
            w.begin(2);
            w.head(n, 9);
            w.byte(SceneIndexOf(sceneList, button.Scene, button.ScenePreset));
            break;
        default: return;
    }
    w.name(name);
    w.end();
}

void writeDataWheel(std::string& body, int link) {
    if (link == 0) {
        body += std::string{'\x01', '\x00'};
    } else {
        body += std::string{'\x02', '\x01'};
        body += static_cast<char>(WireByte(link - 1));
    }
}

void writeSetup(std::string& body, const WorkingPreset& preset, std::string_view sceneText, const ListState& sceneList,
                bool pc1600Model) {
    // An empty text (no selection) counts as a scene, as the device's dump
    // with no setup leaves the list.
    const bool sceneChosen = sceneText.empty() || sceneText[0] != '<';
    bool present = preset.SetupStrings.Count > 0 || sceneChosen;
    // A Bank alone doesn't make the block present.
    for (const SetupChannelDef& channel : preset.SetupChannels)
        if (channel.ProgChange > 0 || channel.Volume > 0) present = true;
    if (IsInitializedName(preset.Name)) present = false;
    if (!present) {
        body += std::string{'\x01', '\x00'};
        return;
    }

    std::string record;
    record += '\x01';
    int masks[2] = {0, 0};
    std::string channelData;
    for (int ch = 0; ch < kSetupChannelCount; ++ch) {
        const SetupChannelDef& c = preset.SetupChannels[static_cast<std::size_t>(ch)];
        if (c.Bank < 1 && c.ProgChange < 1 && c.Volume < 1) continue;
        masks[ch / 8] |= 1 << (ch % 8);
        int bank = 0x7F;
        if (c.Bank != 0) bank = (c.BankIsMSB == 0 || pc1600Model) ? c.Bank + 127 : c.Bank - 2;
        channelData += static_cast<char>(WireByte(bank));
        channelData += static_cast<char>(WireByte(c.ProgChange == 0 ? 0x7F : c.ProgChange + 127));
        channelData += static_cast<char>(WireByte(c.Volume == 0 ? 0x7F : c.Volume + 127));
    }
    record += static_cast<char>(masks[0]);
    record += static_cast<char>(masks[1]);
    record += channelData;
    if (sceneChosen && !pc1600Model) {
        record += '\xFE';
        record += static_cast<char>(WireByte(SceneIndexOf(sceneList, preset.SetupScene, preset.SetupScenePreset)));
    }
    const std::string bytes = DeviceStringBytes(preset.SetupStrings);
    record += static_cast<char>(WireByte(static_cast<int>(bytes.size())));
    record += bytes;
    body += static_cast<char>(WireByte(static_cast<int>(record.size())));
    body += record;
}

}  // namespace

std::string Form2PresetSysex(const WorkingPreset& preset, const DumpScenes& scenes, bool pc1600Model, int deviceId) {
    const ListState& sceneList = scenes.imageScenes;

    std::string body;
    body.reserve(1024);
    RecordWriter writer(body);
    for (int i = 0; i < kFaderCount; ++i)
        writeFader(writer, preset.Faders[static_cast<std::size_t>(i)], preset.FaderStrings[static_cast<std::size_t>(i)]);
    for (int i = 0; i < kButtonCount; ++i) {
        const auto k = static_cast<std::size_t>(i);
        writeButton(writer, preset.Buttons[k], preset.ButtonStrings1[k], preset.ButtonStrings2[k], sceneList,
                    pc1600Model);
    }
    writeDataWheel(body, preset.DataWheelLink);
    writeSetup(body, preset, scenes.setupSceneLine, sceneList, pc1600Model);

    std::string name = MSBModule::Trim(MSBModule::GreaterToTilde(preset.Name)).substr(0, 16);
    name.resize(16, ' ');
    const auto size = static_cast<unsigned>(body.size()) & 0xFFFFu;

    std::string dump;
    dump.reserve(kPresetDumpFrameSize + 2 * body.size());
    dump += std::string{'\xF0', '\x00', '\x00', '\x1B', '\x0B'};
    dump += static_cast<char>(deviceId & 0x7F);
    dump += static_cast<char>(kPresetDumpCommand);
    dump += MSBModule::TextToNibbles(name);
    for (int shift = 12; shift >= 0; shift -= 4) dump += static_cast<char>((size >> shift) & 0x0F);
    dump += MSBModule::TextToNibbles(body);
    dump += '\xF7';
    return dump;
}

int CheckSum(std::string_view) { return 0; }

}  // namespace tavlo
