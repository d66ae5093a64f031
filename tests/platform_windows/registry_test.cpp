#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "mervane/failure.h"
#include "mervane/service_errors.h"
#include "platform/windows/windows_services.h"
#include "support/app_settings.h"
#include "support/globals.h"
#include "tests/support/own_user_registry.h"

// The settings store on the registry: what the calls of the platform leave behind and answer.

namespace mervane::tests {
namespace {

constexpr const wchar_t* application = L"Software\\Tarvik\\MervaneCls3";

class RegistrySettings : public testing::Test {
 protected:
  RegistrySettings() {
    globals::release();
    globals::platform(platform::makeWindowsServices());
    settings.Init("Tarvik", "MervaneCls3");
  }
  ~RegistrySettings() override { globals::release(); }

  /// The number of the failure that comes out, 0 for none.
  template <class Body>
  static std::int32_t numberOf(Body&& body) {
    try {
      body();
      return 0;
    } catch (const Failure& failure) {
      return failure.number();
    }
  }
  void save(const std::string& section, const std::string& key, Variant value) {
    settings.SaveSetting(section, key, value);
  }
  static std::wstring path(const wchar_t* section) { return std::wstring(application) + L"\\" + section; }
  static void create(const std::wstring& path) {
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr), 0);
    RegCloseKey(key);
  }
  static void put(const wchar_t* section, const wchar_t* name, DWORD type, const std::vector<BYTE>& bytes) {
    create(path(section));
    ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, path(section).c_str(), name, type, bytes.data(),
                              static_cast<DWORD>(bytes.size())),
              0);
  }
  static bool exists(const std::wstring& path) {
    HKEY key = nullptr;
    const bool found = RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_READ, &key) == ERROR_SUCCESS;
    if (found) RegCloseKey(key);
    return found;
  }
  /// Type and bytes of a value, a text in the 8-bit code page.
  static std::pair<DWORD, std::string> stored(const char* section, const char* name) {
    HKEY key = nullptr;
    const std::string place = std::string("Software\\Tarvik\\MervaneCls3\\") + section;
    DWORD type = REG_NONE;
    char bytes[256] = {};
    DWORD size = sizeof bytes;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, place.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return {};
    const LSTATUS status = RegQueryValueExA(key, name, nullptr, &type, reinterpret_cast<BYTE*>(bytes), &size);
    RegCloseKey(key);
    return status == ERROR_SUCCESS ? std::pair{type, std::string(bytes, size)} : std::pair<DWORD, std::string>{};
  }

  OwnUserRegistry registry{L"Software\\MervanePlatformTest"};
  CAppSettings settings;
};

TEST_F(RegistrySettings, TheFirstSavingCreatesAllLevelsAtOnce) {
  EXPECT_FALSE(exists(L"Software"));
  save("values", "INPUTS", std::string("A1:B9"));
  EXPECT_TRUE(exists(path(L"values")));
  EXPECT_EQ(stored("values", "INPUTS"), std::pair(DWORD{REG_SZ}, std::string("A1:B9\0", 6)));
  EXPECT_EQ(settings.GetSetting("values", "INPUTS", Variant()), Variant(std::string("A1:B9")));
}

TEST_F(RegistrySettings, AnEmptyTextHasTheSizeOneAndIsNotTheDefault) {
  save("values", "OUTPUTS", std::string());
  EXPECT_EQ(stored("values", "OUTPUTS"), std::pair(DWORD{REG_SZ}, std::string(1, '\0')));
  EXPECT_EQ(settings.GetSetting("values", "OUTPUTS", std::string("default")), Variant(std::string()));
}

TEST_F(RegistrySettings, LettersBeyondAsciiComeBackAndStandInTheRegistryAsThemselves) {
  save("values", "INPUTS", std::string("Gr\u00f6\u00dfe!A1"));
  wchar_t text[64] = {};
  DWORD size = sizeof text;
  EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, path(L"values").c_str(), L"INPUTS", RRF_RT_REG_SZ, nullptr, text, &size),
            0);
  EXPECT_STREQ(text, L"Gr\u00f6\u00dfe!A1");
  EXPECT_EQ(settings.GetSetting("values", "INPUTS", Variant()), Variant(std::string("Gr\u00f6\u00dfe!A1")));
}

TEST_F(RegistrySettings, ANumberIsStoredAsAnIntegerAndTheCallersVariableToo) {
  Variant value = 2.5;
  settings.SaveSetting("window", "left", value);
  EXPECT_EQ(value, Variant(std::int32_t{2}));
  EXPECT_EQ(stored("window", "left"), std::pair(DWORD{REG_DWORD}, std::string("\2\0\0\0", 4)));
  save("window", "top", std::int32_t{-3});
  EXPECT_EQ(settings.GetSetting("window", "top", Variant()), Variant(std::int32_t{-3}));
}

TEST_F(RegistrySettings, ATruthValueIsStoredAsItsWord) {
  save("values", "on", true);
  EXPECT_EQ(settings.GetSetting("values", "on", Variant()), Variant(globals::locale().trueWord));
}

TEST_F(RegistrySettings, WhatCannotBeReadGivesTheDefault) {
  EXPECT_EQ(settings.GetSetting("nowhere", "a", std::int32_t{7}), Variant(std::int32_t{7}));
  put(L"values", L"binary", REG_BINARY, {1, 2, 3, 4});
  EXPECT_EQ(settings.GetSetting("values", "binary", std::int32_t{7}), Variant(std::int32_t{7}));
  EXPECT_EQ(settings.GetSetting("values", "missing", std::string("x")), Variant(std::string("x")));
  put(L"values", L"wide", REG_DWORD, {1, 0, 0, 0, 0, 0, 0, 0});
  EXPECT_EQ(settings.GetSetting("values", "wide", std::int32_t{7}), Variant(std::int32_t{7}));
}

TEST_F(RegistrySettings, ATextOfNoBytesFails) {
  put(L"values", L"nothing", REG_SZ, {});
  EXPECT_EQ(numberOf([&] { static_cast<void>(settings.GetSetting("values", "nothing", Variant())); }),
            eErr_SettingsFailure);
}

TEST_F(RegistrySettings, AllKeysOfASectionAreListedFromOneWithoutItsSubkeys) {
  save("values", "B\u00e4r", std::int32_t{1});
  save("values", "a name that is much longer than the other one", std::string("x"));
  create(path(L"values\\below"));
  Array<std::string> keys;
  settings.GetAllKeys("values", keys);
  ASSERT_EQ(keys.bounds().size(), 1U);
  EXPECT_EQ(keys.bounds().front(), (Bounds{1, 2}));
  // The store decides the order.
  EXPECT_EQ(std::set<std::string>(keys.elements().begin(), keys.elements().end()),
            (std::set<std::string>{"B\u00e4r", "a name that is much longer than the other one"}));
  create(path(L"empty"));
  settings.GetAllKeys("empty", keys);
  EXPECT_TRUE(keys.elements().empty());
  EXPECT_EQ(numberOf([&] { settings.GetAllKeys("missing", keys); }), eErr_GetAllKeys);
}

TEST_F(RegistrySettings, DeletingTakesASectionButNoneWithSubkeysAndNoValue) {
  save("values", "CLUSTERS", std::string("3"));
  EXPECT_EQ(numberOf([&] { settings.DeleteSetting("values", "CLUSTERS"); }), eErr_DeleteSetting);
  EXPECT_EQ(settings.GetSetting("values", "CLUSTERS", Variant()), Variant(std::string("3")));
  create(path(L"values\\Key"));
  EXPECT_EQ(numberOf([&] { settings.DeleteSetting("values", ""); }), eErr_DeleteSetting);
  EXPECT_EQ(numberOf([&] { settings.DeleteSetting("values", "CLUSTERS"); }), 0);
  EXPECT_FALSE(exists(path(L"values\\Key")));
  EXPECT_EQ(numberOf([&] { settings.DeleteSetting("values", ""); }), 0);
  EXPECT_FALSE(exists(path(L"values")));
}

}  // namespace
}  // namespace mervane::tests
