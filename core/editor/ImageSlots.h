#pragma once
#include <cstdint>
#include <functional>
#include <string>

#include "ui/ListState.h"
#include "ui/Observable.h"

namespace tavlo {

// Things a store sets off in the memory image's window: the memory image
// fills these in when its window exists. Unset ones are skipped.
struct StoreFollowUps {
    std::function<bool()> MemImageFormOpen;
    std::function<void()> RescanDependencies;
    std::function<void()> FillSceneList;
    // Returns the free memory; the caller shows it as "Free Memory: " n.
    std::function<long()> CalculateMemoryImageSize;
};

// The part of the open memory image that the editor and the pool's flows
// read and keep up to date: its slot lines, the editor's binding to a slot,
// and what the image wants done after a store. The memory image builds on
// the pool, so it hands them this part of its state rather than the whole.
struct ImageSlots : Observable {
    ListState PresetList;  // "NN:  name", data PresetRec.ID
    ListState SceneList;   // "NN:  scene  [p:PP]", data owning PresetRec.ID
    bool ImageChanged = false;

    // The editor's preset came from slot MemoryImageSlot of the image.
    bool MemoryImageBound = false;
    int MemoryImageSlot = -1;
    // A whole image is being loaded: stores leave the follow-ups to its end.
    bool ImageLoadRunning = false;

    StoreFollowUps followUps;
    // The last "Free Memory: " n a store computed, for FreeMemLabel.
    std::string FreeMemLabel;

    ImageSlots();
    // Line s of an empty scene slot: "NN:  --Empty--   [p:--]", data -1.
    static std::string FreeSceneLine(int slot);
    void clearSceneList();
    bool formOpen() const { return followUps.MemImageFormOpen && followUps.MemImageFormOpen(); }
};

}  // namespace tavlo
