#include <optional>

#include "base/MSBModule.h"
#include "db/PoolDatabase.h"
#include "pool/PoolList.h"
#include "pool/PoolOperations.h"
#include "pool/PresetLoad.h"
#include "pool/PresetStore.h"
#include "pool/PoolContext.h"
#include "pool/EditorStoreQuestions.h"
#include "pool/PresetNameRule.h"
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

void DuplicateButton(const PoolContext& session) {
    // The first selected line that isn't a header.
    const ListState& list = session.poolForm.PoolList;
    int line = -1;
    for (int index : list.selectedIndexes())
        if (!IsPoolHeaderLine(session, index)) {
            line = index;
            break;
        }
    if (line < 0) line = PoolOperationLine(session);
    if (line < 0) return;
    const std::int64_t id = list.itemData(line);
    const std::string name = Trim(list.list(line));
    const std::optional<std::string> answer =
        session.prompter.input("Duplicate Preset", "Enter the Name of the new Preset copy.", name + " 2");
    if (!answer) return;
    if (Trim(*answer).empty()) return;
    const PresetNameCheck check = CheckPresetName(*answer);
    if (!check.ok()) {
        session.prompter.message("Cannot Duplicate Preset", check.problem);
        return;
    }
    const std::string& newName = check.name;
    try {
        Statement clash = session.pool.db().prepare("SELECT ID FROM PresetRec WHERE Name = :Name");
        clash.bind(":Name", SafeDBString(newName));
        if (clash.step()) {
            session.prompter.message("Cannot Duplicate", "That name is already taken.  Please enter another.");
            return;
        }
    } catch (const DatabaseError& e) {
        TellDatabaseError(session, e);
        return;
    }
    // The copy goes through the editor so that it gets every companion row,
    // which first offers its own unsaved work for storing.
    if (!StoreEditsFirst(session)) return;
    // The editor no longer stands for a slot of the image: the copy isn't it.
    session.memImage.MemoryImageBound = false;
    if (!LoadPC1600xFormFromPool(session, id)) return;
    session.editor.preset.Name = newName;
    session.editor.ClosingEditor = false;
    StoreInPoolButton(session);
    const std::int64_t copy = session.editor.preset.ID;
    if (copy == id) return;  // not stored
    // The copy's setup scene and Send Scene buttons that named the source's
    // own scenes name the copy's scenes, as a preset file's own references do.
    try {
        Database& db = session.pool.db();
        Transaction transaction(db);
        db.prepare("UPDATE PresetRec SET SetupScenePreset = :Copy WHERE ID = :Copy AND SetupScenePreset = :Source")
            .bind(":Copy", copy)
            .bind(":Source", id)
            .run();
        db.prepare("UPDATE ButtonRec SET ScenePreset = :Copy WHERE PresetREF = :Copy AND ScenePreset = :Source")
            .bind(":Copy", copy)
            .bind(":Source", id)
            .run();
        transaction.commit();
    } catch (const DatabaseError& e) {
        TellDatabaseError(session, e);
        return;
    }
    LoadPC1600xFormFromPool(session, copy);
}

}  // namespace tavlo
