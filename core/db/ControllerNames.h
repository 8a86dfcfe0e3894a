#pragma once
#include <string_view>

namespace tavlo {

// The MIDI standard's name of a controller number 0-127, "Undefined" where
// it has none. Seeds CCTable.
std::string_view ControllerName(int ccNum);

}  // namespace tavlo
