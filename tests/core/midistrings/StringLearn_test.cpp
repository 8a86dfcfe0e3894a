#include "midistrings/StringLearn.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "TestProgram.h"
#include "sysex/MessageString.h"
#include "sysex/StringWorkArea.h"
#include "midistrings/StringEditor.h"

namespace tavlo {
namespace {

using testing::TestProgram;

std::string bytes(std::initializer_list<int> values) {
    std::string out;
    for (int v : values) out += static_cast<char>(v);
    return out;
}

TEST(StringLearn, KeepsWhatFitsAndSkipsTheRest) {
    TestProgram t;
    StringEditState state;
    OpenStringEditor(state, *t, StringDoor::Button1, 0);
    LearnPass pass = BeginLearnPass(*t);
    EXPECT_EQ(pass.available, 80);
    EXPECT_EQ(pass.DoneLearningButton, "CLICK WHEN FINISHED LEARNING (total bytes available: 80)");

    struct Case {
        std::string message;
        bool kept;
    };
    const Case cases[] = {
        {bytes({0xF8}), false},                          // realtime clock
        {bytes({0xF0, 0x41, 0x10, 0xF7}), true},         // sysex, 4 bytes
        {bytes({0x93, 0x3C, 0x64}), true},               // note on, channel 4
        {bytes({0xC2, 0x05}), true},                     // program change, 2 bytes
        {bytes({0xB0, 0x07}), false},                    // a controller cut short
        {bytes({0xF3, 0x01}), false},                    // song select: passed over
        {std::string(75, '\x01').insert(0, 1, '\xF0'), false},  // sysex beyond what is left
    };
    for (const auto& c : cases) EXPECT_EQ(LearnMessage(pass, c.message), c.kept) << int(c.message.size());
    EXPECT_EQ(pass.total, 9);
    EXPECT_EQ(pass.DoneLearningButton, "CLICK WHEN FINISHED LEARNING (total bytes: 9 of 80)");

    FinishLearnPass(state, *t, pass);
    const MessageStringSet& set = t->stringWork.Strings;
    ASSERT_EQ(set.Count, 3);
    EXPECT_EQ(set.Slots[0].ListItem, "F0 41 10 F7  (sysex)");
    EXPECT_EQ(set.Slots[1].ListItem, "93 3C 64  (noteon)");
    EXPECT_EQ(set.Slots[1].CommandChannel, 3);
    EXPECT_EQ(set.Slots[2].ListItem, "C2 05  (progch)");
}

TEST(StringLearn, StopsAtFiftyOneMessages) {
    TestProgram t;
    LearnPass pass = BeginLearnPass(*t);
    pass.available = 200;
    int kept = 0;
    for (int i = 0; i < 60; ++i) kept += LearnMessage(pass, bytes({0xF0, 0xF7})) ? 1 : 0;
    EXPECT_EQ(kept, 51);
}

TEST(StringLearn, AvailableBytesCountWhatTheStringHolds) {
    TestProgram t;
    StringEditState state;
    OpenStringEditor(state, *t, StringDoor::Setup, 0);
    MessageComboClick(state, *t, 0);
    ASSERT_TRUE(AppendString(state, *t));  // "90-gc 00 00": four bytes on the global channel
    EXPECT_EQ(BeginLearnPass(*t).available, 76);
}

struct QueuedMessages : LearnMessages {
    std::vector<std::string> queue;
    int clears = 0;
    void clear() override {
        ++clears;
        queue.clear();
    }
    std::string take() override {
        if (queue.empty()) return {};
        std::string front = queue.front();
        queue.erase(queue.begin());
        return front;
    }
};

TEST(StringLearn, APassRunsUntilTheUserEndsIt) {
    TestProgram t;
    StringEditState state;
    OpenStringEditor(state, *t, StringDoor::Button2, 1);
    QueuedMessages port;
    port.queue.push_back(bytes({0x90, 0x01, 0x02}));  // before the pass: flushed
    t.prompter.expectMessage(kRecordSysexTitle, RecordSysexText(), MessageAnswer::OK);
    int yields = 0;
    t.pump.onYield = [&] {
        ++yields;
        if (yields == 3) port.queue.push_back(bytes({0xE1, 0x00, 0x40}));
        if (yields == 5) port.queue.push_back(bytes({0xFE}));
        if (yields == 4000) state.Learning = false;  // past the minute of a single wait
    };
    RunLearnPass(state, *t, port);
    EXPECT_EQ(port.clears, 1);
    EXPECT_FALSE(state.Learning);
    EXPECT_EQ(state.DoneLearningButton, "CLICK WHEN FINISHED LEARNING (total bytes: 3 of 80)");
    ASSERT_EQ(t->stringWork.Strings.Count, 1);
    EXPECT_EQ(t->stringWork.Strings.Slots[0].ListItem, "E1 00 40  (pitchb)");
    EXPECT_TRUE(t.prompter.done());
}

}  // namespace
}  // namespace tavlo

#include "LoopbackBackend.h"
#include "sysex/StringWorkArea.h"
#include "midilink/MidiLink.h"

namespace tavlo {
namespace {

TEST(StringLearn, ThePassListensOnTheLearnPort) {
    testing::TestProgram t;
    auto loopback = std::make_shared<LoopbackBackend>(std::vector<std::string>{"Keys"});
    t->midiLink.setSystemBackend(loopback);
    InputPort& learn = t->midiLink.MIDILearnIn;
    const auto names = t->midiLink.devices.inputNames();
    learn.setDeviceNumber(static_cast<int>(std::find(names.begin(), names.end(), "Keys") - names.begin()));
    std::string error;
    ASSERT_TRUE(learn.open(error)) << error;
    loopback->inject("Keys", bytes({0x90, 0x3C, 0x40}));  // before the pass: not recorded

    StringEditState state;
    OpenStringEditor(state, *t, StringDoor::Button1, 0);
    LearnPortMessages port(learn);
    t.prompter.expectMessage(kRecordSysexTitle, MessageAnswer::OK);
    int yields = 0;
    t.pump.onYield = [&] {
        if (++yields == 2) loopback->inject("Keys", bytes({0xF0, 0x43, 0x10, 0x4C, 0xF7}));
        if (yields == 4) loopback->inject("Keys", bytes({0xB2, 0x07, 0x50}));
        if (yields == 10) state.Learning = false;
    };
    RunLearnPass(state, *t, port);
    const MessageStringSet& set = t->stringWork.Strings;
    ASSERT_EQ(set.Count, 2);
    EXPECT_EQ(set.Slots[0].ListItem, "F0 43 10 4C F7  (sysex)");
    EXPECT_EQ(set.Slots[1].ListItem, "B2 07 50  (ctrlch)");
    EXPECT_FALSE(learn.buffering()) << "the port stops keeping messages after the pass";
}

}  // namespace
}  // namespace tavlo
