#pragma once

namespace tavlo {

struct EditorState;

// The one place through which the pool flows bring the pristine copy level
// and ask whether the editor holds edits.
void PoolFlowUpdateINITData(EditorState& editor);
bool PoolFlowINITDataChanged(const EditorState& editor);

}  // namespace tavlo
