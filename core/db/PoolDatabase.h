#pragma once
#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "db/Database.h"
#include "db/PoolSchema.h"
#include "db/PoolLock.h"

namespace tavlo {

enum class PoolStatus {
    Ready,
    CannotOpen,          // the file can't be read or created
    NotSQLite,           // the file isn't an SQLite database
    NotAPool,            // an SQLite database, but not one of Tavlo's
    NewerSchema,         // written by a newer Tavlo; left untouched
    MigrationFailed,     // an older schema that could not be brought up to date
    MissingInitialized,  // the "--Initialized--" preset row is gone
    MissingParts,        // a table or column the program uses is gone
    InUse,               // another Tavlo owns the pool
    ReadOnlyFolder,      // nothing can be written beside the pool
    ReadOnlyFile,        // the pool file itself can't be written
    DiskFull,            // no room left to write
};

// How long a process waits for a pool that another one is working on, and
// for SQLite's own write lock, before it gives up.
inline constexpr std::chrono::milliseconds kPoolBusyTimeout{10000};

struct PoolOpenOptions {
    std::chrono::milliseconds lockWait = kPoolBusyTimeout;
    // The program's windows keep the pool until they quit: others need not
    // wait for it. A command-line run holds it only for its one command.
    bool wholeRun = false;
};

struct PoolOpenResult {
    PoolStatus status = PoolStatus::CannotOpen;
    bool created = false;        // a new pool was made with its seed
    std::string backupPath;      // the copy made before a migration
    std::string detail;          // what SQLite or the check said
    int schemaVersion = 0;
    long ownerPid = 0;                 // InUse: the process that owns the pool
    std::vector<std::string> missing;  // MissingParts: "table X", "column X.Y"
    bool ok() const { return status == PoolStatus::Ready; }
};

// The one open pool of a run. Opening takes the pool for this process
// alone (see PoolLock), creates a missing file with its seed, migrates an
// older schema after a backup copy, and refuses anything it cannot use
// without touching it.
class PoolDatabase {
public:
    PoolOpenResult open(const std::string& path, const PoolOpenOptions& options = {});
    // For tests of the migration ladder.
    PoolOpenResult open(const std::string& path, const std::vector<SchemaStep>& migrations, int currentVersion,
                        const PoolOpenOptions& options = {});
    void close();
    bool isOpen() const { return db_.isOpen(); }
    const std::string& path() const { return db_.path(); }
    Database& db() { return db_; }

    // ID of the "--Initialized--" preset, or -1 when the row is missing.
    std::int64_t InitializedPresetID();

    // The per-user pool file: $XDG_DATA_HOME/Tavlo/Tavlo.mdb or
    // ~/.local/share/Tavlo/Tavlo.mdb.
    static std::string DefaultPath();

private:
    PoolOpenResult create(const std::string& path, int currentVersion);
    PoolOpenResult refuse(PoolOpenResult result);
    PoolLock lock_;
    Database db_;
};

// Title and text of the message that tells the user why a pool can't be used.
struct PoolMessage {
    std::string title;
    std::string text;
};
PoolMessage PoolOpenMessage(const PoolOpenResult& result, const std::string& path);

// Title and text for a failure while working on an open pool: a full disk
// and a pool made read-only are named as such; anything else is the
// program's "There has been a Database Error".
PoolMessage DatabaseErrorMessage(const DatabaseError& error, const std::string& path);
// For a write that found the pool busy.
PoolMessage PoolBusyMessage(const std::string& path);

// A read-only examination of a pool file, for "tavlo-cli pool check".
struct PoolCheckReport {
    bool sound = false;
    bool inUse = false;  // another Tavlo owns it: nothing was checked
    std::vector<std::string> lines;
};
PoolCheckReport CheckPool(const std::string& path);

}  // namespace tavlo
