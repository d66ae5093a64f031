#include "hosts/charts/layout.h"

#include <gtest/gtest.h>

#include "tests/hosts_workbook/charts/invoke.h"

namespace mervane::tests {
namespace {

using namespace mervane::charts;  // NOLINT(google-build-using-namespace): its names are the subject of this file

constexpr Size size{360.0, 216.0};

Chart chartWithSeries(std::size_t count) {
  Chart chart;
  chart.type = number::lineMarkersChart;
  for (std::size_t i = 0; i < count; ++i) {
    chart.series.push_back(std::make_shared<Series>());
    chart.series.back()->name.literal = "Cluster " + std::to_string(i + 1);
  }
  chart.legend.position = number::legendTop;
  chart.legend.font.size = 8;
  return chart;
}

TEST(Layout, AnExtentEndsAtTheChartsEdge) {
  Frame frame;
  assign(frame, Edge::left, 0.0, {10, 10, 200, 100}, size, false);
  assign(frame, Edge::width, 600.0, {0, 10, 200, 100}, size, false);
  EXPECT_DOUBLE_EQ(*frame.left, 0.0);
  EXPECT_DOUBLE_EQ(*frame.width, 1.0);
}

TEST(Layout, APositionIsKeptAndTheExtentGivesWay) {
  Frame frame;
  assign(frame, Edge::top, 74.0, {0, 18, 360, 198}, size, false);
  EXPECT_DOUBLE_EQ(*frame.top * size.height, 74.0);
  EXPECT_NEAR(*frame.height * size.height, 142.0, 1e-9);
}

TEST(Layout, AWidthIsTakenBeforeThePlaceIsKnown) {
  Chart chart = chartWithSeries(3);
  assign(chart.legend.frame, Edge::width, 250.0, legendBox(chart, size), size, true);
  EXPECT_NEAR(legendBox(chart, size).width, 250.0, 1e-9);
  assign(chart.legend.frame, Edge::left, 110.0, legendBox(chart, size), size, true);
  EXPECT_NEAR(legendBox(chart, size).left, 110.0, 1e-9);
  EXPECT_NEAR(legendBox(chart, size).width, 250.0, 1e-9);
}

TEST(Layout, FractionsScaleWithTheChart) {
  Chart chart = chartWithSeries(3);
  chart.plotArea.frame = {0.0, 0.25, 1.0, 0.75};
  EXPECT_EQ(plotBox(chart, {350.0, 200.0}), (Box{0.0, 50.0, 350.0, 150.0}));
}

TEST(Layout, AnOpenLegendGrowsWithItsRowsAndLeavesRoomForThePlot) {
  Chart few = chartWithSeries(2);
  Chart many = chartWithSeries(16);
  Chart most = chartWithSeries(200);
  EXPECT_LT(legendBox(few, size).height, legendBox(many, size).height);
  EXPECT_LT(legendBox(many, size).height, size.height / 2);
  EXPECT_LE(legendBox(most, size).height, size.height / 2);
}

TEST(Layout, RefusesLengthsThatAreNone) {
  Frame frame;
  const Box now{0, 0, 100, 100};
  EXPECT_EQ(numberRaisedBy([&] { assign(frame, Edge::width, 0.0, now, size, false); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { assign(frame, Edge::height, -3.0, now, size, false); }), refused);
  const double nothing = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(numberRaisedBy([&] { assign(frame, Edge::left, nothing, now, size, false); }), refused);
  EXPECT_TRUE(frame.automatic());
}

}  // namespace
}  // namespace mervane::tests
