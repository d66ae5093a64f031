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

TEST(RowMovedFormula, ReferencesToTheOwnRowGoWithIt) {
  EXPECT_EQ(rowMovedFormula("B2*C2", 2, 7), "B7*C7");
  EXPECT_EQ(rowMovedFormula("SUM(B2:D2)", 2, 7), "SUM(B7:D7)");
}

TEST(RowMovedFormula, AllOtherReferencesKeepWhatTheyName) {
  EXPECT_EQ(rowMovedFormula("B2/SUM(B2:B10)", 2, 7), "B7/SUM(B2:B10)");
  EXPECT_EQ(rowMovedFormula("B2*B$2+B1", 2, 7), "B7*B$2+B1");
  EXPECT_EQ(rowMovedFormula("Other!B2+B2", 2, 7), "Other!B2+B7");
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
