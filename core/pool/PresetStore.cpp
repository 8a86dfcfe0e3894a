#include "pool/PresetStore.h"

#include <optional>
#include "db/PoolDatabase.h"

#include "preset/PristinePreset.h"
#include "editor/ImageSlots.h"
#include "base/MSBModule.h"
#include "db/ControlRows.h"
#include "pool/MemImageOrPoolChoiceForm.h"
#include "base/PoolDates.h"
#include "pool/PoolList.h"
#include "pool/PresetLoad.h"
#include "pool/PresetNameRule.h"
#include "preset/PresetNames.h"
#include "pool/PoolContext.h"
#include "editor/EditorState.h"
#include "pool/PoolFlags.h"
#include "pool/PoolFormState.h"
#include "editor/ImageSlots.h"
#include "db/PoolDatabase.h"
#include "ui/Prompter.h"
#include "pool/PoolErrors.h"

namespace tavlo {
namespace {

using MSBModule::SafeDBString;
using MSBModule::Trim;

struct ExistingRow {
    std::int64_t id = 0;
    std::string name;
};

std::optional<ExistingRow> findPreset(Database& db, const std::string& name) {
    Statement find = db.prepare("SELECT ID, Name FROM PresetRec WHERE Name = :Name");
    find.bind(":Name", Trim(SafeDBString(name)));
    if (!find.step()) return std::nullopt;
    return ExistingRow{find.getInt("ID"), find.getText("Name")};
}

bool sendSceneWithoutScene(const WorkingPreset& preset) {
    for (const ButtonDef& button : preset.Buttons) {
        if (button.Function != 9) continue;
        const bool hasScene = button.Scene != kNoScene && !button.Scene.empty() && button.ScenePreset != 0;
        if (!hasScene) return true;
    }
    return false;
}

enum class Outcome { Stop, KeepPool, Write };

// In a download, a preset without a name gets one from the user.
// False when the user gave none (a cancelled input box ends the download's
// question, and the preset is not stored).
bool nameBlankDownload(const PoolContext& session) {
    EditorState& editor = session.editor;
    std::string candidate = editor.LastEnteredBlankName;
    std::string prompt =
        "The Preset being loaded has a BLANK Name, which violates the Preset Naming rules of the Tavlo Database.  "
        "Please enter a new name for this Preset.";
    while (Trim(candidate).empty()) {
        const std::optional<std::string> answer = session.prompter.input("Enter New Preset Name", prompt, "");
        if (!answer) return false;
        const PresetNameCheck check = CheckPresetName(*answer);
        const std::string& name = check.name;
        if (name.empty()) continue;
        if (name.rfind("--", 0) == 0) {
            prompt = "The new name for this Preset cannot start with '--'.  Please enter a different new name.";
            continue;
        }
        if (!check.ok()) {
            prompt = check.problem;
            continue;
        }
        if (findPreset(session.pool.db(), name)) {
            prompt = "The name '" + name + "' already exists in your Preset Pool.  Please enter another name.";
            continue;
        }
        candidate = name;
    }
    editor.preset.Name = candidate;
    if (session.flags.DuplicateNamesAccepted) {
        editor.LastEnteredBlankName = candidate;
        session.flags.ChoiceForAll = true;
    }
    return true;
}

// Choice 1 of a download: the pool's preset is replaced. Other presets that
// use its scenes either keep them (the old scenes move onto the new version)
// or lose the references.
Outcome resolveSceneReferences(const PoolContext& session, std::int64_t id, bool& keepOldScenes) {
    Database& db = session.pool.db();
    Statement setups = db.prepare(
        "SELECT ID FROM PresetRec WHERE (SetupScene <> '<none>' AND SetupScene <> '') AND SetupScenePreset = :ID");
    setups.bind(":ID", id);
    bool referenced = setups.step();
    if (!referenced) {
        Statement buttons = db.prepare(
            "SELECT ID FROM ButtonRec WHERE (Scene <> '<none>' AND Scene <> '') AND ScenePreset = :ID");
        buttons.bind(":ID", id);
        referenced = buttons.step();
    }
    if (!referenced) return Outcome::Write;
    const MessageAnswer answer = session.prompter.message(
        "Resolve Scene References",
        "You can either move the Scenes from the old Preset onto the newly downloaded one (to keep referential "
        "integrity in tact) or remove all references to those Scenes in the Pool.  Do you want to move Scenes to the "
        "new Preset (Select 'YES')?  Otherwise (to remove references), select 'NO'.  Selecting 'CANCEL' will override "
        "your earlier response to 'Overwrite the Preset in the Pool' and make it 'Keep the Preset in the Pool '",
        MessageButtons::YesNoCancel);
    if (answer == MessageAnswer::Yes) {
        keepOldScenes = true;
        return Outcome::Write;
    }
    if (answer == MessageAnswer::Cancel) return Outcome::KeepPool;
    Statement buttons = db.prepare(
        "UPDATE ButtonRec SET Function = 0, Name = '', Scene = '<none>', ScenePreset = -1 "
        "WHERE PresetREF <> :ID AND ScenePreset = :ID");
    buttons.bind(":ID", id).run();
    Statement presets = db.prepare(
        "UPDATE PresetRec SET SetupScene = '<none>', SetupScenePreset = -1 WHERE ID <> :ID AND SetupScenePreset = :ID");
    presets.bind(":ID", id).run();
    return Outcome::Write;
}

void writeSubstrings(Statement& insert, char mapType, std::int64_t mapRef, int whichString,
                     const MessageStringSet& set) {
    const int count = std::min<int>(set.Count, kSubstringLimit);
    for (int slot = 0; slot < count; ++slot) {
        const MessageSubstring& s = set.Slots[slot];
        insert.reset();
        insert.bind(":MapType", std::string(1, mapType)).bind(":MapREF", mapRef).bind(":Index", slot)
            .bind(":WhichString", whichString).bind(":CommandType", s.CommandType)
            .bind(":CommandChannel", s.CommandChannel).bind(":ListItem", Trim(s.ListItem))
            .bind(":EnteredString", Trim(s.EnteredString)).bind(":OwnCheck", s.OwnCheck)
            .bind(":SysexMake", Trim(s.SysexMake)).bind(":SysexModel", Trim(s.SysexModel))
            .bind(":Value1", s.Value1).bind(":Value2", s.Value2);
        insert.run();
    }
}

std::string setupChannelMap(const WorkingPreset& preset) {
    std::string map(4 * kSetupChannelCount, '\0');
    for (int i = 0; i < kSetupChannelCount; ++i) {
        const SetupChannelDef& c = preset.SetupChannels[i];
        map[4 * i] = static_cast<char>(c.Bank & 0xFF);
        map[4 * i + 1] = static_cast<char>(c.BankIsMSB & 0xFF);
        map[4 * i + 2] = static_cast<char>(c.ProgChange & 0xFF);
        map[4 * i + 3] = static_cast<char>(c.Volume & 0xFF);
    }
    return map;
}

// Which setup scene the row records.
void setupSceneOfRow(const PoolContext& session, std::string& scene, std::int64_t& scenePreset) {
    const EditorState& editor = session.editor;
    const std::string comboText = editor.SelectPresetSceneCombo.text();
    if (session.memImage.MemoryImageBound || comboText.find("- from") != std::string::npos ||
        session.flags.BulkImportActive) {
        scene = SafeDBString(editor.preset.SetupScene);
        scenePreset = editor.preset.SetupScenePreset;
        return;
    }
    const std::string text = Trim(comboText);
    if (text.empty() || text == kNoScene) {
        scene = kNoScene;
        scenePreset = -1;
    } else {
        scene = Trim(SafeDBString(text));
        scenePreset = editor.preset.ID;
    }
}

std::int64_t writePresetRow(const PoolContext& session, std::optional<std::int64_t> existingId) {
    Database& db = session.pool.db();
    const WorkingPreset& preset = session.editor.preset;
    std::string scene;
    std::int64_t scenePreset = -1;
    setupSceneOfRow(session, scene, scenePreset);
    const std::string now = NowDateText();
    Statement row = db.prepare(
        existingId ? "UPDATE PresetRec SET Name = :Name, Notes = :Notes, UpdatedDate = :Now, DataWheelLink = :Wheel, "
                     "SetupScene = :Scene, SetupScenePreset = :ScenePreset, SetupString = :SetupString, "
                     "SetupChannelMap = :Map WHERE ID = :ID"
                   : "INSERT INTO PresetRec (Name, Notes, CreatedDate, UpdatedDate, DataWheelLink, SetupScene, "
                     "SetupScenePreset, SetupString, SetupChannelMap) VALUES (:Name, :Notes, :Now, :Now, :Wheel, "
                     ":Scene, :ScenePreset, :SetupString, :Map)");
    const std::string map = setupChannelMap(preset);
    row.bind(":Name", Trim(SafeDBString(preset.Name))).bind(":Notes", Trim(SafeDBString(preset.Notes)))
        .bind(":Now", now).bind(":Wheel", preset.DataWheelLink).bind(":Scene", scene)
        .bind(":ScenePreset", scenePreset).bind(":SetupString", Trim(preset.SetupString)).bind(":Map", Blob{map});
    if (existingId) row.bind(":ID", *existingId);
    row.run();
    return existingId ? *existingId : db.lastInsertId();
}

// Drops a preset's rows of one control table with the message strings hung
// on them. `table` is one of our own table names, never user text.
void deleteControlRows(Database& db, std::int64_t id, const std::string& table, char mapType) {
    db.prepare("DELETE FROM MessageStringRec WHERE MapType = :MapType AND MapREF IN (SELECT ID FROM " + table +
               " WHERE PresetREF = :ID)")
        .bind(":MapType", std::string(1, mapType))
        .bind(":ID", id)
        .run();
    db.prepare("DELETE FROM " + table + " WHERE PresetREF = :ID").bind(":ID", id).run();
}

void rewriteCompanions(const PoolContext& session, std::int64_t id, bool keepOldScenes) {
    Database& db = session.pool.db();
    const EditorState& editor = session.editor;
    const WorkingPreset& preset = editor.preset;
    Statement strings = db.prepare(
        "INSERT INTO MessageStringRec (MapType, MapREF, \"Index\", WhichString, CommandType, CommandChannel, "
        "ListItem, EnteredString, OwnCheck, SysexMake, SysexModel, Value1, Value2) VALUES (:MapType, :MapREF, "
        ":Index, :WhichString, :CommandType, :CommandChannel, :ListItem, :EnteredString, :OwnCheck, :SysexMake, "
        ":SysexModel, :Value1, :Value2)");

    db.prepare("DELETE FROM MessageStringRec WHERE MapREF = :ID AND MapType = 'P'").bind(":ID", id).run();
    writeSubstrings(strings, 'P', id, 0, preset.SetupStrings);

    deleteControlRows(db, id, "FaderRec", 'F');
    Statement faders = PrepareFaderInsert(db);
    for (int index = 0; index < kFaderCount; ++index) {
        FaderDef f = preset.Faders[index];
        f.Name = Trim(SafeDBString(f.Name));
        f.MIDIString = Trim(f.MIDIString);
        InsertFaderRow(faders, id, index, f);
        writeSubstrings(strings, 'F', db.lastInsertId(), 0, preset.FaderStrings[index]);
    }

    deleteControlRows(db, id, "ButtonRec", 'B');
    Statement buttons = PrepareButtonInsert(db);
    for (int index = 0; index < kButtonCount; ++index) {
        ButtonDef b = preset.Buttons[index];
        b.Name = Trim(SafeDBString(b.Name));
        b.Scene = SafeDBString(b.Scene);
        InsertButtonRow(buttons, id, index, b);
        const std::int64_t buttonId = db.lastInsertId();
        writeSubstrings(strings, 'B', buttonId, 1, preset.ButtonStrings1[index]);
        writeSubstrings(strings, 'B', buttonId, 2, preset.ButtonStrings2[index]);
    }

    if (!keepOldScenes) {
        db.prepare("DELETE FROM SceneRec WHERE PresetREF = :ID").bind(":ID", id).run();
        if (!editor.ImportingPresetText) {
            Statement scenes = db.prepare(
                "INSERT INTO SceneRec (PresetREF, Name, Fader1, Fader2, Fader3, Fader4, Fader5, Fader6, Fader7, "
                "Fader8, Fader9, Fader10, Fader11, Fader12, Fader13, Fader14, Fader15, Fader16, CV1, CV2) VALUES "
                "(?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13, ?14, ?15, ?16, ?17, ?18, ?19, ?20)");
            const int count = std::min<int>(preset.SceneCount, kSceneLimit);
            for (int s = 0; s < count; ++s) {
                const SceneDef& scene = preset.Scenes[s];
                scenes.reset();
                scenes.bind(1, id).bind(2, SafeDBString(scene.Name));
                for (int v = 0; v < kFaderCount; ++v) scenes.bind(3 + v, static_cast<std::int64_t>(scene.Values[v]));
                scenes.run();
            }
        }
    }

    db.prepare("DELETE FROM MakeModelAssocRec WHERE PresetREF = :ID").bind(":ID", id).run();
    Statement assoc = db.prepare("INSERT INTO MakeModelAssocRec (PresetREF, Make, Model) VALUES (:ID, :Make, :Model)");
    for (const ListState::Line& line : editor.AssociatedList.lines()) {
        const auto colon = line.text.find(':');
        const std::string make = colon == std::string::npos ? line.text : line.text.substr(0, colon);
        const std::string model = colon == std::string::npos ? std::string() : line.text.substr(colon + 1);
        assoc.reset();
        assoc.bind(":ID", id).bind(":Make", Trim(SafeDBString(make))).bind(":Model", Trim(SafeDBString(model)));
        assoc.run();
    }
}

// The memory image and the pool window follow the store.
void followUp(const PoolContext& session, std::int64_t id) {
    const std::string name = Trim(session.editor.preset.Name);
    ImageSlots& image = session.memImage;
    if (image.MemoryImageBound && !SamePresetName(name, kTempName)) {
        ListState& slots = image.PresetList;
        const int slot = image.MemoryImageSlot;
        if (slot >= 0 && slot < slots.listCount()) slots.setLine(slot, TwoDigits(slot) + ":  " + name, id);
        image.ImageChanged = true;
        image.notifyChanged();
    }
    if (image.ImageLoadRunning) return;
    const StoreFollowUps& next = image.followUps;
    if (image.formOpen() && next.RescanDependencies) next.RescanDependencies();
    if (session.editor.ImportingPresetText) return;
    if (next.FillSceneList) next.FillSceneList();
    if (next.CalculateMemoryImageSize)
        image.FreeMemLabel = "Free Memory: " + std::to_string(next.CalculateMemoryImageSize());
    ReloadPoolList(session);
}

// The checks before anything is written: the protected row, a Send Scene
// button without its scene, a blank name, the name rule. False when the
// store stops here (the user has been told where that's wanted).
bool storable(const PoolContext& session) {
    EditorState& editor = session.editor;
    PoolFlags& flags = session.flags;
    if (IsInitializedName(editor.preset.Name)) {
        if (!flags.DownloadInProgress)
            session.prompter.message(
                "Cannot Update --Initialized-- Preset",
                "You cannot change the --Initialized-- Preset in the Pool.  It is kept for System functionality.");
        return false;
    }
    if (!editor.ImportingPresetText && sendSceneWithoutScene(editor.preset)) {
        session.prompter.message("Cannot Store in Pool",
                                 "This Preset has Buttons set to SEND SCENE but no Scene was selected.  Either select "
                                 "a Scene to send for those buttons or change those Buttons to another function.");
        return false;
    }
    const auto refuseName = [&](const std::string& title, const std::string& text) {
        session.prompter.message(title, text);
        editor.CancelClose = true;
        flags.StoreAborted = true;
        editor.FocusPresetNameText = true;
        editor.notifyChanged();
        return false;
    };
    if (Trim(editor.preset.Name).empty() && flags.DownloadInProgress) {
        if (!nameBlankDownload(session)) return false;
    } else if (Trim(editor.preset.Name).empty()) {
        if (!editor.ClosingEditor) return refuseName("Cannot Store Preset", "You must name the Preset before storing it in the Pool.");
        const MessageAnswer answer = session.prompter.message(
            "Preset Name is Blank",
            "The current Preset Name is blank, so it cannot be stored.  Do you want to close the Preset "
            "Editor Window without Storing the Preset to the Pool?",
            MessageButtons::OKCancel);
        if (answer == MessageAnswer::Cancel) editor.CancelClose = true;
        return false;
    }
    // Whatever typed or decoded the name, the pool takes it only within the
    // rules. The comparison tool stores its passing copy as ">>>TEMP>>>"
    // during a download; nobody else may.
    const PresetNameCheck check = CheckPresetName(editor.preset.Name);
    if (!check.ok() && !(flags.DownloadInProgress && SamePresetName(check.name, kTempName)))
        return refuseName("Cannot Store Preset", check.problem);
    editor.preset.Name = check.name;
    return true;
}

// A download's clash with a stored preset of the same name: the clash
// dialogue (unless "for all" answered it), then what its answer does.
Outcome resolveDownloadClash(const PoolContext& session, const ExistingRow& existing, bool& keepOldScenes) {
    PoolFlags& flags = session.flags;
    const std::string name = Trim(session.editor.preset.Name);
    ClashChoice choice;
    if (!flags.ChoiceForAll && !SamePresetName(name, kTempName)) {
        choice = ShowMemImageOrPoolChoiceForm(
            session, existing.id, name,
            "How would you like to resolve the duplicate Preset Name '" + name +
                "' found in the Pool which matches the one you've got from your PC1600(x)?",
            "Overwrite existing Preset '" + name + "' in the Pool with the newly downloaded version from your PC1600(x)?");
    }
    // A rename needs a name; "for all" never carries one.
    const bool named = !Trim(choice.newName).empty();
    switch (flags.ChoiceResult) {
        case 1: return resolveSceneReferences(session, existing.id, keepOldScenes);
        case 2:
            if (!named) return Outcome::KeepPool;
            session.pool.db()
                .prepare("UPDATE PresetRec SET Name = :Name WHERE ID = :ID")
                .bind(":Name", SafeDBString(CheckPresetName(choice.newName).name))
                .bind(":ID", existing.id)
                .run();
            return Outcome::Write;
        case 3:
            if (!named) return Outcome::KeepPool;
            session.editor.preset.Name = CheckPresetName(choice.newName).name;
            return Outcome::Write;
        default: return Outcome::KeepPool;
    }
}

// A stored preset of the same name: the editor asks whether to overwrite it
// (or, when closing, whether to store at all); a download resolves the clash.
Outcome resolveExisting(const PoolContext& session, const ExistingRow& existing, bool& keepOldScenes) {
    EditorState& editor = session.editor;
    if (session.flags.DownloadInProgress) return resolveDownloadClash(session, existing, keepOldScenes);
    const std::string name = Trim(editor.preset.Name);
    if (!editor.ClosingEditor) {
        const MessageAnswer answer = session.prompter.message(
            "About to Store", "Overwrite existing Preset '" + name + "' in the Pool?", MessageButtons::YesNo);
        return answer == MessageAnswer::Yes ? Outcome::Write : Outcome::KeepPool;
    }
    const MessageAnswer answer = session.prompter.message(
        "About to Store", "Store Preset '" + name + "' in the Pool?", MessageButtons::YesNoCancel);
    if (answer == MessageAnswer::Cancel) {
        editor.CancelClose = true;
        return Outcome::Stop;
    }
    return answer == MessageAnswer::Yes ? Outcome::Write : Outcome::KeepPool;
}

}  // namespace

void StoreInPoolButton(const PoolContext& session) {
    EditorState& editor = session.editor;
    PoolFlags& flags = session.flags;
    Database& db = session.pool.db();

    editor.PresetKeptInPool = false;
    editor.preset.Name = MSBModule::FilterNameCharacters(editor.preset.Name);
    if (!storable(session)) return;

    try {
        Transaction transaction(db);
        const std::optional<ExistingRow> existing = findPreset(db, Trim(editor.preset.Name));
        bool keepOldScenes = false;
        bool overwrite = false;  // the existing row is put in Edit
        if (existing) {
            const Outcome outcome = resolveExisting(session, *existing, keepOldScenes);
            if (outcome == Outcome::Stop) return;
            if (outcome == Outcome::KeepPool) {
                transaction.commit();
                editor.PresetKeptInPool = true;
                if (flags.DownloadInProgress) LoadPC1600xFormFromPool(session, existing->id);
                return;
            }
            overwrite = !flags.DownloadInProgress || flags.ChoiceResult < 2;
        }

        const std::int64_t id = writePresetRow(session, overwrite ? std::optional(existing->id) : std::nullopt);
        rewriteCompanions(session, id, keepOldScenes);
        transaction.commit();

        UpdateINITData(editor);
        editor.preset.ID = static_cast<std::int32_t>(id);
        editor.notifyChanged();
        followUp(session, id);
    } catch (const DatabaseError& e) {
        TellDatabaseError(session, e);
    }
}

}  // namespace tavlo
