#include "midilink/PacedSender.h"

#include <gtest/gtest.h>

#include "FakeTime.h"
#include "sysex/DeviceMessages.h"

using namespace tavlo;
using namespace tavlo::testing;

namespace {

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

TEST(PacedSender, ALongDumpGoesInPiecesThatJoinToTheWhole) {
    struct Case {
        std::size_t length;
        PacingPlan plan;
        std::size_t pieces;
    };
    const Case cases[] = {{45000, kWirePacing, 176}, {45000, kFastPacing, 44}, {256, kWirePacing, 1},
                          {257, kWirePacing, 2}, {9, kWirePacing, 1}};
    for (const auto& c : cases) {
        FakeClock clock;
        const std::string dump = Dump(c.length);
        const Sent sent = SendAll(dump, c.plan, clock);
        ASSERT_EQ(sent.pieces.size(), c.pieces) << c.length;
        std::string joined;
        for (const auto& p : sent.pieces) {
            EXPECT_LE(p.size(), c.plan.pieceBytes);
            joined += p;
        }
        EXPECT_EQ(joined, dump);
        // Only the first piece opens the sysex, only the last closes it.
        EXPECT_EQ(static_cast<unsigned char>(sent.pieces.front()[0]), 0xF0);
        EXPECT_EQ(static_cast<unsigned char>(sent.pieces.back().back()), 0xF7);
        for (std::size_t i = 1; i < sent.pieces.size(); ++i)
            EXPECT_EQ(sent.pieces[i].find('\xF0'), std::string::npos);
    }
}

TEST(PacedSender, WirePacingTakesTheCablesTime) {
    FakeClock clock;
    const std::int64_t start = clock.now();
    const Sent sent = SendAll(Dump(45000), kWirePacing, clock);
    // The last piece leaves when the cable has carried all before it.
    const std::int64_t last = sent.times.back() - start;
    EXPECT_EQ(last, (45000 - sent.pieces.back().size()) * 1000 / 3125);
    for (std::size_t i = 1; i < sent.times.size(); ++i) EXPECT_GE(sent.times[i], sent.times[i - 1]);
}

TEST(PacedSender, AFailedPieceStopsTheRest) {
    FakeClock clock;
    const Sent sent = SendAll(Dump(5000), kWirePacing, clock, 3);
    EXPECT_EQ(sent.pieces.size(), 3u);
}

}  // namespace
