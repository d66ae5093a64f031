// The parts of a chart: formats, series, points, axes and areas.
#include <gtest/gtest.h>

#include "hosts/charts/area_objects.h"
#include "hosts/charts/axis_objects.h"
#include "hosts/charts/format_objects.h"
#include "hosts/charts/series_objects.h"
#include "output/output_formatting.h"
#include "tests/hosts_workbook/charts/invoke.h"
#include "tests/hosts_workbook/charts/run_charts.h"

namespace mervane::tests {
namespace {

namespace member = sheet::member;

constexpr std::int32_t automatic = -4105;
constexpr std::int32_t none = -4142;

class ChartPartsTest : public testing::Test {
 protected:
  ChartPartsTest() {
    book_.newCharts().Add();
    book_.activeChart().Location(2, "My Data");
    chart_ = book_.activeChart();
    chart_.ChartType(sheet::chartLineWithMarkers);
    chart_.SetSourceData(book_.range(0, "B7:E10"), sheet::plotByRows);
  }
  TestBook book_{bookPath("plain.xlsx")};
  sheet::Chart chart_;
};

TEST_F(ChartPartsTest, ABorderBeginsAutomaticAndThin) {
  const sheet::Border border = chart_.PlotArea().Border();
  EXPECT_EQ(get(border, member::ColorIndex), Variant(automatic));
  EXPECT_EQ(get(border, member::Weight), Variant(2));
  EXPECT_EQ(get(border, member::LineStyle), Variant(automatic));
}

TEST_F(ChartPartsTest, ABorderTakesLineStylesAndWeightsOfTheApplicationOnly) {
  const sheet::Border border = chart_.ChartArea().Border();
  for (const std::int32_t weight : {1, 2, -4138, 4}) {
    border.Weight(weight);
    EXPECT_EQ(get(border, member::Weight), Variant(weight));
  }
  for (const std::int32_t style : {1, -4118, -4115, 4, 5, none, automatic}) {
    border.LineStyle(style);
    EXPECT_EQ(get(border, member::LineStyle), Variant(style));
  }
  EXPECT_EQ(numberRaisedBy([&] { border.LineStyle(-1); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { border.Weight(3); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { border.ColorIndex(57); }), refused);
  EXPECT_EQ(get(border, member::LineStyle), Variant(automatic));
}

TEST_F(ChartPartsTest, AWeightMakesALineVisibleAndNoColourHidesIt) {
  const sheet::Border border = chart_.PlotArea().Border();
  border.LineStyle(none);
  border.Weight(2);
  EXPECT_EQ(get(border, member::LineStyle), Variant(1));
  border.ColorIndex(none);
  EXPECT_EQ(get(border, member::LineStyle), Variant(none));
}

TEST_F(ChartPartsTest, AFillColourMakesAFillSolidAndNoneEmptiesIt) {
  const sheet::Interior interior = chart_.PlotArea().Interior();
  interior.ColorIndex(24);
  EXPECT_EQ(get(interior, member::Pattern), Variant(1));
  interior.ColorIndex(none);
  EXPECT_EQ(get(interior, member::Pattern), Variant(none));
  interior.PatternColorIndex(1);
  EXPECT_EQ(get(interior, member::PatternColorIndex), Variant(1));
  interior.Pattern(1);
  EXPECT_EQ(get(interior, member::Pattern), Variant(1));
  EXPECT_EQ(numberRaisedBy([&] { interior.Pattern(17); }), refused);
}

TEST_F(ChartPartsTest, AFontKeepsWhatItIsGiven) {
  chart_.HasTitle(true);
  const sheet::Font font = chart_.ChartTitle().Font();
  font.Name("Arial");
  font.Size(12);
  font.FontStyle("Bold");
  font.ColorIndex(6);
  font.Background(automatic);
  font.Underline(none);
  EXPECT_EQ(get(font, member::Name), Variant("Arial"));
  EXPECT_EQ(get(font, member::Size), Variant(12.0));
  EXPECT_EQ(get(font, member::FontStyle), Variant("Bold"));
  EXPECT_EQ(get(font, member::Bold), Variant(true));
  EXPECT_EQ(get(font, member::ColorIndex), Variant(6));
}

TEST_F(ChartPartsTest, AFontRefusesWhatCannotBeDrawn) {
  const sheet::Font font = chart_.Legend().Font();
  EXPECT_EQ(numberRaisedBy([&] { font.Name(""); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { font.Size(0); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { font.Size(410); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { font.FontStyle("Fat"); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { font.Underline(7); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { font.Shadow(true); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { font.OutlineFont(true); }), refused);
}

TEST_F(ChartPartsTest, SuperscriptAndSubscriptExcludeEachOther) {
  const sheet::Font font = chart_.Legend().Font();
  font.Superscript(true);
  font.Subscript(true);
  EXPECT_EQ(get(font, member::Superscript), Variant(false));
  EXPECT_EQ(get(font, member::Subscript), Variant(true));
}

TEST_F(ChartPartsTest, ANewSeriesHoldsTheValueOne) {
  EXPECT_EQ(chart_.SeriesCollection().NewSeries().Formula(), "=SERIES(,,{1},5)");
}

TEST_F(ChartPartsTest, SeriesAreNumberedFromOneAndNamedByDefault) {
  EXPECT_EQ(get(chart_.SeriesCollection(3), member::Name), Variant("Series3"));
  EXPECT_EQ(numberRaisedBy([&] { (void)chart_.SeriesCollection(0); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { (void)chart_.SeriesCollection(5); }), refused);
}

TEST_F(ChartPartsTest, ASeriesShowsNameAndCategoriesInItsFormula) {
  const sheet::Series series = chart_.SeriesCollection(1);
  series.Name("The \"first\"");
  series.XValues(book_.range(0, "B1:E1"));
  EXPECT_EQ(series.Formula(), "=SERIES(\"The \"\"first\"\"\",'My Data'!$B$1:$E$1,'My Data'!$B$7:$E$7,1)");
  EXPECT_EQ(get(series, member::XValues).array().at(4), Variant("petal width"));
}

TEST_F(ChartPartsTest, ASeriesTakesItsNameFromACell) {
  const sheet::Series series = chart_.SeriesCollection(1);
  series.Name("='My Data'!$C$1");
  EXPECT_EQ(get(series, member::Name), Variant("sepal width"));
  EXPECT_EQ(series.Formula(), "=SERIES('My Data'!$C$1,,'My Data'!$B$7:$E$7,1)");
  EXPECT_EQ(numberRaisedBy([&] { series.Name("=Nowhere!$A$1"); }), refused);
}

TEST_F(ChartPartsTest, CategoriesStandInOneRowOrColumn) {
  const sheet::Series series = chart_.SeriesCollection(1);
  EXPECT_EQ(numberRaisedBy([&] { series.XValues(book_.range(0, "B1:C2")); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { put(series, member::XValues, "B1:E1"); }), refused);
}

TEST_F(ChartPartsTest, DeletingSeriesFromTheLastOneEmptiesTheChart) {
  const sheet::Series last = chart_.SeriesCollection(4);
  for (std::int32_t i = chart_.SeriesCollection().Count(); i >= 1; --i) chart_.SeriesCollection(i).Delete();
  EXPECT_EQ(chart_.SeriesCollection().Count(), 0);
  EXPECT_EQ(numberRaisedBy([&] { (void)last.Formula(); }), refused);
}

TEST_F(ChartPartsTest, AChartTakesAtMost255Series) {
  while (chart_.SeriesCollection().Count() < 255) (void)chart_.SeriesCollection().NewSeries();
  EXPECT_EQ(numberRaisedBy([&] { (void)chart_.SeriesCollection().NewSeries(); }), refused);
}

TEST_F(ChartPartsTest, OnlyLinesHaveMarkersAndOnlyColumnsHaveAnInterior) {
  const sheet::Series series = chart_.SeriesCollection(1);
  series.MarkerSize(5);
  series.MarkerForegroundColorIndex(36);
  series.Smooth(false);
  EXPECT_EQ(get(series, member::MarkerForegroundColorIndex), Variant(36));
  EXPECT_EQ(numberRaisedBy([&] { (void)series.Interior(); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { series.MarkerSize(1); }), refused);
  chart_.ChartType(sheet::chartColumnClustered);
  EXPECT_EQ(numberRaisedBy([&] { series.MarkerSize(5); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { series.MarkerBackgroundColorIndex(automatic); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { series.Smooth(false); }), refused);
  series.Interior().ColorIndex(36);
  EXPECT_EQ(get(series.Interior(), member::ColorIndex), Variant(36));
}

TEST_F(ChartPartsTest, PointsAreAsManyAsTheValues) {
  int count = 0;
  sheet::forEach<sheet::Point>(chart_.SeriesCollection(1).Points(), [&](const sheet::Point&) { ++count; });
  EXPECT_EQ(count, 4);
  EXPECT_EQ(numberRaisedBy([&] { get(chart_.SeriesCollection(1).Points(), member::Item, {5}); }), refused);
}

TEST_F(ChartPartsTest, APointKeepsItsObjectsWhenItsSeriesLosesIt) {
  chart_.ChartType(sheet::chartColumnClustered);
  std::vector<sheet::Point> points;
  sheet::forEach<sheet::Point>(chart_.SeriesCollection(1).Points(),
                               [&](const sheet::Point& one) { points.push_back(one); });
  const sheet::Border border = points[3].Border();
  chart_.SetSourceData(book_.range(0, "B7:C8"), sheet::plotByRows);
  border.Weight(2);
  EXPECT_EQ(numberRaisedBy([&] { (void)points[3].Border(); }), refused);
}

TEST_F(ChartPartsTest, EachAxisHasTheMembersOfItsKind) {
  const sheet::Axis category = chart_.Axes(1, 1);
  const sheet::Axis value = chart_.Axes(2, 1);
  category.TickMarkSpacing(category.TickLabelSpacing());
  category.AxisBetweenCategories(true);
  value.ScaleType(-4132);
  value.DisplayUnit(none);
  EXPECT_EQ(numberRaisedBy([&] { category.ScaleType(-4132); }), unknownMember);
  EXPECT_EQ(numberRaisedBy([&] { value.TickMarkSpacing(1); }), unknownMember);
  EXPECT_EQ(numberRaisedBy([&] { value.ScaleType(1); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { value.MajorUnitIsAuto(false); }), refused);
}

TEST_F(ChartPartsTest, GridlinesAreThereWhenTheAxisHasThem) {
  const sheet::Axis category = chart_.Axes(1, 1);
  EXPECT_EQ(numberRaisedBy([&] { (void)category.MajorGridlines(); }), refused);
  category.HasMajorGridlines(true);
  category.MajorGridlines().Border().LineStyle(-4118);
  EXPECT_EQ(get(category.MajorGridlines().Border(), member::LineStyle), Variant(-4118));
}

TEST_F(ChartPartsTest, TheChartAreaHasTheDefaultSizeOfAnEmbeddedChart) {
  EXPECT_EQ(chart_.ChartArea().Width(), 360.0);
  EXPECT_EQ(chart_.ChartArea().Height(), 216.0);
}

TEST_F(ChartPartsTest, ThePlotAreaIsCutAtTheChartsEdge) {
  chart_.PlotArea().Left(0);
  chart_.PlotArea().Width(600);
  EXPECT_DOUBLE_EQ(chart_.PlotArea().Width(), 360.0);
}

TEST_F(ChartPartsTest, GeometryScalesWhenTheShapeIsResized) {
  chart_.PlotArea().Left(0);
  chart_.PlotArea().Top(18);
  chart_.PlotArea().Width(600);
  const sheet::Shape shape = book_.shapes()[0];
  shape.Width(350);
  shape.Height(200);
  EXPECT_DOUBLE_EQ(chart_.PlotArea().Width(), 350.0);
  const Variant top = get(chart_.PlotArea(), member::Top);
  ASSERT_EQ(top.kind(), Variant::Kind::real);
  EXPECT_NEAR(*top.getIf<double>(), 18.0 * 200 / 216, 1e-9);
}

TEST_F(ChartPartsTest, ANamedLegendPositionGivesUpThePlaceSetByHand) {
  const sheet::Legend legend = chart_.Legend();
  legend.Left(10);
  legend.Position(sheet::legendAtTop);
  EXPECT_NE(*get(legend, member::Left).getIf<double>(), 10.0);
  EXPECT_EQ(numberRaisedBy([&] { legend.Position(1); }), refused);
}

TEST_F(ChartPartsTest, StylingTwiceGrowsTheLegendByEightPoints) {
  COutputFormatting().ModifyChartObject(chart_, mediumLine);
  const double once = chart_.Legend().Height();
  COutputFormatting().ModifyChartObject(chart_, mediumLine);
  EXPECT_NEAR(chart_.Legend().Height(), once + 8, 1e-9);
  EXPECT_NEAR(chart_.Legend().Width(), 250.0, 1e-9);
}

}  // namespace
}  // namespace mervane::tests
