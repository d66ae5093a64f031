#include <string>

#include "component/procedure_keys.h"
#include "component/wrapping_arithmetic.h"
#include "dialog/frm_main.h"
#include "mervane/classifier3.h"
#include "mervane/convert.h"
#include "mervane/published_errors.h"
#include "output/output_formatting.h"
#include "spreadsheet/application.h"
#include "support/procedures.h"
#include "tools/m_tools.h"

/// From the dialog's answer to results on the worksheet.
namespace mervane {

namespace key = component::key;

namespace {

double asDouble(const std::string& text) {
  return toDouble(Variant(text), globals::locale());
}
std::int32_t asInt32(const std::string& text) {
  return toInt32(Variant(text), globals::locale());
}

void screenPointer(std::int32_t shape) {
  const auto& screen = globals::platform().screen;
  if (!screen) raise(runtime::objectNotSet);
  screen->pointer(shape);
}

void showMessage(const std::string& text) {
  const auto& box = globals::platform().messageBox;
  if (!box) raise(runtime::objectNotSet);
  static_cast<void>(box->show(text, platform::MessageBox::Buttons::ok));
}

/// One reference text, tested against the sheets of the active workbook.
/// @return the sheet that it names.
std::string checkedSheet(const sheet::Application& application, const std::string& reference) {
  std::string sheetName;
  std::string firstCell;
  std::string lastCell;
  if (!mTools::SplitRangeReference(application, reference, sheetName, firstCell, lastCell)) {
    raise(published::invalidReference);
  }
  return sheetName;
}

}  // namespace

void Classifier3::CellInputs(const std::string& reference) {
  mainForm().Inputs(reference);
}
std::string Classifier3::CellInputs() const {
  return mainForm().Inputs();
}

void Classifier3::CellOutputs(const std::string& reference) {
  mainForm().Outputs(reference);
}
std::string Classifier3::CellOutputs() const {
  return mainForm().Outputs();
}

std::string Classifier3::ShowMainForm() {
  const auto self = shared_from_this();  // The host's own code runs while the dialog is up.
  return wrapping("Classifier3", key::ShowMainForm, [&] {
    // 1. The host may unload the dialog while it is up.
    const auto form = MainForm_;
    mainForm().Show();
    // 2.
    std::string tag = mainForm().Tag();
    // 3.
    if (tag == "CLASSIFY") return std::string(Classify() ? "CLOSE" : "INVALIDDATA");
    // 4.
    return tag;
  });
}

bool Classifier3::Classify() {
  bool result = false;
  traced(key::Classify, [&](Steps& step) {
    // 1. A trap of its own: the error handler has no part in a refused check.
    try {
      PrepareClassification();
    } catch (const Failure& refusal) {
      showMessage(refusal.description());
      step.leave();
    }
    // 2.
    step([&] { screenPointer(platform::Screen::pointerHourglass); });
    // 3.
    step([&] { Run(); });
    // 4.
    step([&] { StoreResultsToExcel(); });
    // 5.
    step([&] { screenPointer(platform::Screen::pointerDefault); });
    // 6.
    result = true;
    // 7.
    step([&] { SelectOutputCells(); });
    // 8. NB: no way out of this procedure takes its entry from the call stack.
    step.leave();
  });
  return result;
}

void Classifier3::PrepareClassification() {
  frmMain& form = mainForm();
  // 1 to 7. NB: the dialog's start weight is left out; the property keeps the value that it has.
  ActivationFunction(form.ActivationFunction());
  LearningRate(asDouble(form.LearningRate()));
  EpochCount(asInt32(form.Epochs()));
  LearningRadius(asDouble(form.StartLearningRadius()));
  UseConvexCombination(form.UseConvex());
  AutoScaleInputs(form.ScaleValues());
  Clusters(asInt32(form.Clusters()));

  const sheet::Application application(ExcelApplication_);
  // 8.
  const std::string sheetName = checkedSheet(application, CellInputs());
  // 9.
  const sheet::Worksheet worksheet = application.ActiveWorkbook().Worksheets().Item(sheetName);
  // 10.
  const sheet::Range range = worksheet.Range(mTools::ReferenceToA1(application, CellInputs()));
  // 11.
  Inputs(mTools::Range2ArraySingle(range.asVariant()));
  // 12. Only its form is tested; nothing of the output reference is used here.
  static_cast<void>(checkedSheet(application, CellOutputs()));
  // 13. NB: the two have just been given the same bounds. The test stays all the same.
  const AnyArray& inputs = inputArray();
  if (wrapping32::subtract(inputs.upperBound(1), inputs.lowerBound(1)) !=
      wrapping32::subtract(OutputData_.upperBound(1), OutputData_.lowerBound(1))) {
    raise(published::inputAndOutputAreNotSame);
  }
  // 14. Both tests bring their reference into A1 form; the dialog keeps its own text.
  std::string reference = CellInputs();
  if (!mTools::AllCellsNumeric(application, reference)) {
    raise(published::notDigit);
  }
  // 15.
  reference = CellInputs();
  if (mTools::RepeatedInputs(application, reference)) {
    raise(published::repeatedInputs);
  }
}

void Classifier3::StoreResultsToExcel() {
  traced(key::StoreResultsToExcel, [&](Steps& step) {
    const sheet::Application application(ExcelApplication_);
    // 1. NB: a failure further down leaves the screen as it is here.
    attempt([&] { application.ScreenUpdating(false); });
    // 2.
    COutputFormatting output;
    // 3. The printing object never reads the dialog itself.
    step([&] { output.ExcelApplication(application); });
    step([&] { output.Clusters(Clusters()); });
    step([&] { output.result(Variant(Outputs())); });
    step([&] { output.OutputCells(CellOutputs()); });
    step([&] { output.ToOneColumn(mainForm().SplitToOneColumn()); });
    step([&] { output.TotalRange(CellInputs()); });
    step([&] { output.InputRange(CellInputs()); });
    step([&] { output.CalculateAverages(mainForm().CalculateAverages()); });
    step([&] { output.CalculateWeightedAverages(mainForm().CalculateWeightedAverages()); });
    step([&] { output.CalculateMinimums(mainForm().CalculateMinimums()); });
    step([&] { output.CalculateMaximums(mainForm().CalculateMaximums()); });
    step([&] { output.CalculateClusterWeight(Variant(mainForm().CalculateClusterWeight())); });
    step([&] { output.SetColors(mainForm().SetColors()); });
    step([&] { output.SetAutofilter(mainForm().SetAutofilter()); });
    step([&] { output.SortData(mainForm().SortByClusters()); });
    step([&] { output.DrawCharts(mainForm().DrawCharts()); });
    // 4.
    step([&] { output.PrintData(); });
    // 5.
    attempt([&] { application.ScreenUpdating(true); });
    // 6. The object ends with this call.
  });
}

void Classifier3::SelectOutputCells() {
  // NB: the text is taken as it stands; in R1C1 notation the selection may simply not happen.
  const std::string reference = mainForm().Outputs();
  attempt([&] { sheet::Application(ExcelApplication_).Range(reference).Select(); });
}

}  // namespace mervane
