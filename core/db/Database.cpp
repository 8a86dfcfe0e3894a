#include "db/Database.h"

#include <sqlite3.h>

#include <atomic>
#include <cstring>
#include <filesystem>
#include <strings.h>

#include "base/Windows1252.h"

namespace tavlo {

bool DatabaseError::diskFull() const { return (code_ & 0xff) == SQLITE_FULL; }

bool DatabaseError::readOnly() const { return (code_ & 0xff) == SQLITE_READONLY; }

// ---- Statement ----

Statement::Statement(sqlite3* db, std::string_view sql) : db_(db) {
    const int rc = sqlite3_prepare_v2(db_, sql.data(), static_cast<int>(sql.size()), &stmt_, nullptr);
    if (rc != SQLITE_OK)
        throw DatabaseError(std::string("cannot prepare statement: ") + sqlite3_errmsg(db_) + " in: " + std::string(sql),
                            sqlite3_extended_errcode(db_));
}

Statement::~Statement() { sqlite3_finalize(stmt_); }

Statement::Statement(Statement&& other) noexcept : db_(other.db_), stmt_(other.stmt_), done_(other.done_) {
    other.stmt_ = nullptr;
}

void Statement::check(int rc, const char* what) const {
    if (rc != SQLITE_OK) throw DatabaseError(std::string(what) + ": " + sqlite3_errmsg(db_), rc);
}

int Statement::parameter(const char* name) const {
    const int index = sqlite3_bind_parameter_index(stmt_, name);
    if (index == 0) throw DatabaseError(std::string("no such parameter: ") + name);
    return index;
}

Statement& Statement::bind(const char* name, std::int64_t value) { return bind(parameter(name), value); }

Statement& Statement::bind(const char* name, std::string_view text) { return bind(parameter(name), text); }

Statement& Statement::bind(int position, std::int64_t value) {
    check(sqlite3_bind_int64(stmt_, position, value), "bind");
    return *this;
}

Statement& Statement::bind(int position, std::string_view text) {
    const std::string utf8 = Windows1252ToUtf8(text);
    check(sqlite3_bind_text(stmt_, position, utf8.data(), static_cast<int>(utf8.size()), SQLITE_TRANSIENT), "bind");
    return *this;
}

Statement& Statement::bind(const char* name, Blob blob) {
    check(sqlite3_bind_blob(stmt_, parameter(name), blob.bytes.data(), static_cast<int>(blob.bytes.size()),
                            SQLITE_TRANSIENT),
          "bind");
    return *this;
}

Statement& Statement::bindNull(const char* name) {
    check(sqlite3_bind_null(stmt_, parameter(name)), "bind");
    return *this;
}

bool Statement::step() {
    if (done_) return false;
    const int rc = sqlite3_step(stmt_);
    if (rc == SQLITE_ROW) return true;
    if (rc == SQLITE_DONE) {
        done_ = true;
        return false;
    }
    throw DatabaseError(std::string("statement failed: ") + sqlite3_errmsg(db_), sqlite3_extended_errcode(db_));
}

void Statement::run() {
    while (step()) {
    }
}

void Statement::reset() {
    sqlite3_reset(stmt_);
    sqlite3_clear_bindings(stmt_);
    done_ = false;
}

int Statement::columnCount() const { return sqlite3_column_count(stmt_); }

int Statement::columnIndex(std::string_view name) const {
    const int count = sqlite3_column_count(stmt_);
    for (int i = 0; i < count; ++i) {
        const char* column = sqlite3_column_name(stmt_, i);
        if (std::strlen(column) == name.size() && strncasecmp(column, name.data(), name.size()) == 0) return i;
    }
    return -1;
}

bool Statement::hasColumn(std::string_view name) const { return columnIndex(name) >= 0; }

namespace {
int requireColumn(const Statement& s, std::string_view name) {
    const int index = s.columnIndex(name);
    if (index < 0) throw DatabaseError("no such column: " + std::string(name));
    return index;
}
}  // namespace

bool Statement::isNull(std::string_view column) const {
    return sqlite3_column_type(stmt_, requireColumn(*this, column)) == SQLITE_NULL;
}

std::int64_t Statement::getInt(std::string_view column) const { return getInt(requireColumn(*this, column)); }

std::int64_t Statement::getInt(int index) const { return sqlite3_column_int64(stmt_, index); }

std::string Statement::getText(std::string_view column) const { return getText(requireColumn(*this, column)); }

std::string Statement::getText(int index) const {
    if (sqlite3_column_type(stmt_, index) == SQLITE_BLOB) {
        const void* data = sqlite3_column_blob(stmt_, index);
        return std::string(static_cast<const char*>(data), sqlite3_column_bytes(stmt_, index));
    }
    const auto* text = sqlite3_column_text(stmt_, index);
    if (!text) return {};
    return Utf8ToWindows1252(std::string_view(reinterpret_cast<const char*>(text), sqlite3_column_bytes(stmt_, index)));
}

std::string Statement::getBlob(std::string_view column) const {
    const int index = requireColumn(*this, column);
    const void* data = sqlite3_column_blob(stmt_, index);
    if (!data) return {};
    return std::string(static_cast<const char*>(data), sqlite3_column_bytes(stmt_, index));
}

// ---- Database ----

Database::~Database() { close(); }

Database::Database(Database&& other) noexcept : db_(other.db_), path_(std::move(other.path_)) { other.db_ = nullptr; }

Database& Database::operator=(Database&& other) noexcept {
    if (this != &other) {
        close();
        db_ = other.db_;
        path_ = std::move(other.path_);
        other.db_ = nullptr;
    }
    return *this;
}

void Database::open(const std::string& path, Mode mode) {
    close();
    int flags = SQLITE_OPEN_READWRITE;
    if (mode == Mode::ReadWriteCreate) flags |= SQLITE_OPEN_CREATE;
    if (mode == Mode::ReadOnly) flags = SQLITE_OPEN_READONLY;
    std::string name = path;
    if (mode == Mode::Immutable) {
        flags = SQLITE_OPEN_READONLY | SQLITE_OPEN_URI;
        name = "file:";
        for (const char c : path) {
            if (c == '%' || c == '?' || c == '#') {
                static const char hex[] = "0123456789ABCDEF";
                name += '%';
                name += hex[(c >> 4) & 0xF];
                name += hex[c & 0xF];
            } else {
                name += c;
            }
        }
        name += "?immutable=1";
    }
    sqlite3* db = nullptr;
    const int rc = sqlite3_open_v2(name.c_str(), &db, flags, nullptr);
    if (rc != SQLITE_OK) {
        const std::string message = db ? sqlite3_errmsg(db) : "out of memory";
        const int code = db ? sqlite3_extended_errcode(db) : rc;
        sqlite3_close(db);
        throw DatabaseError("cannot open " + path + ": " + message, code);
    }
    sqlite3_busy_timeout(db, 5000);
    sqlite3_extended_result_codes(db, 1);
    db_ = db;
    path_ = path;
}

void Database::close() {
    if (db_) {
        sqlite3_close_v2(db_);
        db_ = nullptr;
    }
}

void Database::exec(std::string_view sql) {
    char* error = nullptr;
    const std::string text(sql);
    if (!db_) throw DatabaseError("the pool is not open");
    if (sqlite3_exec(db_, text.c_str(), nullptr, nullptr, &error) != SQLITE_OK) {
        const std::string message = error ? error : "unknown error";
        sqlite3_free(error);
        throw DatabaseError(message, sqlite3_extended_errcode(db_));
    }
}

Statement Database::prepare(std::string_view sql) {
    if (!db_) throw DatabaseError("the pool is not open");
    return Statement(db_, sql);
}

std::int64_t Database::queryInt(std::string_view sql) {
    Statement s = prepare(sql);
    return s.step() ? s.getInt(0) : 0;
}

std::int64_t Database::lastInsertId() const { return sqlite3_last_insert_rowid(db_); }

int Database::changes() const { return sqlite3_changes(db_); }

int Database::userVersion() { return static_cast<int>(queryInt("PRAGMA user_version")); }

void Database::setUserVersion(int version) {
    // PRAGMA takes no bound parameters; the value is our own integer.
    exec("PRAGMA user_version = " + std::to_string(version));
}

std::string Database::integrityCheck() {
    Statement s = prepare("PRAGMA integrity_check");
    return s.step() ? s.getText(0) : std::string("no answer");
}

void Database::backupTo(const std::string& path) {
    std::filesystem::remove(path);
    // File names are UTF-8 already: bound as they are, not through the text table.
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v2(db_, "VACUUM INTO ?1", -1, &stmt, nullptr) != SQLITE_OK)
        throw DatabaseError(sqlite3_errmsg(db_), sqlite3_extended_errcode(db_));
    sqlite3_bind_text(stmt, 1, path.c_str(), -1, SQLITE_TRANSIENT);
    const int rc = sqlite3_step(stmt);
    sqlite3_finalize(stmt);
    if (rc != SQLITE_DONE)
        throw DatabaseError("backup to " + path + " failed: " + sqlite3_errmsg(db_), sqlite3_extended_errcode(db_));
}

// ---- Transaction ----

namespace {
std::atomic<int> savepointCounter{0};
}

Transaction::Transaction(Database& db) : db_(db) {
    if (!db_.isOpen()) throw DatabaseError("the pool is not open");
    if (!sqlite3_get_autocommit(db_.handle())) {
        name_ = "tavlo_sp" + std::to_string(++savepointCounter);
        db_.exec("SAVEPOINT " + name_);
        return;
    }
    // A deferred transaction would take the write lock at its first write,
    // where a busy pool fails at once instead of waiting; taking it here
    // lets the busy time-out apply.
    try {
        db_.exec("BEGIN IMMEDIATE");
    } catch (const DatabaseError& e) {
        if ((e.code() & 0xff) == SQLITE_BUSY || (e.code() & 0xff) == SQLITE_LOCKED) throw PoolBusy();
        throw;
    }
}

Transaction::~Transaction() {
    if (!done_) {
        try {
            if (name_.empty()) {
                if (db_.isOpen() && !sqlite3_get_autocommit(db_.handle())) db_.exec("ROLLBACK");
            } else {
                db_.exec("ROLLBACK TO " + name_);
                db_.exec("RELEASE " + name_);
            }
        } catch (const DatabaseError&) {
            // Nothing more can be done from a destructor; the outer level reports.
        }
    }
}

void Transaction::commit() {
    db_.exec(name_.empty() ? std::string("COMMIT") : "RELEASE " + name_);
    done_ = true;
}

}  // namespace tavlo
