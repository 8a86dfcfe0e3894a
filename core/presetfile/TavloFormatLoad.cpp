#include "presetfile/TavloFormatLoad.h"

#include <optional>
#include <vector>

#include "base/FileBytes.h"
#include "base/MSBModule.h"
#include "db/PoolDatabase.h"
#include "editor/EditorState.h"
#include "editor/ImageSlots.h"
#include "editor/InitPreset.h"
#include "midilink/MidiConfig.h"
#include "pool/PoolErrors.h"
#include "pool/PoolFlags.h"
#include "pool/PresetLoad.h"
#include "pool/PresetStore.h"
#include "presetfile/TavloFormat.h"
#include "presetfile/TavloFormatParser.h"
#include "presetfile/TavloReferences.h"
#include "ui/Prompter.h"

namespace tavlo {
namespace {

using MSBModule::SafeDBString;
using MSBModule::Trim;

struct BulkScope {
    BulkScope(PoolFlags& flags, bool on) : flags(flags), was(flags.BulkImportActive) { flags.BulkImportActive = on; }
    ~BulkScope() { flags.BulkImportActive = was; }
    PoolFlags& flags;
    bool was;
};

std::int32_t fail(const PoolContext& session, const std::string& fileName) {
    session.prompter.message(TavloText::kFailureTitle,
                             "The file '" + fileName + "' does not appear to be a Tavlo Format Preset File.");
    InitializePreset(session);
    session.editor.Visible = false;
    session.editor.notifyChanged();
    return -1;
}

std::int32_t idByName(Database& db, const std::string& name) {
    Statement find = db.prepare("SELECT ID FROM PresetRec WHERE Name = :Name");
    find.bind(":Name", Trim(SafeDBString(name)));
    return find.step() ? static_cast<std::int32_t>(find.getInt(0)) : -1;
}

}  // namespace

void RewriteForPC1600(Prompter& prompter, ParsedTavloPreset& parsed) {
    WorkingPreset& p = parsed.preset;
    bool sendFaderOrScene = false;
    for (ButtonDef& b : p.Buttons)
        if (b.Function == 8 || b.Function == 9) {
            b.Function = 0;
            sendFaderOrScene = true;
        }
    if (sendFaderOrScene)
        prompter.message(
            "PC1600 Incompatibility",
            "Some Buttons on this Imported Preset are set to SEND FADER and SEND SCENE, which are not compatible with "
            "your PC1600 (non-X) version.  Those Button functions have been set to OFF.  Be sure to Store this Preset "
            "in the Pool if you'd like these compatibility changes to be permanent.");
    if (p.SetupScene != kNoScene || parsed.setupSceneRef != kNoScene) {
        p.SetupScene = kNoScene;
        parsed.setupSceneRef = kNoScene;
        prompter.message(
            "Incompatibility to PC1600",
            "This Preset has a Setup Scene, which is incompatible with your PC1600 (non-X) model.  The Setup Scene "
            "will be set to <none>.  Be sure to Store this Preset in the Pool if you'd like this compatibility change "
            "to be permanent.");
    }
    for (SetupChannelDef& c : p.SetupChannels) c.BankIsMSB = 0;
}

bool IsSysexFileName(std::string_view path) {
    return path.size() >= 4 && MSBModule::ToUpper(path.substr(path.size() - 4)) == ".SYX";
}

namespace {

// The editor's setup scene list shows what the store is to record.
void pickSetupScene(EditorState& editor, Database& db) {
    const WorkingPreset& p = editor.preset;
    ListState& combo = editor.SelectPresetSceneCombo;
    if (p.SetupScenePreset == 0 || p.SetupScene == kNoScene) {
        if (combo.listCount() > 0) combo.setListIndex(0);
        return;
    }
    std::string line = p.SetupScene;
    if (p.SetupScenePreset > 0) {
        Statement owner = db.prepare("SELECT Name FROM PresetRec WHERE ID = :ID");
        owner.bind(":ID", static_cast<std::int64_t>(p.SetupScenePreset));
        line += "  - from " + (owner.step() ? Trim(MSBModule::DisplayDBString(owner.getText(0))) : std::string());
    }
    combo.addItem(line, p.SetupScenePreset);
    combo.setListIndex(combo.listCount() - 1);
}

void storeScenes(Database& db, std::int64_t id, const std::vector<SceneDef>& scenes) {
    Statement insert = db.prepare(
        "INSERT INTO SceneRec (PresetREF, Name, Fader1, Fader2, Fader3, Fader4, Fader5, Fader6, Fader7, Fader8, "
        "Fader9, Fader10, Fader11, Fader12, Fader13, Fader14, Fader15, Fader16, CV1, CV2) VALUES "
        "(?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13, ?14, ?15, ?16, ?17, ?18, ?19, ?20)");
    for (const SceneDef& scene : scenes) {
        insert.reset();
        insert.bind(1, id).bind(2, Trim(SafeDBString(scene.Name)));
        for (int v = 0; v < kFaderCount; ++v) insert.bind(3 + v, static_cast<std::int64_t>(scene.Values[v]));
        insert.run();
    }
}

// The preset's own scene references point at its new row.
void settleSelfReferences(Database& db, std::int64_t id, const WorkingPreset& preset) {
    if (preset.SetupScenePreset == kSelfReference)
        db.prepare("UPDATE PresetRec SET SetupScene = :Scene, SetupScenePreset = :ID WHERE ID = :ID")
            .bind(":Scene", SafeDBString(preset.SetupScene))
            .bind(":ID", id)
            .run();
    db.prepare("UPDATE ButtonRec SET ScenePreset = :ID WHERE PresetREF = :ID AND ScenePreset = -1000")
        .bind(":ID", id)
        .run();
}

// The store with its scenes and self references, as one transaction. The
// preset's ID, or -1 when the store was refused.
std::int32_t store(const PoolContext& session, const ParsedTavloPreset& parsed, bool bulk) {
    EditorState& editor = session.editor;
    Database& db = session.pool.db();
    const WorkingPreset preset = editor.preset;
    Transaction transaction(db);
    editor.ImportingPresetText = true;
    editor.ClosingEditor = false;
    editor.preset.ID = 0;
    StoreInPoolButton(session);
    editor.ImportingPresetText = false;
    const std::int64_t id = editor.preset.ID;
    if (id <= 0 || editor.PresetKeptInPool) {
        transaction.commit();
        return bulk ? idByName(db, preset.Name) : -1;
    }
    storeScenes(db, id, parsed.scenes);
    settleSelfReferences(db, id, preset);
    transaction.commit();
    return static_cast<std::int32_t>(id);
}

}  // namespace

std::int32_t LoadTavloFormat(const PoolContext& session, std::string_view text, const std::string& fileName,
                             bool bulkImportActive) {
    EditorState& editor = session.editor;
    BulkScope bulk(session.flags, bulkImportActive);
    if (INITDataChanged(editor)) {
        const MessageAnswer answer = session.prompter.message(
            "About to Load Tavlo Format Preset",
            "Do you want to save the contents of the PC1600(x) Preset Editor Window before loading this new Preset?  "
            "If you answer NO, changes will be lost.",
            MessageButtons::YesNo);
        if (answer != MessageAnswer::No) StoreInPoolButton(session);
    }
    if (!bulkImportActive && !AcceptMissingReferences(session, text)) return -1;

    InitializePreset(session);
    ParsedTavloPreset parsed = ParseTavloText(text);
    if (!parsed.ok) return fail(session, fileName);
    if (parsed.initialized) return static_cast<std::int32_t>(session.pool.InitializedPresetID());
    if (session.midi.PC1600Model) RewriteForPC1600(session.prompter, parsed);

    try {
        ResolveReferences(session.pool.db(), parsed, bulkImportActive);
        AssociateDevices(session, parsed);
        session.memImage.MemoryImageBound = false;
        editor.preset = parsed.preset;
        pickSetupScene(editor, session.pool.db());
        const std::int32_t id = store(session, parsed, bulkImportActive);
        if (id < 0 || bulkImportActive) return id;
        if (LoadPC1600xFormFromPool(session, id)) editor.Visible = true;
        editor.notifyChanged();
        return id;
    } catch (const DatabaseError& e) {
        TellDatabaseError(session, e);
        return -1;
    }
}

std::int32_t LoadTavloFormatFile(const PoolContext& session, const std::string& path, bool bulkImportActive) {
    const std::optional<std::string> text = ReadWholeFile(path);
    if (!text) return -1;
    return LoadTavloFormat(session, *text, path, bulkImportActive);
}

std::string EditorTavloText(const PoolContext& session) {
    std::vector<std::string> associated;
    for (const ListState::Line& line : session.editor.AssociatedList.lines()) associated.push_back(line.text);
    return SaveTavloFormat(&session.pool.db(), session.editor.preset, associated);
}

}  // namespace tavlo
