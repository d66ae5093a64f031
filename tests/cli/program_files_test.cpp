#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>

#include "tests/cli/program_run.h"

namespace mervane::cli {
namespace {

TEST(ProgramFiles, WritesBesideTheTargetAndReplacesIt) {
  const TestFolder folder;
  folder.put("data.csv", "x\n1\n2\n");
  folder.put("out.csv", "old");
  const Outcome outcome = runProgram({"cluster", folder.file("data.csv"), "-k", "1", "-o", folder.file("out.csv")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "mervane: 2 rows in 1 cluster written to " + folder.file("out.csv") + "\n");
  EXPECT_EQ(folder.get("out.csv"), "x,Cluster\n1,1\n2,1\n");
  EXPECT_EQ(folder.entries(), (std::vector<std::string>{"data.csv", "out.csv"}));
}

TEST(ProgramFiles, MayWriteOverItsInput) {
  const TestFolder folder;
  folder.put("data.csv", "x\n1\n2\n");
  const Outcome outcome = runProgram({"cluster", folder.file("data.csv"), "-k", "1", "-o", folder.file("data.csv")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(folder.get("data.csv"), "x,Cluster\n1,1\n2,1\n");
}

TEST(ProgramFiles, TheNameOfTheOutputTellsTheFormat) {
  const TestFolder folder;
  EXPECT_EQ(runProgram({"cluster", "-", "-k", "1", "-o", folder.file("a.ndjson")}, "x\n1\n").status, 0);
  EXPECT_EQ(folder.get("a.ndjson"), "{\"x\":1,\"Cluster\":1}\n");
  folder.put("data.tsv", "x\ty\n1\ta, b\n");
  EXPECT_EQ(runProgram({"cluster", folder.file("data.tsv"), "-k", "1"}).out, "x\ty\tCluster\n1\ta, b\t1\n");
}

TEST(ProgramFiles, TraceHasALineForEachEpoch) {
  const TestFolder folder;
  const Outcome outcome =
      runProgram({"cluster", "-", "-k", "1", "--epochs", "4", "--trace", folder.file("trace.csv")}, "1\n2\n");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(folder.get("trace.csv"), "epoch,learning_rate,radius\n1,0.375,2\n2,0.25,1\n3,0.125,1\n4,0,0\n");
}

TEST(ProgramFiles, TraceMustNotGetInTheWayOfTheOtherFiles) {
  const TestFolder folder;
  folder.put("data.csv", "1\n2\n");
  EXPECT_EQ(runProgram({"cluster", folder.file("data.csv"), "--trace", folder.file("data.csv")}).status, 2);
  EXPECT_EQ(
      runProgram({"cluster", folder.file("data.csv"), "-o", folder.file("o"), "--trace", folder.file("./o")}).status,
      2);
  EXPECT_EQ(folder.get("data.csv"), "1\n2\n");
}

TEST(ProgramFiles, AFullDeviceEndsWithThree) {
  Start toDevice;
  toDevice.arguments = {"cluster", "-", "-k", "1"};
  toDevice.input = "1\n2\n";
  toDevice.outPath = "/dev/full";
  const Outcome onOutput = runProgram(toDevice);
  EXPECT_EQ(onOutput.status, 3);
  EXPECT_NE(onOutput.err.find("cannot write standard output: No space left on device"), std::string::npos);

  const Outcome named = runProgram({"cluster", "-", "-k", "1", "-o", "/dev/full"}, "1\n2\n");
  EXPECT_EQ(named.status, 3);
  EXPECT_NE(named.err.find("cannot write /dev/full: No space left on device"), std::string::npos);

  const Outcome traced = runProgram({"cluster", "-", "-k", "1", "--trace", "/dev/full"}, "1\n2\n");
  EXPECT_EQ(traced.status, 3);
  EXPECT_EQ(traced.out, "");
}

TEST(ProgramFiles, AFileThatMayNotGrowLeavesTheOldOneWhole) {
  const TestFolder folder;
  folder.put("out.csv", "old");
  Start start;
  start.arguments = {"cluster", "-", "-k", "1", "--epochs", "1", "-o", folder.file("out.csv")};
  start.input = countTo(20000);
  start.inChild = [] {
    const rlimit limit{8192, 8192};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  };
  const Outcome outcome = runProgram(start);
  EXPECT_EQ(outcome.status, 3);
  EXPECT_NE(outcome.err.find("What was there before is unchanged."), std::string::npos);
  EXPECT_EQ(folder.get("out.csv"), "old");
  EXPECT_EQ(folder.entries(), (std::vector<std::string>{"out.csv"}));
}

TEST(ProgramFiles, AReaderThatHasGoneEndsItWithoutAWord) {
  Start start;
  start.arguments = {"cluster", "-", "-k", "1"};
  start.input = "1\n2\n";
  start.closeOutput = true;
  const Outcome outcome = runProgram(start);
  EXPECT_EQ(outcome.signal, SIGPIPE);
  EXPECT_EQ(outcome.err, "");
}

TEST(ProgramFiles, AKillAtAnyMomentLeavesTheOldFileOrTheNewOne) {
  const TestFolder folder;
  std::string expected = "old";
  folder.put("out.csv", expected);
  folder.put("data.csv", countTo(30000));
  const std::vector<std::string> arguments{"cluster", folder.file("data.csv"), "-k", "1", "--epochs", "1", "-q",
                                           "-o",      folder.file("out.csv")};
  std::string whole;
  for (int i = 1; i <= 30000; ++i) whole += std::to_string(i) + ",1\n";
  bool sawOld = false;
  bool sawNew = false;
  for (useconds_t delay = 0; delay < 60000000 && !sawNew; delay = delay * 3 / 2 + 500) {
    Start start;
    start.arguments = arguments;
    ProgramRun program(start);
    ::usleep(delay);
    program.send(SIGKILL);
    static_cast<void>(program.finish());
    const std::string now = folder.get("out.csv");
    sawOld = sawOld || now == "old";
    sawNew = now == whole;
    EXPECT_TRUE(now == "old" || now == whole) << "killed after " << delay << " us: " << now.size() << " bytes";
  }
  EXPECT_TRUE(sawOld);
  EXPECT_TRUE(sawNew);
}

}  // namespace
}  // namespace mervane::cli
