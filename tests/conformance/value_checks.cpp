#include "tests/conformance/conformance_checks.h"

namespace mervane::tests {

namespace member = sheet::member;

namespace {

void aValueIsOfTheKindThatItsCellHolds(Walk& walk) {
  EXPECT_EQ(walk.value("B2"), Variant(1.0));
  EXPECT_EQ(walk.value("A2"), Variant("a"));
  EXPECT_EQ(walk.value("E2"), Variant(true));
  EXPECT_EQ(walk.value("E3"), Variant(Date{45000.0}));
  EXPECT_EQ(walk.value("E4"), Variant(ErrorValue{2042}));
  EXPECT_EQ(walk.value("E5"), Variant(11.0)) << "of a formula it is the result";
  EXPECT_EQ(walk.value("E6"), Variant("\xC5\xBDlu\xC5\xA5 \xE8\xA1\xA8"));
  EXPECT_EQ(walk.value("D2"), Variant());
  EXPECT_EQ(walk.value("XFD1048576"), Variant());
}

void whatIsWrittenIsRead(Walk& walk) {
  const auto written = [&](const Variant& value) {
    walk.range("H9").Value(value);
    return walk.value("H9");
  };
  EXPECT_EQ(written(Variant(2.5)), Variant(2.5));
  EXPECT_EQ(written(Variant(-1e300)), Variant(-1e300));
  EXPECT_EQ(written(Variant(std::int32_t{3})), Variant(3.0)) << "a cell holds every number as a double";
  EXPECT_EQ(written(Variant(std::int16_t{-7})), Variant(-7.0));
  EXPECT_EQ(written(Variant("Cluster 1 average")), Variant("Cluster 1 average"));
  EXPECT_EQ(written(Variant("<&> \xE2\x82\xAC")), Variant("<&> \xE2\x82\xAC"));
  EXPECT_EQ(written(Variant(true)), Variant(true));
  EXPECT_EQ(written(Variant(ErrorValue{2042})), Variant(ErrorValue{2042}));
  EXPECT_EQ(written(Variant()), Variant());
}

void writingOneCellChangesNoOther(Walk& walk) {
  const std::vector<Variant> before = walk.values("A1:C3");
  walk.range("B4").Value(Variant(77.0));
  EXPECT_EQ(walk.values("A1:C3"), before);
  EXPECT_EQ(walk.values("A4:C4"), (std::vector<Variant>{Variant("c"), Variant(77.0), Variant(20.0)}));
}

/// Sorting puts the values of the column beside the rows away and back.
void aValueThatWasReadCanBePutBackAsItWas(Walk& walk) {
  for (const char* cell : {"A2", "B2", "D2", "E2", "E3", "E4", "E6"}) {
    SCOPED_TRACE(cell);
    const Variant before = walk.value(cell);
    walk.range(cell).Value(Variant("something else"));
    EXPECT_EQ(walk.value(cell), Variant("something else"));
    walk.range(cell).Value(before);
    EXPECT_EQ(walk.value(cell), before);
  }
}

void textThatBeginsWithAnEqualsSignIsAFormula(Walk& walk) {
  walk.range("H9").Value(Variant("=NA()"));
  EXPECT_EQ(walk.value("H9"), Variant(ErrorValue{2042}));
  EXPECT_EQ(walk.shown(walk.range("H9"), member::Formula), Variant("=NA()"));
}

void theNumberFormatDecidesWhetherANumberIsADate(Walk& walk) {
  const sheet::Range cell = walk.range("H9");
  cell.Value(Variant(45000.0));
  EXPECT_EQ(cell.Value(), Variant(45000.0));
  cell.NumberFormat("yyyy\\-mm\\-dd");
  EXPECT_EQ(cell.Value(), Variant(Date{45000.0}));
  cell.NumberFormat("0.00%");
  EXPECT_EQ(cell.Value(), Variant(45000.0));
  EXPECT_EQ(walk.shown(cell, member::NumberFormat), Variant("0.00%"));
}

void whatWasWrittenIsThereAfterTheFileIsOpenedAgain(Walk& walk) {
  walk.range("H9").Value(Variant(2.5));
  walk.range("H10").Value(Variant("Cluster <1> & more"));
  walk.range("H11").Value(Variant("=NA()"));
  walk.range("H9").NumberFormat("0.00%");
  walk.range("H9").Interior().ColorIndex(36);
  walk.range("H9").Font().Bold(true);
  walk.host().reopen();
  EXPECT_EQ(walk.value("H9"), Variant(2.5));
  EXPECT_EQ(walk.value("H10"), Variant("Cluster <1> & more"));
  EXPECT_EQ(walk.value("H11"), Variant(ErrorValue{2042}));
  EXPECT_EQ(walk.value("E3"), Variant(Date{45000.0}));
  walk.expectShown(walk.range("H9"), member::NumberFormat, Variant("0.00%"));
  walk.expectShown(walk.range("H9").Interior(), member::ColorIndex, Variant(36));
  walk.expectShown(walk.range("H9").Font(), member::Bold, Variant(true));
  walk.expectShown(walk.range("H10").Font(), member::Bold, Variant(false));
}

}  // namespace

std::vector<ConformanceCheck> valueChecks() {
  return {
      {"AValueIsOfTheKindThatItsCellHolds", aValueIsOfTheKindThatItsCellHolds},
      {"WhatIsWrittenIsRead", whatIsWrittenIsRead},
      {"WritingOneCellChangesNoOther", writingOneCellChangesNoOther},
      {"AValueThatWasReadCanBePutBackAsItWas", aValueThatWasReadCanBePutBackAsItWas},
      {"TextThatBeginsWithAnEqualsSignIsAFormula", textThatBeginsWithAnEqualsSignIsAFormula},
      {"TheNumberFormatDecidesWhetherANumberIsADate", theNumberFormatDecidesWhetherANumberIsADate},
      {"WhatWasWrittenIsThereAfterTheFileIsOpenedAgain", whatWasWrittenIsThereAfterTheFileIsOpenedAgain, true},
  };
}

}  // namespace mervane::tests
