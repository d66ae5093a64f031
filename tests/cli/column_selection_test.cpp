#include "cli/column_selection.h"

#include <gtest/gtest.h>

#include "tests/cli/table_of.h"

namespace mervane::cli {
namespace {

using Columns = std::vector<std::size_t>;

const TableShape named{true, {"id", "Height", "petal width", "2020", "x,y", "height", "", "b"}, 1};
const TableShape unnamed{false, {"", "", ""}, 1};

Columns chosen(const std::vector<std::string>& texts, const TableShape& shape = named) {
  return namedColumns(texts, shape);
}

TEST(NamedColumns, TakesNamesNumbersAndRanges) {
  EXPECT_EQ(chosen({"id"}), (Columns{0}));
  EXPECT_EQ(chosen({"petal width"}), (Columns{2}));
  EXPECT_EQ(chosen({"3"}), (Columns{2}));
  EXPECT_EQ(chosen({"2-4"}), (Columns{1, 2, 3}));
  EXPECT_EQ(chosen({"b, id,2-3"}), (Columns{7, 0, 1, 2}));
  EXPECT_EQ(chosen({"id", "b"}), (Columns{0, 7}));
  EXPECT_EQ(chosen({"1,3"}, unnamed), (Columns{0, 2}));
}

TEST(NamedColumns, ANameThatFitsWholeComesFirst) {
  EXPECT_EQ(chosen({"2020"}), (Columns{3}));
  EXPECT_EQ(chosen({"x,y"}), (Columns{4}));
}

TEST(NamedColumns, ANameMayDifferInCaseWhereOnlyOneFits) {
  EXPECT_EQ(chosen({"ID"}), (Columns{0}));
  EXPECT_EQ(chosen({"Height"}), (Columns{1}));
  EXPECT_EQ(chosen({"height"}), (Columns{5}));
  EXPECT_EQ(refusal([] { static_cast<void>(chosen({"HEIGHT"})); }),
            "2: --columns: the columns 2 and 6 are both called \"HEIGHT\" / Name the one you mean by its number.");
}

TEST(NamedColumns, RefusesColumnsThatAreNotThere) {
  EXPECT_EQ(refusal([] { static_cast<void>(chosen({"weight"})); }),
            "2: --columns: there is no column \"weight\" / The columns are id, Height, \"petal width\", 2020, \"x,y\", "
            "height, 7, b.");
  EXPECT_EQ(refusal([] { static_cast<void>(chosen({"4"}, unnamed)); }),
            "2: --columns: there is no column 4 / There is no header; name the columns by number, 1 to 3.");
  for (const char* text : {"0", "9", "3-2", "2-", "-2", "id,,b", "", "99999999999999999999"}) {
    EXPECT_EQ(refusal([&] { static_cast<void>(chosen({text})); }).substr(0, 2), "2:") << text;
  }
}

TEST(NamedColumns, RefusesAColumnNamedTwice) {
  EXPECT_EQ(refusal([] { static_cast<void>(chosen({"id,1"})); }),
            "2: --columns: column id is named twice / Name each column once.");
}

AutomaticColumns automatic(std::string_view text) {
  const DataTable table = tableOf(text);
  return automaticColumns(table, shapeOf(table, std::nullopt), "Cluster");
}

TEST(AutomaticColumns, AreThoseOfNumbersAlone) {
  EXPECT_EQ(automatic("a,b,c\n1,x,2\n3,y,4\n").columns, (Columns{0, 2}));
  EXPECT_EQ(automatic("1,x,2\n3,y,4\n").columns, (Columns{0, 2}));
  EXPECT_TRUE(automatic("a,b,c\n1,x,2\n3,y,4\n").remarks.empty());
}

TEST(AutomaticColumns, TellOfAColumnThatIsMostlyNumbers) {
  const AutomaticColumns result = automatic("a,b,c\n1,2,\n3,n/a,1\n4,5,2\n");
  EXPECT_EQ(result.columns, (Columns{0}));
  EXPECT_EQ(result.remarks, (std::vector<std::string>{"column b is left out: on line 3 it holds \"n/a\"",
                                                      "column c is left out: on line 2 it is empty"}));
}

TEST(AutomaticColumns, LeaveOutWhatAnEarlierRunAppended) {
  const AutomaticColumns result = automatic("a,Cluster\n1,2\n3,1\n");
  EXPECT_EQ(result.columns, (Columns{0}));
  ASSERT_EQ(result.remarks.size(), 1U);
  EXPECT_NE(result.remarks[0].find("column Cluster is left out"), std::string::npos);
}

TEST(AutomaticColumns, RefuseATableWithoutAny) {
  EXPECT_EQ(refusal([] { static_cast<void>(automatic("a,b\nx,y\n")); }),
            "1: data.csv has no column of numbers / Name the columns to use with --columns.");
  EXPECT_EQ(refusal([] { static_cast<void>(automatic("a,b\n1,y\n,z\n2,z\n")); }),
            "1: data.csv has no column of numbers / The nearest: column a is left out: on line 3 it is empty.");
}

DecimalMark markOf(std::string_view text, const Columns& columns) {
  const DataTable table = tableOf(text, {.delimiter = ';'});
  return decimalMarkOf(table, shapeOf(table, std::nullopt), columns);
}

TEST(DecimalMarkOf, FollowsTheNumbersOfTheColumnsUsed) {
  EXPECT_EQ(markOf("a;b\n1;2\n", {0, 1}), DecimalMark::point);
  EXPECT_EQ(markOf("a;b\n1.5;2\n", {0, 1}), DecimalMark::point);
  EXPECT_EQ(markOf("a;b\n1,5;2\n", {0, 1}), DecimalMark::comma);
  EXPECT_EQ(markOf("a;b\n1,5;1,234\n", {0, 1}), DecimalMark::comma);
  EXPECT_EQ(markOf("1,5;2\n1,5;2\n", {0, 1}), DecimalMark::comma);
  EXPECT_EQ(markOf("a;b\n1,5;2.5\n", {1}), DecimalMark::point);
}

TEST(DecimalMarkOf, RefusesToGuess) {
  EXPECT_EQ(refusal([] {
              static_cast<void>(markOf("a;b\n1,5;2.5\n", {0, 1}));
            }),
            "1: data.csv: column b has numbers with a full stop, column a with a comma / Say --decimal point or "
            "--decimal comma, and name the columns to use with --columns.");
  EXPECT_EQ(refusal([] {
              static_cast<void>(markOf("a;b\n1,234;2\n", {0, 1}));
            }),
            "1: data.csv: the commas of column a may be decimal marks or may group thousands / Say --decimal comma if "
            "they are decimal marks; take them out if they are not.");
}

std::vector<double> numbers(std::string_view text, const Columns& columns, DecimalMark mark = DecimalMark::point) {
  const DataTable table = tableOf(text, {.delimiter = ';'});
  return numbersOf(table, shapeOf(table, std::nullopt), columns, mark);
}

TEST(NumbersOf, AreRowByRowInTheOrderOfTheColumns) {
  EXPECT_EQ(numbers("a;b;c\n1;x;2\n\n3;y;4\n", {2, 0}), (std::vector<double>{2, 1, 4, 3}));
  EXPECT_EQ(numbers("1;2\n\"3\";4\n", {0, 1}), (std::vector<double>{1, 2, 3, 4}));
  EXPECT_EQ(numbers("a\n1,5\n", {0}, DecimalMark::comma), (std::vector<double>{1.5}));
}

TEST(NumbersOf, NamesLineColumnAndTextOfWhatIsNoNumber) {
  EXPECT_EQ(refusal([] { static_cast<void>(numbers("a;b\n\"x\ny\";1\n5;n/a\n", {1})); }),
            "1: data.csv, line 4, column b: \"n/a\" is not a number / Mend the cell, drop the row, or leave the column "
            "out with --columns.");
  EXPECT_EQ(refusal([] { static_cast<void>(numbers("a;b\n1;2\n3; \n", {1})); }),
            "1: data.csv, line 3, column b: the cell is empty / Fill the cell in, drop the row, or leave the column "
            "out with --columns.");
  EXPECT_EQ(refusal([] { static_cast<void>(numbers("a;b\n1;1e999\n", {1})); }),
            "1: data.csv, line 2, column b: \"1e999\" is beyond the range of numbers / Numbers reach to about "
            "1.8e308.");
}

TEST(NumbersOf, PointsAtTheWayOut) {
  EXPECT_NE(refusal([] { static_cast<void>(numbers("a;b\n1;2,5\n", {1})); }).find("--decimal comma"),
            std::string::npos);
  EXPECT_NE(
      refusal([] { static_cast<void>(numbers("a;b\n1;2.5\n", {1}, DecimalMark::comma)); }).find("--decimal point"),
      std::string::npos);
  EXPECT_NE(refusal([] { static_cast<void>(numbers("a;b\n1;1,234,567\n", {1})); }).find("without grouping"),
            std::string::npos);
}

}  // namespace
}  // namespace mervane::cli
