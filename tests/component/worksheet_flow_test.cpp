#include <map>
#include <string>
#include <vector>

#include "dialog/frm_main.h"
#include "support/globals.h"
#include "tests/component/worksheet_fixture.h"
#include "tests/support/fault_injector.h"

namespace mervane {
namespace {

using platform::HeadlessOptionWindow;
using sheet::Access;
using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;
using testing::SizeIs;
using tests::failureOf;
using tests::grid;
using tests::IsFailure;
using tests::WorksheetFlow;

// The dialog's answers.

TEST_F(WorksheetFlow, ABrowseButtonComesBackAsItsTagWithoutTouchingAnything) {
  const tests::Recorder recorder(excel.object());
  classifier->ExcelApplication(recorder.object());
  for (const char* key : {"INPUTS", "OUTPUTS"}) {
    user->atNextShowing([key](HeadlessOptionWindow& window) { window.browse(key); });
    EXPECT_EQ(classifier->ShowMainForm(), key);
  }
  EXPECT_THAT(recorder.calls(), IsEmpty());
  EXPECT_TRUE(classifier->Inputs().isEmpty());
  EXPECT_THAT(engine->calls, IsEmpty());
}

TEST_F(WorksheetFlow, CloseAndTheCloseBoxComeBackAsClose) {
  user->atNextShowing([](HeadlessOptionWindow& window) { window.press("CLOSE"); });
  EXPECT_EQ(classifier->ShowMainForm(), "CLOSE");
  user->atNextShowing([](HeadlessOptionWindow& window) { window.close(); });
  EXPECT_EQ(classifier->ShowMainForm(), "CLOSE");
  EXPECT_THAT(engine->calls, IsEmpty());
}

TEST_F(WorksheetFlow, ADialogThatTheHostUnloadsWhileItIsUpMakesTheFlowFailAfterwards) {
  user->atNextShowing([this](HeadlessOptionWindow& window) {
    classifier->UnloadfrmMain();
    window.press("CLOSE");
  });
  EXPECT_THAT(failureOf([&] { static_cast<void>(classifier->ShowMainForm()); }),
              IsFailure(-2147221404, "Classifier3 component failure", "MervaneClass3.Classifier3.ShowMainForm"));
  EXPECT_THAT(engine->calls, testing::ElementsAre("DestroyNetwork()"));
}

TEST_F(WorksheetFlow, AHostsLoopPicksRangesClustersAndCloses) {
  user->atNextShowing([](HeadlessOptionWindow& window) { window.browse("INPUTS"); });
  user->atNextShowing([](HeadlessOptionWindow& window) { window.browse("OUTPUTS"); });
  user->atNextShowing([](HeadlessOptionWindow& window) {
    window.edit("EPOCHS", "2");
    window.press("CLASSIFY");
  });
  std::vector<std::string> answers;
  for (std::string answer; answer != "CLOSE";) {
    answer = classifier->ShowMainForm();
    answers.push_back(answer);
    if (answer == "INPUTS") classifier->CellInputs("Sheet1!B2:C6");
    if (answer == "OUTPUTS") classifier->CellOutputs("E2");
  }
  EXPECT_THAT(answers, ElementsAre("INPUTS", "OUTPUTS", "CLOSE"));
  EXPECT_EQ(excel.text("E1"), "Clusters");
}

// A successful flow.

TEST_F(WorksheetFlow, ClustersTheRangeAndWritesTheResults) {
  EXPECT_EQ(clusterize(), "CLOSE");
  EXPECT_THAT(dialog->reports, IsEmpty());
  EXPECT_THAT(machine.messageBox->shown, IsEmpty());
  EXPECT_EQ(excel.text("E1"), "Clusters");
  // The dialog's default sorts the rows by cluster.
  std::vector<std::string> numbers;
  for (const Variant& value : excel.values("E2:E6")) numbers.push_back(toText(value, englishLocale()));
  EXPECT_THAT(numbers, ElementsAre("1", "1", "2", "2", "2"));
  EXPECT_EQ(excel.charts().size(), 2U);
}

TEST_F(WorksheetFlow, LeavesTheScreenOnThePointerPlainAndTheSelectionOnTheOutputCell) {
  clusterize();
  EXPECT_THAT(excel.screenUpdating, ElementsAre(false, true));
  EXPECT_THAT(machine.screen->pointers, ElementsAre(11, 0));
  EXPECT_THAT(excel.selection, HasSubstr("E2"));
}

TEST_F(WorksheetFlow, TakesTheDialogsValuesIntoItsProperties) {
  user->atNextShowing([](HeadlessOptionWindow& window) {
    for (const auto& [key, text] : std::map<std::string, std::string>{{"INPUTS", "Sheet1!B2:C6"},
                                                                      {"OUTPUTS", "E2"},
                                                                      {"CLUSTERS", "4"},
                                                                      {"LEARNINGRATE", "0.25"},
                                                                      {"EPOCHS", "7"},
                                                                      {"STARTLEARNINGRADIUS", "5"}}) {
      window.edit(key, text);
    }
    window.choose("ACTIVATIONFUNCTION", "Hyperbolic tangent function");
    window.click("USECONVEX");
    window.click("SCALEVALUES");
    window.press("CLASSIFY");
  });
  EXPECT_EQ(classifier->ShowMainForm(), "CLOSE");
  EXPECT_EQ(classifier->Clusters(), 4);
  EXPECT_EQ(classifier->LearningRate(), 0.25);
  EXPECT_EQ(classifier->EpochCount(), 7);
  EXPECT_EQ(classifier->LearningRadius(), 5.0);
  EXPECT_EQ(classifier->ActivationFunction(), ACTIVATE_FUNC_TANH);
  EXPECT_EQ(classifier->UseConvexCombination(), false);
  EXPECT_EQ(classifier->AutoScaleInputs(), false);
  EXPECT_THAT(engine->callsOf("SetInputs("), Contains("SetInputs([1 10])"));
}

TEST_F(WorksheetFlow, InputsBecomesAnArrayOfSinglesFromOne) {
  clusterize();
  const auto* const array = classifier->Inputs().array().getIf<float>();
  ASSERT_NE(array, nullptr);
  EXPECT_THAT(array->bounds(), ElementsAre(Bounds{1, 5}, Bounds{1, 2}));
  EXPECT_EQ(classifier->getMaxValue(1), 90.0);
  EXPECT_EQ(classifier->Outputs().lowerBound(1), 1);
  EXPECT_EQ(classifier->Outputs().upperBound(1), 5);
}

TEST_F(WorksheetFlow, TheDialogsStartWeightHasNoEffect) {
  EXPECT_EQ(clusterize({{"INPUTS", "B2:C6"}, {"OUTPUTS", "E2"}, {"INITIALWEIGHTS", "0.9"}, {"EPOCHS", "2"}}), "CLOSE");
  EXPECT_EQ(classifier->InitialWeights(), 0.3);
  EXPECT_THAT(engine->callsOf("Create("), ElementsAre("Create(1, 2, [3], 0.3, 3)"));
}

TEST_F(WorksheetFlow, NumbersAreReadUnderTheUsersLocale) {
  machine.services->locale.decimalSeparator = ",";
  machine.services->locale.groupSeparators = {"."};
  clusterize({{"INPUTS", "B2:C6"}, {"OUTPUTS", "E2"}, {"LEARNINGRATE", "0,75"}, {"EPOCHS", "2"}});
  EXPECT_EQ(classifier->LearningRate(), 0.75);
}

TEST_F(WorksheetFlow, TheInputRangeIsTakenFromTheSheetThatItNames) {
  excel.addWorksheet("Other's");
  excel.worksheet("Other's").cells[{1, 1}].value = Variant(4.0);
  excel.worksheet("Other's").cells[{2, 1}].value = Variant(6.0);
  EXPECT_EQ(clusterize({{"INPUTS", "Other's!A1:A2"}, {"OUTPUTS", "G2"}, {"EPOCHS", "2"}}), "CLOSE");
  EXPECT_EQ(classifier->getMaxValue(0), 6.0);
}

TEST_F(WorksheetFlow, AnOutputReferenceOnAnotherSheetIsAccepted) {
  excel.addWorksheet("Results");
  EXPECT_EQ(clusterize({{"INPUTS", "Sheet1!B2:C6"}, {"OUTPUTS", "Results!A2"}, {"EPOCHS", "2"}}), "CLOSE");
  EXPECT_THAT(machine.messageBox->shown, IsEmpty());
}

TEST_F(WorksheetFlow, AnOutputReferenceOfAnotherSizeOrOverTheInputIsAccepted) {
  EXPECT_EQ(clusterize({{"INPUTS", "B2:C6"}, {"OUTPUTS", "E2:Z400"}, {"EPOCHS", "2"}}), "CLOSE");
  EXPECT_EQ(clusterize({{"INPUTS", "B2:C6"}, {"OUTPUTS", "C3"}, {"EPOCHS", "2"}}), "CLOSE");
  EXPECT_THAT(machine.messageBox->shown, IsEmpty());
}

TEST_F(WorksheetFlow, CallsOfTheFlowItselfComeInTheirOrder) {
  const tests::Recorder recorder(excel.object(), tests::FakeSheet::nameOf);
  classifier->ExcelApplication(recorder.object());
  clusterize();
  const auto& calls = recorder.calls();
  const auto at = [&](const std::string& part) {
    for (std::size_t i = 0; i < calls.size(); ++i) {
      if (calls[i].find(part) != std::string::npos) return i;
    }
    ADD_FAILURE() << part << " was never called";
    return calls.size();
  };
  EXPECT_LT(at("ActiveWorkbook"), at("ScreenUpdating = False"));
  EXPECT_LT(at("ScreenUpdating = False"), at("Shapes"));
  EXPECT_LT(at("Shapes"), at("ScreenUpdating = True"));
  EXPECT_EQ(at(".Select"), calls.size() - 1);
  EXPECT_EQ(at("ScreenUpdating = True"), calls.size() - 3) << "behind it the range and its selection alone";
}

TEST_F(WorksheetFlow, ClassifyLeavesItsEntryOnTheStackForLaterReports) {
  clusterize();
  clusterize();
  engine->failing = {static_cast<int>(engine->calls.size()) + 1};
  classifier->Run();
  ASSERT_THAT(dialog->reports, SizeIs(1));
  EXPECT_THAT(dialog->reports[0], EndsWith("The call stack is:\r\n"
                                           "                    MervaneClass3.Classifier3.CreateNetwork()\r\n"
                                           "                    MervaneClass3.Classifier3.Run()\r\n"
                                           "                    MervaneClass3.Classifier3.Classify()\r\n"
                                           "                    MervaneClass3.Classifier3.Classify()"));
  // The default answer was Abort, which empties the stack.
  engine->failing = {static_cast<int>(engine->calls.size()) + 1};
  classifier->Run();
  EXPECT_THAT(dialog->reports[1], Not(HasSubstr("Classify")));
}

TEST_F(WorksheetFlow, ARefusedCheckLeavesTheEntryToo) {
  EXPECT_EQ(clusterize({{"INPUTS", "nonsense"}, {"OUTPUTS", "E2"}}), "INVALIDDATA");
  classifier->Inputs(grid<double>({{1.0}}));
  engine->failing = {1};
  classifier->Run();
  EXPECT_THAT(dialog->reports.at(0), EndsWith("()\r\n                    MervaneClass3.Classifier3.Classify()"));
}

// Refused checks.

/// Each check in the order in which a user meets them, and what the message box shows.
TEST_F(WorksheetFlow, EachRefusedCheckShowsItsTextAndComesBackAsInvalidData) {
  struct Case {
    std::string input, output, text;
  };
  excel.fill("G2", {{1.0}, {"word"}, {3.0}});
  excel.fill("H2", {{7.0, 1.0}, {7.0, 2.0}});
  excel.fill("J2", {{1e300}, {2.0}});
  for (const Case& one : std::vector<Case>{
           {"", "E2", "Invalid cell reference."},
           {"B2:", "E2", "Invalid cell reference."},
           {"B0:C6", "E2", "Invalid cell reference."},
           {"B2:C65536", "E2", "Invalid cell reference."},
           {"Nowhere!B2:C6", "E2", "Invalid cell reference."},
           {"G2:G4", "E2", "mTools component failure"},
           {"J2:J3", "E2", "mTools component failure"},
           {"B2:C6", "", "Invalid cell reference."},
           {"B2:C6", "E70000", "Invalid cell reference."},
           {"B2:C6", "Nowhere!E2", "Invalid cell reference."},
           {"H2:I3", "E2", "Cannot clusterize equal values"},
           {"B2:C2", "E2", "Cannot clusterize equal values"},
       }) {
    SCOPED_TRACE(one.input + " to " + one.output);
    machine.messageBox->shown.clear();
    const tests::Recorder recorder(excel.object());
    classifier->ExcelApplication(recorder.object());
    EXPECT_EQ(clusterize({{"INPUTS", one.input}, {"OUTPUTS", one.output}}), "INVALIDDATA");
    EXPECT_EQ(message(), one.text);
    EXPECT_THAT(machine.messageBox->shown, SizeIs(1));
    EXPECT_THAT(recorder.callsWith("put "), IsEmpty()) << "the worksheet is unchanged";
    EXPECT_THAT(recorder.callsWith("call "), Each(Not(HasSubstr("Select"))));
  }
  EXPECT_THAT(engine->calls, IsEmpty());
  EXPECT_THAT(dialog->reports, IsEmpty()) << "the error handler has no part in it";
  EXPECT_THAT(machine.screen->pointers, IsEmpty());
}

TEST_F(WorksheetFlow, ARefusalOfTheApplicationShowsItsOwnText) {
  const tests::FaultInjector refusing(excel.object(),
                                      [](Access, sheet::member::Id member) { return member == sheet::member::Range; });
  classifier->ExcelApplication(refusing.object());
  EXPECT_EQ(clusterize({{"INPUTS", "B2:C6"}, {"OUTPUTS", "E2"}}), "INVALIDDATA");
  EXPECT_EQ(message(), "Application-defined or object-defined error");
}

TEST_F(WorksheetFlow, WithoutAnApplicationTheReferenceCannotBeTaken) {
  classifier->ExcelApplication(nullptr);
  EXPECT_EQ(clusterize({{"INPUTS", "B2:C6"}, {"OUTPUTS", "E2"}, {"EPOCHS", "7"}}), "INVALIDDATA");
  EXPECT_THAT(machine.messageBox->shown, SizeIs(1));
  EXPECT_EQ(message(), "mTools component failure")
      << "that of the reference, which asks the application for its sheets";
  EXPECT_EQ(classifier->EpochCount(), 7) << "what stands before the reference has been taken";
  EXPECT_TRUE(classifier->Inputs().isEmpty()) << "what stands behind it has not";
  EXPECT_THAT(engine->calls, IsEmpty());

  classifier->ExcelApplication(excel.object());
  EXPECT_EQ(clusterize({{"INPUTS", "B2:C6"}, {"OUTPUTS", "E2"}}), "CLOSE");
}

TEST_F(WorksheetFlow, AnEmptyOutputReferenceIsRefusedAfterInputsHasBeenRead) {
  EXPECT_EQ(clusterize({{"INPUTS", "B2:C6"}, {"OUTPUTS", ""}, {"CLUSTERS", "9"}}), "INVALIDDATA");
  EXPECT_TRUE(classifier->Inputs().isArray());
  EXPECT_EQ(classifier->Clusters(), 9) << "properties keep their new values";
  EXPECT_THAT(outputs(), ElementsAre(0, 0, 0, 0, 0));
}

// The dialog lets no bad number in; what it holds as text may still turn bad when the regional settings change.

TEST_F(WorksheetFlow, AValueThatThePropertyRefusesIsShownAsInvalidArgument) {
  machine.keyStore->putText(valuesPath, "LEARNINGRATE", "0.5");
  user->atNextShowing([this](HeadlessOptionWindow& window) {
    machine.services->locale.decimalSeparator = ",";
    machine.services->locale.groupSeparators = {"."};
    window.press("CLASSIFY");
  });
  EXPECT_EQ(classifier->ShowMainForm(), "INVALIDDATA");
  EXPECT_EQ(message(), "Invalid argument") << "0.5 now reads as 5";
  EXPECT_EQ(classifier->LearningRate(), 0.5);
}

TEST_F(WorksheetFlow, ATextThatIsNoNumberIsShownAsTheConversionsOwnError) {
  const std::map<std::string, std::string> stored{
      {"EPOCHS", "1,000"}, {"STARTLEARNINGRADIUS", "0,200"}, {"CLUSTERS", "0,030"}, {"LEARNINGRATE", "0,0.5"}};
  for (const auto& [key, text] : stored) {
    SCOPED_TRACE(key);
    machine.services->locale = englishLocale();
    const auto object = make(std::make_shared<tests::RecordingEngine>());
    object->ExcelApplication(excel.object());
    for (const auto& [one, unused] : stored)
      machine.keyStore->putText(valuesPath, one, one == "LEARNINGRATE" ? "0.5" : "3");
    machine.keyStore->putText(valuesPath, key, text);
    user->atNextShowing([this](HeadlessOptionWindow& window) {
      machine.services->locale.groupSeparators = {"'"};
      window.press("CLASSIFY");
    });
    EXPECT_EQ(object->ShowMainForm(), "INVALIDDATA");
    EXPECT_EQ(message(), "Type mismatch");
  }
}

TEST_F(WorksheetFlow, AStoredFunctionCodeThatIsNoIntegerIsShownAsTheConversionsOwnError) {
  for (const auto& [code, text] :
       std::map<std::string, std::string>{{"tanh", "Type mismatch"}, {"3000000000", "Overflow"}}) {
    const auto object = make(std::make_shared<tests::RecordingEngine>());
    machine.keyStore->putText(valuesPath, "ACTIVATIONFUNCTION", code);
    user->atNextShowing([](HeadlessOptionWindow& window) { window.press("CLASSIFY"); });
    EXPECT_EQ(object->ShowMainForm(), "INVALIDDATA");
    EXPECT_EQ(message(), text);
  }
}

TEST_F(WorksheetFlow, EverythingBeforeTheFailingStepKeepsItsNewValue) {
  machine.keyStore->putText(valuesPath, "EPOCHS", "1,000");
  user->atNextShowing([this](HeadlessOptionWindow& window) {
    window.edit("LEARNINGRATE", "0.125");
    window.edit("CLUSTERS", "8");
    machine.services->locale.groupSeparators = {"'"};
    window.press("CLASSIFY");
  });
  EXPECT_EQ(classifier->ShowMainForm(), "INVALIDDATA");
  EXPECT_EQ(message(), "Type mismatch");
  EXPECT_EQ(classifier->LearningRate(), 0.125);
  EXPECT_EQ(classifier->EpochCount(), 100);
  EXPECT_EQ(classifier->Clusters(), 3) << "this step was not reached";
}

TEST_F(WorksheetFlow, AMessageBoxThatFailsMakesTheWholeFlowFail) {
  machine.messageBox->script.failCall(1);
  EXPECT_THAT(failureOf([&] {
                clusterize({{"INPUTS", "nonsense"}, {"OUTPUTS", "E2"}});
              }),
              IsFailure(-2147221404, "Classifier3 component failure", "MervaneClass3.Classifier3.ShowMainForm"));
}

TEST_F(WorksheetFlow, ADialogThatCannotBeShownMakesTheFlowFail) {
  machine.services->createOptionWindow = nullptr;
  EXPECT_THAT(failureOf([&] { static_cast<void>(classifier->ShowMainForm()); }),
              IsFailure(-2147221404, "Classifier3 component failure", "MervaneClass3.Classifier3.ShowMainForm"));
}

// Failures behind the checks.

TEST_F(WorksheetFlow, AFailingScreenSwitchIsPassedOver) {
  const tests::FaultInjector refusing(
      excel.object(), [](Access, sheet::member::Id member) { return member == sheet::member::ScreenUpdating; });
  classifier->ExcelApplication(refusing.object());
  EXPECT_EQ(clusterize(), "CLOSE");
  EXPECT_THAT(dialog->reports, IsEmpty());
  EXPECT_EQ(excel.text("E1"), "Clusters");
}

TEST_F(WorksheetFlow, AFailingSelectionIsPassedOver) {
  const tests::FaultInjector refusing(excel.object(),
                                      [](Access, sheet::member::Id member) { return member == sheet::member::Select; });
  classifier->ExcelApplication(refusing.object());
  EXPECT_EQ(clusterize(), "CLOSE");
  EXPECT_THAT(dialog->reports, IsEmpty());
  EXPECT_EQ(excel.selection, "");
}

TEST_F(WorksheetFlow, AnAbortedRunIsFollowedByItsResultsAllTheSame) {
  engine->failing = {1};
  EXPECT_EQ(clusterize(), "CLOSE");
  EXPECT_THAT(dialog->reports, SizeIs(1));
  EXPECT_EQ(excel.text("E1"), "Clusters");
}

TEST_F(WorksheetFlow, AFailingPointerIsAFailureOfClassify) {
  machine.screen->script.failCall(1);
  dialog->answers = {"IGNORE"};
  EXPECT_EQ(clusterize(), "CLOSE");
  ASSERT_THAT(dialog->reports, SizeIs(1));
  EXPECT_THAT(dialog->reports[0], HasSubstr("\tin MervaneClass3.Classifier3.Classify at line 0\r\n"));
  EXPECT_THAT(machine.screen->pointers, ElementsAre(0));
}

TEST_F(WorksheetFlow, AnAbortBeforeTheResultIsSetComesBackAsInvalidData) {
  machine.screen->script.failCall(1);
  EXPECT_EQ(clusterize(), "INVALIDDATA");
  EXPECT_THAT(engine->calls, IsEmpty());
  EXPECT_THAT(machine.screen->pointers, IsEmpty());
}

TEST_F(WorksheetFlow, AnAbortAtTheSecondPointerLeavesTheHourglass) {
  // The beep of the first report would be the screen's business too, so nothing else may fail before it.
  machine.screen->script.failCall(2);
  EXPECT_EQ(clusterize(), "INVALIDDATA");
  EXPECT_THAT(machine.screen->pointers, ElementsAre(11));
  EXPECT_EQ(excel.text("E1"), "Clusters") << "the results were stored before";
}

TEST_F(WorksheetFlow, ARetriedPointerIsSetAndTheFlowGoesOn) {
  machine.screen->script.failCall(1);
  dialog->answers = {"RETRY"};
  EXPECT_EQ(clusterize(), "CLOSE");
  EXPECT_THAT(machine.screen->pointers, ElementsAre(11, 0));
}

TEST_F(WorksheetFlow, AnAbortWhileResultsAreStoredLeavesTheScreenOff) {
  // InputRange is resolved at once by a plain member of the printing object, so its failure is StoreResultsToExcel's.
  int ranges = 0;
  const tests::FaultInjector refusing(excel.object(), [&](Access, sheet::member::Id member) {
    return !excel.screenUpdating.empty() && member == sheet::member::Range && ++ranges == 2;
  });
  classifier->ExcelApplication(refusing.object());
  EXPECT_EQ(clusterize(), "CLOSE");
  ASSERT_THAT(dialog->reports, SizeIs(1));
  EXPECT_THAT(dialog->reports[0], HasSubstr("\tin MervaneClass3.Classifier3.StoreResultsToExcel at line 0\r\n"));
  EXPECT_THAT(dialog->reports[0], EndsWith("\r\n                    MervaneClass3.Classifier3.StoreResultsToExcel()\r\n"
                                           "                    MervaneClass3.Classifier3.Classify()"));
  EXPECT_THAT(excel.screenUpdating, ElementsAre(false));
  EXPECT_THAT(machine.screen->pointers, ElementsAre(11, 0)) << "Classify goes on";
  EXPECT_NE(excel.text("E1"), "Clusters");
}

TEST_F(WorksheetFlow, EachHostCallInTurnFailsAndEveryFailureIsAnsweredOnce) {
  // The listing and one statistics block are enough here; the rest of the output has tests of its own.
  user->atNextShowing([](HeadlessOptionWindow& window) {
    for (const char* key : {"DRAWCHARTS", "WEIGHTEDAVERAGES", "MINIMUMS", "MAXIMUMS", "CLUSTERWEIGHTS", "SETCOLORS"}) {
      window.click(key);
    }
    window.press("CLOSE");
  });
  EXPECT_EQ(classifier->ShowMainForm(), "CLOSE");

  const auto sheetAfter = [](tests::FakeSheet& host) {
    std::vector<std::string> texts;
    for (const Variant& value : host.values("A1:H12")) texts.push_back(toText(value, englishLocale()));
    return texts;
  };
  int failing = 1;
  std::map<int, std::vector<std::string>> retried;  // by the failing call
  std::vector<std::string> whole;
  int passedOver = 0;
  for (;; ++failing) {
    tests::FakeSheet host;
    host.fill("B2", {{1.0, 10.0}, {9.0, 90.0}, {5.0, 50.0}});
    const tests::FaultInjector faulty(host.object(), failing);
    machine.messageBox->shown.clear();
    dialog->reports.clear();
    dialog->answers.assign(50, "RETRY");
    classifier->ExcelApplication(faulty.object());
    const std::string answer = clusterize({{"INPUTS", "Sheet1!B2:C4"}, {"OUTPUTS", "E2"}, {"EPOCHS", "2"}});
    if (!faulty.triggered()) {
      EXPECT_EQ(answer, "CLOSE");
      EXPECT_EQ(dialog->reports.size() + machine.messageBox->shown.size(), 0U);
      whole = sheetAfter(host);
      break;
    }
    // A check that fails is a message and ends there; anything behind the checks is reported or passed over.
    if (answer == "INVALIDDATA") {
      EXPECT_THAT(machine.messageBox->shown, SizeIs(1)) << failing;
      EXPECT_THAT(dialog->reports, IsEmpty()) << failing;
      EXPECT_THAT(host.screenUpdating, IsEmpty()) << failing;
    } else {
      EXPECT_EQ(answer, "CLOSE") << failing;
      EXPECT_THAT(machine.messageBox->shown, IsEmpty()) << failing;
      ASSERT_LE(dialog->reports.size(), 1U) << failing << ": one failure is asked about once";
      if (dialog->reports.empty()) ++passedOver;
      if (!dialog->reports.empty()) retried[failing] = sheetAfter(host);
    }
  }
  EXPECT_GT(failing, 50) << "a whole flow makes many calls";
  EXPECT_GT(passedOver, 5);
  EXPECT_GT(retried.size(), 50U);
  for (const auto& [call, texts] : retried)
    EXPECT_EQ(texts, whole) << call << ": a retry leaves what no failure leaves";
}

TEST_F(WorksheetFlow, AfterUnloadfrmMainTheFlowFailsAsACallOnAnEmptyReference) {
  classifier->UnloadfrmMain();
  EXPECT_THAT(failureOf([&] { static_cast<void>(classifier->ShowMainForm()); }),
              IsFailure(-2147221404, "Classifier3 component failure", "MervaneClass3.Classifier3.ShowMainForm"));
}

}  // namespace
}  // namespace mervane
