#pragma once
#include <string>

#include "ui/ListState.h"
#include "ui/Observable.h"

namespace tavlo {

// OrderOption of PoolForm: option 0 orders by device, option 1 by name.
enum class PoolOrder { ByDevice = 0, ByName = 1 };

// The window on the stored presets (PoolForm), in core: its list, its order
// and the read-only details of the selected preset.
struct PoolFormState : Observable {
    ListState PoolList;  // line data PresetRec.ID; device headers carry 0
    PoolOrder OrderOption = PoolOrder::ByName;

    ListState SceneList;
    ListState AssociatedDeviceList;
    std::string NotesText;
    std::string CreatedDateText;
    std::string UpdatedDateText;
    std::string MemLabel = "Memory Used: 0";
    ListState MIsUsingList;
    bool MIsUsingShown = false;  // ShowMIsUseButton shows the list and its label

    // Nothing has been remembered yet: the first fill of the run.
    bool FirstFill = true;
};

}  // namespace tavlo
