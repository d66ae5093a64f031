#include "cli/csv_dialect.h"

#include <gtest/gtest.h>

namespace mervane::cli {
namespace {

std::optional<char> detected(std::string_view text, bool isWhole = true) {
  return detectDelimiter(text, isWhole, '"');
}

TEST(DetectDelimiter, FindsTheOneThatDividesTheLinesEvenly) {
  EXPECT_EQ(detected("a,b\n1,2\n"), ',');
  EXPECT_EQ(detected("a;b\n1;2\n"), ';');
  EXPECT_EQ(detected("a\tb\n1\t2\n"), '\t');
  EXPECT_EQ(detected("a|b\n1|2\n"), '|');
}

TEST(DetectDelimiter, AColumnAloneIsDividedByNothing) {
  EXPECT_EQ(detected("a\n1\n2\n"), ',');
  EXPECT_EQ(detected("1"), ',');
  EXPECT_EQ(detected(""), ',');
}

TEST(DetectDelimiter, DecimalCommasDoNotCountAgainstTheSemicolon) {
  EXPECT_EQ(detected("1,5;2,5\n3,5;4,5\n"), ';');
  EXPECT_EQ(detected("x;y\n1,5;2,5\n3;4,5\n"), ';');
  EXPECT_EQ(detected("1,5\t2,5\n3,5\t4,5\n"), '\t');
}

TEST(DetectDelimiter, DelimitersInsideQuotesDoNotCount) {
  EXPECT_EQ(detected("name;x\n\"a, b\";1\n\"c, d\";2\n"), ';');
  EXPECT_EQ(detected("name,x\n\"a; b\",1\n\"c; d\",2\n"), ',');
}

TEST(DetectDelimiter, TextWithOtherDelimitersYieldsToColumnsOfNumbers) {
  EXPECT_EQ(detected("Smith; J,5,6\nJones; K,7,8\n"), ',');
}

TEST(DetectDelimiter, IsSilentWhereTwoAreAsGood) {
  EXPECT_EQ(detected("a,b;c\nd,e;f\n"), std::nullopt);
}

TEST(DetectDelimiter, AnUnevenLineStillLeavesTheOnlyOneThatOccurs) {
  EXPECT_EQ(detected("a;b\n1;2;3\n"), ';');
}

TEST(DetectDelimiter, AnUnevenLineWithSeveralLeavesNone) {
  EXPECT_EQ(detected("a;b\n1;2,3,4\n5\n"), std::nullopt);
}

TEST(DetectDelimiter, ACutLastLineDoesNotCount) {
  EXPECT_EQ(detected("a;b;c\n1;2;3\n4;5", false), ';');
  EXPECT_EQ(detected("a;b;c\n1;2;3\n4;\"5", false), ';');
}

TEST(DetectDelimiter, BlankLinesDoNotCount) {
  EXPECT_EQ(detected("a;b\n\n1;2\n\n"), ';');
}

}  // namespace
}  // namespace mervane::cli
