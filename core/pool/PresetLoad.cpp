#include "pool/PresetLoad.h"

#include "editor/InitPreset.h"
#include "editor/PresetOperations.h"
#include "db/ControlRows.h"
#include "preset/PristinePreset.h"
#include "base/MSBModule.h"
#include "sysex/PresetCodes.h"
#include "pool/PoolContext.h"
#include "editor/EditorState.h"
#include "pool/PoolFlags.h"
#include "pool/PoolFormState.h"
#include "editor/ImageSlots.h"
#include "db/PoolDatabase.h"
#include "midilink/MidiConfig.h"
#include "ui/Prompter.h"

namespace tavlo {
namespace {

using MSBModule::DisplayDBString;
using MSBModule::Trim;

std::int16_t i16(const Statement& row, const char* column) { return static_cast<std::int16_t>(row.getInt(column)); }

void readSubstrings(Statement& rows, std::int64_t mapRef, MessageStringSet& set) {
    rows.reset();
    rows.bind(":REF", mapRef);
    set.Count = 0;
    while (rows.step() && set.Count < kSubstringLimit) {
        MessageSubstring& s = set.Slots[set.Count++];
        s.CommandType = i16(rows, "CommandType");
        s.CommandChannel = i16(rows, "CommandChannel");
        s.Value1 = i16(rows, "Value1");
        s.Value2 = i16(rows, "Value2");
        s.SysexMake = rows.getText("SysexMake");
        s.SysexModel = rows.getText("SysexModel");
        s.EnteredString = rows.getText("EnteredString");
        s.ListItem = rows.getText("ListItem");
        s.OwnCheck = i16(rows, "OwnCheck");
    }
}

std::string presetName(Database& db, std::int64_t id) {
    Statement row = db.prepare("SELECT Name FROM PresetRec WHERE ID = :ID");
    row.bind(":ID", id);
    return row.step() ? Trim(DisplayDBString(row.getText("Name"))) : std::string();
}

// "Scene  [p:07]" of the memory image's scene list, as a scene name.
std::string sceneOfImageLine(const std::string& line) {
    std::string text = line.substr(0, line.find("[p:"));
    if (text.size() > 5 && text[2] == ':' && text.compare(3, 2, "  ") == 0) text = text.substr(5);
    return Trim(text);
}

// A reference to a scene of another preset gets its own line, once.
void addForeignSceneLine(Database& db, ListState& list, const std::string& scene, std::int64_t owner) {
    const std::string line = scene + "  - from " + presetName(db, owner);
    if (list.findText(line) < 0) list.addItem(line, owner);
}

void selectSetupScene(const PoolContext& session, std::int64_t id) {
    EditorState& editor = session.editor;
    ListState& combo = editor.SelectPresetSceneCombo;
    const std::string& scene = editor.preset.SetupScene;
    const std::int64_t owner = editor.preset.SetupScenePreset;
    if (scene == kNoScene || scene.empty()) {
        combo.setListIndex(0);
        return;
    }
    if (session.memImage.MemoryImageBound) {
        for (int i = 1; i < combo.listCount(); ++i)
            if (combo.itemData(i) == owner && sceneOfImageLine(combo.list(i)) == scene) {
                combo.setListIndex(i);
                return;
            }
        combo.setListIndex(0);
        return;
    }
    if (owner > 0 && owner != id) {
        const std::string line = scene + "  - from " + presetName(session.pool.db(), owner);
        if (combo.findText(line) < 0) combo.addItem(line, owner);
        combo.setListIndex(combo.findText(line));
        return;
    }
    const int own = combo.findText(scene);
    combo.setListIndex(own >= 0 ? own : 0);
}

std::string buttonTag(int function) {
    switch (function) {
        case 1: return "mute";
        case 2: return "solo";
        case 4: return "note";
        case 6: return "pr/r";
        case 7: return "togl";
        default: return {};
    }
}

}  // namespace

namespace {

// A row that vanished under a load: the user is told, and the program is
// asked to end (the main window does, through its ordinary quit).
bool reportFatalDatabaseError(const PoolContext& session) {
    session.editor.PristineComparison = true;
    session.flags.FatalDatabaseError = true;
    session.prompter.message("Database Error", "There has been a Database Error");
    session.editor.notifyChanged();
    return false;
}

// The preset row: name, setup scene, notes, data wheel, setup string and
// channels. False when the row is gone.
bool readPresetRow(const PoolContext& session, Database& db, std::int64_t id) {
    WorkingPreset& preset = session.editor.preset;
    const bool pc1600 = session.midi.PC1600Model;
    Statement row = db.prepare("SELECT * FROM PresetRec WHERE ID = :ID");
    row.bind(":ID", id);
    if (!row.step()) return false;
    preset.Name = Trim(DisplayDBString(row.getText("Name")));
    preset.SetupScene = row.isNull("SetupScene") ? std::string() : Trim(DisplayDBString(row.getText("SetupScene")));
    preset.SetupScenePreset = static_cast<std::int32_t>(row.getInt("SetupScenePreset"));
    if (pc1600 && (preset.SetupScenePreset > 0 || (preset.SetupScene != kNoScene && !preset.SetupScene.empty()))) {
        session.prompter.message(
            "Incompatibility to PC1600",
            "This Preset has a Setup Scene, which is incompatible with your PC1600 (non-X) model.  The Setup "
            "Scene will be set to <none>.  Be sure to Store this Preset in the Pool if you'd like this "
            "compatibility change to be permanent.");
        preset.SetupScene = kNoScene;
        preset.SetupScenePreset = -1;
    }
    preset.ID = static_cast<std::int32_t>(id);
    preset.Notes = Trim(DisplayDBString(row.getText("Notes")));
    const int wheel = static_cast<int>(row.getInt("DataWheelLink"));
    preset.DataWheelLink = static_cast<std::int16_t>(wheel >= 0 && wheel < PresetCodes::kDataWheelEntries ? wheel : 0);
    preset.SetupString = row.isNull("SetupString") ? std::string() : Trim(row.getText("SetupString"));
    const std::string map = row.getBlob("SetupChannelMap");
    for (int i = 0; i < kSetupChannelCount; ++i) {
        auto at = [&](int k) -> std::int16_t {
            const std::size_t pos = static_cast<std::size_t>(4 * i + k);
            return pos < map.size() ? static_cast<std::int16_t>(static_cast<unsigned char>(map[pos])) : 0;
        };
        preset.SetupChannels[i] = {at(0), pc1600 ? std::int16_t{0} : at(1), at(2), at(3)};
    }
    return true;
}

// The preset's scenes and the scene lists: a preset bound to the memory
// image picks its scenes from the image's lines, any other from its own.
void readScenes(const PoolContext& session, Database& db, std::int64_t id) {
    EditorState& editor = session.editor;
    WorkingPreset& preset = editor.preset;
    const bool bound = session.memImage.MemoryImageBound;
    editor.SelectSceneCombo.clear();
    for (ListState* list : {&editor.SelectPresetSceneCombo, &editor.BSceneCombo}) {
        list->clear();
        list->addItem(kNoScene, -1);
    }
    if (bound) {
        for (const ListState::Line& line : session.memImage.SceneList.lines()) {
            if (line.text.find(kEmptySceneName) != std::string::npos) continue;
            editor.SelectPresetSceneCombo.addItem(line.text, line.itemData);
            editor.BSceneCombo.addItem(line.text, line.itemData);
        }
    }
    Statement scenes = db.prepare("SELECT * FROM SceneRec WHERE PresetREF = :ID ORDER BY ID");
    scenes.bind(":ID", id);
    preset.SceneCount = 0;
    while (scenes.step() && preset.SceneCount < kSceneLimit) {
        SceneDef& scene = preset.Scenes[preset.SceneCount++];
        scene.Name = DisplayDBString(scenes.getText("Name"));
        for (int v = 0; v < 16; ++v) scene.Values[v] = i16(scenes, ("Fader" + std::to_string(v + 1)).c_str());
        scene.Values[16] = i16(scenes, "CV1");
        scene.Values[17] = i16(scenes, "CV2");
        editor.SelectSceneCombo.addItem(scene.Name, id);
        if (!bound) {
            editor.SelectPresetSceneCombo.addItem(scene.Name, id);
            editor.BSceneCombo.addItem(scene.Name, id);
        }
    }
    if (editor.SelectSceneCombo.listCount() > 0) editor.SelectSceneCombo.setListIndex(0);
    selectSetupScene(session, id);
    editor.BSceneCombo.setListIndex(0);
}

// Faders, filled in row order from 0 whatever their Index says.
void readFaders(EditorState& editor, Database& db, std::int64_t id) {
    Statement faderStrings =
        db.prepare("SELECT * FROM MessageStringRec WHERE MapType = 'F' AND MapREF = :REF ORDER BY \"Index\"");
    Statement faders = db.prepare("SELECT * FROM FaderRec WHERE PresetREF = :ID ORDER BY \"Index\"");
    faders.bind(":ID", id);
    int index = 0;
    while (faders.step() && index < kFaderCount) {
        FaderDef& f = editor.preset.Faders[index];
        ReadFaderRow(faders, f);
        std::string caption = f.Name;
        if (f.Function >= 1 && f.Function <= 3)
            caption += "  (" + std::string(PresetCodes::kFaderFunctions[f.Function].tag) + ")";
        editor.FaderLabel[index] = caption;
        readSubstrings(faderStrings, faders.getInt("ID"), editor.preset.FaderStrings[index]);
        ++index;
    }
}

// Buttons in row order; on the PC1600 the functions it lacks are turned off,
// with one message for all of them.
void readButtons(const PoolContext& session, Database& db, std::int64_t id) {
    EditorState& editor = session.editor;
    WorkingPreset& preset = editor.preset;
    const bool pc1600 = session.midi.PC1600Model;
    Statement strings1 = db.prepare(
        "SELECT * FROM MessageStringRec WHERE MapType = 'B' AND WhichString = 1 AND MapREF = :REF ORDER BY \"Index\"");
    Statement strings2 = db.prepare(
        "SELECT * FROM MessageStringRec WHERE MapType = 'B' AND WhichString = 2 AND MapREF = :REF ORDER BY \"Index\"");
    Statement buttons = db.prepare("SELECT * FROM ButtonRec WHERE PresetREF = :ID ORDER BY \"Index\"");
    buttons.bind(":ID", id);
    int index = 0;
    bool incompatible = false;
    while (buttons.step() && index < kButtonCount) {
        ButtonDef& b = preset.Buttons[index];
        ReadButtonRow(buttons, b);
        if (pc1600 && (b.Function == 8 || b.Function == 9)) {
            b.Function = 0;
            incompatible = true;
        }
        if (!session.memImage.MemoryImageBound && b.Scene != kNoScene && !b.Scene.empty() && b.ScenePreset > 0 &&
            b.ScenePreset != id)
            addForeignSceneLine(db, editor.BSceneCombo, b.Scene, b.ScenePreset);
        editor.PCButton[index] = PresetCodes::CaptionWithTag(b.Name, buttonTag(b.Function));
        const std::int64_t buttonId = buttons.getInt("ID");
        readSubstrings(strings1, buttonId, preset.ButtonStrings1[index]);
        readSubstrings(strings2, buttonId, preset.ButtonStrings2[index]);
        ++index;
    }
    if (incompatible)
        session.prompter.message(
            "PC1600 Incompatibility",
            "Some Buttons on this Preset are set to SEND FADER and SEND SCENE, which are not compatible with your "
            "PC1600 (non-X) version.  Those Button functions have been set to OFF.  Be sure to Store this Preset "
            "in the Pool if you'd like these compatibility changes to be permanent.");
}

// The setup string's substrings and the devices the preset is associated with.
void readSetupAndAssociations(EditorState& editor, Database& db, std::int64_t id) {
    Statement setupStrings =
        db.prepare("SELECT * FROM MessageStringRec WHERE MapType = 'P' AND MapREF = :REF ORDER BY \"Index\"");
    readSubstrings(setupStrings, id, editor.preset.SetupStrings);
    Statement assoc = db.prepare("SELECT * FROM MakeModelAssocRec WHERE PresetREF = :ID ORDER BY Make, Model");
    assoc.bind(":ID", id);
    editor.AssociatedList.clear();
    while (assoc.step())
        editor.AssociatedList.addItem(Trim(DisplayDBString(assoc.getText("Make"))) + ": " +
                                      Trim(DisplayDBString(assoc.getText("Model"))));
}

}  // namespace

bool LoadPC1600xFormFromPool(const PoolContext& session, std::int64_t id) {
    EditorState& editor = session.editor;
    Database& db = session.pool.db();

    editor.CurrentFader = 0;
    editor.PristineComparison = false;
    InitializePreset(session);
    editor.PristineComparison = false;

    try {
        if (!readPresetRow(session, db, id)) return reportFatalDatabaseError(session);
        readScenes(session, db, id);
        readFaders(editor, db, id);
        readButtons(session, db, id);
        readSetupAndAssociations(editor, db, id);
    } catch (const DatabaseError&) {
        return reportFatalDatabaseError(session);
    }

    SelectFader(editor, 0);
    editor.PristineComparison = true;
    UpdateINITData(editor);
    editor.notifyChanged();
    return true;
}

}  // namespace tavlo
