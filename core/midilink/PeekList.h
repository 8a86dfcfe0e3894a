#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "ui/ListState.h"
#include "midilink/LinkContext.h"

namespace tavlo {

// The line that sizes PeekForm before the names come.
inline constexpr const char* kPeekSizingLine = "EditBuffer:  AAAAAAAAAAAAAAAA";

// The lines of PeekList from an ALL PRESETS dump: the 51 names at 10, 42,
// ... 1642 (counted from 1), in the dump's order. Entries 0 to 49 are the
// slots, each the two-digit slot, ":  " and the name; entry 50 is the edit
// buffer, "EditBuffer:  " and the name. A dump too short for a name gives no
// line for it.
std::vector<std::string> PeekLines(std::string_view allPresets);

// LoadPeekList: asks the device for ALL PRESETS (the memory image's row of
// intervals, its time-out message) and fills the list with what came. The
// list stays empty when nothing came.
void LoadPeekList(const LinkContext& session, ListState& peekList);

}  // namespace tavlo
