#include "globals/GlobalPool.h"

#include "base/MSBModule.h"
#include "base/PoolDates.h"
#include "db/PoolDatabase.h"
#include "globals/GlobalSettings.h"
#include "globals/GlobalsFlows.h"
#include "globals/GlobalsState.h"
#include "midilink/MidiConfig.h"

namespace tavlo {

using MSBModule::DisplayDBString;
using MSBModule::SafeDBString;
using MSBModule::Trim;

namespace {

void TellDatabaseError(const GlobalsContext& session, const DatabaseError& error) {
    const PoolMessage message = DatabaseErrorMessage(error, session.pool.path());
    session.prompter.message(message.title, message.text);
}

// The ID of the settings of that name, or -1.
std::int64_t GlobalsIdByName(PoolDatabase& pool, const std::string& name) {
    Statement find = pool.db().prepare("SELECT ID FROM GlobalRec WHERE Name = :Name");
    find.bind(":Name", SafeDBString(Trim(name)));
    return find.step() ? find.getInt(0) : -1;
}

std::string GlobalsName(PoolDatabase& pool, std::int64_t id) {
    Statement find = pool.db().prepare("SELECT Name FROM GlobalRec WHERE ID = :ID");
    find.bind(":ID", id);
    return find.step() ? Trim(DisplayDBString(find.getText(0))) : std::string();
}

// The selected line of GlobalPoolList: its ID and name, or nothing.
struct PoolLine {
    std::int64_t id = -1;
    std::string name;
};
std::optional<PoolLine> SelectedLine(const GlobalsContext& session) {
    const ListState& list = session.globals.GlobalPoolList;
    const int line = list.listIndex();
    if (line < 0 || line >= list.listCount()) return std::nullopt;
    return PoolLine{list.itemData(line), GlobalsNameOfLine(list.list(line))};
}

// The set is open in GlobalForm: it may be stored again under its name.
bool BeingEdited(const GlobalsContext& session, const std::string& name) {
    return session.globals.Visible &&
           MSBModule::ToUpper(Trim(session.globals.settings.Name)) == MSBModule::ToUpper(Trim(name));
}

bool IsDefault(PoolDatabase& pool, std::int64_t id) {
    Statement find = pool.db().prepare("SELECT \"Default\" FROM GlobalRec WHERE ID = :ID");
    find.bind(":ID", id);
    return find.step() && find.getBool("Default");
}

}  // namespace

std::string GlobalsNameOfLine(const std::string& line) {
    const std::size_t cut = line.find("(IN=");
    return Trim(line.substr(0, cut));
}

std::int64_t FillGlobalsList(PoolDatabase& pool, ListState& list, bool combo) {
    list.clear();
    std::int64_t defaultId = -1;
    Statement rows = pool.db().prepare("SELECT ID, Name, ChIn, ChOut, \"Default\" FROM GlobalRec ORDER BY Name");
    while (rows.step()) {
        std::string line = Trim(DisplayDBString(rows.getText("Name"))) + "  (IN=" +
                           TwoDigits(static_cast<int>(rows.getInt("ChIn"))) +
                           ", OUT=" + TwoDigits(static_cast<int>(rows.getInt("ChOut"))) + ")";
        if (rows.getBool("Default")) {
            defaultId = rows.getInt("ID");
            line += combo ? "  [DEFAULT]" : " [DEFAULT]";
        }
        list.addItem(line, rows.getInt("ID"));
    }
    return defaultId;
}

void LoadGlobalPoolList(const GlobalsContext& session) {
    ListState& list = session.globals.GlobalPoolList;
    const auto selected = SelectedLine(session);
    session.globals.DefaultGlobalsID = FillGlobalsList(session.pool, list, false);
    int line = list.listCount() > 0 ? 0 : -1;
    if (selected)
        for (int k = 0; k < list.listCount(); ++k)
            if (MSBModule::ToUpper(GlobalsNameOfLine(list.list(k))) == MSBModule::ToUpper(selected->name)) line = k;
    list.setListIndex(line);
    session.globals.notifyChanged();
}

void SelectGlobalsLine(const GlobalsContext& session, std::int64_t id) {
    ListState& lines = session.globals.GlobalPoolList;
    const int line = lines.findItemData(id);
    if (line < 0) return;
    lines.setListIndex(line);
    ShowGlobalDetails(session);
}

void ShowGlobalDetails(const GlobalsContext& session) {
    GlobalsState& state = session.globals;
    state.CreatedDateText.clear();
    state.ChInText.clear();
    state.ChOutText.clear();
    if (const auto line = SelectedLine(session)) {
        Statement row = session.pool.db().prepare("SELECT CreatedDate, ChIn, ChOut FROM GlobalRec WHERE ID = :ID");
        row.bind(":ID", line->id);
        if (row.step()) {
            state.CreatedDateText = DisplayDate(row.getText("CreatedDate"));
            state.ChInText = std::to_string(row.getInt("ChIn"));
            state.ChOutText = std::to_string(row.getInt("ChOut"));
        }
    }
    state.notifyChanged();
}

std::optional<std::int64_t> StoreGlobals(const GlobalsContext& session, bool fromGotGlobals) {
    GlobalSettings& settings = session.globals.settings;
    const std::string name = Trim(settings.Name);
    if (name.empty()) {
        session.prompter.message("Cannot Store Globals", "Please enter a Name for these Global Settings first.");
        return std::nullopt;
    }
    std::string problem;
    const auto dump = GlobalForm2Sysex(settings, session.midi.PC1600Model, session.midi.DeviceId, &problem);
    if (!dump || dump->empty()) {
        session.prompter.message("Cannot Store Globals",
                                 dump ? "Please choose the PC1600(x)'s MIDI channel on the MIDI Config Form." : problem);
        return std::nullopt;
    }
    std::int64_t id = -1;
    try {
        Database& db = session.pool.db();
        id = GlobalsIdByName(session.pool, name);
        if (id >= 0 && !fromGotGlobals &&
            session.prompter.message("About to Overwrite",
                                     "Overwrite existing Global Settings '" + name + "' with these settings?",
                                     MessageButtons::YesNo) != MessageAnswer::Yes)
            return std::nullopt;
        Transaction transaction(db);
        if (settings.Default) db.exec("UPDATE GlobalRec SET \"Default\" = 0");
        if (id < 0) {
            db.prepare("INSERT INTO GlobalRec (Name, CreatedDate, GlobalData, ChIn, ChOut, DeviceID, \"Default\") "
                       "VALUES (:Name, :Date, :Data, :ChIn, :ChOut, :DeviceID, :Default)")
                .bind(":Name", SafeDBString(name))
                .bind(":Date", NowDateText())
                .bind(":Data", Blob{*dump})
                .bind(":ChIn", settings.ChIn)
                .bind(":ChOut", settings.ChOut)
                .bind(":DeviceID", settings.DevNum)
                .bind(":Default", settings.Default)
                .run();
            id = db.lastInsertId();
        } else {
            db.prepare("UPDATE GlobalRec SET Name = :Name, GlobalData = :Data, ChIn = :ChIn, ChOut = :ChOut, "
                       "DeviceID = :DeviceID, \"Default\" = :Default WHERE ID = :ID")
                .bind(":Name", SafeDBString(name))
                .bind(":Data", Blob{*dump})
                .bind(":ChIn", settings.ChIn)
                .bind(":ChOut", settings.ChOut)
                .bind(":DeviceID", settings.DevNum)
                .bind(":Default", settings.Default)
                .bind(":ID", id)
                .run();
        }
        transaction.commit();
    } catch (const DatabaseError& e) {
        TellDatabaseError(session, e);
        return std::nullopt;
    }
    session.globals.markPristine();
    LoadGlobalPoolList(session);
    return id;
}

bool LoadGlobalsRow(const GlobalsContext& session, std::int64_t id) {
    Statement row = session.pool.db().prepare("SELECT Name, GlobalData, \"Default\" FROM GlobalRec WHERE ID = :ID");
    row.bind(":ID", id);
    if (!row.step()) return false;
    const std::string name = Trim(DisplayDBString(row.getText("Name")));
    const bool isDefault = row.getBool("Default");
    std::string problem;
    if (!ShowGlobalsDump(session, row.getBlob("GlobalData"), name, &problem)) {
        session.prompter.message("Cannot Load Globals", "The stored Global Settings '" + name +
                                                            "' cannot be read: " + problem);
        return false;
    }
    session.globals.settings.Default = isDefault;
    session.globals.Caption = "Editing Global Settings from Pool - No Current Memory Image";
    session.globals.markPristine();
    session.globals.notifyChanged();
    return true;
}

bool LoadGlobalsNamed(const GlobalsContext& session, const std::string& name) {
    try {
        const std::int64_t id = GlobalsIdByName(session.pool, name);
        return id >= 0 && LoadGlobalsRow(session, id);
    } catch (const DatabaseError& e) {
        TellDatabaseError(session, e);
        return false;
    }
}

bool EditGlobals(const GlobalsContext& session) {
    const auto line = SelectedLine(session);
    if (!line) return false;
    if (session.globals.Visible && session.globals.changed() &&
        session.prompter.message("Store Globals to Pool",
                                 "Do you want to Store the current Global Settings to the Pool before editing a new "
                                 "set?",
                                 MessageButtons::YesNo) == MessageAnswer::Yes)
        StoreGlobals(session);
    return LoadGlobalsRow(session, line->id);
}

namespace {

// One change of the pool of settings: a database failure is told and leaves
// the pool as it was (the change's transaction rolls back); after a change
// the list is filled again. `change` returns false when it refused.
template <typename Change>
bool ChangePool(const GlobalsContext& session, Change change) {
    try {
        if (!change(session.pool.db())) return false;
    } catch (const DatabaseError& e) {
        TellDatabaseError(session, e);
        return false;
    }
    LoadGlobalPoolList(session);
    return true;
}

}  // namespace

bool DuplicateGlobals(const GlobalsContext& session) {
    const auto line = SelectedLine(session);
    if (!line) return false;
    const auto answer = session.prompter.input("Duplicate Global Settings",
                                               "Enter the Name for this New duplicated Global Settings");
    if (!answer || Trim(*answer).empty()) return false;
    const std::string name = Trim(*answer);
    return ChangePool(session, [&](Database& db) {
        if (GlobalsIdByName(session.pool, name) >= 0) {
            session.prompter.message("Cannot Duplicate Globals", "There is already a Global Settings by that name.");
            return false;
        }
        Transaction transaction(db);
        // The copy is never the default, and the device number stays behind.
        db.prepare("INSERT INTO GlobalRec (Name, CreatedDate, GlobalData, ChIn, ChOut, \"Default\") "
                   "SELECT :Name, :Date, GlobalData, ChIn, ChOut, 0 FROM GlobalRec WHERE ID = :ID")
            .bind(":Name", SafeDBString(name))
            .bind(":Date", NowDateText())
            .bind(":ID", line->id)
            .run();
        transaction.commit();
        return true;
    });
}

bool RenameGlobals(const GlobalsContext& session) {
    const auto line = SelectedLine(session);
    if (!line) return false;
    if (BeingEdited(session, line->name)) {
        session.prompter.message("Cannot Rename Globals",
                                 "You cannot Rename these Global Settings because they're being Edited in the Open "
                                 "Global Settings Form.  Close it first please.");
        return false;
    }
    const auto answer = session.prompter.input(
        "Rename Globals",
        "Enter the new Name for this Global Setting (leave blank to cancel).  Any Memory Images which reference this "
        "Global Setting will still do so after the rename.",
        line->name);
    if (!answer || Trim(*answer).empty()) return false;
    const std::string name = Trim(*answer);
    return ChangePool(session, [&](Database& db) {
        // A change of case only finds the set itself.
        const std::int64_t clash = GlobalsIdByName(session.pool, name);
        if (clash >= 0 && clash != line->id) {
            session.prompter.message("Cannot Rename Globals",
                                     "There already exists a Global Settings set with that name.  You must choose "
                                     "another name.");
            return false;
        }
        Transaction transaction(db);
        db.prepare("UPDATE GlobalRec SET Name = :Name WHERE ID = :ID")
            .bind(":Name", SafeDBString(name))
            .bind(":ID", line->id)
            .run();
        transaction.commit();
        return true;
    });
}

bool MakeDefaultGlobals(const GlobalsContext& session) {
    const auto line = SelectedLine(session);
    if (!line) return false;
    return ChangePool(session, [&](Database& db) {
        Transaction transaction(db);
        db.exec("UPDATE GlobalRec SET \"Default\" = 0");
        db.prepare("UPDATE GlobalRec SET \"Default\" = :Yes WHERE ID = :ID").bind(":Yes", true).bind(":ID", line->id).run();
        transaction.commit();
        return true;
    });
}

bool DeleteGlobals(const GlobalsContext& session) {
    const auto line = SelectedLine(session);
    if (!line) return false;
    Prompter& prompter = session.prompter;
    return ChangePool(session, [&](Database& db) {
        if (db.queryInt("SELECT COUNT(*) FROM GlobalRec") <= 1) {
            prompter.message("Cannot Delete Globals",
                             "You cannot delete the last Global Settings in the Pool.  Either Edit and Rename that "
                             "one or Acquire more from the PC1600(x).");
            return false;
        }
        const bool wasDefault = IsDefault(session.pool, line->id);
        if (wasDefault &&
            prompter.message("Delete Globals",
                             "You are asking to Delete your DEFAULT Memory Image.  If you do so, an arbitrary other "
                             "Global Settings will become the Default.  You can correct this later by using the Global "
                             "Settings Edit window.",
                             MessageButtons::OKCancel) != MessageAnswer::OK)
            return false;
        if (BeingEdited(session, line->name)) {
            prompter.message("Cannot Delete Globals",
                             "You cannot delete these Global Settings because they're being Edited in the Open Global "
                             "Settings Form.  Close it first please.");
            return false;
        }
        Statement users = db.prepare("SELECT COUNT(*) FROM MemoryImageRec WHERE GlobalSettings = :ID");
        users.bind(":ID", line->id);
        const bool used = users.step() && users.getInt(0) > 0;
        const MessageAnswer sure =
            used ? prompter.message("About to Delete Globals used in Memory Images",
                                    "This Global Setting is used in some Memory Images!  Are you sure you want to "
                                    "Delete it?  The existing Memory Images will be set to use your DEFAULT Global "
                                    "Setting.",
                                    MessageButtons::YesNo)
                 : prompter.message("About to Delete Globals", "About to Delete this Global Setting.  Are you sure?",
                                    MessageButtons::YesNo);
        if (sure != MessageAnswer::Yes) return false;
        Transaction transaction(db);
        db.prepare("DELETE FROM GlobalRec WHERE ID = :ID").bind(":ID", line->id).run();
        if (wasDefault)
            db.prepare("UPDATE GlobalRec SET \"Default\" = :Yes WHERE ID = (SELECT MIN(ID) FROM GlobalRec)")
                .bind(":Yes", true)
                .run();
        if (used) {
            Statement fallback = db.prepare("SELECT ID FROM GlobalRec WHERE \"Default\" <> 0 ORDER BY ID");
            // With no default marked, the images go to the first row, as a
            // deleted default would have given them.
            const std::int64_t target =
                fallback.step() ? fallback.getInt(0) : db.queryInt("SELECT MIN(ID) FROM GlobalRec");
            db.prepare("UPDATE MemoryImageRec SET GlobalSettings = :Default WHERE GlobalSettings = :ID")
                .bind(":Default", target)
                .bind(":ID", line->id)
                .run();
        }
        transaction.commit();
        return true;
    });
}

ChoiceRequest GotGlobalsRequest(const ListState& globalsList) {
    ChoiceRequest request;
    request.dialogName = "GotGlobalsForm";
    request.title = "What to do with Global Settings?";
    request.options = {"&Don't Store these new Globals at all.", "&Store in Globals Pool with this New Name:",
                       "&Overwrite These Global Settings"};
    request.option = static_cast<int>(GotGlobalsOption::DontStore);
    request.buttons = {{"OkButton", "OK", true}};
    request.fields = {{"NewNameText", "", "", static_cast<int>(GotGlobalsOption::StoreNew)}};
    ChoiceRequest::PickList list{"GlobalsList", "", {}, -1, 0, static_cast<int>(GotGlobalsOption::Overwrite)};
    for (const auto& line : globalsList.lines()) list.items.push_back(line.text);
    request.lists = {list};
    request.closable = false;
    return request;
}

std::string ShowGotGlobalsForm(const GlobalsContext& session) {
    ListState lines;
    FillGlobalsList(session.pool, lines, false);
    ChoiceRequest request = GotGlobalsRequest(lines);
    for (;;) {
        const ChoiceAnswer answer = session.prompter.choose(request);
        // Only OK ends the dialogue; a prompter that comes back without it
        // gets the choice that stores nothing.
        if (answer.button != 0) return kDontStore;
        const std::string name = answer.fields.empty() ? std::string() : Trim(answer.fields[0]);
        const int line = answer.lists.empty() ? -1 : answer.lists[0];
        request.option = answer.option;
        request.fields[0].text = name;
        request.lists[0].index = line;
        switch (answer.option) {
            case static_cast<int>(GotGlobalsOption::StoreNew):
                if (name.empty()) {
                    session.prompter.message("Cannot Store",
                                             "You must enter a new Global Settings Name for these Globals.");
                    continue;
                }
                if (GlobalsIdByName(session.pool, name) >= 0) {
                    session.prompter.message("Cannot Store Globals",
                                             "Global Settings with that Name already exist in the Global Pool.  Please "
                                             "enter another name.");
                    continue;
                }
                return name;
            case static_cast<int>(GotGlobalsOption::Overwrite):
                if (line < 0 || line >= lines.listCount()) {
                    session.prompter.message("Cannot Overwrite",
                                             "You must select a Global Settings from the listbox to be overwritten.");
                    continue;
                }
                return "__ID=" + std::to_string(lines.itemData(line));
            default:
                return kDontStore;
        }
    }
}

std::optional<std::int64_t> StoreGotGlobals(const GlobalsContext& session, const std::string& resultWord) {
    if (resultWord == kDontStore || resultWord.empty()) return std::nullopt;
    GlobalSettings& settings = session.globals.settings;
    constexpr std::string_view idPrefix = "__ID=";
    if (resultWord.rfind(idPrefix, 0) == 0) {
        const std::int64_t id = std::stoll(resultWord.substr(idPrefix.size()));
        const std::string name = GlobalsName(session.pool, id);
        if (name.empty()) return std::nullopt;
        settings.Name = name;
        // Overwriting the default keeps the pool's default where it was.
        settings.Default = settings.Default || IsDefault(session.pool, id);
    } else {
        settings.Name = resultWord;
    }
    return StoreGlobals(session, true);
}

}  // namespace tavlo
