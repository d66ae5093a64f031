#include "support/error_handler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "mervane/service_errors.h"
#include "support/frm_error_message.h"
#include "support/globals.h"
#include "tests/support/failure_matchers.h"
#include "tests/support/scripted_error_window.h"
#include "tests/support/test_machine.h"

namespace mervane {
namespace {

using platform::MessageBox;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using tests::failureOf;
using tests::IsFailure;

constexpr const char* source = "MervaneCls31.CErrorHandler";
const Failure someFailure(13, "Type mismatch");

class ErrorHandler : public testing::Test {
 protected:
  ErrorHandler() { tests::installErrorDialog(*machine.services, dialog); }

  /// Everything behind "The call stack is:" and its line end, as a message box shows it.
  std::string listing(CErrorHandler& handler) {
    handler.ErrorHandlerActions(ehaMessageBox);
    static_cast<void>(handler.HandleError("", someFailure));
    const std::string report = machine.messageBox->shown.back().text;
    const std::string head = "The call stack is:\r\n";
    return report.substr(report.find(head) + head.size());
  }

  tests::TestMachine machine;
  std::shared_ptr<tests::ErrorDialogScript> dialog = std::make_shared<tests::ErrorDialogScript>(machine.journal);
};

TEST_F(ErrorHandler, StartsWithTheMessageBoxAndWithoutStackOrTracing) {
  const CErrorHandler handler;
  EXPECT_FALSE(handler.CallStackEnabled());
  EXPECT_FALSE(handler.TracingEnabled());
  EXPECT_EQ(handler.ErrorHandlerActions(), 1);
  EXPECT_EQ(handler.TracingFlags(), 0);
  EXPECT_EQ(handler.ErrorNumber(), 0);
  EXPECT_EQ(handler.ErrorLine(), 0);
  EXPECT_EQ(handler.ErrorLogFile(), "Error Log.txt");
  EXPECT_EQ(handler.TracingLogFile(), "Tracing Log.txt");
  EXPECT_EQ(handler.Tag(), "");
  EXPECT_EQ(handler.ErrorDescription(), "");
  EXPECT_EQ(handler.SupportMail(), "");
}

TEST_F(ErrorHandler, KeepsWhatItsPlainPropertiesAreGiven) {
  CErrorHandler handler;
  handler.SupportMail("help@example.org");
  handler.CallStackEnabled(true);
  handler.TracingEnabled(true);
  handler.ErrorDescription("text");
  handler.ErrorLine(7);
  handler.ErrorNumber(-3);
  handler.Tag("mine");
  EXPECT_EQ(handler.SupportMail(), "help@example.org");
  EXPECT_TRUE(handler.CallStackEnabled());
  EXPECT_TRUE(handler.TracingEnabled());
  EXPECT_EQ(handler.ErrorDescription(), "text");
  EXPECT_EQ(handler.ErrorLine(), 7);
  EXPECT_EQ(handler.ErrorNumber(), -3);
  EXPECT_EQ(handler.Tag(), "mine");
}

TEST_F(ErrorHandler, AsksTheMachineWithTheExtendedRecordFirst) {
  const CErrorHandler handler;
  EXPECT_THAT(machine.systemVersion->asked, ElementsAre(156));
}

TEST_F(ErrorHandler, AsksAgainWithTheBasicRecordWhereTheExtendedOneFails) {
  machine.systemVersion->extended.reset();
  CErrorHandler handler;
  EXPECT_THAT(machine.systemVersion->asked, ElementsAre(156, 148));
  handler.ErrorHandlerActions(ehaEventLog);
  static_cast<void>(handler.HandleError("", someFailure));
  EXPECT_THAT(machine.eventLog->entries, SizeIs(1));
}

TEST_F(ErrorHandler, IsNotOfTheNtFamilyWhereNeitherRecordIsAnswered) {
  machine.systemVersion->extended.reset();
  machine.systemVersion->basic.reset();
  CErrorHandler handler;
  handler.ErrorHandlerActions(ehaEventLog);
  EXPECT_EQ(handler.HandleError("", someFailure), ehrAbort);
  EXPECT_THAT(machine.eventLog->entries, IsEmpty());
}

TEST_F(ErrorHandler, CanBeMadeBeforeAnyServicesAreSet) {
  globals::release();
  CErrorHandler handler;
  handler.CallStackPush("a.b.c", "");
  handler.CallStackPop();
  EXPECT_EQ(handler.ErrorHandlerActions(), ehaMessageBox);
}

// Argument checks.

TEST_F(ErrorHandler, InitAssignsAllItsArguments) {
  CErrorHandler handler;
  handler.Init(15, "e.txt", true, true, 3, "t.txt");
  EXPECT_EQ(handler.ErrorHandlerActions(), 15);
  EXPECT_EQ(handler.ErrorLogFile(), "e.txt");
  EXPECT_TRUE(handler.CallStackEnabled());
  EXPECT_TRUE(handler.TracingEnabled());
  EXPECT_EQ(handler.TracingFlags(), 3);
  EXPECT_EQ(handler.TracingLogFile(), "t.txt");
}

TEST_F(ErrorHandler, InitRefusesActionsOutsideOneToFifteenAndChangesNothing) {
  for (const std::int32_t actions : {0, 16, -1}) {
    CErrorHandler handler;
    EXPECT_THAT(failureOf([&] { handler.Init(actions, "e.txt", true, true, 2, "t.txt"); }),
                IsFailure(eErr_InvalidActions, "Invalid error handler actions", source));
    EXPECT_EQ(handler.ErrorHandlerActions(), 1);
    EXPECT_EQ(handler.ErrorLogFile(), "Error Log.txt");
    EXPECT_FALSE(handler.CallStackEnabled());
  }
}

TEST_F(ErrorHandler, InitRefusesAnEmptyErrorLogFileWithTheActionsAlreadyAssigned) {
  CErrorHandler handler;
  EXPECT_THAT(failureOf([&] { handler.Init(4, "", true, true, 2, "t.txt"); }),
              IsFailure(eErr_InvalidFileName, "Invalid file name", source));
  EXPECT_EQ(handler.ErrorHandlerActions(), 4);
  EXPECT_EQ(handler.ErrorLogFile(), "Error Log.txt");
  EXPECT_FALSE(handler.CallStackEnabled());
}

TEST_F(ErrorHandler, InitRefusesTracingFlagsOutsideOneToThreeWithWhatCameBeforeInForce) {
  for (const std::int32_t flags : {0, 4, -1}) {
    CErrorHandler handler;
    EXPECT_THAT(failureOf([&] { handler.Init(8, "e.txt", true, true, flags, "t.txt"); }),
                IsFailure(eErr_InvalidTracingFlags, "Invalid tracing flags", source));
    EXPECT_EQ(handler.ErrorHandlerActions(), 8);
    EXPECT_EQ(handler.ErrorLogFile(), "e.txt");
    EXPECT_TRUE(handler.CallStackEnabled());
    EXPECT_TRUE(handler.TracingEnabled());
    EXPECT_EQ(handler.TracingFlags(), 0);
    EXPECT_EQ(handler.TracingLogFile(), "Tracing Log.txt");
  }
}

TEST_F(ErrorHandler, InitRefusesAnEmptyTracingLogFileWithTheFlagsAlreadyAssigned) {
  CErrorHandler handler;
  EXPECT_THAT(failureOf([&] { handler.Init(8, "e.txt", false, false, 1, ""); }),
              IsFailure(eErr_InvalidFileName, "Invalid file name", source));
  EXPECT_EQ(handler.TracingFlags(), 1);
  EXPECT_EQ(handler.TracingLogFile(), "Tracing Log.txt");
}

TEST_F(ErrorHandler, SettersRefuseWhatInitRefusesAndKeepTheOldValue) {
  CErrorHandler handler;
  handler.Init(8, "e.txt", true, false, 2, "t.txt");
  for (const std::int32_t actions : {0, 16}) {
    EXPECT_THAT(failureOf([&] { handler.ErrorHandlerActions(actions); }),
                IsFailure(eErr_InvalidActions, "Invalid error handler actions", source));
  }
  for (const std::int32_t flags : {0, 4}) {
    EXPECT_THAT(failureOf([&] { handler.TracingFlags(flags); }),
                IsFailure(eErr_InvalidTracingFlags, "Invalid tracing flags", source));
  }
  EXPECT_THAT(failureOf([&] { handler.ErrorLogFile(""); }),
              IsFailure(eErr_InvalidFileName, "Invalid file name", source));
  EXPECT_THAT(failureOf([&] { handler.TracingLogFile(""); }),
              IsFailure(eErr_InvalidFileName, "Invalid file name", source));
  EXPECT_EQ(handler.ErrorHandlerActions(), 8);
  EXPECT_EQ(handler.TracingFlags(), 2);
  EXPECT_EQ(handler.ErrorLogFile(), "e.txt");
  EXPECT_EQ(handler.TracingLogFile(), "t.txt");
}

TEST_F(ErrorHandler, SettersTakeBothEndsOfTheirRanges) {
  CErrorHandler handler;
  for (const std::int32_t actions : {1, 15}) {
    handler.ErrorHandlerActions(actions);
    EXPECT_EQ(handler.ErrorHandlerActions(), actions);
  }
  for (const std::int32_t flags : {1, 3}) {
    handler.TracingFlags(flags);
    EXPECT_EQ(handler.TracingFlags(), flags);
  }
}

TEST_F(ErrorHandler, ErrorNumbersAreThoseThatAReportPrints) {
  EXPECT_EQ(eErr_ComponentFailure, -2147221404);
  EXPECT_EQ(eErr_InvalidFileName, -2147204103);
  EXPECT_EQ(eErr_InvalidActions, -2147204102);
  EXPECT_EQ(eErr_InvalidTracingFlags, -2147204101);
  EXPECT_EQ(eErr_ErrorHandlerFailure, -2147204100);
}

// The stack.

TEST_F(ErrorHandler, ListsTheInnermostProcedureFirstWithItsDataInParentheses) {
  CErrorHandler handler;
  handler.CallStackPush("a.b.outer", "");
  handler.CallStackPush("a.b.inner", "x=1, \t(y)");
  EXPECT_EQ(listing(handler),
            "                    a.b.inner(x=1, \t(y))\r\n"
            "                    a.b.outer()");
}

TEST_F(ErrorHandler, ListsNothingForAnEmptyStack) {
  CErrorHandler handler;
  EXPECT_EQ(listing(handler), "");
}

TEST_F(ErrorHandler, FillsAndEmptiesTheStackWhetherOrNotItIsEnabled) {
  for (const bool enabled : {false, true}) {
    CErrorHandler handler;
    handler.CallStackEnabled(enabled);
    handler.CallStackPush("one", "");
    handler.CallStackPush("two", "");
    handler.CallStackPop();
    EXPECT_EQ(listing(handler), "                    one()");
  }
}

TEST_F(ErrorHandler, PopOnAnEmptyStackDoesNothingAndTracesNothing) {
  CErrorHandler handler;
  handler.Init(1, "e.txt", true, true, tfLogFile, "t.txt");
  handler.CallStackPop();
  EXPECT_FALSE(machine.textFiles->exists("t.txt"));
}

TEST_F(ErrorHandler, ClearingTheStackEmptiesItWithoutATracingLine) {
  CErrorHandler handler;
  handler.Init(1, "e.txt", true, false, tfLogFile, "t.txt");
  handler.CallStackPush("one", "");
  handler.TracingEnabled(true);
  handler.CallStackClear();
  EXPECT_FALSE(machine.textFiles->exists("t.txt"));
  EXPECT_EQ(listing(handler), "");
}

TEST_F(ErrorHandler, ClearingADisabledStackLeavesAllEntriesInPlace) {
  CErrorHandler handler;
  handler.CallStackPush("one", "");
  handler.CallStackClear();
  EXPECT_EQ(listing(handler), "                    one()");
}

TEST_F(ErrorHandler, WalksAStackOf32767Entries) {
  CErrorHandler handler;
  handler.CallStackEnabled(true);
  for (int i = 0; i < 32767; ++i) handler.CallStackPush("p", "");
  EXPECT_EQ(listing(handler).size(), 32767U * (20 + 3) + 32766U * 2);
  handler.CallStackClear();
  EXPECT_EQ(listing(handler), "");
}

TEST_F(ErrorHandler, NeitherListsNorClearsAStackBeyondItsSixteenBitWalk) {
  CErrorHandler handler;
  handler.CallStackEnabled(true);
  for (int i = 0; i < 32768; ++i) handler.CallStackPush("p", "");
  EXPECT_EQ(listing(handler), "");
  handler.CallStackClear();
  handler.CallStackPop();
  EXPECT_EQ(listing(handler).size(), 32767U * (20 + 3) + 32766U * 2);
}

// Tracing.

TEST_F(ErrorHandler, TracesEachEntryAndExitAsALineOfItsOwn) {
  CErrorHandler handler;
  handler.Init(1, "e.txt", true, true, tfLogFile, "t.txt");
  handler.CallStackPush("MervaneClass3.Classifier3.Run", "data is not traced");
  machine.clock->advanceSeconds(1);
  handler.CallStackPop();
  EXPECT_EQ(machine.textFiles->content("t.txt"),
            "3/14/2005 - 3:07:09 PM --- Entered routine: MervaneClass3.Classifier3.Run\r\n"
            "3/14/2005 - 3:07:10 PM --- Exited routine: MervaneClass3.Classifier3.Run\r\n");
  EXPECT_THAT(machine.journal->entries(), ElementsAre("textFiles.append t.txt", "textFiles.append t.txt"));
}

TEST_F(ErrorHandler, TracesNothingWhileTracingIsOff) {
  CErrorHandler handler;
  handler.Init(1, "e.txt", true, false, 3, "t.txt");
  handler.CallStackPush("p", "");
  handler.CallStackPop();
  EXPECT_THAT(machine.textFiles->files(), IsEmpty());
}

TEST_F(ErrorHandler, TracesNothingForDebuggerOutputAloneOrForNoFlagsAtAll) {
  CErrorHandler handler;
  handler.TracingEnabled(true);
  handler.CallStackPush("p", "");
  handler.TracingFlags(tfDebugOutput);
  handler.CallStackPush("p", "");
  handler.CallStackPop();
  EXPECT_THAT(machine.textFiles->files(), IsEmpty());
}

TEST_F(ErrorHandler, AFailingTracingLineOnEntryComesAfterTheEntryIsAdded) {
  CErrorHandler handler;
  handler.Init(1, "e.txt", true, true, 3, "t.txt");
  machine.textFiles->script.failCall(1);
  EXPECT_THAT(failureOf([&] { handler.CallStackPush("p", ""); }),
              IsFailure(eErr_ErrorHandlerFailure, "CErrorHandler component failure", source));
  EXPECT_EQ(listing(handler), "                    p()");
}

TEST_F(ErrorHandler, AFailingTracingLineOnExitComesBeforeTheEntryIsRemoved) {
  CErrorHandler handler;
  handler.Init(1, "e.txt", true, true, 3, "t.txt");
  handler.CallStackPush("p", "");
  machine.textFiles->script.failCall(1);
  EXPECT_THAT(failureOf([&] { handler.CallStackPop(); }),
              IsFailure(eErr_ErrorHandlerFailure, "CErrorHandler component failure", source));
  EXPECT_EQ(listing(handler), "                    p()");
}

// Handling a failure.

TEST_F(ErrorHandler, ReportReadsCharacterByCharacterAsToldFieldByField) {
  CErrorHandler handler;
  handler.Init(ehaMessageBox, "e.txt", true, false, 2, "t.txt");
  handler.CallStackPush("MervaneClass3.Classifier3.Classify", "");
  handler.CallStackPush("MervaneClass3.Classifier3.Run", "");
  static_cast<void>(handler.HandleError("", Failure(eErr_ComponentFailure, "mTools component failure", "anything")));
  ASSERT_THAT(machine.messageBox->shown, SizeIs(1));
  EXPECT_EQ(machine.messageBox->shown[0].text,
            "3/14/2005 - 3:07:09 PM\r\n"
            "\tError: -2147221404, (mTools component failure)\r\n"
            "\tin MervaneClass3.Classifier3.Run at line 0\r\n"
            "\r\n"
            "The call stack is:\r\n"
            "                    MervaneClass3.Classifier3.Run()\r\n"
            "                    MervaneClass3.Classifier3.Classify()");
  EXPECT_EQ(machine.messageBox->shown[0].buttons, MessageBox::Buttons::abortRetryIgnore);
}

TEST_F(ErrorHandler, ReportOfAnEmptyStackEndsBehindItsHeading) {
  CErrorHandler handler;
  static_cast<void>(handler.HandleError("", someFailure));
  EXPECT_EQ(machine.messageBox->shown[0].text,
            "3/14/2005 - 3:07:09 PM\r\n"
            "\tError: 13, (Type mismatch)\r\n"
            "\tin Unknown at line 0\r\n"
            "\r\n"
            "The call stack is:\r\n");
}

TEST_F(ErrorHandler, ReportFollowsTheUsersDateAndTimeForms) {
  machine.services->locale.dateOrder = Locale::DateOrder::dayMonthYear;
  machine.services->locale.dateSeparator = ".";
  machine.services->locale.twelveHourClock = false;
  CErrorHandler handler;
  static_cast<void>(handler.HandleError("", someFailure));
  EXPECT_THAT(machine.messageBox->shown[0].text, testing::StartsWith("14.3.2005 - 15:07:09\r\n"));
}

TEST_F(ErrorHandler, KeepsTheLastFailureUntilTheNext) {
  CErrorHandler handler;
  handler.ErrorLine(99);
  handler.CallStackEnabled(true);
  static_cast<void>(handler.HandleError("", Failure(1004, "first")));
  handler.CallStackClear();
  handler.Clear(true, true);
  EXPECT_EQ(handler.ErrorNumber(), 1004);
  EXPECT_EQ(handler.ErrorDescription(), "first");
  EXPECT_EQ(handler.ErrorLine(), 0) << "no procedure numbers its lines";
  static_cast<void>(handler.HandleError("", Failure(6, "second")));
  EXPECT_EQ(handler.ErrorNumber(), 6);
  EXPECT_EQ(handler.ErrorDescription(), "second");
}

TEST_F(ErrorHandler, NamesTheProcedureThatItIsGivenAndLeavesTheStackAsItIs) {
  CErrorHandler handler;
  handler.CallStackEnabled(true);
  handler.CallStackPush("top", "");
  static_cast<void>(handler.HandleError("given", someFailure));
  EXPECT_THAT(machine.messageBox->shown[0].text, HasSubstr("\tin given at line 0\r\n"));
  EXPECT_EQ(listing(handler), "                    top()");
}

TEST_F(ErrorHandler, NamesTheTopOfTheStackWhereItIsGivenNone) {
  CErrorHandler handler;
  handler.CallStackEnabled(true);
  handler.CallStackPush("bottom", "");
  handler.CallStackPush("top", "");
  static_cast<void>(handler.HandleError("", someFailure));
  EXPECT_THAT(machine.messageBox->shown[0].text, HasSubstr("\tin top at line 0\r\n"));
}

TEST_F(ErrorHandler, NamesNobodyWithADisabledStackAndListsItAllTheSame) {
  CErrorHandler handler;
  handler.CallStackPush("bottom", "");
  handler.CallStackPush("top", "");
  static_cast<void>(handler.HandleError("", someFailure));
  EXPECT_THAT(machine.messageBox->shown[0].text, HasSubstr("\tin Unknown at line 0\r\n"));
  EXPECT_THAT(machine.messageBox->shown[0].text, EndsWith("                    top()\r\n                    bottom()"));
}

TEST_F(ErrorHandler, AnswersAbortWhereNoChannelAsks) {
  for (const std::int32_t actions : {ehaLogFile, ehaEventLog, ehaLogFile | ehaEventLog}) {
    CErrorHandler handler;
    handler.ErrorHandlerActions(actions);
    EXPECT_EQ(handler.HandleError("", someFailure), ehrAbort);
  }
  EXPECT_THAT(machine.messageBox->shown, IsEmpty());
  EXPECT_THAT(dialog->reports, IsEmpty());
}

TEST_F(ErrorHandler, TakesTheMessageBoxsAnswer) {
  CErrorHandler handler;
  machine.messageBox->answers = {MessageBox::Answer::abort, MessageBox::Answer::retry, MessageBox::Answer::ignore,
                                 MessageBox::Answer::ok};
  EXPECT_EQ(handler.HandleError("", someFailure), ehrAbort);
  EXPECT_EQ(handler.HandleError("", someFailure), ehrRetry);
  EXPECT_EQ(handler.HandleError("", someFailure), ehrIgnore);
  EXPECT_EQ(handler.HandleError("", someFailure), ehrIgnore);
}

TEST_F(ErrorHandler, TakesTheDialogsAnswerAndCountsAnythingElseAsIgnore) {
  CErrorHandler handler;
  handler.ErrorHandlerActions(ehaErrorForm);
  dialog->answers = {"ABORT", "RETRY", "IGNORE", "SPACER", ""};
  EXPECT_EQ(handler.HandleError("", someFailure), ehrAbort);
  EXPECT_EQ(handler.HandleError("", someFailure), ehrRetry);
  EXPECT_EQ(handler.HandleError("", someFailure), ehrIgnore);
  EXPECT_EQ(handler.HandleError("", someFailure), ehrIgnore);
  EXPECT_EQ(handler.HandleError("", someFailure), ehrIgnore) << "closed by its close box";
}

TEST_F(ErrorHandler, AllFourChannelsGetTheSameReportInTheirOrderAndTheSecondAnswerCounts) {
  CErrorHandler handler;
  handler.Init(15, "e.txt", true, false, 2, "t.txt");
  handler.CallStackPush("p", "");
  machine.messageBox->answers = {MessageBox::Answer::abort};
  dialog->answers = {"RETRY"};
  EXPECT_EQ(handler.HandleError("", someFailure), ehrRetry);
  EXPECT_THAT(machine.journal->entries(), ElementsAre("textFiles.append e.txt", "eventLog.write", "messageBox.show",
                                                      "errorWindow.show", "screen.beep"));
  const std::string report = machine.messageBox->shown.at(0).text;
  EXPECT_EQ(machine.textFiles->content("e.txt"), report + "\r\n");
  EXPECT_EQ(machine.eventLog->entries.at(0).text, report);
  EXPECT_EQ(machine.eventLog->entries.at(0).type, 1);
  EXPECT_THAT(dialog->reports, ElementsAre(report));
}

TEST_F(ErrorHandler, SkipsTheEventLogWithoutAWordOutsideTheNtFamily) {
  machine.systemVersion->extended = 1;
  CErrorHandler handler;
  handler.Init(15, "e.txt", true, false, 2, "t.txt");
  EXPECT_EQ(handler.HandleError("", someFailure), ehrAbort);
  EXPECT_THAT(machine.journal->entries(),
              ElementsAre("textFiles.append e.txt", "messageBox.show", "errorWindow.show", "screen.beep"));
}

TEST_F(ErrorHandler, AppendsOneReportAfterTheOtherToTheErrorLog) {
  CErrorHandler handler;
  handler.ErrorHandlerActions(ehaLogFile);
  static_cast<void>(handler.HandleError("one", someFailure));
  static_cast<void>(handler.HandleError("two", someFailure));
  const std::string head = "3/14/2005 - 3:07:09 PM\r\n\tError: 13, (Type mismatch)\r\n";
  const std::string tail = " at line 0\r\n\r\nThe call stack is:\r\n\r\n";
  EXPECT_EQ(machine.textFiles->content("Error Log.txt"), head + "\tin one" + tail + head + "\tin two" + tail);
}

TEST_F(ErrorHandler, AnErrorLogThatCannotBeWrittenEndsTheDeliveryWithAFailure) {
  CErrorHandler handler;
  handler.Init(15, "e.txt", true, false, 2, "t.txt");
  handler.CallStackPush("p", "");
  machine.textFiles->script.failCall(1);
  EXPECT_THAT(failureOf([&] { static_cast<void>(handler.HandleError("", someFailure)); }),
              IsFailure(eErr_ErrorHandlerFailure, "CErrorHandler component failure", source));
  EXPECT_THAT(machine.eventLog->entries, IsEmpty());
  EXPECT_THAT(machine.messageBox->shown, IsEmpty());
  EXPECT_THAT(dialog->reports, IsEmpty());
  EXPECT_EQ(handler.ErrorNumber(), 13) << "the failure is noted before anything can go wrong";
  EXPECT_EQ(listing(handler), "                    p()");
}

TEST_F(ErrorHandler, EachFailingChannelBecomesAFailureOfTheHandler) {
  CErrorHandler handler;
  handler.Init(15, "e.txt", true, false, 2, "t.txt");
  machine.eventLog->script.failCall(1);
  EXPECT_THAT(failureOf([&] { static_cast<void>(handler.HandleError("", someFailure)); }),
              IsFailure(eErr_ErrorHandlerFailure, "CErrorHandler component failure", source));
  machine.messageBox->script.failCall(1);
  EXPECT_THAT(failureOf([&] { static_cast<void>(handler.HandleError("", someFailure)); }),
              IsFailure(eErr_ErrorHandlerFailure, "CErrorHandler component failure", source));
  dialog->script.failCall(1);
  EXPECT_THAT(failureOf([&] { static_cast<void>(handler.HandleError("", someFailure)); }),
              IsFailure(eErr_ErrorHandlerFailure, "CErrorHandler component failure", source));
}

TEST_F(ErrorHandler, AMachineWithoutAnyWindowMakesTheDialogAFailureOfTheHandler) {
  machine.services->createErrorWindow = nullptr;
  CErrorHandler handler;
  handler.ErrorHandlerActions(ehaErrorForm);
  EXPECT_THAT(failureOf([&] { static_cast<void>(handler.HandleError("", someFailure)); }),
              IsFailure(eErr_ErrorHandlerFailure, "CErrorHandler component failure", source));
}

TEST_F(ErrorHandler, OffersTheMailOnlyWithAnAddress) {
  CErrorHandler handler;
  handler.ErrorHandlerActions(ehaErrorForm);
  static_cast<void>(handler.HandleError("", someFailure));
  handler.SupportMail("help@example.org");
  static_cast<void>(handler.HandleError("", someFailure));
  handler.SupportMail("");
  static_cast<void>(handler.HandleError("", someFailure));
  EXPECT_THAT(dialog->offeredMail, ElementsAre(false, true, false));
}

TEST_F(ErrorHandler, LoadsAndUnloadsOneDialogForEachShowing) {
  CErrorHandler handler;
  handler.ErrorHandlerActions(ehaErrorForm);
  static_cast<void>(handler.HandleError("", someFailure));
  EXPECT_FALSE(globals::errorMessageForm().IsLoaded());
  static_cast<void>(handler.HandleError("", someFailure));
  EXPECT_EQ(dialog->windows, 2);
}

TEST_F(ErrorHandler, TwoHandlersOfOneThreadShareTheOneDialogObject) {
  // What the thread's one form holds while each of the two shows its report.
  std::vector<std::string> held;
  dialog->whileShown = [&](int) {
    EXPECT_TRUE(globals::errorMessageForm().IsLoaded());
    held.push_back(globals::errorMessageForm().ErrorMessage());
  };
  CErrorHandler one;
  CErrorHandler other;
  one.ErrorHandlerActions(ehaErrorForm);
  other.ErrorHandlerActions(ehaErrorForm);
  static_cast<void>(one.HandleError("first", someFailure));
  static_cast<void>(other.HandleError("second", someFailure));
  EXPECT_EQ(held, dialog->reports);
  ASSERT_THAT(held, SizeIs(2));
  EXPECT_THAT(held[0], HasSubstr("\tin first at line"));
  EXPECT_THAT(held[1], HasSubstr("\tin second at line"));
}

// Deleting logs.

TEST_F(ErrorHandler, ClearDeletesTheLogsThatItIsAskedTo) {
  CErrorHandler handler;
  handler.Init(1, "e.txt", true, false, 2, "t.txt");
  const auto fill = [&] {
    machine.textFiles->append("e.txt", "x");
    machine.textFiles->append("t.txt", "x");
  };
  fill();
  handler.Clear(false, false);
  EXPECT_THAT(machine.textFiles->files(), SizeIs(2));
  handler.Clear(true, false);
  EXPECT_FALSE(machine.textFiles->exists("e.txt"));
  EXPECT_TRUE(machine.textFiles->exists("t.txt"));
  fill();
  handler.Clear(false, true);
  EXPECT_TRUE(machine.textFiles->exists("e.txt"));
  EXPECT_FALSE(machine.textFiles->exists("t.txt"));
  fill();
  handler.Clear(true, true);
  EXPECT_THAT(machine.textFiles->files(), IsEmpty());
}

TEST_F(ErrorHandler, ClearPassesOverAMissingOrLockedFileAndGoesOnToTheNext) {
  CErrorHandler handler;
  handler.Init(1, "e.txt", true, false, 2, "t.txt");
  machine.textFiles->append("e.txt", "x");
  machine.textFiles->append("t.txt", "x");
  machine.textFiles->script.failCall(1);
  handler.Clear(true, true);
  EXPECT_TRUE(machine.textFiles->exists("e.txt")) << "it was locked";
  EXPECT_FALSE(machine.textFiles->exists("t.txt"));
  handler.Clear(true, true);
  handler.Clear(true, true);
  EXPECT_THAT(machine.textFiles->files(), IsEmpty());
}

TEST_F(ErrorHandler, ClearLeavesStackAndErrorFieldsAlone) {
  CErrorHandler handler;
  handler.CallStackPush("p", "");
  handler.ErrorNumber(5);
  handler.Clear(true, true);
  EXPECT_EQ(handler.ErrorNumber(), 5);
  EXPECT_EQ(listing(handler), "                    p()");
}

}  // namespace
}  // namespace mervane
