#include "pool/EditorStoreQuestions.h"

#include "base/MSBModule.h"
#include "editor/EditorState.h"
#include "editor/ImageSlots.h"
#include "editor/InitPreset.h"
#include "pool/PoolContext.h"
#include "pool/PresetStore.h"
#include "preset/PresetNames.h"
#include "ui/Prompter.h"

namespace tavlo {
namespace {

bool unsavedWork(const EditorState& editor) {
    return INITDataChanged(editor) && !IsInitializedName(editor.preset.Name);
}

// "Do you want to store this Preset in the Preset Pool?" and, on Yes, the
// store. False when the user cancelled or the store was refused: the edits
// are still only in the editor.
bool askAndStore(const PoolContext& session) {
    EditorState& editor = session.editor;
    const MessageAnswer answer = session.prompter.message(
        "Store Preset in Pool?", "Do you want to store this Preset in the Preset Pool?", MessageButtons::YesNoCancel);
    if (answer == MessageAnswer::Cancel) return false;
    if (answer == MessageAnswer::Yes) {
        editor.CancelClose = false;
        editor.ClosingEditor = false;
        StoreInPoolButton(session);
        const bool refused = editor.CancelClose || INITDataChanged(editor);
        editor.CancelClose = false;
        if (refused) return false;
    }
    return true;
}

// The store as the closing window asks for it; false when it wants the
// window kept open.
bool storeOnClose(const PoolContext& session) {
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

bool InitPresetButton(const PoolContext& session) {
    if (session.editor.ProgramInit && unsavedWork(session.editor) && !askAndStore(session)) return false;
    InitializePreset(session);
    return true;
}

bool StoreEditsFirst(const PoolContext& session) {
    if (!session.editor.Visible || !unsavedWork(session.editor)) return true;
    return askAndStore(session);
}

bool EditorQueryClose(const PoolContext& session) {
    EditorState& editor = session.editor;
    if (unsavedWork(editor)) {
        if (session.memImage.MemoryImageBound) {
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

bool StoreBeforeQuit(const PoolContext& session) {
    EditorState& editor = session.editor;
    if (!editor.Visible || !unsavedWork(editor)) return true;
    const MessageAnswer answer =
        session.prompter.message("Store Preset to Pool", "Do you want to store this Preset to the Pool before closing the window?",
                                 MessageButtons::YesNoCancel);
    if (answer == MessageAnswer::Cancel) return false;
    if (answer == MessageAnswer::Yes && !storeOnClose(session)) return false;
    editor.Visible = false;
    editor.notifyChanged();
    return true;
}

}  // namespace tavlo
