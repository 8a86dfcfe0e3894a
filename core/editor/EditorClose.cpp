#include "editor/EditorClose.h"

#include "preset/PristinePreset.h"
#include "midistrings/MSBModule.h"
#include "shell/Session.h"

namespace tavlo {

bool EditorQueryClose(Session& session, const std::function<void()>& storeInPool) {
    EditorState& editor = session.editor;
    if (!session.flags.Quitting && INITDataChanged(editor) &&
        MSBModule::Trim(editor.preset.Name) != kInitializedName) {
        if (session.flags.MemoryImageBound) {
            storeInPool();
        } else {
            const MessageAnswer answer =
                session.prompter.message("Store Preset in Pool?", "Do you want to store this Preset in the Preset Pool?",
                                         MessageButtons::YesNoCancel);
            if (answer == MessageAnswer::Cancel) return false;
            if (answer == MessageAnswer::Yes) storeInPool();
        }
    }
    editor.Visible = false;
    editor.notifyChanged();
    return true;
}

}  // namespace tavlo
