#include "platform/posix/text_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>  // NOLINT(modernize-deprecated-headers): SIGXFSZ is POSIX.
#include <sys/resource.h>
#include <sys/stat.h>

#include "mervane/failure.h"
#include "mervane/runtime_errors.h"
#include "tests/platform_posix/child_process.h"
#include "tests/platform_posix/temporary_folder.h"

namespace mervane::tests {

class TextFiles : public testing::Test {
 protected:
  template <class Call>
  static Failure failureOf(Call&& call) {
    try {
      call();
    } catch (const Failure& failure) {
      return failure;
    }
    ADD_FAILURE() << "nothing was raised";
    return {0, ""};
  }

  TemporaryFolder folder;
  posix::TextFiles files;
};

TEST_F(TextFiles, AppendingCreatesTheFileAndAddsToItsEnd) {
  const std::string file = folder.file("Error Log.txt");
  files.append(file, "first\r\n");
  files.append(file, "");
  files.append(file, "zweite Zeile: \u00FC\r\n");
  EXPECT_EQ(TemporaryFolder::contentOf(file), "first\r\nzweite Zeile: \u00FC\r\n");
}

TEST_F(TextFiles, ATextOfAnyLengthAndContentIsWrittenAsItStands) {
  const std::string file = folder.file("log.txt");
  const std::string odd = std::string("100% \\n \"x\"\t\0\r\n", 15);
  const std::string large = std::string(100'000, 'x') + odd;
  files.append(file, odd);
  files.append(file, large);
  EXPECT_EQ(TemporaryFolder::contentOf(file), odd + large);
}

TEST_F(TextFiles, ARelativePathIsTakenFromTheCurrentDirectoryOfTheMoment) {
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder.path());
  files.append("Tracing Log.txt", "here");
  std::filesystem::current_path(before);
  EXPECT_EQ(TemporaryFolder::contentOf(folder.file("Tracing Log.txt")), "here");
}

TEST_F(TextFiles, AFileThatCannotBeOpenedFailsByItsName) {
  const Failure failure = failureOf([&] { files.append(folder.file("none/log.txt"), "x"); });
  EXPECT_EQ(failure.number(), runtime::fileNotFound.number);
  EXPECT_THAT(failure.description(), testing::HasSubstr("none/log.txt"));
  EXPECT_EQ(failureOf([&] { files.append(folder.path().string(), "x"); }).number(), runtime::pathFileAccess.number);
}

TEST_F(TextFiles, AFullDiskIsAFailure) {
  const std::string file = folder.file("log.txt");
  const int answer = ChildProcess([&] {
                       signal(SIGXFSZ, SIG_IGN);
                       const rlimit limit{10, 10};
                       if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return 1;
                       try {
                         files.append(file, "more than ten bytes");
                       } catch (const Failure& failure) {
                         return failure.number() == runtime::pathFileAccess.number ? 0 : 2;
                       }
                       return 3;
                     }).wait();
  EXPECT_EQ(answer, 0);
}

TEST_F(TextFiles, TwoProcessesAppendWholeLines) {
  const std::string file = folder.file("log.txt");
  const auto writer = [&](char letter) {
    return [this, file, letter] {
      for (int i = 0; i < 200; ++i) files.append(file, std::string(80, letter) + "\n");
      return 0;
    };
  };
  ChildProcess first(writer('a'));
  ChildProcess second(writer('b'));
  EXPECT_EQ(first.wait(), 0);
  EXPECT_EQ(second.wait(), 0);
  std::istringstream lines(TemporaryFolder::contentOf(file));
  int count = 0;
  for (std::string line; std::getline(lines, line); ++count) {
    EXPECT_EQ(line, std::string(80, line[0]));
  }
  EXPECT_EQ(count, 400);
}

TEST_F(TextFiles, RemovingDeletesAndFailsForAMissingFile) {
  const std::string file = folder.file("log.txt");
  files.append(file, "x");
  files.remove(file);
  EXPECT_FALSE(std::filesystem::exists(file));
  EXPECT_EQ(failureOf([&] { files.remove(file); }).number(), runtime::fileNotFound.number);
  EXPECT_EQ(failureOf([&] { files.remove(folder.path().string()); }).number(), runtime::pathFileAccess.number);
}

}  // namespace mervane::tests
