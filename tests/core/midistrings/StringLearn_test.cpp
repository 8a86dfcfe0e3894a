#include "midistrings/StringLearn.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "LoopbackBackend.h"
#include "TestProgram.h"
#include "midilink/MidiLink.h"
#include "midistrings/StringEditor.h"
#include "sysex/MessageString.h"
#include "sysex/StringWorkArea.h"

namespace tavlo {
namespace {

using testing::TestProgram;

std::string bytes(std::initializer_list<int> values) {
    std::string out;
    for (int v : values) out += static_cast<char>(v);
    return out;
}

struct StringLearn : ::testing::Test {
    TestProgram t;
    StringEditState state;
    void SetUp() override { OpenStringEditor(state, *t, StringDoor::Button1, 0); }
};

TEST_F(StringLearn, KeepsWhatFitsAndSkipsTheRest) {
    LearnPass pass = BeginLearnPass(*t);
    EXPECT_EQ(pass.DoneLearningButton, "CLICK WHEN FINISHED LEARNING (total bytes available: 80)");
    struct Case {
        std::string message;
        bool kept;
    };
    const Case cases[] = {
        {bytes({0xF8}), false},                                 // realtime clock
        {bytes({0xF0, 0x41, 0x10, 0xF7}), true},                // sysex, 4 bytes
        {bytes({0x93, 0x3C, 0x64}), true},                      // note on, channel 4
        {bytes({0xC2, 0x05}), true},                            // program change, 2 bytes
        {bytes({0xB0, 0x07}), false},                           // a controller cut short
        {bytes({0xF3, 0x01}), false},                           // song select: passed over
        {std::string(75, '\x01').insert(0, 1, '\xF0'), false},  // sysex beyond what is left
    };
    for (const auto& c : cases) EXPECT_EQ(LearnMessage(pass, c.message), c.kept) << int(c.message.size());
    EXPECT_EQ(pass.DoneLearningButton, "CLICK WHEN FINISHED LEARNING (total bytes: 9 of 80)");
    FinishLearnPass(state, *t, pass);
    const MessageStringSet& set = t->stringWork.Strings;
    ASSERT_EQ(set.Count, 3);
    EXPECT_EQ(set.Slots[1].ListItem, "93 3C 64  (noteon)");
    EXPECT_EQ(set.Slots[1].CommandChannel, 3);

    // What the string holds already counts, and a pass stops at 51 messages.
    EXPECT_EQ(BeginLearnPass(*t).available, 71);
    pass = BeginLearnPass(*t);
    pass.available = 200;
    int kept = 0;
    for (int i = 0; i < 60; ++i) kept += LearnMessage(pass, bytes({0xF0, 0xF7})) ? 1 : 0;
    EXPECT_EQ(kept, 51);
}

// A pass listens on the learn port from the prompt until the user ends it,
// past the minute of a single wait; what came before it is not recorded.
TEST_F(StringLearn, APassRecordsFromTheLearnPortUntilTheUserEndsIt) {
    auto loopback = std::make_shared<LoopbackBackend>(std::vector<std::string>{"Keys"});
    t->midiLink.setSystemBackend(loopback);
    InputPort& learn = t->midiLink.MIDILearnIn;
    const auto names = t->midiLink.devices.inputNames();
    learn.setDeviceNumber(static_cast<int>(std::find(names.begin(), names.end(), "Keys") - names.begin()));
    std::string error;
    ASSERT_TRUE(learn.open(error)) << error;
    loopback->inject("Keys", bytes({0x90, 0x3C, 0x40}));

    LearnPortMessages port(learn);
    t.prompter.expectMessage(kRecordSysexTitle, RecordSysexText(), MessageAnswer::OK);
    int yields = 0;
    t.pump.onYield = [&] {
        if (++yields == 2) loopback->inject("Keys", bytes({0xF0, 0x43, 0x10, 0x4C, 0xF7}));
        if (yields == 4) loopback->inject("Keys", bytes({0xFE}));
        if (yields == 6) loopback->inject("Keys", bytes({0xE1, 0x00, 0x40}));
        if (yields == 4000) state.Learning = false;
    };
    RunLearnPass(state, *t, port);
    EXPECT_EQ(state.DoneLearningButton, "CLICK WHEN FINISHED LEARNING (total bytes: 8 of 80)");
    const MessageStringSet& set = t->stringWork.Strings;
    ASSERT_EQ(set.Count, 2);
    EXPECT_EQ(set.Slots[0].ListItem, "F0 43 10 4C F7  (sysex)");
    EXPECT_EQ(set.Slots[1].ListItem, "E1 00 40  (pitchb)");
    EXPECT_FALSE(learn.buffering()) << "the port stops keeping messages after the pass";
    EXPECT_TRUE(t.prompter.done());
}

// Closing the window while a pass runs ends the pass and keeps nothing.
TEST_F(StringLearn, ClosingTheWindowEndsThePass) {
    struct ClosingPort : LearnMessages {
        StringEditState* state = nullptr;
        int takes = 0;
        bool overran = false;
        void clear() override {}
        std::string take() override {
            if (++takes == 1) {
                CancelStringEdit(*state);  // the close box, while a message waits
                return bytes({0x90, 0x3C, 0x40});
            }
            if (takes > 1000) {  // a pass that ignores the close would run for ever
                overran = true;
                state->Learning = false;
            }
            return {};
        }
    } port;
    port.state = &state;
    t.prompter.expectMessage(kRecordSysexTitle, RecordSysexText(), MessageAnswer::OK);
    RunLearnPass(state, *t, port);
    EXPECT_FALSE(port.overran);
    EXPECT_FALSE(state.Learning);
    EXPECT_TRUE(StringEditCancelled(state));
    EXPECT_EQ(t->stringWork.Strings.Count, 0);
}

}  // namespace
}  // namespace tavlo
