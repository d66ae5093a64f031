#include <gmock/gmock.h>
#include <signal.h>  // NOLINT(modernize-deprecated-headers): SIGXFSZ is POSIX.
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/platform_posix/child_process.h"
#include "tests/platform_posix/sqlite_key_store_fixture.h"

namespace mervane::tests {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

/// Stores that cannot be used are reported and left as they are.
class StoreTrouble : public StoreTest {
 protected:
  /// Permissions bind no superuser, so the body runs as an ordinary user in a process of its own.
  int asOrdinaryUser(const std::function<int()>& body) {
    constexpr uid_t nobody = 65534;
    return ChildProcess([&] {
             if (geteuid() == 0 && (setgid(nobody) != 0 || setuid(nobody) != 0)) return 99;
             return body();
           })
        .wait();
  }
  void giveTo(const std::filesystem::path& path, mode_t mode) const {
    constexpr uid_t nobody = 65534;
    if (geteuid() == 0) {
      ASSERT_EQ(chown(path.c_str(), nobody, nobody), 0);
    }
    ASSERT_EQ(chmod(path.c_str(), mode), 0);
  }
};

TEST_F(StoreTrouble, ADamagedFileIsReportedOnceAndLeftAsItIs) {
  std::filesystem::create_directory(folder.file("mervane"));
  const std::string junk = "this is no database, but somebody may still want it\n";
  TemporaryFolder::write(file, junk);
  auto store = openStore();
  Store::Handle key = 0;
  std::uint32_t disposition = 0;
  EXPECT_EQ(store->RegOpenKeyExA(user, "Software", 0, reading, key), Store::damaged);
  EXPECT_EQ(store->RegCreateKeyExA(user, "Software", all, key, disposition), Store::damaged);
  EXPECT_EQ(store->RegDeleteKeyA(user, "Software"), Store::damaged);
  EXPECT_EQ(TemporaryFolder::contentOf(file), junk);
  EXPECT_THAT(troubles, ElementsAre(AllOf(HasSubstr(file), HasSubstr("not a database"), HasSubstr("move it away"))));
}

TEST_F(StoreTrouble, DamageInsideTheFileNeverCrashesAndReadingChangesNothing) {
  {
    auto store = openStore();
    for (int i = 0; i < 9; ++i) {
      ASSERT_EQ(setText(*store, "Software", "name" + std::to_string(i), std::string(3000, 'v')), Store::success);
    }
  }
  const std::string whole = TemporaryFolder::contentOf(file);
  int unreadable = 0;
  for (std::size_t at = 0; at < whole.size(); at += 509) {
    std::string broken = whole;
    for (std::size_t i = at; i < std::min(at + 64, whole.size()); ++i) broken[i] = static_cast<char>(broken[i] ^ 0x5A);
    TemporaryFolder::write(file, broken);
    auto store = openStore();
    const auto found = text(*store, "Software", "name7");
    if (!found) ++unreadable;
    EXPECT_EQ(TemporaryFolder::contentOf(file), broken) << "reading changed the file";
  }
  EXPECT_GT(unreadable, 0);
}

TEST_F(StoreTrouble, ATruncatedFileIsReportedAndKept) {
  {
    auto store = openStore();
    for (int i = 0; i < 9; ++i) {
      ASSERT_EQ(setText(*store, "Software", "name" + std::to_string(i), std::string(3000, 'v')), Store::success);
    }
  }
  const std::string whole = TemporaryFolder::contentOf(file);
  TemporaryFolder::write(file, whole.substr(0, 5000));
  auto store = openStore();
  EXPECT_EQ(setText(*store, "Software", "name7", "new"), Store::damaged);
  EXPECT_EQ(TemporaryFolder::contentOf(file), whole.substr(0, 5000));
  EXPECT_EQ(troubles.size(), 1U);
}

TEST_F(StoreTrouble, ADatabaseOfAnotherProgramIsNotTouched) {
  std::filesystem::create_directory(folder.file("mervane"));
  sqlite3* database = nullptr;
  ASSERT_EQ(sqlite3_open(file.c_str(), &database), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(database, "CREATE TABLE photos (name TEXT)", nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(database);
  const std::string before = TemporaryFolder::contentOf(file);
  EXPECT_EQ(setText(*openStore(), "Software", "a", "1"), Store::damaged);
  EXPECT_EQ(TemporaryFolder::contentOf(file), before);
  EXPECT_THAT(troubles, ElementsAre(HasSubstr("another program")));
}

TEST_F(StoreTrouble, AStoreOfALaterFormatIsNotTouched) {
  ASSERT_EQ(setText(*openStore(), "Software", "a", "1"), Store::success);
  sqlite3* database = nullptr;
  ASSERT_EQ(sqlite3_open(file.c_str(), &database), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(database, "PRAGMA user_version = 2", nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(database);
  auto store = openStore();
  EXPECT_EQ(setText(*store, "Software", "a", "2"), Store::damaged);
  EXPECT_EQ(text(*store, "Software", "a"), std::nullopt);
  EXPECT_EQ(troubles.size(), 1U);
}

TEST_F(StoreTrouble, AnEmptyFileBecomesAStore) {
  std::filesystem::create_directory(folder.file("mervane"));
  TemporaryFolder::write(file, "");
  auto store = openStore();
  EXPECT_EQ(text(*store, "Software", "a"), std::nullopt);
  EXPECT_EQ(setText(*store, "Software", "a", "1"), Store::success);
  EXPECT_EQ(text(*store, "Software", "a"), "1");
  EXPECT_TRUE(troubles.empty());
}

TEST_F(StoreTrouble, ALockedStoreIsReportedAfterTheWaitingTime) {
  auto store = openStore(std::chrono::milliseconds(50));
  ASSERT_EQ(setText(*store, "Software", "a", "1"), Store::success);
  sqlite3* holder = nullptr;
  ASSERT_EQ(sqlite3_open(file.c_str(), &holder), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(holder, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
  EXPECT_EQ(text(*store, "Software", "a"), std::nullopt);
  EXPECT_EQ(setText(*store, "Software", "a", "2"), Store::busy);
  EXPECT_THAT(troubles, ElementsAre(HasSubstr("Another program holds it")));
  ASSERT_EQ(sqlite3_exec(holder, "COMMIT", nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(holder);
  EXPECT_EQ(text(*store, "Software", "a"), "1");
}

TEST_F(StoreTrouble, AStoreInAReadOnlyFolderIsReadAndNotWritten) {
  ASSERT_EQ(setText(*openStore(), "Software", "a", "1"), Store::success);
  giveTo(file, 0444);
  giveTo(folder.file("mervane"), 0555);
  giveTo(folder.path(), 0755);
  const int answer = asOrdinaryUser([&] {
    auto store = openStore();
    if (text(*store, "Software", "a") != "1") return 1;
    if (setText(*store, "Software", "a", "2") != Store::accessDenied) return 2;
    if (setText(*store, "Software", "a", "1") != Store::success) return 3;  // Nothing is to be written for that.
    return troubles.size() == 1 ? 0 : 4;
  });
  EXPECT_EQ(answer, 0);
  EXPECT_EQ(text(*openStore(), "Software", "a"), "1");
}

TEST_F(StoreTrouble, AFolderThatCannotBeMadeIsReported) {
  giveTo(folder.path(), 0555);
  const int answer = asOrdinaryUser([&] {
    auto store = openStore();
    if (text(*store, "Software", "a")) return 1;
    if (setText(*store, "Software", "a", "1") != Store::accessDenied) return 2;
    return troubles.size() == 1 && troubles[0].find("cannot create the folder") != std::string::npos ? 0 : 3;
  });
  EXPECT_EQ(answer, 0);
}

TEST_F(StoreTrouble, AFolderInPlaceOfTheFileIsReported) {
  std::filesystem::create_directories(file);
  auto store = openStore();
  EXPECT_NE(setText(*store, "Software", "a", "1"), Store::success);
  EXPECT_EQ(text(*store, "Software", "a"), std::nullopt);
  EXPECT_FALSE(troubles.empty());
}

TEST_F(StoreTrouble, OnAFullDiskTheEarlierValuesStay) {
  ASSERT_EQ(setText(*openStore(), "Software", "a", "1"), Store::success);
  const auto size = std::filesystem::file_size(file);
  const int answer = ChildProcess([&] {
                       signal(SIGXFSZ, SIG_IGN);
                       const rlimit limit{size, size};
                       if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return 1;
                       auto store = openStore();
                       const std::int32_t result = setText(*store, "Software", "b", std::string(200000, 'x'));
                       if (result != Store::diskFull && result != Store::ioError) return 2;
                       if (text(*store, "Software", "a") != "1") return 3;
                       if (text(*store, "Software", "b")) return 4;
                       return troubles.size() == 1 ? 0 : 5;
                     }).wait();
  EXPECT_EQ(answer, 0);
  EXPECT_EQ(text(*openStore(), "Software", "a"), "1");
  EXPECT_EQ(text(*openStore(), "Software", "b"), std::nullopt);
}

}  // namespace mervane::tests
