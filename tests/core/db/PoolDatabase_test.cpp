#include "db/PoolDatabase.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <fstream>

#include "TempDir.h"
#include "db/ControllerNames.h"
#include "db/Database.h"
#include "preset/WorkingPreset.h"

using namespace tavlo;
using tavlo::testing::TempDir;

namespace {

std::string fileBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

class NewPool : public ::testing::Test {
protected:
    void SetUp() override {
        path = dir.file("sub/folder/Tavlo.mdb");
        result = pool.open(path);
        ASSERT_TRUE(result.ok()) << result.detail;
    }
    Database& db() { return pool.db(); }

    TempDir dir;
    std::string path;
    PoolDatabase pool;
    PoolOpenResult result;
};

TEST_F(NewPool, IsCreatedWithSchemaVersionAndWal) {
    EXPECT_TRUE(result.created);
    EXPECT_EQ(db().userVersion(), kPoolSchemaVersion);
    Statement mode = db().prepare("PRAGMA journal_mode");
    ASSERT_TRUE(mode.step());
    EXPECT_EQ(mode.getText(0), "wal");
    for (std::string_view table : PoolTableNames()) {
        Statement s = db().prepare("SELECT count(*) FROM sqlite_master WHERE name = :Name");
        s.bind(":Name", table);
        ASSERT_TRUE(s.step());
        EXPECT_EQ(s.getInt(0), 1) << table;
    }
}

TEST_F(NewPool, InitializedPresetHasDefaultControls) {
    const auto id = pool.InitializedPresetID();
    ASSERT_GT(id, 0);
    Statement preset = db().prepare("SELECT * FROM PresetRec WHERE ID = :ID");
    preset.bind(":ID", id);
    ASSERT_TRUE(preset.step());
    EXPECT_EQ(preset.getText("SETUPSCENE"), "<none>");  // columns by name, any case
    EXPECT_EQ(preset.getInt("SetupScenePreset"), -1);
    EXPECT_EQ(preset.getInt("DataWheelLink"), 0);
    EXPECT_EQ(preset.getBlob("SetupChannelMap"), std::string(64, '\0'));

    Statement faders = db().prepare("SELECT * FROM FaderRec WHERE PresetREF = :ID ORDER BY \"Index\"");
    faders.bind(":ID", id);
    int count = 0;
    while (faders.step()) {
        EXPECT_EQ(faders.getInt("Index"), count);
        EXPECT_EQ(faders.getText("Name"), "");
        EXPECT_EQ(faders.getInt("Function"), 0);
        EXPECT_EQ(faders.getInt("Min"), 0);
        EXPECT_EQ(faders.getInt("Max"), 127);
        EXPECT_EQ(faders.getInt("Channel"), 16);
        EXPECT_EQ(faders.getInt("Polarity"), -1);
        EXPECT_EQ(faders.getText("MidiString"), "");
        EXPECT_EQ(faders.getText("MasterOf"), std::string(18, ' '));
        ++count;
    }
    EXPECT_EQ(count, kFaderCount);

    Statement buttons = db().prepare("SELECT * FROM ButtonRec WHERE PresetREF = :ID ORDER BY \"Index\"");
    buttons.bind(":ID", id);
    count = 0;
    while (buttons.step()) {
        EXPECT_EQ(buttons.getInt("Function"), 0);
        EXPECT_EQ(buttons.getInt("Channel"), 16);
        EXPECT_EQ(buttons.getInt("Velocity"), 127);
        EXPECT_EQ(buttons.getInt("Note"), 60);
        EXPECT_EQ(buttons.getText("Scene"), "<none>");
        ++count;
    }
    EXPECT_EQ(count, kButtonCount);
}

TEST_F(NewPool, InitializedImageFillsEverySlotWithTheInitializedPreset) {
    Statement slots = db().prepare(
        "SELECT m.\"Index\" AS Slot, m.PresetREF FROM MemoryImage2PresetMapRec m JOIN MemoryImageRec i "
        "ON i.ID = m.MemoryImageREF WHERE i.ImageName = '--Initialized--' ORDER BY m.\"Index\"");
    int slot = 0;
    while (slots.step()) {
        EXPECT_EQ(slots.getInt("Slot"), slot++);
        EXPECT_EQ(slots.getInt("PresetREF"), pool.InitializedPresetID());
    }
    EXPECT_EQ(slot, 50);
}

TEST_F(NewPool, SeedsControllerNamesAndSystemDevice) {
    Statement names = db().prepare("SELECT * FROM CCTable ORDER BY CCNum");
    int cc = 0;
    while (names.step()) {
        EXPECT_EQ(names.getInt("CCNum"), cc);
        EXPECT_EQ(names.getText("CCName"), ControllerName(cc));
        EXPECT_FALSE(names.getText("CCName").empty());
        ++cc;
    }
    EXPECT_EQ(cc, 128);
    EXPECT_EQ(ControllerName(7), "Channel Volume");
    EXPECT_EQ(ControllerName(3), "Undefined");
    EXPECT_EQ(ControllerName(123), "All Notes Off");
    EXPECT_EQ(db().queryInt("SELECT count(*) FROM MakeTable WHERE Make = 'UNASSOCIATED'"), 1);
    EXPECT_EQ(db().queryInt("SELECT count(*) FROM ModelTable WHERE Make = 'UNASSOCIATED' AND Model = 'DEVICE'"), 1);
    EXPECT_EQ(db().queryInt("SELECT count(*) FROM InitializedSysexTable"), 1);
    EXPECT_EQ(db().queryInt("SELECT count(*) FROM GlobalRec"), 0);
    EXPECT_EQ(db().queryInt("SELECT count(*) FROM MIDIConfigTable"), 0);
}

TEST_F(NewPool, NamesCompareWithoutCaseAndStayUnique) {
    Statement insert = db().prepare(
        "INSERT INTO PresetRec (Name, CreatedDate, UpdatedDate, SetupChannelMap) VALUES (:Name, 'd', 'd', X'')");
    insert.bind(":Name", "--INITIALIZED--");
    EXPECT_THROW(insert.run(), DatabaseError);
}

TEST_F(NewPool, TextKeepsWindows1252CharactersAndBlobsKeepBytes) {
    const std::string name = std::string("Caf") + static_cast<char>(0xE9) + static_cast<char>(151) + "x";
    std::string bytes;
    for (int b = 0; b < 64; ++b) bytes += static_cast<char>(b * 4);
    Statement insert = db().prepare(
        "INSERT INTO PresetRec (Name, CreatedDate, UpdatedDate, SetupChannelMap) VALUES (:Name, 'd', 'd', :Map)");
    insert.bind(":Name", name).bind(":Map", Blob{bytes});
    insert.run();
    Statement read = db().prepare("SELECT * FROM PresetRec WHERE ID = :ID");
    read.bind(":ID", db().lastInsertId());
    ASSERT_TRUE(read.step());
    EXPECT_EQ(read.getText("Name"), name);
    EXPECT_EQ(read.getBlob("SetupChannelMap"), bytes);
}

TEST_F(NewPool, TransactionRollsBackUnlessCommitted) {
    const auto before = db().queryInt("SELECT count(*) FROM DefaultsTable");
    {
        Transaction outer(db());
        db().exec("INSERT INTO DefaultsTable (Field, Value) VALUES ('Note', '60')");
        {
            Transaction inner(db());
            db().exec("INSERT INTO DefaultsTable (Field, Value) VALUES ('Velocity', '100')");
            inner.commit();
        }
        // no commit of the outer one
    }
    EXPECT_EQ(db().queryInt("SELECT count(*) FROM DefaultsTable"), before);
    {
        Transaction outer(db());
        db().exec("INSERT INTO DefaultsTable (Field, Value) VALUES ('Note', '60')");
        outer.commit();
    }
    EXPECT_EQ(db().queryInt("SELECT count(*) FROM DefaultsTable"), before + 1);
}

// A write that can't get the pool gives up before writing anything, as a
// PoolBusy the flows' own database-error handling doesn't swallow.
TEST(PoolWrites, ABusyPoolRefusesTheWholeWriteAtItsStart) {
    TempDir dir;
    Database holder, writer;
    holder.open(dir.file("p.db"), Database::Mode::ReadWriteCreate);
    holder.exec("PRAGMA journal_mode = WAL; CREATE TABLE T (x)");
    writer.open(dir.file("p.db"), Database::Mode::ReadWrite);
    sqlite3_busy_timeout(writer.handle(), 50);
    holder.exec("BEGIN IMMEDIATE");
    EXPECT_THROW(Transaction{writer}, PoolBusy);
    holder.exec("ROLLBACK");
    Transaction transaction(writer);
    writer.exec("INSERT INTO T VALUES (1)");
    transaction.commit();
    EXPECT_EQ(holder.queryInt("SELECT count(*) FROM T"), 1);
}

TEST_F(NewPool, IsSoundAndReopensWithoutCreatingAgain) {
    pool.close();
    EXPECT_TRUE(CheckPool(path).sound);
    PoolDatabase again;
    const auto reopened = again.open(path);
    ASSERT_TRUE(reopened.ok());
    EXPECT_FALSE(reopened.created);
    EXPECT_EQ(again.db().queryInt("SELECT count(*) FROM PresetRec"), 1);
}

// ---- Pools that must be refused, untouched ----

struct RefusedCase {
    const char* name;
    std::function<void(const std::string& path)> make;
    PoolStatus expected;
};

class RefusedPool : public ::testing::TestWithParam<RefusedCase> {};

void makePool(const std::string& path, const std::function<void(Database&)>& damage) {
    {
        PoolDatabase pool;
        ASSERT_TRUE(pool.open(path).ok());
        damage(pool.db());
    }
    // Fold the WAL back so the file on its own is the whole pool.
    Database db;
    db.open(path, Database::Mode::ReadWrite);
    db.exec("PRAGMA journal_mode = DELETE");
}

TEST_P(RefusedPool, IsRefusedAndNotModified) {
    TempDir dir;
    const std::string path = dir.file("pool.mdb");
    GetParam().make(path);
    const std::string before = fileBytes(path);
    PoolDatabase pool;
    const auto result = pool.open(path);
    EXPECT_EQ(result.status, GetParam().expected);
    EXPECT_FALSE(pool.isOpen());
    EXPECT_EQ(fileBytes(path), before);
    EXPECT_FALSE(CheckPool(path).sound);
    EXPECT_FALSE(PoolOpenMessage(result, path).text.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Files, RefusedPool,
    ::testing::Values(
        RefusedCase{"TextFile", [](const std::string& p) { std::ofstream(p) << "these are my notes, not a pool\n"; },
                    PoolStatus::NotSQLite},
        RefusedCase{"OtherSQLite",
                    [](const std::string& p) {
                        Database db;
                        db.open(p, Database::Mode::ReadWriteCreate);
                        db.exec("CREATE TABLE Recipes (Name TEXT)");
                    },
                    PoolStatus::NotAPool},
        RefusedCase{"NewerSchema",
                    [](const std::string& p) { makePool(p, [](Database& db) { db.setUserVersion(kPoolSchemaVersion + 1); }); },
                    PoolStatus::NewerSchema},
        RefusedCase{"NoInitializedPreset",
                    [](const std::string& p) {
                        makePool(p, [](Database& db) { db.exec("DELETE FROM PresetRec WHERE Name = '--Initialized--'"); });
                    },
                    PoolStatus::MissingInitialized}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(PoolMessages, CriticalErrorNamesSupport) {
    PoolOpenResult result;
    result.status = PoolStatus::MissingInitialized;
    const auto message = PoolOpenMessage(result, "x");
    EXPECT_EQ(message.title, "CRITICAL ERROR");
    EXPECT_EQ(message.text.rfind("The Tavlo Database is Corrupt (Error #101).  Please contact ", 0), 0u);
    EXPECT_TRUE(message.text.ends_with(" for support."));
}

// ---- Migration ----

TEST(PoolMigration, OlderSchemaIsMigratedAfterABackup) {
    TempDir dir;
    const std::string path = dir.file("Tavlo.mdb");
    makePool(path, [](Database& db) { db.exec("INSERT INTO DefaultsTable (Field, Value) VALUES ('Note', '61')"); });

    // A ladder one step beyond today's schema, as a future version would have.
    const std::vector<SchemaStep> ladder = {
        {kPoolSchemaVersion + 1,
         [](Database& db) { db.exec("ALTER TABLE PresetRec ADD COLUMN Colour INTEGER NOT NULL DEFAULT 0"); }}};
    PoolDatabase pool;
    const auto result = pool.open(path, ladder, kPoolSchemaVersion + 1);
    ASSERT_TRUE(result.ok()) << result.detail;
    EXPECT_EQ(pool.db().userVersion(), kPoolSchemaVersion + 1);
    EXPECT_EQ(pool.db().queryInt("SELECT count(*) FROM PresetRec WHERE Colour = 0"), 1);
    EXPECT_EQ(pool.db().queryInt("SELECT count(*) FROM DefaultsTable"), 1);

    ASSERT_FALSE(result.backupPath.empty());
    Database backup;
    backup.open(result.backupPath, Database::Mode::ReadOnly);
    EXPECT_EQ(backup.userVersion(), kPoolSchemaVersion);
    EXPECT_EQ(backup.integrityCheck(), "ok");
    EXPECT_EQ(backup.queryInt("SELECT count(*) FROM DefaultsTable"), 1);
}

TEST(PoolMigration, AFailingStepLeavesThePoolAsItWas) {
    TempDir dir;
    const std::string path = dir.file("Tavlo.mdb");
    makePool(path, [](Database&) {});
    const std::vector<SchemaStep> ladder = {{kPoolSchemaVersion + 1, [](Database& db) {
                                                 db.exec("CREATE TABLE Half (x)");
                                                 throw DatabaseError("disk full");
                                             }}};
    PoolDatabase pool;
    const auto result = pool.open(path, ladder, kPoolSchemaVersion + 1);
    EXPECT_EQ(result.status, PoolStatus::MigrationFailed);
    Database db;
    db.open(path, Database::Mode::ReadOnly);
    EXPECT_EQ(db.userVersion(), kPoolSchemaVersion);
    EXPECT_EQ(db.queryInt("SELECT count(*) FROM sqlite_master WHERE name = 'Half'"), 0);
}

}  // namespace
