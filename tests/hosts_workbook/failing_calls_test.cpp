#include <gtest/gtest.h>

#include "tests/conformance/flow_desk.h"
#include "tests/conformance/workbook_under_test.h"
#include "tests/support/fault_injector.h"

namespace mervane::tests {
namespace {

/// Call by call is tried on the fake sheet, which is quick; a step of this width still meets every kind of call.
constexpr int stride = 11;

/// A run in which one call on the workbook fails, and what it leaves behind.
struct BrokenRun {
  explicit BrokenRun(int failingCall, const std::string& answer) {
    const FaultInjector faulty(desk.look().host().application(), failingCall);
    desk.answerReports(answer);
    desk.putOn(faulty.object());
    result = desk.clusterize({.autofilter = true, .sort = true});
    triggered = faulty.triggered();
    calls = faulty.calls();
  }
  /// Saving compares the parts with the order of the format; the rows are looked up in the file opened again.
  void expectSoundFile() {
    desk.look().host().reopen();
    std::map<std::string, std::string> lengths{{"a", "1"}, {"b", "2"}, {"c", "4"}, {"d", "7"}, {"e", "6"}};
    const std::vector<std::string> cells = desk.texts("A2:B6");
    for (std::size_t i = 0; i < cells.size(); i += 2) {
      EXPECT_EQ(cells[i + 1], lengths[cells[i]]) << "the row of " << cells[i];
      lengths.erase(cells[i]);
    }
    EXPECT_TRUE(lengths.empty()) << "every row is still there";
  }

  FlowDesk desk{workbookKind(), std::make_shared<MemberRecord>()};
  std::string result;
  bool triggered = false;
  int calls = 0;
};

void expectSoundFilesWhateverFails(const std::string& answer) {
  for (int failing = 1;; failing += stride) {
    SCOPED_TRACE("call " + std::to_string(failing) + " fails and is answered by " + answer);
    BrokenRun run(failing, answer);
    if (!run.triggered) {
      EXPECT_GT(run.calls, 500) << "a whole run makes many calls";
      return;
    }
    EXPECT_TRUE(run.result == "CLOSE" || run.result == "INVALIDDATA") << run.result;
    run.expectSoundFile();
    if (testing::Test::HasFailure()) return;
  }
}

TEST(FailingCalls, AnIgnoredFailureLeavesASoundFile) {
  expectSoundFilesWhateverFails("IGNORE");
}

TEST(FailingCalls, AnAbortedFailureLeavesASoundFile) {
  expectSoundFilesWhateverFails("ABORT");
}

TEST(FailingCalls, ARetriedFailureLeavesWhatARunWithoutOneLeaves) {
  BrokenRun whole(0, "RETRY");
  const std::vector<Variant> expected = whole.desk.values("A1:G17");
  int retried = 0;
  for (int failing = 1;; failing += stride) {
    SCOPED_TRACE("call " + std::to_string(failing) + " fails once");
    BrokenRun run(failing, "RETRY");
    if (!run.triggered) break;
    // A refused check ends the run before anything is written.
    if (run.result == "INVALIDDATA") continue;
    // Where a procedure skips what fails nobody is asked, and that one thing is missing.
    if (run.desk.reports().empty()) continue;
    ASSERT_EQ(run.desk.values("A1:G17"), expected);
    ++retried;
  }
  EXPECT_GT(retried, 20);
}

}  // namespace
}  // namespace mervane::tests
