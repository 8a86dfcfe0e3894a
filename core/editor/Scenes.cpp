#include "editor/Scenes.h"

#include <algorithm>

#include "editor/EditorSelection.h"
#include "base/MSBModule.h"
#include "db/Database.h"
#include "preset/PristinePreset.h"
#include "editor/EditorContext.h"
#include "editor/EditorState.h"
#include "editor/ImageSlots.h"
#include "db/PoolDatabase.h"
#include "ui/Prompter.h"

namespace tavlo {

namespace {

constexpr const char* kDatabaseError = "There has been a Database Error";

bool sameName(const std::string& a, const std::string& b) {
    return MSBModule::ToUpper(MSBModule::Trim(a)) == MSBModule::ToUpper(MSBModule::Trim(b));
}

int findScene(const WorkingPreset& preset, const std::string& name) {
    for (int i = 0; i < preset.SceneCount; ++i)
        if (sameName(preset.Scenes[i].Name, name)) return i;
    return -1;
}

// Lines of other presets' scenes that a list holds, to be kept on refill.
std::vector<ListState::Line> otherLines(const ListState& list) {
    std::vector<ListState::Line> out;
    for (const auto& line : list.lines())
        if (line.text.find("  - from") != std::string::npos) out.push_back(line);
    return out;
}

void refillWithNone(ListState& list, const WorkingPreset& preset) {
    const std::string selected = list.text();
    const auto others = otherLines(list);
    list.clear();
    list.addItem(kNoScene, -1);
    for (int i = 0; i < preset.SceneCount; ++i) list.addItem(preset.Scenes[i].Name, preset.ID);
    for (const auto& line : others) list.addItem(line.text, line.itemData);
    const int index = list.findText(selected);
    list.setListIndex(index >= 0 ? index : 0);
}

// Applies a change to both the preset and its pristine copy, so that a
// change that went straight to the pool doesn't count as an edit.
template <typename F>
void onBoth(EditorState& editor, F change) {
    change(editor.preset);
    change(editor.PristinePreset);
}

}  // namespace

bool MemoryImageOpen(const EditorContext& session) {
    return session.memImage.formOpen();
}

void RefillSceneLists(EditorState& editor) {
    const std::string selected = editor.SelectSceneCombo.text();
    editor.SelectSceneCombo.clear();
    for (int i = 0; i < editor.preset.SceneCount; ++i)
        editor.SelectSceneCombo.addItem(editor.preset.Scenes[i].Name, i);
    editor.SelectSceneCombo.setListIndex(editor.SelectSceneCombo.findText(selected));
    refillWithNone(editor.BSceneCombo, editor.preset);
    refillWithNone(editor.SelectPresetSceneCombo, editor.preset);
    editor.notifyChanged();
}

namespace {

// A scene belongs to a stored preset as the pool holds it.
bool presetTakesScenes(const EditorContext& session) {
    const WorkingPreset& preset = session.editor.preset;
    if (preset.ID != 0 && preset.ID == session.pool.InitializedPresetID()) {
        session.prompter.message("Cannot Make Scene",
                                 "You cannot add Scenes to the --Initialized-- Preset.  First store the Preset to the "
                                 "Pool with a different name and then try again.");
        return false;
    }
    if (INITDataChanged(session.editor)) {
        session.prompter.message("Cannot Make Scene",
                                 "The current Preset has been changed and not Stored.  You cannot make Scenes until "
                                 "the current changes have been Stored to the Pool.");
        return false;
    }
    if (preset.ID <= 0) {
        session.prompter.message("Cannot Store Scene",
                                 "You cannot store Scenes with this Preset UNTIL you've stored the Preset to the "
                                 "Preset Pool.  Please use the Store Preset to Pool button first.");
        return false;
    }
    return true;
}

// False, after telling the user, for a name the preset can't take.
bool sceneNameFree(const WorkingPreset& preset, const std::string& name, Prompter& prompter) {
    if (name[0] == '<') {
        prompter.message("Cannot Save Scene",
                         "You cannot start a Scene name with a '<' character.  That is a reserved character for "
                         "internal use");
    } else if (name == kEmptySceneName) {
        prompter.message("Cannot Make Scene",
                         "The Scene name '--Empty--' is reserved for System use.  Please choose another one.");
    } else if (findScene(preset, name) >= 0) {
        prompter.message("Cannot Make Scene", "The Scene Name '" + name + "' is already used for this Preset.");
    } else if (preset.SceneCount >= kSceneLimit) {
        prompter.message("Cannot Make Scene", "A Preset can hold no more than 100 Scenes.");
    } else {
        return true;
    }
    return false;
}

void insertSceneRow(Database& db, std::int64_t presetID, const SceneDef& scene) {
    Statement insert = db.prepare(
        "INSERT INTO SceneRec (PresetREF, Name, Fader1, Fader2, Fader3, Fader4, Fader5, Fader6, Fader7, Fader8, "
        "Fader9, Fader10, Fader11, Fader12, Fader13, Fader14, Fader15, Fader16, CV1, CV2) VALUES (:PresetREF, "
        ":Name, :F1, :F2, :F3, :F4, :F5, :F6, :F7, :F8, :F9, :F10, :F11, :F12, :F13, :F14, :F15, :F16, :CV1, "
        ":CV2)");
    insert.bind(":PresetREF", presetID).bind(":Name", MSBModule::SafeDBString(scene.Name));
    for (int i = 0; i < 16; ++i) {
        const std::string parameter = ":F" + std::to_string(i + 1);
        insert.bind(parameter.c_str(), static_cast<int>(scene.Values[i]));
    }
    insert.bind(":CV1", static_cast<int>(scene.Values[16])).bind(":CV2", static_cast<int>(scene.Values[17]));
    insert.run();
}

}  // namespace

bool MakeScene(const EditorContext& session) {
    EditorState& editor = session.editor;
    Prompter& prompter = session.prompter;
    WorkingPreset& preset = editor.preset;
    if (!presetTakesScenes(session)) return false;
    const std::string prompt =
        MemoryImageOpen(session)
            ? "Enter a short name for this Scene.  NOTE that Scene info is not sent to the PC1600(x) unless you're "
              "working with an entire Memory Image, as Scene information is bound to the stored presets.  Presets "
              "you make in this mode will be stored in the database however, for inclusion in a Memory Image later:"
            : "Enter a short name for this Scene:";
    const auto answer = prompter.input("Make a New Scene", prompt);
    if (!answer) return false;
    const std::string name = MSBModule::Trim(*answer);
    if (name.empty() || !sceneNameFree(preset, name, prompter)) return false;
    SceneDef scene;
    scene.Name = name;
    for (int i = 0; i < kFaderCount; ++i)
        scene.Values[i] = static_cast<std::int16_t>(2 * PCSliderPosition(preset.Faders[i]));
    try {
        insertSceneRow(session.pool.db(), preset.ID, scene);
    } catch (const DatabaseError&) {
        prompter.message("Database Error", kDatabaseError);
        return false;
    }
    onBoth(editor, [&](WorkingPreset& p) {
        p.Scenes[p.SceneCount] = scene;
        ++p.SceneCount;
    });
    RefillSceneLists(editor);
    editor.SelectSceneCombo.setListIndex(editor.SelectSceneCombo.findText(name));
    editor.notifyChanged();
    return true;
}

void SelectScene(EditorState& editor, int listIndex) {
    if (listIndex < 0 || listIndex >= editor.preset.SceneCount) return;
    editor.SelectSceneCombo.setListIndex(listIndex);
    SceneDef& scene = editor.preset.Scenes[listIndex];
    for (int i = 0; i < kFaderCount; ++i) {
        FaderDef& fader = editor.preset.Faders[i];
        const ValueRange range = PCSliderRange(fader);
        int v = std::clamp<int>(scene.Values[i], 2 * range.low, 2 * range.high);
        scene.Values[i] = static_cast<std::int16_t>(v);
        fader.Value = static_cast<std::int16_t>(FaderValueAt(fader, v / 2));
    }
    editor.notifyChanged();
}

bool RenameScene(const EditorContext& session) {
    EditorState& editor = session.editor;
    Prompter& prompter = session.prompter;
    const int selected = editor.SelectSceneCombo.listIndex();
    if (selected < 0 || selected >= editor.preset.SceneCount) return false;
    const std::string oldName = editor.preset.Scenes[selected].Name;
    const auto answer = prompter.input("Rename Scene", "Enter the new Name of this Scene", oldName);
    if (!answer) return false;
    const std::string name = MSBModule::Trim(*answer);
    if (name.empty() || name == oldName) return false;
    if (name[0] == '<' || name == kEmptySceneName) {
        prompter.message("Cannot Rename Scene", "The Scene name '" + name + "' is reserved for System use.  Please choose another one.");
        return false;
    }
    const int clash = findScene(editor.preset, name);
    if (clash >= 0 && clash != selected) {
        prompter.message("Cannot Rename Scene", "The Scene Name '" + name + "' is already used for this Preset.");
        return false;
    }
    const std::int64_t id = editor.preset.ID;
    try {
        Database& db = session.pool.db();
        Transaction transaction(db);
        const std::string safeNew = MSBModule::SafeDBString(name);
        const std::string safeOld = MSBModule::SafeDBString(oldName);
        db.prepare("UPDATE SceneRec SET Name = :New WHERE Name = :Old AND PresetREF = :ID")
            .bind(":New", safeNew).bind(":Old", safeOld).bind(":ID", id).run();
        db.prepare("UPDATE PresetRec SET SetupScene = :New WHERE SetupScene = :Old AND SetupScenePreset = :ID")
            .bind(":New", safeNew).bind(":Old", safeOld).bind(":ID", id).run();
        db.prepare("UPDATE ButtonRec SET Scene = :New WHERE Scene = :Old AND ScenePreset = :ID")
            .bind(":New", safeNew).bind(":Old", safeOld).bind(":ID", id).run();
        transaction.commit();
    } catch (const DatabaseError&) {
        prompter.message("Database Error", kDatabaseError);
        return false;
    }
    onBoth(editor, [&](WorkingPreset& p) {
        p.Scenes[selected].Name = name;
        if (p.SetupScene == oldName && p.SetupScenePreset == id) p.SetupScene = name;
        for (ButtonDef& b : p.Buttons)
            if (b.Scene == oldName && b.ScenePreset == id) b.Scene = name;
    });
    auto renameLine = [&](ListState& list) {
        for (int i = 0; i < list.listCount(); ++i)
            if (list.list(i) == oldName) list.setLine(i, name, list.itemData(i));
    };
    renameLine(editor.SelectSceneCombo);
    renameLine(editor.BSceneCombo);
    renameLine(editor.SelectPresetSceneCombo);
    editor.notifyChanged();
    return true;
}

bool DeleteScene(const EditorContext& session) {
    EditorState& editor = session.editor;
    Prompter& prompter = session.prompter;
    const int selected = editor.SelectSceneCombo.listIndex();
    if (selected < 0 || selected >= editor.preset.SceneCount) return false;
    if (INITDataChanged(editor)) {
        prompter.message("Cannot Delete Scene",
                         "The current Preset has been changed and not Stored.  You cannot delete Scenes until the "
                         "current changes have been Stored to the Pool.");
        return false;
    }
    const std::string name = editor.preset.Scenes[selected].Name;
    if (prompter.message("Delete Scene?", "About to delete the Scene '" + name + "'.  Are you sure?",
                         MessageButtons::YesNo) != MessageAnswer::Yes)
        return false;
    const std::int64_t id = editor.preset.ID;
    try {
        Database& db = session.pool.db();
        Transaction transaction(db);
        const std::string safe = MSBModule::SafeDBString(name);
        db.prepare("DELETE FROM SceneRec WHERE Name = :Name AND PresetREF = :ID").bind(":Name", safe).bind(":ID", id).run();
        db.prepare("UPDATE PresetRec SET SetupScene = '<none>', SetupScenePreset = -1 WHERE SetupScene = :Name AND "
                   "SetupScenePreset = :ID")
            .bind(":Name", safe).bind(":ID", id).run();
        db.prepare("UPDATE ButtonRec SET Function = 0, Scene = '<none>', ScenePreset = -1 WHERE Scene = :Name AND "
                   "ScenePreset = :ID")
            .bind(":Name", safe).bind(":ID", id).run();
        transaction.commit();
    } catch (const DatabaseError&) {
        prompter.message("Database Error", kDatabaseError);
        return false;
    }
    onBoth(editor, [&](WorkingPreset& p) {
        for (int i = selected; i + 1 < p.SceneCount; ++i) p.Scenes[i] = p.Scenes[i + 1];
        p.Scenes[p.SceneCount - 1] = SceneDef{};
        --p.SceneCount;
        if (p.SetupScene == name && p.SetupScenePreset == id) {
            p.SetupScene = kNoScene;
            p.SetupScenePreset = -1;
        }
        for (ButtonDef& b : p.Buttons)
            if (b.Scene == name && b.ScenePreset == id) {
                b.Function = 0;
                b.Scene = kNoScene;
                b.ScenePreset = -1;
            }
    });
    if (MemoryImageOpen(session) && session.memImage.followUps.FillSceneList) session.memImage.followUps.FillSceneList();
    editor.SelectSceneCombo.removeItem(selected);
    for (ListState* list : {&editor.BSceneCombo, &editor.SelectPresetSceneCombo}) {
        const int line = list->findText(name);
        if (line >= 0) list->removeItem(line);
        if (list->listIndex() < 0 && list->listCount() > 0) list->setListIndex(0);
    }
    // The button frame may show a button the deletion just turned Off; left
    // as it was, it would still offer "Send Scene" and write that back.
    if (editor.ShownFrame == EditorFrame::Button) ShowButtonParams(editor, editor.CurrentButton);
    RedrawCaptions(editor);
    editor.notifyChanged();
    return true;
}

void CopyScene(EditorState& editor) {
    const int selected = editor.SelectSceneCombo.listIndex();
    if (selected < 0 || selected >= editor.preset.SceneCount) return;
    const SceneDef& scene = editor.preset.Scenes[selected];
    EditorClipboard& clip = editor.Clipboard;
    clip.HoldsScene = true;
    clip.SceneValues = {};
    // 17 values: the last CV is not part of a copied scene.
    for (int i = 0; i < 17; ++i) clip.SceneValues[i] = scene.Values[i];
    clip.SceneName = scene.Name;
    editor.PasteButtonCaption = "Paste Scene '" + scene.Name + "'";
    editor.PasteButtonVisible = true;
    editor.notifyChanged();
}

void ChooseButtonScene(EditorState& editor, int line) {
    if (editor.ShowingParams || line < 0 || line >= editor.BSceneCombo.listCount()) return;
    editor.BSceneCombo.setListIndex(line);
    ButtonDef& button = editor.preset.Buttons.at(editor.CurrentButton);
    const std::string& text = editor.BSceneCombo.list(line);
    if (text == kNoScene) {
        button.Scene = kNoScene;
        button.ScenePreset = -1;
    } else if (text.find("  - from") != std::string::npos) {
        button.Scene = SceneNameOfLine(text);
        button.ScenePreset = static_cast<std::int32_t>(editor.BSceneCombo.itemData(line));
    } else {
        button.Scene = text;
        button.ScenePreset = editor.preset.ID;
    }
    editor.notifyChanged();
}

void ChooseSetupScene(EditorState& editor, int line) {
    if (editor.ShowingParams || line < 0 || line >= editor.SelectPresetSceneCombo.listCount()) return;
    editor.SelectPresetSceneCombo.setListIndex(line);
    WorkingPreset& preset = editor.preset;
    const std::string& text = editor.SelectPresetSceneCombo.list(line);
    if (text == kNoScene) {
        preset.SetupScene = kNoScene;
        preset.SetupScenePreset = -1;
    } else if (text.find("  - from") != std::string::npos) {
        preset.SetupScene = SceneNameOfLine(text);
        preset.SetupScenePreset = static_cast<std::int32_t>(editor.SelectPresetSceneCombo.itemData(line));
    } else {
        preset.SetupScene = text;
        preset.SetupScenePreset = preset.ID;
    }
    editor.notifyChanged();
}

bool FillSceneList(const EditorContext& session, const std::string& excludedPreset, ListState& sceneList) {
    sceneList.clear();
    try {
        Statement query = session.pool.db().prepare(
            "SELECT PresetRec.Name, SceneRec.Name AS SceneName, SceneRec.ID AS SceneID FROM PresetRec, SceneRec "
            "WHERE PresetRec.ID = SceneRec.PresetREF AND PresetRec.Name <> :Excluded "
            "ORDER BY PresetRec.Name, SceneRec.Name");
        query.bind(":Excluded", MSBModule::SafeDBString(excludedPreset));
        while (query.step())
            sceneList.addItem("'" + MSBModule::DisplayDBString(query.getText("SceneName")) + "'  - from Preset '" +
                                  MSBModule::DisplayDBString(query.getText("Name")) + "'",
                              query.getInt("SceneID"));
    } catch (const DatabaseError&) {
        session.prompter.message("Database Error", kDatabaseError);
        return false;
    }
    if (sceneList.listCount() == 0) {
        session.prompter.message("Cannot Select a Scene", "There are no Scenes in the Preset Pool.");
        return false;
    }
    return true;
}

void AddOtherScene(const EditorContext& session, bool forButton, std::int64_t sceneID) {
    EditorState& editor = session.editor;
    std::string sceneName, presetName;
    std::int64_t owner = -1;
    try {
        Statement query = session.pool.db().prepare(
            "SELECT SceneRec.PresetREF, SceneRec.Name AS SceneName, PresetRec.Name AS PresetName FROM SceneRec, "
            "PresetRec WHERE SceneRec.ID = :ID AND PresetRec.ID = SceneRec.PresetREF");
        query.bind(":ID", sceneID);
        if (!query.step()) return;
        owner = query.getInt("PresetREF");
        sceneName = MSBModule::DisplayDBString(query.getText("SceneName"));
        presetName = MSBModule::DisplayDBString(query.getText("PresetName"));
    } catch (const DatabaseError&) {
        session.prompter.message("Database Error", kDatabaseError);
        return;
    }
    // The same form as the load of a preset writes, so that a reloaded
    // preset finds the line again.
    const std::string line = sceneName + "  - from " + MSBModule::Trim(presetName);
    ListState& list = forButton ? editor.BSceneCombo : editor.SelectPresetSceneCombo;
    int index = -1;
    for (int i = 0; i < list.listCount(); ++i)
        if (list.list(i) == line && list.itemData(i) == owner) index = i;
    if (index < 0) {
        list.addItem(line, owner);
        index = list.listCount() - 1;
    }
    list.setListIndex(index);
    if (forButton) {
        ButtonDef& button = editor.preset.Buttons.at(editor.CurrentButton);
        button.Scene = sceneName;
        button.ScenePreset = static_cast<std::int32_t>(owner);
    } else {
        editor.preset.SetupScene = sceneName;
        editor.preset.SetupScenePreset = static_cast<std::int32_t>(owner);
    }
    editor.notifyChanged();
}

}  // namespace tavlo

namespace tavlo {

void PickOtherScene(const EditorContext& session, bool forButton) {
    ListState scenes;
    if (!FillSceneList(session, session.editor.preset.Name, scenes)) return;
    ChoiceRequest request;
    request.dialogName = "AllScenesForm";
    request.title = "Scenes in the Preset Pool";
    request.text = "Choose a Scene of another Preset:";
    std::vector<std::string> lines;
    for (const auto& line : scenes.lines()) lines.push_back(line.text);
    request.lists = {{"SceneList", "", lines, -1, 0}};
    request.buttons = {{"OKButton", "&OK"}, {"CancelButton", "C&ancel"}};
    for (;;) {
        const ChoiceAnswer answer = session.prompter.choose(request);
        if (answer.button != 0) return;
        const int line = answer.lists.empty() ? -1 : answer.lists[0];
        if (line >= 0 && line < scenes.listCount()) {
            AddOtherScene(session, forButton, scenes.itemData(line));
            return;
        }
        session.prompter.message("Cannot Update Preset",
                                 "No Scene has been selected.  Please choose one or click the CANCEL button.");
    }
}

}  // namespace tavlo
