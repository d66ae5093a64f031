#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/posix/sqlite_key_store.h"
#include "tests/platform_posix/temporary_folder.h"

namespace mervane::tests {

/// A store in a folder of its own; troubles are gathered.
class StoreTest : public testing::Test {
 protected:
  static constexpr std::uint32_t user = 0x80000001U;
  static constexpr std::uint32_t machineRoot = 0x80000002U;
  static constexpr std::uint32_t all = 63;
  static constexpr std::uint32_t reading = 0x20019;
  using Store = posix::SqliteKeyStore;

  std::unique_ptr<Store> openStore(std::chrono::milliseconds timeout = std::chrono::seconds(5)) {
    return std::make_unique<Store>(
        file, [this](const std::string& text) { troubles.push_back(text); }, timeout);
  }

  static std::int32_t setText(Store& store, const std::string& path, const std::string& name, const std::string& text) {
    Store::Handle key = 0;
    std::uint32_t disposition = 0;
    if (const std::int32_t result = store.RegCreateKeyExA(user, path, all, key, disposition);
        result != Store::success) {
      return result;
    }
    const std::int32_t result =
        store.RegSetValueExA(key, name, Store::typeText, reinterpret_cast<const std::uint8_t*>(text.c_str()),
                             static_cast<std::uint32_t>(text.size() + 1));
    store.RegCloseKey(key);
    return result;
  }

  static std::optional<std::string> text(Store& store, const std::string& path, const std::string& name) {
    Store::Handle key = 0;
    if (store.RegOpenKeyExA(user, path, 0, reading, key) != Store::success) return std::nullopt;
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    std::optional<std::string> found;
    if (store.RegQueryValueExA(key, name, type, nullptr, size) == Store::success && size > 0) {
      std::vector<std::uint8_t> bytes(size);
      if (store.RegQueryValueExA(key, name, type, bytes.data(), size) == Store::success && type == Store::typeText) {
        found = std::string(bytes.begin(), bytes.end() - 1);
      }
    }
    store.RegCloseKey(key);
    return found;
  }

  TemporaryFolder folder;
  std::string file = folder.file("mervane/settings.db");
  std::vector<std::string> troubles;
};

}  // namespace mervane::tests
