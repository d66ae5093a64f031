#include <gtest/gtest.h>

#include "tests/cli/program_run.h"

namespace mervane::cli {
namespace {

Start onTerminal(const std::vector<std::string>& arguments, const std::string& input) {
  Start start;
  start.arguments = arguments;
  start.input = input;
  start.errOnTerminal = true;
  return start;
}

TEST(ProgramTalk, TheProgressBarStandsOnATerminalAlone) {
  const Outcome shown = runProgram(onTerminal({"cluster", "-", "-k", "1", "--progress"}, "1\n2\n"));
  EXPECT_NE(shown.err.find("] epoch 0/100"), std::string::npos);
  EXPECT_TRUE(shown.err.ends_with("\r\x1b[K")) << "the bar is gone at the end";
  EXPECT_EQ(shown.out, "1,1\n2,1\n");
  EXPECT_EQ(runProgram({"cluster", "-", "-k", "1", "--progress"}, "1\n2\n").err, "");
}

TEST(ProgramTalk, TheProgressBarCanBeSwitchedOff) {
  EXPECT_EQ(runProgram(onTerminal({"cluster", "-", "-k", "1", "--no-progress"}, "1\n2\n")).err, "");
  EXPECT_EQ(runProgram(onTerminal({"cluster", "-", "-k", "1", "-q"}, "1\n2\n")).err, "");
}

TEST(ProgramTalk, ErrorsAreColouredOnATerminalUnlessNoColorIsSet) {
  Start start = onTerminal({"cluster", "-", "-q"}, "a\nx\n");
  EXPECT_NE(runProgram(start).err.find("mervane: \x1b[1;31merror:\x1b[0m "), std::string::npos);
  start.environment = {{"NO_COLOR", "1"}};
  EXPECT_NE(runProgram(start).err.find("mervane: error: "), std::string::npos);
  EXPECT_EQ(runProgram({"cluster", "-"}, "a\nx\n").err.find('\x1b'), std::string::npos);
}

TEST(ProgramTalk, TextOfTheFileCannotDriveTheTerminal) {
  const Outcome outcome = runProgram({"cluster", "-", "-c", "b"}, "a,b\n1,\x1b[2J\n");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err.find('\x1b'), std::string::npos);
  EXPECT_NE(outcome.err.find("\"␛[2J\" is not a number"), std::string::npos);
}

TEST(ProgramTalk, VerboseTellsWhatWasFoundOut) {
  const Outcome outcome = runProgram({"cluster", "-", "-v", "-k", "1"}, "n;x\na;1,5\nb;2,5\n");
  EXPECT_NE(outcome.err.find("standard input: 2 rows, 2 columns, delimiter semicolon, with a header, decimal comma\n"),
            std::string::npos);
  EXPECT_NE(outcome.err.find("clustering by x\n"), std::string::npos);
}

TEST(ProgramTalk, AColumnLeftOutIsToldUnlessQuiet) {
  const std::string text = "a,b\n1,2\n2,n/a\n3,4\n";
  EXPECT_NE(runProgram({"cluster", "-", "-k", "1"}, text).err.find("warning: column b is left out"), std::string::npos);
  EXPECT_EQ(runProgram({"cluster", "-", "-k", "1", "-q"}, text).err, "");
}

TEST(ProgramTalk, HelpAndVersionGoToStandardOutput) {
  const Outcome help = runProgram({"cluster", "--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(help.err, "");
  EXPECT_NE(help.out.find("--clusters"), std::string::npos);
  const Outcome version = runProgram({"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_EQ(version.out.substr(0, 8), "mervane ");
}

}  // namespace
}  // namespace mervane::cli
