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

}  // namespace tavlo
