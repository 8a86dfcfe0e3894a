// The encoder's bytes, record by record. The round trip property test can't
// see a fault that encoder and decoder share; these bytes can.
#include "preset/PresetEncoder.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "DumpSamples.h"
#include "preset/PresetDump.h"

using namespace tavlo;

namespace {

using tavlo::testing::Bytes;

// The raw body of a dump: the nibble pairs from offset 43 to the F7 joined.
std::string rawBody(const std::string& dump) {
    std::string raw;
    for (std::size_t i = kPresetDumpFrameSize - 1; i + 2 < dump.size(); i += 2)
        raw += static_cast<char>((dump[i] << 4) | dump[i + 1]);
    return raw;
}

// The body cut into records by their Length bytes: 18 faders, 16 buttons,
// data wheel, setup.
std::vector<std::string> records(const std::string& dump) {
    const std::string raw = rawBody(dump);
    std::vector<std::string> out;
    for (std::size_t i = 0; i < raw.size();) {
        const std::size_t length = static_cast<unsigned char>(raw[i]);
        out.push_back(raw.substr(i, length + 1));
        i += length + 1;
    }
    return out;
}

constexpr std::size_t kWheel = 34;
constexpr std::size_t kSetup = 35;

struct Fixture {
    WorkingPreset preset;
    ListState scenes = tavlo::testing::FreeSceneList();  // the memory image's
    std::string setupLine = kNoScene;                     // the setup scene as the editor shows it
    bool pc1600 = false;
    int deviceId = 0;

    std::string dump() const { return Form2PresetSysex(preset, {scenes, setupLine}, pc1600, deviceId); }
    std::string record(std::size_t index) const { return records(dump()).at(index); }
};

std::int16_t i16(int v) { return static_cast<std::int16_t>(v); }

FaderDef fader(int function, const char* name, int min, int max, int channel = 16, int cc = 0, int mode = 0,
               int format = 0, std::string master = std::string(18, ' ')) {
    return FaderDef{name, 0, i16(function), i16(min), i16(max), i16(channel), i16(cc), -1, i16(mode), "",
                    i16(format), std::move(master), ""};
}

void setString(MessageStringSet& set, const std::vector<const char*>& substrings) {
    set.clear();
    for (const char* s : substrings) set.Slots[static_cast<std::size_t>(set.Count++)].EnteredString = s;
}

TEST(Form2PresetSysex, FrameSizeAndNibbles) {
    Fixture f;
    f.deviceId = 5;
    std::string dump = f.dump();
    ASSERT_EQ(dump.size(), 188u);  // a new preset: 36 empty records, size 72
    EXPECT_EQ(dump.substr(0, 7), Bytes({0xF0, 0x00, 0x00, 0x1B, 0x0B, 0x05, 0x04}));
    EXPECT_EQ(dump.substr(39, 4), Bytes({0, 0, 4, 8}));
    EXPECT_EQ(static_cast<unsigned char>(dump.back()), 0xF7);
    const auto recs = records(dump);
    ASSERT_EQ(recs.size(), 36u);
    for (std::size_t i = 0; i < recs.size(); ++i) EXPECT_EQ(recs[i], Bytes({1, 0})) << i;
    for (std::size_t i = 7; i + 1 < dump.size(); ++i) EXPECT_LT(static_cast<unsigned char>(dump[i]), 16) << i;
    // The size follows the body: a fader record of 11 bytes more gives 83 = 53h.
    f.preset.Faders[0] = fader(1, "Volume", 0, 127);
    EXPECT_EQ(f.dump().substr(39, 4), Bytes({0, 0, 5, 3}));
}

TEST(Form2PresetSysex, NameIsTrimmedPaddedAndSubstituted) {
    struct Case {
        const char* name;
        const char* sent;
    };
    for (const Case& c : {Case{"  A>B  ", "A~B             "}, Case{"Exactly16chars!!", "Exactly16chars!!"},
                          Case{"", "                "}}) {
        Fixture f;
        f.preset.Name = c.name;
        const std::string dump = f.dump();
        std::string name;
        for (std::size_t i = 7; i < 39; i += 2) name += static_cast<char>((dump[i] << 4) | dump[i + 1]);
        EXPECT_EQ(name, c.sent) << c.name;
    }
}

struct FaderCase {
    const char* what;
    FaderDef fader;
    std::vector<const char*> strings;
    std::string record;
};

TEST(Form2PresetSysex, FaderRecordsByFunction) {
    const FaderCase cases[] = {
        {"function 0 loses its name", fader(0, "Named", 0, 127), {}, Bytes({1, 0})},
        {"continuous controller", fader(1, "Vol>ume", 10, 100, 16, 7, 2), {},
         Bytes({13, 0x71, 10, 100, 0x10, 7, 2}) + "Vol~ume"},
        {"channel 15", fader(1, "", 127, 0, 15, 0, 0), {}, Bytes({6, 0x01, 127, 0, 15, 0, 0})},
        {"master of faders 1, 9, CV1, CV2", fader(2, "M", 0, 127, 16, 0, 0, 0, "X       X       XX"), {},
         Bytes({5, 0x12, 0x01, 0x01, 0x03}) + "M"},
        {"master of 8 and 16", fader(2, "", 0, 127, 16, 0, 0, 0, "       X       X  "), {},
         Bytes({4, 0x02, 0x80, 0x80, 0x00})},
        {"string with global channel and fader value", fader(3, "Cut", -1, 300, 16, 0, 0, 1), {"B0-gc 07 pr"},
         Bytes({14, 0x33, 2, 0xFF, 0xFF, 0x01, 0x2C, 4, 0xB0, 0xFE, 0x07, 0xFF}) + "Cut"},
        {"string of several substrings and specials", fader(3, "", 0, 16383, 16, 0, 0, 12),
         {"F0 41 dv 42 12 40 cs F7", "rv", "C0-gc 05"},
         Bytes({19, 0x03, 13, 0x00, 0x00, 0x3F, 0xFF, 12, 0xF0, 0x41, 0xFD, 0x42, 0x12, 0x40, 0xFC, 0xF7, 0xFF, 0xC0,
                0xFE, 0x05})},
        {"a name longer than the head holds", fader(1, "ABCDEFGHIJKLMNOPQ", 0, 127), {},
         Bytes({21, 0xF1, 0, 127, 16, 0, 0}) + "ABCDEFGHIJKLMNO"},
    };
    for (const FaderCase& c : cases) {
        Fixture f;
        f.preset.Faders[3] = c.fader;
        setString(f.preset.FaderStrings[3], c.strings);
        EXPECT_EQ(f.record(3), c.record) << c.what;
        EXPECT_EQ(f.record(2), Bytes({1, 0})) << c.what;
    }
}

TEST(Form2PresetSysex, FaderFunctionOutsideTheListGivesNoRecord) {
    Fixture f;
    f.preset.Faders[0].Function = 4;
    EXPECT_EQ(records(f.dump()).size(), 35u);
    EXPECT_EQ(f.dump().size(), 184u);
}

ButtonDef button(int function, const char* name, int channel = 16, int prog = 0, int velocity = 127, int note = 60,
                 const char* scene = kNoScene, int scenePreset = -1) {
    return ButtonDef{name, i16(function), i16(channel), i16(prog), i16(velocity), i16(note), "", "", scene,
                     scenePreset, ""};
}

struct ButtonCase {
    const char* what;
    ButtonDef button;
    bool pc1600;
    std::string record;
};

TEST(Form2PresetSysex, ButtonRecordsByFunctionAndModel) {
    const ButtonCase cases[] = {
        {"off", button(0, "Gone"), false, Bytes({1, 0})},
        {"mute", button(1, "Mute"), false, Bytes({5, 0x41}) + "Mute"},
        {"solo", button(2, "S>"), false, Bytes({3, 0x22}) + "S~"},
        {"program change on ChOut", button(3, "PC", 16, 42), false, Bytes({5, 0x23, 0x10, 42}) + "PC"},
        {"program change on channel 16", button(3, "", 15, 0), false, Bytes({3, 0x03, 0x0F, 0})},
        {"note", button(4, "N", 2, 0, 100, 61), false, Bytes({5, 0x14, 2, 61, 100}) + "N"},
        {"send fader", button(8, "SF"), false, Bytes({3, 0x28}) + "SF"},
        {"send fader on PC1600", button(8, "SF"), true, Bytes({1, 0})},
        {"send scene in the list", button(9, "SS", 16, 0, 127, 60, "Verse", 77), false, Bytes({4, 0x29, 5}) + "SS"},
        {"send scene of another owner", button(9, "", 16, 0, 127, 60, "Verse", 78), false, Bytes({2, 0x09, 100})},
        {"send scene on PC1600", button(9, "SS", 16, 0, 127, 60, "Verse", 77), true, Bytes({1, 0})},
    };
    for (const ButtonCase& c : cases) {
        Fixture f;
        f.pc1600 = c.pc1600;
        f.scenes.setLine(5, "05:  Verse  [p:02]", 77);
        f.preset.Buttons[7] = c.button;
        EXPECT_EQ(f.record(18 + 7), c.record) << c.what;
    }
}

TEST(Form2PresetSysex, ButtonStrings) {
    Fixture f;
    f.preset.Buttons[0] = button(5, "St");
    setString(f.preset.ButtonStrings1[0], {"90 3C rv", "FC"});
    setString(f.preset.ButtonStrings2[0], {"80 3C 00"});  // not sent by function 5
    f.preset.Buttons[1] = button(6, "PR");
    setString(f.preset.ButtonStrings1[1], {"90 3C 7F"});
    setString(f.preset.ButtonStrings2[1], {"80 3C 00", "gc"});
    f.preset.Buttons[2] = button(7, "");
    setString(f.preset.ButtonStrings1[2], {});
    setString(f.preset.ButtonStrings2[2], {"C0 01"});
    const auto recs = records(f.dump());
    EXPECT_EQ(recs[18], Bytes({8, 0x25, 4, 0x90, 0x3C, 0xFF, 0xFC}) + "St");
    EXPECT_EQ(recs[19], Bytes({12, 0x26, 3, 0x90, 0x3C, 0x7F, 4, 0x80, 0x3C, 0x00, 0xFE}) + "PR");
    EXPECT_EQ(recs[20], Bytes({5, 0x07, 0, 2, 0xC0, 0x01}));
}

TEST(Form2PresetSysex, LongStringsWriteTheFirstTwoHexDigitsOfTheirCount) {
    Fixture f;
    f.preset.Faders[0] = fader(3, "", 0, 127);
    std::string text;
    for (int i = 0; i < 99; ++i) text += "01 ";
    auto& set = f.preset.FaderStrings[0];
    set.clear();
    for (int i = 0; i < 3; ++i) set.Slots[static_cast<std::size_t>(set.Count++)].EnteredString = text;
    const std::string raw = rawBody(f.dump());
    // 297 bytes: Length 7 + 297 = 304 = 130h and Count 129h are written as 13h and 12h.
    EXPECT_EQ(static_cast<unsigned char>(raw[0]), 0x13);
    EXPECT_EQ(static_cast<unsigned char>(raw[7]), 0x12);
}

TEST(Form2PresetSysex, DataWheel) {
    for (const auto& [link, record] : {std::pair{0, Bytes({1, 0})}, std::pair{1, Bytes({2, 1, 0})},
                                       std::pair{17, Bytes({2, 1, 16})}, std::pair{19, Bytes({2, 1, 18})}}) {
        Fixture f;
        f.preset.DataWheelLink = static_cast<std::int16_t>(link);
        EXPECT_EQ(f.record(kWheel), record) << link;
    }
}

struct SetupCase {
    const char* what;
    std::function<void(Fixture&)> arrange;
    std::string record;
};

void chooseScene(Fixture& f) {
    f.scenes.setLine(3, "03:  Chorus  [p:01]", 12);
    f.setupLine = "03:  Chorus  [p:01]";
    f.preset.SetupScene = "Chorus";
    f.preset.SetupScenePreset = 12;
}

TEST(Form2PresetSysex, SetupRecord) {
    using F = Fixture&;
    const SetupCase cases[] = {
        {"nothing", [](F) {}, Bytes({1, 0})},
        {"a bank alone is absent", [](F f) { f.preset.SetupChannels[0] = {5, 0, 0, 0}; }, Bytes({1, 0})},
        {"banks go with another channel's program",
         [](F f) { f.preset.SetupChannels[0] = {5, 0, 0, 0}; f.preset.SetupChannels[9] = {0, 0, 11, 101}; },
         Bytes({10, 1, 0x01, 0x02, 0x84, 0x7F, 0x7F, 0x7F, 0x8A, 0xE4, 0})},
        {"MSB bank: one less than shown; bank 0 as FF",
         [](F f) { f.preset.SetupChannels[1] = {6, 1, 1, 0}; f.preset.SetupChannels[15] = {1, 1, 0, 128}; },
         Bytes({10, 1, 0x02, 0x80, 0x04, 0x80, 0x7F, 0xFF, 0x7F, 0xFF, 0})},
        {"initialised preset is always absent",
         [](F f) { f.preset.Name = kInitializedName; f.preset.SetupChannels[0] = {0, 0, 3, 3}; }, Bytes({1, 0})},
        {"setup string alone", [](F f) { setString(f.preset.SetupStrings, {"B0 07 rv", "C0 05"}); },
         Bytes({9, 1, 0, 0, 5, 0xB0, 0x07, 0xFF, 0xC0, 0x05})},
        {"setup scene", chooseScene, Bytes({6, 1, 0, 0, 0xFE, 3, 0})},
        {"setup scene not in the image", [](F f) { chooseScene(f); f.preset.SetupScenePreset = 13; },
         Bytes({6, 1, 0, 0, 0xFE, 100, 0})},
        {"no selection counts as a scene", [](F f) { f.setupLine.clear(); }, Bytes({6, 1, 0, 0, 0xFE, 100, 0})},
        {"the PC1600 sends banks as LSB and no scene",
         [](F f) {
             f.pc1600 = true;
             f.preset.SetupChannels[2] = {6, 1, 0, 0}; f.preset.SetupChannels[3] = {0, 0, 2, 0};
             chooseScene(f);
         },
         Bytes({10, 1, 0x0C, 0x00, 0x85, 0x7F, 0x7F, 0x7F, 0x81, 0x7F, 0})},
    };
    for (const SetupCase& c : cases) {
        Fixture f;
        c.arrange(f);
        EXPECT_EQ(f.record(kSetup), c.record) << c.what;
    }
}

}  // namespace
