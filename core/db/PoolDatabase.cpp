#include "db/PoolDatabase.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <cerrno>
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

// A pool file with the files SQLite keeps beside it.
void removeDatabaseFiles(const std::string& path) {
    std::error_code ec;
    for (const char* suffix : {"", "-journal", "-wal", "-shm"}) fs::remove(path + suffix, ec);
}

bool folderWritable(const std::string& path) {
    const fs::path parent = fs::path(path).parent_path();
    return access(parent.empty() ? "." : parent.c_str(), W_OK) == 0;
}

// A rename is only lasting once the folder's own entry is on the disk.
void syncFolder(const std::string& path) {
    const fs::path parent = fs::path(path).parent_path();
    const int fd = ::open(parent.empty() ? "." : parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return;
    fsync(fd);
    ::close(fd);
}

PoolStatus StatusOfSystemError(int error) {
    if (error == ENOSPC || error == EDQUOT) return PoolStatus::DiskFull;
    if (error == EROFS || error == EACCES || error == EPERM) return PoolStatus::ReadOnlyFolder;
    return PoolStatus::CannotOpen;
}

}  // namespace

std::string PoolDatabase::DefaultPath() {
    fs::path base;
    if (const char* xdg = std::getenv("XDG_DATA_HOME"); xdg && *xdg) base = xdg;
    else if (const char* home = std::getenv("HOME"); home && *home) base = fs::path(home) / ".local" / "share";
    else base = fs::current_path();
    return (base / "Tavlo" / "Tavlo.mdb").string();
}

PoolOpenResult PoolDatabase::open(const std::string& path, const PoolOpenOptions& options) {
    return open(path, PoolMigrations(), kPoolSchemaVersion, options);
}

void PoolDatabase::close() {
    db_.close();
    lock_.release();
}

PoolOpenResult PoolDatabase::refuse(PoolOpenResult result) {
    close();
    return result;
}

// The pool is built whole under a temporary name and only then given its
// own: a run stopped half-way leaves a stray temporary file, never a
// half-made pool that would be refused from then on.
PoolOpenResult PoolDatabase::create(const std::string& path, int currentVersion) {
    PoolOpenResult result;
    const std::string temp = path + ".new";
    removeDatabaseFiles(temp);
    try {
        {
            Database building;
            building.open(temp, Database::Mode::ReadWriteCreate);
            Transaction transaction(building);
            CreatePoolSchema(building);
            SeedPool(building);
            building.setUserVersion(currentVersion);
            transaction.commit();
            building.exec("PRAGMA journal_mode = WAL");
        }
        fs::rename(temp, path);
        syncFolder(path);
    } catch (const DatabaseError& e) {
        removeDatabaseFiles(temp);
        result.status = e.diskFull() ? PoolStatus::DiskFull
                        : (e.readOnly() || !folderWritable(path)) ? PoolStatus::ReadOnlyFolder
                                                                   : PoolStatus::CannotOpen;
        result.detail = e.what();
        return result;
    } catch (const fs::filesystem_error& e) {
        removeDatabaseFiles(temp);
        result.status = StatusOfSystemError(e.code().value());
        result.detail = e.what();
        return result;
    }
    result.status = PoolStatus::Ready;
    result.created = true;
    return result;
}

PoolOpenResult PoolDatabase::open(const std::string& path, const std::vector<SchemaStep>& migrations,
                                  int currentVersion, const PoolOpenOptions& options) {
    close();
    PoolOpenResult result;
    std::error_code ec;
    const fs::path parent = fs::path(path).parent_path();
    if (!parent.empty()) fs::create_directories(parent, ec);

    switch (lock_.take(path, options.lockWait, options.wholeRun)) {
        case PoolLock::Outcome::Taken: break;
        case PoolLock::Outcome::HeldElsewhere:
            result.status = PoolStatus::InUse;
            result.ownerPid = lock_.holderPid();
            return result;
        case PoolLock::Outcome::ReadOnlyFolder:
            result.status = fs::exists(path, ec) ? PoolStatus::ReadOnlyFolder : PoolStatus::CannotOpen;
            result.detail = "the folder can't be written";
            return result;
        case PoolLock::Outcome::DiskFull: result.status = PoolStatus::DiskFull; return result;
        case PoolLock::Outcome::Failed:
            result.status = PoolStatus::CannotOpen;
            result.detail = lock_.error();
            return result;
    }

    // Only this process makes or changes the file from here on.
    if (!fs::exists(path, ec) || fs::file_size(path, ec) == 0) {
        const PoolOpenResult made = create(path, currentVersion);
        if (!made.ok()) return refuse(made);
        result.created = true;
    }
    // SQLite writes its journal beside the pool: a folder it can't write
    // in makes every change fail, so it is said at once, before any read.
    if (!folderWritable(path)) {
        result.status = PoolStatus::ReadOnlyFolder;
        return refuse(result);
    }
    if (access(path.c_str(), W_OK) != 0) {
        result.status = PoolStatus::ReadOnlyFile;
        return refuse(result);
    }

    try {
        db_.open(path, Database::Mode::ReadWrite);
        // Set before the first read: SQLite then keeps the WAL index in its
        // own memory and holds its locks until the pool closes. No other
        // process works on the pool while we own it anyway.
        db_.exec("PRAGMA locking_mode = EXCLUSIVE");
    } catch (const DatabaseError& e) {
        result.status = PoolStatus::CannotOpen;
        result.detail = e.what();
        return refuse(result);
    }

    // Nothing below writes to the file until the file has proved to be a
    // pool that this version understands.
    try {
        result.schemaVersion = db_.userVersion();
        if (result.schemaVersion == 0 && !hasTable(db_, "PresetRec")) {
            result.status = PoolStatus::NotAPool;
            return refuse(result);
        }
    } catch (const DatabaseError& e) {
        result.status = (e.code() & 0xff) == SQLITE_NOTADB ? PoolStatus::NotSQLite : PoolStatus::CannotOpen;
        result.detail = e.what();
        return refuse(result);
    }
    if (result.schemaVersion > currentVersion) {
        result.status = PoolStatus::NewerSchema;
        return refuse(result);
    }

    try {
        if (result.schemaVersion < currentVersion) {
            if (InitializedPresetID() < 0) {
                result.status = PoolStatus::MissingInitialized;
                return refuse(result);
            }
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
                return refuse(result);
            }
        }
        result.missing = MissingPoolParts(db_);
        if (!result.missing.empty()) {
            result.status = PoolStatus::MissingParts;
            return refuse(result);
        }
        if (InitializedPresetID() < 0) {
            result.status = PoolStatus::MissingInitialized;
            return refuse(result);
        }
        db_.exec("PRAGMA journal_mode = WAL");
    } catch (const DatabaseError& e) {
        result.status = e.diskFull() ? PoolStatus::DiskFull : e.readOnly() ? PoolStatus::ReadOnlyFile : PoolStatus::CannotOpen;
        result.detail = e.what();
        return refuse(result);
    }
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
        case PoolStatus::MissingParts: {
            std::string parts;
            for (const std::string& part : result.missing) parts += (parts.empty() ? "" : ", ") + part;
            return {"Cannot Open Pool", "The pool " + path + " lacks what Tavlo needs: " + parts +
                                            ".  It has not been changed."};
        }
        case PoolStatus::InUse:
            return {"Pool In Use", "This pool is open in another Tavlo (pid " + std::to_string(result.ownerPid) + ")."};
        case PoolStatus::ReadOnlyFolder:
            return {"Cannot Open Pool", "The pool " + path +
                                            " is in a read-only folder: Tavlo must write beside it.  It has not been "
                                            "changed.  Copy it to a folder you can write to."};
        case PoolStatus::ReadOnlyFile:
            return {"Cannot Open Pool",
                    "The pool " + path + " is a read-only file.  It has not been changed.  Make it writable first."};
        case PoolStatus::DiskFull:
            return {"Cannot Open Pool", "The disk that holds the pool " + path +
                                            " is full.  Nothing has been changed.  Make room and try again."};
    }
    return {};
}

PoolMessage DatabaseErrorMessage(const DatabaseError& error, const std::string& path) {
    if (error.diskFull())
        return {"Disk Full", "The disk that holds the pool " + path + " is full.  What you did last was not stored."};
    if (error.readOnly())
        return {"Pool Read-Only", "The pool " + path + " can no longer be written.  What you did last was not stored."};
    return {"Database Error", "There has been a Database Error"};
}

PoolMessage PoolBusyMessage(const std::string& path) {
    return {"Pool Busy", "The pool " + path +
                             " is busy: another program is writing to it.  Nothing was changed; try again in a moment."};
}

PoolCheckReport CheckPool(const std::string& path) {
    PoolCheckReport report;
    auto say = [&](const std::string& line) { report.lines.push_back(line); };
    std::error_code ec;
    if (!fs::exists(path, ec)) {
        say("no such file: " + path);
        return report;
    }
    // Looked at only while no other Tavlo works on it; a pool in a folder
    // that can't be written can still be read, and is said to be there.
    PoolLock lock;
    switch (lock.take(path, kPoolBusyTimeout, false)) {
        case PoolLock::Outcome::HeldElsewhere: {
            PoolOpenResult inUse;
            inUse.status = PoolStatus::InUse;
            inUse.ownerPid = lock.holderPid();
            say(PoolOpenMessage(inUse, path).text);
            report.inUse = true;
            return report;
        }
        case PoolLock::Outcome::DiskFull: say("disk: full"); break;
        case PoolLock::Outcome::Failed: say("lock: " + lock.error()); break;
        case PoolLock::Outcome::ReadOnlyFolder:
        case PoolLock::Outcome::Taken: break;
    }
    // Where nothing can be written, SQLite can't make the files it keeps
    // beside a pool even to read it; and nobody can change it there either.
    const bool readOnlyFolder = !folderWritable(path);
    if (readOnlyFolder) say("folder: read-only (Tavlo can read this pool but not work on it there)");
    Database db;
    bool sound = true;
    try {
        db.open(path, readOnlyFolder ? Database::Mode::Immutable : Database::Mode::ReadOnly);
        const std::string integrity = db.integrityCheck();
        say("integrity: " + integrity);
        sound = integrity == "ok";
        const int version = db.userVersion();
        say("schema version: " + std::to_string(version) + " (this Tavlo: " + std::to_string(kPoolSchemaVersion) + ")");
        if (version != kPoolSchemaVersion) sound = false;
        for (const std::string& part : MissingPoolParts(db)) {
            say("missing " + part.substr(0, part.find(' ')) + ": " + part.substr(part.find(' ') + 1));
            sound = false;
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
