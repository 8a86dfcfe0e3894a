#pragma once
#include <string>
#include "pool/PoolContext.h"

namespace tavlo {

// The reading part: the file is decoded into the editor and stored as a
// download is, so a clashing name goes through the clash dialogue. A file
// that holds no preset dump, or a damaged one, is refused with "Cannot
// Import Preset Sysex" and nothing is written. True when the file was read;
// the editor's PresetKeptInPool tells whether the pool's version stayed.
bool ImportPresetSysexFile(const PoolContext& session, const std::string& path);

}  // namespace tavlo
