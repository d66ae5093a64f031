#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <memory>

#include "tests/cli/program_run.h"

namespace mervane::cli {
namespace {

/// A run that would take hours, stopped by nobody.
Start endlessRun(const std::vector<std::string>& more = {}) {
  Start start;
  start.arguments = {"cluster", "-", "-k", "3", "--epochs", "2000000000"};
  start.arguments.insert(start.arguments.end(), more.begin(), more.end());
  start.input = countTo(30);
  start.errOnTerminal = true;
  return start;
}

/// A run that stands still in its training, because nobody reads its trace.
class StuckRun {
 public:
  explicit StuckRun(const TestFolder& folder) : out_(folder.file("out.csv")) {
    folder.put("out.csv", "old");
    const std::string pipe = folder.file("trace");
    EXPECT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    trace_ = ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    EXPECT_GE(trace_, 0);
    program_ = std::make_unique<ProgramRun>(endlessRun({"-o", out_, "--trace", pipe}));
    EXPECT_TRUE(program_->waitForError("epoch"));
    waitUntilFull();
  }
  ~StuckRun() { ::close(trace_); }
  StuckRun(const StuckRun&) = delete;
  StuckRun& operator=(const StuckRun&) = delete;

  ProgramRun& program() { return *program_; }

 private:
  /// The pipe takes a fixed number of bytes; the program stands still once they no longer grow.
  void waitUntilFull() const {
    int held = -1;
    for (int before = -2; held != before || held == 0;) {
      before = held;
      ::usleep(100000);
      EXPECT_EQ(::ioctl(trace_, FIONREAD, &held), 0);
    }
  }

  std::string out_;
  int trace_ = -1;
  std::unique_ptr<ProgramRun> program_;
};

TEST(ProgramInterruption, TheFirstCtrlCStopsLearningAndTheResultsAreWritten) {
  ProgramRun program(endlessRun({"--report"}));
  ASSERT_TRUE(program.waitForError("epoch"));
  program.send(SIGINT);
  const Outcome outcome = program.finish();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(std::ranges::count(outcome.out, '\n'), 30);
  EXPECT_NE(outcome.err.find("press Ctrl-C again to leave without results"), std::string::npos);
  EXPECT_NE(outcome.err.find("interrupted: the clusters are those after epoch "), std::string::npos);
  EXPECT_NE(outcome.err.find(" of 2000000000"), std::string::npos);
}

TEST(ProgramInterruption, TheSecondCtrlCLeavesWithNothingWritten) {
  const TestFolder folder;
  StuckRun stuck(folder);
  stuck.program().send(SIGINT);
  ::usleep(200000);  // The first one has to be taken before the second is sent, or they are one.
  stuck.program().send(SIGINT);
  const Outcome outcome = stuck.program().finish();
  EXPECT_EQ(outcome.status, 130);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(folder.get("out.csv"), "old");
  EXPECT_EQ(folder.entries(), (std::vector<std::string>{"out.csv", "trace"}));
}

TEST(ProgramInterruption, BeforeTheTrainingOneCtrlCIsEnough) {
  const TestFolder folder;
  folder.put("out.csv", "old");
  Start start;
  ASSERT_EQ(::mkfifo(folder.file("in").c_str(), 0600), 0);
  start.arguments = {"cluster", folder.file("in"), "-o", folder.file("out.csv")};
  ProgramRun program(start);
  ::usleep(300000);  // It waits for a writer of its input.
  program.send(SIGINT);
  EXPECT_EQ(program.finish().status, 130);
  EXPECT_EQ(folder.get("out.csv"), "old");
}

TEST(ProgramInterruption, TerminationLeavesNothingBehind) {
  const TestFolder folder;
  StuckRun stuck(folder);
  stuck.program().send(SIGTERM);
  const Outcome outcome = stuck.program().finish();
  EXPECT_EQ(outcome.signal, SIGTERM);
  EXPECT_EQ(folder.get("out.csv"), "old");
  EXPECT_EQ(folder.entries(), (std::vector<std::string>{"out.csv", "trace"}));
}

TEST(ProgramInterruption, AnUnfinishedTraceFileIsRemovedToo) {
  const TestFolder folder;
  folder.put("trace.csv", "old");
  ProgramRun program(endlessRun({"--trace", folder.file("trace.csv")}));
  ASSERT_TRUE(program.waitForError("epoch"));
  program.send(SIGTERM);
  EXPECT_EQ(program.finish().signal, SIGTERM);
  EXPECT_EQ(folder.get("trace.csv"), "old");
  EXPECT_EQ(folder.entries(), (std::vector<std::string>{"trace.csv"}));
}

TEST(ProgramInterruption, AnInterruptIgnoredFromTheStartStaysIgnored) {
  const TestFolder folder;
  Start start;
  ASSERT_EQ(::mkfifo(folder.file("in").c_str(), 0600), 0);
  start.arguments = {"cluster", folder.file("in"), "-k", "1"};
  start.inChild = [] { std::signal(SIGINT, SIG_IGN); };
  ProgramRun program(start);
  ::usleep(300000);
  program.send(SIGINT);
  folder.put("in", "1\n2\n");
  const Outcome outcome = program.finish();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "1,1\n2,1\n");
}

}  // namespace
}  // namespace mervane::cli
