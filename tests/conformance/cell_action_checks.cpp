#include "tests/conformance/conformance_checks.h"

namespace mervane::tests {

namespace {

/// Values of a column in their order.
std::vector<Variant> texts(const std::vector<const char*>& list) {
  return {list.begin(), list.end()};
}

void sortMovesWholeRowsTheFirstIncluded(Walk& walk) {
  const sheet::Range rows = walk.range("A2:B6");
  rows.Sort(rows.Columns(2), sheet::ascending);
  EXPECT_EQ(walk.values("A2:A6"), texts({"a", "c", "e", "d", "b"}));
  EXPECT_EQ(walk.values("B2:B6"),
            (std::vector<Variant>{Variant(1.0), Variant(2.0), Variant(5.0), Variant(8.0), Variant(9.0)}));
  EXPECT_EQ(walk.values("C2:C6"),
            (std::vector<Variant>{Variant(10.0), Variant(90.0), Variant(20.0), Variant(80.0), Variant(50.0)}))
      << "outside of the sorted cells nothing moves";
  EXPECT_EQ(walk.value("A1"), Variant("Name"));
}

void sortTakesAFirstRowOfTextsForDataToo(Walk& walk) {
  const sheet::Range rows = walk.range("A1:B6");
  rows.Sort(rows.Columns(2), sheet::ascending);
  EXPECT_EQ(walk.values("A1:A6"), texts({"a", "c", "e", "d", "b", "Name"})) << "numbers come before texts";
}

void sortKeepsTheOrderOfRowsWithEqualKeys(Walk& walk) {
  const double keys[] = {2.0, 1.0, 2.0, 1.0, 2.0};
  for (std::int32_t row = 0; row < 5; ++row) walk.range("B2").Item(row + 1, 1).Value(Variant(keys[row]));
  const sheet::Range rows = walk.range("A2:B6");
  rows.Sort(rows.Columns(2), sheet::ascending);
  EXPECT_EQ(walk.values("A2:A6"), texts({"b", "d", "a", "c", "e"}));
}

void sortPutsEmptyCellsLast(Walk& walk) {
  walk.range("B3").Value(Variant());
  walk.range("B2").Value(Variant("text"));
  const sheet::Range rows = walk.range("A2:B6");
  rows.Sort(rows.Columns(2), sheet::ascending);
  EXPECT_EQ(walk.values("A2:A6"), texts({"c", "e", "d", "a", "b"}));
}

void sortCarriesTheValuesOfEveryKindAlong(Walk& walk) {
  walk.range("F2").Value(Variant(3.0));
  walk.range("F3").Value(Variant(2.0));
  walk.range("F4").Value(Variant(1.0));
  const sheet::Range rows = walk.range("E2:F4");
  rows.Sort(rows.Columns(2), sheet::ascending);
  EXPECT_EQ(walk.values("E2:E4"),
            (std::vector<Variant>{Variant(ErrorValue{2042}), Variant(Date{45000.0}), Variant(true)}));
}

void autoFilterSwitchesTheArrowsOnAndOff(Walk& walk) {
  EXPECT_FALSE(walk.activeSheet().AutoFilterMode());
  walk.range("B1").AutoFilter();
  EXPECT_TRUE(walk.activeSheet().AutoFilterMode());
  walk.range("B1").AutoFilter();
  EXPECT_FALSE(walk.activeSheet().AutoFilterMode());
  EXPECT_EQ(walk.value("B1"), Variant("Length")) << "the cells stay as they are";
}

void autoFitMakesTheColumnsAsWideAsTheirTexts(Walk& walk) {
  const sheet::Range columns = walk.range("G2:H3");
  walk.range("G2").Value(Variant("A text that is much longer than any column is wide"));
  const double before = walk.range("G1").Width();
  const double other = walk.range("I1").Width();
  columns.Columns().EntireColumn().AutoFit();
  const double fitted = walk.range("G1").Width();
  EXPECT_GT(fitted, before + 50.0);
  EXPECT_LT(fitted, before + 800.0);
  EXPECT_NEAR(walk.range("I1").Width(), other, walk.tolerance());
  walk.range("G2").Value(Variant("short"));
  columns.Columns().EntireColumn().AutoFit();
  EXPECT_LT(walk.range("G1").Width(), fitted - 50.0);
}

void theEntireColumnsOfARangeReachDownTheSheet(Walk& walk) {
  const sheet::Range columns = walk.range("B2:C3").Columns().EntireColumn();
  EXPECT_EQ(columns.Column(), 2);
  EXPECT_EQ(columns.Columns().Count(), 2);
  EXPECT_GE(columns.Rows().Count(), 65536);
}

void selectPutsTheSelectionOnTheCells(Walk& walk) {
  walk.range("C3").Select();
  EXPECT_EQ(walk.host().selection(), "C3");
  walk.range("B2:C4").Select();
  EXPECT_EQ(walk.host().selection(), "B2:C4");
}

void selectingOnAnotherSheetIsRefused(Walk& walk) {
  const sheet::Range elsewhere = walk.range("'Second''s'!A1");
  expectRefusal([&] { elsewhere.Select(); });
}

}  // namespace

std::vector<ConformanceCheck> cellActionChecks() {
  return {
      {"SortMovesWholeRowsTheFirstIncluded", sortMovesWholeRowsTheFirstIncluded},
      {"SortTakesAFirstRowOfTextsForDataToo", sortTakesAFirstRowOfTextsForDataToo},
      {"SortKeepsTheOrderOfRowsWithEqualKeys", sortKeepsTheOrderOfRowsWithEqualKeys},
      {"SortPutsEmptyCellsLast", sortPutsEmptyCellsLast},
      {"SortCarriesTheValuesOfEveryKindAlong", sortCarriesTheValuesOfEveryKindAlong},
      {"AutoFilterSwitchesTheArrowsOnAndOff", autoFilterSwitchesTheArrowsOnAndOff},
      {"AutoFitMakesTheColumnsAsWideAsTheirTexts", autoFitMakesTheColumnsAsWideAsTheirTexts},
      {"TheEntireColumnsOfARangeReachDownTheSheet", theEntireColumnsOfARangeReachDownTheSheet},
      {"SelectPutsTheSelectionOnTheCells", selectPutsTheSelectionOnTheCells},
      {"SelectingOnAnotherSheetIsRefused", selectingOnAnotherSheetIsRefused},
  };
}

}  // namespace mervane::tests
