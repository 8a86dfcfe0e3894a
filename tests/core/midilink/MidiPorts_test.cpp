#include <gtest/gtest.h>

#include <sstream>

#include "FakeTime.h"
#include "LoopbackBackend.h"
#include "midilink/MidiLink.h"
#include "midilink/PacedSender.h"
#include "sysex/DeviceMessages.h"

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

// Bytes written as hexadecimal pairs, "F0 01 F7".
std::string Hex(const std::string& text) {
    std::string bytes;
    std::istringstream in(text);
    std::string pair;
    while (in >> pair) bytes += static_cast<char>(std::stoi(pair, nullptr, 16));
    return bytes;
}

struct StreamCase {
    const char* name;
    std::vector<std::string> chunks;  // as the backend hands them over; "clear" clears the port
    std::vector<std::string> messages;
};

class StreamAssemblyTest : public MidiPortsTest, public ::testing::WithParamInterface<StreamCase> {};

TEST_P(StreamAssemblyTest, MessagesAreWhatAMidiLineCarries) {
    openOn(link.MIDIIn, link.MIDIOut, 0);
    link.MIDIIn.setBuffering(true);
    for (const auto& chunk : GetParam().chunks) {
        if (chunk == "clear") link.MIDIIn.clear();
        else loop->inject("A", Hex(chunk));
    }
    std::vector<std::string> got;
    for (; link.MIDIIn.count() > 0; link.MIDIIn.remove()) got.push_back(link.MIDIIn.current());
    std::vector<std::string> expected;
    for (const auto& m : GetParam().messages) expected.push_back(Hex(m));
    EXPECT_EQ(got, expected);
}

INSTANTIATE_TEST_SUITE_P(
    Rules, StreamAssemblyTest,
    ::testing::Values(
        StreamCase{"ClockInsideADumpComesOutOnItsOwn", {"F0 00 00 1B 0B 00 03 01 F8 02 F7"},
                   {"F8", "F0 00 00 1B 0B 00 03 01 02 F7"}},
        // The note ends the dump; the bytes after it are running status.
        StreamCase{"NoteInsideADumpEndsIt", {"F0 00 00 1B 0B 00 03 01 90 3C 40 02 03 F7"}, {"90 3C 40", "90 02 03"}},
        StreamCase{"CutOffDumpSentAgainIsNotJoined", {"F0 00 00 1B 0B 00 03 01", "F0 00 00 1B 0B 00 03 01 02 F7"},
                   {"F0 00 00 1B 0B 00 03 01 02 F7"}},
        StreamCase{"PiecesMakeOneDump", {"F0 00 00", "1B 0B 00 03", "01 02 F7"}, {"F0 00 00 1B 0B 00 03 01 02 F7"}},
        StreamCase{"MessagesRunTogetherComeApart", {"90 3C 40 F0 01 F7 C0 05 F2 01 02"},
                   {"90 3C 40", "F0 01 F7", "C0 05", "F2 01 02"}},
        StreamCase{"RunningStatusAcrossPieces", {"B0 07", "64 0A 20"}, {"B0 07 64", "B0 0A 20"}},
        StreamCase{"SystemCommonEndsADumpAndStrayBytesAreDropped", {"F0 01 02 F3 05 06 F7 F7"}, {"F3 05"}},
        StreamCase{"ClearEndsTheReceptionInProgress", {"F0 00 00 1B 0B 00 03 01", "clear", "02 F7"}, {}}),
    [](const auto& info) { return std::string(info.param.name); });

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

// ---- Sending a long dump in pieces ----

struct Sent {
    std::vector<std::string> pieces;
    std::vector<std::int64_t> times;
};

Sent SendAll(const std::string& bytes, const PacingPlan& plan, FakeClock& clock, int failAt = -1) {
    Sent sent;
    SendInPieces(
        bytes, plan,
        [&](std::string_view piece) {
            if (static_cast<int>(sent.pieces.size()) == failAt) return false;
            sent.pieces.emplace_back(piece);
            sent.times.push_back(clock.now());
            return true;
        },
        [&](std::int64_t ms) { clock.advance(ms); }, [&] { return clock.now(); });
    return sent;
}

std::string Dump(std::size_t length) {
    std::string dump = DeviceDumpHeader(0, DeviceCommand::AllPresets);
    for (std::size_t i = dump.size(); i + 1 < length; ++i) dump += static_cast<char>(i % 16);
    return dump + '\xF7';
}

TEST(PacedSender, ALongDumpGoesInPiecesThatJoinToTheWholeAtTheCablesPace) {
    const struct {
        std::size_t length;
        bool wire;
        std::size_t pieces;
    } cases[] = {{45000, true, 176}, {45000, false, 44}, {256, true, 1}, {257, true, 2}, {9, true, 1}};
    for (const auto& c : cases) {
        FakeClock clock;
        const std::int64_t start = clock.now();
        const PacingPlan& plan = c.wire ? kWirePacing : kFastPacing;
        const std::string dump = Dump(c.length);
        const Sent sent = SendAll(dump, plan, clock);
        ASSERT_EQ(sent.pieces.size(), c.pieces) << c.length;
        std::string joined;
        for (const auto& p : sent.pieces) {
            EXPECT_LE(p.size(), plan.pieceBytes);
            joined += p;
        }
        EXPECT_EQ(joined, dump);
        // Only the first piece opens the sysex, only the last closes it.
        EXPECT_EQ(static_cast<unsigned char>(sent.pieces.front()[0]), 0xF0);
        EXPECT_EQ(static_cast<unsigned char>(sent.pieces.back().back()), 0xF7);
        for (std::size_t i = 1; i < sent.pieces.size(); ++i) EXPECT_EQ(sent.pieces[i].find('\xF0'), std::string::npos);
        // The last piece leaves when the cable has carried all before it.
        if (c.wire) {
            EXPECT_EQ(sent.times.back() - start, (c.length - sent.pieces.back().size()) * 1000 / 3125);
        }
    }
}

TEST(PacedSender, AFailedPieceStopsTheRest) {
    FakeClock clock;
    const Sent sent = SendAll(Dump(5000), kWirePacing, clock, 3);
    EXPECT_EQ(sent.pieces.size(), 3u);
}

}  // namespace
