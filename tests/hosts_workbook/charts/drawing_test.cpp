#include "hosts/workbook/charts/drawing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/hosts_workbook/charts/invoke.h"
#include "tests/hosts_workbook/charts/run_charts.h"

namespace mervane::tests {
namespace {

namespace member = sheet::member;
using testing::HasSubstr;
using testing::Not;

constexpr const char* drawingPart = "xl/drawings/drawing1.xml";
constexpr const char* sheetPart = "xl/worksheets/sheet1.xml";

std::string head() {
  return "<?xml version='1.0'?>\n<!-- kept --><xdr:wsDr "
         "xmlns:xdr=\"http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing\" "
         "xmlns:a='http://schemas.openxmlformats.org/drawingml/2006/main' "
         "xmlns:mc=\"http://schemas.openxmlformats.org/markup-compatibility/2006\">";
}

std::string corners() {
  return "<xdr:from><xdr:col>1</xdr:col><xdr:colOff>0</xdr:colOff><xdr:row>2</xdr:row><xdr:rowOff>0</xdr:rowOff>"
         "</xdr:from><xdr:to><xdr:col>3</xdr:col><xdr:colOff>0</xdr:colOff><xdr:row>4</xdr:row><xdr:rowOff>0"
         "</xdr:rowOff></xdr:to>";
}

std::string chartAnchor(const std::string& relation, const std::string& name) {
  return "<xdr:twoCellAnchor  editAs='absolute'>" + corners() +
         "<xdr:graphicFrame><xdr:nvGraphicFramePr><xdr:cNvPr id='7' name='" + name +
         "'/></xdr:nvGraphicFramePr><a:graphic><a:graphicData "
         "uri='http://schemas.openxmlformats.org/drawingml/2006/chart'><c:chart "
         "xmlns:c='http://schemas.openxmlformats.org/drawingml/2006/chart' "
         "xmlns:r='http://schemas.openxmlformats.org/officeDocument/2006/relationships' r:id='" +
         relation + "'/></a:graphicData></a:graphic></xdr:graphicFrame><xdr:clientData/></xdr:twoCellAnchor>";
}

std::string groupAnchor() {
  return "<xdr:twoCellAnchor>" + corners() +
         "<xdr:grpSp><xdr:nvGrpSpPr><xdr:cNvPr id='3' name='Group 1'/></xdr:nvGrpSpPr><xdr:sp macro=\"\" />"
         "</xdr:grpSp><xdr:clientData/></xdr:twoCellAnchor>";
}

/// A chart of a newer kind, with what older programs show in its place.
std::string alternativeAnchor() {
  return "<xdr:twoCellAnchor>" + corners() +
         "<mc:AlternateContent><mc:Choice xmlns:cx1='x' Requires='cx1'><xdr:graphicFrame><a:graphic>"
         "<a:graphicData uri='http://schemas.microsoft.com/office/drawing/2014/chartex'/></a:graphic>"
         "</xdr:graphicFrame></mc:Choice><mc:Fallback><xdr:sp><xdr:nvSpPr><xdr:cNvPr id='40' name=''/></xdr:nvSpPr>"
         "</xdr:sp></mc:Fallback></mc:AlternateContent><xdr:clientData/></xdr:twoCellAnchor>";
}

/// What stands between anchors, such as the alternatives that hold form controls.
constexpr const char* between = "\n  <mc:AlternateContent><mc:Choice Requires='a14'/></mc:AlternateContent>\n";

std::string chartWithTitle(const std::string& title) {
  return "<c:chartSpace xmlns:c='c' xmlns:a='a'><c:chart><c:title><c:tx><c:rich><a:p><a:r><a:t>" + title +
         "</a:t></a:r></a:p></c:rich></c:tx></c:title><c:plotArea/></c:chart></c:chartSpace>";
}

/// A book whose first sheet holds two charts, a group, a chart of a newer kind and other markup. The first chart
/// has a style, colours and drawn shapes with a picture of their own; the picture is the second chart's too.
class DrawingTest : public testing::Test {
 protected:
  DrawingTest() {
    workbook::Package& package = book_.package();
    const std::string kept = std::string(between) + groupAnchor() + alternativeAnchor();
    package.put(drawingPart,
                head() + chartAnchor("rId1", "Chart 1") + kept + chartAnchor("rId2", "Chart 2") + "</xdr:wsDr>",
                "application/vnd.openxmlformats-officedocument.drawing+xml");
    book_.setDrawingRelation(0, package.addRelation(sheetPart, "drawing", drawingPart));
    package.put("xl/charts/chart1.xml", chartWithTitle("Clusters weights"), chartType);
    package.put("xl/charts/chart2.xml", chartWithTitle("Mine"), chartType);
    EXPECT_EQ(package.addRelation(drawingPart, "chart", "xl/charts/chart1.xml"), "rId1");
    EXPECT_EQ(package.addRelation(drawingPart, "chart", "xl/charts/chart2.xml"), "rId2");
    package.put("xl/charts/style1.xml", "<s/>", "application/vnd.ms-office.chartstyle+xml");
    package.put("xl/charts/colors1.xml", "<c/>", "application/vnd.ms-office.chartcolorstyle+xml");
    package.put("xl/drawings/drawing2.xml", "<u/>",
                "application/vnd.openxmlformats-officedocument.drawingml.chartshapes+xml");
    package.put("xl/media/image1.png", "png", "image/png");
    package.put("xl/media/image2.png", "png", "image/png");
    package.addRelation("xl/charts/chart1.xml", "chartStyle", "xl/charts/style1.xml");
    package.addRelation("xl/charts/chart1.xml", "chartColorStyle", "xl/charts/colors1.xml");
    package.addRelation("xl/charts/chart1.xml", "chartUserShapes", "xl/drawings/drawing2.xml");
    package.addRelation("xl/drawings/drawing2.xml", "image", "xl/media/image1.png");
    package.addRelation("xl/drawings/drawing2.xml", "image", "xl/media/image2.png");
    package.addRelation("xl/charts/chart2.xml", "image", "xl/media/image1.png");
  }

  std::string drawing() { return book_.package().read(drawingPart); }

  static constexpr const char* chartType = "application/vnd.openxmlformats-officedocument.drawingml.chart+xml";
  TestBook book_{bookPath("plain.xlsx")};
};

TEST_F(DrawingTest, LookingAtChartsChangesNothing) {
  const std::string before = drawing();
  EXPECT_EQ(book_.chartObjects().size(), 2U);
  EXPECT_EQ(book_.shapes().size(), 4U);
  book_.charts().write();
  EXPECT_EQ(drawing(), before);
}

TEST_F(DrawingTest, ADeletedChartGoesWithItsPartsAndRelations) {
  book_.chartObjects()[0].Delete();
  book_.charts().write();
  workbook::Package& package = book_.package();
  for (const char* part : {"xl/charts/chart1.xml", "xl/charts/style1.xml", "xl/charts/colors1.xml",
                           "xl/drawings/drawing2.xml", "xl/media/image2.png"}) {
    EXPECT_FALSE(package.has(part)) << part;
    EXPECT_EQ(package.relations(part).size(), 0U) << part;
  }
  EXPECT_TRUE(package.has("xl/media/image1.png")) << "the other chart has it too";
  const auto relations = package.relations(drawingPart);
  ASSERT_EQ(relations.size(), 1U);
  EXPECT_EQ(relations[0].id, "rId2");
}

TEST_F(DrawingTest, EverythingElseInTheDrawingStaysByteForByte) {
  book_.chartObjects()[0].Delete();
  book_.charts().write();
  EXPECT_EQ(drawing(),
            head() + between + groupAnchor() + alternativeAnchor() + chartAnchor("rId2", "Chart 2") + "</xdr:wsDr>");
}

TEST_F(DrawingTest, AMovedChartGetsANewPlaceAndNothingElse) {
  book_.shapes()[3].Left(96);
  book_.shapes()[3].Height(45);
  book_.charts().write();
  std::string moved = chartAnchor("rId2", "Chart 2");
  const auto replace = [&](const std::string& old, const std::string& now) {
    ASSERT_NE(moved.find(old), std::string::npos);
    moved.replace(moved.find(old), old.size(), now);
  };
  replace("<xdr:col>1</xdr:col>", "<xdr:col>2</xdr:col>");
  replace("<xdr:col>3</xdr:col>", "<xdr:col>4</xdr:col>");
  replace("<xdr:row>4</xdr:row>", "<xdr:row>5</xdr:row>");
  EXPECT_THAT(drawing(), HasSubstr(alternativeAnchor() + moved + "</xdr:wsDr>"));
  EXPECT_THAT(drawing(), HasSubstr(chartAnchor("rId1", "Chart 1") + between));
}

TEST_F(DrawingTest, AChartOfANewerKindIsAShapeAndNoChart) {
  const auto shapes = book_.shapes();
  EXPECT_EQ(shapes[1].Type(), 6);
  EXPECT_EQ(shapes[2].Type(), -2);
  EXPECT_EQ(book_.chartObjects().size(), 2U);
}

TEST_F(DrawingTest, NewChartsAreAddedBehindWhatIsThere) {
  makeRunCharts(book_);
  book_.charts().write();
  const std::string text = drawing();
  EXPECT_TRUE(text.starts_with(head() + chartAnchor("rId1", "Chart 1").substr(0, 20)));
  EXPECT_THAT(text, HasSubstr(between + groupAnchor() + alternativeAnchor() + chartAnchor("rId2", "Chart 2")));
  EXPECT_THAT(text, HasSubstr("name=\"Chart 3\""));
  EXPECT_THAT(text, HasSubstr("name=\"Chart 4\""));
  EXPECT_THAT(text, HasSubstr("id=\"41\"")) << "ids inside alternatives count too";
  TestBook again(book_.save("added.xlsx"));
  EXPECT_EQ(again.chartObjects().size(), 4U);
}

TEST_F(DrawingTest, ADrawingThatLosesItsLastContentGoesToo) {
  TestBook book(bookPath("openpyxl.xlsx"));
  for (const sheet::ChartObject& one : book.chartObjects()) one.Delete();
  book.charts().write();
  EXPECT_EQ(book.drawingRelation(0), "");
  for (const std::string& name : book.package().names()) {
    EXPECT_THAT(name, Not(HasSubstr("drawing")));
    EXPECT_THAT(name, Not(HasSubstr("chart")));
  }
  EXPECT_EQ(book.package().contentType("xl/charts/chart1.xml"), "application/xml") << "what every part has by default";
}

TEST_F(DrawingTest, APictureKeepsTheDrawingWhenItsChartsGo) {
  TestBook book(bookPath("xlsxwriter.xlsx"));
  for (const sheet::ChartObject& one : book.chartObjects()) one.Delete();
  TestBook again(book.save("pictures.xlsx"));
  EXPECT_TRUE(again.chartObjects().empty());
  EXPECT_EQ(again.shapes().size(), 2U);
  EXPECT_TRUE(again.package().has("xl/media/image1.png"));
}

TEST_F(DrawingTest, ChartsOfSeveralProducersAreMovedAndStaySo) {
  for (const char* name : {"xlsxwriter.xlsx", "openpyxl.xlsx", "libreoffice.xlsx"}) {
    TestBook book(bookPath(name));
    for (const sheet::Shape& shape : book.shapes()) {
      if (shape.Type() != 3) continue;
      shape.Top(30);
      shape.Height(200);
      shape.Width(350);
      shape.Left(100);
    }
    TestBook again(book.save(name));
    for (const sheet::Shape& shape : again.shapes()) {
      if (shape.Type() != 3) continue;
      EXPECT_NEAR(*get(shape, member::Left).getIf<double>(), 100, 1e-3) << name;
      EXPECT_NEAR(*get(shape, member::Top).getIf<double>(), 30, 1e-3) << name;
      EXPECT_NEAR(*get(shape, member::Width).getIf<double>(), 350, 1e-3) << name;
      EXPECT_NEAR(*get(shape, member::Height).getIf<double>(), 200, 1e-3) << name;
    }
  }
}

TEST_F(DrawingTest, AnEmptyDrawingElementTakesCharts) {
  book_.package().put(drawingPart,
                      "<wsDr xmlns=\"http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing\"/>");
  makeRunCharts(book_);
  book_.charts().write();
  EXPECT_THAT(drawing(), testing::EndsWith("</xdr:twoCellAnchor></wsDr>"));
}

TEST_F(DrawingTest, AUtf16DrawingIsRead) {
  const std::string narrow = "<wsDr><!-- x --></wsDr>";
  std::string wide = "\xFF\xFE";
  for (const char letter : narrow) wide += std::string(1, letter) + '\0';
  book_.package().put(drawingPart, wide);
  makeRunCharts(book_);
  book_.charts().write();
  EXPECT_THAT(drawing(), HasSubstr("<wsDr><xdr:twoCellAnchor"));
}

TEST_F(DrawingTest, ADamagedDrawingFailsEachTimeAndIsNotWritten) {
  for (const char* damaged : {"", "<wsDr>", "<wsDr><a></wsDr>", "no markup"}) {
    book_.package().put(drawingPart, damaged);
    EXPECT_EQ(numberRaisedBy([&] { book_.chartObjects(); }), refused) << damaged;
    EXPECT_EQ(numberRaisedBy([&] { book_.shapes(); }), refused) << damaged;
    book_.charts().write();
    EXPECT_EQ(drawing(), damaged);
  }
}

TEST_F(DrawingTest, ADamagedChartPartIsLeftAlone) {
  book_.package().put("xl/charts/chart1.xml", "<c:chartSpace");
  EXPECT_EQ(book_.chartObjects().size(), 1U);
  EXPECT_EQ(book_.shapes()[0].Type(), -2);
}

TEST_F(DrawingTest, WritingTwiceLeavesTheSameParts) {
  makeRunCharts(book_);
  book_.charts().write();
  const std::string once = drawing();
  const std::size_t parts = book_.package().names().size();
  book_.charts().write();
  EXPECT_EQ(drawing(), once);
  EXPECT_EQ(book_.package().names().size(), parts);
}

}  // namespace
}  // namespace mervane::tests
