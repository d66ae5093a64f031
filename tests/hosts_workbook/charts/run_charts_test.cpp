#include "tests/hosts_workbook/charts/run_charts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/hosts_workbook/charts/invoke.h"

namespace mervane::tests {
namespace {

namespace member = sheet::member;

double side(const sheet::Shape& shape, member::Id id) {
  return *get(shape, id).getIf<double>();
}

TEST(RunCharts, AreWrittenAndReadBackWithTheirTitles) {
  TestBook book(bookPath("plain.xlsx"));
  makeRunCharts(book);
  TestBook again(book.save("run.xlsx"));
  const auto charts = again.chartObjects();
  ASSERT_EQ(charts.size(), 2U);
  EXPECT_EQ(charts[0].Chart().ChartTitle().Text(), "Clusters profiles");
  EXPECT_EQ(charts[1].Chart().ChartTitle().Text(), "Clusters weights");
  EXPECT_TRUE(charts[0].Chart().HasLegend());
  EXPECT_FALSE(charts[1].Chart().HasLegend());
  EXPECT_EQ(charts[0].Chart().SeriesCollection().Count(), 4);
  EXPECT_EQ(charts[1].Chart().SeriesCollection().Count(), 1);
}

TEST(RunCharts, StandAtTheirPlaceWith350By200Points) {
  TestBook book(bookPath("plain.xlsx"));
  makeRunCharts(book);
  TestBook again(book.save("place.xlsx"));
  const auto shapes = again.shapes();
  for (const sheet::Shape& shape : shapes) {
    EXPECT_NEAR(side(shape, member::Width), 350, 1e-3);
    EXPECT_NEAR(side(shape, member::Height), 200, 1e-3);
    EXPECT_NEAR(side(shape, member::Left), 336, 1e-3);
  }
  EXPECT_NEAR(side(shapes[0], member::Top), 215, 1e-3);
  EXPECT_NEAR(side(shapes[1], member::Top), 15, 1e-3);
}

TEST(RunCharts, ASecondRunOverItsOwnFileLeavesTwoChartsAndTheSameParts) {
  TestBook first(bookPath("plain.xlsx"));
  makeRunCharts(first);
  TestBook second(first.save("first.xlsx"));
  const auto parts = second.package().names();
  for (const sheet::ChartObject& old : second.chartObjects()) old.Delete();
  makeRunCharts(second);
  TestBook third(second.save("second.xlsx"));
  EXPECT_EQ(third.chartObjects().size(), 2U);
  EXPECT_THAT(third.package().names(), testing::UnorderedElementsAreArray(parts));
}

TEST(RunCharts, EverySeriesIsNamedColouredAndDrawnWithTheMediumLine) {
  TestBook book(bookPath("plain.xlsx"));
  makeRunCharts(book);
  const sheet::Chart chart = book.chartObjects()[0].Chart();
  const std::int32_t colors[] = {36, 50, 38, 39};
  for (std::int32_t i = 1; i <= 4; ++i) {
    const sheet::Series series = chart.SeriesCollection(i);
    EXPECT_EQ(get(series, member::Name), Variant("Cluster " + std::to_string(i)));
    EXPECT_EQ(get(series.Border(), member::ColorIndex), Variant(colors[i - 1]));
    EXPECT_EQ(get(series.Border(), member::Weight), Variant(mediumLine));
    EXPECT_EQ(get(series, member::MarkerForegroundColorIndex), Variant(colors[i - 1]));
  }
}

TEST(RunCharts, EachColumnOfTheWeightsChartHasItsClustersColour) {
  TestBook book(bookPath("plain.xlsx"));
  makeRunCharts(book);
  const sheet::Chart chart = book.chartObjects()[1].Chart();
  std::vector<Variant> colors;
  sheet::forEach<sheet::Point>(chart.SeriesCollection(1).Points(), [&](const sheet::Point& point) {
    colors.push_back(get(point.Interior(), member::ColorIndex));
  });
  EXPECT_EQ(colors, (std::vector<Variant>{36, 50, 38, 39}));
}

TEST(RunCharts, TheFrameFollowsTheFixedLayout) {
  TestBook book(bookPath("plain.xlsx"));
  const sheet::Chart chart = addProfilesChart(book, book.range(0, "B7:E10"), book.range(0, "B1:E1"));
  const sheet::Legend legend = chart.Legend();
  EXPECT_NEAR(legend.Width(), 250, 1e-9);
  EXPECT_NEAR(*get(legend, member::Left).getIf<double>(), chart.ChartArea().Width() - 250, 1e-9);
  EXPECT_NEAR(*get(chart.PlotArea(), member::Top).getIf<double>(), legend.Height(), 1e-9);
  EXPECT_NEAR(*get(chart.PlotArea(), member::Height).getIf<double>(), chart.ChartArea().Height() - legend.Height(),
              1e-9);
}

TEST(RunCharts, ManyClustersLeaveRoomForThePlot) {
  TestBook book(bookPath("plain.xlsx"));
  const sheet::Chart chart = addProfilesChart(book, book.range(0, "B20:E119"), book.range(0, "B1:E1"));
  EXPECT_EQ(chart.SeriesCollection().Count(), 100);
  EXPECT_GE(*get(chart.PlotArea(), member::Height).getIf<double>(), 90.0);
  EXPECT_EQ(get(chart.SeriesCollection(16).Border(), member::ColorIndex), Variant(36));
}

}  // namespace
}  // namespace mervane::tests
