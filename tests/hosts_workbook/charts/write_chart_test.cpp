#include "hosts/workbook/charts/write_chart.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <pugixml.hpp>
#include <sstream>

#include "tests/hosts_workbook/charts/invoke.h"
#include "tests/hosts_workbook/charts/run_charts.h"
#include "tests/hosts_workbook/part_order/part_order.h"

namespace mervane::tests {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string written(TestBook& book, const std::string& part) {
  book.charts().write();
  return book.package().read(part);
}

std::string golden(const std::string& name) {
  std::ifstream file(std::string(MERVANE_SOURCE_DIR) + "/tests/hosts_workbook/charts/golden/" + name);
  std::stringstream text;
  text << file.rdbuf();
  return text.str();
}

/// A part line by line, one element each, so that a difference is seen at its place.
std::string lines(const std::string& part) {
  pugi::xml_document document;
  EXPECT_TRUE(document.load_buffer(part.data(), part.size()));
  std::ostringstream stream;
  document.save(stream, " ", pugi::format_indent | pugi::format_no_declaration);
  return stream.str();
}

/// Compares a part with the kept one, or keeps it where the environment asks for that.
void expectGolden(const std::string& part, const std::string& name) {
  const std::string path = std::string(MERVANE_SOURCE_DIR) + "/tests/hosts_workbook/charts/golden/" + name;
  if (std::getenv("MERVANE_KEEP_GOLDEN") != nullptr) {
    std::ofstream(path) << lines(part);
    FAIL() << "kept " << name;
  }
  EXPECT_EQ(lines(part), lines(golden(name)));
}

void expectSchemaOrder(const std::string& part) {
  EXPECT_EQ(workbook::tests::faultsOfPart("chart", part), std::vector<std::string>());
}

class WriteChartTest : public testing::Test {
 protected:
  std::string profiles() { return written(book_, "xl/charts/chart1.xml"); }
  std::string weights() { return written(book_, "xl/charts/chart2.xml"); }
  TestBook book_{bookPath("plain.xlsx")};
};

TEST_F(WriteChartTest, TheProfilesChartIsAsItIsKept) {
  makeRunCharts(book_);
  expectGolden(profiles(), "profiles_chart.xml");
}

TEST_F(WriteChartTest, TheWeightsChartIsAsItIsKept) {
  makeRunCharts(book_);
  expectGolden(weights(), "weights_chart.xml");
}

TEST_F(WriteChartTest, TheDrawingIsAsItIsKept) {
  makeRunCharts(book_);
  expectGolden(written(book_, "xl/drawings/drawing1.xml"), "drawing.xml");
}

TEST_F(WriteChartTest, ElementsStandInTheOrderOfTheFormat) {
  makeRunCharts(book_);
  expectSchemaOrder(profiles());
  expectSchemaOrder(weights());
}

TEST_F(WriteChartTest, ElementsStandInOrderWhateverIsSet) {
  makeRunCharts(book_);
  for (const sheet::ChartObject& object : book_.chartObjects()) {
    const sheet::Chart chart = object.Chart();
    put(chart.Axes(1, 1), sheet::member::TickLabelSpacing, 2);
    chart.Axes(1, 1).TickMarkSpacing(3);
    chart.Axes(1, 1).HasMinorGridlines(true);
    chart.Axes(2, 1).HasMinorGridlines(true);
    chart.Axes(2, 1).ScaleType(-4133);
    chart.Axes(2, 1).DisplayUnit(-3);
    chart.Axes(2, 1).ReversePlotOrder(true);
    chart.HasLegend(true);
    chart.Legend().Shadow(true);
    chart.ChartTitle().Font().Superscript(true);
    chart.SeriesCollection(1).Shadow(true);
    (void)chart.SeriesCollection().NewSeries();
    chart.ApplyDataLabels(4);
    sheet::forEach<sheet::Point>(chart.SeriesCollection(1).Points(), [](const sheet::Point& point) {
      point.Shadow(true);
      point.Border().Weight(4);
    });
  }
  for (const std::int32_t type : {65, 4, 51, 57}) {
    for (const sheet::ChartObject& object : book_.chartObjects()) object.Chart().ChartType(type);
    expectSchemaOrder(profiles());
    expectSchemaOrder(weights());
  }
}

TEST_F(WriteChartTest, AnUntouchedChartLeavesTheLookToTheApplication) {
  book_.newCharts().Add();
  book_.activeChart().Location(2, "My Data");
  const std::string part = written(book_, "xl/charts/chart1.xml");
  expectSchemaOrder(part);
  EXPECT_THAT(part, Not(HasSubstr("c:spPr")));
  EXPECT_THAT(part, Not(HasSubstr("c:manualLayout")));
  EXPECT_THAT(part, HasSubstr("<c:autoTitleDeleted val=\"1\"/>"));
}

TEST_F(WriteChartTest, AnErrorIsAMissingPointAndTheLineGoesOn) {
  makeRunCharts(book_);
  EXPECT_THAT(profiles(), HasSubstr("<c:f>'My Data'!$B$10:$E$10</c:f><c:numCache><c:formatCode>0.00%</c:formatCode>"
                                    "<c:ptCount val=\"4\"/></c:numCache>"));
  EXPECT_THAT(profiles(), HasSubstr("<c:dispBlanksAs val=\"span\"/>"));
  EXPECT_THAT(weights(), HasSubstr("<c:dispBlanksAs val=\"gap\"/>"));
}

TEST_F(WriteChartTest, CachesHoldTheCellsOfTheMomentOfSaving) {
  makeRunCharts(book_);
  book_.setCell(0, {11, 5}, 0.125);
  EXPECT_THAT(weights(), HasSubstr("<c:pt idx=\"0\"><c:v>0.125</c:v></c:pt>"));
  book_.setCell(0, {11, 5}, 0.25);
  EXPECT_THAT(weights(), HasSubstr("<c:pt idx=\"0\"><c:v>0.25</c:v></c:pt>"));
}

TEST_F(WriteChartTest, CategoriesThatAreAllNumbersAreWrittenAsNumbers) {
  makeRunCharts(book_);
  book_.chartObjects()[0].Chart().SeriesCollection(1).XValues(book_.range(0, "B2:E2"));
  EXPECT_THAT(profiles(), HasSubstr("<c:cat><c:numRef><c:f>'My Data'!$B$2:$E$2</c:f>"));
  book_.setCell(0, {2, 3}, "text");
  EXPECT_THAT(profiles(), HasSubstr("<c:cat><c:strRef><c:f>'My Data'!$B$2:$E$2</c:f>"));
}

TEST_F(WriteChartTest, TextsAreEscapedAndFreedOfControlCharacters) {
  makeRunCharts(book_);
  book_.setCell(0, {1, 2}, std::string("a<b>&\"c\"\x02"));
  book_.chartObjects()[0].Chart().ChartTitle().Text("x < y & z");
  EXPECT_THAT(profiles(), HasSubstr("<c:v>a&lt;b&gt;&amp;\"c\"</c:v>"));
  EXPECT_THAT(profiles(), HasSubstr("<a:t>x &lt; y &amp; z</a:t>"));
}

TEST_F(WriteChartTest, ATitleOfSeveralLinesHasAParagraphEach) {
  makeRunCharts(book_);
  book_.chartObjects()[0].Chart().ChartTitle().Text("one\ntwo");
  EXPECT_THAT(profiles(), HasSubstr("<a:t>one</a:t></a:r></a:p><a:p>"));
  TestBook again(book_.save("lines.xlsx"));
  EXPECT_EQ(again.chartObjects()[0].Chart().ChartTitle().Text(), "one\ntwo");
}

TEST_F(WriteChartTest, AStrictWorkbookGetsStrictNamespaces) {
  makeRunCharts(book_);
  const auto drawing = workbook::charts::Chart();
  const std::string part = workbook::charts::chartPart(book_, drawing, {}, true);
  EXPECT_THAT(part, HasSubstr("http://purl.oclc.org/ooxml/drawingml/chart"));
  EXPECT_THAT(part, Not(HasSubstr("schemas.openxmlformats.org")));
}

}  // namespace
}  // namespace mervane::tests
