#include "cli/table_header.h"

#include <gtest/gtest.h>

#include "tests/cli/table_of.h"

namespace mervane::cli {
namespace {

bool isHeader(std::string_view text) {
  return hasHeader(tableOf(text), std::nullopt);
}

TEST(HasHeader, AWordOverNumbersIsAHeader) {
  EXPECT_TRUE(isHeader("a,b\n1,2\n"));
  EXPECT_TRUE(isHeader("name,height\nanna,1.7\n"));
  EXPECT_TRUE(isHeader(",height\nanna,1.7\n"));
}

TEST(HasHeader, NumbersOverNumbersAreData) {
  EXPECT_FALSE(isHeader("1\n2\n3\n"));
  EXPECT_FALSE(isHeader("5.1,3.5,setosa\n4.9,3.0,setosa\n"));
  EXPECT_FALSE(isHeader("1,2\n"));
}

TEST(HasHeader, WordsThroughoutAreTakenAsAHeader) {
  EXPECT_TRUE(isHeader("a,b\nx,y\n"));
}

TEST(HasHeader, AWordBesideANumberOnTopIsRefused) {
  EXPECT_EQ(refusal([] { static_cast<void>(isHeader("a,1\n2,3\n")); }),
            "1: data.csv, line 1: cannot tell whether this is a header or a row of data: \"a, 1\" / Say --header or "
            "--no-header.");
}

TEST(HasHeader, AWordForAMissingValueIsNoLabel) {
  EXPECT_FALSE(isHeader("n/a,1\n2,3\n"));
  EXPECT_FALSE(isHeader("NA,1\n2,3\n"));
}

TEST(HasHeader, ARowOfYearsOverNumbersIsRefused) {
  EXPECT_NE(refusal([] { static_cast<void>(isHeader("country,2019,2020\nA,5,6\n")); }), "nothing");
  EXPECT_FALSE(isHeader("anna,2019,35\nbert,2020,36\n"));
  EXPECT_FALSE(isHeader("2019,2020\n5,6\n"));
}

TEST(HasHeader, TheUserDecides) {
  const DataTable table = tableOf("1\n2\n");
  EXPECT_TRUE(hasHeader(table, true));
  EXPECT_FALSE(hasHeader(tableOf("a\n2\n"), false));
}

TEST(ShapeOf, CountsRowsBelowTheHeader) {
  const TableShape with = shapeOf(tableOf("a\n1\n\n2\n"), std::nullopt);
  EXPECT_TRUE(with.hasHeader);
  EXPECT_EQ(with.rows, 2);
  EXPECT_EQ(with.names, (std::vector<std::string>{"a"}));
  const TableShape without = shapeOf(tableOf("1\n2\n"), std::nullopt);
  EXPECT_EQ(without.rows, 2);
  EXPECT_EQ(without.names, (std::vector<std::string>{""}));
}

TEST(ShapeOf, RefusesAHeaderWithNothingBelow) {
  EXPECT_EQ(refusal([] { static_cast<void>(shapeOf(tableOf("\na,b\n"), std::nullopt)); }),
            "1: data.csv holds a header and no row of data / Say --no-header if line 2 is data.");
}

TEST(ColumnForMessage, UsesTheNameOrTheNumber) {
  const TableShape shape{true, {"b", "petal width", ""}, 1};
  EXPECT_EQ(columnForMessage(shape, 0), "column b");
  EXPECT_EQ(columnForMessage(shape, 1), "column \"petal width\"");
  EXPECT_EQ(columnForMessage(shape, 2), "column 3");
}

}  // namespace
}  // namespace mervane::cli
