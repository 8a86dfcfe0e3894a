// ParseSysexString and MakeMultipleNotesSingle on any text: every substring
// lands in the 50 slots, none is left without its list line.
#include <cstddef>
#include <cstdint>
#include <string>

#include "sysex/ParseSysexString.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    tavlo::StringWorkArea work;
    tavlo::ParseSysexString(text, work);
    if (work.Strings.Count < 0 || work.Strings.Count > tavlo::kSubstringLimit) __builtin_trap();
    for (int i = 0; i < work.Strings.Count; ++i) {
        const tavlo::MessageSubstring& s = work.Strings.Slots[static_cast<std::size_t>(i)];
        if (s.CommandType < 0 || s.CommandType > 16 || s.ListItem.empty()) __builtin_trap();
    }
    return 0;
}
