#include "sysex/MessageString.h"

namespace tavlo {

void MessageStringSet::clear() {
    for (int i = 0; i < kSubstringLimit; ++i) Slots[i] = MessageSubstring{};
    Count = 0;
}

}  // namespace tavlo
