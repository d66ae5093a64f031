#include "hosts/workbook/formula_grammar.h"

#include <gtest/gtest.h>

#include <string>

namespace mervane::workbook {
namespace {

TEST(FormulaGrammar, TakesWhatSpreadsheetsWrite) {
  for (const char* formula : {"NA()",
                              "A1",
                              "-A1%",
                              "+-+3",
                              "1+2*3^-4",
                              ".5",
                              "2.",
                              "1.5E-3",
                              "$A$1:B$2",
                              "A:C",
                              "1:3",
                              "$1:$3",
                              "SUM(A1:A3 , B2,)",
                              "IF(A1<>\"a \"\"b\"\"\",,#N/A)",
                              "( A1:B2 , C3 ) ",
                              "A1:C3 B2:D4",
                              "Sheet1!A1",
                              "Sheet1:Sheet3!A1",
                              "'My ''own'' sheet'!$A$1",
                              "[1]Sheet1!A1",
                              "[1]!Total",
                              "'[Book 1.xlsx]Sheet 1'!A1",
                              "Table1[[#This Row],[It''s '[it']]]",
                              "[@Column]*2",
                              "SUM(Table1[])",
                              "{1,2;\"}\",TRUE}",
                              "#REF!",
                              "Sheet1!#REF!",
                              "#REF!A1",
                              "A1#",
                              "@A1:A3",
                              "_xlfn.LAMBDA(x,x+1)(2)",
                              "INDEX(A:A,1):INDEX(A:A,2)",
                              "Größe*2",
                              "データ!A1",
                              "Total",
                              "Total of",
                              "TRUE",
                              "\"text\"&A1",
                              "A1\n+\tB1",
                              "\\name_1.x?"}) {
    EXPECT_TRUE(isFormulaText(formula)) << formula;
  }
}

TEST(FormulaGrammar, RefusesTextsThatOnlyBeginLikeAFormula) {
  for (const char* text :
       {"",          " ",       "==",       "== total ===", "> see below", "-- remarks --", "*",
        "1 2",       "12abc",   "Total 12", "A1 \"x\"",     "\"x\" A1",    "\"open",        "'open!A1",
        "'Sheet'A1", "(A1",     "A1)",      "()",           "SUM(A1",      "SUM(A1 B",      "{1,2",
        "Table1[x",  "A1+",     "A1,B1",    "A1;B1",        "?",           ":A1",           "1E+",
        ".",         "Sheet1!", "#",        "\u2192 see",   "a \u2013 b",  "\U0001F600",    "\xFF"}) {
    EXPECT_FALSE(isFormulaText(text)) << text;
  }
}

TEST(FormulaGrammar, NestsAsDeepAsTheApplicationDoesAndNoDeeper) {
  const auto nested = [](std::size_t depth) { return std::string(depth, '(') + "1" + std::string(depth, ')'); };
  EXPECT_TRUE(isFormulaText(nested(63)));
  EXPECT_FALSE(isFormulaText(nested(64)));
  EXPECT_FALSE(isFormulaText(std::string(8000, '(')));
  EXPECT_TRUE(isFormulaText(std::string(8000, '-') + "1"));
}

}  // namespace
}  // namespace mervane::workbook
