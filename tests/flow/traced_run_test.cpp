#include <gtest/gtest.h>

#include <string>

#include "support/globals.h"
#include "tests/flow/desk.h"

namespace mervane::tests {
namespace {

std::string line(const std::string& marker, const std::string& procedure) {
  return "3/14/2005 - 3:07:09 PM --- " + marker + " routine: MervaneClass3." + procedure + "\r\n";
}
std::string entered(const std::string& procedure) {
  return line("Entered", procedure);
}
std::string left(const std::string& procedure) {
  return line("Exited", procedure);
}
/// A procedure and what is called inside it.
std::string around(const std::string& procedure, const std::string& inside = {}) {
  return entered(procedure) + inside + left(procedure);
}

TEST(TracedRun, WritesALineForEachProcedureEnteredAndLeft) {
  Desk desk;
  const auto classifier = desk.newComponent();
  globals::errorHandler().TracingEnabled(true);
  desk.user->atNextShowing([](platform::HeadlessOptionWindow& window) {
    EXPECT_TRUE(window.edit("INPUTS", "Iris!B2:E151"));
    EXPECT_TRUE(window.edit("OUTPUTS", "Iris!G2"));
    window.press("CLASSIFY");
  });
  EXPECT_EQ(classifier->ShowMainForm(), "CLOSE");

  constexpr int checkBoxes = 12;
  std::string settings;
  for (int i = 0; i < checkBoxes; ++i) settings += around("frmMain.GetBooleanSetting");
  const std::string dialog = around("frmMain.Form_Load", settings) + around("frmMain.suiOptions_AfterEdit") +
                             around("frmMain.suiOptions_AfterEdit") +
                             around("frmMain.suiButtons_Click", around("frmMain.Classify"));
  const std::string run =
      around("Classifier3.Run", around("Classifier3.CreateNetwork") + around("Classifier3.TrainNetwork") +
                                    around("Classifier3.StoreResults"));
  const std::string styled = around("COutputFormatting.ModifyChartObject");
  const std::string printed = around(
      "COutputFormatting.PrintData",
      around("COutputFormatting.SortInputRange") + around("COutputFormatting.AddPortraitChart", styled) +
          around("COutputFormatting.AddWeightsChart", styled) + around("COutputFormatting.AdjustChartsLocation"));
  const std::string stored =
      around("Classifier3.StoreResultsToExcel", around("COutputFormatting.TotalRange") + printed);
  // The outermost procedure returns without its exit.
  EXPECT_EQ(desk.machine.textFiles->content("Tracing Log.txt"),
            dialog + entered("Classifier3.Classify") + run + stored);
  EXPECT_TRUE(desk.reports.empty());
  classifier->UnloadfrmMain();
}

}  // namespace
}  // namespace mervane::tests
