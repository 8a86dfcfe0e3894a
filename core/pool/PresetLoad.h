#pragma once
#include <cstdint>

namespace tavlo {

class Session;

// LoadPC1600xFormFromPool: fills the editor from the pool row `id` and its
// companion rows. A row that isn't there gives "There has been a Database
// Error", sets FatalDatabaseError and returns false; nothing is written.
bool LoadPC1600xFormFromPool(Session& session, std::int64_t id);

}  // namespace tavlo
