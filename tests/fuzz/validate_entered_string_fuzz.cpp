// ValidateEnteredString on any text, for every kind of string and both
// models: an error gives "<error>" and the input back, anything else a
// rendered text.
#include <cstddef>
#include <cstdint>
#include <string>

#include "sysex/StringNotation.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const auto context = static_cast<tavlo::StringContext>(data[0] % 3);
    const bool pc1600Model = (data[0] & 4) != 0;
    const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
    const tavlo::EnteredStringCheck check = tavlo::CheckEnteredString(text, context, pc1600Model);
    if (check.ok == (check.rendered == tavlo::kErrorRendering)) __builtin_trap();
    if (!check.ok && check.entered != text) __builtin_trap();
    if (check.collapsed.find("  ") != std::string::npos) __builtin_trap();
    return 0;
}
