#pragma once
#include <cstdint>

#include "db/Database.h"
#include "preset/WorkingPreset.h"

namespace tavlo {

// The FaderRec and ButtonRec columns of one fader or button, written and read
// in one place so the seed, the store and the load never disagree on them.
// Rows are written as given: callers that take names from the user encode
// them first (SafeDBString).
Statement PrepareFaderInsert(Database& db);
void InsertFaderRow(Statement& insert, std::int64_t presetId, int index, const FaderDef& fader);
Statement PrepareButtonInsert(Database& db);
void InsertButtonRow(Statement& insert, std::int64_t presetId, int index, const ButtonDef& button);

// Every column of a row, names and scenes decoded for display; a NULL name
// reads as blank.
void ReadFaderRow(const Statement& row, FaderDef& fader);
void ReadButtonRow(const Statement& row, ButtonDef& button);

}  // namespace tavlo
