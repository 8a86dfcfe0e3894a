#pragma once
#include "pool/PoolContext.h"

namespace tavlo {

// LoadPresetSysexButton of PoolForm and of the editor: a preset text (.tpr) or a one-preset
// dump (.syx) into the pool, by the chosen file's ending.
void LoadPresetSysexButton(const PoolContext& session);

// SavePresetSysexButton of PoolForm: the selected preset as preset text or
// as a one-preset dump. The file is made through the editor, so edits it
// holds are offered for storing first.
void SavePresetSysexButton(const PoolContext& session);

// SavePresetSysexButton of the editor: the editor's preset, as it stands,
// as preset text or as a one-preset dump.
void EditorSavePresetSysexButton(const PoolContext& session);

}  // namespace tavlo
