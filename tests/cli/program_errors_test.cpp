#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>

#include "tests/cli/program_run.h"

namespace mervane::cli {
namespace {

void expectEnd(const Outcome& outcome, int status, const std::string& message) {
  EXPECT_EQ(outcome.status, status) << outcome.err;
  EXPECT_EQ(outcome.out, "");
  EXPECT_NE(outcome.err.find(message), std::string::npos) << outcome.err;
}

TEST(ProgramErrors, TextInANumericColumnIsNamedWithItsLineAndColumn) {
  expectEnd(runProgram({"cluster", "-", "--columns", "b", "--clusters", "2"}, "a,b\n1,x\n"), 1,
            "standard input, line 2, column b: \"x\" is not a number\n");
}

TEST(ProgramErrors, RefusedDataEndWithOne) {
  expectEnd(runProgram({"cluster", "-"}, ""), 1, "standard input holds no rows");
  expectEnd(runProgram({"cluster", "-"}, "a,b\n"), 1, "holds a header and no row of data");
  expectEnd(runProgram({"cluster", "-"}, "a,b\nx,y\n"), 1, "has no column of numbers");
  expectEnd(runProgram({"cluster", "-"}, "a,b\n1,2\n3\n"), 1, "line 3: 1 field where line 1 has 2 fields");
  expectEnd(runProgram({"cluster", "-"}, "a,b\n1,\"2\n"), 1, "line 2, field 2");
  expectEnd(runProgram({"cluster", "-", "-f", "json"}, "a,b\n1,\xff\n"), 1, "is not UTF-8");
}

TEST(ProgramErrors, AWorkbookIsNotMistakenForData) {
  const TestFolder folder;
  folder.put("book.csv", "PK\x03\x04 something");
  expectEnd(runProgram({"cluster", folder.file("book.csv")}), 1, "zip archive");
}

TEST(ProgramErrors, WrongUsageEndsWithTwo) {
  expectEnd(runProgram(std::vector<std::string>()), 2, "no command is given");
  expectEnd(runProgram({"cluster"}), 2, "no data file is named");
  expectEnd(runProgram({"cluster", "-", "--nonsense"}, "1\n"), 2, "--nonsense");
  expectEnd(runProgram({"cluster", "-", "--clusters", "many"}, "1\n"), 2, "--clusters: \"many\" will not do");
  expectEnd(runProgram({"cluster", "-", "--columns", "c"}, "a,b\n1,2\n"), 2,
            "there is no column \"c\"\n         The columns are a, b.\n");
  expectEnd(runProgram({"cluster", "-", "--trace", "-"}, "1\n"), 2, "standard output gets the data already");
}

TEST(ProgramErrors, TroubleWithFilesEndsWithThree) {
  const TestFolder folder;
  expectEnd(runProgram({"cluster", folder.file("missing.csv")}), 3, "No such file or directory");
  expectEnd(runProgram({"cluster", folder.path().string()}), 3, "Is a directory");
  folder.put("a.csv", "1\n2\n");
  expectEnd(runProgram({"cluster", folder.file("a.csv"), "-o", folder.file("no/out.csv")}), 3,
            "No such file or directory");
  expectEnd(runProgram({"cluster", folder.file("a.csv"), "-o", folder.path().string()}), 3, "Is a directory");
}

TEST(ProgramErrors, AFailingEngineEndsWithFourAndItsReport) {
  expectEnd(runProgram({"cluster", "-", "-k", "2000000000"}, "1\n2\n"), 4,
            "in MervaneClass3.Classifier3.CreateNetwork at line 0\n");
  const Outcome outcome = runProgram({"cluster", "-", "--learning-radius", "1e300"}, "1\n2\n");
  expectEnd(outcome, 4, "\tError: 6, (Overflow)\n\tin MervaneClass3.Classifier3.TrainNetwork at line 0\n");
  EXPECT_NE(outcome.err.find("mervane: error: the run failed; nothing is written\n"), std::string::npos);
}

TEST(ProgramErrors, AFailedRunLeavesTheOldFile) {
  const TestFolder folder;
  folder.put("out.csv", "old");
  folder.put("trace.csv", "old");
  const Outcome outcome = runProgram(
      {"cluster", "-", "--learning-radius", "1e300", "-o", folder.file("out.csv"), "--trace", folder.file("trace.csv")},
      "1\n2\n");
  EXPECT_EQ(outcome.status, 4);
  EXPECT_EQ(folder.get("out.csv"), "old");
  EXPECT_EQ(folder.get("trace.csv"), "old");
  EXPECT_EQ(folder.entries(), (std::vector<std::string>{"out.csv", "trace.csv"}));
}

TEST(ProgramErrors, OnErrorRetryTriesAgainAndThenGivesUp) {
  const Outcome outcome = runProgram({"cluster", "-", "--learning-radius", "1e300", "--on-error", "retry:2"}, "1\n2\n");
  expectEnd(outcome, 4, "mervane: trying again\n");
  std::size_t reports = 0;
  for (std::size_t at = outcome.err.find("(Overflow)"); at != std::string::npos;
       at = outcome.err.find("(Overflow)", at + 1)) {
    ++reports;
  }
  EXPECT_EQ(reports, 3U);
}

TEST(ProgramErrors, OnErrorIgnoreStillWrites) {
  const Outcome outcome = runProgram(
      {"cluster", "-", "-k", "1", "--learning-radius", "1e300", "--epochs", "2", "--on-error", "ignore"}, "1\n2\n");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "1,1\n2,1\n");
  EXPECT_NE(outcome.err.find("were ignored; the result may be wrong"), std::string::npos);
}

TEST(ProgramErrors, OnErrorIgnoreSaysWhatIsLeftOut) {
  const Outcome outcome = runProgram(
      {"cluster", "-", "-k", "1", "--learning-radius", "1e300", "--epochs", "2", "--on-error", "ignore"}, "1\n2\n");
  EXPECT_NE(outcome.err.find("mervane: ignored; one step of the training is left out\n"), std::string::npos)
      << outcome.err;
}

std::size_t countOf(const std::string& what, const std::string& text) {
  std::size_t count = 0;
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++count;
  return count;
}

TEST(ProgramErrors, AnAbortEndsTheRunWithoutTheFailuresThatWouldFollowFromTheFirst) {
  const Outcome outcome = runProgram({"cluster", "-", "-k", "20000000", "--epochs", "1"}, "1\n");
  expectEnd(outcome, 4, "the run failed; nothing is written");
  EXPECT_EQ(countOf("The call stack is:", outcome.err), 1U) << outcome.err;
}

/// A failure that the user is asked about: there is no memory for so large a network.
class AskedOnATerminal : public testing::Test {
 protected:
  AskedOnATerminal() {
    folder.put("in.csv", "1\n");
    folder.put("out.csv", "old");
  }
  static constexpr const char* question = "[A]bort, [R]etry, [I]gnore? ";
  [[nodiscard]] Start start() const {
    Start start;
    start.arguments = {"cluster", folder.file("in.csv"), "-o", folder.file("out.csv"), "-k", "20000000", "--epochs",
                       "1"};
    start.onTerminal = true;
    return start;
  }
  TestFolder folder;
};

TEST_F(AskedOnATerminal, AbortEndsTheRunAtOnce) {
  ProgramRun run(start());
  ASSERT_TRUE(run.waitForError(question));
  run.type("a\n");
  const Outcome outcome = run.finish();
  EXPECT_EQ(outcome.status, 4);
  EXPECT_EQ(countOf(question, outcome.err), 1U) << outcome.err;
  EXPECT_EQ(folder.get("out.csv"), "old");
}

TEST_F(AskedOnATerminal, CtrlCAtTheQuestionEndsTheProgram) {
  ProgramRun run(start());
  ASSERT_TRUE(run.waitForError(question));
  run.send(SIGINT);
  const Outcome outcome = run.finish();
  EXPECT_EQ(outcome.status, 130);
  EXPECT_EQ(countOf(question, outcome.err), 1U);
  EXPECT_EQ(folder.get("out.csv"), "old");
  EXPECT_EQ(folder.entries(), (std::vector<std::string>{"in.csv", "out.csv"}));
}

TEST_F(AskedOnATerminal, IgnoreSaysWhatIsLeftOutAndAbortAtTheNextQuestionEndsTheRun) {
  ProgramRun run(start());
  ASSERT_TRUE(run.waitForError(question));
  run.type("i\n");
  ASSERT_TRUE(run.waitForError("ignored; one step of setting the network up is left out"));
  run.type("a\n");
  const Outcome outcome = run.finish();
  EXPECT_EQ(outcome.status, 4);
  EXPECT_EQ(countOf(question, outcome.err), 2U) << outcome.err;
}

TEST(ProgramErrors, OnErrorIgnoreEndsInOrderWithoutANetworkToo) {
  const Outcome outcome =
      runProgram({"cluster", "-", "-k", "20000000", "--epochs", "1", "--on-error", "ignore"}, "1\n");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(std::ranges::count(outcome.out, '\n'), 1);
  EXPECT_NE(outcome.err.find("were ignored; the result may be wrong"), std::string::npos);
}

}  // namespace
}  // namespace mervane::cli
