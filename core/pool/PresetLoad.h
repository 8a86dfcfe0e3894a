#pragma once
#include <cstdint>
#include "pool/PoolContext.h"

namespace tavlo {

// LoadPC1600xFormFromPool: fills the editor from the pool row `id` and its
// companion rows. A row that isn't there gives "There has been a Database
// Error", sets FatalDatabaseError and returns false; nothing is written.
bool LoadPC1600xFormFromPool(const PoolContext& session, std::int64_t id);

}  // namespace tavlo
