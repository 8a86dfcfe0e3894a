#include "pool/PresetSysexFile.h"
#include "preset/PresetNames.h"

#include <fstream>
#include <optional>

#include "base/FileBytes.h"
#include "preset/PristinePreset.h"
#include "base/MSBModule.h"
#include "pool/PoolList.h"
#include "pool/PresetLoad.h"
#include "pool/PresetStore.h"
#include "editor/EditorDumps.h"
#include "pool/PoolContext.h"
#include "editor/EditorState.h"
#include "pool/PoolFlags.h"
#include "pool/PoolFormState.h"
#include "editor/ImageSlots.h"
#include "db/PoolDatabase.h"
#include "midilink/MidiConfig.h"
#include "ui/Prompter.h"

namespace tavlo {

bool WritePresetSysexFile(const PoolContext& session, std::int64_t id, const std::string& path) {
    if (!LoadPC1600xFormFromPool(session, id)) return false;
    const std::string dump = EditorPresetSysex(session.editor, session.memImage.SceneList, session.midi);
    if (!WriteWholeFile(path, dump)) {
        session.prompter.message("Cannot Save Preset", "The file '" + path + "' could not be written.");
        return false;
    }
    return true;
}

bool OfferStoreBeforeSave(const PoolContext& session) {
    EditorState& editor = session.editor;
    if (!INITDataChanged(editor) || IsInitializedName(editor.preset.Name)) return true;
    const MessageAnswer answer = session.prompter.message(
        "About to Save Tavlo Format Preset",
        "The Preset Editor window is required for this task.  Do you want to save the contents of the PC1600(x) "
        "Preset Editor Window before storing this Preset?  If you answer NO, any changes since the last Preset "
        "Store in Pool will be lost.",
        MessageButtons::YesNoCancel);
    if (answer == MessageAnswer::Cancel) return false;
    if (answer == MessageAnswer::Yes) {
        editor.ClosingEditor = false;
        StoreInPoolButton(session);
        // A store that was refused keeps the edits: nothing is overwritten.
        if (INITDataChanged(editor)) return false;
    }
    return true;
}

}  // namespace tavlo
