#include "pool/PresetNameRule.h"

#include "base/MSBModule.h"
#include "preset/PresetNames.h"
#include "preset/WorkingPreset.h"

namespace tavlo {

PresetNameCheck CheckPresetName(std::string_view entered) {
    PresetNameCheck check;
    check.name = MSBModule::Trim(MSBModule::FilterNameCharacters(entered));
    if (check.name.empty())
        check.problem = "A Preset's Name must hold at least one letter, digit or sign that the PC1600(x) can show.";
    else if (check.name.size() > kPresetNameLimit)
        check.problem = "A Preset's Name can only be a maximum of 16 characters long";
    else if (IsInitializedName(check.name) || SamePresetName(check.name, kTempName))
        check.problem = "The name '" + check.name + "' is kept for System functionality.  Please enter another name.";
    return check;
}

}  // namespace tavlo
