#include "pool/EditorStoreQuestions.h"

#include "base/MSBModule.h"
#include "editor/EditorState.h"
#include "editor/ImageSlots.h"
#include "editor/InitPreset.h"
#include "pool/PoolContext.h"
#include "pool/PresetStore.h"
#include "ui/Prompter.h"

namespace tavlo {

bool InitPresetButton(const PoolContext& session) {
    EditorState& editor = session.editor;
    if (session.editor.ProgramInit && INITDataChanged(editor) &&
        MSBModule::Trim(editor.preset.Name) != kInitializedName) {
        const MessageAnswer answer = session.prompter.message(
            "Store Preset in Pool?", "Do you want to store this Preset in the Preset Pool?", MessageButtons::YesNoCancel);
        if (answer == MessageAnswer::Cancel) return false;
        if (answer == MessageAnswer::Yes) {
            editor.CancelClose = false;
            StoreInPoolButton(session);
            if (editor.CancelClose) {
                editor.CancelClose = false;
                return false;
            }
        }
    }
    InitializePreset(session);
    return true;
}

namespace {

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

bool EditorQueryClose(const PoolContext& session) {
    EditorState& editor = session.editor;
    if (!session.editor.Quitting && INITDataChanged(editor) && MSBModule::Trim(editor.preset.Name) != kInitializedName) {
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

}  // namespace tavlo
