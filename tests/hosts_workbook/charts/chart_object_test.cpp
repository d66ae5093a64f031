#include "hosts/charts/chart_object.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/hosts_workbook/charts/invoke.h"
#include "tests/hosts_workbook/charts/test_book.h"

namespace mervane::tests {
namespace {

namespace member = sheet::member;

class ChartObjectTest : public testing::Test {
 protected:
  sheet::Chart newChart() {
    book_.newCharts().Add();
    return book_.activeChart();
  }
  sheet::Chart embeddedChart() {
    newChart().Location(2, "My Data");
    return book_.activeChart();
  }
  TestBook book_{bookPath("plain.xlsx")};
};

TEST_F(ChartObjectTest, ThereIsNoActiveChartBeforeOneIsAdded) {
  EXPECT_FALSE(book_.activeChart());
}

TEST_F(ChartObjectTest, AddMakesAChartOnASheetOfItsOwnAndActivatesIt) {
  const sheet::Chart chart = newChart();
  EXPECT_TRUE(chart);
  EXPECT_TRUE(book_.chartObjects().empty());
  EXPECT_FALSE(chart.HasTitle());
  EXPECT_TRUE(chart.HasLegend());
  EXPECT_EQ(chart.SeriesCollection().Count(), 0);
}

TEST_F(ChartObjectTest, LocationMovesTheChartIntoTheSheetWhichBecomesActive) {
  newChart().Location(2, "Other");
  EXPECT_EQ(book_.activeSheet(), 1);
  ASSERT_EQ(book_.chartObjects(1).size(), 1U);
  EXPECT_TRUE(book_.chartObjects(0).empty());
  book_.activeChart().HasTitle(true);
  book_.activeChart().ChartTitle().Text("Moved");
  EXPECT_EQ(book_.chartObjects(1)[0].Chart().ChartTitle().Text(), "Moved");
  EXPECT_THAT(book_.notes, testing::ElementsAre("chart without a title is added to the sheet \"Other\""));
}

TEST_F(ChartObjectTest, LocationRefusesASheetThatIsNotThere) {
  const sheet::Chart chart = newChart();
  EXPECT_EQ(numberRaisedBy([&] { chart.Location(2, "Nowhere"); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { chart.Location(1, "Other"); }), refused);
  EXPECT_TRUE(book_.chartObjects(1).empty());
}

TEST_F(ChartObjectTest, AChartThatStaysOnASheetOfItsOwnIsReportedAndNotSaved) {
  const std::size_t parts = book_.package().names().size();
  newChart();
  book_.charts().write();
  EXPECT_EQ(book_.package().names().size(), parts);
  EXPECT_THAT(book_.notes,
              testing::ElementsAre("chart without a title is not saved, because it was not moved into a worksheet"));
}

TEST_F(ChartObjectTest, LocationRefusesAProtectedSheet) {
  book_.isProtected = true;
  const sheet::Chart chart = newChart();
  EXPECT_EQ(numberRaisedBy([&] { chart.Location(2, "Other"); }), refused);
  EXPECT_TRUE(book_.chartObjects(1).empty());
}

TEST_F(ChartObjectTest, ReadingTheTitleOfAChartWithoutOneFails) {
  const sheet::Chart chart = newChart();
  EXPECT_EQ(numberRaisedBy([&] { (void)chart.ChartTitle(); }), refused);
  chart.HasTitle(true);
  EXPECT_EQ(chart.ChartTitle().Text(), "Chart Title");
  const sheet::ChartTitle title = chart.ChartTitle();
  const sheet::Font font = title.Font();
  chart.HasTitle(false);
  EXPECT_EQ(numberRaisedBy([&] { (void)title.Text(); }), refused);
  font.Size(20);  // An object that outlives its title must do no harm.
  EXPECT_FALSE(chart.HasTitle());
}

TEST_F(ChartObjectTest, LegendMembersFailWithoutALegend) {
  const sheet::Chart chart = newChart();
  const sheet::Legend legend = chart.Legend();
  chart.HasLegend(false);
  EXPECT_EQ(numberRaisedBy([&] { (void)chart.Legend(); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { legend.Top(0); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { (void)legend.Height(); }), refused);
}

TEST_F(ChartObjectTest, TakesTheTypesThatItCanWrite) {
  const sheet::Chart chart = newChart();
  for (const std::int32_t type : {65, 51, 4, 57}) {
    chart.ChartType(type);
    EXPECT_EQ(get(chart, member::ChartType), Variant(type));
  }
  EXPECT_EQ(numberRaisedBy([&] { chart.ChartType(-4100); }), refused);
  EXPECT_EQ(get(chart, member::ChartType), Variant(57));
}

TEST_F(ChartObjectTest, SourceByRowsMakesEachRowASeries) {
  const sheet::Chart chart = embeddedChart();
  chart.SetSourceData(book_.range(0, "B7:E10"), sheet::plotByRows);
  EXPECT_EQ(chart.SeriesCollection().Count(), 4);
  EXPECT_EQ(chart.SeriesCollection(2).Formula(), "=SERIES(,,'My Data'!$B$8:$E$8,2)");
}

TEST_F(ChartObjectTest, SourceByColumnsMakesASingleColumnOneSeries) {
  const sheet::Chart chart = embeddedChart();
  for (int i = 0; i < 4; ++i) chart.SeriesCollection().NewSeries();
  chart.SetSourceData(book_.range(0, "E11:E14"), sheet::plotByColumns);
  EXPECT_EQ(chart.SeriesCollection().Count(), 1);
  EXPECT_EQ(chart.SeriesCollection(1).Formula(), "=SERIES(,,'My Data'!$E$11:$E$14,1)");
}

TEST_F(ChartObjectTest, SourceTakesTextsAtItsEdgesAsNamesAndCategories) {
  const sheet::Chart chart = embeddedChart();
  chart.SetSourceData(book_.range(0, "B1:E6"), sheet::plotByColumns);
  EXPECT_EQ(chart.SeriesCollection().Count(), 4);
  EXPECT_EQ(chart.SeriesCollection(1).Formula(), "=SERIES('My Data'!$B$1,,'My Data'!$B$2:$B$6,1)");
  chart.SetSourceData(book_.range(0, "B1:E6"), sheet::plotByRows);
  EXPECT_EQ(chart.SeriesCollection(5).Formula(), "=SERIES(,'My Data'!$B$1:$E$1,'My Data'!$B$6:$E$6,5)");
}

TEST_F(ChartObjectTest, SourceKeepsTheLookOfSeriesByPosition) {
  const sheet::Chart chart = embeddedChart();
  chart.SetSourceData(book_.range(0, "B7:E10"), sheet::plotByRows);
  chart.SeriesCollection(1).Border().ColorIndex(3);
  chart.SetSourceData(book_.range(0, "B8:E9"), sheet::plotByRows);
  EXPECT_EQ(chart.SeriesCollection().Count(), 2);
  EXPECT_EQ(get(chart.SeriesCollection(1).Border(), member::ColorIndex), Variant(3));
}

TEST_F(ChartObjectTest, SourceRefusesWhatIsNoRangeAndMoreThan255Series) {
  const sheet::Chart chart = embeddedChart();
  EXPECT_EQ(numberRaisedBy([&] { invoke(chart, sheet::Access::call, member::SetSourceData, {"B7:E10", 1}); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { chart.SetSourceData(book_.range(0, "A1:A256"), sheet::plotByRows); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { chart.SetSourceData(book_.range(0, "B7:E10"), 3); }), refused);
  EXPECT_EQ(chart.SeriesCollection().Count(), 0);
}

TEST_F(ChartObjectTest, AxesAreSelectedByTypeAndGroup) {
  const sheet::Chart chart = newChart();
  EXPECT_EQ(get(chart.Axes(1, 1), member::Type), Variant(1));
  EXPECT_EQ(get(chart.Axes(2, 1), member::Type), Variant(2));
  EXPECT_EQ(numberRaisedBy([&] { (void)chart.Axes(2, 2); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { (void)chart.Axes(3, 1); }), refused);
}

TEST_F(ChartObjectTest, DataLabelsRefuseOtherTypes) {
  const sheet::Chart chart = embeddedChart();
  chart.ApplyDataLabels(2);
  EXPECT_EQ(numberRaisedBy([&] { chart.ApplyDataLabels(3); }), refused);
}

TEST_F(ChartObjectTest, UnknownMembersAreNotSupported) {
  const sheet::Chart chart = embeddedChart();
  chart.SetSourceData(book_.range(0, "B7:E10"), sheet::plotByRows);
  const auto unknown = [](const sheet::Proxy& object) {
    return numberRaisedBy([&] { get(object, member::ScreenUpdating); });
  };
  EXPECT_EQ(unknown(book_.newCharts()), unknownMember);
  EXPECT_EQ(unknown(chart), unknownMember);
  EXPECT_EQ(unknown(chart.ChartArea()), unknownMember);
  EXPECT_EQ(unknown(chart.PlotArea()), unknownMember);
  EXPECT_EQ(unknown(chart.PlotArea().Border()), unknownMember);
  EXPECT_EQ(unknown(chart.PlotArea().Interior()), unknownMember);
  EXPECT_EQ(unknown(chart.Legend()), unknownMember);
  EXPECT_EQ(unknown(chart.Legend().Font()), unknownMember);
  EXPECT_EQ(unknown(chart.Axes(1, 1)), unknownMember);
  EXPECT_EQ(unknown(chart.Axes(2, 1)), unknownMember);
  EXPECT_EQ(unknown(chart.Axes(2, 1).TickLabels()), unknownMember);
  EXPECT_EQ(unknown(chart.SeriesCollection()), unknownMember);
  EXPECT_EQ(unknown(chart.SeriesCollection(1)), unknownMember);
  EXPECT_EQ(unknown(chart.SeriesCollection(1).Points()), unknownMember);
  EXPECT_EQ(unknown(book_.chartObjects()[0]), unknownMember);
  EXPECT_EQ(unknown(book_.shapes()[0]), unknownMember);
}

TEST_F(ChartObjectTest, ObjectsOfADeletedChartFail) {
  const sheet::Chart chart = embeddedChart();
  const sheet::PlotArea area = chart.PlotArea();
  book_.chartObjects()[0].Delete();
  EXPECT_EQ(numberRaisedBy([&] { (void)chart.HasTitle(); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { area.Top(3); }), refused);
  EXPECT_FALSE(book_.activeChart());
}

TEST(ChartObjects, OutliveTheWorkbookAndThenFail) {
  sheet::Chart chart;
  {
    TestBook book(bookPath("plain.xlsx"));
    book.newCharts().Add();
    chart = book.activeChart();
  }
  EXPECT_EQ(numberRaisedBy([&] { (void)chart.HasTitle(); }), refused);
}

}  // namespace
}  // namespace mervane::tests
