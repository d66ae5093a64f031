#include "tests/conformance/conformance_checks.h"

namespace mervane::tests {

namespace {

void indexesCountFromTheRangeAndMayLieOutsideOfIt(Walk& walk) {
  const sheet::Range range = walk.range("B3:C4");
  EXPECT_EQ(range.Cells(1, 1).Value(), Variant(9.0));
  EXPECT_EQ(range.Item(1, 1).Value(), Variant(9.0));
  EXPECT_EQ(range.Cells(0, 1).Value(), Variant(1.0));
  EXPECT_EQ(range.Item(0, 0).Value(), Variant("a"));
  EXPECT_EQ(range.Cells(4, 2).Value(), Variant(50.0));
  EXPECT_EQ(range.Item(2, 3).Value(), Variant());
  EXPECT_EQ(range.Cells(-1, 1).Value(), Variant("Length"));
}

void indexesOffTheSheetAreRefused(Walk& walk) {
  const sheet::Range first = walk.range("A1");
  expectRefusal([&] { static_cast<void>(first.Cells(0, 1)); });
  expectRefusal([&] { static_cast<void>(first.Cells(1, 0)); });
  expectRefusal([&] { static_cast<void>(first.Item(0, 1)); });
  expectRefusal([&] { static_cast<void>(first.Item(2000000000, 1)); });
  expectRefusal([&] { static_cast<void>(first.Item(1, 2000000000)); });
}

void cellsAreEnumeratedRowByRow(Walk& walk) {
  EXPECT_EQ(walk.values("A2:B3"), (std::vector<Variant>{Variant("a"), Variant(1.0), Variant("b"), Variant(9.0)}));
  std::size_t cells = 0;
  sheet::forEach<sheet::Range>(walk.range("B2:C3"), [&](const sheet::Range& cell) {
    EXPECT_EQ(cell.Rows().Count(), 1);
    EXPECT_EQ(cell.Columns().Count(), 1);
    ++cells;
  });
  EXPECT_EQ(cells, 4U);
}

void anEnumeratorAnswersNothingBehindTheLastElement(Walk& walk) {
  const sheet::Enumerator<sheet::Range> cells(walk.range("B2").Cells());
  EXPECT_TRUE(cells.next());
  EXPECT_FALSE(cells.next());
  EXPECT_FALSE(cells.next());
}

void rowsAndColumnsAreCounted(Walk& walk) {
  EXPECT_EQ(walk.range("B2:D6").Rows().Count(), 5);
  EXPECT_EQ(walk.range("B2:D6").Columns().Count(), 3);
  EXPECT_EQ(walk.range("A1:A65535").Rows().Count(), 65535);
  EXPECT_EQ(walk.range("B2").Rows().Count(), 1);
}

void columnsAreEnumeratedAsRangesOfOneColumn(Walk& walk) {
  std::vector<std::int32_t> columns;
  std::vector<Variant> firsts;
  sheet::forEach<sheet::Range>(walk.range("B2:C6").Columns(), [&](const sheet::Range& column) {
    EXPECT_EQ(column.Rows().Count(), 5);
    EXPECT_EQ(column.Columns().Count(), 1);
    columns.push_back(column.Column());
    const sheet::Enumerator<sheet::Range> cells(column.Cells());
    firsts.push_back(cells.next().Value());
    EXPECT_EQ(cells.next().Column(), columns.back());
  });
  EXPECT_EQ(columns, (std::vector<std::int32_t>{2, 3}));
  EXPECT_EQ(firsts, (std::vector<Variant>{Variant(1.0), Variant(10.0)}));
}

void oneColumnOfARangeIsARangeOfItsRows(Walk& walk) {
  const sheet::Range column = walk.range("B2:C6").Columns(2);
  EXPECT_EQ(column.Column(), 3);
  EXPECT_EQ(column.Rows().Count(), 5);
  EXPECT_EQ(column.Columns().Count(), 1);
  EXPECT_EQ(column.Item(5, 1).Value(), Variant(50.0));
}

void theColumnNumberIsTheSheets(Walk& walk) {
  EXPECT_EQ(walk.range("A1:C3").Column(), 1);
  EXPECT_EQ(walk.range("AB7").Column(), 28);
}

void offsetKeepsTheSizeAndResizeTheCorner(Walk& walk) {
  const sheet::Range moved = walk.range("A1:B2").Offset(1, 1);
  EXPECT_EQ(moved.Column(), 2);
  EXPECT_EQ(moved.Rows().Count(), 2);
  EXPECT_EQ(moved.Columns().Count(), 2);
  EXPECT_EQ(moved.Item(1, 1).Value(), Variant(1.0));
  EXPECT_EQ(moved.Offset(-1, 0).Item(1, 1).Value(), Variant("Length"));
  const sheet::Range resized = walk.range("B2").Resize(5, 2);
  EXPECT_EQ(resized.Rows().Count(), 5);
  EXPECT_EQ(resized.Columns().Count(), 2);
  EXPECT_EQ(resized.Item(5, 2).Value(), Variant(50.0));
  EXPECT_EQ(walk.range("B2:C6").Resize(1, 1).Value(), Variant(1.0));
}

void aRangeDoesNotLeaveTheSheet(Walk& walk) {
  const sheet::Range upper = walk.range("B1");
  const sheet::Range left = walk.range("A2:B3");
  const sheet::Range last = walk.range("XFD1048576");
  expectRefusal([&] { static_cast<void>(upper.Offset(-1, 0)); });
  expectRefusal([&] { static_cast<void>(left.Offset(0, -1)); });
  expectRefusal([&] { static_cast<void>(last.Offset(1, 0)); });
  expectRefusal([&] { static_cast<void>(last.Resize(1, 2)); });
  expectRefusal([&] { static_cast<void>(upper.Resize(0, 1)); });
  expectRefusal([&] { static_cast<void>(upper.Resize(1, -1)); });
  expectRefusal([&] { static_cast<void>(upper.Resize(2000000000, 1)); });
}

void aRangeKnowsItsSheet(Walk& walk) {
  EXPECT_EQ(walk.range("B2").Worksheet().Name(), "Sheet1");
  EXPECT_EQ(walk.range("B2").Offset(1, 0).Worksheet().Name(), "Sheet1");
}

void placesInPointsAddUp(Walk& walk) {
  const sheet::Range c4 = walk.range("C4");
  EXPECT_NEAR(walk.range("A1").Left(), 0.0, walk.tolerance());
  EXPECT_NEAR(walk.range("A1").Top(), 0.0, walk.tolerance());
  EXPECT_GT(c4.Width(), 10.0);
  EXPECT_GT(c4.Top(), 3 * 5.0);
  EXPECT_NEAR(c4.Left(), walk.range("A1:B1").Width(), walk.tolerance());
  EXPECT_NEAR(walk.range("D4").Left(), c4.Left() + c4.Width(), walk.tolerance());
  EXPECT_NEAR(walk.range("A5").Top() - walk.range("A4").Top(), walk.range("A4").Top() - walk.range("A3").Top(),
              walk.tolerance());
}

}  // namespace

std::vector<ConformanceCheck> rangeChecks() {
  return {
      {"IndexesCountFromTheRangeAndMayLieOutsideOfIt", indexesCountFromTheRangeAndMayLieOutsideOfIt},
      {"IndexesOffTheSheetAreRefused", indexesOffTheSheetAreRefused},
      {"CellsAreEnumeratedRowByRow", cellsAreEnumeratedRowByRow},
      {"AnEnumeratorAnswersNothingBehindTheLastElement", anEnumeratorAnswersNothingBehindTheLastElement},
      {"RowsAndColumnsAreCounted", rowsAndColumnsAreCounted},
      {"ColumnsAreEnumeratedAsRangesOfOneColumn", columnsAreEnumeratedAsRangesOfOneColumn},
      {"OneColumnOfARangeIsARangeOfItsRows", oneColumnOfARangeIsARangeOfItsRows},
      {"TheColumnNumberIsTheSheets", theColumnNumberIsTheSheets},
      {"OffsetKeepsTheSizeAndResizeTheCorner", offsetKeepsTheSizeAndResizeTheCorner},
      {"ARangeDoesNotLeaveTheSheet", aRangeDoesNotLeaveTheSheet},
      {"ARangeKnowsItsSheet", aRangeKnowsItsSheet},
      {"PlacesInPointsAddUp", placesInPointsAddUp},
  };
}

}  // namespace mervane::tests
