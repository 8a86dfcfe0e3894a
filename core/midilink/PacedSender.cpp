#include "midilink/PacedSender.h"

namespace tavlo {

bool SendInPieces(std::string_view bytes, const PacingPlan& plan,
                  const std::function<bool(std::string_view piece)>& sendPiece,
                  const std::function<void(std::int64_t ms)>& waitMs, const std::function<std::int64_t()>& nowMs) {
    if (bytes.size() <= plan.pieceBytes || plan.pieceBytes == 0) return sendPiece(bytes);
    const std::int64_t start = nowMs();
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        const std::string_view piece = bytes.substr(sent, plan.pieceBytes);
        if (!sendPiece(piece)) return false;
        sent += piece.size();
        if (sent >= bytes.size() || plan.bytesPerSecond <= 0) continue;
        // The next piece may leave when the cable would have carried this one.
        const std::int64_t due = start + static_cast<std::int64_t>(sent) * 1000 / plan.bytesPerSecond;
        const std::int64_t now = nowMs();
        if (due > now) waitMs(due - now);
    }
    return true;
}

}  // namespace tavlo
