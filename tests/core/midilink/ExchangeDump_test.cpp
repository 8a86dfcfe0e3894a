#include "midilink/ExchangeDump.h"

#include <gtest/gtest.h>

#include <functional>

#include "LinkFixture.h"
#include "midilink/MidiConfig.h"
#include "midilink/MidiLink.h"

using namespace tavlo;
using namespace tavlo::testing;

namespace {

ExchangeRequest PresetRequest(int id = 0) {
    ExchangeRequest r;
    r.title = "Getting Preset from PC1600(x)";
    r.request = DeviceRequest(id, DeviceCommand::RequestEditBuffer);
    r.awaitedCommand = DeviceCommand::PresetDump;
    r.manualPrompt = kManualPresetPrompt;
    r.automaticPrompt = "Retrieving the Preset from the PC1600(x)...";
    r.row = IntervalRow::SinglePreset;
    r.flow = TimeoutFlow::SinglePreset;
    return r;
}

class ExchangeDumpTest : public LinkFixture {
protected:
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
    const ExchangeResult result = ExchangeDump(*ts, PresetRequest());
    ASSERT_TRUE(result.received());
    EXPECT_EQ(result.dump, dump);
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
    const ExchangeResult result = ExchangeDump(*ts, PresetRequest());
    ASSERT_TRUE(result.received());
    EXPECT_EQ(result.dump, dump);
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
    const ExchangeResult result = ExchangeDump(*ts, request);
    ASSERT_TRUE(result.received());
    EXPECT_EQ(result.dump, scenes(4409, 3));
}

struct TimeoutCase {
    IntervalRow row;
    TimeoutFlow flow;
    int timeoutIndex;
    std::int64_t tick;
    std::string title;
    std::string text;
};

class ExchangeTimeoutTest : public ExchangeDumpTest, public ::testing::WithParamInterface<TimeoutCase> {};

TEST_P(ExchangeTimeoutTest, GivesUpAfterTwoTicksWithTheFlowsMessageWhateverElseComes) {
    const TimeoutCase& c = GetParam();
    flood(300000);
    ts->midi.TimeoutIndex = c.timeoutIndex;
    ExchangeRequest request = PresetRequest();
    request.row = c.row;
    request.flow = c.flow;
    std::int64_t endedAt = 0;
    const std::int64_t start = ts.clock.now();
    ts.prompter.expectMessage(c.title, c.text, MessageAnswer::OK);
    const ExchangeResult result = ExchangeDump(*ts, request);
    endedAt = ts.clock.now();
    EXPECT_EQ(result.outcome, ExchangeResult::Outcome::TimedOut);
    EXPECT_TRUE(result.dump.empty());
    EXPECT_TRUE(ts.prompter.done());
    EXPECT_TRUE(ts->midiLink.TimedOut);
    EXPECT_FALSE(ts.status.visible);
    EXPECT_FALSE(ts->midiLink.waitTimer.halfWay());
    // Two ticks, give or take the few yields before the timer starts.
    EXPECT_GE(endedAt - start, 2 * c.tick);
    EXPECT_LE(endedAt - start, 2 * c.tick + 50);
}

const char* const kPresetTitle = "Cannot Get Preset Edit Buffer";
const char* const kPresetText =
    "There is no response from the PC1600(x) when asking for Preset.  Please check your MIDI Setup.";
const char* const kMemoryTitle = "Cannot Communicate with PC1600(x)";
std::string MemoryText(const char* dump) {
    return std::string("There is no response from the PC1600(x) while waiting for ") + dump +
           ".  Please check your MIDI Setup.";
}

INSTANTIATE_TEST_SUITE_P(
    ByFlow, ExchangeTimeoutTest,
    ::testing::Values(
        TimeoutCase{IntervalRow::SinglePreset, TimeoutFlow::SinglePreset, 0, 15000, kPresetTitle, kPresetText},
        TimeoutCase{IntervalRow::SinglePreset, TimeoutFlow::SinglePreset, 2, 32000, kPresetTitle, kPresetText},
        TimeoutCase{IntervalRow::GlobalsWindow, TimeoutFlow::GlobalSettings, 0, 9000, "Cannot Get Globals",
                    "There is no response from the PC1600(x).  Please check your MIDI Setup."},
        TimeoutCase{IntervalRow::GlobalsWindow, TimeoutFlow::GlobalSettings, 2, 32000, "Cannot Get Globals",
                    "There is no response from the PC1600(x).  Please check your MIDI Setup."},
        TimeoutCase{IntervalRow::MemoryImage, TimeoutFlow::AllPresets, 1, 45000, kMemoryTitle,
                    MemoryText("ALL PRESETS")},
        TimeoutCase{IntervalRow::MemoryImage, TimeoutFlow::AllScenes, 2, 64000, kMemoryTitle,
                    MemoryText("ALL SCENES")},
        TimeoutCase{IntervalRow::ScenesSend, TimeoutFlow::AllGlobals, 0, 6000, kMemoryTitle,
                    MemoryText("ALL GLOBALS")},
        // An index out of range counts as "Medium".
        TimeoutCase{IntervalRow::ScenesSend, TimeoutFlow::AllGlobals, 7, 9000, kMemoryTitle,
                    MemoryText("ALL GLOBALS")}));

TEST_F(ExchangeDumpTest, AHalfWayFlagLeftByAnEarlierWaitEndsTheNextAfterOneTick) {
    // "Short": the first wait is answered 20 s in, after the first tick (15 s)
    // and before the second.
    ts->midi.TimeoutIndex = 0;
    const std::string dump = PresetDumpBytes(0);
    const std::int64_t start = ts.clock.now();
    ts.pump.onYield = [&] {
        if (ts.clock.now() - start == 20000) loop->inject("Dev", dump);
    };
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
    const std::int64_t start = ts.clock.now();
    ts.pump.onYield = [&] {
        // The user presses the dump button on the device after ten minutes.
        if (ts.clock.now() - start == 600000) loop->inject("Dev", dump);
    };
    const ExchangeResult result = ExchangeDump(*ts, PresetRequest());
    ASSERT_TRUE(result.received());
    EXPECT_EQ(result.dump, dump);
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

}  // namespace
