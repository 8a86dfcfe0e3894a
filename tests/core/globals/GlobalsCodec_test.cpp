// The settings' dump and text forms: round trips on both models, the forms
// of dump that are accepted or refused, and the .tgl reader's refusals.
#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "globals/GlobalSettings.h"
#include "globals/GlobalsText.h"
#include "sysex/AllGlobalsDump.h"

namespace tavlo {
namespace {

namespace O = GlobalsOffset;

GlobalSettings RandomSettings(std::mt19937& rng) {
    const auto pick = [&](int low, int high) { return std::uniform_int_distribution<int>(low, high)(rng); };
    GlobalSettings s;
    for (auto& map : s.MidiMaps)
        for (int& entry : map) entry = pick(0, 127);
    s.ViewAngle = pick(0, 127);
    s.ChIn = pick(1, 16);
    s.ChOut = pick(1, 16);
    for (auto&& filter : s.Filters) filter = pick(0, 1) == 1;
    s.DevNum = pick(0, 127);
    s.RemoteButton = pick(0, 3);  // past the list: "Value 2", "Value 3"
    s.RemoteChannel = pick(1, 16);
    s.StartingNote = pick(0, 127);
    s.RecChannel = pick(0, 16);
    s.CurrentMap = pick(0, 5);
    s.FootSwitch1 = pick(0, 20);
    s.FootSwitch2 = pick(0, 20);
    s.PerMessage = pick(0, 127);
    s.PerByte = pick(0, 127);
    s.Name = "Set " + std::to_string(pick(0, 999));
    return s;
}

TEST(GlobalsCodec, SettingsSurviveTheDumpAndTheTextOnBothModels) {
    std::mt19937 rng(1600);
    for (int round = 0; round < 40; ++round) {
        const bool pc1600 = round % 2 == 1;
        const GlobalSettings s = RandomSettings(rng);
        const auto dump = GlobalForm2Sysex(s, pc1600, 5);
        ASSERT_TRUE(dump);
        ASSERT_EQ(dump->size(), pc1600 ? 418u : 420u);
        GlobalSettings expected = s;
        expected.Name.clear();
        if (pc1600)  // the original model has no remote, record channel or delays
            expected.RemoteButton = expected.RemoteChannel = expected.StartingNote = expected.RecChannel =
                expected.PerMessage = expected.PerByte = 0;
        const DecodedGlobals decoded = Sysex2GlobalForm(*dump, pc1600);
        ASSERT_TRUE(decoded.settings) << decoded.problem;
        EXPECT_EQ(*decoded.settings, expected) << round;
        EXPECT_FALSE(decoded.modelNotice);
        // Dump -> settings -> dump is byte-identical.
        EXPECT_EQ(GlobalForm2Sysex(*decoded.settings, pc1600, 5), dump);

        GlobalSettings named = *decoded.settings;
        named.Name = s.Name;
        const GlobalsTextResult text = LoadTavloFormatGlobals(StoreTavloFormatGlobals(named), {});
        ASSERT_TRUE(text.settings) << text.problem;
        EXPECT_EQ(*text.settings, named) << round;
        EXPECT_EQ(GlobalForm2Sysex(*text.settings, pc1600, 5), dump);
    }
}

// What each accepted form of dump gives, and what is refused.
struct DumpCase {
    const char* name;
    std::function<std::string()> dump;
    bool pc1600Model;
    bool accepted;
    bool notice;
    std::function<void(const GlobalSettings&)> check;
};

std::string WithByte(std::string dump, std::size_t offset, int value) {
    dump[offset] = static_cast<char>(value);
    return dump;
}

std::string XDump() {
    GlobalSettings s = NewGlobalSettings();
    s.FootSwitch1 = 3;
    s.PerMessage = 7;
    s.PerByte = 9;
    s.RecChannel = 4;
    return *GlobalForm2Sysex(s, false, 0);
}

TEST(GlobalsCodec, DumpFormsAreReadOrRefused) {
    const std::vector<DumpCase> cases{
        {"420 on the PC1600X", XDump, false, true, false,
         [](const GlobalSettings& s) { EXPECT_EQ(s.PerByte, 9); EXPECT_EQ(s.RecChannel, 4); }},
        {"420 on the PC1600 drops the X fields", XDump, true, true, false,
         [](const GlobalSettings& s) { EXPECT_EQ(s.PerByte, 0); EXPECT_EQ(s.RecChannel, 0); EXPECT_EQ(s.FootSwitch1, 3); }},
        {"Tavlo's 418 form on the PC1600X: no delays, no notice",
         [] { return *GlobalForm2Sysex(*Sysex2GlobalForm(XDump(), false).settings, true, 0); }, false, true, false,
         [](const GlobalSettings& s) { EXPECT_EQ(s.PerMessage, 0); EXPECT_EQ(s.FootSwitch1, 3); }},
        {"414 from an original device: the rest reads 0",
         [] { return WithByte(DefaultAllGlobalsDump(0, true), O::ChannelIn, 6); }, false, true, true,
         [](const GlobalSettings& s) { EXPECT_EQ(s.ChIn, 7); EXPECT_EQ(s.RecChannel, 0); EXPECT_EQ(s.FootSwitch1, 0); }},
        {"414 on the PC1600 model: no notice", [] { return DefaultAllGlobalsDump(0, true); }, true, true, false, nullptr},
        {"418 from an original device that runs on",
         [] {
             std::string dump = WithByte(XDump().substr(0, 418), O::RecordChannel, 0xF7);
             dump.back() = '\xF7';
             return dump;
         },
         false, true, true, [](const GlobalSettings& s) { EXPECT_EQ(s.FootSwitch1, 3); EXPECT_EQ(s.PerMessage, 0); }},
        {"a filter byte of 2 leaves the box off", [] { return WithByte(XDump(), O::Filters, 2); }, false, true, false,
         [](const GlobalSettings& s) { EXPECT_FALSE(s.Filters[1]); }},
        {"a filter byte of 1 at the last position is index 0", [] { return WithByte(XDump(), O::Filters + 14, 1); },
         false, true, false, [](const GlobalSettings& s) { EXPECT_TRUE(s.Filters[0]); EXPECT_FALSE(s.Filters[14]); }},
        {"419 bytes", [] { return XDump().substr(0, 418) + '\xF7'; }, false, false, false, nullptr},
        {"416 bytes", [] { return XDump().substr(0, 415) + '\xF7'; }, false, false, false, nullptr},
        {"another command", [] { return WithByte(XDump(), 6, 2); }, false, false, false, nullptr},
        {"420 with an F7 at 414", [] { return WithByte(XDump(), O::RecordChannel, 0xF7); }, false, false, false, nullptr},
        {"a byte above 127", [] { return WithByte(XDump(), O::Map2, 0x90); }, false, false, false, nullptr},
        {"empty", [] { return std::string(); }, false, false, false, nullptr},
    };
    for (const DumpCase& c : cases) {
        SCOPED_TRACE(c.name);
        const DecodedGlobals decoded = Sysex2GlobalForm(c.dump(), c.pc1600Model);
        ASSERT_EQ(decoded.settings.has_value(), c.accepted) << decoded.problem;
        EXPECT_EQ(decoded.problem.empty(), c.accepted);
        EXPECT_EQ(decoded.modelNotice, c.notice);
        if (c.check && decoded.settings) c.check(*decoded.settings);
    }
}

TEST(GlobalsCodec, EncoderRefusesWhatNoDataByteHoldsAndNeedsADeviceId) {
    GlobalSettings s = NewGlobalSettings();
    EXPECT_EQ(GlobalForm2Sysex(s, false, -1), std::string());
    for (auto set : std::vector<std::function<void(GlobalSettings&)>>{
             [](GlobalSettings& g) { g.MidiMaps[2][127] = 128; }, [](GlobalSettings& g) { g.DevNum = 200; },
             [](GlobalSettings& g) { g.ChIn = 0; }, [](GlobalSettings& g) { g.PerByte = 128; }}) {
        GlobalSettings bad = s;
        set(bad);
        std::string problem;
        EXPECT_FALSE(GlobalForm2Sysex(bad, false, 0, &problem));
        EXPECT_FALSE(problem.empty());
    }
    // The original model's form: zeros for the X fields and at 414, F7 at 418.
    s.RemoteButton = s.StartingNote = 9;
    const std::string dump = *GlobalForm2Sysex(s, true, 3);
    EXPECT_EQ(dump.substr(O::RemoteFunction, 4), std::string(4, '\0'));
    EXPECT_EQ(dump[5], 3);
    EXPECT_EQ(static_cast<unsigned char>(dump[417]), 0xF7);
}

TEST(GlobalsCodec, TheFormsTexts) {
    EXPECT_EQ(DeviceNumberText(10), "10 (0Ah)");
    EXPECT_EQ(DeviceNumberText(200), "200 (C8h)");
    EXPECT_EQ(DeviceNumberText(16), "16 (10h)");
    EXPECT_EQ(ProgChangeLine(5, 5), "005  ->  Preset05");
    EXPECT_EQ(ProgChangeLine(100, 127), "100  ->  Scene77");
    EXPECT_EQ(ComboText(FootSwitchLines(), 16), "Button16");
    EXPECT_EQ(ComboText(FootSwitchLines(), 17), "Value 17");
    EXPECT_EQ(ComboValue(CurrentMapLines(), "Value 9"), 9);
    EXPECT_EQ(ComboValue(CurrentMapLines(), "Map 4"), std::nullopt);
    const GlobalSettings fresh = NewGlobalSettings();
    EXPECT_EQ(fresh.StartingNote, 60);
    EXPECT_EQ(fresh.MidiMaps[2][77], 127);
    EXPECT_EQ(fresh.MidiMaps[2][78], 50);
    EXPECT_EQ(fresh.MidiMaps[1][50], 0);
}

TEST(GlobalsText, WritesEveryKeywordInOrderWithCrLf) {
    GlobalSettings s = NewGlobalSettings();
    s.Name = "  Live  ";
    s.Filters[0] = s.Filters[14] = true;
    s.PerByte = 3;
    s.Default = true;
    const std::string text = StoreTavloFormatGlobals(s);
    const std::string head =
        "[GLOBAL DATA] Live\r\n[CHIN] 1\r\n[CHOUT] 1\r\n[RECCH] Off\r\n[VIEWANG] 0\r\n[SYXDELAY] 0\r\n"
        "[BYTEDELAY] 30\r\n[DEFAULT] Yes\r\n[DEVNUM] 0\r\n[REMBUTTON] Off\r\n[REMCH] 1\r\n[STARTNOTE] 60\r\n"
        "[FOOTSW1] Enter\r\n[FOOTSW2] Enter\r\n[START FILTERS]\r\n     All MIDI Information\r\n"
        "     System Realtime\r\n[END FILTERS]\r\n[CURMAP] None\r\n[BEGIN MAP 1]\r\n000      -> P00\r\n";
    EXPECT_EQ(text.substr(0, head.size()), head);
    EXPECT_NE(text.find("\r\n127      -> S00\r\n[END MAP 3]\r\n[END GLOBAL DATA]\r\n"), std::string::npos);

    const GlobalsTextResult read = LoadTavloFormatGlobals(text + "[MORE]\r\n", {});
    ASSERT_TRUE(read.settings);
    EXPECT_TRUE(read.defaultYes);
    EXPECT_FALSE(read.settings->Default);  // the answer to the question sets it
    EXPECT_EQ(read.consumed, text.size());
}

std::string Replace(std::string text, const std::string& from, const std::string& to) {
    return text.replace(text.find(from), from.size(), to);
}

TEST(GlobalsText, ReaderKeepsWhatTheFileLeavesOpen) {
    GlobalSettings current = NewGlobalSettings();
    current.Filters.fill(true);
    current.FootSwitch2 = 5;
    std::string text = StoreTavloFormatGlobals(NewGlobalSettings());
    text = Replace(text, "[FOOTSW2] Enter", "[FOOTSW2] Pedal");
    text = Replace(text, "[FOOTSW1] Enter", "[FOOTSW1] Value 40");
    text = Replace(text, "[GLOBAL DATA] ", "[GLOBAL DATA]");
    text = Replace(text, "[DEFAULT] No", "[DEFAULT] yes");
    const GlobalsTextResult read = LoadTavloFormatGlobals(text, current);
    ASSERT_TRUE(read.settings) << read.problem;
    EXPECT_EQ(read.settings->Filters, decltype(current.Filters){});  // no lines: every box cleared
    EXPECT_EQ(read.settings->FootSwitch2, 5);                          // no such line: as it was
    EXPECT_EQ(read.settings->FootSwitch1, 40);
    EXPECT_EQ(read.settings->Name, "Imported Globals");
    EXPECT_TRUE(read.defaultYes);
}

TEST(GlobalsText, BadInputIsRefusedWhole) {
    const std::string good = StoreTavloFormatGlobals(NewGlobalSettings());
    const std::vector<std::pair<const char*, std::string>> cases{
        {"missing keyword", Replace(good, "[CHOUT] 1\r\n", "")},
        {"reordered", Replace(good, "[CHIN] 1\r\n[CHOUT] 1\r\n", "[CHOUT] 1\r\n[CHIN] 1\r\n")},
        {"unknown keyword", Replace(good, "[VIEWANG] 0", "[VIEWANGLE] 0")},
        {"keyword run into its value", Replace(good, "[DEVNUM] 0", "[DEVNUM]0")},
        {"map line without arrow", Replace(good, "005      -> P05", "005      P05")},
        {"map line with another letter", Replace(good, "005      -> P05", "005      -> Q05")},
        {"map line past the scenes", Replace(good, "005      -> P05", "005      -> S78")},
        {"map line with a preset past 49", Replace(good, "005      -> P05", "005      -> P50")},
        {"map line with program 128", Replace(good, "005      -> P05", "128      -> P05")},
        {"a line too few in a map", Replace(good, "127      -> S00\r\n[END MAP 3]", "[END MAP 3]")},
        {"channel out of range", Replace(good, "[CHIN] 1", "[CHIN] 200")},
        {"not a number", Replace(good, "[STARTNOTE] 60", "[STARTNOTE] C4")},
        {"combo value past a byte", Replace(good, "[CURMAP] None", "[CURMAP] Value 300")},
        {"unknown filter", Replace(good, "[START FILTERS]\r\n", "[START FILTERS]\r\n     Clock\r\n")},
        {"cut short", good.substr(0, good.size() / 2)},
        {"empty", ""},
    };
    for (const auto& [name, text] : cases) {
        const GlobalsTextResult read = LoadTavloFormatGlobals(text, NewGlobalSettings());
        EXPECT_FALSE(read.settings) << name;
        EXPECT_FALSE(read.defaultYes) << name;
    }
}

}  // namespace
}  // namespace tavlo
