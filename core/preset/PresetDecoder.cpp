#include "preset/PresetDecoder.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "base/MSBModule.h"
#include "sysex/ParseSysexString.h"
#include "sysex/PresetCodes.h"
#include "preset/PresetDump.h"

namespace tavlo {
namespace {

// Why a dump can't be taken; caught at the top, where nothing has changed yet.
struct DamagedDump {
    std::string reason;
};

// Reads raw bytes from the nibble part of a dump, every position checked.
// Positions are zero-based offsets into the wire form.
class DumpReader {
public:
    explicit DumpReader(std::string_view dump) : dump_(dump) {}

    void section(std::string name) { section_ = std::move(name); }

    int nibble(std::size_t offset) const {
        // The last byte closes the message; nibbles stand before it.
        if (offset + 1 >= dump_.size()) fail("reads past the end of the dump");
        const auto value = static_cast<unsigned char>(dump_[offset]);
        if (value > 0x0F) {
            char text[96];
            std::snprintf(text, sizeof text, "holds the byte %02X at offset %zu where a nibble belongs", value, offset);
            fail(text);
        }
        return value;
    }
    int raw(std::size_t offset) const { return nibble(offset) * 16 + nibble(offset + 1); }
    std::string rawText(std::size_t offset, int count) const {
        std::string text;
        text.reserve(static_cast<std::size_t>(count));
        for (int k = 0; k < count; ++k) text += static_cast<char>(raw(offset + 2 * static_cast<std::size_t>(k)));
        return text;
    }
    [[noreturn]] void fail(const std::string& what) const {
        throw DamagedDump{(section_.empty() ? std::string() : section_ + " ") + what};
    }

private:
    std::string_view dump_;
    std::string section_;
};

std::string controlCaption(const std::string& name, bool withTag, std::string_view tag) {
    std::string caption = MSBModule::DoubleAmpersands(name);
    if (withTag) caption += " (" + std::string(tag) + ")";
    return caption;
}

// The string's notation goes to the control's text; its substrings to the set.
std::string readString(const std::string& bytes, StringContext context, MessageStringSet& set) {
    const std::string notation = DeviceStringToNotation(bytes, context);
    std::string copy = notation;
    StringWorkArea work;
    ParseSysexString(copy, work);
    for (int slot = 0; slot < work.Strings.Count; ++slot)
        set.Slots[static_cast<std::size_t>(slot)] = work.Strings.Slots[static_cast<std::size_t>(slot)];
    set.Count = work.Strings.Count;
    return notation;
}

std::size_t twice(int count) { return 2 * static_cast<std::size_t>(count); }

std::size_t decodeFader(const DumpReader& in, std::size_t p, DecodedPreset& editor, int index) {
    const auto k = static_cast<std::size_t>(index);
    FaderDef& fader = editor.preset.Faders[k];
    in.raw(p);  // Length: the walk goes by the fields, not by it
    const int n = in.nibble(p + 2);
    const int function = in.nibble(p + 3);
    std::string_view tag;
    switch (function) {
        case 0:
            // Function is left alone: the initialisation is what makes it 0.
            fader.Name.clear();
            p += 4;
            break;
        case 1:
            fader.Min = static_cast<std::int16_t>(in.raw(p + 4));
            fader.Max = static_cast<std::int16_t>(in.raw(p + 6));
            fader.Channel = static_cast<std::int16_t>(in.raw(p + 8));
            fader.CCNum = static_cast<std::int16_t>(in.raw(p + 10));
            fader.ReplaceMode = static_cast<std::int16_t>(in.raw(p + 12));
            fader.Name = MSBModule::TildeToGreater(in.rawText(p + 14, n));
            fader.Function = 1;
            fader.Polarity = fader.Min >= fader.Max ? 0 : -1;
            tag = "cc";
            p += 14 + twice(n);
            break;
        case 2: {
            const int masks[3] = {in.raw(p + 4), in.raw(p + 6), in.raw(p + 8)};
            fader.MasterOf = std::string(kFaderCount, ' ');
            for (int i = 0; i < kFaderCount; ++i)
                if (masks[i / 8] & (1 << (i % 8))) fader.MasterOf[static_cast<std::size_t>(i)] = 'X';
            fader.Name = MSBModule::TildeToGreater(in.rawText(p + 10, n));
            fader.Function = 2;
            tag = "mf";
            p += 10 + twice(n);
            break;
        }
        case 3: {
            fader.ParamFormat = static_cast<std::int16_t>(in.raw(p + 4) - 1);
            fader.Min = static_cast<std::int16_t>(static_cast<std::uint16_t>(in.raw(p + 6) << 8 | in.raw(p + 8)));
            fader.Max = static_cast<std::int16_t>(static_cast<std::uint16_t>(in.raw(p + 10) << 8 | in.raw(p + 12)));
            const int count = in.raw(p + 14);
            const std::string bytes = in.rawText(p + 16, count);
            fader.Name = MSBModule::TildeToGreater(in.rawText(p + 16 + twice(count), n));
            fader.MIDIString = readString(bytes, StringContext::Fader, editor.preset.FaderStrings[k]);
            fader.Function = 3;
            tag = "st";
            p += 16 + twice(count) + twice(n);
            break;
        }
        default: break;  // no such record: the position stays
    }
    editor.FaderLabel[k] = controlCaption(fader.Name, !tag.empty(), tag);
    return p;
}

std::size_t decodeButton(const DumpReader& in, std::size_t p, DecodedPreset& editor, int index, bool pc1600Model) {
    const auto k = static_cast<std::size_t>(index);
    ButtonDef& button = editor.preset.Buttons[k];
    in.raw(p);
    const int n = in.nibble(p + 2);
    const int function = in.nibble(p + 3);
    auto nameAt = [&](std::size_t at) { button.Name = MSBModule::TildeToGreater(in.rawText(at, n)); };
    std::string_view tag;
    switch (function) {
        case 0:
            button.Function = 0;
            button.Name.clear();
            p += 4;
            break;
        case 1:
        case 2:
        case 8:
            nameAt(p + 4);
            tag = function == 1 ? "mute" : function == 2 ? "solo" : "sf";
            p += 4 + twice(n);
            break;
        case 3:
            button.Channel = static_cast<std::int16_t>(in.raw(p + 4));
            button.ProgChange = static_cast<std::int16_t>(in.raw(p + 6));
            nameAt(p + 8);
            tag = "pc";
            p += 8 + twice(n);
            break;
        case 4:
            button.Channel = static_cast<std::int16_t>(in.raw(p + 4));
            button.Note = static_cast<std::int16_t>(in.raw(p + 6));
            button.Velocity = static_cast<std::int16_t>(in.raw(p + 8));
            nameAt(p + 10);
            tag = "note";
            p += 10 + twice(n);
            break;
        case 5: {
            const int count = in.raw(p + 4);
            const std::string bytes = in.rawText(p + 6, count);
            nameAt(p + 6 + twice(count));
            button.String1 = readString(bytes, StringContext::Button, editor.preset.ButtonStrings1[k]);
            editor.preset.ButtonStrings2[k].Count = 0;
            tag = "st";
            p += 6 + twice(count) + twice(n);
            break;
        }
        case 6:
        case 7: {
            const int count1 = in.raw(p + 4);
            const std::string bytes1 = in.rawText(p + 6, count1);
            const std::size_t second = p + 6 + twice(count1);
            const int count2 = in.raw(second);
            const std::string bytes2 = in.rawText(second + 2, count2);
            nameAt(second + 2 + twice(count2));
            button.String1 = readString(bytes1, StringContext::Button, editor.preset.ButtonStrings1[k]);
            button.String2 = readString(bytes2, StringContext::Button, editor.preset.ButtonStrings2[k]);
            tag = function == 6 ? "pr/rl" : "togl";
            p = second + 2 + twice(count2) + twice(n);
            break;
        }
        case 9: {
            const int scene = in.raw(p + 4);
            if (scene >= editor.BSceneCombo.listCount()) {
                in.fail("sends scene " + std::to_string(scene) + ", beyond the " +
                        std::to_string(editor.BSceneCombo.listCount()) + " scenes of the memory image");
            }
            button.ScenePreset = static_cast<std::int32_t>(editor.BSceneCombo.itemData(scene));
            button.Scene = SceneNameOfLine(editor.BSceneCombo.list(scene));
            nameAt(p + 6);
            tag = "scene";
            p += 6 + twice(n);
            break;
        }
        default: return p;  // no such record: the position stays
    }
    button.Function = static_cast<std::int16_t>(function);
    // The version 1.1 device has neither: the button goes off, its caption keeps the tag.
    if (pc1600Model && (function == 8 || function == 9)) button.Function = 0;
    editor.PCButton[k] = controlCaption(button.Name, function != 0, tag);
    return p;
}

void decodeSetup(const DumpReader& in, std::size_t p, DecodedPreset& editor, bool pc1600Model,
                 std::vector<std::pair<std::string, std::string>>& messages) {
    WorkingPreset& preset = editor.preset;
    if (in.raw(p) == 1) {
        // Absent: channels and scene stay, and the scene list keeps no selection.
        preset.SetupString.clear();
        preset.SetupStrings.Count = 0;
        return;
    }
    const int masks[2] = {in.raw(p + 4), in.raw(p + 6)};
    std::size_t q = p + 8;
    for (int ch = 0; ch < kSetupChannelCount; ++ch) {
        SetupChannelDef& channel = preset.SetupChannels[static_cast<std::size_t>(ch)];
        if (!(masks[ch / 8] & (1 << (ch % 8)))) {
            channel.Bank = 0;  // BankIsMSB stays as it was
            channel.ProgChange = 0;
            channel.Volume = 0;
            continue;
        }
        const int bank = in.raw(q);
        const int prog = in.raw(q + 2);
        const int volume = in.raw(q + 4);
        q += 6;
        if (bank < 0x7F) {
            channel.Bank = static_cast<std::int16_t>(bank + 2);
            channel.BankIsMSB = 1;
        } else if (bank > 0x7F) {
            channel.Bank = static_cast<std::int16_t>(bank - 127);
            channel.BankIsMSB = 0;
        } else {
            channel.Bank = 0;
        }
        channel.ProgChange = static_cast<std::int16_t>(prog < 128 ? 0 : prog - 127);
        channel.Volume = static_cast<std::int16_t>(volume < 128 ? 0 : volume - 127);
        if (pc1600Model) channel.BankIsMSB = 0;
    }

    ListState& combo = editor.SelectPresetSceneCombo;
    auto selectScene = [&](int line) {
        combo.setListIndex(line);
        if (line <= 0) {
            preset.SetupScene = kNoScene;
            preset.SetupScenePreset = -1;
        } else {
            preset.SetupScene = SceneNameOfLine(combo.list(line));
            preset.SetupScenePreset = static_cast<std::int32_t>(combo.itemData(line));
        }
    };
    int count = in.raw(q);
    if (count == 0xFE) {
        const int scene = in.raw(q + 2);
        if (scene <= 99) {
            if (scene + 1 >= combo.listCount())
                in.fail("names scene " + std::to_string(scene) + ", beyond the scenes of the memory image");
            selectScene(scene + 1);
        } else {
            selectScene(-1);
        }
        if (pc1600Model) {
            messages.emplace_back(kIncompatibleTitle, kIncompatibleSetupSceneText);
            selectScene(0);
        }
        count = in.raw(q + 4);
        q += 6;
    } else {
        selectScene(0);
        q += 2;
    }
    if (count == 0) return;  // the setup string stays as it stands
    const std::string bytes = in.rawText(q, count);
    preset.SetupString = readString(bytes, StringContext::Setup, preset.SetupStrings);
}

void decode(std::string_view dump, DecodedPreset& editor, const ListState& imageScenes, bool pc1600Model) {
    auto& messages = editor.messages;
    DumpReader in(dump);
    if (dump.size() < kPresetDumpFrameSize)
        in.fail("it is too short to hold a preset (" + std::to_string(dump.size()) + " bytes)");
    FillDumpSceneLists(editor.BSceneCombo, editor.SelectPresetSceneCombo, imageScenes);

    in.section("name");
    editor.preset.Name = MSBModule::Trim(MSBModule::TildeToGreater(in.rawText(kPresetDumpHeaderSize, 16)));
    in.section("size");
    for (std::size_t i = 39; i < 43; ++i) in.nibble(i);  // kept by the device, not needed: the records tell

    std::size_t p = kPresetDumpFrameSize - 1;
    for (int i = 0; i < kFaderCount; ++i) {
        in.section(i < 16 ? "fader " + std::to_string(i + 1) : "CV " + std::to_string(i - 15));
        p = decodeFader(in, p, editor, i);
    }
    for (int i = 0; i < kButtonCount; ++i) {
        in.section("button " + std::to_string(i + 1));
        p = decodeButton(in, p, editor, i, pc1600Model);
    }
    in.section("data wheel");
    if (in.raw(p) == 1) {
        editor.preset.DataWheelLink = 0;
        p += 4;
    } else {
        const int link = in.raw(p + 4) + 1;
        if (link >= PresetCodes::kDataWheelEntries)
            in.fail("names entry " + std::to_string(link) + ", beyond the data wheel's list");
        editor.preset.DataWheelLink = static_cast<std::int16_t>(link);
        p += 6;
    }
    in.section("setup");
    decodeSetup(in, p, editor, pc1600Model, messages);
}

}  // namespace

void FillDumpSceneLists(ListState& BSceneCombo, ListState& SelectPresetSceneCombo, const ListState& sceneList) {
    BSceneCombo.clear();
    SelectPresetSceneCombo.clear();
    SelectPresetSceneCombo.addItem(kNoScene, -1);
    const int lines = std::min(sceneList.listCount(), kSceneLimit);
    for (int k = 0; k < lines; ++k) {
        const std::int64_t reference = -sceneList.itemData(k) - 3;
        BSceneCombo.addItem(sceneList.list(k), reference);
        SelectPresetSceneCombo.addItem(sceneList.list(k), reference);
    }
}

std::string DeviceStringToNotation(std::string_view bytes, StringContext context) {
    std::string text = MSBModule::Trim(MSBModule::BytesToHexText(bytes));
    const bool fader = context == StringContext::Fader;
    for (std::size_t i = 0; i + 1 < text.size(); i += 3) {
        const std::string_view pair = std::string_view(text).substr(i, 2);
        if (pair == "FE") {
            text.replace(i, 2, "gc");
            // As the second byte it makes the first a status on the global channel.
            if (i == 3) text[2] = '-';
        } else if (pair == "FF") {
            text.replace(i, 2, fader ? "pr" : "rv");
        } else if (pair == "FD") {
            text.replace(i, 2, "dv");
        } else if (pair == "FC" && fader) {
            text.replace(i, 2, "cs");
        }
    }
    return text;
}

DecodeResult DecodePresetDump(std::string_view dump, const ListState& imageScenes, bool pc1600Model,
                              DecodedPreset& into) {
    DecodedPreset scratch = into;
    try {
        decode(dump, scratch, imageScenes, pc1600Model);
    } catch (const DamagedDump& damaged) {
        return {false, "The preset dump is damaged: " + damaged.reason + "."};
    }
    into = std::move(scratch);
    return {};
}

}  // namespace tavlo
