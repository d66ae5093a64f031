#pragma once

#include "platform/key_store.h"

namespace mervane::windows {

/// The registry, through its eight calls of the 8-bit code page. Texts of the system are UTF-8 and are turned into the
/// code page here, and back.
class Registry final : public platform::KeyStore {
 public:
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
};

}  // namespace mervane::windows
