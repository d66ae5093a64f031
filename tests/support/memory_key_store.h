#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/key_store.h"
#include "tests/support/call_script.h"

namespace mervane::tests {

/// A key store in memory that answers as the registry does: names in any case, values in the order of their making,
/// rights checked on each handle, "more data" for a buffer that is too small.
///
/// A call chosen by `script` answers `failingAnswer` and does nothing.
class MemoryKeyStore : public platform::KeyStore {
 public:
  static constexpr std::uint32_t user = 0x80000001U;
  static constexpr std::uint32_t machine = 0x80000002U;
  static constexpr std::int32_t invalidHandle = 6;
  static constexpr std::int32_t invalidParameter = 87;
  static constexpr std::int32_t moreData = 234;
  static constexpr std::uint32_t rightToQuery = 1;
  static constexpr std::uint32_t rightToSet = 2;

  explicit MemoryKeyStore(std::shared_ptr<Journal> journal = nullptr);
  ~MemoryKeyStore() override;
  MemoryKeyStore(const MemoryKeyStore&) = delete;
  MemoryKeyStore& operator=(const MemoryKeyStore&) = delete;

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

  /// What a test prepares and looks at; keys are made as needed, and nothing of this is counted or fails.
  void put(std::uint32_t root, const std::string& path, const std::string& name, std::uint32_t type,
           std::vector<std::uint8_t> bytes);
  void putText(const std::string& path, const std::string& name, const std::string& text);
  void putInteger(const std::string& path, const std::string& name, std::int32_t value);
  /// Type and bytes; empty where key or value is missing.
  [[nodiscard]] std::optional<std::pair<std::uint32_t, std::vector<std::uint8_t>>> value(std::uint32_t root,
                                                                                         const std::string& path,
                                                                                         const std::string& name) const;
  /// The user's value without its NUL, or empty where it is missing or of another type.
  [[nodiscard]] std::optional<std::string> text(const std::string& path, const std::string& name) const;
  [[nodiscard]] std::optional<std::int32_t> integer(const std::string& path, const std::string& name) const;
  [[nodiscard]] bool hasKey(std::uint32_t root, const std::string& path) const;
  [[nodiscard]] std::size_t openHandles() const noexcept { return handles_.size(); }

  /// The rights that each opening and making asked for, in their order.
  std::vector<std::uint32_t> accessMasks;
  CallScript script;
  std::int32_t failingAnswer = accessDenied;

 private:
  struct Key;
  struct Open {
    std::shared_ptr<Key> key;
    std::uint32_t rights;
  };

  /// Null where the path, or the root, does not exist.
  [[nodiscard]] std::shared_ptr<Key> find(std::uint32_t root, const std::string& path) const;
  std::shared_ptr<Key> make(std::uint32_t root, const std::string& path);
  Handle open(std::shared_ptr<Key> key, std::uint32_t rights);
  /// 0, or why the handle is of no use for this.
  [[nodiscard]] std::int32_t check(Handle key, std::uint32_t right) const;

  std::map<std::uint32_t, std::shared_ptr<Key>> roots_;
  std::map<Handle, Open> handles_;
  Handle next_ = 0x100;
};

}  // namespace mervane::tests
