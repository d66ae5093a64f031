#include "platform/posix/sqlite_connection.h"

#include <sqlite3.h>

#include <limits>

namespace mervane::posix {

SqliteConnection::SqliteConnection(const std::string& file, std::chrono::milliseconds busyTimeout) {
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX;
  const int code = sqlite3_open_v2(file.c_str(), &database_, flags, nullptr);
  if (code != SQLITE_OK) {
    const std::string message = database_ != nullptr ? sqlite3_errmsg(database_) : sqlite3_errstr(code);
    sqlite3_close(database_);
    throw SqliteError(code, message);
  }
  sqlite3_extended_result_codes(database_, 1);
  sqlite3_busy_timeout(database_, static_cast<int>(busyTimeout.count()));
  // The file may come from anywhere: nothing in it is run, and nothing of it is believed unchecked.
  sqlite3_db_config(database_, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(database_, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
  sqlite3_db_config(database_, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
  sqlite3_db_config(database_, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
}

SqliteConnection::~SqliteConnection() {
  sqlite3_close(database_);
}

void SqliteConnection::fail(int code) const {
  throw SqliteError(code, sqlite3_errmsg(database_));
}

void SqliteConnection::execute(const char* sql) {
  const int code = sqlite3_exec(database_, sql, nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) fail(code);
}

SqliteStatement::SqliteStatement(SqliteConnection& connection, const char* sql) : connection_(connection) {
  check(sqlite3_prepare_v2(connection_.database_, sql, -1, &statement_, nullptr));
}

SqliteStatement::~SqliteStatement() {
  sqlite3_finalize(statement_);
}

void SqliteStatement::check(int code) const {
  if (code != SQLITE_OK) connection_.fail(code);
}

SqliteStatement& SqliteStatement::bind(std::int64_t value) {
  check(sqlite3_bind_int64(statement_, ++bound_, value));
  return *this;
}

SqliteStatement& SqliteStatement::bind(std::string_view text) {
  check(sqlite3_bind_text64(statement_, ++bound_, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
  return *this;
}

SqliteStatement& SqliteStatement::bind(const std::uint8_t* bytes, std::size_t size) {
  // A null pointer would bind NULL instead of no bytes.
  check(size == 0 ? sqlite3_bind_zeroblob(statement_, ++bound_, 0)
                  : sqlite3_bind_blob64(statement_, ++bound_, bytes, size, SQLITE_TRANSIENT));
  return *this;
}

bool SqliteStatement::next() {
  const int code = sqlite3_step(statement_);
  if (code != SQLITE_ROW && code != SQLITE_DONE) connection_.fail(code);
  return code == SQLITE_ROW;
}

std::int64_t SqliteStatement::integer(int column) {
  return sqlite3_column_int64(statement_, column);
}

std::string SqliteStatement::text(int column) {
  const auto* content = sqlite3_column_text(statement_, column);
  const int size = sqlite3_column_bytes(statement_, column);
  if (content == nullptr) return {};
  return {reinterpret_cast<const char*>(content), static_cast<std::size_t>(size)};
}

std::vector<std::uint8_t> SqliteStatement::bytes(int column) {
  const auto* content = static_cast<const std::uint8_t*>(sqlite3_column_blob(statement_, column));
  const int size = sqlite3_column_bytes(statement_, column);
  if (content == nullptr) return {};
  return {content, content + size};
}

SqliteTransaction::SqliteTransaction(SqliteConnection& connection, Kind kind) : connection_(connection) {
  // A writer takes its lock at the beginning, so that it never has to give up half-way for another one.
  connection_.execute(kind == Kind::writing ? "BEGIN IMMEDIATE" : "BEGIN");
}

SqliteTransaction::~SqliteTransaction() {
  if (!open_) return;
  try {
    connection_.execute("ROLLBACK");
  } catch (const SqliteError&) {  // NOLINT(bugprone-empty-catch): SQLite has rolled back by itself.
  }
}

void SqliteTransaction::commit() {
  connection_.execute("COMMIT");
  open_ = false;
}

}  // namespace mervane::posix
