#include <algorithm>

#include "support/procedures.h"
#include "tests/output/output_fixture.h"

namespace mervane::tests {

namespace {

using Texts = std::vector<std::string>;

/// Runs in which each call on the sheet fails once, with each of the three answers.
class OutputFailures : public OutputTest {
 protected:
  static constexpr int unreachable = 5000;

  OutputFailures() {
    globals::errorHandler().Init(ehaMessageBox, "Error Log.txt", true, false, tfLogFile, "Tracing Log.txt");
  }

  /// A small run with everything on.
  static Plan everything() {
    return {.input = "B2:C4", .output = "E2", .result = {2, 1, 2}, .clusters = 2, .autofilter = true, .sort = true};
  }

  /// What a run leaves in the cells, and what it asked for.
  struct Outcome {
    Texts cells;
    Texts calls;
    std::size_t shown = 0;
    std::string report;
    bool triggered = false;
  };

  Outcome run(const Plan& plan, int failingCall, std::vector<Answer> answers) {
    FakeSheet sheet;
    sheet.fill("A1", {{"Name", "Length", "Width"}, {"a", 1.0, 10.0}, {"b", 2.0, 20.0}, {"c", 4.0, 40.0}});
    FaultInjector host(sheet.object(), 0);
    Recorder record(host.object(), FakeSheet::nameOf);
    COutputFormatting output;
    set(output, plan, record.object());
    record.clear();
    host.failCall(failingCall);
    machine.messageBox->shown.clear();
    machine.messageBox->answers = {answers.begin(), answers.end()};
    globals::errorHandler().CallStackClear();
    EXPECT_NO_THROW(output.PrintData()) << "failing call " << failingCall;
    Outcome outcome;
    for (const Variant& value : sheet.values("A1:G14")) outcome.cells.push_back(toText(value, englishLocale()));
    outcome.calls = record.calls();
    outcome.shown = failuresShown();
    if (outcome.shown > 0) outcome.report = machine.messageBox->shown.front().text;
    outcome.triggered = host.triggered();
    return outcome;
  }

  /// The place of the failing call among those of the run.
  static std::size_t placeOf(int failingCall) { return static_cast<std::size_t>(failingCall) - 1; }
  /// Whether the failure was in that procedure itself; those that called it stand in the report too.
  static bool reports(const Outcome& outcome, const std::string& procedure) {
    return outcome.report.find("\tin MervaneClass3.COutputFormatting." + procedure + " at line ") != std::string::npos;
  }
};

TEST_F(OutputFailures, RetryRepeatsTheFailingStatementAndNothingBeforeIt) {
  const Outcome whole = run(everything(), 0, {});
  ASSERT_EQ(whole.shown, 0U);
  int shown = 0;
  for (int n = 1; n < unreachable; ++n) {
    const Outcome outcome = run(everything(), n, {Answer::retry});
    if (!outcome.triggered) break;
    ASSERT_LE(outcome.shown, 1U) << "failing call " << n;
    const std::size_t at = placeOf(n);
    if (outcome.shown == 0) {
      continue;  // A swallowed statement.
    }
    ++shown;
    // What follows is a run that begins again at some statement before the failing call, and ends as the whole one.
    const Texts tail(outcome.calls.begin() + static_cast<std::ptrdiff_t>(at) + 1, outcome.calls.end());
    ASSERT_LE(tail.size(), whole.calls.size()) << "failing call " << n;
    const std::size_t restart = whole.calls.size() - tail.size();
    ASSERT_LE(restart, at) << "failing call " << n;
    // The statements of the traced pieces are short; a failing block is repeated whole.
    const bool block = reports(outcome, "PrintData");
    if (!block) {
      EXPECT_LE(at - restart, 8U) << "failing call " << n << ": " << outcome.calls[at];
      EXPECT_EQ(Texts(whole.calls.begin() + static_cast<std::ptrdiff_t>(restart), whole.calls.end()), tail);
    }
    EXPECT_EQ(outcome.cells, whole.cells) << "failing call " << n << ": " << outcome.calls[at];
  }
  EXPECT_GT(shown, 100);
}

TEST_F(OutputFailures, SwallowedAssignmentThatFailsCostsItselfAlone) {
  Plan plan = everything();
  plan.charts = false;
  for (const bool colors : {true, false}) {
    plan.colors = colors;
    const Outcome whole = run(plan, 0, {});
    int swallowed = 0;
    for (int n = 1; n < unreachable; ++n) {
      const Outcome outcome = run(plan, n, {});
      if (!outcome.triggered) break;
      const std::size_t at = placeOf(n);
      if (outcome.shown != 0 || !outcome.calls[at].starts_with("put ")) continue;
      ++swallowed;
      Texts expected = whole.calls;
      expected[at] += " fails";
      EXPECT_EQ(outcome.calls, expected) << "failing call " << n;
    }
    // Five blocks of six lines with three settings each, and the fills.
    EXPECT_GT(swallowed, 5 * 6 * 3);
  }
}

TEST_F(OutputFailures, ResultThatWasNeverSetFailsTheListingAndEveryBlock) {
  fillExample();
  COutputFormatting output;
  output.ExcelApplication(excel.application());
  output.Clusters(2);
  output.OutputCells("F2");
  output.TotalRange("B2:D6");
  output.InputRange("B2:D6");
  output.DrawCharts(false);
  machine.messageBox->answers = std::deque<Answer>(100, Answer::ignore);
  EXPECT_NO_THROW(output.PrintData());
  // The listing, the averages, both extremes and the weights.
  EXPECT_EQ(failuresShown(), 5U);
  EXPECT_EQ(texts("F1:F2"), (Texts{"Clusters", ""}));
  EXPECT_EQ(texts("B7:E7"), Texts(4, ""));
}

TEST_F(OutputFailures, IgnoreGoesOnBehindTheFailingStatement) {
  // The statements of the traced pieces are short, so the next one begins a few calls behind.
  constexpr std::ptrdiff_t longestStatement = 8;
  const Outcome whole = run(everything(), 0, {});
  int wentOn = 0;
  int skippedFarther = 0;
  for (int n = 1; n < unreachable; ++n) {
    const Outcome outcome = run(everything(), n, std::vector<Answer>(500, Answer::ignore));
    if (!outcome.triggered) break;
    if (outcome.shown == 0) continue;
    const std::size_t at = placeOf(n);
    const auto tail = outcome.calls.begin() + static_cast<std::ptrdiff_t>(at) + 1;
    if (reports(outcome, "PrintData")) {
      // A block is one statement; behind it the run comes to its last piece, which looks for the charts to place them.
      EXPECT_NE(std::find(tail, outcome.calls.end(), "get Sheet1.Shapes"), outcome.calls.end())
          << "failing call " << n << ": " << outcome.calls[at];
      continue;
    }
    // Where the next statement needs what this one did not bring, it fails without asking the sheet, and that is shown.
    if (outcome.shown > 1) continue;
    const auto behind = whole.calls.begin() + static_cast<std::ptrdiff_t>(at) + 1;
    if (whole.calls.end() - behind < longestStatement) continue;
    const bool near =
        tail != outcome.calls.end() && std::find(behind, behind + longestStatement, *tail) != behind + longestStatement;
    ++(near ? wentOn : skippedFarther);
  }
  // Without a count its loop has no turns, and one statement gives a chart its whole look: what follows those is
  // farther.
  EXPECT_GT(wentOn, 3 * skippedFarther);
  EXPECT_GT(wentOn, 50);
}

TEST_F(OutputFailures, AbortLeavesTheProcedureAndItsCallersGoOn) {
  int inner = 0;
  for (int n = 1; n < unreachable; ++n) {
    const Outcome outcome = run(everything(), n, {Answer::abort});
    if (!outcome.triggered) break;
    if (outcome.shown == 0) continue;
    const std::size_t at = placeOf(n);
    const Texts tail(outcome.calls.begin() + static_cast<std::ptrdiff_t>(at) + 1, outcome.calls.end());
    const auto goesOnWith = [&](const std::string& call) {
      return std::find(tail.begin(), tail.end(), call) != tail.end();
    };
    if (reports(outcome, "SortInputRange")) {
      ++inner;
      EXPECT_TRUE(goesOnWith("get Range(\"E2\")")) << "failing call " << n;
    } else if (reports(outcome, "AddPortraitChart")) {
      ++inner;
      // The block goes on as though the chart had been made.
      EXPECT_TRUE(goesOnWith("put D9.Value = \"Cluster 1 minimum\"")) << "failing call " << n;
    } else if (reports(outcome, "AddWeightsChart")) {
      ++inner;
      EXPECT_TRUE(goesOnWith("get Sheet1.Shapes")) << "failing call " << n;
    } else if (reports(outcome, "AdjustChartsLocation") || reports(outcome, "PrintData")) {
      EXPECT_TRUE(tail.empty()) << "failing call " << n << ": " << outcome.calls[at];
    }
    EXPECT_EQ(outcome.shown, 1U) << "failing call " << n;
  }
  EXPECT_GT(inner, 50);
}

TEST_F(OutputFailures, EveryBlockIsWrappedAndRepeatedAtTheSameRows) {
  using Block = bool Plan::*;
  const std::vector<std::pair<Block, std::string>> blocks{{&Plan::averages, "average"},
                                                          {&Plan::weightedAverages, "weighted average (%)"},
                                                          {&Plan::minimums, "minimum"},
                                                          {&Plan::maximums, "maximum"},
                                                          {&Plan::weights, "weight (%)"}};
  for (const auto& [block, name] : blocks) {
    Plan plan = everything();
    plan.averages = plan.weightedAverages = plan.minimums = plan.maximums = plan.weights = false;
    plan.charts = plan.sort = plan.autofilter = false;
    plan.*block = true;
    const Outcome whole = run(plan, 0, {});
    int wrapped = 0;
    for (int n = 1; n < unreachable; ++n) {
      const Outcome outcome = run(plan, n, {Answer::retry});
      if (!outcome.triggered) break;
      if (outcome.shown == 0 || !reports(outcome, "PrintData")) continue;
      ++wrapped;
      EXPECT_NE(outcome.report.find("COutputFormatting component failure"), std::string::npos) << outcome.report;
      EXPECT_EQ(outcome.cells, whole.cells) << name << ", failing call " << n;
    }
    EXPECT_GT(wrapped, 10) << name;
  }
}

TEST_F(OutputFailures, IgnoredBlockIsPrintedOverByTheNext) {
  FakeSheet& sheet = excel;
  fillExample();
  sheet.cell("D4").value = Variant("n/a");
  machine.messageBox->answers = {Answer::ignore, Answer::abort};
  Plan plan = listingAlone();
  plan.averages = plan.weights = true;
  print(plan);
  EXPECT_EQ(failuresShown(), 1U);
  EXPECT_EQ(texts("B7:E7"), (Texts{"4", "40", "0.6", "Cluster 1 weight (%)"}));
}

TEST_F(OutputFailures, AbortKeepsWhatWasPrinted) {
  fillExample();
  excel.cell("D4").value = Variant("n/a");
  machine.messageBox->answers = {Answer::abort};
  print({});
  EXPECT_EQ(failuresShown(), 1U);
  EXPECT_EQ(texts("F1:F3"), (Texts{"Clusters", "1", "2"}));
  EXPECT_EQ(texts("B7:E7"), (Texts{"4", "40", "", ""}));
  EXPECT_EQ(fills("B2"), (std::vector<std::int32_t>{0}));
}

TEST_F(OutputFailures, FailureOfABlockIsReportedUnderThePlan) {
  fillExample();
  excel.cell("D4").value = Variant("n/a");
  print({});
  const std::string& report = machine.messageBox->shown.front().text;
  EXPECT_NE(report.find("MervaneClass3.COutputFormatting.PrintData"), std::string::npos) << report;
  EXPECT_NE(report.find("COutputFormatting component failure"), std::string::npos) << report;
}

TEST_F(OutputFailures, UnknownOutputFailsTheListing) {
  fillExample();
  Plan plan = listingAlone();
  plan.output = "nonsense";
  print(plan);
  ASSERT_EQ(failuresShown(), 1U);
  EXPECT_NE(machine.messageBox->shown.front().text.find("COutputFormatting component failure"), std::string::npos);
}

TEST_F(OutputFailures, TotalRangeShowsItsFailureAndInputRangeRaisesIt) {
  COutputFormatting output;
  output.ExcelApplication(excel.application());
  output.TotalRange("nonsense");
  EXPECT_EQ(failuresShown(), 1U);
  EXPECT_NE(machine.messageBox->shown.front().text.find("MervaneClass3.COutputFormatting.TotalRange"),
            std::string::npos);
  EXPECT_THROW(output.InputRange("nonsense"), Failure);
  EXPECT_EQ(failuresShown(), 1U);
}

TEST_F(OutputFailures, TotalRangeRetriedEndsAsUndisturbed) {
  for (int n = 1; n < unreachable; ++n) {
    machine.messageBox->shown.clear();
    machine.messageBox->answers = {Answer::retry};
    FakeSheet sheet;
    const FaultInjector host(sheet.object(), n);
    const Recorder record(host.object(), FakeSheet::nameOf);
    COutputFormatting output;
    output.ExcelApplication(sheet::Application(record.object()));
    output.TotalRange("B2:D6");
    EXPECT_EQ(record.calls().back(), "get B7.Resize(1, 4)");
    if (!host.triggered()) break;
    // The first call is that of the conversion to A1, which never fails.
    EXPECT_EQ(failuresShown(), n == 1 ? 0U : 1U);
  }
}

TEST_F(OutputFailures, ARunWithoutAnApplicationShowsFailuresAndRaisesNone) {
  COutputFormatting output;
  output.Clusters(2);
  output.result(resultOf({1, 2}));
  machine.messageBox->answers = std::deque<Answer>(100, Answer::ignore);
  EXPECT_NO_THROW(output.TotalRange("B2:D6"));
  EXPECT_THROW(output.InputRange("B2:D6"), Failure);
  EXPECT_NO_THROW(output.PrintData());
  EXPECT_GT(failuresShown(), 1U);
}

}  // namespace

}  // namespace mervane::tests
