#include "editor/PristineHook.h"

#include "editor/EditorState.h"
#include "preset/PristinePreset.h"

namespace tavlo {

void PoolFlowUpdateINITData(EditorState& editor) { UpdateINITData(editor); }

bool PoolFlowINITDataChanged(const EditorState& editor) {
    return editor.PristineComparison && INITDataChanged(editor);
}

}  // namespace tavlo
