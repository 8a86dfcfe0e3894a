#pragma once
#include <string_view>

namespace tavlo {

// The pool compares preset names without regard to letter case (its Name
// column is COLLATE NOCASE); every comparison made outside SQL goes through
// here so that the program and the pool never disagree about which preset a
// name means. Blanks at either end don't count.
bool SamePresetName(std::string_view a, std::string_view b);

// "--Initialized--" in any letter case: the system's own preset.
bool IsInitializedName(std::string_view name);

}  // namespace tavlo
