#include "hosts/workbook/file_bytes.h"

#include <gtest/gtest.h>

#include "fixture.h"
#include "mervane/runtime_errors.h"

namespace mervane::workbook::tests {
namespace {

namespace fs = std::filesystem;

std::string bytesOf(const fs::path& path) {
  return readFile(path, 1000);
}

std::size_t filesIn(const TemporaryFolder& folder) {
  return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder / ""), fs::directory_iterator()));
}

TEST(FileBytes, WhatWasWrittenIsRead) {
  const TemporaryFolder folder;
  const std::string bytes("a\0\xFF\r\n", 5);
  replaceFile(folder / "file", bytes);
  EXPECT_EQ(bytesOf(folder / "file"), bytes);
  replaceFile(folder / "file", "");
  EXPECT_EQ(bytesOf(folder / "file"), "");
  EXPECT_EQ(filesIn(folder), 1U);
}

TEST(FileBytes, AFileAboveTheLimitIsRefusedUnread) {
  const TemporaryFolder folder;
  replaceFile(folder / "file", "12345");
  EXPECT_EQ(readFile(folder / "file", 5), "12345");
  int number = 0;
  EXPECT_NE(failureOf([&] { static_cast<void>(readFile(folder / "file", 4)); }, &number).find("too large"),
            std::string::npos);
  EXPECT_EQ(number, runtime::applicationDefined.number);
}

TEST(FileBytes, TheReplacedFileKeepsItsPermissions) {
  const TemporaryFolder folder;
  replaceFile(folder / "file", "old");
  fs::permissions(folder / "file", fs::perms::owner_read | fs::perms::owner_write);
  replaceFile(folder / "file", "new");
  EXPECT_EQ(fs::status(folder / "file").permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST(FileBytes, TheUnfinishedFileIsToldBeforeItIsThereAndOnceItIsTheTarget) {
  const TemporaryFolder folder;
  replaceFile(folder / "file", "old");
  std::vector<fs::path> told;
  const auto tell = [&](const fs::path& unfinished) {
    told.push_back(unfinished);
    EXPECT_EQ(filesIn(folder), 1U) << "neither before it is made nor at the end there is a second file";
    EXPECT_EQ(bytesOf(folder / "file"), told.size() == 1 ? "old" : "new");
  };
  replaceFile(folder / "file", "new", {.unfinished = tell});
  ASSERT_EQ(told.size(), 2U);
  EXPECT_EQ(told[0].parent_path(), (folder / "file").parent_path());
  EXPECT_NE(told[0], folder / "file");
  EXPECT_TRUE(told[1].empty());
}

TEST(FileBytes, AFileThatCannotBeReplacedLeavesNothingBesideIt) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "target");
  std::vector<fs::path> told;
  failureOf([&] {
    replaceFile(folder / "target", "new", {.unfinished = [&](const fs::path& one) { told.push_back(one); }});
  });
  EXPECT_EQ(filesIn(folder), 1U);
  ASSERT_EQ(told.size(), 2U);
  EXPECT_TRUE(told[1].empty());

  int number = 0;
  failureOf([&] { replaceFile(folder / "no such folder" / "file", "new"); }, &number);
  EXPECT_EQ(number, runtime::pathFileAccess.number);
}

TEST(FileBytes, TheNewFileIsNeverReadableForMoreThanTheOldOne) {
  const TemporaryFolder folder;
  replaceFile(folder / "file", "old");
  constexpr auto mine = fs::perms::owner_read | fs::perms::owner_write;
  fs::permissions(folder / "file", mine);
  fs::path beside;
  fs::perms before = fs::perms::unknown;
  replaceFile(folder / "file", "new",
              {.unfinished =
                   [&](const fs::path& one) {
                     if (!one.empty()) beside = one;
                   },
               .beforeReplacing = [&] { before = fs::status(beside).permissions(); }});
  EXPECT_EQ(before, mine);
}

TEST(FileBytes, WhatIsRaisedJustBeforeTheReplacingKeepsTheOldFile) {
  const TemporaryFolder folder;
  replaceFile(folder / "file", "old");
  const auto refusal = [&] {
    EXPECT_EQ(filesIn(folder), 2U) << "the new file is whole by then";
    throw Failure(runtime::pathFileAccess.number, "not now");
  };
  EXPECT_EQ(failureOf([&] { replaceFile(folder / "file", "new", {.beforeReplacing = refusal}); }), "not now");
  EXPECT_EQ(bytesOf(folder / "file"), "old");
  EXPECT_EQ(filesIn(folder), 1U);
}

}  // namespace
}  // namespace mervane::workbook::tests
