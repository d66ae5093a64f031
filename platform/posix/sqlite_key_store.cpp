#include "platform/posix/sqlite_key_store.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <optional>
#include <utility>
#include <vector>

#include "platform/posix/sqlite_connection.h"

namespace mervane::posix {

namespace {

constexpr std::uint32_t userRoot = 0x80000001U;
constexpr std::uint32_t machineRoot = 0x80000002U;
constexpr std::uint32_t rightToQuery = 1;
constexpr std::uint32_t rightToSet = 2;
constexpr std::uint32_t createdNew = 1;
constexpr std::uint32_t openedExisting = 2;

/// Marks a database file as one of these stores ("MrvK").
constexpr std::int64_t applicationId = 0x4D72764B;
constexpr std::int64_t formatVersion = 1;
constexpr const char* schema =
    "CREATE TABLE store_key (id INTEGER PRIMARY KEY AUTOINCREMENT, root INTEGER NOT NULL,"
    " path TEXT NOT NULL COLLATE NOCASE, UNIQUE (root, path));"
    "CREATE TABLE store_value (number INTEGER PRIMARY KEY, key_id INTEGER NOT NULL REFERENCES store_key (id),"
    " name TEXT NOT NULL COLLATE NOCASE, type INTEGER NOT NULL, data BLOB NOT NULL, UNIQUE (key_id, name));"
    "PRAGMA application_id = 1299347019;"
    "PRAGMA user_version = 1;";
static_assert(applicationId == 1299347019);

/// A result that ends a call from within its transaction.
struct Refusal {
  std::int32_t result;
};

/// The elements of a path; empty ones, as two backslashes in a row make them, count for nothing.
std::vector<std::string> elementsOf(const std::string& path) {
  std::vector<std::string> elements(1);
  for (const char c : path) {
    if (c != '\\') {
      elements.back() += c;
    } else if (!elements.back().empty()) {
      elements.emplace_back();
    }
  }
  if (elements.back().empty()) elements.pop_back();
  return elements;
}

std::string joined(const std::vector<std::string>& elements, std::size_t count) {
  std::string path;
  for (std::size_t i = 0; i < count; ++i) path += (i == 0 ? "" : "\\") + elements[i];
  return path;
}

std::int64_t pragma(SqliteConnection& connection, const char* sql) {
  SqliteStatement statement(connection, sql);
  return statement.next() ? statement.integer(0) : 0;
}

enum class Content { ours, nothing, foreign };

Content contentOf(SqliteConnection& connection) {
  const std::int64_t id = pragma(connection, "PRAGMA application_id");
  if (id == applicationId) {
    return pragma(connection, "PRAGMA user_version") == formatVersion ? Content::ours : Content::foreign;
  }
  const bool hasTables = pragma(connection, "SELECT count(*) FROM sqlite_master") != 0;
  return id == 0 && !hasTables ? Content::nothing : Content::foreign;
}

std::optional<std::int64_t> idOf(SqliteConnection& connection, std::uint32_t root, std::string_view path) {
  SqliteStatement statement(connection, "SELECT id FROM store_key WHERE root = ? AND path = ?");
  if (!statement.bind(std::int64_t{root}).bind(path).next()) return std::nullopt;
  return statement.integer(0);
}

std::int32_t resultOf(int sqliteCode) {
  switch (sqliteCode) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return SqliteKeyStore::busy;
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH:
    case SQLITE_CANTOPEN:
      return SqliteKeyStore::accessDenied;
    case SQLITE_FULL:
      return SqliteKeyStore::diskFull;
    case SQLITE_IOERR:
    case SQLITE_NOMEM:
      return SqliteKeyStore::ioError;
    case SQLITE_TOOBIG:
      return SqliteKeyStore::invalidParameter;
    default:
      // What is left speaks of a file that is not what it should be.
      return SqliteKeyStore::damaged;
  }
}

const char* adviceFor(std::int32_t result) {
  switch (result) {
    case SqliteKeyStore::busy:
      return "Another program holds it; try again when that has ended.";
    case SqliteKeyStore::accessDenied:
      return "Check the permissions of the file and of its folder.";
    case SqliteKeyStore::diskFull:
      return "Make room on the disk; what was stored before is unchanged.";
    case SqliteKeyStore::ioError:
      return "Check the disk; what was stored before is unchanged.";
    default:
      return "It was left as it is; move it away to begin with a new one.";
  }
}

}  // namespace

SqliteKeyStore::SqliteKeyStore(std::string file, Report report, std::chrono::milliseconds busyTimeout)
    : file_(std::move(file)), report_(std::move(report)), busyTimeout_(busyTimeout) {}

SqliteKeyStore::~SqliteKeyStore() = default;

bool SqliteKeyStore::fileIdentity(FileId& id) const {
  struct stat status {};
  if (stat(file_.c_str(), &status) != 0) {
    if (errno == ENOENT || errno == ENOTDIR) return false;
    throw SqliteError(SQLITE_CANTOPEN, std::strerror(errno));
  }
  id = {static_cast<std::uint64_t>(status.st_dev), static_cast<std::uint64_t>(status.st_ino)};
  return true;
}

void SqliteKeyStore::makeFile() const {
  constexpr mode_t userOnly = 0700;
  const std::filesystem::path folder = std::filesystem::path(file_).parent_path();
  std::filesystem::path made;
  for (const auto& element : folder) {
    made /= element;
    if (mkdir(made.c_str(), userOnly) != 0 && errno != EEXIST && !std::filesystem::is_directory(made)) {
      throw SqliteError(SQLITE_CANTOPEN, "cannot create the folder " + made.string() + ": " + std::strerror(errno));
    }
  }
  // An empty file is a database without tables. One that another process has made meanwhile is as good.
  const int descriptor = open(file_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
  if (descriptor < 0) throw SqliteError(SQLITE_CANTOPEN, std::strerror(errno));
  close(descriptor);
}

bool SqliteKeyStore::connect(Access access) {
  FileId present;
  bool exists = fileIdentity(present);
  if (connection_ && (!exists || !(present == connected_))) connection_.reset();
  if (!exists) {
    if (access == Access::reading) return false;
    makeFile();
    exists = fileIdentity(present);
  }
  if (!connection_) {
    connection_ = std::make_unique<SqliteConnection>(file_, busyTimeout_);
    connected_ = present;
  }
  return true;
}

template <class Call>
std::int32_t SqliteKeyStore::transaction(Access access, Call&& call) {
  try {
    if (!connect(access)) return notFound;
    SqliteTransaction transaction(
        *connection_, access == Access::writing ? SqliteTransaction::Kind::writing : SqliteTransaction::Kind::reading);
    switch (contentOf(*connection_)) {
      case Content::ours:
        break;
      case Content::nothing:
        if (access == Access::reading) return notFound;
        connection_->execute(schema);
        break;
      case Content::foreign:
        return trouble(damaged, "it is a database of another program or of another version of this one");
    }
    call(*connection_);
    transaction.commit();
    return success;
  } catch (const Refusal& refusal) {
    return refusal.result;
  } catch (const SqliteError& error) {
    return trouble(resultOf(error.code()), error.what());
  } catch (const std::filesystem::filesystem_error& error) {
    return trouble(accessDenied, error.what());
  }
}

template <class Call>
std::int32_t SqliteKeyStore::onKey(Handle key, std::uint32_t right, Access access, Call&& call) {
  const auto found = handles_.find(key);
  if (found == handles_.end()) return invalidHandle;
  const OpenKey open = found->second;
  if ((open.rights & right) != right) return accessDenied;
  return transaction(access, [&](SqliteConnection& connection) {
    SqliteStatement present(connection, "SELECT 1 FROM store_key WHERE id = ?");
    if (!present.bind(open.id).next()) throw Refusal{keyDeleted};
    call(connection, open.id);
  });
}

std::int32_t SqliteKeyStore::trouble(std::int32_t result, const std::string& text) {
  if (report_ && reported_.insert(result).second) {
    report_("The settings store " + file_ + " cannot be used: " + text + ". " + adviceFor(result));
  }
  return result;
}

platform::KeyStore::Handle SqliteKeyStore::handOut(std::int64_t id, std::uint32_t rights) {
  handles_.emplace(nextHandle_, OpenKey{id, rights});
  return nextHandle_++;
}

std::int32_t SqliteKeyStore::RegOpenKeyExA(std::uint32_t root, const std::string& path, std::uint32_t options,
                                           std::uint32_t accessMask, Handle& key) {
  if (root != userRoot && root != machineRoot) return invalidHandle;
  if (options != 0) return invalidParameter;
  const std::vector<std::string> elements = elementsOf(path);
  std::optional<std::int64_t> id;
  const std::int32_t result = transaction(Access::reading, [&](SqliteConnection& connection) {
    id = idOf(connection, root, joined(elements, elements.size()));
    if (!id) throw Refusal{notFound};
  });
  if (result == success) key = handOut(id.value(), accessMask);
  return result;
}

std::int32_t SqliteKeyStore::RegCreateKeyExA(std::uint32_t root, const std::string& path, std::uint32_t accessMask,
                                             Handle& key, std::uint32_t& disposition) {
  // A key that is there costs no writing.
  const std::int32_t opened = RegOpenKeyExA(root, path, 0, accessMask, key);
  if (opened == success) disposition = openedExisting;
  if (opened != notFound) return opened;

  const std::vector<std::string> elements = elementsOf(path);
  if (elements.empty()) return invalidParameter;
  std::int64_t id = 0;
  const std::int32_t result = transaction(Access::writing, [&](SqliteConnection& connection) {
    disposition = openedExisting;
    for (std::size_t count = 1; count <= elements.size(); ++count) {
      const std::string level = joined(elements, count);
      auto present = idOf(connection, root, level);
      if (!present) {
        SqliteStatement insertion(connection, "INSERT INTO store_key (root, path) VALUES (?, ?)");
        insertion.bind(std::int64_t{root}).bind(level).next();
        present = idOf(connection, root, level);
        disposition = createdNew;
      }
      id = present.value();
    }
  });
  if (result == success) key = handOut(id, accessMask);
  return result;
}

std::int32_t SqliteKeyStore::RegCloseKey(Handle key) {
  return handles_.erase(key) == 1 ? success : invalidHandle;
}

std::int32_t SqliteKeyStore::RegQueryValueExA(Handle key, const std::string& name, std::uint32_t& type,
                                              std::uint8_t* data, std::uint32_t& size) {
  return onKey(key, rightToQuery, Access::reading, [&](SqliteConnection& connection, std::int64_t id) {
    SqliteStatement value(connection, "SELECT type, data FROM store_value WHERE key_id = ? AND name = ?");
    if (!value.bind(id).bind(name).next()) throw Refusal{notFound};
    const std::vector<std::uint8_t> bytes = value.bytes(1);
    const std::uint32_t room = size;
    type = static_cast<std::uint32_t>(value.integer(0));
    size = static_cast<std::uint32_t>(bytes.size());
    if (data == nullptr) return;
    if (room < size) throw Refusal{moreData};
    if (!bytes.empty()) std::memcpy(data, bytes.data(), bytes.size());
  });
}

std::int32_t SqliteKeyStore::RegSetValueExA(Handle key, const std::string& name, std::uint32_t type,
                                            const std::uint8_t* data, std::uint32_t size) {
  // OPTIMIZATION: a value that is there already costs no writing, and most values of a saving are.
  bool unchanged = false;
  const std::int32_t looked =
      onKey(key, rightToSet, Access::reading, [&](SqliteConnection& connection, std::int64_t id) {
        SqliteStatement present(connection,
                                "SELECT 1 FROM store_value WHERE key_id = ? AND name = ? AND type = ? AND data = ?");
        unchanged = present.bind(id).bind(name).bind(std::int64_t{type}).bind(data, size).next();
      });
  if (looked != success || unchanged) return looked;

  return onKey(key, rightToSet, Access::writing, [&](SqliteConnection& connection, std::int64_t id) {
    SqliteStatement value(connection,
                          "INSERT INTO store_value (key_id, name, type, data) VALUES (?, ?, ?, ?)"
                          " ON CONFLICT (key_id, name) DO UPDATE SET type = excluded.type, data = excluded.data");
    value.bind(id).bind(name).bind(std::int64_t{type}).bind(data, size).next();
  });
}

std::int32_t SqliteKeyStore::RegQueryInfoKeyA(Handle key, std::uint32_t& longestName) {
  return onKey(key, rightToQuery, Access::reading, [&](SqliteConnection& connection, std::int64_t id) {
    SqliteStatement names(connection, "SELECT max(length(CAST(name AS BLOB))) FROM store_value WHERE key_id = ?");
    longestName = names.bind(id).next() ? static_cast<std::uint32_t>(names.integer(0)) : 0;
  });
}

std::int32_t SqliteKeyStore::RegEnumValueA(Handle key, std::uint32_t index, char* name, std::uint32_t& size) {
  return onKey(key, rightToQuery, Access::reading, [&](SqliteConnection& connection, std::int64_t id) {
    SqliteStatement names(connection, "SELECT name FROM store_value WHERE key_id = ? ORDER BY number LIMIT 1 OFFSET ?");
    if (!names.bind(id).bind(std::int64_t{index}).next()) throw Refusal{noMoreItems};
    const std::string found = names.text(0);
    if (size < found.size() + 1) throw Refusal{moreData};
    std::memcpy(name, found.c_str(), found.size() + 1);
    size = static_cast<std::uint32_t>(found.size());
  });
}

std::int32_t SqliteKeyStore::RegDeleteKeyA(std::uint32_t root, const std::string& path) {
  if (root != userRoot && root != machineRoot) return invalidHandle;
  const std::vector<std::string> elements = elementsOf(path);
  if (elements.empty()) return accessDenied;
  const std::string whole = joined(elements, elements.size());
  // Looked for before, so that a key that is not there brings no file into being.
  const std::int32_t found = transaction(Access::reading, [&](SqliteConnection& connection) {
    if (!idOf(connection, root, whole)) throw Refusal{notFound};
  });
  if (found != success) return found;

  return transaction(Access::writing, [&](SqliteConnection& connection) {
    const auto id = idOf(connection, root, whole);
    if (!id) throw Refusal{notFound};
    const std::string prefix = whole + "\\";
    SqliteStatement below(connection,
                          "SELECT 1 FROM store_key WHERE root = ? AND substr(path, 1, length(?)) = ? COLLATE NOCASE");
    if (below.bind(std::int64_t{root}).bind(prefix).bind(prefix).next()) throw Refusal{accessDenied};
    SqliteStatement(connection, "DELETE FROM store_value WHERE key_id = ?").bind(*id).next();
    SqliteStatement(connection, "DELETE FROM store_key WHERE id = ?").bind(*id).next();
  });
}

}  // namespace mervane::posix
