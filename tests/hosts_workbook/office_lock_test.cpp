#include "hosts/book/office_lock.h"

#include <gtest/gtest.h>

#include <fstream>

#include "fixture.h"
#include "hosts/book/file_stamp.h"

namespace mervane::hosts {
namespace {

namespace fs = std::filesystem;
using workbook::tests::TemporaryFolder;

void put(const fs::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

TEST(OfficeLock, AFileWithoutOneHasNone) {
  const TemporaryFolder folder;
  put(folder / "book.xlsx", "x");
  put(folder / ".~lock.other.xlsx#", ",anna,desk,22.11.2026 10:00,file:///home/anna;");
  EXPECT_FALSE(officeLockOf(folder / "book.xlsx"));
}

TEST(OfficeLock, TellsWhoHasTheFileOpen) {
  const TemporaryFolder folder;
  const auto owner = [&](const std::string& content) {
    put(folder / ".~lock.book.xlsx#", content);
    return officeLockOf(folder / "book.xlsx").value().who;
  };
  EXPECT_EQ(owner(",anna,desk,22.11.2026 10:00,file:///home/anna;"), "anna on desk");
  EXPECT_EQ(owner("Anna\\, the first,anna,desk,22.11.2026 10:00,file:///home/anna;"), "Anna, the first on desk");
  EXPECT_EQ(owner("Anna,anna,,,;"), "Anna");
  EXPECT_EQ(owner("torn"), "");
  EXPECT_EQ(owner(""), "");
}

TEST(OfficeLock, OfTheOtherOfficeIsAFileOfItsOwn) {
  const TemporaryFolder folder;
  std::string owner(165, ' ');
  owner.replace(0, 5, std::string("\x04") + "Anna");
  put(folder / "~$book.xlsx", owner);
  const auto lock = officeLockOf(folder / "book.xlsx");
  ASSERT_TRUE(lock);
  EXPECT_EQ(lock->who, "Anna");
  EXPECT_EQ(lock->file, folder / "~$book.xlsx");
  put(folder / "~$book.xlsx", "\x02\xC4x");
  EXPECT_EQ(officeLockOf(folder / "book.xlsx").value().who, "") << "the code page is not known";
}

TEST(OfficeLock, OfWhatALinkLeadsToCountsAsWell) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "kept");
  put(folder / "kept/book.xlsx", "x");
  std::error_code error;
  fs::create_symlink(folder / "kept/book.xlsx", folder / "link.xlsx", error);
  if (error) GTEST_SKIP() << "no links can be made here";
  EXPECT_FALSE(officeLockOf(folder / "link.xlsx"));
  put(folder / "kept/.~lock.book.xlsx#", "Anna,anna,desk,,;");
  EXPECT_TRUE(officeLockOf(folder / "link.xlsx"));
}

TEST(FileStamp, ChangesWithLengthAndTimeAndPresence) {
  const TemporaryFolder folder;
  const fs::path file = folder / "file";
  const FileStamp none = FileStamp::of(file);
  EXPECT_FALSE(none.isThere);
  put(file, "one");
  const FileStamp first = FileStamp::of(file);
  EXPECT_NE(first, none);
  EXPECT_EQ(FileStamp::of(file), first);
  const auto time = fs::last_write_time(file);
  put(file, "four");
  fs::last_write_time(file, time);
  EXPECT_NE(FileStamp::of(file), first);
  put(file, "two");
  fs::last_write_time(file, time + std::chrono::seconds(1));
  EXPECT_NE(FileStamp::of(file), first);
}

}  // namespace
}  // namespace mervane::hosts
