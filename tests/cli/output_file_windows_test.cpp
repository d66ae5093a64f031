#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <random>

#include "cli/output_file.h"
#include "cli/paths.h"
#include "cli/problem.h"

namespace mervane::cli {
namespace {

namespace fs = std::filesystem;

class OutputFileOnWindows : public testing::Test {
 protected:
  OutputFileOnWindows() {
    std::random_device random;
    do {
      folder = fs::temp_directory_path() / ("mervane-" + std::to_string(random()));
    } while (!fs::create_directory(folder));
  }
  ~OutputFileOnWindows() override {
    std::error_code ignored;
    fs::remove_all(folder, ignored);
  }

  [[nodiscard]] std::string path(const std::string& name) const { return toText(folder / toPath(name)); }
  void put(const std::string& name, const std::string& text) const { std::ofstream(toPath(path(name))) << text; }
  [[nodiscard]] std::string get(const std::string& name) const {
    std::ifstream file(toPath(path(name)), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  [[nodiscard]] std::ptrdiff_t entries() const { return std::distance(fs::directory_iterator(folder), {}); }

  template <class Body>
  static std::string troubleOf(Body&& body) {
    try {
      body();
    } catch (const Problem& problem) {
      EXPECT_EQ(problem.status(), ExitStatus::fileTrouble);
      return problem.message() + ". " + problem.advice();
    }
    return "no trouble";
  }

  fs::path folder;
};

TEST_F(OutputFileOnWindows, TheOldFileStaysUntilTheCommitAndNothingElseIsLeft) {
  put("a", "old");
  const auto file = openOutput(path("a"));
  file->write(std::string(200000, 'x'));
  EXPECT_EQ(get("a"), "old");
  file->commit();
  EXPECT_EQ(get("a"), std::string(200000, 'x'));
  EXPECT_EQ(entries(), 1);
}

TEST_F(OutputFileOnWindows, WithoutACommitNothingIsLeftBehind) {
  put("a", "old");
  openOutput(path("a"))->write("new");
  openOutput(path("b"))->write("new");
  EXPECT_EQ(get("a"), "old");
  EXPECT_EQ(entries(), 1);
}

TEST_F(OutputFileOnWindows, BytesPassUnchanged) {
  const auto file = openOutput(path("lines"));
  file->write("one\ntwo\r\n\x1A\n");
  file->commit();
  EXPECT_EQ(get("lines"), "one\ntwo\r\n\x1A\n");
}

TEST_F(OutputFileOnWindows, NamesMayBeInAnyScript) {
  const std::string name = "\xD0\xB8\xD1\x82\xD0\xBE\xD0\xB3 \xE7\xB5\x90\xE6\x9E\x9C.csv";
  const auto file = openOutput(path(name));
  file->write("1");
  file->commit();
  EXPECT_EQ(get(name), "1");
}

TEST_F(OutputFileOnWindows, AReadOnlyFileIsRefusedBeforeAndAtTheWritingAndStays) {
  put("a", "old");
  ASSERT_NE(SetFileAttributesW(toPath(path("a")).c_str(), FILE_ATTRIBUTE_READONLY), FALSE);
  EXPECT_NE(troubleOf([&] { checkOutput(path("a")); }).find("Permission denied"), std::string::npos);
  EXPECT_NE(troubleOf([&] { static_cast<void>(openOutput(path("a"))); }).find("Permission denied"), std::string::npos);
  EXPECT_EQ(get("a"), "old");
  EXPECT_EQ(entries(), 1);
  SetFileAttributesW(toPath(path("a")).c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(OutputFileOnWindows, AFileThatAnotherProgramHoldsIsRefusedWithThatAdviceAndStays) {
  put("a", "old");
  const HANDLE held =
      CreateFileW(toPath(path("a")).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(held, INVALID_HANDLE_VALUE);
  const std::string trouble = troubleOf([&] { static_cast<void>(openOutput(path("a"))); });
  EXPECT_NE(trouble.find("Close it in the program that has it open"), std::string::npos) << trouble;
  CloseHandle(held);
  EXPECT_EQ(get("a"), "old");
  EXPECT_EQ(entries(), 1);
}

TEST_F(OutputFileOnWindows, AFileThatIsTakenWhileWritingStays) {
  put("a", "old");
  HANDLE held = INVALID_HANDLE_VALUE;
  const std::string trouble = troubleOf([&] {
    const auto file = openOutput(path("a"));
    file->write("new");
    held = CreateFileW(toPath(path("a")).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    file->commit();
  });
  EXPECT_NE(trouble.find("Close it in the program that has it open"), std::string::npos) << trouble;
  CloseHandle(held);
  EXPECT_EQ(get("a"), "old");
  EXPECT_EQ(entries(), 1);
}

TEST_F(OutputFileOnWindows, AFolderIsRefusedByName) {
  fs::create_directory(folder / "sub");
  EXPECT_NE(troubleOf([&] { checkOutput(path("sub")); }).find("Is a directory"), std::string::npos);
}

TEST_F(OutputFileOnWindows, AFolderThatIsMissingIsTroubleBeforeTheRun) {
  EXPECT_NE(troubleOf([&] { checkOutput(path("none") + "\\a"); }).find("No such file or directory"), std::string::npos);
}

TEST_F(OutputFileOnWindows, CheckingLeavesNoTrace) {
  put("a", "old");
  checkOutput(path("a"));
  checkOutput(path("b"));
  checkOutput("-");
  EXPECT_EQ(get("a"), "old");
  EXPECT_EQ(entries(), 1);
}

TEST_F(OutputFileOnWindows, ADeviceIsWrittenToDirectly) {
  checkOutput("NUL");
  const auto file = openOutput("NUL");
  file->write("gone");
  file->commit();
  EXPECT_EQ(entries(), 0);
}

TEST_F(OutputFileOnWindows, OneFileUnderTwoNamesIsTheSame) {
  put("a", "1");
  put("b", "1");
  EXPECT_TRUE(isSameFile(path("a"), path(".\\a")));
  EXPECT_TRUE(isSameFile(path("a"), toText(folder / ".." / folder.filename() / "a")));
  EXPECT_TRUE(isSameFile(path("not there"), path("not there")));
  EXPECT_FALSE(isSameFile(path("a"), path("b")));
  EXPECT_FALSE(isSameFile(path("a"), path("not there")));
}

}  // namespace
}  // namespace mervane::cli
