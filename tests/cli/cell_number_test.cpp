#include "cli/cell_number.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace mervane::cli {
namespace {

struct KindCase {
  const char* cell;
  CellKind kind;
};

TEST(KindOfCell, TellsNumbersFromText) {
  for (const KindCase& one : {KindCase{"", CellKind::empty},
                              {"  \t", CellKind::empty},
                              {"5", CellKind::integer},
                              {"-5", CellKind::integer},
                              {"+5", CellKind::integer},
                              {" 5 ", CellKind::integer},
                              {"007", CellKind::integer},
                              {"5e3", CellKind::integer},
                              {"5E-3", CellKind::integer},
                              {"5.", CellKind::withPoint},
                              {".5", CellKind::withPoint},
                              {"1.234", CellKind::withPoint},
                              {"5,5", CellKind::withComma},
                              {"1,2345", CellKind::withComma},
                              {"0,123", CellKind::withComma},
                              {"1234,567", CellKind::withComma},
                              {"1,234e5", CellKind::withComma},
                              {",123", CellKind::withComma},
                              {"1,234", CellKind::withGroupOrComma},
                              {"-123,456", CellKind::withGroupOrComma},
                              {"1,234,567", CellKind::text},
                              {"1,234.5", CellKind::text},
                              {"1.5.2", CellKind::text},
                              {"x", CellKind::text},
                              {"5 x", CellKind::text},
                              {"5 000", CellKind::text},
                              {".", CellKind::text},
                              {"-", CellKind::text},
                              {"--5", CellKind::text},
                              {"e5", CellKind::text},
                              {"5e", CellKind::text},
                              {"5e+", CellKind::text},
                              {"5e1.5", CellKind::text},
                              {"nan", CellKind::text},
                              {"inf", CellKind::text},
                              {"0x10", CellKind::text},
                              {"$5", CellKind::text},
                              {"5%", CellKind::text}}) {
    EXPECT_EQ(kindOfCell(one.cell), one.kind) << '"' << one.cell << '"';
  }
}

double pointNumber(std::string_view cell) {
  const CellNumber number = numberOfCell(cell, DecimalMark::point);
  EXPECT_EQ(number.outcome, CellNumber::Outcome::number) << cell;
  return number.value;
}

TEST(NumberOfCell, ReadsTheNearestDouble) {
  EXPECT_EQ(pointNumber("0.1"), 0.1);
  EXPECT_EQ(pointNumber(" +2.5 "), 2.5);
  EXPECT_EQ(pointNumber("5."), 5.0);
  EXPECT_EQ(pointNumber("-.5e1"), -5.0);
  EXPECT_EQ(pointNumber("9007199254740993"), 9007199254740992.0);
  EXPECT_EQ(pointNumber("1.7976931348623157e308"), std::numeric_limits<double>::max());
  EXPECT_TRUE(std::signbit(pointNumber("-0")));
}

TEST(NumberOfCell, TakesTheMarkThatIsAskedForAndNoOther) {
  EXPECT_EQ(numberOfCell("1,234", DecimalMark::comma).value, 1.234);
  EXPECT_EQ(numberOfCell("-1,5e2", DecimalMark::comma).value, -150.0);
  EXPECT_EQ(numberOfCell("1,5", DecimalMark::point).outcome, CellNumber::Outcome::notNumber);
  EXPECT_EQ(numberOfCell("1.5", DecimalMark::comma).outcome, CellNumber::Outcome::notNumber);
  EXPECT_EQ(numberOfCell("15", DecimalMark::comma).value, 15.0);
}

TEST(NumberOfCell, RefusesTextAndEmptyCells) {
  EXPECT_EQ(numberOfCell("x", DecimalMark::point).outcome, CellNumber::Outcome::notNumber);
  EXPECT_EQ(numberOfCell("", DecimalMark::point).outcome, CellNumber::Outcome::notNumber);
}

TEST(NumberOfCell, TellsTooLargeFromTooSmall) {
  for (const char* large : {"1e309", "-1e999", "1e99999999999999999999", "9e308"}) {
    EXPECT_EQ(numberOfCell(large, DecimalMark::point).outcome, CellNumber::Outcome::outOfRange) << large;
  }
  for (const char* small : {"1e-400", "1e-99999999999999999999", "0.000e-999", "0e999"}) {
    EXPECT_EQ(pointNumber(small), 0.0) << small;
  }
  EXPECT_TRUE(std::signbit(pointNumber("-1e-400")));
  const std::string longWhole = "1" + std::string(400, '0');
  EXPECT_EQ(numberOfCell(longWhole, DecimalMark::point).outcome, CellNumber::Outcome::outOfRange);
  EXPECT_EQ(pointNumber(longWhole + "e-400"), 1.0);
  EXPECT_EQ(pointNumber("0." + std::string(400, '0') + "1"), 0.0);
  EXPECT_EQ(numberOfCell("1" + std::string(800, '0') + "e-100", DecimalMark::point).outcome,
            CellNumber::Outcome::outOfRange);
}

TEST(IsJsonNumber, FollowsTheGrammarOfJson) {
  for (const char* yes : {"0", "-0", "5", "-12.50", "0.5", "1e5", "1E+5", "1.5e-7"})
    EXPECT_TRUE(isJsonNumber(yes)) << yes;
  for (const char* no : {"", "+5", "05", "-05", "5.", ".5", "5,5", " 5", "5 ", "x", "1e", "-"}) {
    EXPECT_FALSE(isJsonNumber(no)) << no;
  }
}

}  // namespace
}  // namespace mervane::cli
