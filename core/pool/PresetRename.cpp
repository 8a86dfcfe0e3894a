#include <optional>

#include "base/MSBModule.h"
#include "db/PoolDatabase.h"
#include "pool/PoolList.h"
#include "pool/PoolOperations.h"
#include "pool/PoolContext.h"
#include "pool/PresetNameRule.h"
#include "preset/PresetNames.h"
#include "editor/EditorState.h"
#include "pool/PoolFlags.h"
#include "pool/PoolFormState.h"
#include "editor/ImageSlots.h"
#include "db/PoolDatabase.h"
#include "ui/Prompter.h"
#include "pool/PoolErrors.h"

namespace tavlo {

using MSBModule::SafeDBString;
using MSBModule::Trim;

void RenameButton(const PoolContext& session) {
    const int line = PoolOperationLine(session);
    if (line < 0) return;
    const std::int64_t id = session.poolForm.PoolList.itemData(line);
    const std::string name = Trim(session.poolForm.PoolList.list(line));
    if (IsInitializedName(name)) {
        // The system's own preset is found by its name; it keeps it.
        session.prompter.message(
            "Cannot Update --Initialized-- Preset",
            "You cannot change the --Initialized-- Preset in the Pool.  It is kept for System functionality.");
        return;
    }
    const std::optional<std::string> answer = session.prompter.input(
        "Rename Preset", "Enter the new name for the Preset '" + name + "' (leave blank to cancel).", name);
    if (!answer) return;
    if (Trim(*answer).empty()) return;
    const PresetNameCheck check = CheckPresetName(*answer);
    if (!check.ok()) {
        session.prompter.message("Cannot Rename Preset", check.problem);
        return;
    }
    const std::string& newName = check.name;
    try {
        Database& db = session.pool.db();
        Statement clash = db.prepare("SELECT ID FROM PresetRec WHERE Name = :Name");
        clash.bind(":Name", SafeDBString(newName));
        // A change of case only finds the preset itself.
        if (clash.step() && clash.getInt(0) != id) {
            session.prompter.message("Cannot Rename",
                                     "That name '" + newName + "' is already in use in the database.");
            return;
        }
        Transaction transaction(db);
        db.prepare("UPDATE PresetRec SET Name = :Name WHERE ID = :ID")
            .bind(":Name", SafeDBString(newName))
            .bind(":ID", id)
            .run();
        transaction.commit();
    } catch (const DatabaseError& e) {
        TellDatabaseError(session, e);
        return;
    }
    // The editor holding this preset stores it under the new name from now on.
    if (session.editor.preset.ID == id) {
        session.editor.preset.Name = MSBModule::DisplayDBString(SafeDBString(newName));
        session.editor.notifyChanged();
    }
    ReloadPoolList(session);
}

}  // namespace tavlo
