#include "db/PoolDatabase.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <fstream>

#include "TempDir.h"
#include "db/Database.h"
#include "preset/WorkingPreset.h"

using namespace tavlo;
using tavlo::testing::TempDir;

namespace {

std::string fileBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
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

TEST_F(NewPool, IsCreatedInWalAndReopensSoundWithoutCreatingAgain) {
    EXPECT_TRUE(result.created);
    EXPECT_EQ(db().userVersion(), kPoolSchemaVersion);
    {
        Statement mode = db().prepare("PRAGMA journal_mode");
        ASSERT_TRUE(mode.step());
        EXPECT_EQ(mode.getText(0), "wal");
    }
    pool.close();
    EXPECT_TRUE(CheckPool(path).sound);  // every table and column
    PoolDatabase again;
    const auto reopened = again.open(path);
    ASSERT_TRUE(reopened.ok());
    EXPECT_FALSE(reopened.created);
    EXPECT_EQ(again.db().queryInt("SELECT count(*) FROM PresetRec"), 1);
}

// The seed rows: the initialized preset with default controls in every slot
// of the initialized image, the controller names and the system device.
TEST_F(NewPool, SeedsTheInitializedPresetImageAndNames) {
    const std::string id = std::to_string(pool.InitializedPresetID());
    EXPECT_EQ(db().queryInt("SELECT count(*) FROM PresetRec WHERE ID = " + id +
                            " AND SetupScene = '<none>' AND SetupScenePreset = -1 AND DataWheelLink = 0 AND "
                            "SetupChannelMap = zeroblob(64)"),
              1);
    EXPECT_EQ(db().queryInt("SELECT count(DISTINCT \"Index\") FROM FaderRec WHERE PresetREF = " + id +
                            " AND Name = '' AND Function = 0 AND Min = 0 AND Max = 127 AND Channel = 16 AND "
                            "Polarity = -1 AND MidiString = '' AND MasterOf = '" + std::string(18, ' ') + "'"),
              kFaderCount);
    EXPECT_EQ(db().queryInt("SELECT count(DISTINCT \"Index\") FROM ButtonRec WHERE PresetREF = " + id +
                            " AND Function = 0 AND Channel = 16 AND Velocity = 127 AND Note = 60 AND Scene = '<none>'"),
              kButtonCount);
    EXPECT_EQ(db().queryInt("SELECT count(DISTINCT m.\"Index\") FROM MemoryImage2PresetMapRec m JOIN MemoryImageRec i "
                            "ON i.ID = m.MemoryImageREF WHERE i.ImageName = '--Initialized--' AND m.PresetREF = " +
                            id + " AND m.\"Index\" BETWEEN 0 AND 49"),
              50);
    EXPECT_EQ(db().queryInt("SELECT count(DISTINCT CCNum) FROM CCTable WHERE CCNum BETWEEN 0 AND 127 AND CCName <> ''"),
              128);
    EXPECT_EQ(db().queryInt("SELECT count(*) FROM CCTable WHERE CCNum = 7 AND CCName = 'Channel Volume'"), 1);
    EXPECT_EQ(db().queryInt("SELECT count(*) FROM ModelTable WHERE Make = 'UNASSOCIATED' AND Model = 'DEVICE'"), 1);
    EXPECT_EQ(db().queryInt("SELECT count(*) FROM InitializedSysexTable"), 1);
}

TEST_F(NewPool, NamesCompareWithoutCaseAndStayUnique) {
    EXPECT_THROW(db().exec("INSERT INTO PresetRec (Name, CreatedDate, UpdatedDate, SetupChannelMap) "
                           "VALUES ('--INITIALIZED--', 'd', 'd', X'')"),
                 DatabaseError);
}

TEST_F(NewPool, AnInnerCommitIsUndoneWithTheOuterTransaction) {
    const auto before = db().queryInt("SELECT count(*) FROM DefaultsTable");
    {
        Transaction outer(db());
        db().exec("INSERT INTO DefaultsTable (Field, Value) VALUES ('Note', '60')");
        Transaction inner(db());
        db().exec("INSERT INTO DefaultsTable (Field, Value) VALUES ('Velocity', '100')");
        inner.commit();
    }
    EXPECT_EQ(db().queryInt("SELECT count(*) FROM DefaultsTable"), before);
    Transaction outer(db());
    db().exec("INSERT INTO DefaultsTable (Field, Value) VALUES ('Note', '60')");
    outer.commit();
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

using Path = const std::string&;
INSTANTIATE_TEST_SUITE_P(
    Files, RefusedPool,
    ::testing::Values(
        RefusedCase{"TextFile", [](Path p) { std::ofstream(p) << "these are my notes, not a pool\n"; },
                    PoolStatus::NotSQLite},
        RefusedCase{"OtherSQLite",
                    [](Path p) {
                        Database db;
                        db.open(p, Database::Mode::ReadWriteCreate);
                        db.exec("CREATE TABLE Recipes (Name TEXT)");
                    },
                    PoolStatus::NotAPool},
        RefusedCase{"NewerSchema",
                    [](Path p) { makePool(p, [](Database& db) { db.setUserVersion(kPoolSchemaVersion + 1); }); },
                    PoolStatus::NewerSchema},
        RefusedCase{"NoInitializedPreset",
                    [](Path p) {
                        makePool(p, [](Database& db) {
                            db.exec("DELETE FROM PresetRec WHERE Name = '--Initialized--'");
                        });
                    },
                    PoolStatus::MissingInitialized}),
    [](const auto& info) { return std::string(info.param.name); });

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
