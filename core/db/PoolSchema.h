#pragma once
#include <functional>
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

}  // namespace tavlo
