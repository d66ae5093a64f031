#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace mervane::platform {

/// A hierarchical store of typed named values, cut after the registry of Windows: eight operations that
/// answer 0 for success and another number for a refusal. Nothing here raises.
class KeyStore {
 public:
  using Handle = std::uintptr_t;
  static constexpr std::int32_t success = 0;
  static constexpr std::int32_t notFound = 2;
  static constexpr std::int32_t accessDenied = 5;
  static constexpr std::int32_t invalidHandle = 6;
  static constexpr std::int32_t moreData = 234;  ///< the buffer is too small; the size says what is needed
  static constexpr std::int32_t noMoreItems = 259;
  static constexpr std::int32_t typeText = 1;
  static constexpr std::int32_t typeInteger = 4;

  virtual ~KeyStore() = default;
  /// @param root 0x80000001 for the user's own keys, 0x80000002 for the machine's. Path elements are parted by "\".
  virtual std::int32_t RegOpenKeyExA(std::uint32_t root, const std::string& path, std::uint32_t options,
                                     std::uint32_t accessMask, Handle& key) = 0;
  /// Creates all missing levels; opens the key if it exists.
  virtual std::int32_t RegCreateKeyExA(std::uint32_t root, const std::string& path, std::uint32_t accessMask,
                                       Handle& key, std::uint32_t& disposition) = 0;
  virtual std::int32_t RegCloseKey(Handle key) = 0;
  /// @param data null to ask for type and size alone; otherwise at least `size` bytes. A text's size counts its NUL.
  virtual std::int32_t RegQueryValueExA(Handle key, const std::string& name, std::uint32_t& type, std::uint8_t* data,
                                        std::uint32_t& size) = 0;
  virtual std::int32_t RegSetValueExA(Handle key, const std::string& name, std::uint32_t type, const std::uint8_t* data,
                                      std::uint32_t size) = 0;
  /// @param longestName characters of the longest value name, without a terminator.
  virtual std::int32_t RegQueryInfoKeyA(Handle key, std::uint32_t& longestName) = 0;
  /// @param size in: room in `name`, out: length of the name without a terminator.
  virtual std::int32_t RegEnumValueA(Handle key, std::uint32_t index, char* name, std::uint32_t& size) = 0;
  /// Deletes one key with its values; refuses one that has keys below it.
  virtual std::int32_t RegDeleteKeyA(std::uint32_t root, const std::string& path) = 0;
};

}  // namespace mervane::platform
