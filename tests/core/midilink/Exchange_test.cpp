#include "midilink/ExchangeDump.h"

#include <gtest/gtest.h>

#include <functional>

#include "DumpSamples.h"
#include "LinkFixture.h"
#include "midilink/MidiConfig.h"
#include "midilink/PeekList.h"
#include "midilink/PresetTransfer.h"
#include "midilink/VirtualPC1600.h"

using namespace tavlo;
using namespace tavlo::testing;

namespace {

// A single preset dump with some body, identifier `id`.
std::string PresetDumpBytes(int id, char fill = 1) {
    return DeviceDumpHeader(id, DeviceCommand::PresetDump) + std::string(32, 2) + std::string("\x00\x00\x00\x02", 4) +
           std::string(4, fill) + '\xF7';
}

ExchangeRequest PresetRequest(IntervalRow row = IntervalRow::SinglePreset,
                              TimeoutFlow flow = TimeoutFlow::SinglePreset) {
    return {"Getting Preset from PC1600(x)", DeviceRequest(0, DeviceCommand::RequestEditBuffer),
            DeviceCommand::PresetDump, kManualPresetPrompt, "Retrieving the Preset from the PC1600(x)...", row, flow};
}

class ExchangeDumpTest : public LinkFixture {
protected:
    // The device sends `dump` when the wait is `ms` old.
    void answerAt(std::int64_t ms, const std::string& dump) {
        const std::int64_t start = ts.clock.now();
        ts.pump.onYield = [this, start, ms, dump] {
            if (ts.clock.now() - start == ms) loop->inject("Dev", dump);
        };
    }
    // Clock and notes from another device on the same cable, more at every
    // yield than one round of the wait takes, for the first `ms` of a wait.
    void flood(std::int64_t ms, std::function<void()> also = nullptr) {
        const std::int64_t start = ts.clock.now();
        ts.pump.onYield = [this, start, ms, also] {
            if (ts.clock.now() - start < ms) {
                loop->inject("Dev", "\xF8");
                loop->inject("Dev", std::string("\x90\x3C\x40", 3));
                loop->inject("Dev", "\xF8");
            }
            if (also) also();
        };
    }
};

TEST_F(ExchangeDumpTest, ReceivesTheAwaitedDumpAfterSendingTheRequest) {
    const std::string dump = PresetDumpBytes(0);
    answerWith({dump});
    EXPECT_EQ(ExchangeDump(*ts, PresetRequest()).dump, dump);
    EXPECT_EQ(sentMessages(), std::vector<std::string>{DeviceRequest(0, 0x14)});
    EXPECT_EQ(ts.status.caption, "Getting Preset from PC1600(x)");
    EXPECT_EQ(ts.status.line, "Retrieving the Preset from the PC1600(x)...");
    EXPECT_FALSE(ts.status.cancelVisible);
    EXPECT_FALSE(ts->midiLink.waitTimer.enabled());
    EXPECT_EQ(ts->midiLink.MIDIIn.count(), 0);
    EXPECT_TRUE(ts.prompter.seen().empty());
}

TEST_F(ExchangeDumpTest, StaleMessagesAreFlushedBeforeTheRequest) {
    ts->midiLink.MIDIIn.setBuffering(true);
    loop->inject("Dev", PresetDumpBytes(0, 9));  // left over from before
    const std::string fresh = PresetDumpBytes(0, 1);
    answerWith({fresh});
    EXPECT_EQ(ExchangeDump(*ts, PresetRequest()).dump, fresh);
}

TEST_F(ExchangeDumpTest, WrongCommandsAndOtherMakersAreDroppedAndAnyIdentifierIsTaken) {
    const std::string dump = PresetDumpBytes(9);
    std::string otherMaker = dump;
    otherMaker[3] = 0x41;
    answerWith({DeviceDumpHeader(0, DeviceCommand::AllGlobals) + '\xF7', otherMaker, std::string("\x90\x3C\x40", 3),
                std::string("\xF0\x00\x00\x1B\x0B\x00", 6), dump});
    EXPECT_EQ(ExchangeDump(*ts, PresetRequest()).dump, dump);
}

TEST_F(ExchangeDumpTest, AllScenesIsTakenOnlyAtItsExactLength) {
    ExchangeRequest request = PresetRequest();
    request.request = DeviceRequest(0, DeviceCommand::RequestAllScenes);
    request.awaitedCommand = DeviceCommand::AllScenes;
    const std::string header = DeviceDumpHeader(0, DeviceCommand::AllScenes);
    const auto scenes = [&](std::size_t length, char fill) {
        return header + std::string(length - header.size() - 1, fill) + '\xF7';
    };
    answerWith({scenes(4408, 1), scenes(4410, 2), scenes(4409, 3)});
    EXPECT_EQ(ExchangeDump(*ts, request).dump, scenes(4409, 3));
}

struct TimeoutCase {
    IntervalRow row;
    TimeoutFlow flow;
    int timeoutIndex;
    std::int64_t tick;
    std::string title, text;
};

class ExchangeTimeoutTest : public ExchangeDumpTest, public ::testing::WithParamInterface<TimeoutCase> {};

TEST_P(ExchangeTimeoutTest, GivesUpAfterTwoTicksWithTheFlowsMessageWhateverElseComes) {
    const TimeoutCase& c = GetParam();
    flood(300000);
    ts->midi.TimeoutIndex = c.timeoutIndex;
    const std::int64_t start = ts.clock.now();
    ts.prompter.expectMessage(c.title, c.text, MessageAnswer::OK);
    const ExchangeResult result = ExchangeDump(*ts, PresetRequest(c.row, c.flow));
    EXPECT_EQ(result.outcome, ExchangeResult::Outcome::TimedOut);
    EXPECT_TRUE(result.dump.empty());
    EXPECT_TRUE(ts.prompter.done());
    EXPECT_TRUE(ts->midiLink.TimedOut);
    EXPECT_FALSE(ts.status.visible);
    EXPECT_FALSE(ts->midiLink.waitTimer.halfWay());
    // Two ticks, give or take the few yields before the timer starts.
    EXPECT_GE(ts.clock.now() - start, 2 * c.tick);
    EXPECT_LE(ts.clock.now() - start, 2 * c.tick + 50);
}

const char* const kPresetTitle = "Cannot Get Preset Edit Buffer";
const char* const kPresetText =
    "There is no response from the PC1600(x) when asking for Preset.  Please check your MIDI Setup.";
const char* const kGlobalsTitle = "Cannot Get Globals";
const char* const kGlobalsText = "There is no response from the PC1600(x).  Please check your MIDI Setup.";
const char* const kMemoryTitle = "Cannot Communicate with PC1600(x)";
std::string MemoryText(const char* dump) {
    return std::string("There is no response from the PC1600(x) while waiting for ") + dump +
           ".  Please check your MIDI Setup.";
}
using R = IntervalRow;
using F = TimeoutFlow;

INSTANTIATE_TEST_SUITE_P(
    ByFlow, ExchangeTimeoutTest,
    ::testing::Values(TimeoutCase{R::SinglePreset, F::SinglePreset, 0, 15000, kPresetTitle, kPresetText},
                      TimeoutCase{R::SinglePreset, F::SinglePreset, 2, 32000, kPresetTitle, kPresetText},
                      TimeoutCase{R::GlobalsWindow, F::GlobalSettings, 0, 9000, kGlobalsTitle, kGlobalsText},
                      TimeoutCase{R::GlobalsWindow, F::GlobalSettings, 2, 32000, kGlobalsTitle, kGlobalsText},
                      TimeoutCase{R::MemoryImage, F::AllPresets, 1, 45000, kMemoryTitle, MemoryText("ALL PRESETS")},
                      TimeoutCase{R::MemoryImage, F::AllScenes, 2, 64000, kMemoryTitle, MemoryText("ALL SCENES")},
                      TimeoutCase{R::ScenesSend, F::AllGlobals, 0, 6000, kMemoryTitle, MemoryText("ALL GLOBALS")},
                      // An index out of range counts as "Medium".
                      TimeoutCase{R::ScenesSend, F::AllGlobals, 7, 9000, kMemoryTitle, MemoryText("ALL GLOBALS")}));

TEST_F(ExchangeDumpTest, AHalfWayFlagLeftByAnEarlierWaitEndsTheNextAfterOneTick) {
    // "Short": the first wait is answered 20 s in, after the first tick (15 s)
    // and before the second.
    ts->midi.TimeoutIndex = 0;
    answerAt(20000, PresetDumpBytes(0));
    ASSERT_TRUE(ExchangeDump(*ts, PresetRequest()).received());
    EXPECT_TRUE(ts->midiLink.waitTimer.halfWay());
    ts.pump.onYield = nullptr;

    ts.prompter.expectMessage(kPresetTitle);
    const std::int64_t second = ts.clock.now();
    EXPECT_EQ(ExchangeDump(*ts, PresetRequest()).outcome, ExchangeResult::Outcome::TimedOut);
    EXPECT_GE(ts.clock.now() - second, 15000);
    EXPECT_LE(ts.clock.now() - second, 15050);
}

TEST_F(ExchangeDumpTest, ManualModeSendsNothingAndNeverTimesOut) {
    ts->midi.ManualMode = true;
    const std::string dump = PresetDumpBytes(0);
    answerAt(600000, dump);  // the user presses the dump button on the device after ten minutes
    EXPECT_EQ(ExchangeDump(*ts, PresetRequest()).dump, dump);
    EXPECT_TRUE(loop->sent.empty());
    EXPECT_EQ(ts.status.line, kManualPresetPrompt);
    EXPECT_TRUE(ts.status.cancelVisible);
    EXPECT_FALSE(ts->midiLink.TimedOut);
    EXPECT_TRUE(ts.prompter.seen().empty());
}

TEST_F(ExchangeDumpTest, CancelEndsTheWaitWithNothingAndNoMessage) {
    for (bool manual : {true, false}) {
        ts->midi.ManualMode = manual;
        const std::int64_t start = ts.clock.now();
        flood(300000, [&] {
            if (ts.clock.now() - start == 3000) ts.status.cancelledFlag = true;
        });
        const ExchangeResult result = ExchangeDump(*ts, PresetRequest());
        EXPECT_EQ(result.outcome, ExchangeResult::Outcome::Cancelled) << manual;
        EXPECT_TRUE(result.dump.empty());
        EXPECT_FALSE(ts.status.visible);
        EXPECT_FALSE(ts->midiLink.waitTimer.enabled());
        EXPECT_LT(ts.clock.now() - start, 4000);
        EXPECT_TRUE(ts.prompter.seen().empty());
    }
}


// The loopback device "Dev" is played by a virtual PC1600, so that the
// order of what goes out can be seen beside what the device does with it.
class PresetTransferTest : public ExchangeDumpTest {
protected:
    void SetUp() override {
        ExchangeDumpTest::SetUp();
        device.receive(BuildAllPresetsDump(0, 0, SampleEntries(60)));
        loop->onSend = [this](const std::string&, const std::string& bytes) {
            for (const auto& reply : device.receive(bytes)) loop->inject("Dev", reply);
        };
    }
    VirtualPC1600 device;
};

TEST_F(PresetTransferTest, GetSelectsPausesAsksWaitsPausesAndSelectsAgain) {
    const std::int64_t start = ts.clock.now();
    EXPECT_EQ(GetPresetFromDevice(*ts, "Getting Preset from PC1600(x)", 7).dump,
              PresetDumpFromEntry(0, SampleEntries(60)[7]));
    EXPECT_EQ(sentMessages(), (std::vector<std::string>{DeviceSlotCommand(0, 0x00, 7), DeviceRequest(0, 0x14),
                                                        DeviceSlotCommand(0, 0x00, 7)}));
    // Two pauses of five seconds.
    EXPECT_GE(ts.clock.now() - start, 2 * kPauseTimerMs);
    EXPECT_LT(ts.clock.now() - start, 2 * kPauseTimerMs + 200);
    const std::string selecting = "Selecting Preset on the PC1600(x)...";
    const std::string retrieving = "Retrieving the Preset from the PC1600(x)...";
    EXPECT_EQ(ts.status.lines, (std::vector<std::string>{selecting, retrieving, retrieving, selecting,
                                                         "Parsing the New Preset Sysex data..."}));
}

TEST_F(PresetTransferTest, TheEditBufferNeedsNoSelect) {
    EXPECT_EQ(GetPresetFromDevice(*ts, "Getting Preset", kEditBufferSlot).dump,
              PresetDumpFromEntry(0, SampleEntries(60)[50]));
    EXPECT_EQ(sentMessages(), std::vector<std::string>{DeviceRequest(0, 0x14)});
}

TEST_F(PresetTransferTest, ManualModeStillSelectsButAsksForNothing) {
    ts->midi.ManualMode = true;
    const std::string dump = PresetDumpFromEntry(0, SampleEntries(60)[12]);
    answerAt(20000, dump);
    EXPECT_EQ(GetPresetFromDevice(*ts, "Getting Preset", 12).dump, dump);
    EXPECT_EQ(sentMessages(),
              (std::vector<std::string>{DeviceSlotCommand(0, 0x00, 12), DeviceSlotCommand(0, 0x00, 12)}));
    EXPECT_EQ(ts.status.lines[1], kManualPresetPrompt);
}

TEST_F(PresetTransferTest, ATimeOutStopsBeforeTheSecondSelect) {
    loop->onSend = nullptr;
    ts->midi.TimeoutIndex = 0;
    ts.prompter.expectMessage("Cannot Get Preset Edit Buffer");
    EXPECT_EQ(GetPresetFromDevice(*ts, "Getting Preset", 3).outcome, ExchangeResult::Outcome::TimedOut);
    EXPECT_EQ(sentMessages(), (std::vector<std::string>{DeviceSlotCommand(0, 0x00, 3), DeviceRequest(0, 0x14)}));
    EXPECT_TRUE(ts.prompter.done());
}

TEST_F(PresetTransferTest, SendWritesTheDumpToTheSlotAndSelectsIt) {
    ts->midi.DeviceId = 0;
    const std::string dump = PresetDumpFromEntry(0, SampleEntry("Brand New", 90, 5));
    ASSERT_TRUE(SendPresetToDevice(*ts, dump, 21));
    EXPECT_EQ(sentMessages(),
              (std::vector<std::string>{dump, DeviceSlotCommand(0, 0x20, 21), DeviceSlotCommand(0, 0x00, 21)}));
    EXPECT_EQ(ts.status.line, "Writing to Memory Location 21...");
}

TEST_F(PresetTransferTest, PeekListsTheEditBufferAndTheFiftySlots) {
    ListState list;
    list.addItem(kPeekSizingLine);
    LoadPeekList(*ts, list);
    ASSERT_EQ(list.listCount(), 51);
    // Entries 0 to 49 are the slots, entry 50 the edit buffer.
    EXPECT_EQ(list.list(0), "00:  Preset 0        ");
    EXPECT_EQ(list.list(49), "49:  Preset 49       ");
    EXPECT_EQ(list.list(50), "EditBuffer:  Preset 50       ");
    EXPECT_EQ(sentMessages(), std::vector<std::string>{DeviceRequest(0, 0x11)});
    EXPECT_EQ(ts.status.caption, "Peeking at PC1600(x) Presets");
    EXPECT_EQ(ts.status.lines.front(), "Waiting for ALL PRESETS data from PC1600(x).....");
    EXPECT_FALSE(ts.status.visible);
}

TEST_F(PresetTransferTest, PeekWithoutAnswerGivesTheAllPresetsMessageAndAnEmptyList) {
    loop->onSend = nullptr;
    ts.prompter.expectMessage(
        "Cannot Communicate with PC1600(x)",
        "There is no response from the PC1600(x) while waiting for ALL PRESETS.  Please check your MIDI Setup.",
        MessageAnswer::OK);
    ListState list;
    list.addItem(kPeekSizingLine);
    const std::int64_t start = ts.clock.now();
    LoadPeekList(*ts, list);
    EXPECT_EQ(list.listCount(), 0);
    // The memory image's row: two ticks of 45 s at "Medium".
    EXPECT_GE(ts.clock.now() - start, 90000);
    EXPECT_TRUE(ts.prompter.done());
}

TEST(PeekLines, NamesComeBackWithTheirGreaterSignsAndShortDumpsGiveFewerLines) {
    AllPresetsEntries entries = SampleEntries(10);
    entries[4] = SampleEntry("A~B", 10, 1);  // the device's form of "A>B"
    const std::string dump = BuildAllPresetsDump(0, 0, entries);
    const auto lines = PeekLines(dump);
    ASSERT_EQ(lines.size(), 51u);
    EXPECT_EQ(lines[4], "04:  A>B             ");
    EXPECT_EQ(PeekLines(dump.substr(0, 9 + 32 * 3 + 5)).size(), 3u);
    EXPECT_TRUE(PeekLines("").empty());
    // Names sit where they sit, even in a dump whose directory is damaged.
    EXPECT_EQ(PeekLines(dump.substr(0, 1700)).size(), 51u);
}
}  // namespace
