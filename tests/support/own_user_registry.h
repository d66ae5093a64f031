#pragma once

#include <gtest/gtest.h>
#include <windows.h>

namespace mervane::tests {

/// The user's part of the registry is a place of this test's own, empty at the beginning, so that nothing is remembered
/// from elsewhere and nothing stays.
class OwnUserRegistry {
 public:
  /// @param path of the key that serves as the place, one for each test program
  explicit OwnUserRegistry(const wchar_t* path) : path_(path) {
    RegDeleteTreeW(HKEY_CURRENT_USER, path_);
    RegCreateKeyExW(HKEY_CURRENT_USER, path_, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key_, nullptr);
    EXPECT_EQ(RegOverridePredefKey(HKEY_CURRENT_USER, key_), ERROR_SUCCESS);
  }
  ~OwnUserRegistry() {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegCloseKey(key_);
    RegDeleteTreeW(HKEY_CURRENT_USER, path_);
    RegDeleteKeyW(HKEY_CURRENT_USER, path_);
  }
  OwnUserRegistry(const OwnUserRegistry&) = delete;
  OwnUserRegistry& operator=(const OwnUserRegistry&) = delete;

 private:
  const wchar_t* path_;
  HKEY key_ = nullptr;
};

}  // namespace mervane::tests
