// Field by field the codec is covered by the round trip property test; here
// what it leaves out: bytes the device sends but the encoder never writes,
// the panel's captions and scene lists, what a dump leaves alone, and the
// refusal of damaged dumps.
#include "preset/PresetDecoder.h"

#include <gtest/gtest.h>

#include "DumpSamples.h"
#include "preset/PresetDump.h"
#include "preset/PresetEncoder.h"

using namespace tavlo;
using tavlo::testing::Bytes;

namespace {

// A dump around a raw body, as the device frames it.
std::string frame(const std::string& raw) {
    std::string dump = Bytes({0xF0, 0x00, 0x00, 0x1B, 0x0B, 0x00, 0x04}) + MSBModule::TextToNibbles("Test            ");
    for (int shift = 12; shift >= 0; shift -= 4) dump += static_cast<char>((raw.size() >> shift) & 0x0F);
    return dump + MSBModule::TextToNibbles(raw) + '\xF7';
}

// A body of all-off records, some replaced: 0-17 faders, 18-33 buttons, 34
// data wheel, 35 setup.
std::string body(std::initializer_list<std::pair<int, std::string>> replaced) {
    std::string raw;
    for (int i = 0; i < 36; ++i) {
        std::string record = Bytes({1, 0});
        for (const auto& [index, r] : replaced)
            if (index == i) record = r;
        raw += record;
    }
    return raw;
}

struct Decoding {
    ListState scenes = tavlo::testing::FreeSceneList();
    DecodedPreset into;

    Decoding() {
        scenes.setLine(0, "00:  Intro  [p:01]", 40);
        scenes.setLine(4, "04:  Verse  [p:02]", 41);
    }
    DecodeResult decode(const std::string& dump, bool pc1600 = false) {
        return DecodePresetDump(dump, scenes, pc1600, into);
    }
};

TEST(DecodePresetDump, GivesThePanelCaptionsAndSceneListsWithTemporaryReferences) {
    Decoding d;
    WorkingPreset p;
    p.Faders[0] = FaderDef{"Vol", 0, 1, 10, 100, 16, 7, -1, 2, "", 0, std::string(18, ' '), ""};
    p.Faders[1] = FaderDef{"Master", 0, 2, 0, 127, 16, 0, -1, 0, "", 0, "X" + std::string(17, ' '), ""};
    p.Faders[17] = FaderDef{"Cut&Go", 0, 3, -1, 16383, 16, 0, -1, 0, "", 4, std::string(18, ' '), ""};
    p.Buttons[0].Function = 3, p.Buttons[0].Name = "PC";
    p.Buttons[1].Function = 4;
    p.Buttons[2].Function = 6, p.Buttons[2].Name = "PrRl";
    p.Buttons[3].Function = 9, p.Buttons[3].Name = "Sc", p.Buttons[3].Scene = "Verse", p.Buttons[3].ScenePreset = 41;
    ASSERT_TRUE(d.decode(Form2PresetSysex(p, {d.scenes, kNoScene}, false, 0)).ok);
    const DecodedPreset& got = d.into;
    EXPECT_EQ(std::vector({got.FaderLabel[0], got.FaderLabel[1], got.FaderLabel[17], got.FaderLabel[5]}),
              std::vector<std::string>({"Vol (cc)", "Master (mf)", "Cut&&Go (st)", ""}));
    EXPECT_EQ(std::vector({got.PCButton[0], got.PCButton[1], got.PCButton[2], got.PCButton[3], got.PCButton[4]}),
              std::vector<std::string>({"PC (pc)", " (note)", "PrRl (pr/rl)", "Sc (scene)", ""}));
    // Scene references stay temporary, minus (owner + 3), until the owners are stored.
    EXPECT_EQ(got.preset.Buttons[3].ScenePreset, -41 - 3);
    ASSERT_EQ(got.BSceneCombo.listCount(), 100);
    ASSERT_EQ(got.SelectPresetSceneCombo.listCount(), 101);
    EXPECT_EQ(got.SelectPresetSceneCombo.list(0), kNoScene);
    EXPECT_EQ(got.SelectPresetSceneCombo.itemData(0), -1);
    EXPECT_EQ(got.BSceneCombo.list(4), "04:  Verse  [p:02]");
    EXPECT_EQ(got.BSceneCombo.itemData(4), -44);
    EXPECT_EQ(got.SelectPresetSceneCombo.itemData(5), -44);
    EXPECT_EQ(got.BSceneCombo.itemData(1), -2);  // a free line: data -1
    EXPECT_TRUE(got.messages.empty());
}

TEST(DeviceStringToNotation, SpecialBytesByKindOfString) {
    const struct {
        StringContext context;
        std::string bytes;
        const char* text;
    } cases[] = {
        {StringContext::Fader, Bytes({0xB0, 0xFE, 0x07, 0xFF}), "B0-gc 07 pr"},  // FE second joins the status
        {StringContext::Fader, Bytes({0xB0, 0x07, 0x40, 0xB0, 0xFE}), "B0 07 40 B0 gc"},
        {StringContext::Button, Bytes({0x90, 0x3C, 0xFF}), "90 3C rv"},
        {StringContext::Setup, Bytes({0xFF}), "rv"},
        {StringContext::Fader, Bytes({0xF0, 0xFD, 0xFC, 0xF7}), "F0 dv cs F7"},
        // Buttons and setup get their checksum calculated before sending: FC stays.
        {StringContext::Button, Bytes({0xF0, 0xFD, 0xFC, 0xF7}), "F0 dv FC F7"},
        {StringContext::Setup, Bytes({0xFC}), "FC"},
    };
    for (const auto& c : cases) EXPECT_EQ(DeviceStringToNotation(c.bytes, c.context), c.text) << c.text;
}

// The device may send running status, which the encoder never writes: the
// control keeps the text as sent, its set has the messages written out.
TEST(DecodePresetDump, RunningStatusFromTheDeviceIsWrittenOutInTheSet) {
    Decoding d;
    const std::string s = Bytes({0x90, 0x3C, 0x7F, 0x3E, 0x7F, 0xC0, 0x80});
    ASSERT_TRUE(d.decode(frame(body({{18, Bytes({2 + 7, 5, 7}) + s}}))).ok);
    const WorkingPreset& w = d.into.preset;
    EXPECT_EQ(w.Buttons[0].String1, "90 3C 7F 3E 7F C0 80");
    ASSERT_EQ(w.ButtonStrings1[0].Count, 4);
    EXPECT_EQ(w.ButtonStrings1[0].Slots[1].ListItem, "90 3E 7F  (noteon)");
    EXPECT_EQ(w.ButtonStrings1[0].Slots[3].ListItem, "80  (freebyte)");
}

// A PC1600X dump taken on a PC1600: send fader and send scene go off, but the
// button keeps its scene and its caption shows what it was.
TEST(DecodePresetDump, SendSceneAndSendFaderGoOffOnThePC1600) {
    Decoding d;
    ASSERT_TRUE(d.decode(frame(body({{18, Bytes({4, 0x29, 4}) + "Sc"}, {19, Bytes({3, 0x28}) + "SF"}})), true).ok);
    const ButtonDef& b = d.into.preset.Buttons[0];
    EXPECT_EQ(std::tie(b.Function, b.Scene, b.ScenePreset), std::make_tuple(0, "Verse", -44));
    EXPECT_EQ(d.into.preset.Buttons[1].Function, 0);
    EXPECT_EQ(std::vector({d.into.PCButton[0], d.into.PCButton[1]}),
              std::vector<std::string>({"Sc (scene)", "SF (sf)"}));
    EXPECT_TRUE(d.into.messages.empty());
}

TEST(DecodePresetDump, FieldsTheDumpDoesNotCarryKeepTheirValues) {
    Decoding d;
    WorkingPreset& p = d.into.preset;
    p.Faders[4].Function = 2;
    p.Faders[4].Name = "Old";
    p.SetupChannels[3] = SetupChannelDef{2, 1, 3, 4};
    p.SetupString = "F6";
    p.SetupStrings.Count = 1;
    ASSERT_TRUE(d.decode(frame(body({}))).ok);
    EXPECT_EQ(p.Faders[4].Function, 2);  // an off fader's record has no function
    EXPECT_EQ(p.Faders[4].Name, "");
    // An absent setup: channels kept, the string gone, no scene selected.
    EXPECT_EQ(p.SetupChannels[3], (SetupChannelDef{2, 1, 3, 4}));
    EXPECT_EQ(p.SetupString, "");
    EXPECT_EQ(p.SetupStrings.Count, 0);
    EXPECT_EQ(d.into.SelectPresetSceneCombo.listIndex(), -1);
    // A setup with no scene and a string count of 0: "<none>" chosen, the string kept.
    Decoding e;
    e.into.preset.SetupString = "F6";
    ASSERT_TRUE(e.decode(frame(body({{35, Bytes({7, 1, 1, 0, 0x80, 0x80, 0x80, 0})}}))).ok);
    EXPECT_EQ(e.into.SelectPresetSceneCombo.listIndex(), 0);
    EXPECT_EQ(e.into.preset.SetupString, "F6");
}

TEST(DecodePresetDump, SetupChannelBytes) {
    const struct {
        int bank, prog, volume;
        bool pc1600;
        SetupChannelDef expected;
    } cases[] = {
        {0x7F, 0x7F, 0x7F, false, {0, 1, 0, 0}},  // BankIsMSB stays as it was
        {0x00, 0x80, 0xFF, false, {2, 1, 1, 128}},
        {0x7E, 0x00, 0x7F, false, {128, 1, 0, 0}},
        {0xFF, 0x81, 0x80, false, {128, 0, 2, 1}},  // bank 0 sent as MSB comes back as LSB 127
        {0x85, 0x7F, 0x7F, false, {6, 0, 0, 0}},
        {0x04, 0x7F, 0x7F, true, {6, 0, 0, 0}},  // the PC1600 has no MSB
    };
    for (const auto& c : cases) {
        Decoding d;
        d.into.preset.SetupChannels[0] = d.into.preset.SetupChannels[9] = SetupChannelDef{9, 1, 9, 9};
        ASSERT_TRUE(d.decode(frame(body({{35, Bytes({7, 1, 0, 0x02, c.bank, c.prog, c.volume, 0})}})), c.pc1600).ok);
        EXPECT_EQ(d.into.preset.SetupChannels[9], c.expected) << c.bank << " " << c.prog << " " << c.volume;
        EXPECT_EQ(d.into.preset.SetupChannels[0], (SetupChannelDef{0, 1, 0, 0}));
    }
}

TEST(DecodePresetDump, SetupScene) {
    const struct {
        int index;
        bool pc1600;
        int listIndex;
        const char* scene;
        int scenePreset;
    } cases[] = {{4, false, 5, "Verse", -44},         {0, false, 1, "Intro", -43}, {99, false, 100, "--Empty--", -2},
                 {100, false, -1, kNoScene, -1}, {4, true, 0, kNoScene, -1}};
    for (const auto& c : cases) {
        Decoding d;
        ASSERT_TRUE(d.decode(frame(body({{35, Bytes({7, 1, 0, 0, 0xFE, c.index, 1, 0xF6})}})), c.pc1600).ok);
        EXPECT_EQ(d.into.SelectPresetSceneCombo.listIndex(), c.listIndex) << c.index;
        EXPECT_EQ(d.into.preset.SetupScene, c.scene) << c.index;
        EXPECT_EQ(d.into.preset.SetupScenePreset, c.scenePreset) << c.index;
        EXPECT_EQ(d.into.preset.SetupString, "F6");
        // The PC1600 can't have a setup scene: the user is told it went.
        ASSERT_EQ(d.into.messages.size(), c.pc1600 ? 1u : 0u);
        EXPECT_TRUE(!c.pc1600 || d.into.messages[0].first == kIncompatibleTitle);
    }
}

TEST(DecodePresetDump, RefusesDamagedDumpsAndChangesNothing) {
    const std::string good = frame(body({{0, Bytes({9, 0x31, 1, 2, 3, 4, 5}) + "Abc"}}));
    std::string nibble = good;
    nibble[50] = 0x41;
    const std::pair<std::string, const char*> cases[] = {
        {good.substr(0, 30), "it is too short to hold a preset (30 bytes)."},
        {good.substr(0, 60) + "\xF7", "fader 1 reads past the end of the dump."},
        {good.substr(0, good.size() - 5) + "\xF7", "setup reads past the end of the dump."},
        {nibble, "fader 1 holds the byte 41 at offset 50 where a nibble belongs."},
        {frame(body({{18, Bytes({2, 5, 200})}})), "button 1 reads past the end of the dump."},
        {frame(body({{18, Bytes({2, 9, 100})}})),
         "button 1 sends scene 100, beyond the 100 scenes of the memory image."},
        {frame(body({{34, Bytes({2, 1, 19})}})), "data wheel names entry 20, beyond the data wheel's list."},
    };
    for (const auto& [dump, reason] : cases) {
        Decoding d;
        d.into.preset.Name = "Kept";
        d.into.FaderLabel[0] = "Kept too";
        const DecodedPreset before = d.into;
        const DecodeResult result = d.decode(dump);
        EXPECT_FALSE(result.ok) << reason;
        EXPECT_EQ(result.reason, std::string("The preset dump is damaged: ") + reason);
        EXPECT_EQ(d.into.preset, before.preset) << reason;
        EXPECT_EQ(d.into.FaderLabel, before.FaderLabel) << reason;
        EXPECT_EQ(d.into.BSceneCombo.listCount(), 0) << reason;
    }
}

TEST(IsPresetDump, TestsHeaderCommandAndEnd) {
    const std::string good = frame(body({}));
    EXPECT_TRUE(IsPresetDump(good));
    for (const auto& [at, byte] : {std::pair{6, 0x01}, std::pair{3, 0x1C}, std::pair{int(good.size()) - 1, 0x00}}) {
        std::string other = good;
        other[static_cast<std::size_t>(at)] = static_cast<char>(byte);
        EXPECT_FALSE(IsPresetDump(other)) << at;
    }
    EXPECT_FALSE(IsPresetDump(Bytes({0xF0, 0x00})));
}

}  // namespace
