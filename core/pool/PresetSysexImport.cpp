#include "pool/PresetSysexImport.h"

#include <fstream>
#include <iterator>
#include <optional>

#include "base/FileBytes.h"
#include "editor/InitPreset.h"
#include "preset/PristinePreset.h"
#include "pool/PresetStore.h"
#include "pool/EditorStoreQuestions.h"
#include "preset/PresetDecoder.h"
#include "preset/PresetDump.h"
#include "pool/PoolContext.h"
#include "editor/EditorState.h"
#include "pool/PoolFlags.h"
#include "pool/PoolFormState.h"
#include "editor/ImageSlots.h"
#include "db/PoolDatabase.h"
#include "editor/EditorDumps.h"
#include "midilink/MidiConfig.h"
#include "ui/Prompter.h"

namespace tavlo {
namespace {

// The store runs as a download for its questions; the flag never outlives it.
struct DownloadScope {
    explicit DownloadScope(PoolFlags& flags) : flags(flags) { flags.DownloadInProgress = true; }
    ~DownloadScope() { flags.DownloadInProgress = false; }
    PoolFlags& flags;
};

}  // namespace

bool ImportPresetSysexFile(const PoolContext& session, const std::string& path) {
    const std::optional<std::string> dump = ReadWholeFile(path);
    if (!dump || !IsPresetDump(*dump)) {
        session.prompter.message(kCannotImportPresetTitle, kCannotImportPresetText);
        return false;
    }
    // The file's preset is decoded once, over a fresh preset beside the
    // editor: a damaged dump is refused before the editor gives up anything.
    EditorState fresh = session.editor;
    InitializePreset({session.pool, session.prompter, fresh, session.midi, session.memImage});
    DecodedPreset decoded = DecodingFrom(fresh);
    if (!DecodePresetDump(*dump, session.memImage.SceneList, session.midi.PC1600Model, decoded).ok) {
        session.prompter.message(kCannotImportPresetTitle, kCannotImportPresetText);
        return false;
    }
    // The file's preset takes the editor's place: unsaved work there is
    // offered for storing first.
    if (!StoreEditsFirst(session)) return false;
    // The editor now holds the file's preset, not a slot of the image.
    session.memImage.MemoryImageBound = false;
    InitializePreset(session);
    TakeDecodedPreset(session.editor, std::move(decoded), session.prompter);
    UpdateINITData(session.editor);

    // One file is a download of its own: earlier "for all" answers don't hold.
    session.flags.ChoiceForAll = false;
    session.flags.ChoiceResult = 0;
    session.editor.LastEnteredBlankName.clear();
    session.editor.ClosingEditor = false;
    DownloadScope download(session.flags);
    StoreInPoolButton(session);
    return true;
}

}  // namespace tavlo
