#pragma once
#include <cstddef>
#include <string>
#include <string_view>

namespace tavlo {

inline constexpr std::size_t kPresetNameLimit = 16;

// What a name typed or read for a preset becomes before it enters the pool:
// only the characters the device can show, blanks trimmed at both ends.
// `problem` is empty when the name may be used, else the sentence that says
// why not (empty after filtering, too long, or one the system keeps for
// itself). The length is judged on the filtered name, as stored.
struct PresetNameCheck {
    std::string name;
    std::string problem;
    bool ok() const { return problem.empty(); }
};
PresetNameCheck CheckPresetName(std::string_view entered);

}  // namespace tavlo
