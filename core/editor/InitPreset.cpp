#include "editor/InitPreset.h"

#include <algorithm>
#include <cstdio>

#include "editor/PresetOperations.h"
#include "editor/SetupInfo.h"
#include "preset/PristinePreset.h"
#include "base/MSBModule.h"
#include "editor/EditorContext.h"
#include "editor/EditorState.h"
#include "editor/ImageSlots.h"
#include "db/PoolDatabase.h"

namespace tavlo {
namespace {

void overlayDataWheel(Database& db, WorkingPreset& preset) {
    Statement row = db.prepare("SELECT Value FROM DefaultsTable WHERE Field = 'DataWheelLink'");
    if (!row.step()) return;
    int index = 0;
    if (std::sscanf(row.getText("Value").c_str(), "%d", &index) == 1 && index >= 0 && index < 20)
        preset.DataWheelLink = static_cast<std::int16_t>(index);
}

}  // namespace

void InitializePreset(const EditorContext& session) {
    EditorState& editor = session.editor;
    editor.preset = WorkingPreset{};
    try {
        Database& db = session.pool.db();
        ApplySetupChannelDefaults(db, editor.preset);
        ApplySetupStringDefault(db, editor.preset);
        overlayDataWheel(db, editor.preset);
    } catch (const DatabaseError&) {
        // A damaged defaults row leaves the built-in defaults in force.
    }
    for (auto& caption : editor.FaderLabel) caption.clear();
    for (auto& caption : editor.PCButton) caption.clear();
    editor.SelectSceneCombo.clear();
    for (ListState* list : {&editor.BSceneCombo, &editor.SelectPresetSceneCombo}) {
        list->clear();
        list->addItem(kNoScene, -1);
        list->setListIndex(0);
    }
    editor.AssociatedList.clear();
    editor.CurrentButton = 0;
    SelectFader(editor, 0);
    UpdateINITData(editor);
    editor.notifyChanged();
}

}  // namespace tavlo
