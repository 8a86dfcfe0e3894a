#include "midilink/PresetTransfer.h"

#include <gtest/gtest.h>

#include "DumpSamples.h"
#include "LinkFixture.h"
#include "midilink/PeekList.h"
#include "midilink/VirtualPC1600.h"
#include "midilink/MidiConfig.h"

using namespace tavlo;
using namespace tavlo::testing;

namespace {

// The loopback device "Dev" is played by a virtual PC1600, so that the
// order of what goes out can be seen beside what the device does with it.
class PresetTransferTest : public LinkFixture {
protected:
    void SetUp() override {
        LinkFixture::SetUp();
        device.receive(BuildAllPresetsDump(0, 0, SampleEntries(60)));
        loop->onSend = [this](const std::string&, const std::string& bytes) {
            for (const auto& reply : device.receive(bytes)) loop->inject("Dev", reply);
        };
    }
    VirtualPC1600 device;
};

TEST_F(PresetTransferTest, GetSelectsPausesAsksWaitsPausesAndSelectsAgain) {
    const std::int64_t start = ts.clock.now();
    const ExchangeResult result = GetPresetFromDevice(*ts, "Getting Preset from PC1600(x)", 7);
    ASSERT_TRUE(result.received());
    EXPECT_EQ(result.dump, PresetDumpFromEntry(0, SampleEntries(60)[7]));
    EXPECT_EQ(sentMessages(), (std::vector<std::string>{DeviceSlotCommand(0, 0x00, 7), DeviceRequest(0, 0x14),
                                                        DeviceSlotCommand(0, 0x00, 7)}));
    // Two pauses of five seconds.
    EXPECT_GE(ts.clock.now() - start, 2 * kPauseTimerMs);
    EXPECT_LT(ts.clock.now() - start, 2 * kPauseTimerMs + 200);
    const std::vector<std::string> lines = ts.status.lines;
    const std::vector<std::string> expected{"Selecting Preset on the PC1600(x)...",
                                            "Retrieving the Preset from the PC1600(x)...",
                                            "Retrieving the Preset from the PC1600(x)...",
                                            "Selecting Preset on the PC1600(x)...",
                                            "Parsing the New Preset Sysex data..."};
    EXPECT_EQ(lines, expected);
}

TEST_F(PresetTransferTest, TheEditBufferNeedsNoSelect) {
    const ExchangeResult result = GetPresetFromDevice(*ts, "Getting Preset", kEditBufferSlot);
    ASSERT_TRUE(result.received());
    EXPECT_EQ(result.dump, PresetDumpFromEntry(0, SampleEntries(60)[50]));
    EXPECT_EQ(sentMessages(), std::vector<std::string>{DeviceRequest(0, 0x14)});
}

TEST_F(PresetTransferTest, ManualModeStillSelectsButAsksForNothing) {
    ts->midi.ManualMode = true;
    const std::int64_t start = ts.clock.now();
    ts.pump.onYield = [&] {
        if (ts.clock.now() - start == 20000) loop->inject("Dev", device.editBufferDump());
    };
    const ExchangeResult result = GetPresetFromDevice(*ts, "Getting Preset", 12);
    ASSERT_TRUE(result.received());
    EXPECT_EQ(result.dump, PresetDumpFromEntry(0, SampleEntries(60)[12]));
    EXPECT_EQ(sentMessages(),
              (std::vector<std::string>{DeviceSlotCommand(0, 0x00, 12), DeviceSlotCommand(0, 0x00, 12)}));
    EXPECT_EQ(ts.status.lines[1], kManualPresetPrompt);
}

TEST_F(PresetTransferTest, ATimeOutStopsBeforeTheSecondSelect) {
    loop->onSend = nullptr;
    ts->midi.TimeoutIndex = 0;
    ts.prompter.expectMessage("Cannot Get Preset Edit Buffer");
    const ExchangeResult result = GetPresetFromDevice(*ts, "Getting Preset", 3);
    EXPECT_EQ(result.outcome, ExchangeResult::Outcome::TimedOut);
    EXPECT_EQ(sentMessages(), (std::vector<std::string>{DeviceSlotCommand(0, 0x00, 3), DeviceRequest(0, 0x14)}));
    EXPECT_TRUE(ts.prompter.done());
}

TEST_F(PresetTransferTest, SendWritesTheDumpToTheSlotAndSelectsIt) {
    ts->midi.DeviceId = 0;
    const AllPresetsEntry fresh = SampleEntry("Brand New", 90, 5);
    const std::string dump = PresetDumpFromEntry(0, fresh);
    ASSERT_TRUE(SendPresetToDevice(*ts, dump, 21));
    EXPECT_EQ(sentMessages(),
              (std::vector<std::string>{dump, DeviceSlotCommand(0, 0x20, 21), DeviceSlotCommand(0, 0x00, 21)}));
    EXPECT_EQ(device.slot(21), fresh);
    EXPECT_EQ(device.slot(20), SampleEntries(60)[20]);
    EXPECT_EQ(device.selectedPreset(), 21);
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
