#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "output/output_formatting.h"
#include "support/globals.h"
#include "tests/support/fake_sheet.h"
#include "tests/support/fault_injector.h"
#include "tests/support/real_regular_expressions.h"
#include "tests/support/recorder.h"
#include "tests/support/test_machine.h"

namespace mervane::tests {

/// A machine and an empty sheet, and one run's output set up in the order in which a run does it.
class OutputTest : public ::testing::Test {
 protected:
  using Answer = platform::MessageBox::Answer;

  /// What a run hands to the output; all switches on but sorting and the filter.
  struct Plan {
    std::string input = "B2:D6";
    std::string output = "F2";
    std::vector<std::int32_t> result = {1, 2, 1, 1, 2};
    std::int32_t clusters = 2;
    bool oneColumn = true;
    bool averages = true;
    bool weightedAverages = true;
    bool minimums = true;
    bool maximums = true;
    bool weights = true;
    bool colors = true;
    bool autofilter = false;
    bool sort = false;
    bool charts = true;
  };

  OutputTest() { machine.services->regularExpressions = realRegularExpressions(); }

  /// All switches off.
  static Plan listingAlone() {
    return {.averages = false,
            .weightedAverages = false,
            .minimums = false,
            .maximums = false,
            .weights = false,
            .colors = false,
            .charts = false};
  }

  static Variant resultOf(const std::vector<std::int32_t>& numbers) {
    const Bounds bounds{1, static_cast<std::int32_t>(numbers.size())};
    return Variant(Array<std::int32_t>({bounds}, numbers));
  }

  void set(COutputFormatting& output, const Plan& plan, const sheet::ObjectRef& host) const {
    output.ExcelApplication(sheet::Application(host));
    output.Clusters(plan.clusters);
    output.result(resultOf(plan.result));
    output.OutputCells(plan.output);
    output.ToOneColumn(plan.oneColumn);
    output.TotalRange(plan.input);
    output.InputRange(plan.input);
    output.CalculateAverages(plan.averages);
    output.CalculateWeightedAverages(plan.weightedAverages);
    output.CalculateMinimums(plan.minimums);
    output.CalculateMaximums(plan.maximums);
    output.CalculateClusterWeight(Variant(plan.weights));
    output.SetColors(plan.colors);
    output.SetAutofilter(plan.autofilter);
    output.SortData(plan.sort);
    output.DrawCharts(plan.charts);
  }

  void print(const Plan& plan, const sheet::ObjectRef& host) const {
    COutputFormatting output;
    set(output, plan, host);
    output.PrintData();
  }
  void print(const Plan& plan) { print(plan, excel.object()); }

  /// Five rows of three numbers in B2:D6 under the header row 1.
  void fillExample() {
    excel.fill("A1", {{"Name", "Length", "Width", "Weight"}});
    excel.fill("A2", {{"a", 1.0, 10.0, 100.0},
                      {"b", 2.0, 20.0, 200.0},
                      {"c", 4.0, 40.0, 400.0},
                      {"d", 7.0, 70.0, 700.0},
                      {"e", 6.0, 60.0, 600.0}});
  }

  [[nodiscard]] std::vector<std::string> texts(const std::string& range) {
    std::vector<std::string> result;
    for (const Variant& value : excel.values(range)) result.push_back(toText(value, englishLocale()));
    return result;
  }
  /// The colour indexes of the cells of a range; 0 for a cell that was never filled.
  [[nodiscard]] std::vector<std::int32_t> fills(const std::string& range) {
    const sheet::Range cells = excel.application().Range(range);
    std::vector<std::int32_t> result;
    sheet::forEach<sheet::Range>(cells.Cells(), [&](const sheet::Range& cell) {
      result.push_back(excel.cell(FakeSheet::nameOf(*cell.object())).colorIndex.value_or(0));
    });
    return result;
  }
  [[nodiscard]] std::size_t failuresShown() const { return machine.messageBox->shown.size(); }

  TestMachine machine;
  FakeSheet excel;
};

}  // namespace mervane::tests
