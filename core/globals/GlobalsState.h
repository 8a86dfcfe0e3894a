#pragma once
#include <cstdint>
#include <string>

#include "globals/GlobalSettings.h"
#include "ui/ListState.h"
#include "ui/Observable.h"

namespace tavlo {

// GlobalForm and GlobalPoolForm in core: the set being edited with the
// controls that aren't fields of it, and the pool's list with its details.
struct GlobalsState : Observable {
    // GlobalForm. `settings` is the controls, GlobalNameText and DefaultCheck
    // included; `pristine` is the set as last shown from a dump, a file or the
    // pool, or as stored, so changed() tells unsaved edits.
    GlobalSettings settings = NewGlobalSettings();
    GlobalSettings pristine = settings;
    int EditMapCombo = 0;       // 0 to 2: the map ProgChangeList shows
    ListState ProgChangeList;   // 128 lines, line data the program
    ListState MapList;          // MapTargets(), line data the map value
    std::string Caption = "Global Settings";
    bool Visible = false;       // the window is shown; set by the window

    bool changed() const { return settings != pristine; }
    void markPristine() { pristine = settings; }

    // GlobalPoolForm: lines "Name  (IN=01, OUT=02)", ") [DEFAULT]" on the
    // default's; line data GlobalRec.ID. The details of the clicked line.
    ListState GlobalPoolList;
    std::string CreatedDateText;
    std::string ChInText;
    std::string ChOutText;
    std::int64_t DefaultGlobalsID = -1;
};

}  // namespace tavlo
