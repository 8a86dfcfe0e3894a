#include "editor/PristineHook.h"

#include "editor/EditorState.h"

namespace tavlo {

// Until the field-by-field tracking lands, the copy is the whole preset and
// a change is any difference outside what a user's move or a rename touches.
void PoolFlowUpdateINITData(EditorState& editor) { editor.PristinePreset = editor.preset; }

bool PoolFlowINITDataChanged(const EditorState& editor) {
    if (!editor.PristineComparison) return false;
    auto comparable = [](WorkingPreset p) {
        for (FaderDef& f : p.Faders) f.Value = 0;
        p.Name.clear();
        p.ID = 0;
        p.Scenes = {};
        return p;
    };
    return !(comparable(editor.preset) == comparable(editor.PristinePreset));
}

}  // namespace tavlo
