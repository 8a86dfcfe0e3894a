#pragma once
#include <cstdint>
#include "pool/PoolContext.h"

namespace tavlo {

// ReloadPoolList: refills PoolList in the order of OrderOption and selects
// the line that was selected before (by name), or nothing at the first fill.
void ReloadPoolList(const PoolContext& session);

// Selecting line `index` of PoolList: the details of that preset. A header
// line of the device order clears them.
void SelectPoolLine(const PoolContext& session, int index);

// Header lines of the device order ("> make model") carry no preset.
bool IsPoolHeaderLine(const PoolContext& session, int index);
// The line the pool operations act on: the current line if it is a preset,
// else the first selected line that is one; -1 for none.
int PoolOperationLine(const PoolContext& session);

}  // namespace tavlo
