#include "shell/Startup.h"

#include "db/PoolDatabase.h"
#include "shell/Program.h"
#include "editor/EditorState.h"
#include "memimage/MemImageState.h"
#include "ui/Prompter.h"
#include "editor/ImageSlots.h"

namespace tavlo {

bool OpenPoolForStartup(PoolDatabase& pool, const std::string& path, Prompter& prompter) {
    // The program keeps the pool for its whole run: another Tavlo that
    // finds it taken is told so at once instead of waiting.
    PoolOpenOptions options;
    options.wholeRun = true;
    const PoolOpenResult result = pool.open(path, options);
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
