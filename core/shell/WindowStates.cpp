#include "shell/WindowStates.h"

#include "db/Database.h"

namespace tavlo {

const std::vector<std::string>& WindowStateNames() {
    static const std::vector<std::string> names = {
        "MemImageForm",   "MIPoolForm", "PoolForm", "GlobalForm", "GlobalPoolForm",
        "SimulationForm", "PresetComparatorForm", "MAIN", "MAIN2", "PC1600xForm"};
    return names;
}

void WriteWindowStates(Database& db, const std::vector<WindowStateRow>& rows) {
    Transaction transaction(db);
    db.exec("DELETE FROM WindowStates");
    Statement insert = db.prepare(
        "INSERT INTO WindowStates (Window, Left, Top, WindowState, Visible, LoadedID, LoadedName) "
        "VALUES (:Window, :Left, :Top, :WindowState, :Visible, :LoadedID, :LoadedName)");
    for (const WindowStateRow& row : rows) {
        insert.reset();
        insert.bind(":Window", row.Window).bind(":Left", row.Left).bind(":Top", row.Top)
            .bind(":WindowState", row.WindowState).bind(":Visible", row.Visible)
            .bind(":LoadedID", static_cast<std::int64_t>(row.LoadedID)).bind(":LoadedName", row.LoadedName);
        insert.run();
    }
    transaction.commit();
}

std::vector<WindowStateRow> ReadWindowStates(Database& db) {
    std::vector<WindowStateRow> rows;
    Statement select = db.prepare("SELECT * FROM WindowStates");
    while (select.step()) {
        WindowStateRow row;
        row.Window = select.getText("Window");
        row.Left = static_cast<int>(select.getInt("Left"));
        row.Top = static_cast<int>(select.getInt("Top"));
        row.WindowState = static_cast<int>(select.getInt("WindowState"));
        row.Visible = select.getBool("Visible");
        row.LoadedID = static_cast<long>(select.getInt("LoadedID"));
        row.LoadedName = select.getText("LoadedName");
        rows.push_back(row);
    }
    return rows;
}

const WindowStateRow* FindWindowState(const std::vector<WindowStateRow>& rows, const std::string& window) {
    for (const auto& row : rows)
        if (row.Window == window) return &row;
    return nullptr;
}

std::vector<WindowStateRow> ExitWindowStates(const MainWindowPlace& main, const std::vector<WindowStateRow>& shown) {
    std::vector<WindowStateRow> rows;
    for (const std::string& name : WindowStateNames()) {
        WindowStateRow row;
        row.Window = name;
        if (const WindowStateRow* own = FindWindowState(shown, name)) {
            row = *own;
        } else if (name == "MAIN" || name == "MAIN2") {
            const bool size = name == "MAIN2";
            row.Left = size ? main.width : main.left;
            row.Top = size ? main.height : main.top;
            row.WindowState = main.state;
            row.Visible = true;
        } else if (name == "PresetComparatorForm") {
            row.LoadedName = "-100";
        }
        rows.push_back(row);
    }
    return rows;
}

std::optional<MainWindowPlace> RestoredMainWindow(const std::vector<WindowStateRow>& rows) {
    const WindowStateRow* position = FindWindowState(rows, "MAIN");
    const WindowStateRow* size = FindWindowState(rows, "MAIN2");
    if (!position || !size) return std::nullopt;
    MainWindowPlace place{position->Left, position->Top, 0, 0, position->WindowState};
    if (size->Left > 200 && size->Top > 150) {
        place.width = size->Left;
        place.height = size->Top;
    }
    return place;
}

}  // namespace tavlo
