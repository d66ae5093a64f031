#include "hosts/workbook/formula_text.h"

#include <gtest/gtest.h>

namespace mervane::workbook {
namespace {

TEST(MovedFormula, MovesRelativeReferencesAlone) {
  EXPECT_EQ(movedFormula("A1*$B$1+C$2-$D3", 2, 1), "B3*$B$1+D$2-$D5");
  EXPECT_EQ(movedFormula("SUM(A1:B2)&\"A1\"", 1, 0), "SUM(A2:B3)&\"A1\"");
  EXPECT_EQ(movedFormula("'A1'!A1+Sheet2!B2", 1, 1), "'A1'!B2+Sheet2!C3");
  EXPECT_EQ(movedFormula("LOG10(A1)+Tax2020x+name.A1", 1, 0), "LOG10(A2)+Tax2020x+name.A1");
  EXPECT_EQ(movedFormula("Table1[[#This Row],[A1]]+A1", 1, 0), "Table1[[#This Row],[A1]]+A2");
  EXPECT_EQ(movedFormula("A1", -1, 0), "#REF!");
  EXPECT_EQ(movedFormula("1E5+A1", 1, 0), "1E5+A2");
}

TEST(MovedFormula, MovesWholeColumnsAndRows) {
  EXPECT_EQ(movedFormula("SUM(B:B)", 0, 1), "SUM(C:C)");
  EXPECT_EQ(movedFormula("SUM(B:$C)+SUM($D:$D)", 5, 2), "SUM($C:D)+SUM($D:$D)");
  EXPECT_EQ(movedFormula("SUM(3:3)+SUM(4:$6)+SUM($7:$7)", 1, 1), "SUM(4:4)+SUM(5:$6)+SUM($7:$7)");
  EXPECT_EQ(movedFormula("Other!B:B", 0, 1), "Other!C:C");
  EXPECT_EQ(movedFormula("SUM(A:A)+SUM(1:1)", -1, -1), "SUM(#REF!)+SUM(#REF!)");
}

TEST(MovedFormula, CornersThatPassOneAnotherChangePlacesWithTheirMarks) {
  EXPECT_EQ(movedFormula("SUM(B$4:B6)", -4, 0), "SUM(B2:B$4)");
  EXPECT_EQ(movedFormula("SUM($C5:D5)", 0, -2), "SUM(B5:$C5)");
  EXPECT_EQ(movedFormula("SUM($5:6)", -3, 0), "SUM(3:$5)");
}

TEST(MovedFormula, APairOfWhichOneCornerLeavesTheSheetIsLostAsAWhole) {
  EXPECT_EQ(movedFormula("SUM(A1:B2)+Other!A1:A9", -1, 0), "SUM(#REF!)+Other!#REF!");
}

TEST(SortedFormula, RelativeReferencesGoAlongWhateverRowTheyName) {
  EXPECT_EQ(sortedFormula("B2*C2", 5, "Data"), "B7*C7");
  EXPECT_EQ(sortedFormula("SUM(B2:D2)-B1", 5, "Data"), "SUM(B7:D7)-B6");
  EXPECT_EQ(sortedFormula("B2/SUM(B2:B10)", 5, "Data"), "B7/SUM(B7:B15)");
  EXPECT_EQ(sortedFormula("C1+B2", -1, "Data"), "#REF!+B1");
  EXPECT_EQ(sortedFormula("SUM(2:2)", 5, "Data"), "SUM(7:7)");
}

TEST(SortedFormula, MarkedRowsWholeColumnsAndOtherSheetsStay) {
  EXPECT_EQ(sortedFormula("B2*B$2+$C$1+SUM(B:B)", 5, "Data"), "B7*B$2+$C$1+SUM(B:B)");
  EXPECT_EQ(sortedFormula("Other!B2+B2+[1]Data!B3+SUM(Data:Other!B4)", 5, "Data"),
            "Other!B2+B7+[1]Data!B3+SUM(Data:Other!B4)");
}

TEST(SortedFormula, TheOwnSheetMayBeNamed) {
  EXPECT_EQ(sortedFormula("data!B2+Data!C$2:C3", 5, "Data"), "data!B7+Data!C$2:C8");
  EXPECT_EQ(sortedFormula("'It''s'!B2+'Its'!B2", 5, "It's"), "'It''s'!B7+'Its'!B2");
}

TEST(ConstantFormula, KnowsConstantsAndNothingElse) {
  EXPECT_EQ(constantFormula("NA()"), Variant(ErrorValue{2042}));
  EXPECT_EQ(constantFormula("na()"), Variant(ErrorValue{2042}));
  EXPECT_EQ(constantFormula("#DIV/0!"), Variant(ErrorValue{2007}));
  EXPECT_EQ(constantFormula("TRUE"), Variant(true));
  EXPECT_EQ(constantFormula("-2.5"), Variant(-2.5));
  EXPECT_EQ(constantFormula("\"a\"\"b\""), Variant("a\"b"));
  EXPECT_EQ(constantFormula("\"a\"&\"b\""), std::nullopt);
  EXPECT_EQ(constantFormula("A1"), std::nullopt);
  EXPECT_EQ(constantFormula("inf"), std::nullopt);
  EXPECT_EQ(constantFormula("1+1"), std::nullopt);
}

}  // namespace
}  // namespace mervane::workbook
