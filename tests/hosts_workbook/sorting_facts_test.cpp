#include <gtest/gtest.h>

#include "fixture.h"

namespace mervane::workbook::tests {
namespace {

std::string cellXml(const std::string& place, const std::string& formula) {
  return "<c r=\"" + place + "\"><f>" + formula + "</f><v>0</v></c>";
}

/// The rows 2 to 5 of "Data" with a formula in column A and numbers in B and C, so that D is borrowed; more cells in
/// row 1 and row 9, and a second sheet.
struct Made {
  std::string onRows = "B{r}*2";  ///< with {r} for the row
  std::string above = {};         ///< whole cells of row 1
  std::string right = {};         ///< the formula in column E of row 3
  std::string borrowed = {};      ///< the same in column D
  std::string below = {};         ///< the formula in A9
  std::string otherSheet = {};    ///< the formula in A1 of "Other"
  std::string names = {};         ///< the <definedName> elements
  std::string otherPart = {};     ///< instead of the whole part of "Other"
  std::string hidden = {};        ///< attributes of row 4

  [[nodiscard]] Parts parts() const {
    BookText text;
    text.sheet = "<sheetData><row r=\"1\">" + above + "</row>";
    for (const std::string row : {"2", "3", "4", "5"}) {
      std::string formula = onRows;
      for (std::size_t at = formula.find("{r}"); at != std::string::npos; at = formula.find("{r}")) {
        formula.replace(at, 3, row);
      }
      text.sheet += "<row r=\"" + row + "\"" + (row == "4" ? hidden : "") + ">" +
                    (formula.empty() ? "" : cellXml("A" + row, formula)) + "<c r=\"B" + row +
                    "\"><v>1</v></c><c r=\"C" + row + "\"><v>1</v></c>";
      if (row == "3" && !borrowed.empty()) text.sheet += cellXml("D3", borrowed);
      if (row == "3" && !right.empty()) text.sheet += cellXml("E3", right);
      text.sheet += "</row>";
    }
    if (!below.empty()) text.sheet += "<row r=\"9\">" + cellXml("A9", below) + "</row>";
    text.sheet += "</sheetData>";
    text.workbookRelations =
        "<Relationship Id=\"rId9\" "
        "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/worksheet\" "
        "Target=\"worksheets/sheet2.xml\"/>";
    const std::string other = otherSheet.empty() ? "" : "<row r=\"1\">" + cellXml("A1", otherSheet) + "</row>";
    text.more.emplace_back("xl/worksheets/sheet2.xml",
                           !otherPart.empty()
                               ? otherPart
                               : "<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/"
                                 "main\"><sheetData>" +
                                     other + "</sheetData></worksheet>");
    if (!names.empty()) text.workbookExtra = "<definedNames>" + names + "</definedNames>";
    Parts parts = text.parts();
    for (auto& [name, content] : parts) {
      if (name != "xl/workbook.xml") continue;
      content.insert(content.find("</sheets>"), "<sheet name=\"Other\" sheetId=\"2\" r:id=\"rId9\"/>");
    }
    return parts;
  }
  [[nodiscard]] guard::SortingFacts facts() const {
    OpenBook book(parts());
    return book.host().sortingFacts("Data", {2, 1, 5, 4});
  }
};

std::int64_t moved(const std::string& formula) {
  return Made{.onRows = formula}.facts().moved.count;
}

TEST(SortingFacts, FormulasThatKeepToTheirRowOrNameAllRowsOrNoneMoveUnharmed) {
  for (const char* formula :
       {"B{r}*2", "SUM(B{r}:C{r})", "B{r}/SUM(B$2:B$5)", "B{r}/SUM(B$1:C$9)", "SUM(B:B)", "B$1*B$9", "SUM({r}:{r})",
        "Data!B{r}", "Other!B3+Other!B{r}", "SUM($E$3:$E$4)", "Table1[[#This Row],[x]]", "[1]Data!B3"}) {
    EXPECT_EQ(moved(formula), 0) << formula;
  }
}

TEST(SortingFacts, FormulasThatNameCellsOfOtherRowsComeApart) {
  for (const char* formula : {"B3*2+B{r}", "SUM(B$2:B{r})", "SUM(B{r}:B$5)", "SUM(B2:B5)", "B$3", "$B$5",
                              "SUM(B$2:B$4)", "B1", "SUM(3:3)", "SUM($3:$3)", "Data!$B$3", "'Data'!B3"}) {
    EXPECT_GE(moved(formula), 3) << formula;
  }
}

TEST(SortingFacts, ATotalThatRunsComesApartOnTheRowWhereItBeginsToo) {
  EXPECT_EQ(moved("SUM(B$2:B{r})"), 4);
  EXPECT_EQ(moved("SUM(B{r}:B$5)"), 4);
  EXPECT_EQ(moved("B3*2+B{r}"), 3) << "on row 3 it names its own row";
}

TEST(SortingFacts, TheFirstFormulasAreNamedAndTheRestAreCounted) {
  const guard::SortingFacts facts = Made{.onRows = "B{r}-$B$2"}.facts();
  EXPECT_EQ(facts.moved.count, 4);
  ASSERT_EQ(facts.moved.first.size(), 3U);
  EXPECT_EQ(facts.moved.first[0].place, "Data!A2");
  EXPECT_EQ(facts.moved.first[0].text, "=B2-$B$2");
  EXPECT_EQ(facts.outside.count, 0);
}

TEST(SortingFacts, FormulasFromOutsideThatNameSomeOfTheRowsAreHarmed) {
  for (const char* formula : {"Data!B3", "SUM(Data!B2:B4)", "SUM('Data'!A:A 3:3)+Data!A5", "SUM(Data:Other!C5)"}) {
    const guard::SortingFacts facts = Made{.otherSheet = formula}.facts();
    ASSERT_EQ(facts.outside.count, 1) << formula;
    EXPECT_EQ(facts.outside.first[0].place, "Other!A1");
    EXPECT_EQ(facts.outside.first[0].text, "=" + std::string(formula));
    EXPECT_EQ(facts.moved.count, 0);
  }
  EXPECT_EQ(Made{.below = "SUM(B2:B4)"}.facts().outside.count, 1);
  EXPECT_EQ(Made{.above = cellXml("A1", "B5")}.facts().outside.count, 1);
  EXPECT_EQ(Made{.right = "B3-B2"}.facts().outside.count, 1);
}

TEST(SortingFacts, FormulasFromOutsideThatNameAllRowsOrNoneOrTheirOwnRowAreNot) {
  for (const char* formula :
       {"SUM(Data!B2:B5)", "SUM(Data!B:B)", "Data!B1", "Data!D3", "B3", "SUM(Other!B3)", "[1]Data!B3", "\"Data!B3\""}) {
    EXPECT_EQ(Made{.otherSheet = formula}.facts().outside.count, 0) << formula;
  }
  EXPECT_EQ(Made{.below = "SUM(B1:B8)+B1"}.facts().outside.count, 0);
  EXPECT_EQ(Made{.right = "B3+$C$3"}.facts().outside.count, 0);
}

TEST(SortingFacts, FormulasOfTheBorrowedColumnBecomeValuesAndDoNotCount) {
  EXPECT_EQ(Made{.borrowed = "B2+B3"}.facts().outside.count, 0);
}

TEST(SortingFacts, NamesOfSomeOfTheRowsAreHarmed) {
  const guard::SortingFacts facts =
      Made{.names =
               "<definedName name=\"Best\">Data!$B$3</definedName>"
               "<definedName name=\"All\">Data!$A$2:$C$5</definedName>"
               "<definedName name=\"Beside\">Data!B3</definedName><definedName name=\"Rate\">1.5</definedName>"
               "<definedName name=\"_xlnm.Print_Area\" localSheetId=\"0\">Data!$A$1:$C$3</definedName>"
               "<definedName name=\"Elsewhere\">Other!$B$3</definedName>"}
          .facts();
  ASSERT_EQ(facts.outside.count, 1);
  EXPECT_EQ(facts.outside.first[0].place, "the name Best");
  EXPECT_EQ(facts.outside.first[0].text, "=Data!$B$3");
}

TEST(SortingFacts, SharedFormulasAreLookedAtMemberByMember) {
  Made made;
  made.above =
      "<c r=\"F1\"><f t=\"shared\" ref=\"F1:H1\" si=\"0\">SUM(A2:A4)</f><v>0</v></c><c r=\"G1\"><f t=\"shared\" "
      "si=\"0\"/><v>0</v></c><c r=\"H1\"><f t=\"shared\" si=\"0\"/><v>0</v></c><c r=\"I1\"><f t=\"shared\" "
      "si=\"0\"/><v>0</v></c>";
  EXPECT_EQ(made.facts().outside.count, 3) << "the fourth names the borrowed column alone";
}

TEST(SortingFacts, AnotherSheetThatIsDamagedIsNoneOfTheSortsBusiness) {
  EXPECT_EQ(Made{.otherPart = "<worksheet>!"}.facts().outside.count, 0);
}

TEST(SortingFacts, TheFirstHiddenRowIsTold) {
  EXPECT_EQ(Made{}.facts().hiddenRow, std::nullopt);
  EXPECT_EQ(Made{.hidden = " hidden=\"1\""}.facts().hiddenRow, 4);
  EXPECT_EQ(Made{.hidden = " ht=\"0\" customHeight=\"1\""}.facts().hiddenRow, 4);
}

}  // namespace
}  // namespace mervane::workbook::tests
