#include "pool/EditorStoreQuestions.h"

#include <string>

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

namespace {

// A Yes, No, Cancel question before the editor closes; Yes stores. False
// when the editor must stay: Cancel, or a store that wants it kept open.
bool askThenStoreOnClose(const PoolContext& session, const std::string& title, const std::string& text) {
    const MessageAnswer answer = session.prompter.message(title, text, MessageButtons::YesNoCancel);
    if (answer == MessageAnswer::Cancel) return false;
    return answer != MessageAnswer::Yes || storeOnClose(session);
}

bool hideEditor(EditorState& editor) {
    editor.Visible = false;
    editor.notifyChanged();
    return true;
}

}  // namespace

bool EditorQueryClose(const PoolContext& session) {
    if (unsavedWork(session.editor)) {
        const bool stays = session.memImage.MemoryImageBound
                               ? !storeOnClose(session)
                               : !askThenStoreOnClose(session, "Store Preset in Pool?",
                                                      "Do you want to store this Preset in the Preset Pool?");
        if (stays) return false;
    }
    return hideEditor(session.editor);
}

bool StoreBeforeQuit(const PoolContext& session) {
    if (!session.editor.Visible || !unsavedWork(session.editor)) return true;
    if (!askThenStoreOnClose(session, "Store Preset to Pool",
                             "Do you want to store this Preset to the Pool before closing the window?"))
        return false;
    return hideEditor(session.editor);
}

}  // namespace tavlo
