// The .tgl reader on anything: it never reads past the text, and what it
// accepts writes back as a text that reads the same.
#include <cstddef>
#include <cstdint>
#include <string>

#include "globals/GlobalsText.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const tavlo::GlobalsTextResult read = tavlo::LoadTavloFormatGlobals(text, tavlo::NewGlobalSettings());
    if (!read.settings) return 0;
    if (read.consumed > text.size()) __builtin_trap();
    const tavlo::GlobalsTextResult again =
        tavlo::LoadTavloFormatGlobals(tavlo::StoreTavloFormatGlobals(*read.settings), tavlo::NewGlobalSettings());
    if (!again.settings || *again.settings != *read.settings) __builtin_trap();
    return 0;
}
