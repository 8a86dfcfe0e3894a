#include "midilink/ExchangeDump.h"

#include <gtest/gtest.h>

#include "LinkFixture.h"

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

class ExchangeDumpTest : public LinkFixture {};

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

TEST_F(ExchangeDumpTest, WrongCommandsAndOtherMakersAreDroppedAndTheWaitGoesOn) {
    const std::string dump = PresetDumpBytes(0);
    std::string otherMaker = dump;
    otherMaker[3] = 0x41;
    answerWith({DeviceDumpHeader(0, DeviceCommand::AllGlobals) + '\xF7', otherMaker, std::string("\x90\x3C\x40", 3),
                std::string("\xF0\x00\x00\x1B\x0B\x00", 6), dump});
    const ExchangeResult result = ExchangeDump(*ts, PresetRequest());
    ASSERT_TRUE(result.received());
    EXPECT_EQ(result.dump, dump);
}

TEST_F(ExchangeDumpTest, ADumpFromAnotherIdentifierIsAccepted) {
    const std::string dump = PresetDumpBytes(9);
    answerWith({dump});
    EXPECT_EQ(ExchangeDump(*ts, PresetRequest(0)).dump, dump);
}

struct TimeoutCase {
    IntervalRow row;
    TimeoutFlow flow;
    int timeoutIndex;
    std::int64_t tick;
    const char* title;
    const char* text;
};

class ExchangeTimeoutTest : public LinkFixture, public ::testing::WithParamInterface<TimeoutCase> {};

TEST_P(ExchangeTimeoutTest, GivesUpAfterTwoTicksWithTheFlowsMessage) {
    const TimeoutCase& c = GetParam();
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
    EXPECT_TRUE(ts->flags.TimedOut);
    EXPECT_FALSE(ts.status.visible);
    EXPECT_FALSE(ts->midiLink.waitTimer.halfWay());
    // Two ticks, give or take the few yields before the timer starts.
    EXPECT_GE(endedAt - start, 2 * c.tick);
    EXPECT_LE(endedAt - start, 2 * c.tick + 50);
}

INSTANTIATE_TEST_SUITE_P(
    ByFlow, ExchangeTimeoutTest,
    ::testing::Values(
        TimeoutCase{IntervalRow::SinglePreset, TimeoutFlow::SinglePreset, 0, 15000, "Cannot Get Preset Edit Buffer",
                    "There is no response from the PC1600(x) when asking for Preset.  Please check your MIDI Setup."},
        TimeoutCase{IntervalRow::SinglePreset, TimeoutFlow::SinglePreset, 2, 32000, "Cannot Get Preset Edit Buffer",
                    "There is no response from the PC1600(x) when asking for Preset.  Please check your MIDI Setup."},
        TimeoutCase{IntervalRow::GlobalsWindow, TimeoutFlow::GlobalSettings, 0, 9000, "Cannot Get Globals",
                    "There is no response from the PC1600(x).  Please check your MIDI Setup."},
        TimeoutCase{IntervalRow::MemoryImage, TimeoutFlow::AllPresets, 1, 45000, "Cannot Communicate with PC1600(x)",
                    "There is no response from the PC1600(x) while waiting for ALL PRESETS.  Please check your MIDI "
                    "Setup."},
        TimeoutCase{IntervalRow::MemoryImage, TimeoutFlow::AllScenes, 2, 64000, "Cannot Communicate with PC1600(x)",
                    "There is no response from the PC1600(x) while waiting for ALL SCENES.  Please check your MIDI "
                    "Setup."},
        TimeoutCase{IntervalRow::ScenesSend, TimeoutFlow::AllGlobals, 1, 9000, "Cannot Communicate with PC1600(x)",
                    "There is no response from the PC1600(x) while waiting for ALL GLOBALS.  Please check your MIDI "
                    "Setup."},
        // An index out of range counts as "Medium".
        TimeoutCase{IntervalRow::ScenesSend, TimeoutFlow::AllGlobals, 7, 9000, "Cannot Communicate with PC1600(x)",
                    "There is no response from the PC1600(x) while waiting for ALL GLOBALS.  Please check your MIDI "
                    "Setup."}));

TEST(WaitIntervalTable, EveryRowAndColumn) {
    const std::int64_t expected[4][3] = {{9000, 16000, 32000}, {15000, 21000, 32000}, {30000, 45000, 64000},
                                         {6000, 9000, 15000}};
    const IntervalRow rows[] = {IntervalRow::GlobalsWindow, IntervalRow::SinglePreset, IntervalRow::MemoryImage,
                                IntervalRow::ScenesSend};
    for (int r = 0; r < 4; ++r)
        for (int i = 0; i < 3; ++i) EXPECT_EQ(WaitInterval(rows[r], i), expected[r][i]) << r << "," << i;
}

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

    ts.prompter.expectMessage("Cannot Get Preset Edit Buffer");
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
    EXPECT_FALSE(ts->flags.TimedOut);
    EXPECT_TRUE(ts.prompter.seen().empty());
}

TEST_F(ExchangeDumpTest, CancelEndsTheWaitWithNothingAndNoMessage) {
    for (bool manual : {true, false}) {
        ts->midi.ManualMode = manual;
        const std::int64_t start = ts.clock.now();
        ts.pump.onYield = [&] {
            if (ts.clock.now() - start == 3000) ts.status.cancelledFlag = true;
        };
        const ExchangeResult result = ExchangeDump(*ts, PresetRequest());
        EXPECT_EQ(result.outcome, ExchangeResult::Outcome::Cancelled) << manual;
        EXPECT_TRUE(result.dump.empty());
        EXPECT_FALSE(ts.status.visible);
        EXPECT_FALSE(ts->midiLink.waitTimer.enabled());
        EXPECT_LT(ts.clock.now() - start, 4000);
        EXPECT_TRUE(ts.prompter.seen().empty());
    }
}

TEST_F(ExchangeDumpTest, PauseWaitsItsTimeAndYields) {
    const std::int64_t start = ts.clock.now();
    const auto yields = ts.pump.yields();
    Pause(*ts);
    EXPECT_GE(ts.clock.now() - start, kPauseTimerMs);
    EXPECT_LE(ts.clock.now() - start, kPauseTimerMs + 10);
    EXPECT_GT(ts.pump.yields(), yields);
}

}  // namespace
