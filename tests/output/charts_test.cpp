#include "tests/output/output_fixture.h"

namespace mervane::tests {

namespace {

using Texts = std::vector<std::string>;

/// An application that notes how many references to its active chart are held whenever the version or the active chart
/// is asked for.
class ChartHolder final : public ObjectDecorator {
 public:
  struct Notes {
    int held = 0;
    std::vector<int> heldWhenAsked;
  };
  ChartHolder(sheet::ObjectRef inner, std::shared_ptr<Notes> notes)
      : ObjectDecorator(std::move(inner)), notes_(std::move(notes)) {}

  Variant invoke(sheet::Access access, sheet::member::Id member, std::span<const Variant> arguments) override {
    const bool asksForChart = member == sheet::member::ActiveChart;
    if (asksForChart || member == sheet::member::Version) notes_->heldWhenAsked.push_back(notes_->held);
    const Variant result = forward(access, member, arguments);
    if (!asksForChart || result.object() == nullptr) return result;
    return Variant(sheet::ObjectRef(std::make_shared<Held>(result.object(), notes_)));
  }

 private:
  class Held final : public ObjectDecorator {
   public:
    Held(sheet::ObjectRef inner, std::shared_ptr<Notes> notes)
        : ObjectDecorator(std::move(inner)), notes_(std::move(notes)) {
      ++notes_->held;
    }
    ~Held() override { --notes_->held; }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    Variant invoke(sheet::Access access, sheet::member::Id member, std::span<const Variant> arguments) override {
      return forward(access, member, arguments);
    }

   private:
    std::shared_ptr<Notes> notes_;
  };
  std::shared_ptr<Notes> notes_;
};

class OutputCharts : public OutputTest {
 protected:
  static Plan profilesAlone() {
    Plan plan = listingAlone();
    plan.weightedAverages = plan.charts = true;
    return plan;
  }
  static Plan weightsAlone() {
    Plan plan = listingAlone();
    plan.weights = plan.charts = true;
    return plan;
  }
  Texts titles() {
    Texts result;
    for (const auto& chart : excel.charts()) result.push_back(chart->title());
    return result;
  }
  /// The calls of a run from the making of its chart up to its styling, and those that place it.
  Texts callsOfChart(const Plan& plan) {
    Recorder record(excel.object(), FakeSheet::nameOf);
    print(plan, record.object());
    const Texts& calls = record.calls();
    const auto begin = std::find(calls.begin(), calls.end(), "get Charts");
    const auto end = std::find_if(begin, calls.end(), [](const std::string& call) {
      return call.find("MarkerBackgroundColorIndex") != std::string::npos;
    });
    return {begin, end};
  }
};

TEST_F(OutputCharts, NoBlockWithAChartMeansNoChart) {
  fillExample();
  Plan plan = listingAlone();
  plan.charts = plan.averages = true;
  print(plan);
  EXPECT_TRUE(excel.charts().empty());
  EXPECT_EQ(failuresShown(), 0U);
}

TEST_F(OutputCharts, SwitchedOffChartsOfAnEarlierRunAreDeletedAllTheSame) {
  fillExample();
  print({});
  print({.charts = false});
  EXPECT_TRUE(excel.charts().empty());
}

TEST_F(OutputCharts, ChartsWithAnotherTitleSurviveAndThoseWithoutDoNot) {
  excel.addChart("Sales");
  excel.addChart(std::nullopt);
  excel.addChart("clusters weights");
  excel.addChart("Clusters profiles");
  excel.addChart("");
  excel.addPicture();
  print(listingAlone());
  EXPECT_EQ(titles(), (Texts{"Sales", "clusters weights", ""}));
  EXPECT_EQ(excel.worksheet().shapes.size(), 4U);
}

TEST_F(OutputCharts, AChartThatTheUserCalledLikeOursIsDeleted) {
  excel.addChart("Clusters weights");
  print(listingAlone());
  EXPECT_TRUE(excel.charts().empty());
}

TEST_F(OutputCharts, AChartCalledLikeOursThatCannotBeDeletedIsPlaced) {
  excel.addChart("Clusters weights");
  FaultInjector host(excel.object(), [](sheet::Access, sheet::member::Id id) { return id == sheet::member::Delete; });
  Plan plan = listingAlone();
  plan.charts = true;
  print(plan, host.object());
  EXPECT_EQ(titles(), (Texts{"Clusters weights"}));
  EXPECT_EQ(excel.shape("Clusters weights").width, 350.0);
  EXPECT_EQ(excel.shape("Clusters weights").left, 6 * 48.0);
  EXPECT_EQ(failuresShown(), 0U);
}

TEST_F(OutputCharts, TestsOfAShapeWhoseFailureIsIgnoredCountAsTrue) {
  fillExample();
  excel.addChart("Sales");
  for (const auto failing : {sheet::member::Type, sheet::member::HasTitle}) {
    // The search for old charts reads a title too, and would delete the chart of the user; its reading holds.
    int readings = failing == sheet::member::HasTitle ? -static_cast<int>(excel.charts().size()) : 0;
    FaultInjector host(excel.object(), [&](sheet::Access access, sheet::member::Id id) {
      return id == failing && access == sheet::Access::get && ++readings > 0;
    });
    machine.messageBox->shown.clear();
    machine.messageBox->answers = {Answer::ignore, Answer::ignore};
    print(weightsAlone(), host.object());
    EXPECT_EQ(failuresShown(), 2U);
    EXPECT_EQ(excel.shape("Clusters weights").width, 350.0);
    EXPECT_EQ(excel.shape("Sales").width, 100.0);
  }
}

TEST_F(OutputCharts, AChartThatSaysItHasNoTitleStaysEvenIfItsTitleCanBeReadAndIsOurs) {
  for (const char* title : {"Clusters weights", "Clusters profiles"}) {
    excel.addChart(title)->handlers[sheet::member::HasTitle] = [](auto, auto) { return Variant(false); };
  }
  print(listingAlone());
  EXPECT_EQ(titles(), (Texts{"Clusters weights", "Clusters profiles"}));
}

TEST_F(OutputCharts, AChartIsMadeBehindTheLabelsOfItsBlockAndBeforeItsFrameAndTheMoveOfTheCursor) {
  fillExample();
  for (const Plan& plan : {profilesAlone(), weightsAlone()}) {
    Recorder record(excel.object(), FakeSheet::nameOf);
    print(plan, record.object());
    const Texts& calls = record.calls();
    const auto position = [&](auto begin, auto end, const std::string& part) {
      return std::find_if(begin, end, [&](const std::string& call) { return call.find(part) != std::string::npos; });
    };
    const auto chart = position(calls.begin(), calls.end(), "call Charts.Add");
    ASSERT_NE(chart, calls.end());
    EXPECT_NE(position(calls.begin(), chart, "put E8.Value"), chart) << "the label of the last cluster stands";
    EXPECT_EQ(position(chart, calls.end(), "put E8."), calls.end());
    EXPECT_EQ(position(calls.begin(), chart, "Borders("), chart);
    EXPECT_NE(position(chart, calls.end(), "Borders("), calls.end());
    EXPECT_EQ(position(calls.begin(), chart, "AutoFit"), chart);
    EXPECT_EQ(position(calls.begin(), chart, "Offset(2, 0)"), chart);
    EXPECT_NE(position(chart, calls.end(), "get B7:E7.Offset(2, 0)"), calls.end());
  }
}

TEST_F(OutputCharts, OldChartsAreTestedWithoutAnEarlyExit) {
  excel.addChart("Clusters weights");
  Recorder record(excel.object(), FakeSheet::nameOf);
  print(listingAlone(), record.object());
  EXPECT_EQ(record.callsWith("Chart1"),
            (Texts{"get ChartObject of Chart1.Chart", "get Chart1.HasTitle", "get ChartObject of Chart1.Chart",
                   "get Chart1.ChartTitle", "get Chart1.ChartTitle.Text", "get ChartObject of Chart1.Chart",
                   "get Chart1.ChartTitle", "get Chart1.ChartTitle.Text", "call ChartObject of Chart1.Delete"}));
}

TEST_F(OutputCharts, ProfilesAreLinesOfEachClusterOverTheHeaderRow) {
  fillExample();
  print({});
  const auto chart = excel.chart("Clusters profiles");
  EXPECT_EQ(chart->at({sheet::member::ChartType}), Variant(std::int32_t{65}));
  EXPECT_EQ(chart->sheetName, "Sheet1");
  ASSERT_EQ(chart->series.size(), 2U);
  EXPECT_EQ(chart->series[0]->at({sheet::member::Name}), Variant("Cluster 1"));
  EXPECT_EQ(chart->series[1]->at({sheet::member::Name}), Variant("Cluster 2"));
  EXPECT_EQ(FakeSheet::nameOf(*chart->series[1]->at({sheet::member::XValues}).object()), "B1:D1");
}

TEST_F(OutputCharts, WeightsAreColumnsOfOneSeriesOverTheLabels) {
  fillExample();
  print({});
  const auto chart = excel.chart("Clusters weights");
  EXPECT_EQ(chart->at({sheet::member::ChartType}), Variant(std::int32_t{51}));
  EXPECT_EQ(chart->at({sheet::member::ApplyDataLabels}), Variant(std::int32_t{2}));
  EXPECT_FALSE(chart->parts.contains(sheet::member::Legend));
  ASSERT_EQ(chart->series.size(), 1U);
  EXPECT_EQ(chart->series[0]->points.size(), 2U);
  EXPECT_EQ(FakeSheet::nameOf(*chart->series[0]->at({sheet::member::XValues}).object()), "E15:E16");
}

TEST_F(OutputCharts, InputInRowOneKeepsDefaultCategories) {
  excel.fill("B1", {{1.0, 2.0}, {3.0, 5.0}});
  Plan plan = profilesAlone();
  plan.input = "B1:C2";
  plan.result = {1, 2};
  print(plan);
  EXPECT_EQ(failuresShown(), 0U);
  const auto chart = excel.chart("Clusters profiles");
  EXPECT_TRUE(chart->series[0]->at({sheet::member::XValues}).isEmpty());
  EXPECT_EQ(chart->series[0]->at({sheet::member::Name}), Variant("Cluster 1"));
}

TEST_F(OutputCharts, SeriesOfAClusterWithoutMembersIsNamedLikeAnyOther) {
  fillExample();
  Plan plan = profilesAlone();
  plan.clusters = 3;
  print(plan);
  const auto chart = excel.chart("Clusters profiles");
  ASSERT_EQ(chart->series.size(), 3U);
  EXPECT_EQ(chart->series[2]->at({sheet::member::Name}), Variant("Cluster 3"));
  EXPECT_EQ(texts("B9").front(), "=NA()");
}

TEST_F(OutputCharts, SeriesWithoutAFormulaKeepsItsNameAndGetsItsCategories) {
  fillExample();
  excel.formulasAreEmpty = true;
  Recorder record(excel.object(), FakeSheet::nameOf);
  print(profilesAlone(), record.object());
  const auto chart = excel.chart("Clusters profiles");
  EXPECT_EQ(chart->series[0]->at({sheet::member::Name}), Variant("Series1"));
  EXPECT_TRUE(record.callsWith("Series1.Name").empty());
  EXPECT_EQ(FakeSheet::nameOf(*chart->series[0]->at({sheet::member::XValues}).object()), "B1:D1");
  EXPECT_EQ(failuresShown(), 0U);
}

TEST_F(OutputCharts, SeriesWhoseFormulaCannotBeReadKeepsItsName) {
  fillExample();
  FaultInjector host(excel.object(), [](sheet::Access, sheet::member::Id id) { return id == sheet::member::Formula; });
  print(profilesAlone(), host.object());
  EXPECT_EQ(excel.chart("Clusters profiles")->series[1]->at({sheet::member::Name}), Variant("Series2"));
  EXPECT_EQ(failuresShown(), 0U);
}

TEST_F(OutputCharts, ManyColumnListingMovesTheChartsRightOfTheMatrix) {
  fillExample();
  print({.clusters = 4, .oneColumn = false});
  EXPECT_EQ(excel.shape("Clusters weights").left, 9 * 48.0);
  EXPECT_EQ(excel.shape("Clusters profiles").left, 9 * 48.0);
}

TEST_F(OutputCharts, OtherShapesStayWhereTheyAre) {
  fillExample();
  excel.addPicture();
  excel.addChart("Sales");
  print({});
  EXPECT_EQ(excel.worksheet().shapes[0]->left, 0.0);
  EXPECT_EQ(excel.worksheet().shapes[0]->width, 100.0);
  EXPECT_EQ(excel.shape("Sales").width, 100.0);
  EXPECT_EQ(failuresShown(), 0U);
}

TEST_F(OutputCharts, EarlyVersionsKeepTheSeriesThatAChartBringsAlong) {
  fillExample();
  excel.guessedSeries = 1;
  for (const char* version : {"11.0", "11", "9.0a", "", "x"}) {
    excel.version = Variant(version);
    Recorder record(excel.object(), FakeSheet::nameOf);
    print(profilesAlone(), record.object());
    EXPECT_TRUE(record.callsWith("NewSeries").empty()) << version;
    EXPECT_TRUE(record.callsWith("Series1.Delete").empty()) << version;
  }
}

TEST_F(OutputCharts, LaterVersionsRebuildTheSeriesInBothCharts) {
  fillExample();
  excel.guessedSeries = 2;
  for (const char* version : {"12.0", "12", "16.0", " 14.0.1 beta"}) {
    excel.version = Variant(version);
    for (const Plan& plan : {profilesAlone(), weightsAlone()}) {
      Recorder record(excel.object(), FakeSheet::nameOf);
      print(plan, record.object());
      Texts rebuilt;
      for (const std::string& call : record.calls()) {
        if (call.find("call Series") == 0 && call.find("Delete") != std::string::npos) rebuilt.push_back(call);
        if (call.find("NewSeries") != std::string::npos) rebuilt.push_back("NewSeries");
      }
      EXPECT_EQ(rebuilt, (Texts{"call Series2.Delete", "call Series1.Delete", "NewSeries", "NewSeries"})) << version;
    }
  }
}

TEST_F(OutputCharts, VersionIsReadWithAFullStopWhateverTheLocale) {
  fillExample();
  machine.services->locale.decimalSeparator = ",";
  machine.services->locale.groupSeparators = {"."};
  excel.version = Variant("11.9");
  Recorder record(excel.object(), FakeSheet::nameOf);
  print(profilesAlone(), record.object());
  EXPECT_TRUE(record.callsWith("NewSeries").empty());
}

TEST_F(OutputCharts, VersionThatCannotBeReadCountsAsEarly) {
  fillExample();
  FaultInjector host(excel.object(), [](sheet::Access, sheet::member::Id id) { return id == sheet::member::Version; });
  Recorder record(host.object());
  print(profilesAlone(), record.object());
  EXPECT_TRUE(record.callsWith("NewSeries").empty());
  EXPECT_EQ(failuresShown(), 0U);
}

TEST_F(OutputCharts, ProfilesAreMadeInThisOrder) {
  excel.fill("B2", {{5.0}});
  excel.guessedSeries = 1;
  Plan plan = profilesAlone();
  plan.input = "B2";
  plan.result = {1};
  plan.clusters = 1;
  EXPECT_EQ(callsOfChart(plan),
            (Texts{"get Charts", "call Charts.Add", "get ActiveChart",  //
                   "put Chart1.HasTitle = True", "get Chart1.ChartTitle",
                   "put Chart1.ChartTitle.Text = \"Clusters profiles\"",
                   "put Chart1.ChartType = 65",  //
                   "get B3.Worksheet", "get Sheet1.Name", "call Chart1.Location(2, \"Sheet1\")",
                   // The series are made anew.
                   "get Version", "get ActiveChart", "get ActiveChart", "call Chart1.SeriesCollection",
                   "get Chart1.SeriesCollection.Count", "get ActiveChart", "call Chart1.SeriesCollection(1)",
                   "call Series1.Delete", "get ActiveChart", "call Chart1.SeriesCollection",
                   "call Chart1.SeriesCollection.NewSeries",  //
                   "get ActiveChart", "call Chart1.SetSourceData(B3, 1)", "put Chart1.HasTitle = True",
                   "get Chart1.ChartTitle", "put Chart1.ChartTitle.Text = \"Clusters profiles\"",
                   "call Chart1.SeriesCollection", "get Chart1.SeriesCollection.Count",  //
                   "call Chart1.SeriesCollection(1)", "get Series1.Formula", "call Chart1.SeriesCollection(1)",
                   "put Series1.Name = \"Cluster 1\"", "get Series1.Border", "put Series1.Border.ColorIndex = 36",
                   "put Series1.Border.Weight = 2", "put Series1.Border.LineStyle = 1",  //
                   "get B2.Offset(-1, 0)", "get B2.Columns", "get B2.Columns.Count", "get B1.Resize(1, 1)",
                   "call Chart1.SeriesCollection(1)", "put Series1.XValues = B1",
                   // The styling begins.
                   "get ActiveChart", "call Chart1.SeriesCollection", "get Chart1.SeriesCollection.NewEnum",
                   "call Chart1.SeriesCollection.NewEnum.Next", "get Series1.Border",
                   "put Series1.Border.ColorIndex = 36", "get Series1.Border", "put Series1.Border.Weight = -4138",
                   "get Series1.Border", "put Series1.Border.LineStyle = 1"}));
}

TEST_F(OutputCharts, WeightsAreMadeInThisOrder) {
  excel.fill("B2", {{5.0}});
  excel.version = Variant("11.0");
  Plan plan = weightsAlone();
  plan.input = "B2";
  plan.result = {1};
  plan.clusters = 1;
  EXPECT_EQ(
      callsOfChart(plan),
      (Texts{"get Charts", "call Charts.Add", "get ActiveChart",  //
             "put Chart1.HasTitle = True", "get Chart1.ChartTitle", "put Chart1.ChartTitle.Text = \"Clusters weights\"",
             "put Chart1.ChartType = 51",  //
             "get B3.Worksheet", "get Sheet1.Name", "call Chart1.Location(2, \"Sheet1\")", "get Version",
             "get ActiveChart", "call Chart1.SetSourceData(B3, 2)", "put Chart1.HasTitle = True",
             "get Chart1.ChartTitle", "put Chart1.ChartTitle.Text = \"Clusters weights\"",
             "call Chart1.ApplyDataLabels(2)", "put Chart1.HasLegend = False",  //
             "get Chart1.PlotArea", "get Chart1.PlotArea.Border", "put Chart1.PlotArea.Border.Weight = 1",
             "put Chart1.PlotArea.Border.LineStyle = -4142",  //
             "call Chart1.SeriesCollection(1)", "get B3.Offset(0, 1)", "put Series1.XValues = C3",
             "get Chart1.PlotArea", "get Chart1.PlotArea.Interior", "put Chart1.PlotArea.Interior.ColorIndex = -4142",
             // The styling begins.
             "get ActiveChart", "call Chart1.SeriesCollection", "get Chart1.SeriesCollection.NewEnum",
             "call Chart1.SeriesCollection.NewEnum.Next", "get Series1.Border", "put Series1.Border.ColorIndex = 36",
             "get Series1.Border", "put Series1.Border.Weight = 2", "get Series1.Border",
             "put Series1.Border.LineStyle = 1"}));
}

TEST_F(OutputCharts, ChartsArePlacedInThisOrder) {
  fillExample();
  excel.addPicture();
  Recorder record(excel.object(), FakeSheet::nameOf);
  print(weightsAlone(), record.object());
  const auto begin = std::find(record.calls().begin(), record.calls().end(), "get Sheet1.Shapes") - 6;
  EXPECT_EQ(Texts(begin, record.calls().end()), (Texts{"get ReferenceStyle",
                                                       "get Range(\"F2\")",
                                                       "get B2:D6.Rows",
                                                       "get B2:D6.Rows.Count",
                                                       "get F2.Resize(5, 1)",
                                                       "get ActiveSheet",
                                                       "get Sheet1.Shapes",
                                                       "get Sheet1.Shapes.NewEnum",
                                                       "call Sheet1.Shapes.NewEnum.Next",
                                                       "get Picture.Type",
                                                       "call Sheet1.Shapes.NewEnum.Next",
                                                       "get Shape of Chart1.Type",
                                                       "get Shape of Chart1.DrawingObject",
                                                       "get Shape of Chart1.DrawingObject.Chart",
                                                       "get Chart1.HasTitle",
                                                       "get Shape of Chart1.DrawingObject",
                                                       "get Shape of Chart1.DrawingObject.Chart",
                                                       "get Chart1.ChartTitle",
                                                       "get Chart1.ChartTitle.Text",
                                                       "get F2:F6.Top",
                                                       "put Shape of Chart1.Top = 12.75",
                                                       "put Shape of Chart1.Height = 200",
                                                       "put Shape of Chart1.Width = 350",
                                                       "get F2:F6.Left",
                                                       "get F2:F6.Width",
                                                       "put Shape of Chart1.Left = 288",
                                                       "call Sheet1.Shapes.NewEnum.Next"}));
}

TEST_F(OutputCharts, AMovedChartIsLetGoOfBeforeItIsAskedForAgain) {
  fillExample();
  for (const Plan& plan : {profilesAlone(), weightsAlone()}) {
    const auto notes = std::make_shared<ChartHolder::Notes>();
    print(plan, std::make_shared<ChartHolder>(excel.object(), notes));
    EXPECT_GT(notes->heldWhenAsked.size(), 4U);
    EXPECT_EQ(notes->heldWhenAsked, std::vector<int>(notes->heldWhenAsked.size(), 0));
    EXPECT_EQ(notes->held, 0);
  }
}

TEST_F(OutputCharts, TitleThatCannotBeSetTheFirstTimeIsSetBehindTheMove) {
  fillExample();
  int titles = 0;
  FaultInjector host(excel.object(), [&](sheet::Access access, sheet::member::Id id) {
    return id == sheet::member::HasTitle && access == sheet::Access::put && ++titles == 1;
  });
  print(weightsAlone(), host.object());
  EXPECT_EQ(this->titles(), (Texts{"Clusters weights"}));
  EXPECT_EQ(failuresShown(), 0U);
}

}  // namespace

}  // namespace mervane::tests
