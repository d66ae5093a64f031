#include "tests/conformance/conformance_checks.h"

namespace mervane::tests {

namespace member = sheet::member;

namespace {

std::vector<sheet::Shape> shapesOf(Walk& walk) {
  std::vector<sheet::Shape> shapes;
  sheet::forEach<sheet::Shape>(walk.activeSheet().Shapes(),
                               [&](const sheet::Shape& shape) { shapes.push_back(shape); });
  return shapes;
}

void everyChartIsAShapeThatLeadsToIt(Walk& walk) {
  EXPECT_TRUE(shapesOf(walk).empty());
  for (const char* title : {"first", "second"}) {
    const sheet::Chart chart = walk.embeddedChart("B2:C3", sheet::chartColumnClustered, sheet::plotByColumns);
    chart.HasTitle(true);
    chart.ChartTitle().Text(title);
  }
  std::vector<std::string> titles;
  for (const sheet::Shape& shape : shapesOf(walk)) {
    EXPECT_EQ(shape.Type(), sheet::shapeTypeChart);
    EXPECT_TRUE(shape.DrawingObject().Chart().HasTitle());
    titles.push_back(shape.DrawingObject().Chart().ChartTitle().Text());
  }
  EXPECT_EQ(titles, (std::vector<std::string>{"first", "second"}));
}

void aShapeIsPlacedAndSizedInPoints(Walk& walk) {
  static_cast<void>(walk.embeddedChart("B2:C3", sheet::chartColumnClustered, sheet::plotByColumns));
  walk.expectAssignable(shapesOf(walk).at(0), "Shape",
                        {{member::Top, {100.0, 31.5}},
                         {member::Height, {250.0, 200.0}},
                         {member::Width, {400.0, 350.0}},
                         {member::Left, {0.0, 240.75}}});
  // The place and the size are independent of each other.
  walk.expectShown(shapesOf(walk).at(0), member::Top, Variant(31.5));
  walk.expectShown(shapesOf(walk).at(0), member::Height, Variant(200.0));
  walk.expectShown(shapesOf(walk).at(0), member::Width, Variant(350.0));
}

void aShapeCanBePlacedAtACell(Walk& walk) {
  static_cast<void>(walk.embeddedChart("B2:C3", sheet::chartColumnClustered, sheet::plotByColumns));
  const sheet::Range cell = walk.range("H20");
  const sheet::Shape shape = shapesOf(walk).at(0);
  shape.Left(cell.Left());
  shape.Top(cell.Top());
  walk.expectShown(shape, member::Left, Variant(cell.Left()));
  walk.expectShown(shape, member::Top, Variant(cell.Top()));
}

void placesAreThereAfterTheFileIsOpenedAgain(Walk& walk) {
  static_cast<void>(walk.embeddedChart("B2:C3", sheet::chartColumnClustered, sheet::plotByColumns));
  const sheet::Shape shape = shapesOf(walk).at(0);
  shape.Left(240.75);
  shape.Top(31.5);
  walk.host().reopen();
  ASSERT_EQ(shapesOf(walk).size(), 1U);
  walk.expectShown(shapesOf(walk)[0], member::Left, Variant(240.75));
  walk.expectShown(shapesOf(walk)[0], member::Top, Variant(31.5));
  walk.expectShown(shapesOf(walk)[0], member::Width, Variant(350.0));
  walk.expectShown(shapesOf(walk)[0], member::Height, Variant(200.0));
}

void deletedChartsAreNoShapesAnyMore(Walk& walk) {
  static_cast<void>(walk.embeddedChart("B2:C3", sheet::chartColumnClustered, sheet::plotByColumns));
  sheet::forEach<sheet::ChartObject>(walk.activeSheet().ChartObjects(),
                                     [](const sheet::ChartObject& chart) { chart.Delete(); });
  EXPECT_TRUE(shapesOf(walk).empty());
}

}  // namespace

std::vector<ConformanceCheck> shapeChecks() {
  return {
      {"EveryChartIsAShapeThatLeadsToIt", everyChartIsAShapeThatLeadsToIt},
      {"AShapeIsPlacedAndSizedInPoints", aShapeIsPlacedAndSizedInPoints},
      {"AShapeCanBePlacedAtACell", aShapeCanBePlacedAtACell},
      {"PlacesAreThereAfterTheFileIsOpenedAgain", placesAreThereAfterTheFileIsOpenedAgain, true},
      {"DeletedChartsAreNoShapesAnyMore", deletedChartsAreNoShapesAnyMore},
  };
}

}  // namespace mervane::tests
