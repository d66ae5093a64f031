#pragma once

#include <gtest/gtest.h>
#include <windows.h>

namespace mervane::tests {

/// The user's part of the registry is a place of this test's own, empty at the beginning.
class OwnUserRegistry {
 public:
  OwnUserRegistry() {
    RegDeleteTreeW(HKEY_CURRENT_USER, path);
    RegCreateKeyExW(HKEY_CURRENT_USER, path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key_, nullptr);
    EXPECT_EQ(RegOverridePredefKey(HKEY_CURRENT_USER, key_), ERROR_SUCCESS);
  }
  ~OwnUserRegistry() {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegCloseKey(key_);
    RegDeleteTreeW(HKEY_CURRENT_USER, path);
    RegDeleteKeyW(HKEY_CURRENT_USER, path);
  }
  OwnUserRegistry(const OwnUserRegistry&) = delete;
  OwnUserRegistry& operator=(const OwnUserRegistry&) = delete;

 private:
  static constexpr const wchar_t* path = L"Software\\MervanePlatformTest";
  HKEY key_ = nullptr;
};

}  // namespace mervane::tests
