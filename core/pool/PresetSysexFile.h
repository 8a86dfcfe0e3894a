#pragma once
#include <cstdint>
#include <string>
#include "pool/PoolContext.h"

namespace tavlo {

// Saving a pool preset to a file goes through the editor: edits it holds
// are offered for storing first. False when the user cancelled or the store
// was refused; the editor then keeps its edits.
bool OfferStoreBeforeSave(const PoolContext& session);

// The writing part: loads `id` into the editor and writes its dump to
// `path`. False, with the user told, when the file can't be written.
bool WritePresetSysexFile(const PoolContext& session, std::int64_t id, const std::string& path);

}  // namespace tavlo
