#include "presetfile/PresetFileButtons.h"

#include <optional>
#include <string>

#include "base/FileBytes.h"
#include "base/MSBModule.h"
#include "editor/EditorDumps.h"
#include "editor/EditorState.h"
#include "editor/ImageSlots.h"
#include "pool/PoolFormState.h"
#include "pool/PoolList.h"
#include "pool/PresetLoad.h"
#include "pool/PresetSysexFile.h"
#include "pool/PresetSysexImport.h"
#include "presetfile/TavloFormatLoad.h"
#include "ui/Prompter.h"

namespace tavlo {
namespace {

FileRequest saveRequest(const std::string& name) {
    FileRequest request;
    request.title = "Save Preset to Sysex or Tavlo Format File";
    request.filter = "Tavlo Preset Files (*.tpr)|*.tpr|Sysex Files (*.syx)|*.syx";
    request.defaultExtension = ".tpr";
    request.fileName = MSBModule::SafeFileName(MSBModule::Trim(name)) + ".tpr";
    return request;
}

void write(const PoolContext& session, const std::string& path, const std::string& bytes) {
    if (!WriteWholeFile(path, bytes))
        session.prompter.message("Cannot Save Preset", "The file '" + path + "' could not be written.");
}

}  // namespace

void LoadPresetSysexButton(const PoolContext& session) {
    FileRequest request;
    request.title = "Get Preset from File (Tavlo Format or Sysex File)";
    request.filter = "Tavlo Preset Files (*.tpr)|*.tpr|Sysex File(s) (*.syx)|*.syx";
    request.defaultExtension = ".tpr";
    const std::optional<std::string> path = session.prompter.openFile(request);
    if (!path || path->empty()) return;
    if (IsSysexFileName(*path)) {
        ImportPresetSysexFile(session, *path);
        return;
    }
    LoadTavloFormatFile(session, *path, false);
    ReloadPoolList(session);
}

void SavePresetSysexButton(const PoolContext& session) {
    const int line = PoolOperationLine(session);
    if (line < 0) return;
    const std::int64_t id = session.poolForm.PoolList.itemData(line);
    const std::optional<std::string> path = session.prompter.saveFile(saveRequest(session.poolForm.PoolList.list(line)));
    if (!path || path->empty() || !OfferStoreBeforeSave(session)) return;
    if (IsSysexFileName(*path)) {
        WritePresetSysexFile(session, id, *path);
        return;
    }
    if (LoadPC1600xFormFromPool(session, id)) write(session, *path, EditorTavloText(session));
}

void EditorSavePresetSysexButton(const PoolContext& session) {
    const std::optional<std::string> path = session.prompter.saveFile(saveRequest(session.editor.preset.Name));
    if (!path || path->empty()) return;
    write(session, *path,
          IsSysexFileName(*path) ? EditorPresetSysex(session.editor, session.memImage.SceneList, session.midi)
                                 : EditorTavloText(session));
}

}  // namespace tavlo
