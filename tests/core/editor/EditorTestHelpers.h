#pragma once
#include <cstdint>
#include <string>

#include "db/Database.h"
#include "shell/Program.h"
#include "editor/EditorState.h"

namespace tavlo::testing {

// A bare PresetRec row, as a store would leave it, for tests that need a
// preset in the pool before the editor's own flows run.
inline std::int64_t AddPresetRow(Database& db, const std::string& name) {
    db.prepare("INSERT INTO PresetRec (Name, CreatedDate, UpdatedDate, SetupChannelMap) VALUES (:Name, 'now', 'now', "
               "X'')")
        .bind(":Name", name)
        .run();
    return db.lastInsertId();
}

inline std::int64_t AddButtonRow(Database& db, std::int64_t presetID, int index, int function,
                                 const std::string& scene, std::int64_t scenePreset) {
    db.prepare("INSERT INTO ButtonRec (PresetREF, \"Index\", Function, Scene, ScenePreset) VALUES (:P, :I, :F, :S, "
               ":SP)")
        .bind(":P", presetID)
        .bind(":I", index)
        .bind(":F", function)
        .bind(":S", scene)
        .bind(":SP", scenePreset)
        .run();
    return db.lastInsertId();
}

// The editor holding a stored, unchanged preset of that pool row.
inline void BindEditorToRow(Program& session, std::int64_t id, const std::string& name) {
    session.editor.preset.ID = static_cast<std::int32_t>(id);
    session.editor.preset.Name = name;
    session.editor.PristinePreset = session.editor.preset;
}

}  // namespace tavlo::testing
