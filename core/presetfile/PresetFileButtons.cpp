#include "presetfile/PresetFileButtons.h"

#include <optional>
#include <string>

#include "base/FileBytes.h"
#include "base/MSBModule.h"
#include "pool/PoolFormState.h"
#include "pool/PoolList.h"
#include "pool/PresetLoad.h"
#include "pool/PresetSysexFile.h"
#include "pool/PresetSysexImport.h"
#include "presetfile/TavloFormatLoad.h"
#include "ui/Prompter.h"

namespace tavlo {

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
    const std::string name = MSBModule::Trim(session.poolForm.PoolList.list(line));
    FileRequest request;
    request.title = "Save Preset to Sysex or Tavlo Format File";
    request.filter = "Tavlo Preset Files (*.tpr)|*.tpr|Sysex Files (*.syx)|*.syx";
    request.defaultExtension = ".tpr";
    request.fileName = MSBModule::SafeFileName(name) + ".tpr";
    const std::optional<std::string> path = session.prompter.saveFile(request);
    if (!path || path->empty() || !OfferStoreBeforeSave(session)) return;
    if (IsSysexFileName(*path)) {
        WritePresetSysexFile(session, id, *path);
        return;
    }
    if (!LoadPC1600xFormFromPool(session, id)) return;
    if (!WriteWholeFile(*path, EditorTavloText(session)))
        session.prompter.message("Cannot Save Preset", "The file '" + *path + "' could not be written.");
}

}  // namespace tavlo
