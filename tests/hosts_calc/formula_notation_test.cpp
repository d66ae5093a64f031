#include "hosts/calc/formula_notation.h"

#include <gtest/gtest.h>

namespace mervane::calc {
namespace {

std::string marked(std::string_view formula) {
  return withMarkedSheets(formula, [](std::string_view name) { return name == "Data" || name == "Größe"; });
}

TEST(FormulaNotation, SheetsAreMarkedAsInFiles) {
  EXPECT_EQ(marked("$Data.B2+Data.$C$3:D4"), "Data!B2+Data!$C$3:D4");
  EXPECT_EQ(marked("SUM($'My data'.A:A;$'It''s. 2'.3:3)"), "SUM('My data'!A:A;'It''s. 2'!3:3)");
  EXPECT_EQ(marked("$Größe.A1"), "Größe!A1");
  EXPECT_EQ(marked("'file:///a.b/c.ods'#$Data.B2+'file:///d.ods'#$Else.C3+Data.B4"), "[0]Data!B2+[0]Else!C3+Data!B4");
}

TEST(FormulaNotation, AllElseStays) {
  for (const char* formula : {"B2+$B$2*SUM(C3:D$4)", "\"Data.B2\"&\"say \"\"Data.B2\"\"\"", "tax.rate*B2+Other.name",
                              "COM.SUN.STAR(B2)+1.5+.5", "SUM(B:B;2:2)", "", "$", "'", "\"", "#REF!+Data.", "a'b"}) {
    EXPECT_EQ(marked(formula), formula == std::string("#REF!+Data.") ? "#REF!+Data!" : formula);
  }
}

}  // namespace
}  // namespace mervane::calc
