#include "pool/PresetSysexImport.h"

#include <fstream>
#include <iterator>
#include <optional>

#include "editor/InitPreset.h"
#include "preset/PristinePreset.h"
#include "pool/PresetStore.h"
#include "preset/PresetDecoder.h"
#include "preset/PresetDump.h"
#include "shell/Session.h"
#include "ui/StreamPrompter.h"

namespace tavlo {
namespace {

// The preset text format joins this filter when it exists.
inline constexpr const char* kLoadSysexFilter = "Sysex File(s) (*.syx)|*.syx";

std::optional<std::string> readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

// The store runs as a download for its questions; the flag never outlives it.
struct DownloadScope {
    explicit DownloadScope(SessionFlags& flags) : flags(flags) { flags.DownloadInProgress = true; }
    ~DownloadScope() { flags.DownloadInProgress = false; }
    SessionFlags& flags;
};

}  // namespace

bool ImportPresetSysexFile(Session& session, const std::string& path) {
    const std::optional<std::string> dump = readFile(path);
    if (!dump || !IsPresetDump(*dump)) {
        session.prompter.message(kCannotImportPresetTitle, kCannotImportPresetText);
        return false;
    }
    // A damaged dump is refused before the editor gives up what it holds.
    {
        EditorState trial;
        StreamPrompter silent;  // the trial decode is not the user's
        if (!PresetSysex2Form(*dump, trial, session.memImage, session.midi, silent).ok) {
            session.prompter.message(kCannotImportPresetTitle, kCannotImportPresetText);
            return false;
        }
    }
    // The editor now holds the file's preset, not a slot of the image.
    session.flags.MemoryImageBound = false;
    InitPresetWithoutQuestions(session);
    PresetSysex2Form(*dump, session.editor, session.memImage, session.midi, session.prompter);
    UpdateINITData(session.editor);

    // One file is a download of its own: earlier "for all" answers don't hold.
    session.flags.ChoiceForAll = false;
    session.editor.LastEnteredBlankName.clear();
    session.editor.ClosingEditor = false;
    DownloadScope download(session.flags);
    StoreInPoolButton(session);
    return true;
}

void LoadPresetSysexButton(Session& session) {
    FileRequest request;
    request.title = "Get Preset from File (Tavlo Format or Sysex File)";
    request.filter = kLoadSysexFilter;
    request.defaultExtension = ".syx";
    const std::optional<std::string> path = session.prompter.openFile(request);
    if (!path) return;
    ImportPresetSysexFile(session, *path);
}

}  // namespace tavlo
