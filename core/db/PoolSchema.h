#pragma once
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tavlo {

class Database;

// The pool's schema. History of PRAGMA user_version:
//   1  first schema: presets with faders, buttons, scenes and message
//      strings; globals; memory images; device library; defaults; MIDI
//      configuration; window states; the cleared-device dumps.
inline constexpr int kPoolSchemaVersion = 1;

// One step of the migration ladder: upgrades a pool at `toVersion - 1`.
struct SchemaStep {
    int toVersion;
    std::function<void(Database&)> apply;
};

// Steps from older schemas to kPoolSchemaVersion, oldest first.
const std::vector<SchemaStep>& PoolMigrations();

// Creates every table and index of the current schema in an empty database.
void CreatePoolSchema(Database& db);

// The tables every pool has; a database without them isn't a pool.
const std::vector<std::string_view>& PoolTableNames();

// A table of the current schema with the columns the program reads and
// writes. Taken from the schema itself, so the two can't drift apart.
struct PoolTable {
    std::string name;
    std::vector<std::string> columns;
};
const std::vector<PoolTable>& RequiredPoolTables();

// What an open pool lacks of RequiredPoolTables(): "table SceneRec",
// "column FaderRec.MasterOf". Empty for a pool that has all of it.
std::vector<std::string> MissingPoolParts(Database& db);

}  // namespace tavlo
