#include "preset/PresetNames.h"

#include "base/MSBModule.h"
#include "preset/WorkingPreset.h"

namespace tavlo {
namespace {

// NOCASE folds only the ASCII letters, whatever the locale says.
char fold(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

}  // namespace

bool SamePresetName(std::string_view a, std::string_view b) {
    const std::string left = MSBModule::Trim(a);
    const std::string right = MSBModule::Trim(b);
    if (left.size() != right.size()) return false;
    for (std::size_t i = 0; i < left.size(); ++i)
        if (fold(left[i]) != fold(right[i])) return false;
    return true;
}

bool IsInitializedName(std::string_view name) { return SamePresetName(name, kInitializedName); }

}  // namespace tavlo
