#pragma once
#include <cstdint>
#include <string>

#include "editor/ImageSlots.h"
#include "ui/ListState.h"

namespace tavlo {

// The current memory image (MemImageForm): its lists are its state. The
// slot lines and the binding live in ImageSlots, which the editor and the
// pool see; the rest is the image's own. The image holds no data of its
// own: slots name pool presets, scene lines pool scenes, and the combo's
// selected line a GlobalRec row.
struct MemImageState : ImageSlots {
    std::string MINameText;        // ImageName
    std::string NotesText;         // ImageNotes
    std::string CreatedDateText;   // "mm/dd/yyyy"
    std::string UpdatedDateText;   // "mm/dd/yyyy"
    std::int64_t InvisibleMIID = -1;  // MemoryImageRec.ID of the image shown, -1 for none
    // All GlobalRec rows, data the ID; the selected line is the image's set.
    ListState GlobalSettingsCombo;
    // The bytes each slot uses, as text; "0" for an "--Initialized--" slot.
    ListState PresetSizeList;
    // The window puts the focus on MINameText with its text marked.
    bool FocusMINameText = false;
    // CalculateMemoryImageSize is running: a call from inside it (the
    // window repaints while it runs) returns at once.
    bool CalculatingSize = false;
};

}  // namespace tavlo
