#include <set>

#include "tests/component/worksheet_fixture.h"
#include "tests/support/fault_injector.h"

namespace mervane {
namespace {

using sheet::Access;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// What the flow asks of the sheet before it runs, and in which words.
using WorksheetChecks = tests::WorksheetFlow;

TEST_F(WorksheetChecks, TheRangeIsAskedOfTheSheetThatTheReferenceNamesWhicheverSheetIsActive) {
  excel.addWorksheet("Data");
  excel.worksheet("Data").cells[{1, 1}].value = Variant(4.0);
  excel.worksheet("Data").cells[{2, 1}].value = Variant(6.0);
  const tests::Recorder recorder(excel.object(), tests::FakeSheet::nameOf);
  classifier->ExcelApplication(recorder.object());
  EXPECT_EQ(clusterize({{"INPUTS", "Data!A1:A2"}, {"OUTPUTS", "G2"}, {"EPOCHS", "2"}}), "CLOSE");
  EXPECT_THAT(recorder.calls(), Contains("get ActiveWorkbook.Worksheets.Item(\"Data\")"));
  EXPECT_THAT(recorder.calls(), Contains("get Data.Range(\"Data!A1:A2\")"));
  EXPECT_THAT(recorder.callsWith("get Sheet1.Range("), IsEmpty());
}

TEST_F(WorksheetChecks, InR1C1ModeTheSheetIsAskedForTheRangeInA1Notation) {
  excel.referenceStyle = sheet::referenceStyleR1C1;
  excel.convertFormula = [](const std::string& text) {
    return Variant(text == "Sheet1!R2C2:R6C3" ? "[Book1]Sheet1!B2:C6" : "E2");
  };
  dialog->answers.assign(50, "IGNORE");  // What the results do with such a text is not looked at here.
  EXPECT_EQ(clusterize({{"INPUTS", "Sheet1!R2C2:R6C3"}, {"OUTPUTS", "R2C5"}, {"EPOCHS", "2"}}), "CLOSE");
  EXPECT_THAT(machine.messageBox->shown, IsEmpty());
  EXPECT_EQ(classifier->getMinValue(0), 1.0);
  EXPECT_EQ(classifier->getMaxValue(0), 9.0);
  EXPECT_EQ(classifier->getMaxValue(1), 90.0);
}

TEST_F(WorksheetChecks, ACellThatStopsBeingNumericBehindTheCopyIsRefusedByTheTestOfItsOwn) {
  // The copy reads each of the ten cells twice; the next one to read values is the test.
  int values = 0;
  const tests::FaultInjector host(excel.object(), [&](Access, sheet::member::Id member) {
    return member == sheet::member::Value && ++values > 20;
  });
  classifier->ExcelApplication(host.object());
  EXPECT_EQ(clusterize(), "INVALIDDATA");
  EXPECT_EQ(message(), "Only numbers are allowed for clusterization");
}

TEST_F(WorksheetChecks, AStoredFunctionCodeThatTheListLacksReachesTheComponentAndTheEngine) {
  machine.keyStore->putText(valuesPath, "ACTIVATIONFUNCTION", "9");
  EXPECT_EQ(clusterize(), "CLOSE");
  EXPECT_EQ(static_cast<std::int32_t>(classifier->ActivationFunction()), 9);
  EXPECT_THAT(engine->callsOf("Create("), ElementsAre("Create(1, 2, [2], 0.3, 9)"));
}

TEST_F(WorksheetChecks, AFirstColumnOfOneTextAndItsNumberIsNotRepeated) {
  excel.fill("H2", {{5.0, 1.0}, {"5", 2.0}});
  EXPECT_EQ(clusterize({{"INPUTS", "H2:I3"}, {"OUTPUTS", "E2"}, {"EPOCHS", "2"}}), "CLOSE");
  excel.fill("H2", {{"5", 1.0}, {"5", 2.0}});
  EXPECT_EQ(clusterize({{"INPUTS", "H2:I3"}, {"OUTPUTS", "E2"}, {"EPOCHS", "2"}}), "INVALIDDATA");
  EXPECT_EQ(message(), "Cannot clusterize equal values");
}

// The dialog's values, in their order.

TEST_F(WorksheetChecks, AFailingValueLeavesTheOnesBehindItAsTheyWere) {
  struct Case {
    const char* key;
    int taken;  ///< values before the failing one
  };
  for (const Case& one : {Case{"ACTIVATIONFUNCTION", 0}, Case{"LEARNINGRATE", 1}, Case{"EPOCHS", 2},
                          Case{"STARTLEARNINGRADIUS", 3}, Case{"CLUSTERS", 6}}) {
    SCOPED_TRACE(one.key);
    machine.services->locale = englishLocale();
    const std::map<std::string, std::string> good{
        {"ACTIVATIONFUNCTION", "2"}, {"LEARNINGRATE", "0.25"}, {"EPOCHS", "7"},     {"STARTLEARNINGRADIUS", "5"},
        {"CLUSTERS", "4"},           {"USECONVEX", "0"},       {"SCALEVALUES", "0"}};
    for (const auto& [key, text] : good) machine.keyStore->putText(valuesPath, key, text);
    // A text that turns bad with the regional settings, once it has been let in.
    const std::string key = one.key;
    machine.keyStore->putText(valuesPath, key, key == "LEARNINGRATE" ? "0,0.5" : key[0] == 'A' ? "word" : "1,000");
    if (key == "STARTLEARNINGRADIUS" || key == "CLUSTERS") machine.keyStore->putText(valuesPath, key, "0,200");
    const auto object = make(std::make_shared<tests::RecordingEngine>());
    object->ExcelApplication(excel.object());
    user->atNextShowing([this](platform::HeadlessOptionWindow& window) {
      machine.services->locale.groupSeparators = {"'"};
      window.press("CLASSIFY");
    });
    EXPECT_EQ(object->ShowMainForm(), "INVALIDDATA");
    EXPECT_EQ(message(), "Type mismatch");
    EXPECT_EQ(object->ActivationFunction(), one.taken > 0 ? ACTIVATE_FUNC_TANH : ACTIVATE_FUNC_EXP05);
    EXPECT_EQ(object->LearningRate(), one.taken > 1 ? 0.25 : 0.5);
    EXPECT_EQ(object->EpochCount(), one.taken > 2 ? 7 : 100);
    EXPECT_EQ(object->LearningRadius(), one.taken > 3 ? 5.0 : 3.0);
    EXPECT_EQ(object->UseConvexCombination(), one.taken < 5);
    EXPECT_EQ(object->AutoScaleInputs(), one.taken < 6);
    EXPECT_EQ(object->Clusters(), 3);
  }
}

// The dialog's switches, on the sheet.

TEST_F(WorksheetChecks, EachSwitchOfTheDialogReachesTheSheet) {
  const auto leavesOut = [&](const std::set<std::string>& off) {
    user->atNextShowing([&](platform::HeadlessOptionWindow& window) {
      window.edit("INPUTS", "Sheet1!B2:C6");
      window.edit("OUTPUTS", "F2");
      window.edit("CLUSTERS", "2");
      window.edit("EPOCHS", "2");
      for (const std::string& key : off) window.click(key);
      window.press("CLASSIFY");
    });
    excel.worksheet().cells.clear();
    excel.worksheet().shapes.clear();
    excel.worksheet().autoFilterMode = false;
    excel.fill("B1", {{"Length", "Width"}, {1.0, 10.0}, {9.0, 90.0}, {2.0, 20.0}, {8.0, 80.0}, {5.0, 50.0}});
    EXPECT_EQ(classifier->ShowMainForm(), "CLOSE");
    user->atNextShowing([&](platform::HeadlessOptionWindow& window) {
      for (const std::string& key : off) window.click(key == "SPLITMULTIPLE" ? "SPLITONE" : key);
      window.press("CLASSIFY");
    });
    const auto has = [&](const std::string& label) {
      for (const auto& [place, cell] : excel.worksheet().cells)
        if (cell.value == Variant(label)) return true;
      return false;
    };
    std::set<std::string> missing;
    if (!has("Cluster 1 average")) missing.insert("AVERAGES");
    if (!has("Cluster 1 weighted average (%)")) missing.insert("WEIGHTEDAVERAGES");
    if (!has("Cluster 1 minimum")) missing.insert("MINIMUMS");
    if (!has("Cluster 1 maximum")) missing.insert("MAXIMUMS");
    if (!has("Cluster 1 weight (%)")) missing.insert("CLUSTERWEIGHTS");
    if (excel.charts().empty()) missing.insert("DRAWCHARTS");
    if (!excel.cell("B2").colorIndex.has_value()) missing.insert("SETCOLORS");
    if (!excel.worksheet().autoFilterMode) missing.insert("AUTOFILTER");
    if (excel.text("B3") == "9") missing.insert("SORTCLUSTERS");
    if (!has("Clusters")) missing.insert("SPLITMULTIPLE");
    EXPECT_EQ(classifier->ShowMainForm(), "CLOSE");  // The switches as they were.
    return missing;
  };
  EXPECT_THAT(leavesOut({}), IsEmpty());
  for (const char* key : {"AVERAGES", "WEIGHTEDAVERAGES", "MINIMUMS", "MAXIMUMS", "CLUSTERWEIGHTS", "DRAWCHARTS",
                          "SETCOLORS", "AUTOFILTER", "SORTCLUSTERS", "SPLITMULTIPLE"}) {
    EXPECT_THAT(leavesOut({key}), ElementsAre(key));
  }
}

TEST_F(WorksheetChecks, TheDialogsAnswersAreReadRoundTheRangesThatAreTakenAtOnce) {
  // The dialog goes while a range is taken; every answer that is read behind that fails, and is passed over here.
  const auto failures = [&](int atRange) {
    const auto object = make(std::make_shared<tests::RecordingEngine>());
    int ranges = 0;
    const tests::FaultInjector host(excel.object(), [&, atRange](Access, sheet::member::Id member) {
      if (!excel.screenUpdating.empty() && member == sheet::member::Range && ++ranges == atRange) {
        object->UnloadfrmMain();
      }
      return false;
    });
    object->ExcelApplication(host.object());
    excel.screenUpdating.clear();
    dialog->reports.clear();
    dialog->answers.assign(50, "IGNORE");
    user->atNextShowing([](platform::HeadlessOptionWindow& window) {
      window.edit("INPUTS", "Sheet1!B2:C6");
      window.edit("OUTPUTS", "F2");
      window.edit("EPOCHS", "2");
      for (const char* key : {"DRAWCHARTS", "SORTCLUSTERS"}) window.click(key);
      window.press("CLASSIFY");
    });
    static_cast<void>(tests::failureOf([&] { static_cast<void>(object->ShowMainForm()); }));
    int count = 0;
    for (const std::string& report : dialog->reports)
      count += report.find("StoreResultsToExcel at line") != std::string::npos;
    return count;
  };
  EXPECT_EQ(failures(1), 10) << "behind the total range: the input range and nine switches";
  EXPECT_EQ(failures(2), 9) << "behind the input range: nine switches";
}

// A machine that lacks a service.

TEST_F(WorksheetChecks, AMachineWithoutAScreenIsAFailureOfTheStepThatSetsItsPointer) {
  machine.services->screen = nullptr;
  dialog->answers = {"IGNORE", "IGNORE"};
  EXPECT_EQ(clusterize(), "CLOSE");
  ASSERT_EQ(dialog->reports.size(), 2U);
  EXPECT_THAT(dialog->reports[0], HasSubstr("\tError: 91, (Object variable or With block variable not set)\r\n"
                                            "\tin MervaneClass3.Classifier3.Classify at line 0\r\n"));
}

TEST_F(WorksheetChecks, AMachineWithoutAMessageBoxFailsTheFlowThatHasSomethingToSay) {
  machine.services->messageBox = nullptr;
  EXPECT_THAT(tests::failureOf([&] {
                clusterize({{"INPUTS", "nonsense"}, {"OUTPUTS", "E2"}});
              }),
              tests::IsFailure(-2147221404, "Classifier3 component failure", "MervaneClass3.Classifier3.ShowMainForm"));
}

}  // namespace
}  // namespace mervane
