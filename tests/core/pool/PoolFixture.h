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
#include "pool/PresetLoad.h"
#include "pool/PresetStore.h"
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
    std::string textOf(const std::string& sql, std::int64_t id) {
        Statement q = db().prepare(sql);
        q.bind(":ID", id);
        return q.step() ? q.getText(0) : std::string("<no row>");
    }
    void run(const std::string& sql, std::int64_t id) { db().prepare(sql).bind(":ID", id).run(); }
    std::int64_t intOf(const std::string& sql, std::int64_t id) {
        Statement q = db().prepare(sql);
        q.bind(":ID", id);
        return q.step() ? q.getInt(0) : -99999;
    }

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
    // Answers the next name-clash dialogue by pressing `button` with `newName` typed.
    void answerClash(ClashButton button, const std::string& newName = {}) {
        prompter.expectChoice("MemImageOrPoolChoiceForm", [button, newName](const ChoiceRequest&) {
            return ChoiceAnswer{.button = static_cast<int>(button), .fields = {newName}};
        });
    }
    // Makes button `button` of stored preset `owner` send scene `scene` of `target`.
    void sendScene(std::int64_t owner, int button, const std::string& scene, std::int64_t target) {
        db().prepare("UPDATE ButtonRec SET Function = 9, Name = 'Go', Scene = :Scene, ScenePreset = :Target "
                     "WHERE PresetREF = :Owner AND \"Index\" = :Index")
            .bind(":Scene", scene)
            .bind(":Target", target)
            .bind(":Owner", owner)
            .bind(":Index", button)
            .run();
    }
};

}  // namespace tavlo::testing
