#pragma once
#include <optional>
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

// The main window on screen: its position, size and state as the rows keep it.
struct MainWindowPlace {
    int left = 0;
    int top = 0;
    int width = 0;   // 0: keep the size the window has
    int height = 0;
    int state = 0;   // 0 normal, 1 minimised, 2 maximised
};
// The rows written at exit, in WindowStateNames' order: MAIN holds the
// position, MAIN2 the size, the comparator's row "-100", every other row the
// empty defaults of a window that isn't open.
// `shown` gives the rows of the windows that have one of their own.
std::vector<WindowStateRow> ExitWindowStates(const MainWindowPlace& main, const std::vector<WindowStateRow>& shown = {});
// The row of `window`, or nothing.
const WindowStateRow* FindWindowState(const std::vector<WindowStateRow>& rows, const std::string& window);
// Where the main window goes at start: nothing unless both MAIN rows are
// there; a stored size of 200 by 150 or less is not taken.
std::optional<MainWindowPlace> RestoredMainWindow(const std::vector<WindowStateRow>& rows);

}  // namespace tavlo
