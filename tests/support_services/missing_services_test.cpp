#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "mervane/service_errors.h"
#include "support/error_handler.h"
#include "tests/support/failure_matchers.h"
#include "tests/support/test_machine.h"

namespace mervane {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using tests::failureOf;
using tests::IsFailure;

/// A machine that lacks what a channel of the error handler needs, and channels that were not chosen.
class MissingServices : public testing::Test {
 protected:
  static auto isComponentFailure() {
    return IsFailure(eErr_ErrorHandlerFailure, "CErrorHandler component failure", "MervaneCls31.CErrorHandler");
  }
  auto failureOfHandling(std::int32_t actions) {
    handler.ErrorHandlerActions(actions);
    return failureOf([&] { static_cast<void>(handler.HandleError("", Failure(5, "text"))); });
  }

  tests::TestMachine machine;
  CErrorHandler handler;
};

TEST_F(MissingServices, AReportNeedsAClock) {
  machine.services->clock = nullptr;
  EXPECT_THAT(failureOfHandling(ehaMessageBox), isComponentFailure());
}

TEST_F(MissingServices, EachChannelNeedsItsService) {
  machine.services->textFiles = nullptr;
  machine.services->eventLog = nullptr;
  machine.services->messageBox = nullptr;
  machine.services->createErrorWindow = nullptr;
  EXPECT_THAT(failureOfHandling(ehaLogFile), isComponentFailure());
  EXPECT_THAT(failureOfHandling(ehaEventLog), isComponentFailure());
  EXPECT_THAT(failureOfHandling(ehaMessageBox), isComponentFailure());
  EXPECT_THAT(failureOfHandling(ehaErrorForm), isComponentFailure());
}

TEST_F(MissingServices, TracingNeedsFilesAndClearingPassesTheirLackOver) {
  machine.services->textFiles = nullptr;
  handler.Init(ehaMessageBox, "errors", true, true, tfLogFile, "trace");
  EXPECT_THAT(failureOf([&] { handler.CallStackPush("a.b.c", ""); }), isComponentFailure());
  handler.Clear(true, true);
}

TEST_F(MissingServices, AMachineThatCannotTellItsVersionIsNotOfTheNtFamily) {
  machine.services->systemVersion = nullptr;
  CErrorHandler other;
  other.ErrorHandlerActions(ehaEventLog);
  static_cast<void>(other.HandleError("", Failure(5, "text")));
  EXPECT_THAT(machine.eventLog->entries, IsEmpty());
}

TEST_F(MissingServices, AChannelThatWasNotChosenGetsNothing) {
  handler.ErrorHandlerActions(ehaMessageBox);
  static_cast<void>(handler.HandleError("", Failure(5, "text")));
  EXPECT_THAT(machine.messageBox->shown, SizeIs(1));
  EXPECT_THAT(machine.textFiles->files(), IsEmpty());
  EXPECT_THAT(machine.eventLog->entries, IsEmpty());
}

TEST_F(MissingServices, FileNamesAreTakenFromTheirProperties) {
  handler.ErrorLogFile("other errors");
  handler.TracingLogFile("other trace");
  EXPECT_EQ(handler.ErrorLogFile(), "other errors");
  EXPECT_EQ(handler.TracingLogFile(), "other trace");
}

TEST_F(MissingServices, TheDataOfAnEntryGoesWithIt) {
  handler.CallStackEnabled(true);
  handler.CallStackPush("first", "gone with its entry");
  handler.CallStackPop();
  handler.CallStackPush("second", "also gone");
  handler.CallStackClear();
  handler.CallStackPush("third", "here");
  static_cast<void>(handler.HandleError("", Failure(5, "text")));
  EXPECT_THAT(machine.messageBox->shown.at(0).text, HasSubstr("third(here)"));
}

}  // namespace
}  // namespace mervane
