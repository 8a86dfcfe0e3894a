#pragma once

class QComboBox;

namespace tavlo {

class Database;

// Fills a controller list with the pool's names of controllers 0 to 120,
// "7 - Volume" and on. Each line's item data is its controller number, so a
// line's place in the list never stands for a number.
void FillCCNameList(QComboBox* combo, Database& db);
// The controller number of a line; -1 for none.
int CCNumberAt(const QComboBox* combo, int line);
// Shows the line of a controller, or no line when the list lacks it.
void ShowCCNumber(QComboBox* combo, int ccNumber);

}  // namespace tavlo
