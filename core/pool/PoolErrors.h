#pragma once
#include "pool/PoolContext.h"

namespace tavlo {

class DatabaseError;

// Tells the user what a failed write to the pool means for them: a full
// disk, a read-only pool, or the general database error.
void TellDatabaseError(const PoolContext& session, const DatabaseError& error);

}  // namespace tavlo
