#include <gmock/gmock.h>

#include "tests/dialog/dialog_fixture.h"

namespace mervane::tests {

using platform::HeadlessOptionWindow;
using testing::HasSubstr;

/// The dialog on a store and logs that fail at one call, for every call in turn.
using FailingServices = DialogTest;

TEST_F(FailingServices, LoadingSurvivesAFailureOfAnyOneStoreCall) {
  for (const char* key : {"INPUTS", "OUTPUTS", "CLUSTERS", "USECONVEX", "OUTSPLIT", "SETCOLORS"}) {
    machine.keyStore->putText(valuesPath, key, "1");
  }
  int failures = 0;
  for (int call = 1;; ++call) {
    machine.keyStore->script.failCall(call);
    frmMain form;
    // Nothing is reported: a store that refuses a reading is one that lacks the value.
    EXPECT_EQ(form.Clusters(), "3") << call;
    EXPECT_TRUE(form.IsLoaded());
    EXPECT_TRUE(form.UseConvex()) << call;
    if (!machine.keyStore->script.triggered()) break;
    ++failures;
  }
  EXPECT_GT(failures, 28);
  EXPECT_TRUE(reports.empty());
}

TEST_F(FailingServices, SavingLosesAtMostTheOneValueWhoseWriteFailed) {
  (void)dialog.Inputs();
  std::size_t wholeRun = 0;
  {
    machine.journal->clear();
    showing([](HeadlessOptionWindow& window) { window.press("CLASSIFY"); });
    wholeRun = machine.journal->entries().size();
  }
  ASSERT_EQ(wholeRun, 28U * 3U);  // Create, set and close for each value.
  int failures = 0;
  for (int call = 1;; ++call) {
    machine.keyStore = std::make_shared<MemoryKeyStore>(machine.journal);
    machine.services->keyStore = machine.keyStore;
    machine.keyStore->script.failCall(call);
    showing([](HeadlessOptionWindow& window) { window.press("CLASSIFY"); });
    EXPECT_EQ(dialog.Tag(), "CLASSIFY");
    const bool triggered = machine.keyStore->script.triggered();
    machine.keyStore->script = CallScript();
    std::size_t present = 0;
    Array<std::string> names;
    for (const char* section : {"values", "window"}) {
      CAppSettings settings;
      settings.Init("Tarvik", "MervaneCls3");
      settings.GetAllKeys(section, names);
      present += names.elements().size();
    }
    // A failing close comes after the write, so nothing is lost by it.
    const bool closing = call % 3 == 0;
    EXPECT_EQ(present, triggered && !closing && call <= 84 ? 27U : 28U) << call;
    if (call > 84) break;
    ++failures;
  }
  EXPECT_EQ(failures, 84);
  EXPECT_TRUE(reports.empty());
}

TEST_F(FailingServices, AnUnwritableErrorLogEndsTheShowingAndReachesItsCaller) {
  globals::errorHandler().ErrorHandlerActions(ehaLogFile);
  (void)dialog.Inputs();
  machine.screen->script.failAlways();
  machine.textFiles->script.failAlways();
  try {
    showing([](HeadlessOptionWindow& window) {
      (void)window.edit("CLUSTERS", "1");  // The beep fails, and so does the report of that.
      EXPECT_FALSE(window.isShown());
    });
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.number(), eErr_ErrorHandlerFailure);
  }
  machine.textFiles->script = CallScript();
  machine.screen->script = CallScript();
  showing([](HeadlessOptionWindow& window) { window.press("CLOSE"); });
  EXPECT_EQ(dialog.Tag(), "CLOSE");
}

TEST_F(FailingServices, AnUnwritableLogAtTheCloseBoxStillUnloadsAndReachesTheCaller) {
  globals::errorHandler().ErrorHandlerActions(ehaLogFile);
  globals::errorHandler().TracingEnabled(true);
  int failures = 0;
  for (int call = 1;; ++call) {
    frmMain form;
    (void)form.Inputs();
    int raised = 0;
    try {
      showing(form, [&](HeadlessOptionWindow& window) {
        machine.textFiles->script.failCall(call);
        machine.textFiles->script.failFollowing();
        window.close();
        EXPECT_FALSE(window.isShown()) << call;
      });
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.number(), eErr_ErrorHandlerFailure) << call;
      ++raised;
    }
    EXPECT_FALSE(form.IsLoaded()) << call;
    const bool triggered = machine.textFiles->script.triggered();
    machine.textFiles->script = CallScript();
    EXPECT_EQ(raised, triggered ? 1 : 0) << call;
    showing(form, [](HeadlessOptionWindow& window) { window.press("CLOSE"); });
    EXPECT_EQ(form.Tag(), "CLOSE") << call;
    if (!triggered) break;
    ++failures;
  }
  // Form_QueryUnload and Form_Unload, each with a line in and a line out.
  EXPECT_EQ(failures, 4);
}

TEST_F(FailingServices, AMachineWithoutABellReportsTheRefusedEntry) {
  machine.services->screen = nullptr;
  showing([](HeadlessOptionWindow& window) {
    EXPECT_FALSE(window.edit("CLUSTERS", "1"));
    window.press("CLOSE");
  });
  ASSERT_EQ(reports.size(), 1U);
  EXPECT_THAT(reports[0], HasSubstr("in MervaneClass3.frmMain.suiOptions_AfterEdit at line 0"));
}

TEST_F(FailingServices, AFailingBeepIsReportedAndTheEntryIsRefusedAllTheSame) {
  machine.screen->script.failAlways();
  showing([&](HeadlessOptionWindow& window) {
    EXPECT_FALSE(window.edit("CLUSTERS", "1"));
    EXPECT_EQ(shown("CLUSTERS"), "3");
    window.press("CLOSE");
  });
  ASSERT_EQ(reports.size(), 1U);
  EXPECT_THAT(reports[0], HasSubstr("in MervaneClass3.frmMain.suiOptions_AfterEdit at line 0"));
}

TEST_F(FailingServices, ARetriedBeepSoundsOnce) {
  machine.screen->script.failCall(1);
  answers = {"RETRY"};
  showing([&](HeadlessOptionWindow& window) { EXPECT_FALSE(window.edit("CLUSTERS", "1")); });
  EXPECT_EQ(machine.screen->beeps, 2);  // One for the entry, one for the report in between.
}

TEST_F(FailingServices, WithTracingOnEveryFailingLineIsReportedAndTheDialogStaysUsable) {
  globals::errorHandler().TracingEnabled(true);
  answers.assign(1000, "IGNORE");
  int failures = 0;
  for (int call = 1;; ++call) {
    reports.clear();
    machine.textFiles->script.failCall(call);
    frmMain form;
    showing(form, [](HeadlessOptionWindow& window) {
      (void)window.edit("CLUSTERS", "7");
      window.press("CLASSIFY");
    });
    EXPECT_EQ(form.Tag(), "CLASSIFY") << call;
    EXPECT_EQ(form.Clusters(), "7") << call;
    if (!machine.textFiles->script.triggered()) break;
    EXPECT_EQ(reports.size(), 1U) << call;
    ++failures;
  }
  // Form_Load, twelve check boxes, the edit, the button and Classify, each with a line in and a line out.
  EXPECT_EQ(failures, 2 * (1 + 12 + 1 + 1 + 1));
}

TEST_F(FailingServices, TheExactTracingLinesOfALoadAndAnExit) {
  (void)dialog.Inputs();
  globals::errorHandler().TracingEnabled(true);
  showing([](HeadlessOptionWindow& window) { window.press("CLOSE"); });
  showing([](HeadlessOptionWindow& window) { window.close(); });
  const std::string stamp = "3/14/2005 - 3:07:09 PM";
  const std::string in = stamp + " --- Entered routine: MervaneClass3.frmMain.";
  const std::string out = stamp + " --- Exited routine: MervaneClass3.frmMain.";
  EXPECT_EQ(machine.textFiles->content("Tracing Log.txt"), in + "suiButtons_Click\r\n" + in + "CloseForm\r\n" + out +
                                                               "CloseForm\r\n" + out + "suiButtons_Click\r\n" + in +
                                                               "Form_QueryUnload\r\n" + out + "Form_QueryUnload\r\n" +
                                                               in + "Form_Unload\r\n" + out + "Form_Unload\r\n");
}

TEST_F(FailingServices, TwoWritersOfOneStoreLeaveTheLastOnesValues) {
  frmMain other;
  dialog.Inputs("A1:A9");
  other.Inputs("B1:B9");
  showing(dialog, [](HeadlessOptionWindow& window) { window.press("CLASSIFY"); });
  showing(other, [](HeadlessOptionWindow& window) { window.press("CLASSIFY"); });
  frmMain third;
  EXPECT_EQ(third.Inputs(), "B1:B9");
}

}  // namespace mervane::tests
