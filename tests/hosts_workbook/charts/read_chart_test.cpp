#include "hosts/workbook/charts/read_chart.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/hosts_workbook/charts/invoke.h"
#include "tests/hosts_workbook/charts/test_book.h"

namespace mervane::tests {
namespace {

namespace member = sheet::member;
using workbook::charts::readChart;

/// The titles of a sheet's charts; an asterisk for a chart without one.
std::vector<std::string> titles(TestBook& book) {
  std::vector<std::string> all;
  for (const sheet::ChartObject& one : book.chartObjects()) {
    all.push_back(one.Chart().HasTitle() ? one.Chart().ChartTitle().Text() : "*");
  }
  return all;
}

TEST(ReadChart, SeesTheTitlesOfXlsxwriter) {
  TestBook book(bookPath("xlsxwriter.xlsx"));
  EXPECT_THAT(titles(book),
              testing::ElementsAre("Quarterly profit", "Heading cell", "*", "Only series", "*", "Clusters weights"));
}

TEST(ReadChart, SeesTheTitlesOfLibreOffice) {
  TestBook book(bookPath("libreoffice.xlsx"));
  EXPECT_THAT(titles(book), testing::UnorderedElementsAre("Quarterly profit", "Heading cell", "*", "Only series", "*",
                                                          "Clusters weights"));
}

TEST(ReadChart, SeesTheTitlesOfOpenpyxl) {
  TestBook book(bookPath("openpyxl.xlsx"));
  EXPECT_THAT(titles(book), testing::ElementsAre("First line", "*", "Clusters profiles"));
}

TEST(ReadChart, SeesSeriesTypeAndLegend) {
  TestBook book(bookPath("xlsxwriter.xlsx"));
  const sheet::Chart chart = book.chartObjects()[0].Chart();
  EXPECT_TRUE(chart.HasLegend());
  EXPECT_EQ(get(chart, member::ChartType), Variant(4));
  EXPECT_EQ(chart.SeriesCollection().Count(), 2);
  EXPECT_EQ(chart.SeriesCollection(1).Formula(), "=SERIES(Data!$A$1,,Data!$A$2:$A$5,1)");
  EXPECT_EQ(get(chart.SeriesCollection(2), member::Name), Variant("Second"));
}

TEST(ReadChart, AChartOfTheFileCannotBeRestyled) {
  TestBook book(bookPath("xlsxwriter.xlsx"));
  const sheet::Chart chart = book.chartObjects()[0].Chart();
  EXPECT_EQ(numberRaisedBy([&] { chart.HasTitle(false); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { chart.ChartTitle().Text("x"); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { chart.SeriesCollection(1).Delete(); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { (void)chart.SeriesCollection().NewSeries(); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { chart.Location(2, "Data"); }), refused);
  EXPECT_TRUE(chart.HasTitle());
}

std::string chartPartWith(const std::string& content) {
  return "<c:chartSpace xmlns:c=\"c\" xmlns:a=\"a\"><c:chart>" + content + "</c:chart></c:chartSpace>";
}

std::string titleOf(TestBook& book, const std::string& content) {
  const auto chart = readChart(book, chartPartWith(content));
  if (!chart) return "no chart";
  return chart->title ? chart->title->text : "*";
}

constexpr const char* oneNamedSeries =
    "<c:plotArea><c:lineChart><c:ser><c:tx><c:v>Sales</c:v></c:tx></c:ser></c:lineChart></c:plotArea>";
constexpr const char* twoSeries =
    "<c:plotArea><c:lineChart><c:ser><c:tx><c:v>A</c:v></c:tx></c:ser><c:ser/></c:lineChart></c:plotArea>";

TEST(ReadChart, JoinsRunsFieldsBreaksAndParagraphsOfATitle) {
  TestBook book(bookPath("plain.xlsx"));
  EXPECT_EQ(titleOf(book,
                    "<c:title><c:tx><c:rich><a:p><a:r><a:t>Clusters </a:t></a:r><a:r><a:t>weights</a:t></a:r>"
                    "</a:p></c:rich></c:tx></c:title>"),
            "Clusters weights");
  EXPECT_EQ(titleOf(book,
                    "<c:title><c:tx><c:rich><a:p><a:r><a:t>a</a:t></a:r><a:br/><a:fld><a:t>b</a:t></a:fld></a:p>"
                    "<a:p><a:r><a:t> c</a:t></a:r></a:p></c:rich></c:tx></c:title>"),
            "a\nb\n c");
}

TEST(ReadChart, TakesATitleFromTheCellWhereNothingIsCached) {
  TestBook book(bookPath("plain.xlsx"));
  const std::string reference = "<c:f>'My Data'!$D$1</c:f>";
  EXPECT_EQ(titleOf(book, "<c:title><c:tx><c:strRef>" + reference + "</c:strRef></c:tx></c:title>"), "petal length");
  EXPECT_EQ(titleOf(book, "<c:title><c:tx><c:strRef>" + reference +
                              "<c:strCache><c:pt idx=\"0\"><c:v>cached</c:v></c:pt></c:strCache></c:strRef></c:tx>"
                              "</c:title>"),
            "cached");
  EXPECT_EQ(titleOf(book, "<c:title><c:tx><c:strRef><c:f>Gone!$A$1</c:f></c:strRef></c:tx></c:title>"), "");
}

TEST(ReadChart, ATitleWithoutATextIsTheOnlySeriesNameOrTheApplicationsOwn) {
  TestBook book(bookPath("plain.xlsx"));
  EXPECT_EQ(titleOf(book, std::string("<c:title/>") + oneNamedSeries), "Sales");
  EXPECT_EQ(titleOf(book, std::string("<c:title/>") + twoSeries), "Chart Title");
}

TEST(ReadChart, WithoutATitleElementOneNamedSeriesStillGivesATitle) {
  TestBook book(bookPath("plain.xlsx"));
  EXPECT_EQ(titleOf(book, oneNamedSeries), "Sales");
  EXPECT_EQ(titleOf(book, std::string("<c:autoTitleDeleted val=\"0\"/>") + oneNamedSeries), "Sales");
  EXPECT_EQ(titleOf(book, std::string("<c:autoTitleDeleted val=\"1\"/>") + oneNamedSeries), "*");
  EXPECT_EQ(titleOf(book, std::string("<c:autoTitleDeleted/>") + oneNamedSeries),
            "*");  // A flag without a value says yes.
  EXPECT_EQ(titleOf(book, twoSeries), "*");
}

TEST(ReadChart, TellsTheTypesOfCharts) {
  TestBook book(bookPath("plain.xlsx"));
  const auto type = [&](const std::string& group) {
    return readChart(book, chartPartWith("<c:plotArea>" + group + "</c:plotArea>"))->type;
  };
  EXPECT_EQ(type("<c:barChart><c:barDir val=\"col\"/><c:grouping val=\"clustered\"/></c:barChart>"), 51);
  EXPECT_EQ(type("<c:barChart><c:barDir val=\"bar\"/><c:grouping val=\"percentStacked\"/></c:barChart>"), 59);
  EXPECT_EQ(type("<c:lineChart><c:ser><c:marker><c:symbol val=\"x\"/></c:marker></c:ser></c:lineChart>"), 65);
  EXPECT_EQ(type("<c:pieChart/>"), 5);
  EXPECT_EQ(type("<c:surface3DChart/>"), 0);
}

TEST(ReadChart, AnswersNothingForWhatIsNoChart) {
  TestBook book(bookPath("plain.xlsx"));
  EXPECT_EQ(readChart(book, ""), nullptr);
  EXPECT_EQ(readChart(book, "<c:chartSpace><c:chart>"), nullptr);
  EXPECT_EQ(readChart(book, "<other/>"), nullptr);
}

}  // namespace
}  // namespace mervane::tests
