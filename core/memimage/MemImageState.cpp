#include "memimage/MemImageState.h"

#include <cstdio>

namespace tavlo {

std::string TwoDigits(int value) {
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%02d", value);
    return buffer;
}

MemImageState::MemImageState() { clearSceneList(); }

std::string MemImageState::FreeSceneLine(int slot) { return TwoDigits(slot) + ":  --Empty--   [p:--]"; }

void MemImageState::clearSceneList() {
    SceneList.clear();
    for (int s = 0; s < kSceneSlots; ++s) SceneList.addItem(FreeSceneLine(s), -1);
}

}  // namespace tavlo
