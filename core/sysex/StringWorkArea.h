#pragma once
#include <string>

#include "sysex/MessageString.h"

namespace tavlo {

// The one string set that the string editor and the learn functions work
// on; its Count is NumberOfStrings.
struct StringWorkArea {
    MessageStringSet Strings;
    std::string RenderedMessage;
};

}  // namespace tavlo
