#pragma once
#include "pool/PoolContext.h"

namespace tavlo {

// LoadPresetSysexButton of PoolForm: a preset text (.tpr) or a one-preset
// dump (.syx) into the pool, by the chosen file's ending.
void LoadPresetSysexButton(const PoolContext& session);

// SavePresetSysexButton of PoolForm: the selected preset as preset text or
// as a one-preset dump. The file is made through the editor, so edits it
// holds are offered for storing first.
void SavePresetSysexButton(const PoolContext& session);

}  // namespace tavlo
