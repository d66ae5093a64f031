#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "hosts/calc/calc_book.h"
#include "hosts/workbook/workbook_host.h"
#include "tests/cli/program_run.h"
#include "tests/hosts_calc/shared_office.h"

namespace mervane::tests {
namespace {

using cli::Outcome;
using cli::ProgramRun;
using cli::runProgram;
using cli::Start;
using cli::TestFolder;

const std::string iris = MERVANE_SOURCE_DIR "/examples/iris.xlsx";

class ProgramWithCalc : public testing::Test {
 protected:
  void SetUp() override {
    // A copy, since an office leaves a lock beside a file that it has open.
    const std::string copy = scratch.file("iris.xlsx");
    std::filesystem::copy_file(iris, copy);
    const auto document = sharedOffice().open(copy);
    calc::Office::store(document, data);
    calc::Office::close(document);
    std::filesystem::remove(copy);
  }
  Start start(const std::string& out) const {
    Start start;
    start.arguments = {"cluster", data,         "--inputs", "Iris!B2:E151", "--outputs",
                       "Iris!G2", "--clusters", "3",        "-o",           out};
    start.environment = {{"TMPDIR", scratch.path().string()}};
    // What the tests are told of the office's own leaks holds for the program as well.
    if (const char* leaks = std::getenv("LSAN_OPTIONS")) start.environment.emplace_back("LSAN_OPTIONS", leaks);
    return start;
  }

  TestFolder folder;
  TestFolder scratch;  ///< where the program's office puts its own files
  const std::string data = folder.file("data.ods");
};

TEST_F(ProgramWithCalc, AnOpenDocumentFileIsClusteredAsTypedWithTheListingOfTheWorkbookHost) {
  const std::string out = folder.file("out.ods");
  const Outcome outcome = runProgram(start(out));
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_TRUE(scratch.entries().empty());

  const std::string own = folder.file("out.xlsx");
  ASSERT_EQ(
      runProgram({"cluster", iris, "--inputs", "Iris!B2:E151", "--outputs", "Iris!G2", "--clusters", "3", "-o", own})
          .status,
      0);
  const auto wanted = workbook::WorkbookHost::open(own);
  calc::CalcBook got(out);
  for (std::int32_t row = 1; row <= 166; ++row) {
    for (std::int32_t column = 1; column <= 7; ++column) {
      const Variant value = got.cellValue("Iris", {row, column});
      const Variant other = wanted->cellValue("Iris", {row, column});
      if (value.getIf<double>() != nullptr && other.getIf<double>() != nullptr) {
        // The file keeps fifteen digits of a number.
        ASSERT_NEAR(*value.getIf<double>(), *other.getIf<double>(), 1e-12) << row << " " << column;
      } else {
        ASSERT_EQ(value, other) << row << " " << column;
      }
    }
  }
}

TEST_F(ProgramWithCalc, TheWorkbookHostRefusesTheFileAndNamesTheOtherHost) {
  Start other = start(folder.file("out.xlsx"));
  other.arguments.insert(other.arguments.end(), {"--host", "workbook"});
  const Outcome outcome = runProgram(other);
  EXPECT_EQ(outcome.status, 3);
  EXPECT_NE(outcome.err.find("--host calc"), std::string::npos) << outcome.err;
}

TEST_F(ProgramWithCalc, ARefusedRunLeavesNoFileAndNoOffice) {
  Start other = start(folder.file("out.ods"));
  other.arguments[3] = "Iris!A2:E151";
  const Outcome outcome = runProgram(other);
  EXPECT_NE(outcome.status, 0);
  EXPECT_EQ(folder.entries(), std::vector<std::string>{"data.ods"});
  EXPECT_TRUE(scratch.entries().empty());
}

TEST_F(ProgramWithCalc, AFileThatIsOpenElsewhereIsClusteredToo) {
  // As an office marks a file that somebody else works in.
  folder.put(".~lock.data.ods#", ",somebody,elsewhere,21.11.2026 10:00,file:///nowhere;");
  const std::string out = folder.file("out.ods");
  const Outcome outcome = runProgram(start(out));
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  calc::CalcBook got(out);
  EXPECT_EQ(got.cellValue("Iris", {1, 7}), Variant("Clusters"));
  EXPECT_EQ(got.cellValue("Iris", {2, 7}), Variant(1.0));
}

TEST_F(ProgramWithCalc, AFileThatIsNoSpreadsheetIsRefused) {
  folder.put("bad.ods", "nothing of the kind");
  const Outcome outcome = runProgram({"sheets", folder.file("bad.ods")});
  EXPECT_NE(outcome.status, 0);
  EXPECT_NE(outcome.err.find("bad.ods"), std::string::npos) << outcome.err;
}

TEST_F(ProgramWithCalc, AKilledProgramTakesItsOfficeAlong) {
  ProgramRun run(start(folder.file("out.ods")));
  const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  const auto pause = std::chrono::milliseconds(20);
  while (scratch.entries().empty() && std::chrono::steady_clock::now() < until) std::this_thread::sleep_for(pause);
  ASSERT_FALSE(scratch.entries().empty()) << "the office was not started";
  run.send(SIGKILL);
  EXPECT_EQ(run.finish().signal, SIGKILL);
  while (!scratch.entries().empty() && std::chrono::steady_clock::now() < until) std::this_thread::sleep_for(pause);
  EXPECT_TRUE(scratch.entries().empty());
  EXPECT_EQ(folder.entries(), std::vector<std::string>{"data.ods"});
}

TEST_F(ProgramWithCalc, AProgramThatIsKilledAsSoonAsItsOfficeBeginsTakesItAlong) {
  const auto pause = std::chrono::milliseconds(5);
  for (int attempt = 0; attempt < 8; ++attempt) {
    ProgramRun run(start(folder.file("out.ods")));
    const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    // Without a pause, so that the kill comes between the first steps.
    while (scratch.entries().empty() && std::chrono::steady_clock::now() < until) {
    }
    run.send(SIGKILL);
    EXPECT_EQ(run.finish().signal, SIGKILL);
    while (!scratch.entries().empty() && std::chrono::steady_clock::now() < until) std::this_thread::sleep_for(pause);
    ASSERT_TRUE(scratch.entries().empty()) << "attempt " << attempt;
  }
}

}  // namespace
}  // namespace mervane::tests
