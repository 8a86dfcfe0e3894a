#include "shell/Startup.h"

#include <tuple>

#include <gtest/gtest.h>

#include "TestProgram.h"
#include "shell/QuitMenu.h"
#include "shell/WindowStates.h"
#include "db/PoolDatabase.h"
#include "editor/EditorState.h"
#include "memimage/MemImageState.h"

using namespace tavlo;
using namespace tavlo::testing;

namespace {

TEST(Startup, ScenesOnTheInitializedPresetAreRemovedAndOthersKept) {
    TestProgram t;
    Database& db = t->pool.db();
    const auto initialized = t->pool.InitializedPresetID();
    db.exec("INSERT INTO PresetRec (Name, CreatedDate, UpdatedDate, SetupChannelMap) VALUES ('Mine', 'd', 'd', X'')");
    const auto mine = db.lastInsertId();
    for (auto owner : {initialized, initialized, mine}) {
        Statement s = db.prepare("INSERT INTO SceneRec (PresetREF, Name) VALUES (:Owner, 'Intro')");
        s.bind(":Owner", owner);
        s.run();
    }
    PrepareSession(*t);
    EXPECT_EQ(db.queryInt("SELECT count(*) FROM SceneRec"), 1);
    EXPECT_EQ(db.queryInt("SELECT PresetREF FROM SceneRec"), mine);
    EXPECT_EQ(t->editor.preset, WorkingPreset{});
    EXPECT_EQ(t->memImage.SceneList.list(99), "99:  --Empty--   [p:--]");
}

TEST(Startup, DamagedPoolShowsTheCriticalErrorAndRefuses) {
    TempDir dir;
    const std::string path = dir.file("Tavlo.mdb");
    {
        PoolDatabase pool;
        ASSERT_TRUE(pool.open(path).ok());
        pool.db().exec("DELETE FROM PresetRec WHERE Name = '--Initialized--'");
    }
    ScriptedPrompter prompter;
    prompter.expectMessage("CRITICAL ERROR", MessageAnswer::OK);
    PoolDatabase pool;
    EXPECT_FALSE(OpenPoolForStartup(pool, path, prompter));
    EXPECT_TRUE(prompter.done());
    const std::string& text = prompter.seen().at(0).text;
    EXPECT_EQ(text.rfind("The Tavlo Database is Corrupt (Error #101).  Please contact ", 0), 0u) << text;
    EXPECT_TRUE(text.ends_with(" for support.")) << text;
    EXPECT_FALSE(pool.isOpen());
}

TEST(WindowStates, QuitWritesEveryRowInOrderAndClosesThePool) {
    TestProgram t;
    const std::string path = t->pool.path();
    std::vector<WindowStateRow> rows;
    int n = 0;
    for (const auto& name : WindowStateNames()) rows.push_back({name, n * 10, n * 20, n % 3, n % 2 == 0, n - 1, "L" + std::to_string(n)}), ++n;
    t->pool.db().exec("INSERT INTO WindowStates (Window) VALUES ('stale')");

    EXPECT_TRUE(QuitMenu(*t, rows));
    EXPECT_FALSE(t->pool.isOpen());

    PoolDatabase reopened;
    ASSERT_TRUE(reopened.open(path).ok());
    const auto read = ReadWindowStates(reopened.db());
    ASSERT_EQ(read.size(), rows.size());
    EXPECT_EQ(read.front().Window, "MemImageForm");
    for (std::size_t i = 0; i < read.size(); ++i) {
        const auto& [window, left, top, state, visible, id, name] = read[i];
        const auto& r = rows[i];
        EXPECT_EQ(std::tie(window, left, top, state, visible, id, name),
                  std::tie(r.Window, r.Left, r.Top, r.WindowState, r.Visible, r.LoadedID, r.LoadedName));
    }
}

}  // namespace
