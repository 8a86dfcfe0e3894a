#include <gtest/gtest.h>

#include "FakeTime.h"
#include "LoopbackBackend.h"
#include "midilink/MidiLink.h"

using namespace tavlo;
using namespace tavlo::testing;

namespace {

class MidiPortsTest : public ::testing::Test {
protected:
    FakeClock clock;
    MidiLink link{clock};
    std::shared_ptr<LoopbackBackend> loop = std::make_shared<LoopbackBackend>(std::vector<std::string>{"A", "B"});

    void SetUp() override { link.setSystemBackend(loop); }
    void openOn(InputPort& in, OutputPort& out, int device) {
        std::string error;
        in.setDeviceNumber(device);
        out.setDeviceNumber(device);
        ASSERT_TRUE(in.open(error)) << error;
        ASSERT_TRUE(out.open(error)) << error;
    }
};

TEST_F(MidiPortsTest, SystemDevicesComeFirstAndTheVirtualDeviceIsAlwaysThere) {
    const std::vector<std::string> expected{"A", "B", kVirtualDeviceName};
    EXPECT_EQ(link.devices.inputNames(), expected);
    EXPECT_EQ(link.devices.outputNames(), expected);
    EXPECT_EQ(link.MIDIIn.deviceCount(), 3);
    link.MIDIIn.setDeviceNumber(2);
    EXPECT_EQ(link.MIDIIn.productName(), kVirtualDeviceName);
    link.MIDIIn.setDeviceNumber(7);
    EXPECT_EQ(link.MIDIIn.productName(), "");
}

TEST_F(MidiPortsTest, QueueKeepsWholeMessagesOnlyWhileBuffering) {
    openOn(link.MIDIIn, link.MIDIOut, 0);
    const std::string sysex("\xF0\x00\x00\x1B\x0B\x00\x13\xF7", 8);
    link.MIDIOut.sendSysex(sysex);
    EXPECT_EQ(link.MIDIIn.count(), 0);  // buffering is off
    link.MIDIIn.setBuffering(true);
    link.MIDIOut.sendSysex(sysex);
    link.MIDIOut.sendShort(0x90, 60, 100);
    ASSERT_EQ(link.MIDIIn.count(), 2);
    EXPECT_EQ(link.MIDIIn.current(), sysex);
    link.MIDIIn.clear();  // ends this reception: the next one is current
    EXPECT_EQ(link.MIDIIn.current(), std::string("\x90\x3C\x64", 3));
    link.MIDIIn.remove();
    EXPECT_EQ(link.MIDIIn.count(), 0);
    EXPECT_EQ(link.MIDIIn.current(), "");
}

TEST_F(MidiPortsTest, FilterLetsThroughOnlyAcceptedKinds) {
    openOn(link.MIDIIn, link.MIDIOut, 0);
    link.MIDIIn.setBuffering(true);
    link.MIDIIn.accept(0xF8, false);
    link.MIDIOut.sendShort(0xF8);
    link.MIDIOut.sendShort(0xB0, 7, 100);
    ASSERT_EQ(link.MIDIIn.count(), 1);
    EXPECT_EQ(static_cast<unsigned char>(link.MIDIIn.current()[0]), 0xB0);
}

TEST_F(MidiPortsTest, DevicesAreSeparateAndClosingStopsReception) {
    openOn(link.MIDIIn, link.MIDIOut, 0);
    openOn(link.MIDILearnIn, link.MIDISimOut, 1);
    link.MIDIIn.setBuffering(true);
    link.MIDILearnIn.setBuffering(true);
    link.MIDISimOut.sendShort(0xC0, 5);
    EXPECT_EQ(link.MIDIIn.count(), 0);
    EXPECT_EQ(link.MIDILearnIn.count(), 1);
    link.MIDIIn.close();
    EXPECT_FALSE(link.MIDIIn.isOpen());
    link.MIDIOut.sendShort(0xC0, 5);
    EXPECT_EQ(link.MIDIIn.count(), 0);
    EXPECT_EQ(loop->openInputs(), 1);
}

TEST_F(MidiPortsTest, APortThatCannotOpenSaysWhichAndStaysClosed) {
    loop->refuse("B", "busy");
    std::string error;
    link.MIDIIn.setDeviceNumber(1);
    EXPECT_FALSE(link.MIDIIn.open(error));
    EXPECT_NE(error.find("\"B\""), std::string::npos) << error;
    EXPECT_NE(error.find("busy"), std::string::npos) << error;
    EXPECT_FALSE(link.MIDIIn.isOpen());
    link.MIDIOut.setDeviceNumber(-1);
    EXPECT_FALSE(link.MIDIOut.open(error));
    EXPECT_FALSE(link.MIDIOut.sendSysex("\xF0\xF7"));
    EXPECT_FALSE(link.MIDIOut.lastError().empty());
}

TEST_F(MidiPortsTest, ReplacingTheSystemBackendClosesItsPorts) {
    openOn(link.MIDIIn, link.MIDIOut, 0);
    link.setSystemBackend(std::make_shared<LoopbackBackend>(std::vector<std::string>{"C"}));
    EXPECT_FALSE(link.MIDIIn.isOpen());
    EXPECT_FALSE(link.MIDIOut.isOpen());
    EXPECT_EQ(link.devices.inputNames(), (std::vector<std::string>{"C", kVirtualDeviceName}));
}

}  // namespace
