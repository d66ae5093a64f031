#include "support/procedures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "mervane/runtime_errors.h"
#include "tests/support/failure_matchers.h"
#include "tests/support/scripted_error_window.h"
#include "tests/support/test_machine.h"

namespace mervane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using tests::failureOf;
using tests::IsFailure;

/// A statement that fails the first few times it is run.
struct Statement {
  std::string name;
  std::vector<std::string>& log;
  int failures = 0;

  void operator()() {
    log.push_back(name);
    if (failures-- > 0) raise(runtime::typeMismatch);
  }
};

class Traced : public testing::Test {
 protected:
  Traced() {
    tests::installErrorDialog(*machine.services, dialog);
    globals::errorHandler().Init(ehaErrorForm, "e.txt", true, false, tfLogFile, "t.txt");
  }

  /// The listing of the stack as it is now.
  std::string stack() {
    globals::errorHandler().ErrorHandlerActions(ehaMessageBox);
    static_cast<void>(globals::errorHandler().HandleError("", Failure(1, "looking")));
    globals::errorHandler().ErrorHandlerActions(ehaErrorForm);
    const std::string report = machine.messageBox->shown.back().text;
    const std::string head = "The call stack is:\r\n";
    return report.substr(report.find(head) + head.size());
  }

  tests::TestMachine machine;
  std::shared_ptr<tests::ErrorDialogScript> dialog = std::make_shared<tests::ErrorDialogScript>();
  std::vector<std::string> log;
};

TEST_F(Traced, LeavingAnOuterProcedureFromWithinAnInnerOneLeavesBoth) {
  traced("a.b.Outer", [&](Steps& outer) {
    traced("a.b.Inner", [&](Steps&) {
      log.emplace_back("inner");
      outer.leave();
    });
    log.emplace_back("behind the inner one");
  });
  EXPECT_THAT(log, ElementsAre("inner"));
}

TEST_F(Traced, StandsOnTheStackWhileItRunsAndLeavesItClean) {
  std::string inside;
  traced("outer", [&](Steps& step) { step([&] { traced("inner", [&](Steps&) { inside = stack(); }); }); });
  EXPECT_EQ(inside, "                    inner()\r\n                    outer()");
  EXPECT_EQ(stack(), "");
}

TEST_F(Traced, AbortGivesUpTheProcedureAndRaisesNothing) {
  Statement first{"first", log};
  Statement second{"second", log, 1};
  Statement third{"third", log};
  dialog->answers = {"ABORT"};
  traced("p", [&](Steps& step) {
    step(first);
    step(second);
    step(third);
  });
  EXPECT_THAT(log, ElementsAre("first", "second"));
  EXPECT_THAT(dialog->reports, SizeIs(1));
  EXPECT_EQ(stack(), "");
}

TEST_F(Traced, RetryRunsTheFailedStatementAgainAndNothingBeforeIt) {
  Statement first{"first", log};
  Statement second{"second", log, 2};
  Statement third{"third", log};
  dialog->answers = {"RETRY", "RETRY"};
  traced("p", [&](Steps& step) {
    step(first);
    step(second);
    step(third);
  });
  EXPECT_THAT(log, ElementsAre("first", "second", "second", "second", "third"));
  EXPECT_THAT(dialog->reports, SizeIs(2));
}

TEST_F(Traced, IgnoreGoesOnBehindTheFailedStatement) {
  Statement first{"first", log};
  Statement second{"second", log, 1};
  Statement third{"third", log};
  dialog->answers = {"IGNORE"};
  traced("p", [&](Steps& step) {
    step(first);
    step(second);
    step(third);
  });
  EXPECT_THAT(log, ElementsAre("first", "second", "third"));
}

TEST_F(Traced, RetryAndIgnoreLeaveTheStackAsItWas) {
  std::string inside;
  Statement failing{"failing", log, 2};
  dialog->answers = {"RETRY", "IGNORE"};
  traced("outer", [&](Steps& outer) {
    outer([&] {
      traced("inner", [&](Steps& step) {
        step(failing);
        inside = stack();
      });
    });
  });
  EXPECT_EQ(inside, "                    inner()\r\n                    outer()");
  EXPECT_EQ(stack(), "");
}

TEST_F(Traced, AbortInInnerProcedureLetsTheOuterFinishAsIfNothingHadHappened) {
  std::string afterwards;
  Statement failing{"failing", log, 1};
  Statement after{"after", log};
  dialog->answers = {"ABORT"};
  traced("outer", [&](Steps& outer) {
    outer([&] { traced("inner", [&](Steps& step) { step(failing); }); });
    afterwards = stack();
    outer(after);
  });
  EXPECT_THAT(log, ElementsAre("failing", "after"));
  EXPECT_EQ(afterwards, "") << "the abort empties the whole stack";
  EXPECT_THAT(dialog->reports, SizeIs(1)) << "shown once, by the innermost procedure";
  EXPECT_EQ(stack(), "");
}

TEST_F(Traced, AbortWithADisabledStackLeavesTheEntries) {
  globals::errorHandler().CallStackEnabled(false);
  traced("outer", [&](Steps& outer) {
    outer([&] { traced("inner", [&](Steps& step) { step([] { raise(runtime::overflow); }); }); });
  });
  EXPECT_EQ(stack(), "                    outer()") << "the outer procedure popped the entry that the inner one left";
}

TEST_F(Traced, AFailureIsShownByTheInnermostProcedureAroundItWithItsName) {
  traced("outer", [&](Steps& outer) {
    outer([&] { traced("inner", [&](Steps& step) { step([] { raise(runtime::overflow); }); }); });
  });
  ASSERT_THAT(dialog->reports, SizeIs(1));
  EXPECT_THAT(dialog->reports[0], HasSubstr("\tError: 6, (Overflow)\r\n\tin inner at line 0\r\n"));
}

TEST_F(Traced, AFailureOfTheHandlingLeavesTheProcedureForTheNearestCallerWithATrap) {
  Statement after{"after", log};
  std::string stackOfOuter;
  dialog->script.failCall(1);
  dialog->answers = {"IGNORE"};
  traced("outer", [&](Steps& outer) {
    outer([&] { traced("inner", [&](Steps& step) { step([] { raise(runtime::overflow); }); }); });
    stackOfOuter = stack();
    outer(after);
  });
  EXPECT_THAT(log, ElementsAre("after"));
  ASSERT_THAT(dialog->reports, SizeIs(1));
  EXPECT_THAT(dialog->reports[0], HasSubstr("(CErrorHandler component failure)"));
  EXPECT_THAT(dialog->reports[0], HasSubstr("\tin inner at line 0\r\n")) << "its entry stayed on the stack";
  EXPECT_EQ(stackOfOuter, "                    inner()\r\n                    outer()");
}

TEST_F(Traced, AFailureOfTheHandlingReachesTheClientWhereNoCallerHasATrap) {
  dialog->script.failCall(1);
  EXPECT_THAT(failureOf([&] { traced("p", [&](Steps& step) { step([] { raise(runtime::overflow); }); }); }),
              IsFailure(eErr_ErrorHandlerFailure, "CErrorHandler component failure", "MervaneCls31.CErrorHandler"));
  EXPECT_EQ(stack(), "                    p()");
}

TEST_F(Traced, ARetryAfterAFailedTracingLinePushesTheKeyASecondTime) {
  globals::errorHandler().TracingEnabled(true);
  machine.textFiles->script.failCall(1);
  dialog->answers = {"RETRY"};
  std::string inside;
  traced("p", [&](Steps&) { inside = stack(); });
  EXPECT_EQ(inside, "                    p()\r\n                    p()");
  EXPECT_EQ(stack(), "                    p()");
}

TEST_F(Traced, AnIgnoredTracingLineOnEntryLetsTheBodyRun) {
  globals::errorHandler().TracingEnabled(true);
  machine.textFiles->script.failCall(1);
  dialog->answers = {"IGNORE"};
  Statement body{"body", log};
  traced("p", [&](Steps& step) { step(body); });
  EXPECT_THAT(log, ElementsAre("body"));
  EXPECT_EQ(stack(), "");
}

TEST_F(Traced, AnAbortedTracingLineOnEntryLeavesTheBodyOut) {
  globals::errorHandler().TracingEnabled(true);
  machine.textFiles->script.failCall(1);
  Statement body{"body", log};
  traced("p", [&](Steps& step) { step(body); });
  EXPECT_THAT(log, IsEmpty());
  EXPECT_EQ(stack(), "");
}

TEST_F(Traced, ARetriedTracingLineOnExitPopsOnce) {
  globals::errorHandler().CallStackPush("below", "");
  globals::errorHandler().TracingEnabled(true);
  machine.textFiles->script.failCall(2);
  dialog->answers = {"RETRY"};
  traced("p", [&](Steps&) {});
  EXPECT_EQ(stack(), "                    below()");
}

TEST_F(Traced, AnIgnoredTracingLineOnExitLeavesTheEntry) {
  globals::errorHandler().TracingEnabled(true);
  machine.textFiles->script.failCall(2);
  dialog->answers = {"IGNORE"};
  traced("p", [&](Steps&) {});
  EXPECT_EQ(stack(), "                    p()");
}

TEST_F(Traced, LeavingKeepsTheEntryOnTheStack) {
  bool reached = false;
  traced("p", [&](Steps& step) {
    step.leave();
    reached = true;
  });
  EXPECT_FALSE(reached);
  EXPECT_EQ(stack(), "                    p()");
}

TEST_F(Traced, OnlyFailuresEnterTheTrap) {
  EXPECT_THROW(traced("p", [&](Steps& step) { step([] { throw 7; }); }), int);
  EXPECT_THAT(dialog->reports, IsEmpty());
}

TEST_F(Traced, AnExceptionThatIsNoFailureTakesTheEntriesOfTheProceduresThatItLeavesAlong) {
  std::string between;
  traced("outermost", [&](Steps&) {
    EXPECT_THROW(traced("outer", [](Steps& step) { step([] { traced("inner", [](Steps&) { throw 7; }); }); }), int);
    between = stack();
  });
  EXPECT_EQ(between, "                    outermost()");
  EXPECT_EQ(stack(), "");
}

TEST_F(Traced, AConditionAnswersWhatItsTestAnswers) {
  traced("p", [&](Steps& step) {
    EXPECT_TRUE(step.holds([] { return true; }));
    EXPECT_FALSE(step.holds([] { return false; }));
  });
}

TEST_F(Traced, AnIgnoredConditionCountsAsTrueAndARetriedOneIsTestedAgain) {
  int tests = 0;
  const auto test = [&]() -> bool {
    if (++tests < 3) raise(runtime::typeMismatch);
    return false;
  };
  dialog->answers = {"RETRY", "RETRY", "IGNORE"};
  traced("p", [&](Steps& step) {
    EXPECT_FALSE(step.holds(test));
    tests = 0;
    EXPECT_TRUE(step.holds(test));
  });
  EXPECT_EQ(tests, 1);
}

TEST_F(Traced, AnAbortedConditionGivesUpTheProcedure) {
  bool reached = false;
  traced("p", [&](Steps& step) {
    static_cast<void>(step.holds([]() -> bool { raise(runtime::typeMismatch); }));
    reached = true;
  });
  EXPECT_FALSE(reached);
}

TEST(Wrapping, TurnsEveryFailureIntoOneOfItsClass) {
  EXPECT_THAT(failureOf([] { wrapping("mTools", "MervaneClass3.mTools.mReplace", [] { raise(runtime::overflow); }); }),
              IsFailure(eErr_ComponentFailure, "mTools component failure", "MervaneClass3.mTools.mReplace"));
}

TEST(Wrapping, PassesTheResultThrough) {
  EXPECT_EQ(wrapping("mTools", "key", [] { return 7; }), 7);
}

TEST(Service, PassesWhatItsOwnChecksRefuseAndNamesServerAndClass) {
  EXPECT_THAT(failureOf([] { service("CThing", 100, [](ServiceTrap& trap) { trap.refuse(42, "Invalid thing"); }); }),
              IsFailure(42, "Invalid thing", "MervaneCls31.CThing"));
}

TEST(Service, WrapsWhatNobodyForesaw) {
  EXPECT_THAT(failureOf([] { service("CThing", 100, [](ServiceTrap&) { raise(runtime::overflow); }); }),
              IsFailure(100, "CThing component failure", "MervaneCls31.CThing"));
}

TEST(Attempt, DropsAFailureAndNothingElse) {
  attempt([] { raise(runtime::overflow); });
  EXPECT_THROW(attempt([] { throw 7; }), int);
}

TEST(HoldsOrFails, CountsAFailingTestAsTrue) {
  EXPECT_TRUE(holdsOrFails([]() -> bool { raise(runtime::overflow); }));
  EXPECT_TRUE(holdsOrFails([] { return true; }));
  EXPECT_FALSE(holdsOrFails([] { return false; }));
}

}  // namespace
}  // namespace mervane
