#include "editor/EditorClose.h"

#include "midistrings/MSBModule.h"
#include "pool/PresetStore.h"
#include "preset/PristinePreset.h"
#include "shell/Session.h"

namespace tavlo {

namespace {

// The store as the closing window asks for it; false when it wants the
// window kept open.
bool storeOnClose(Session& session) {
    EditorState& editor = session.editor;
    editor.ClosingEditor = true;
    editor.CancelClose = false;
    StoreInPoolButton(session);
    editor.ClosingEditor = false;
    const bool stay = editor.CancelClose;
    editor.CancelClose = false;
    return !stay;
}

}  // namespace

bool EditorQueryClose(Session& session) {
    EditorState& editor = session.editor;
    if (!session.flags.Quitting && INITDataChanged(editor) && MSBModule::Trim(editor.preset.Name) != kInitializedName) {
        if (session.flags.MemoryImageBound) {
            if (!storeOnClose(session)) return false;
        } else {
            const MessageAnswer answer =
                session.prompter.message("Store Preset in Pool?", "Do you want to store this Preset in the Preset Pool?",
                                         MessageButtons::YesNoCancel);
            if (answer == MessageAnswer::Cancel) return false;
            if (answer == MessageAnswer::Yes && !storeOnClose(session)) return false;
        }
    }
    editor.Visible = false;
    editor.notifyChanged();
    return true;
}

}  // namespace tavlo
