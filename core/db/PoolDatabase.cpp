#include "db/PoolDatabase.h"

#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "db/PoolSeed.h"
#include "preset/WorkingPreset.h"
#include "base/Support.h"

namespace tavlo {
namespace fs = std::filesystem;

namespace {

bool hasTable(Database& db, std::string_view name) {
    Statement s = db.prepare("SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name = :Name");
    s.bind(":Name", name);
    return s.step() && s.getInt(0) > 0;
}

// Copies the pool beside itself before its schema changes. The copy is made
// under a temporary name, checked, and only then given its final name.
std::string backupBeforeMigration(Database& db, const std::string& path, int fromVersion) {
    const std::string finalPath = path + ".schema" + std::to_string(fromVersion) + ".bak";
    const std::string tempPath = finalPath + ".tmp";
    db.backupTo(tempPath);
    {
        Database copy;
        copy.open(tempPath, Database::Mode::ReadOnly);
        const std::string verdict = copy.integrityCheck();
        if (verdict != "ok") throw DatabaseError("the backup copy is not sound: " + verdict);
    }
    fs::rename(tempPath, finalPath);
    return finalPath;
}

}  // namespace

std::string PoolDatabase::DefaultPath() {
    fs::path base;
    if (const char* xdg = std::getenv("XDG_DATA_HOME"); xdg && *xdg) base = xdg;
    else if (const char* home = std::getenv("HOME"); home && *home) base = fs::path(home) / ".local" / "share";
    else base = fs::current_path();
    return (base / "Tavlo" / "Tavlo.mdb").string();
}

PoolOpenResult PoolDatabase::open(const std::string& path) { return open(path, PoolMigrations(), kPoolSchemaVersion); }

PoolOpenResult PoolDatabase::create(const std::string& path, int currentVersion) {
    PoolOpenResult result;
    std::error_code ec;
    const fs::path parent = fs::path(path).parent_path();
    if (!parent.empty()) fs::create_directories(parent, ec);
    try {
        db_.open(path, Database::Mode::ReadWriteCreate);
        db_.exec("PRAGMA journal_mode = WAL");
        Transaction transaction(db_);
        CreatePoolSchema(db_);
        SeedPool(db_);
        db_.setUserVersion(currentVersion);
        transaction.commit();
    } catch (const std::exception& e) {
        db_.close();
        result.status = PoolStatus::CannotOpen;
        result.detail = e.what();
        return result;
    }
    result.status = PoolStatus::Ready;
    result.created = true;
    result.schemaVersion = currentVersion;
    return result;
}

PoolOpenResult PoolDatabase::open(const std::string& path, const std::vector<SchemaStep>& migrations,
                                  int currentVersion) {
    close();
    std::error_code ec;
    if (!fs::exists(path, ec) || fs::file_size(path, ec) == 0) return create(path, currentVersion);

    PoolOpenResult result;
    try {
        db_.open(path, Database::Mode::ReadWrite);
    } catch (const DatabaseError& e) {
        result.status = PoolStatus::CannotOpen;
        result.detail = e.what();
        return result;
    }

    // Nothing below writes to the file until the file has proved to be a
    // pool that this version understands.
    try {
        result.schemaVersion = db_.userVersion();
        if (result.schemaVersion == 0 && !hasTable(db_, "PresetRec")) {
            result.status = PoolStatus::NotAPool;
            db_.close();
            return result;
        }
    } catch (const DatabaseError& e) {
        result.status = PoolStatus::NotSQLite;
        result.detail = e.what();
        db_.close();
        return result;
    }
    if (result.schemaVersion > currentVersion) {
        result.status = PoolStatus::NewerSchema;
        db_.close();
        return result;
    }
    if (InitializedPresetID() < 0) {
        result.status = PoolStatus::MissingInitialized;
        db_.close();
        return result;
    }

    if (result.schemaVersion < currentVersion) {
        try {
            result.backupPath = backupBeforeMigration(db_, path, result.schemaVersion);
            for (const SchemaStep& step : migrations) {
                if (step.toVersion <= db_.userVersion()) continue;
                Transaction transaction(db_);
                step.apply(db_);
                db_.setUserVersion(step.toVersion);
                transaction.commit();
            }
            if (db_.userVersion() != currentVersion)
                throw DatabaseError("no migration leads to schema " + std::to_string(currentVersion));
            result.schemaVersion = currentVersion;
        } catch (const std::exception& e) {
            result.status = PoolStatus::MigrationFailed;
            result.detail = e.what();
            db_.close();
            return result;
        }
    }
    db_.exec("PRAGMA journal_mode = WAL");
    result.status = PoolStatus::Ready;
    return result;
}

std::int64_t PoolDatabase::InitializedPresetID() {
    try {
        Statement s = db_.prepare("SELECT ID FROM PresetRec WHERE Name = :Name");
        s.bind(":Name", kInitializedName);
        return s.step() ? s.getInt("ID") : -1;
    } catch (const DatabaseError&) {
        return -1;
    }
}

PoolMessage PoolOpenMessage(const PoolOpenResult& result, const std::string& path) {
    switch (result.status) {
        case PoolStatus::Ready: return {};
        case PoolStatus::MissingInitialized:
            return {"CRITICAL ERROR", std::string("The Tavlo Database is Corrupt (Error #101).  Please contact ") +
                                          kSupportAddress + " for support."};
        case PoolStatus::NotSQLite:
        case PoolStatus::NotAPool:
            return {"Cannot Open Pool", "The file " + path +
                                            " is not a Tavlo pool database.  It has not been changed.  Choose "
                                            "another file with --pool, or move this one aside."};
        case PoolStatus::NewerSchema:
            return {"Cannot Open Pool",
                    "The pool " + path + " was written by a newer version of Tavlo (schema " +
                        std::to_string(result.schemaVersion) + "; this version reads up to schema " +
                        std::to_string(kPoolSchemaVersion) + ").  It has not been changed."};
        case PoolStatus::MigrationFailed:
            return {"Cannot Open Pool", "The pool " + path + " could not be brought up to date: " + result.detail +
                                            (result.backupPath.empty() ? std::string()
                                                                       : "  A copy was kept as " + result.backupPath + ".")};
        case PoolStatus::CannotOpen:
            return {"Cannot Open Pool", "The pool " + path + " cannot be opened: " + result.detail};
    }
    return {};
}

PoolCheckReport CheckPool(const std::string& path) {
    PoolCheckReport report;
    auto say = [&](const std::string& line) { report.lines.push_back(line); };
    std::error_code ec;
    if (!fs::exists(path, ec)) {
        say("no such file: " + path);
        return report;
    }
    Database db;
    bool sound = true;
    try {
        db.open(path, Database::Mode::ReadOnly);
        const std::string integrity = db.integrityCheck();
        say("integrity: " + integrity);
        sound = integrity == "ok";
        const int version = db.userVersion();
        say("schema version: " + std::to_string(version) + " (this Tavlo: " + std::to_string(kPoolSchemaVersion) + ")");
        if (version != kPoolSchemaVersion) sound = false;
        for (std::string_view table : PoolTableNames()) {
            if (!hasTable(db, table)) {
                say("missing table: " + std::string(table));
                sound = false;
            }
        }
        if (!sound) {
            report.sound = false;
            return report;
        }
        auto count = [&](const char* sql) {
            Statement s = db.prepare(sql);
            s.bind(":Name", kInitializedName);
            return s.step() ? s.getInt(0) : 0;
        };
        auto expect = [&](const std::string& what, std::int64_t got, std::int64_t want) {
            say(what + ": " + std::to_string(got) + (got == want ? "" : " (expected " + std::to_string(want) + ")"));
            if (got != want) sound = false;
        };
        expect("\"--Initialized--\" preset rows", count("SELECT count(*) FROM PresetRec WHERE Name = :Name"), 1);
        expect("its faders", count("SELECT count(*) FROM FaderRec WHERE PresetREF IN (SELECT ID FROM PresetRec WHERE Name = :Name)"), kFaderCount);
        expect("its buttons", count("SELECT count(*) FROM ButtonRec WHERE PresetREF IN (SELECT ID FROM PresetRec WHERE Name = :Name)"), kButtonCount);
        expect("\"--Initialized--\" memory image rows", count("SELECT count(*) FROM MemoryImageRec WHERE ImageName = :Name"), 1);
        expect("its slots", count("SELECT count(*) FROM MemoryImage2PresetMapRec WHERE MemoryImageREF IN (SELECT ID FROM MemoryImageRec WHERE ImageName = :Name)"), 50);
        expect("controller names", db.queryInt("SELECT count(*) FROM CCTable WHERE CCNum BETWEEN 0 AND 127"), 128);
        expect("system device rows", db.queryInt("SELECT count(*) FROM ModelTable WHERE Make = 'UNASSOCIATED' AND Model = 'DEVICE'"), 1);
        expect("cleared-device dump rows", db.queryInt("SELECT count(*) FROM InitializedSysexTable"), 1);
        say("presets: " + std::to_string(db.queryInt("SELECT count(*) FROM PresetRec")));
    } catch (const DatabaseError& e) {
        say(std::string("not a readable pool: ") + e.what());
        sound = false;
    }
    report.sound = sound;
    return report;
}

}  // namespace tavlo
