#include <sys/stat.h>

#include <array>

#include "tests/platform_posix/sqlite_key_store_fixture.h"

namespace mervane::tests {

using SqliteKeyStore = StoreTest;

TEST_F(SqliteKeyStore, LookingBringsNoFileIntoBeing) {
  auto store = openStore();
  Store::Handle key = 0;
  EXPECT_EQ(store->RegOpenKeyExA(user, "Software", 0, reading, key), Store::notFound);
  EXPECT_EQ(store->RegDeleteKeyA(user, "Software"), Store::notFound);
  EXPECT_FALSE(std::filesystem::exists(folder.file("mervane")));
  EXPECT_TRUE(troubles.empty());
}

TEST_F(SqliteKeyStore, CreatingAKeyMakesAllItsLevelsInOneCall) {
  auto store = openStore();
  Store::Handle key = 0;
  std::uint32_t disposition = 0;
  ASSERT_EQ(store->RegCreateKeyExA(user, R"(Software\Tarvik\MervaneCls3\values)", all, key, disposition),
            Store::success);
  EXPECT_EQ(disposition, 1U);
  for (const char* level : {"Software", R"(Software\Tarvik)", R"(Software\Tarvik\MervaneCls3)"}) {
    Store::Handle parent = 0;
    EXPECT_EQ(store->RegOpenKeyExA(user, level, 0, reading, parent), Store::success) << level;
  }
  ASSERT_EQ(store->RegCreateKeyExA(user, R"(Software\Tarvik)", all, key, disposition), Store::success);
  EXPECT_EQ(disposition, 2U);
}

TEST_F(SqliteKeyStore, TheFileAndItsFolderAreForTheirUserAlone) {
  ASSERT_EQ(setText(*openStore(), "Software", "a", "b"), Store::success);
  struct stat status {};
  ASSERT_EQ(stat(file.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);
  ASSERT_EQ(stat(folder.file("mervane").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0700U);
}

TEST_F(SqliteKeyStore, ValuesComeBackWithTypeAndBytesInANewProcessOfTheStore) {
  {
    auto store = openStore();
    Store::Handle key = 0;
    std::uint32_t disposition = 0;
    ASSERT_EQ(store->RegCreateKeyExA(user, "Software", all, key, disposition), Store::success);
    const std::array<std::uint8_t, 4> number = {0xD2, 0x04, 0, 0};
    EXPECT_EQ(store->RegSetValueExA(key, "number", Store::typeInteger, number.data(), 4), Store::success);
    const std::string withNul("a\0b\0", 4);
    EXPECT_EQ(
        store->RegSetValueExA(key, "text", Store::typeText, reinterpret_cast<const std::uint8_t*>(withNul.data()), 4),
        Store::success);
    EXPECT_EQ(store->RegSetValueExA(key, "nothing", 3, nullptr, 0), Store::success);
  }
  auto store = openStore();
  Store::Handle key = 0;
  ASSERT_EQ(store->RegOpenKeyExA(user, "Software", 0, reading, key), Store::success);
  std::array<std::uint8_t, 8> bytes{};
  std::uint32_t type = 0;
  std::uint32_t size = 8;
  ASSERT_EQ(store->RegQueryValueExA(key, "number", type, bytes.data(), size), Store::success);
  EXPECT_EQ(type, 4U);
  EXPECT_EQ(size, 4U);
  EXPECT_EQ(bytes[0], 0xD2);
  EXPECT_EQ(bytes[1], 0x04);
  size = 8;
  ASSERT_EQ(store->RegQueryValueExA(key, "text", type, bytes.data(), size), Store::success);
  EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + size), std::string("a\0b\0", 4));
  size = 8;
  ASSERT_EQ(store->RegQueryValueExA(key, "nothing", type, bytes.data(), size), Store::success);
  EXPECT_EQ(type, 3U);
  EXPECT_EQ(size, 0U);
}

TEST_F(SqliteKeyStore, ATooSmallBufferIsToldTheSize) {
  auto store = openStore();
  ASSERT_EQ(setText(*store, "Software", "text", "twelve bytes"), Store::success);
  Store::Handle key = 0;
  ASSERT_EQ(store->RegOpenKeyExA(user, "Software", 0, reading, key), Store::success);
  std::array<std::uint8_t, 4> bytes{};
  std::uint32_t type = 0;
  std::uint32_t size = 4;
  EXPECT_EQ(store->RegQueryValueExA(key, "text", type, bytes.data(), size), Store::moreData);
  EXPECT_EQ(size, 13U);
  EXPECT_EQ(bytes, (std::array<std::uint8_t, 4>{}));
  EXPECT_EQ(store->RegQueryValueExA(key, "text", type, nullptr, size), Store::success);
  EXPECT_EQ(store->RegQueryValueExA(key, "missing", type, nullptr, size), Store::notFound);
}

TEST_F(SqliteKeyStore, NamesAndPathsAreFoundInAnyCase) {
  auto store = openStore();
  ASSERT_EQ(setText(*store, R"(Software\Tarvik)", "Inputs", "A1"), Store::success);
  EXPECT_EQ(text(*store, R"(SOFTWARE\tarvik\)", "INPUTS"), "A1");
  ASSERT_EQ(setText(*store, R"(software\TARVIK)", "inputs", "B1"), Store::success);
  EXPECT_EQ(text(*store, R"(Software\Tarvik)", "Inputs"), "B1");
}

TEST_F(SqliteKeyStore, NamesAreListedInTheOrderOfTheirMaking) {
  auto store = openStore();
  for (const char* name : {"zebra", "ant", "longest name", "bee"}) {
    ASSERT_EQ(setText(*store, "Software", name, "1"), Store::success);
  }
  ASSERT_EQ(setText(*store, "Software", "zebra", "2"), Store::success);  // Changed, but in its old place.
  Store::Handle key = 0;
  ASSERT_EQ(store->RegOpenKeyExA(user, "Software", 0, 1, key), Store::success);
  std::uint32_t longest = 0;
  ASSERT_EQ(store->RegQueryInfoKeyA(key, longest), Store::success);
  EXPECT_EQ(longest, 12U);
  std::vector<std::string> names;
  std::array<char, 13> name{};
  for (std::uint32_t index = 0;; ++index) {
    auto size = static_cast<std::uint32_t>(name.size());
    const std::int32_t result = store->RegEnumValueA(key, index, name.data(), size);
    if (result != Store::success) {
      EXPECT_EQ(result, Store::noMoreItems);
      break;
    }
    names.emplace_back(name.data(), size);
  }
  EXPECT_EQ(names, (std::vector<std::string>{"zebra", "ant", "longest name", "bee"}));
  std::uint32_t small = 12;
  EXPECT_EQ(store->RegEnumValueA(key, 2, name.data(), small), Store::moreData);
}

TEST_F(SqliteKeyStore, AKeyWithKeysBelowItCannotBeDeleted) {
  auto store = openStore();
  ASSERT_EQ(setText(*store, R"(Software\Tarvik)", "a", "1"), Store::success);
  ASSERT_EQ(setText(*store, "SoftwareElse", "a", "1"), Store::success);
  EXPECT_EQ(store->RegDeleteKeyA(user, "Software"), Store::accessDenied);
  EXPECT_EQ(store->RegDeleteKeyA(user, R"(software\TARVIK)"), Store::success);
  EXPECT_EQ(store->RegDeleteKeyA(user, "Software"), Store::success);
  EXPECT_EQ(store->RegDeleteKeyA(user, "Software"), Store::notFound);
  EXPECT_EQ(text(*store, "SoftwareElse", "a"), "1");
}

TEST_F(SqliteKeyStore, AHandleOfADeletedKeyIsOfNoUse) {
  auto store = openStore();
  ASSERT_EQ(setText(*store, "Software", "a", "1"), Store::success);
  Store::Handle key = 0;
  std::uint32_t disposition = 0;
  ASSERT_EQ(store->RegCreateKeyExA(user, "Software", all, key, disposition), Store::success);
  ASSERT_EQ(store->RegDeleteKeyA(user, "Software"), Store::success);
  std::uint32_t type = 0;
  std::uint32_t size = 0;
  EXPECT_EQ(store->RegQueryValueExA(key, "a", type, nullptr, size), Store::keyDeleted);
  // A key of the same name is another key.
  ASSERT_EQ(setText(*store, "Software", "a", "2"), Store::success);
  EXPECT_EQ(store->RegQueryValueExA(key, "a", type, nullptr, size), Store::keyDeleted);
}

TEST_F(SqliteKeyStore, RightsBelongToTheHandle) {
  auto store = openStore();
  ASSERT_EQ(setText(*store, "Software", "a", "1"), Store::success);
  Store::Handle key = 0;
  ASSERT_EQ(store->RegOpenKeyExA(user, "Software", 0, reading, key), Store::success);
  const std::uint8_t byte = 0;
  EXPECT_EQ(store->RegSetValueExA(key, "a", 1, &byte, 1), Store::accessDenied);
  EXPECT_EQ(store->RegCloseKey(key), Store::success);
  EXPECT_EQ(store->RegCloseKey(key), Store::invalidHandle);
  std::uint32_t longest = 0;
  EXPECT_EQ(store->RegQueryInfoKeyA(key, longest), Store::invalidHandle);
}

TEST_F(SqliteKeyStore, TheTwoRootsAreSeparateAndThereIsNoThird) {
  auto store = openStore();
  ASSERT_EQ(setText(*store, "Software", "a", "1"), Store::success);
  Store::Handle key = 0;
  std::uint32_t disposition = 0;
  EXPECT_EQ(store->RegOpenKeyExA(machineRoot, "Software", 0, reading, key), Store::notFound);
  EXPECT_EQ(store->RegCreateKeyExA(0x80000003U, "Software", all, key, disposition), Store::invalidHandle);
  EXPECT_EQ(store->RegOpenKeyExA(user, "Software", 1, reading, key), Store::invalidParameter);
}

TEST_F(SqliteKeyStore, SpecialCharactersInNamesStandForThemselves) {
  auto store = openStore();
  for (const char* name : {"%", "_", "it's", "\"", "ключ", "a\nb", ""}) {
    ASSERT_EQ(setText(*store, std::string("Soft%ware\\") + name, name, name), Store::success) << name;
    EXPECT_EQ(text(*store, std::string("Soft%ware\\") + name, name), name);
  }
  EXPECT_EQ(text(*store, "Soft_ware\\%", "%"), std::nullopt);
}

TEST_F(SqliteKeyStore, AStoreThatIsDeletedMeanwhileBeginsAnew) {
  auto store = openStore();
  ASSERT_EQ(setText(*store, "Software", "a", "1"), Store::success);
  std::filesystem::remove(file);
  EXPECT_EQ(text(*store, "Software", "a"), std::nullopt);
  ASSERT_EQ(setText(*store, "Software", "b", "2"), Store::success);
  EXPECT_EQ(text(*openStore(), "Software", "b"), "2");
  EXPECT_TRUE(troubles.empty());
}

TEST_F(SqliteKeyStore, NothingIsLeftBesideTheFile) {
  auto store = openStore();
  ASSERT_EQ(setText(*store, "Software", "a", "1"), Store::success);
  std::size_t files = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder.file("mervane"))) ++files;
  EXPECT_EQ(files, 1U);
}

}  // namespace mervane::tests
