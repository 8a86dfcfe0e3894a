#include "editor/ImageSlots.h"
#include "preset/PresetNames.h"
#include "base/MSBModule.h"
#include "db/PoolDatabase.h"
#include "pool/PoolList.h"
#include "pool/PoolOperations.h"
#include "pool/PoolContext.h"
#include "editor/EditorState.h"
#include "pool/PoolFlags.h"
#include "pool/PoolFormState.h"
#include "editor/ImageSlots.h"
#include "db/PoolDatabase.h"
#include "ui/Prompter.h"
#include "pool/PoolErrors.h"

namespace tavlo {

void DeletePresetRows(const PoolContext& session, std::int64_t id) {
    Database& db = session.pool.db();
    Transaction transaction(db);
    const std::int64_t initialized = session.pool.InitializedPresetID();
    auto run = [&](const char* sql) { db.prepare(sql).bind(":ID", id).run(); };
    db.prepare("UPDATE MemoryImage2PresetMapRec SET PresetREF = :Init WHERE PresetREF = :ID")
        .bind(":Init", initialized)
        .bind(":ID", id)
        .run();
    run("DELETE FROM MessageStringRec WHERE MessageStringRec.MapREF IN "
        "(SELECT ID FROM FaderRec WHERE FaderRec.PresetREF = :ID) AND (MessageStringRec.MapType = 'F')");
    run("DELETE FROM MessageStringRec WHERE MessageStringRec.MapREF IN "
        "(SELECT ID FROM ButtonRec WHERE ButtonRec.PresetREF = :ID) AND (MessageStringRec.MapType = 'B')");
    run("DELETE FROM MessageStringRec WHERE MessageStringRec.MapREF = :ID AND MessageStringRec.MapType = 'P'");
    run("DELETE FROM PresetRec WHERE ID = :ID");
    run("DELETE FROM FaderRec WHERE PresetREF = :ID");
    run("DELETE FROM ButtonRec WHERE PresetREF = :ID");
    run("DELETE FROM SceneRec WHERE PresetREF = :ID");
    run("UPDATE PresetRec SET SetupScene = '<none>', SetupScenePreset = -1 WHERE SetupScenePreset = :ID");
    run("UPDATE ButtonRec SET Scene = '<none>', ScenePreset = -1, Function = 0 WHERE ScenePreset = :ID");
    run("DELETE FROM MakeModelAssocRec WHERE PresetREF = :ID");
    transaction.commit();
}

void DeleteButton(const PoolContext& session) {
    const int line = PoolOperationLine(session);
    if (line < 0) return;
    const std::int64_t id = session.poolForm.PoolList.itemData(line);
    const std::string name = MSBModule::Trim(session.poolForm.PoolList.list(line));
    if (IsInitializedName(name)) {
        session.prompter.message("Cannot Delete",
                                 "You cannot delete the --Initialized-- Preset.  It is kept for system use.");
        return;
    }
    const MessageAnswer answer = session.prompter.message(
        "About to Delete Preset",
        "This will delete the Preset '" + name +
            "' and all attached Scenes and MIDI Messages.  All Memory Images which reference this Preset will now "
            "point to the '--Initialized--' Preset.  Are you sure?",
        MessageButtons::YesNo);
    if (answer != MessageAnswer::Yes) return;
    try {
        DeletePresetRows(session, id);
    } catch (const DatabaseError& e) {
        TellDatabaseError(session, e);
        return;
    }
    ReloadPoolList(session);
    // The image on screen follows what its stored rows now say.
    ListState& slots = session.memImage.PresetList;
    const std::int64_t initialized = session.pool.InitializedPresetID();
    bool changed = false;
    for (int slot = 0; slot < slots.listCount(); ++slot)
        if (slots.itemData(slot) == id) {
            slots.setLine(slot, TwoDigits(slot) + ":  " + kInitializedName, initialized);
            changed = true;
        }
    if (changed) session.memImage.notifyChanged();
}

}  // namespace tavlo
