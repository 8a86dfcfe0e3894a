#include "shell/Startup.h"

#include "db/PoolDatabase.h"
#include "shell/Program.h"
#include "editor/EditorState.h"
#include "memimage/MemImageState.h"
#include "ui/Prompter.h"
#include "editor/ImageSlots.h"

namespace tavlo {

bool OpenPoolForStartup(PoolDatabase& pool, const std::string& path, Prompter& prompter) {
    const PoolOpenResult result = pool.open(path);
    if (result.ok()) return true;
    const PoolMessage message = PoolOpenMessage(result, path);
    prompter.message(message.title, message.text);
    return false;
}

void PrepareSession(Program& session) {
    Database& db = session.pool.db();
    Statement removeScenes = db.prepare("DELETE FROM SceneRec WHERE PresetREF = :ID");
    removeScenes.bind(":ID", session.pool.InitializedPresetID());
    removeScenes.run();

    session.editor.preset = WorkingPreset{};
    session.editor.PristinePreset = session.editor.preset;
    session.memImage.clearSceneList();
    session.editor.notifyChanged();
    session.memImage.notifyChanged();
}

}  // namespace tavlo
