#pragma once

class QComboBox;

namespace tavlo {

class Database;

// Fills a controller list with the pool's names, "000  Bank Select" and on,
// and numbers alone for whatever the pool does not name, so the list always
// holds 128 lines and a line's index is its controller number.
void FillCCNameList(QComboBox* combo, Database& db);

}  // namespace tavlo
