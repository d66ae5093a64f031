#include "hosts/book/formula_references.h"

#include <gtest/gtest.h>

#include <string>

namespace mervane::hosts {
namespace {

/// The references as they stand in the formula, each with its sheet in brackets and the area that it reaches.
std::string story(std::string_view formula) {
  std::string text;
  for (const FormulaReference& one : referencesIn(formula)) {
    if (!text.empty()) text += "; ";
    if (!one.sheet.empty()) text += "<" + std::string(one.sheet) + "> ";
    text += formula.substr(one.begin, one.length);
  }
  return text;
}

TEST(FormulaReferences, AreCellsPairsWholeColumnsAndWholeRows) {
  EXPECT_EQ(story("A1+$B$2*SUM(C3:D$4)"), "A1; $B$2; C3:D$4");
  EXPECT_EQ(story("SUM(B:B)+SUM($C:XFD)+SUM(3:3,$4:17)"), "B:B; $C:XFD; 3:3; $4:17");
  EXPECT_EQ(story("A1:INDEX(B:B,3)"), "A1; B:B");
  EXPECT_EQ(story("A1#+@B2"), "A1; B2");
}

TEST(FormulaReferences, ComeWithTheirSheets) {
  EXPECT_EQ(story("Data!A1+'My data'!B:B+'It''s'!C3:C4"), "<Data> A1; <'My data'> B:B; <'It''s'> C3:C4");
  EXPECT_EQ(story("SUM(Jan:Dec!B2)+SUM('Jan 1:Dec 1'!B3)"), "<Jan:Dec> B2; <'Jan 1:Dec 1'> B3");
  EXPECT_EQ(story("[1]Data!A1+'[1]My data'!B2+[1]!Name+C3"), "<[1]Data> A1; <'[1]My data'> B2; C3");
  EXPECT_EQ(story("Data!A1:Data!B2+A3:Data!B4"), "<Data> A1; <Data> B2; A3; <Data> B4");
  EXPECT_EQ(story("#REF!A1+#REF!+A2"), "<#REF> A1; A2");
  EXPECT_EQ(story("Größe!A1+Größe"), "<Größe> A1");
}

TEST(FormulaReferences, AreNoTextsNamesFunctionsErrorsNumbersAndTableColumns) {
  EXPECT_EQ(story("\"A1\"&\"say \"\"B2\"\"\"&'A1'!C3"), "<'A1'> C3");
  EXPECT_EQ(story("LOG10(A1)+Tax2020x+name.A1+_A1+R1C1"), "A1");
  EXPECT_EQ(story("IF(#N/A,#DIV/0!,#NAME?)+#REF!&\"B2\""), "");
  EXPECT_EQ(story("1E5+0.5+2020:XFE1+ABCD:ABCD"), "");
  EXPECT_EQ(story("Table1[[#This Row],[A1]]+Table1[@[B'[2]]+Table1[[A]:[C]]+A1"), "A1");
  EXPECT_EQ(story("SUM(Data!Prices,Prices)"), "");
}

TEST(FormulaReferences, KnowTheRowsAndColumnsThatTheyReach) {
  const auto reach = [](const char* formula) {
    const FormulaReference one = referencesIn(formula).at(0);
    return std::vector<std::int32_t>{one.topRow(), one.leftColumn(), one.bottomRow(), one.rightColumn()};
  };
  EXPECT_EQ(reach("B2"), (std::vector<std::int32_t>{2, 2, 2, 2}));
  EXPECT_EQ(reach("C5:$B$2"), (std::vector<std::int32_t>{2, 2, 5, 3}));
  EXPECT_EQ(reach("C:B"), (std::vector<std::int32_t>{1, 2, 1048576, 3}));
  EXPECT_EQ(reach("7:$3"), (std::vector<std::int32_t>{3, 1, 7, 16384}));
}

TEST(FormulaReferences, OfTextsThatAreNoFormulasEndToo) {
  for (const char* text : {"", "\"", "'", "[", "[[", "A1:", "$", "$:", "#", "!", "'a", "A1!", "1:", ":1", "[']"}) {
    EXPECT_LE(referencesIn(text).size(), 1U) << text;
  }
}

}  // namespace
}  // namespace mervane::hosts
