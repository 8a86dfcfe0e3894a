#pragma once
#include <gtest/gtest.h>

#include <memory>

#include "LoopbackBackend.h"
#include "TestProgram.h"
#include "midilink/MidiLink.h"
#include "shell/Program.h"
#include "sysex/DeviceMessages.h"

namespace tavlo::testing {

// The program on a scripted loopback whose devices are `names`; by default
// MIDIIn and MIDIOut are open on the first, "Dev". What the program sends is
// in `loop->sent`, and `answerWith` says what "Dev" answers.
class LinkFixture : public ::testing::Test {
protected:
    explicit LinkFixture(std::vector<std::string> names = {"Dev"})
        : loop(std::make_shared<LoopbackBackend>(std::move(names), &ts.clock)) {
        loop->echo = false;
        ts->midiLink.setSystemBackend(loop);
    }

    void SetUp() override {
        std::string error;
        ts->midiLink.MIDIIn.setDeviceNumber(0);
        ts->midiLink.MIDIOut.setDeviceNumber(0);
        ASSERT_TRUE(ts->midiLink.MIDIIn.open(error) && ts->midiLink.MIDIOut.open(error)) << error;
    }

    // The device answers each request with these messages.
    void answerWith(std::vector<std::string> replies) {
        loop->onSend = [this, replies](const std::string&, const std::string&) {
            for (const auto& r : replies) loop->inject("Dev", r);
        };
    }

    std::vector<std::string> sentMessages() const {
        std::vector<std::string> out;
        for (const auto& [name, bytes] : loop->sent) out.push_back(bytes);
        return out;
    }

    TestProgram ts;
    std::shared_ptr<LoopbackBackend> loop;
};

}  // namespace tavlo::testing
