#pragma once
#include <gtest/gtest.h>

#include <string>

#include "TestProgram.h"
#include "db/Database.h"
#include "db/PoolDatabase.h"
#include "editor/EditorState.h"
#include "editor/InitPreset.h"
#include "memimage/MemImageState.h"
#include "midilink/MidiConfig.h"
#include "pool/MemImageOrPoolChoiceForm.h"
#include "pool/PoolFlags.h"
#include "pool/PoolFormState.h"
#include "pool/PoolList.h"
#include "pool/PresetLoad.h"
#include "pool/PresetStore.h"
#include "pool/PresetSysexFile.h"
#include "shell/Program.h"
#include "ui/Prompter.h"

namespace tavlo::testing {

// A session on a fresh pool, with helpers to put presets into it the way
// the editor does.
class PoolFixture : public ::testing::Test {
public:  // open to the table rows of the tests
    TestProgram t;
    Program& s = *t;
    ScriptedPrompter& prompter = t.prompter;
    Database& db() { return s.pool.db(); }

    std::int64_t count(const std::string& sql) { return db().queryInt(sql); }
    std::int64_t idOf(const std::string& storedName) {
        Statement find = db().prepare("SELECT ID FROM PresetRec WHERE Name = :Name");
        find.bind(":Name", storedName);
        return find.step() ? find.getInt(0) : -1;
    }
    // The first column of `sql`, with :ID bound to `id`.
    std::string textOf(const std::string& sql, std::int64_t id) {
        Statement q = db().prepare(sql);
        q.bind(":ID", id);
        return q.step() ? q.getText(0) : std::string("<no row>");
    }
    std::int64_t intOf(const std::string& sql, std::int64_t id) {
        Statement q = db().prepare(sql);
        q.bind(":ID", id);
        return q.step() ? q.getInt(0) : -99999;
    }
    void run(const std::string& sql, std::int64_t id) { db().prepare(sql).bind(":ID", id).run(); }
    std::int64_t rows(const std::string& table) { return count("SELECT COUNT(*) FROM " + table); }

    // A fresh editor preset with a name and `scenes` scenes.
    void newPreset(const std::string& name, int scenes = 0) {
        InitializePreset(s);
        s.editor.preset.Name = name;
        for (int i = 0; i < scenes; ++i) {
            SceneDef& scene = s.editor.preset.Scenes[i];
            scene.Name = "Scene " + std::to_string(i + 1);
            for (int v = 0; v < kFaderCount; ++v) scene.Values[v] = static_cast<std::int16_t>(2 * (i + v));
        }
        s.editor.preset.SceneCount = static_cast<std::int16_t>(scenes);
    }
    // Stores a new preset that asks nothing; returns its ID.
    std::int64_t storeNew(const std::string& name, int scenes = 0) {
        newPreset(name, scenes);
        StoreInPoolButton(s);
        return s.editor.preset.ID;
    }
    // The editor's setup scene: `scene` of stored preset `owner`, picked from its list.
    void pickSetupScene(std::int64_t owner, const std::string& ownerName, const std::string& scene) {
        s.editor.SelectPresetSceneCombo.addItem(scene + "  - from " + ownerName, owner);
        s.editor.SelectPresetSceneCombo.setListIndex(1);
        s.editor.preset.SetupScene = scene;
        s.editor.preset.SetupScenePreset = static_cast<std::int32_t>(owner);
    }
    // Selects a preset's line in the pool list, ordered by name.
    void select(std::int64_t id) {
        s.poolForm.OrderOption = PoolOrder::ByName;
        ReloadPoolList(s);
        const int line = s.poolForm.PoolList.findItemData(id);
        ASSERT_GE(line, 0) << id;
        SelectPoolLine(s, line);
    }
    // Stores a preset with something in every kind of control and writes it to a file.
    std::string exported(const std::string& name) {
        newPreset(name);
        WorkingPreset& p = s.editor.preset;
        p.Faders[0] = FaderDef{"Volume", 0, 1, 0, 127, 3, 7, -1, 1, "", 0, std::string(18, ' '), ""};
        p.Faders[16] = FaderDef{"CV", 0, 3, 0, 300, 16, 0, -1, 0, "B0-gc 07 pr", 1, std::string(18, ' '), ""};
        p.FaderStrings[16].Slots[0].EnteredString = "B0-gc 07 pr";
        p.FaderStrings[16].Count = 1;
        p.Buttons[2] = ButtonDef{"Prog", 3, 4, 12, 127, 60, "", "", kNoScene, -1, ""};
        p.DataWheelLink = 2;
        p.SetupChannels[5] = {3, 0, 8, 100};
        StoreInPoolButton(s);
        const std::string path = t.dir.file(name + ".syx");
        EXPECT_TRUE(WritePresetSysexFile(s, s.editor.preset.ID, path));
        return path;
    }
    // Answers the next name-clash dialogue by pressing `button` with `newName` typed.
    void answerClash(ClashButton button, const std::string& newName = {}) {
        prompter.expectChoice("MemImageOrPoolChoiceForm", [button, newName](const ChoiceRequest& request) {
            EXPECT_FALSE(request.closable) << "only its buttons end the dialogue";
            return ChoiceAnswer{.button = static_cast<int>(button), .fields = {newName}};
        });
    }
    // Makes button `button` of stored preset `owner` send scene `scene` of `target`.
    void sendScene(std::int64_t owner, int button, const std::string& scene, std::int64_t target) {
        db().prepare("UPDATE ButtonRec SET Function = 9, Name = 'Go', Scene = :Scene, ScenePreset = :Target "
                     "WHERE PresetREF = :Owner AND \"Index\" = :Index")
            .bind(":Scene", scene).bind(":Target", target).bind(":Owner", owner).bind(":Index", button).run();
    }
    // Makes stored preset `owner`'s setup scene `scene` of `target`.
    void setupScene(std::int64_t owner, const std::string& scene, std::int64_t target) {
        db().prepare("UPDATE PresetRec SET SetupScene = :Scene, SetupScenePreset = :Target WHERE ID = :Owner")
            .bind(":Scene", scene).bind(":Target", target).bind(":Owner", owner).run();
    }
};

}  // namespace tavlo::testing
