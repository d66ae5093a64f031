#include "tests/support/memory_key_store.h"

#include <gtest/gtest.h>

#include <array>

namespace mervane::tests {
namespace {

using platform::KeyStore;

constexpr const char* path = "Software\\Maker\\Product\\values";
constexpr std::uint32_t readMask = 0x20019;
constexpr std::uint32_t writeMask = 63;

TEST(MemoryKeyStore, CreatingMakesAllLevelsAndOpensWhatIsThere) {
  MemoryKeyStore store;
  KeyStore::Handle key = 0;
  std::uint32_t disposition = 0;
  EXPECT_EQ(store.RegCreateKeyExA(MemoryKeyStore::user, path, writeMask, key, disposition), KeyStore::success);
  EXPECT_EQ(disposition, 1U);
  EXPECT_TRUE(store.hasKey(MemoryKeyStore::user, "Software\\Maker"));
  EXPECT_FALSE(store.hasKey(MemoryKeyStore::machine, "Software"));
  EXPECT_EQ(store.RegCreateKeyExA(MemoryKeyStore::user, path, writeMask, key, disposition), KeyStore::success);
  EXPECT_EQ(disposition, 2U);
  EXPECT_EQ(store.openHandles(), 2U);
}

TEST(MemoryKeyStore, OpeningRefusesWhatIsMissing) {
  MemoryKeyStore store;
  KeyStore::Handle key = 0;
  EXPECT_EQ(store.RegOpenKeyExA(MemoryKeyStore::user, path, 0, readMask, key), KeyStore::notFound);
  store.putInteger(path, "n", 1);
  EXPECT_EQ(store.RegOpenKeyExA(MemoryKeyStore::user, "SOFTWARE\\maker\\product\\VALUES", 0, readMask, key),
            KeyStore::success);
  EXPECT_EQ(store.RegOpenKeyExA(0x80000007U, path, 0, readMask, key), MemoryKeyStore::invalidHandle);
}

TEST(MemoryKeyStore, AQueryTellsTypeAndSizeBeforeTheBytes) {
  MemoryKeyStore store;
  store.putText(path, "Name", "abc");
  KeyStore::Handle key = 0;
  ASSERT_EQ(store.RegOpenKeyExA(MemoryKeyStore::user, path, 0, readMask, key), KeyStore::success);
  std::uint32_t type = 0;
  std::uint32_t size = 0;
  EXPECT_EQ(store.RegQueryValueExA(key, "name", type, nullptr, size), KeyStore::success);
  EXPECT_EQ(type, 1U);
  EXPECT_EQ(size, 4U);
  std::array<std::uint8_t, 4> bytes{};
  size = 3;
  EXPECT_EQ(store.RegQueryValueExA(key, "name", type, bytes.data(), size), MemoryKeyStore::moreData);
  EXPECT_EQ(size, 4U);
  EXPECT_EQ(store.RegQueryValueExA(key, "name", type, bytes.data(), size), KeyStore::success);
  EXPECT_EQ(bytes, (std::array<std::uint8_t, 4>{'a', 'b', 'c', 0}));
  EXPECT_EQ(store.RegQueryValueExA(key, "other", type, nullptr, size), KeyStore::notFound);
}

TEST(MemoryKeyStore, AHandleGivesOnlyTheRightsItWasOpenedWith) {
  MemoryKeyStore store;
  store.putInteger(path, "n", 1);
  KeyStore::Handle key = 0;
  ASSERT_EQ(store.RegOpenKeyExA(MemoryKeyStore::user, path, 0, readMask, key), KeyStore::success);
  const std::uint8_t byte = 0;
  EXPECT_EQ(store.RegSetValueExA(key, "n", KeyStore::typeText, &byte, 1), KeyStore::accessDenied);
  EXPECT_EQ(store.integer(path, "n"), 1);
  EXPECT_EQ(store.RegCloseKey(key), KeyStore::success);
  EXPECT_EQ(store.RegCloseKey(key), MemoryKeyStore::invalidHandle);
  std::uint32_t longest = 0;
  EXPECT_EQ(store.RegQueryInfoKeyA(key, longest), MemoryKeyStore::invalidHandle);
}

TEST(MemoryKeyStore, NamesComeInTheOrderOfTheirMaking) {
  MemoryKeyStore store;
  for (const char* name : {"zeta", "a", "middle"}) store.putInteger(path, name, 1);
  store.putInteger(path, "A", 2);  // The same value in another case.
  KeyStore::Handle key = 0;
  ASSERT_EQ(store.RegOpenKeyExA(MemoryKeyStore::user, path, 0, readMask, key), KeyStore::success);
  std::uint32_t longest = 0;
  EXPECT_EQ(store.RegQueryInfoKeyA(key, longest), KeyStore::success);
  EXPECT_EQ(longest, 6U);
  std::vector<std::string> names;
  std::array<char, 7> name{};
  for (std::uint32_t i = 0;; ++i) {
    std::uint32_t size = name.size();
    const std::int32_t answer = store.RegEnumValueA(key, i, name.data(), size);
    if (answer != KeyStore::success) {
      EXPECT_EQ(answer, KeyStore::noMoreItems);
      break;
    }
    names.emplace_back(name.data(), size);
  }
  EXPECT_EQ(names, (std::vector<std::string>{"zeta", "a", "middle"}));
  std::uint32_t small = 4;
  EXPECT_EQ(store.RegEnumValueA(key, 0, name.data(), small), MemoryKeyStore::moreData);
}

TEST(MemoryKeyStore, DeletingRefusesAKeyWithKeysBelowIt) {
  MemoryKeyStore store;
  store.putInteger(path, "n", 1);
  EXPECT_EQ(store.RegDeleteKeyA(MemoryKeyStore::user, "Software\\Maker\\Product"), KeyStore::accessDenied);
  EXPECT_EQ(store.RegDeleteKeyA(MemoryKeyStore::user, path), KeyStore::success);
  EXPECT_EQ(store.RegDeleteKeyA(MemoryKeyStore::user, path), KeyStore::notFound);
  EXPECT_EQ(store.RegDeleteKeyA(MemoryKeyStore::user, "Software\\Maker\\Product"), KeyStore::success);
}

TEST(MemoryKeyStore, TheChosenCallFailsAndDoesNothing) {
  MemoryKeyStore store;
  KeyStore::Handle key = 0;
  std::uint32_t disposition = 0;
  store.script.failCall(2);
  EXPECT_EQ(store.RegCreateKeyExA(MemoryKeyStore::user, path, writeMask, key, disposition), KeyStore::success);
  const std::uint8_t byte = 0;
  EXPECT_EQ(store.RegSetValueExA(key, "n", KeyStore::typeText, &byte, 1), KeyStore::accessDenied);
  EXPECT_TRUE(store.script.triggered());
  EXPECT_FALSE(store.text(path, "n").has_value());
  EXPECT_EQ(store.RegSetValueExA(key, "n", KeyStore::typeText, &byte, 1), KeyStore::success);
  EXPECT_EQ(store.text(path, "n"), "");
}

}  // namespace
}  // namespace mervane::tests
