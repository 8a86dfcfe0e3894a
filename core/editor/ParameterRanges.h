#pragma once
#include <algorithm>
#include <cstdint>

#include "editor/PresetOperations.h"

namespace tavlo {

// The ranges of a control's parameters, for the defaults that fill them,
// the setters that store them and the window's sliders that show them.
inline constexpr ValueRange kChannelRange{0, 16};  // 16 is the global channel
inline constexpr ValueRange kCCNumRange{0, 127};
inline constexpr ValueRange kProgChangeRange{0, 127};
inline constexpr ValueRange kNoteRange{0, 129};
inline constexpr ValueRange kVelocityRange{0, 129};
inline constexpr ValueRange kReplaceModeRange{0, 2};
inline constexpr ValueRange kParamFormatRange{0, 12};

inline std::int16_t ClampedTo(ValueRange range, int value) {
    return static_cast<std::int16_t>(std::clamp(value, range.low, range.high));
}

}  // namespace tavlo
