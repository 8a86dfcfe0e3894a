#include <gtest/gtest.h>

#include "TestProgram.h"
#include "midistrings/StringEditor.h"
#include "midistrings/StringLearn.h"
#include "sysex/StringNotation.h"
#include "sysex/StringWorkArea.h"

namespace tavlo {
namespace {

using testing::TestProgram;

// Closing the window while a pass runs ends the pass and keeps nothing.
TEST(StringEditorFixes, ClosingTheWindowEndsTheLearnPass) {
    TestProgram t;
    StringEditState state;
    OpenStringEditor(state, *t, StringDoor::Button1, 0);
    struct ClosingPort : LearnMessages {
        StringEditState* state = nullptr;
        int takes = 0;
        bool overran = false;
        void clear() override {}
        std::string take() override {
            if (++takes == 1) {
                CancelStringEdit(*state);  // the close box, while a message waits
                return std::string("\x90\x3C\x40", 3);
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

TEST(StringEditorFixes, SpecialBytesTheModelTakes) {
    struct Case {
        StringDoor door;
        int button;  // dv, rv, pr, cs, gc
        bool pc1600;
        bool enabled;
    };
    const Case cases[] = {
        {StringDoor::Button1, 3, true, true},   {StringDoor::Button2, 3, true, true},
        {StringDoor::Fader, 3, true, false},    {StringDoor::Setup, 3, true, false},
        {StringDoor::Fader, 2, true, true},     {StringDoor::Button1, 0, true, false},
        {StringDoor::Button1, 4, true, false},  {StringDoor::Button1, 0, false, true},
    };
    for (const auto& c : cases)
        EXPECT_EQ(SpecialButtonEnabled(c.door, c.button, c.pc1600), c.enabled)
            << int(c.door) << " button " << c.button << (c.pc1600 ? " PC1600" : "");
}

TEST(StringEditorFixes, ANegativeDecimalIsNoByte) {
    EXPECT_FALSE(CheckEnteredString("F0 -01 F7", StringContext::Button, false).ok);
    EXPECT_TRUE(CheckEnteredString("F0 001 F7", StringContext::Button, false).ok);
}

}  // namespace
}  // namespace tavlo
