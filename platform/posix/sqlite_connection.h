#pragma once

#include <chrono>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace mervane::posix {

/// What SQLite refused, with its result code.
class SqliteError : public std::runtime_error {
 public:
  SqliteError(int code, const std::string& message) : std::runtime_error(message), code_(code) {}
  /// The primary result code.
  [[nodiscard]] int code() const noexcept { return code_ & 0xFF; }

 private:
  int code_;
};

/// One open database file. Every refusal is a SqliteError.
class SqliteConnection {
 public:
  /// Opens an existing file, for reading alone where the file may not be written.
  SqliteConnection(const std::string& file, std::chrono::milliseconds busyTimeout);
  ~SqliteConnection();
  SqliteConnection(const SqliteConnection&) = delete;
  SqliteConnection& operator=(const SqliteConnection&) = delete;

  void execute(const char* sql);

 private:
  friend class SqliteStatement;
  [[noreturn]] void fail(int code) const;

  sqlite3* database_ = nullptr;
};

/// One statement, prepared and run once.
class SqliteStatement {
 public:
  SqliteStatement(SqliteConnection& connection, const char* sql);
  ~SqliteStatement();
  SqliteStatement(const SqliteStatement&) = delete;
  SqliteStatement& operator=(const SqliteStatement&) = delete;

  /// Parameters in order, each bound to the next place.
  SqliteStatement& bind(std::int64_t value);
  SqliteStatement& bind(std::string_view text);
  SqliteStatement& bind(const std::uint8_t* bytes, std::size_t size);

  /// @return whether there is a row
  bool next();
  [[nodiscard]] std::int64_t integer(int column);
  [[nodiscard]] std::string text(int column);
  [[nodiscard]] std::vector<std::uint8_t> bytes(int column);

 private:
  void check(int code) const;

  SqliteConnection& connection_;
  sqlite3_stmt* statement_ = nullptr;
  int bound_ = 0;
};

/// A transaction that is undone unless it is committed.
class SqliteTransaction {
 public:
  enum class Kind { reading, writing };

  SqliteTransaction(SqliteConnection& connection, Kind kind);
  ~SqliteTransaction();
  SqliteTransaction(const SqliteTransaction&) = delete;
  SqliteTransaction& operator=(const SqliteTransaction&) = delete;

  void commit();

 private:
  SqliteConnection& connection_;
  bool open_ = true;
};

}  // namespace mervane::posix
