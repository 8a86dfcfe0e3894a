#include "editor/ImageSlots.h"

#include "base/MSBModule.h"
#include "sysex/DeviceMessages.h"

namespace tavlo {

ImageSlots::ImageSlots() { clearSceneList(); }

std::string ImageSlots::FreeSceneLine(int slot) { return TwoDigits(slot) + ":  --Empty--   [p:--]"; }

void ImageSlots::clearSceneList() {
    SceneList.clear();
    for (int s = 0; s < kSceneSlots; ++s) SceneList.addItem(FreeSceneLine(s), -1);
}

}  // namespace tavlo
