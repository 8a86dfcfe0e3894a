#include "editor/NewPreset.h"

#include "editor/EditorDefaults.h"
#include "editor/EditorSelection.h"
#include "editor/Scenes.h"
#include "editor/SetupInfo.h"
#include "pool/Database.h"
#include "preset/PristinePreset.h"
#include "shell/Session.h"

namespace tavlo {

void StartNewPreset(Session& session) {
    EditorState& editor = session.editor;
    editor.preset = WorkingPreset{};
    try {
        Database& db = session.pool.db();
        ApplySetupChannelDefaults(db, editor.preset);
        ApplySetupStringDefault(db, editor.preset);
        if (auto wheel = ReadDefaultNumber(db, "DataWheelLink"); wheel && *wheel >= 0 && *wheel < 20)
            editor.preset.DataWheelLink = static_cast<std::int16_t>(*wheel);
    } catch (const DatabaseError&) {
        // Defaults that can't be read are simply not applied.
    }
    editor.PristinePreset = editor.preset;
    UpdateINITData(editor);
    editor.SelectSceneCombo.clear();
    editor.BSceneCombo.clear();
    editor.SelectPresetSceneCombo.clear();
    RefillSceneLists(editor);
    RedrawCaptions(editor);
    editor.CurrentFader = 0;
    editor.CurrentButton = 0;
    SelectFader(editor, 0);
    ShowFaderParams(editor, 0);
}

}  // namespace tavlo
