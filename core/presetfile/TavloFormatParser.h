#pragma once
#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "preset/WorkingPreset.h"

namespace tavlo {

// What a preset text holds, read but not yet resolved against a pool: the
// references stay names ("<self>", "<none>" or a preset's name) and the
// device pairs stay text.
struct ParsedTavloPreset {
    bool ok = false;
    // "[PRESET] --Initialized--": the rest of the text was not read.
    bool initialized = false;
    WorkingPreset preset;
    std::array<std::string, kButtonCount> buttonRefs{};
    std::string setupSceneRef;
    std::vector<std::pair<std::string, std::string>> devices;  // make, model
    std::vector<SceneDef> scenes;
};

// Reads the text line for line in the order the writer gives it. The first
// line out of place ends the read with ok false. Substrings' Value1 and
// Value2 always read as 0; the entered text and list item carry them.
ParsedTavloPreset ParseTavloText(std::string_view text);

}  // namespace tavlo
