#pragma once
#include <cstdint>
#include <string>
#include "pool/PoolContext.h"

namespace tavlo {

// SavePresetSysexButton of PoolForm: the selected preset as a one-preset
// .syx file. The dump is made by the editor, so edits it holds are offered
// for storing first.
void SavePresetSysexButton(const PoolContext& session);

// The writing part: loads `id` into the editor and writes its dump to
// `path`. False, with the user told, when the file can't be written.
bool WritePresetSysexFile(const PoolContext& session, std::int64_t id, const std::string& path);

}  // namespace tavlo
