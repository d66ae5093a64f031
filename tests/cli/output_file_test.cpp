#include "cli/output_file.h"

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>

#include "cli/problem.h"
#include "hosts/book/file_bytes.h"
#include "tests/cli/table_of.h"

namespace mervane::cli {
namespace {

namespace fs = std::filesystem;

class OutputFileTest : public testing::Test {
 protected:
  OutputFileTest() {
    std::string pattern = (fs::temp_directory_path() / "mervane-XXXXXX").string();
    folder = ::mkdtemp(pattern.data());
  }
  ~OutputFileTest() override { fs::remove_all(folder); }

  [[nodiscard]] std::string path(const std::string& name) const { return (folder / name).string(); }
  void put(const std::string& name, const std::string& text) const { std::ofstream(path(name)) << text; }
  [[nodiscard]] std::string get(const std::string& name) const {
    std::ifstream file(path(name));
    return {std::istreambuf_iterator<char>(file), {}};
  }
  [[nodiscard]] std::size_t entries() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), {}));
  }

  fs::path folder;
};

TEST_F(OutputFileTest, TheOldFileStaysUntilTheCommit) {
  put("a", "old");
  const auto file = openOutput(path("a"));
  file->write(std::string(200000, 'x'));
  EXPECT_EQ(get("a"), "old");
  file->commit();
  EXPECT_EQ(get("a"), std::string(200000, 'x'));
  EXPECT_EQ(entries(), 1U);
}

TEST_F(OutputFileTest, ANewFileHasThePermissionsOfItsModelAndReplacesNothing) {
  put("model", "x");
  fs::permissions(path("model"), fs::perms::owner_read | fs::perms::owner_write);
  const auto file = openNew(path("new"), path("model"));
  file->write("content");
  file->commit();
  EXPECT_EQ(get("new"), "content");
  EXPECT_EQ(fs::status(path("new")).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  const auto late = openNew(path("late"), path("model"));
  late->write("content");
  put("late", "somebody else's");
  EXPECT_THROW(late->commit(), Problem);
  EXPECT_EQ(get("late"), "somebody else's");
}

TEST_F(OutputFileTest, WithoutACommitNothingIsLeftBehind) {
  put("a", "old");
  openOutput(path("a"))->write("new");
  openOutput(path("b"))->write("new");
  EXPECT_EQ(get("a"), "old");
  EXPECT_EQ(entries(), 1U);
}

TEST_F(OutputFileTest, TheNewFileHasThePermissionsOfTheOldOne) {
  put("a", "old");
  fs::permissions(path("a"), fs::perms::owner_read | fs::perms::owner_write);
  const auto file = openOutput(path("a"));
  file->write("new");
  file->commit();
  EXPECT_EQ(fs::status(path("a")).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

/// What a process of somebody else, who is in no group of the superuser's, makes of the permissions of a file.
int permissionsBySomebodyElse(const std::function<void()>& replace, const std::string& path) {
  const pid_t child = ::fork();
  if (child == 0) {
    constexpr gid_t ownGroup = 60001;
    constexpr gid_t sharedGroup = 60002;
    constexpr uid_t somebody = 60003;
    if (::setgroups(1, &sharedGroup) != 0 || ::setgid(ownGroup) != 0 || ::setuid(somebody) != 0) ::_exit(98);
    try {
      replace();
    } catch (...) {
      ::_exit(99);
    }
    ::_exit(0);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
  return static_cast<int>(fs::status(path).permissions());
}

TEST_F(OutputFileTest, WhoCannotKeepTheOwnerKeepsTheGroupOrWhatItsOwnGroupMayNotKnow) {
  if (::geteuid() != 0) GTEST_SKIP() << "files of several owners are made by the superuser only";
  fs::permissions(folder, fs::perms::all);
  const std::string file = path("a");
  const std::function<void()> ways[] = {
      [&] {
        const auto output = openOutput(file);
        output->write("new");
        output->commit();
      },
      [&] { hosts::replaceFile(file, "new"); },
  };
  for (const auto& replace : ways) {
    const auto replaced = [&](gid_t group, int permissions) {
      fs::remove(file);
      put("a", "old");
      EXPECT_EQ(::chown(file.c_str(), 60004, group), 0);
      // Somebody else may write it, so that it may be replaced.
      fs::permissions(file, static_cast<fs::perms>(permissions));
      const int now = permissionsBySomebodyElse(replace, file);
      EXPECT_EQ(get("a"), "new");
      return now;
    };
    EXPECT_EQ(replaced(60002, 0662), 0662);
    struct stat status {};
    ASSERT_EQ(::stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_gid, 60002U);
    EXPECT_EQ(status.st_uid, 60003U);
    EXPECT_EQ(replaced(60005, 0662), 0622);
    EXPECT_EQ(replaced(60005, 0666), 0666);
    EXPECT_EQ(replaced(60005, 06662), 0622);
  }
}

TEST_F(OutputFileTest, ALinkStaysAndTheFileBehindItIsReplaced) {
  put("a", "old");
  fs::create_symlink("a", path("link"));
  const auto file = openOutput(path("link"));
  file->write("new");
  file->commit();
  EXPECT_TRUE(fs::is_symlink(path("link")));
  EXPECT_EQ(get("a"), "new");
}

TEST_F(OutputFileTest, ANameAtTheLengthLimitIsWritten) {
  const std::string name(255, 'n');
  const auto file = openOutput(path(name));
  file->write("new");
  file->commit();
  EXPECT_EQ(get(name), "new");
}

TEST_F(OutputFileTest, ADirectoryAndAMissingFolderAreRefused) {
  EXPECT_EQ(refusal([&] { static_cast<void>(openOutput(folder.string())); }),
            "3: cannot write " + folder.string() + ": Is a directory / Name another file with -o.");
  EXPECT_EQ(refusal([&] { checkOutput(path("missing/a")); }),
            "3: cannot write " + path("missing/a") + ": No such file or directory / Name another file with -o.");
}

TEST_F(OutputFileTest, CheckingLeavesNoTrace) {
  put("a", "old");
  checkOutput(path("a"));
  checkOutput(path("b"));
  checkOutput("/dev/null");
  EXPECT_EQ(get("a"), "old");
  EXPECT_EQ(entries(), 1U);
}

TEST_F(OutputFileTest, AFullDeviceIsToldAtTheCommit) {
  const auto file = openOutput("/dev/full");
  file->write("new");
  EXPECT_EQ(refusal([&] { file->commit(); }).substr(0, 57),
            "3: cannot write /dev/full: No space left on device / Make");
}

TEST_F(OutputFileTest, TheSameFileIsSeenUnderItsOtherNames) {
  put("a", "old");
  put("b", "old");
  fs::create_symlink("a", path("link"));
  fs::create_hard_link(path("a"), path("hard"));
  EXPECT_TRUE(isSameFile(path("a"), path("./a")));
  EXPECT_TRUE(isSameFile(path("a"), path("link")));
  EXPECT_TRUE(isSameFile(path("a"), path("hard")));
  EXPECT_TRUE(isSameFile(path("new"), path("./new")));
  EXPECT_FALSE(isSameFile(path("a"), path("b")));
}

}  // namespace
}  // namespace mervane::cli
