#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>

#include "platform/key_store.h"

namespace mervane::posix {

class SqliteConnection;

/// A key store in one database file, durable and shared by any number of processes. Every call is one transaction
/// with SQLite's rollback journal: that needs no further files beside it while nobody writes, so that a store in a
/// directory without write permission, or on a network file system, can still be read.
///
/// The file is made, with its directories and for its user alone, by the first RegCreateKeyExA. A file that is
/// damaged, in use for too long, not writable or no store of ours is answered by a result other than success,
/// reported once for each kind of trouble, and never changed. Names are found in any case of their ASCII letters.
class SqliteKeyStore final : public platform::KeyStore {
 public:
  static constexpr std::int32_t invalidParameter = 87;
  static constexpr std::int32_t diskFull = 112;
  static constexpr std::int32_t busy = 170;
  static constexpr std::int32_t damaged = 1009;
  static constexpr std::int32_t keyDeleted = 1018;
  static constexpr std::int32_t ioError = 1117;

  /// Takes a sentence that says what is wrong with which file and what to do.
  using Report = std::function<void(const std::string&)>;

  SqliteKeyStore(std::string file, Report report, std::chrono::milliseconds busyTimeout = std::chrono::seconds(5));
  ~SqliteKeyStore() override;
  SqliteKeyStore(const SqliteKeyStore&) = delete;
  SqliteKeyStore& operator=(const SqliteKeyStore&) = delete;

  std::int32_t RegOpenKeyExA(std::uint32_t root, const std::string& path, std::uint32_t options,
                             std::uint32_t accessMask, Handle& key) override;
  std::int32_t RegCreateKeyExA(std::uint32_t root, const std::string& path, std::uint32_t accessMask, Handle& key,
                               std::uint32_t& disposition) override;
  std::int32_t RegCloseKey(Handle key) override;
  std::int32_t RegQueryValueExA(Handle key, const std::string& name, std::uint32_t& type, std::uint8_t* data,
                                std::uint32_t& size) override;
  std::int32_t RegSetValueExA(Handle key, const std::string& name, std::uint32_t type, const std::uint8_t* data,
                              std::uint32_t size) override;
  std::int32_t RegQueryInfoKeyA(Handle key, std::uint32_t& longestName) override;
  std::int32_t RegEnumValueA(Handle key, std::uint32_t index, char* name, std::uint32_t& size) override;
  std::int32_t RegDeleteKeyA(std::uint32_t root, const std::string& path) override;

  [[nodiscard]] const std::string& file() const noexcept { return file_; }

 private:
  struct OpenKey {
    std::int64_t id;
    std::uint32_t rights;
  };
  /// Which file a connection has open, so that one that was moved away or replaced meanwhile is noticed.
  struct FileId {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    friend bool operator==(const FileId&, const FileId&) = default;
  };
  enum class Access { reading, writing };

  /// Runs one call in its transaction and turns every refusal into a result.
  template <class Call>
  std::int32_t transaction(Access access, Call&& call);
  /// The same on an open key; checks the handle's right and that the key still exists.
  template <class Call>
  std::int32_t onKey(Handle key, std::uint32_t right, Access access, Call&& call);

  /// @return false where there is no file and none is to be made
  bool connect(Access access);
  [[nodiscard]] bool fileIdentity(FileId& id) const;
  void makeFile() const;
  Handle handOut(std::int64_t id, std::uint32_t rights);
  std::int32_t trouble(std::int32_t result, const std::string& text);

  std::string file_;
  Report report_;
  std::chrono::milliseconds busyTimeout_;
  std::unique_ptr<SqliteConnection> connection_;
  FileId connected_;
  std::map<Handle, OpenKey> handles_;
  Handle nextHandle_ = 1;
  std::set<std::int32_t> reported_;
};

}  // namespace mervane::posix
