#include "hosts/charts/shape_objects.h"

#include <gtest/gtest.h>

#include "tests/hosts_workbook/charts/invoke.h"
#include "tests/hosts_workbook/charts/run_charts.h"

namespace mervane::tests {
namespace {

namespace member = sheet::member;

TEST(ChartObjects, CanBeDeletedWhileTheyAreEnumerated) {
  TestBook book(bookPath("xlsxwriter.xlsx"));
  int reached = 0;
  sheet::forEach<sheet::ChartObject>(sheet::ChartObjects(book.charts().chartObjects(0)),
                                     [&](const sheet::ChartObject& one) {
                                       ++reached;
                                       one.Delete();
                                     });
  EXPECT_EQ(reached, 6);
  EXPECT_TRUE(book.chartObjects().empty());
}

TEST(ChartObjects, AnEnumerationPassesOverWhatWasDeletedMeanwhile) {
  TestBook book(bookPath("xlsxwriter.xlsx"));
  const auto all = book.chartObjects();
  int reached = 0;
  sheet::forEach<sheet::ChartObject>(sheet::ChartObjects(book.charts().chartObjects(0)),
                                     [&](const sheet::ChartObject&) {
                                       if (reached++ == 0) all[1].Delete();
                                     });
  EXPECT_EQ(reached, 5);
}

TEST(ChartObjects, AreFoundByPositionAndName) {
  TestBook book(bookPath("xlsxwriter.xlsx"));
  const sheet::ChartObjects objects(book.charts().chartObjects(0));
  EXPECT_EQ(get(objects, member::Count), Variant(6));
  const sheet::ChartObject second(get(objects, member::Item, {2}).object());
  EXPECT_EQ(get(second, member::Name), Variant("Chart 3"));
  const sheet::ChartObject named(get(objects, member::Item, {"Chart 3"}).object());
  EXPECT_EQ(named.Chart().ChartTitle().Text(), "Heading cell");
  EXPECT_EQ(numberRaisedBy([&] { get(objects, member::Item, {7}); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { get(objects, member::Item, {"None"}); }), refused);
}

TEST(ChartObjects, AChartIsDeletedOnce) {
  TestBook book(bookPath("openpyxl.xlsx"));
  const auto all = book.chartObjects();
  all[0].Delete();
  EXPECT_EQ(numberRaisedBy([&] { all[0].Delete(); }), refused);
  EXPECT_EQ(book.notes, (std::vector<std::string>{"chart \"First line\" is deleted from the sheet \"Data\""}));
}

TEST(ChartObjects, AProtectedSheetKeepsItsCharts) {
  TestBook book(bookPath("openpyxl.xlsx"));
  book.isProtected = true;
  EXPECT_EQ(numberRaisedBy([&] { book.chartObjects()[0].Delete(); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { book.shapes()[0].Left(1); }), refused);
  EXPECT_EQ(book.chartObjects().size(), 3U);
}

TEST(Shapes, TellChartsFromPicturesAndTextBoxes) {
  TestBook book(bookPath("xlsxwriter.xlsx"));
  std::map<std::int32_t, int> kinds;
  for (const sheet::Shape& shape : book.shapes()) ++kinds[shape.Type()];
  EXPECT_EQ(kinds, (std::map<std::int32_t, int>{{3, 6}, {13, 1}, {17, 1}}));
}

TEST(Shapes, OnlyAChartHasADrawingObject) {
  TestBook book(bookPath("xlsxwriter.xlsx"));
  for (const sheet::Shape& shape : book.shapes()) {
    const bool isChart = shape.Type() == 3;
    EXPECT_EQ(numberRaisedBy([&] { (void)shape.DrawingObject().Chart().HasTitle(); }), isChart ? 0 : refused);
  }
}

TEST(Shapes, HaveTheirPlaceInPoints) {
  TestBook book(bookPath("openpyxl.xlsx"));  // Anchored in one cell, 15 by 7.5 centimetres.
  const sheet::Shape shape = book.shapes()[0];
  EXPECT_DOUBLE_EQ(*get(shape, member::Left).getIf<double>(), 3 * 48.0);
  EXPECT_DOUBLE_EQ(*get(shape, member::Top).getIf<double>(), 15.0);
  EXPECT_NEAR(*get(shape, member::Width).getIf<double>(), 15 / 2.54 * 72, 0.01);
  EXPECT_NEAR(*get(shape, member::Height).getIf<double>(), 7.5 / 2.54 * 72, 0.01);
}

TEST(Shapes, RefuseLengthsThatAreNone) {
  TestBook book(bookPath("openpyxl.xlsx"));
  const sheet::Shape shape = book.shapes()[0];
  EXPECT_EQ(numberRaisedBy([&] { shape.Width(-1); }), refused);
  EXPECT_EQ(numberRaisedBy([&] { shape.Left(std::numeric_limits<double>::infinity()); }), refused);
  shape.Left(-20);
  EXPECT_EQ(get(shape, member::Left), Variant(0.0));
}

}  // namespace
}  // namespace mervane::tests
