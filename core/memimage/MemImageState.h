#pragma once
#include <string>

#include "ui/ListState.h"
#include "ui/Observable.h"

namespace tavlo {

inline constexpr int kPresetSlots = 50;
inline constexpr int kSceneSlots = 100;

// The current memory image (MemImageForm): its lists are its state.
struct MemImageState : Observable {
    ListState PresetList;  // "NN:  name", data PresetRec.ID
    ListState SceneList;   // "NN:  scene  [p:PP]", data owning PresetRec.ID
    std::string MINameText;
    std::string NotesText;
    bool ImageChanged = false;

    MemImageState();
    // Line s of an empty scene slot: "NN:  --Empty--   [p:--]", data -1.
    static std::string FreeSceneLine(int slot);
    void clearSceneList();
};

// "07" : a slot number in two digits.
std::string TwoDigits(int value);

}  // namespace tavlo
