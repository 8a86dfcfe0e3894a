#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "db/Database.h"
#include "db/PoolSchema.h"

namespace tavlo {

enum class PoolStatus {
    Ready,
    CannotOpen,          // the file can't be read or created
    NotSQLite,           // the file isn't an SQLite database
    NotAPool,            // an SQLite database, but not one of Tavlo's
    NewerSchema,         // written by a newer Tavlo; left untouched
    MigrationFailed,     // an older schema that could not be brought up to date
    MissingInitialized,  // the "--Initialized--" preset row is gone
};

struct PoolOpenResult {
    PoolStatus status = PoolStatus::CannotOpen;
    bool created = false;        // a new pool was made with its seed
    std::string backupPath;      // the copy made before a migration
    std::string detail;          // what SQLite or the check said
    int schemaVersion = 0;
    bool ok() const { return status == PoolStatus::Ready; }
};

// The one open pool of a run. Opening creates a missing file with its seed,
// migrates an older schema after a backup copy, and refuses anything it
// cannot use without touching it.
class PoolDatabase {
public:
    PoolOpenResult open(const std::string& path);
    // For tests of the migration ladder.
    PoolOpenResult open(const std::string& path, const std::vector<SchemaStep>& migrations, int currentVersion);
    void close() { db_.close(); }
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
    Database db_;
};

// Title and text of the message that tells the user why a pool can't be used.
struct PoolMessage {
    std::string title;
    std::string text;
};
PoolMessage PoolOpenMessage(const PoolOpenResult& result, const std::string& path);

// A read-only examination of a pool file, for "tavlo-cli pool check".
struct PoolCheckReport {
    bool sound = false;
    std::vector<std::string> lines;
};
PoolCheckReport CheckPool(const std::string& path);

}  // namespace tavlo
