#pragma once
#include <string>
#include <vector>

namespace tavlo {

class Database;

// One row of WindowStates: where a window was when the program last ended.
struct WindowStateRow {
    std::string Window;
    int Left = 0;
    int Top = 0;
    int WindowState = 0;  // 0 normal, 1 minimised, 2 maximised
    bool Visible = false;
    long LoadedID = -1;
    std::string LoadedName;
};

// The order in which the rows are written at every exit.
const std::vector<std::string>& WindowStateNames();

// Rewrites the table whole, in one transaction.
void WriteWindowStates(Database& db, const std::vector<WindowStateRow>& rows);
std::vector<WindowStateRow> ReadWindowStates(Database& db);

}  // namespace tavlo
