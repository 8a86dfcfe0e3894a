#pragma once
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace tavlo {

class DatabaseError : public std::runtime_error {
public:
    explicit DatabaseError(const std::string& what, int code = 0) : std::runtime_error(what), code_(code) {}
    // SQLite's extended result code, 0 when the error is our own.
    int code() const { return code_; }
    bool diskFull() const;
    bool readOnly() const;

private:
    int code_;
};

// A write could not start within the busy time-out because another
// connection holds the pool for writing. Deliberately not a DatabaseError:
// the flows' own "database error" handling must not swallow it; it travels
// to the boundary (the event loop's guard, the command line's main), which
// says the pool is busy. Nothing of the write has happened yet.
class PoolBusy : public std::runtime_error {
public:
    PoolBusy() : std::runtime_error("pool busy") {}
};

// Raw bytes for a BLOB column (setup channel maps, stored dumps).
struct Blob {
    std::string_view bytes;
};

// One prepared statement. Values only ever enter through bind(); columns are
// read by name, without regard to case. Text crosses as Windows-1252 on the
// core side and UTF-8 in the database.
class Statement {
public:
    Statement(sqlite3* db, std::string_view sql);
    ~Statement();
    Statement(Statement&& other) noexcept;
    Statement& operator=(Statement&&) = delete;
    Statement(const Statement&) = delete;

    // Parameters by name (":Name") or by position (from 1).
    Statement& bind(const char* name, std::int64_t value);
    Statement& bind(const char* name, int value) { return bind(name, static_cast<std::int64_t>(value)); }
    Statement& bind(const char* name, bool value) { return bind(name, static_cast<std::int64_t>(value ? -1 : 0)); }
    Statement& bind(const char* name, std::string_view text);
    Statement& bind(const char* name, const char* text) { return bind(name, std::string_view(text)); }
    Statement& bind(const char* name, const std::string& text) { return bind(name, std::string_view(text)); }
    Statement& bind(const char* name, Blob blob);
    Statement& bindNull(const char* name);
    Statement& bind(int position, std::int64_t value);
    Statement& bind(int position, std::string_view text);

    // Steps once; true when a row is current.
    bool step();
    // Runs a statement that returns no rows.
    void run();
    void reset();

    int columnIndex(std::string_view name) const;
    bool hasColumn(std::string_view name) const;
    bool isNull(std::string_view column) const;
    std::int64_t getInt(std::string_view column) const;
    bool getBool(std::string_view column) const { return getInt(column) != 0; }
    std::string getText(std::string_view column) const;
    std::string getBlob(std::string_view column) const;
    std::int64_t getInt(int index) const;
    std::string getText(int index) const;
    int columnCount() const;

private:
    int parameter(const char* name) const;
    void check(int rc, const char* what) const;

    sqlite3* db_;
    sqlite3_stmt* stmt_ = nullptr;
    bool done_ = false;
};

class Database {
public:
    // Immutable: read-only, trusting that nobody changes the file meanwhile
    // (a pool in a folder nobody can write to); needs no files beside it.
    enum class Mode { ReadWrite, ReadWriteCreate, ReadOnly, Immutable };

    Database() = default;
    ~Database();
    Database(Database&& other) noexcept;
    Database& operator=(Database&& other) noexcept;
    Database(const Database&) = delete;

    void open(const std::string& path, Mode mode);
    void close();
    bool isOpen() const { return db_ != nullptr; }
    const std::string& path() const { return path_; }

    // Statements without values: schema and pragmas.
    void exec(std::string_view sql);
    Statement prepare(std::string_view sql);
    // A single integer from a query without parameters (counts, pragmas).
    std::int64_t queryInt(std::string_view sql);
    std::int64_t lastInsertId() const;
    int changes() const;

    int userVersion();
    void setUserVersion(int version);
    // "ok" when sound, else SQLite's first complaint.
    std::string integrityCheck();
    // A consistent copy of the whole database to a new file.
    void backupTo(const std::string& path);

    sqlite3* handle() const { return db_; }

private:
    sqlite3* db_ = nullptr;
    std::string path_;
};

// All or nothing: rolls back unless commit() was called. The outermost one
// is an immediate write transaction, so it waits out the busy time-out for
// the write lock at its start rather than failing half-way; inner ones nest
// through savepoints, so a flow may call another flow that has its own.
class Transaction {
public:
    explicit Transaction(Database& db);
    ~Transaction();
    void commit();
    Transaction(const Transaction&) = delete;

private:
    Database& db_;
    std::string name_;  // empty for the outermost
    bool done_ = false;
};

}  // namespace tavlo
