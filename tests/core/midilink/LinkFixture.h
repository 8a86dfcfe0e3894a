#pragma once
#include <gtest/gtest.h>

#include <memory>

#include "TestProgram.h"
#include "sysex/DeviceMessages.h"
#include "LoopbackBackend.h"
#include "shell/Program.h"
#include "midilink/MidiLink.h"

namespace tavlo::testing {

// A session whose MIDIIn and MIDIOut are open on a scripted loopback device
// "Dev": what the program sends is in `loop->sent`, and `reply` says what
// the device answers.
class LinkFixture : public ::testing::Test {
protected:
    void SetUp() override {
        loop = std::make_shared<LoopbackBackend>(std::vector<std::string>{"Dev"}, &ts.clock);
        loop->echo = false;
        ts->midiLink.setSystemBackend(loop);
        openPorts("Dev");
    }

    void openPorts(const std::string& name) {
        MidiLink& link = ts->midiLink;
        std::string error;
        const auto ins = link.devices.inputNames();
        const auto outs = link.devices.outputNames();
        link.MIDIIn.setDeviceNumber(static_cast<int>(std::find(ins.begin(), ins.end(), name) - ins.begin()));
        link.MIDIOut.setDeviceNumber(static_cast<int>(std::find(outs.begin(), outs.end(), name) - outs.begin()));
        ASSERT_TRUE(link.MIDIIn.open(error)) << error;
        ASSERT_TRUE(link.MIDIOut.open(error)) << error;
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

// A single preset dump with some body, identifier `id`.
inline std::string PresetDumpBytes(int id, char fill = 1) {
    std::string dump = DeviceDumpHeader(id, DeviceCommand::PresetDump);
    dump += std::string(32, 2) + std::string("\x00\x00\x00\x02", 4) + std::string(4, fill) + '\xF7';
    return dump;
}

}  // namespace tavlo::testing
