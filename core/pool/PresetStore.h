#pragma once
#include "pool/PoolContext.h"

namespace tavlo {

// StoreInPoolButton: the one way the editor's preset reaches PresetRec and
// its companion tables. It reads the editor's state and the session's flags
// and leaves its results in them (PresetKeptInPool, CancelClose,
// StoreAborted, InvisiblePresetID). All rows of one store are written in one
// transaction: a failure leaves the pool as it was.
void StoreInPoolButton(const PoolContext& session);

}  // namespace tavlo
