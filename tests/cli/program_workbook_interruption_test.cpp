#include <gtest/gtest.h>
#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <random>

#include "tests/cli/made_book.h"
#include "tests/cli/program_run.h"

namespace mervane::cli {
namespace {

/// Tells when a file is made in a folder.
class FolderWatch {
 public:
  explicit FolderWatch(const std::filesystem::path& folder) : descriptor_(::inotify_init1(IN_CLOEXEC)) {
    EXPECT_GE(::inotify_add_watch(descriptor_, folder.c_str(), IN_CREATE), 0);
  }
  ~FolderWatch() { ::close(descriptor_); }
  FolderWatch(const FolderWatch&) = delete;
  FolderWatch& operator=(const FolderWatch&) = delete;

  /// False where none comes within a minute.
  [[nodiscard]] bool waitForNewFile() const {
    constexpr int minute = 60000;
    pollfd waiting{descriptor_, POLLIN, 0};
    return ::poll(&waiting, 1, minute) > 0;
  }

 private:
  int descriptor_;
};

/// So many that the epochs below take longer than anybody waits.
constexpr int rows = 5000;

/// A workbook whose saving takes a moment: it carries a part that does not get smaller.
void writeHeavyBook(const std::string& path) {
  constexpr std::size_t size = std::size_t{24} << 20;
  MadeBook made;
  for (int row = 0; row < rows; ++row) made.rows.push_back({std::to_string(row % 2 == 0 ? row : 100 + row)});
  made.write(path);
  workbook::tests::Parts parts;
  for (const auto& [name, content] : workbook::tests::readZip(path)) parts.emplace_back(name, content);
  std::mt19937_64 random(1);
  std::string ballast(size, '\0');
  for (char& byte : ballast) byte = static_cast<char>(random());
  parts.emplace_back("xl/media/ballast.bin", std::move(ballast));
  workbook::tests::writeZip(path, parts);
}

bool hasUnfinishedFile(const TestFolder& folder) {
  for (const std::string& name : folder.entries()) {
    if (name.find(".new-") != std::string::npos) return true;
  }
  return false;
}

TEST(ProgramWorkbookInterruption, TheSecondCtrlCDuringTheSaveLeavesNothingBesideTheTarget) {
  const TestFolder folder;
  const std::string book = folder.file("book.xlsx");
  const std::string out = folder.file("out.xlsx");
  writeHeavyBook(book);
  Start start;
  start.arguments = {"cluster",   book,      "--inputs", "Data!A1:A" + std::to_string(rows),
                     "--outputs", "Data!D2", "-k",       "2",
                     "-o",        out,       "--epochs", "99998"};
  start.errOnTerminal = true;
  // The file can be whole before the program is held, so there are some attempts.
  constexpr int attempts = 20;
  for (int attempt = 1; attempt <= attempts; ++attempt) {
    folder.put("out.xlsx", "old");
    ProgramRun program(start);
    ASSERT_TRUE(program.waitForError("epoch"));
    const FolderWatch watch(folder.path());
    program.send(SIGINT);
    ASSERT_TRUE(watch.waitForNewFile());
    program.send(SIGSTOP);
    const bool isHeldInTheSave = hasUnfinishedFile(folder);
    program.send(SIGINT);
    program.send(SIGCONT);
    const Outcome outcome = program.finish();
    EXPECT_FALSE(hasUnfinishedFile(folder));
    if (!isHeldInTheSave) continue;
    EXPECT_EQ(outcome.status, 130);
    EXPECT_EQ(folder.get("out.xlsx"), "old");
    return;
  }
  FAIL() << "the program was never held while it saved";
}

}  // namespace
}  // namespace mervane::cli
