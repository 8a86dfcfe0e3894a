// Generated presets through the codec: encode, decode, encode again. The bytes
// must come back the same and every field the dump carries must come back
// equal; what the format drops is put into the expected preset by hand.
#include <gtest/gtest.h>

#include <random>

#include "DumpSamples.h"
#include "base/MSBModule.h"
#include "preset/PresetDecoder.h"
#include "preset/PresetDump.h"
#include "preset/PresetEncoder.h"
#include "sysex/StringNotation.h"

namespace tavlo {
// Readable failures: the substrings that differ.
void PrintTo(const MessageStringSet& set, std::ostream* os) {
    *os << set.Count << " substrings:";
    for (int i = 0; i < set.Count && i < kStringSlots; ++i) {
        const MessageSubstring& s = set.Slots[static_cast<std::size_t>(i)];
        *os << " [" << s.ListItem << " t" << s.CommandType << " c" << s.CommandChannel << " " << s.Value1 << ","
            << s.Value2 << "]";
    }
}
}  // namespace tavlo

using namespace tavlo;

namespace {

constexpr int kNamedScenes = 12;
// Presets per model. An unoptimised build copies the big preset structures
// many times slower, so it runs fewer to stay within a few seconds.
#ifdef NDEBUG
constexpr int kRounds = 1500;
#else
constexpr int kRounds = 300;
#endif

class Generator {
public:
    Generator(unsigned seed, bool pc1600Model) : random_(seed), pc1600_(pc1600Model) {}

    int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
    bool chance(int percent) { return pick(1, 100) <= percent; }

    std::string name(int maxLength) {
        std::string text;
        const int length = pick(0, maxLength);
        for (int i = 0; i < length; ++i)
            text += MSBModule::kNameCharacters[static_cast<std::size_t>(pick(0, static_cast<int>(MSBModule::kNameCharacters.size()) - 1))];
        return text;
    }

    static std::string hex(int value) {
        static constexpr char kDigits[] = "0123456789ABCDEF";
        return {kDigits[(value >> 4) & 15], kDigits[value & 15]};
    }

    // A data value that comes back as itself: a byte below 80h, or a special
    // token the kind of string keeps.
    std::pair<std::string, int> data(StringContext context) {
        if (!pc1600_ && chance(10)) {
            if (context == StringContext::Fader && chance(50)) return {"pr", kValuePr};
            if (context != StringContext::Fader && chance(50)) return {"rv", kValueRv};
            return {"dv", kValueDv};
        }
        if (pc1600_ && context == StringContext::Fader && chance(10)) return {"pr", kValuePr};
        const int value = pick(0, 127);
        return {hex(value), value};
    }

    // One substring as the string editor makes it, in a form the device
    // gives back unchanged.
    MessageSubstring substring(StringContext context, bool first, int& bytes) {
        MessageSubstring s;
        s.OwnCheck = 0;
        s.CommandChannel = 16;
        const int kind = std::array{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 13, 16, 12}[static_cast<std::size_t>(pick(0, context == StringContext::Fader ? 13 : 14))];
        s.CommandType = static_cast<std::int16_t>(kind);
        std::string text;
        if (kind <= 6) {
            // A status on the global channel comes back as such only as the string's first
            // bytes, and only with two data bytes: running status is written out for those alone.
            const bool global = first && !pc1600_ && kind != 4 && kind != 5 && chance(20);
            const int channel = pick(0, 15);
            text = std::string(1, "98ABCDE"[kind]) + (global ? "0-gc" : hex(channel).substr(1));
            s.CommandChannel = static_cast<std::int16_t>(global ? 16 : channel);
            bytes += global ? 2 : 1;
            const int values = (kind == 4 || kind == 5) ? 1 : 2;
            for (int v = 0; v < values; ++v) {
                const auto [token, value] = data(context);
                text += " " + token;
                (v == 0 ? s.Value1 : s.Value2) = static_cast<std::int16_t>(value);
                ++bytes;
            }
        } else if (kind == kSysexKind) {
            text = "F0";
            for (int n = pick(1, 8); n > 0; --n) {
                const auto [token, value] = data(context);
                text += " " + token;
                ++bytes;
            }
            if (context == StringContext::Fader && !pc1600_ && chance(30)) text += " cs", ++bytes;
            text += " F7";
            bytes += 2;
        } else if (kind == 8) {
            text = "F2 " + hex(pick(0, 127)) + " " + hex(pick(0, 127));
            bytes += 3;
        } else if (kind == 9) {
            const int value = pick(0, 127);
            text = "F3 " + hex(value);
            s.Value1 = static_cast<std::int16_t>(value);
            bytes += 2;
        } else if (kind == kFreeByteKind) {
            text = std::array{"F1", "F4", "F5", "F9"}[static_cast<std::size_t>(pick(0, 3))];
            ++bytes;
            for (int n = pick(0, 3); n > 0; --n) text += " " + hex(pick(0, 127)), ++bytes;
        } else {
            text = std::string(kMessageKinds[static_cast<std::size_t>(kind)].templ);
            ++bytes;
        }
        s.EnteredString = text;
        s.ListItem = MakeListItem(text, kind);
        return s;
    }

    void string(StringContext context, MessageStringSet& set, std::string& text) {
        set.clear();
        int bytes = 0;
        for (int n = pick(0, 6); n > 0 && bytes < 70; --n) {
            const MessageSubstring s = substring(context, set.Count == 0, bytes);
            set.Slots[static_cast<std::size_t>(set.Count++)] = s;
        }
        text = JoinedStringText(set);
    }

    // A preset as the editor could hold it, and its setup scene's line as
    // the editor shows it.
    void preset(WorkingPreset& p, std::string& setupLine, const ListState& scenes) {
        p.Name = name(16);
        for (std::size_t i = 0; i < kFaderCount; ++i) {
            FaderDef& f = p.Faders[i];
            f.Function = static_cast<std::int16_t>(pick(0, 3));
            f.Name = name(12);
            if (f.Function == 1) {
                f.Min = static_cast<std::int16_t>(pick(0, 127));
                f.Max = static_cast<std::int16_t>(pick(0, 127));
                f.Channel = static_cast<std::int16_t>(pick(0, 16));
                f.CCNum = static_cast<std::int16_t>(pick(0, 127));
                f.ReplaceMode = static_cast<std::int16_t>(pick(0, 2));
                f.Polarity = f.Min >= f.Max ? 0 : -1;
            } else if (f.Function == 2) {
                for (char& c : f.MasterOf) c = chance(30) ? 'X' : ' ';
            } else if (f.Function == 3) {
                f.ParamFormat = static_cast<std::int16_t>(pick(0, 12));
                f.Min = static_cast<std::int16_t>(pick(-16384, 16383));
                f.Max = static_cast<std::int16_t>(pick(-16384, 16383));
                string(StringContext::Fader, p.FaderStrings[i], f.MIDIString);
            }
        }
        for (std::size_t i = 0; i < kButtonCount; ++i) {
            ButtonDef& b = p.Buttons[i];
            b.Function = static_cast<std::int16_t>(pick(0, 9));
            b.Name = name(12);
            switch (b.Function) {
                case 3:
                    b.Channel = static_cast<std::int16_t>(pick(0, 16));
                    b.ProgChange = static_cast<std::int16_t>(pick(0, 127));
                    break;
                case 4:
                    b.Channel = static_cast<std::int16_t>(pick(0, 16));
                    b.Note = static_cast<std::int16_t>(pick(0, 127));
                    b.Velocity = static_cast<std::int16_t>(pick(0, 127));
                    break;
                case 5: string(StringContext::Button, p.ButtonStrings1[i], b.String1); break;
                case 6:
                case 7:
                    string(StringContext::Button, p.ButtonStrings1[i], b.String1);
                    string(StringContext::Button, p.ButtonStrings2[i], b.String2);
                    break;
                case 9: {
                    const int scene = pick(0, kNamedScenes - 1);
                    b.Scene = SceneNameOfLine(scenes.list(scene));
                    b.ScenePreset = static_cast<std::int32_t>(scenes.itemData(scene));
                    break;
                }
                default: break;
            }
        }
        p.DataWheelLink = static_cast<std::int16_t>(pick(0, 19));
        for (SetupChannelDef& c : p.SetupChannels) {
            if (chance(50)) continue;
            c.Bank = static_cast<std::int16_t>(chance(50) ? 0 : pick(1, 128));
            c.BankIsMSB = static_cast<std::int16_t>(pick(0, 1));
            c.ProgChange = static_cast<std::int16_t>(chance(50) ? 0 : pick(1, 128));
            c.Volume = static_cast<std::int16_t>(chance(50) ? 0 : pick(1, 128));
        }
        if (chance(50)) string(StringContext::Setup, p.SetupStrings, p.SetupString);
        if (chance(5)) p.Name = kInitializedName;

        setupLine = kNoScene;
        if (!pc1600_ && chance(40)) {
            const int scene = pick(0, kNamedScenes - 1);
            setupLine = scenes.list(scene);
            p.SetupScene = SceneNameOfLine(scenes.list(scene));
            p.SetupScenePreset = static_cast<std::int32_t>(scenes.itemData(scene));
        }
    }

private:
    std::mt19937 random_;
    bool pc1600_;
};

// What the dump gives back of a preset: the fields it carries, with the
// format's losses applied.
WorkingPreset expectedAfterDecode(const WorkingPreset& source, const std::string& setupLine, bool pc1600Model) {
    WorkingPreset e = source;
    e.Name = MSBModule::Trim(e.Name);
    for (FaderDef& f : e.Faders)
        if (f.Function == 0) f.Name.clear();  // a name is not sent
    for (std::size_t i = 0; i < kButtonCount; ++i) {
        ButtonDef& b = e.Buttons[i];
        if (b.Function == 0 || (pc1600Model && (b.Function == 8 || b.Function == 9))) b = ButtonDef{};
    }
    bool present = e.SetupStrings.Count > 0 || setupLine != kNoScene;
    for (const SetupChannelDef& c : e.SetupChannels)
        if (c.ProgChange > 0 || c.Volume > 0) present = true;
    if (e.Name == kInitializedName) present = false;
    for (SetupChannelDef& c : e.SetupChannels) {
        if (!present || (c.Bank == 0 && c.ProgChange == 0 && c.Volume == 0)) {
            c = SetupChannelDef{};  // not carried: the initialised values stay
            continue;
        }
        if (c.Bank == 0 || pc1600Model) c.BankIsMSB = 0;  // nothing sent as MSB
        if (c.Bank == 1 && c.BankIsMSB != 0) c = SetupChannelDef{128, 0, c.ProgChange, c.Volume};  // FF reads as LSB
    }
    if (!present) {
        e.SetupString.clear();
        e.SetupStrings.clear();
        e.SetupScene = kNoScene;
        e.SetupScenePreset = -1;
    }
    return e;
}

// Temporary scene references back to the owners, as storing the memory
// image's presets does.
void resolveSceneReferences(WorkingPreset& p) {
    for (ButtonDef& b : p.Buttons)
        if (b.ScenePreset < -2) b.ScenePreset = -b.ScenePreset - 3;
    if (p.SetupScenePreset < -2) p.SetupScenePreset = -p.SetupScenePreset - 3;
}

ListState sceneImage() {
    ListState image = tavlo::testing::FreeSceneList();
    for (int s = 0; s < kNamedScenes; ++s)
        image.setLine(s, TwoDigits(s) + ":  Scene " + std::to_string(s % 5) + "  [p:" + TwoDigits(s / 5) + "]",
                                1000 + s / 5);
    return image;
}

class CodecRoundTrip : public ::testing::TestWithParam<bool> {};

TEST_P(CodecRoundTrip, EncodeDecodeEncodeKeepsBytesAndFields) {
    const bool pc1600Model = GetParam();
    const ListState scenes = sceneImage();
    Generator generate(pc1600Model ? 1600u : 16001u, pc1600Model);

    for (int round = 0; round < kRounds; ++round) {
        const int deviceId = generate.pick(0, 15);
        WorkingPreset source;
        std::string setupLine;
        generate.preset(source, setupLine, scenes);
        const std::string first = Form2PresetSysex(source, {scenes, setupLine}, pc1600Model, deviceId);

        DecodedPreset decoded;
        const DecodeResult result = DecodePresetDump(first, scenes, pc1600Model, decoded);
        ASSERT_TRUE(result.ok) << round << ": " << result.reason;
        ASSERT_TRUE(decoded.messages.empty()) << round;
        WorkingPreset& got = decoded.preset;
        resolveSceneReferences(got);

        const WorkingPreset expected = expectedAfterDecode(source, setupLine, pc1600Model);
        ASSERT_EQ(got.Name, expected.Name) << round;
        for (std::size_t i = 0; i < kFaderCount; ++i) {
            ASSERT_EQ(got.Faders[i], expected.Faders[i]) << round << " fader " << i;
            ASSERT_EQ(got.FaderStrings[i], expected.FaderStrings[i]) << round << " fader " << i;
        }
        for (std::size_t i = 0; i < kButtonCount; ++i) {
            ASSERT_EQ(got.Buttons[i], expected.Buttons[i]) << round << " button " << i;
            ASSERT_EQ(got.ButtonStrings1[i], expected.ButtonStrings1[i]) << round << " button " << i;
            ASSERT_EQ(got.ButtonStrings2[i], expected.ButtonStrings2[i]) << round << " button " << i;
        }
        ASSERT_EQ(got.SetupChannels, expected.SetupChannels) << round;
        ASSERT_EQ(got.SetupStrings, expected.SetupStrings) << round;
        ASSERT_EQ(got, expected) << round;

        // An absent setup leaves the scene list without a selection, which
        // the encoder would read as a scene; a load from the pool shows "<none>".
        const ListState& setupList = decoded.SelectPresetSceneCombo;
        const std::string again = setupList.listIndex() < 0 ? std::string(kNoScene) : setupList.text();
        ASSERT_EQ(Form2PresetSysex(got, {scenes, again}, pc1600Model, deviceId), first) << round;
    }
}

INSTANTIATE_TEST_SUITE_P(BothModels, CodecRoundTrip, ::testing::Values(false, true),
                         [](const auto& info) { return info.param ? "PC1600" : "PC1600X"; });

}  // namespace
