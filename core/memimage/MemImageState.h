#pragma once
#include <string>

#include "editor/ImageSlots.h"

namespace tavlo {

// The current memory image (MemImageForm): its lists are its state. The
// slot lines and the binding live in ImageSlots, which the editor and the
// pool see; the rest is the image's own.
struct MemImageState : ImageSlots {
    std::string MINameText;
    std::string NotesText;
};

}  // namespace tavlo
