#pragma once
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tavlo {

// How a backend puts a long sysex on its way: pieces of at most
// `pieceBytes` (F0 ... / ... / ... F7), no faster than `bytesPerSecond`.
struct PacingPlan {
    std::size_t pieceBytes = 256;
    int bytesPerSecond = 3125;
};

// Wire speed, for a real device: it can't take a dump faster than its cable.
inline constexpr PacingPlan kWirePacing{256, 3125};
// No pacing to speak of: only what the MIDI server's buffers can hold at a
// time (JACK's output ring takes 16 KB; this stays far below it).
inline constexpr PacingPlan kFastPacing{1024, 128 * 1024};

// Sends `bytes` through `sendPiece` in pieces as planned. `waitMs` lets time
// pass (through the program's pump); `nowMs` reads the clock. Short
// messages go out whole and at once. False as soon as a piece fails.
bool SendInPieces(std::string_view bytes, const PacingPlan& plan,
                  const std::function<bool(std::string_view piece)>& sendPiece,
                  const std::function<void(std::int64_t ms)>& waitMs, const std::function<std::int64_t()>& nowMs);

}  // namespace tavlo
