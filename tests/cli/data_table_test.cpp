#include "cli/data_table.h"

#include <gtest/gtest.h>

#include "tests/cli/table_of.h"

namespace mervane::cli {
namespace {

TEST(ReadTable, KeepsEveryByteBehindTheMark) {
  const std::string text = "a,\"b\"\r\n\r\n1,x\n2,y";
  const DataTable table = tableOf("\xEF\xBB\xBF" + text);
  EXPECT_EQ(table.text, text);
  EXPECT_TRUE(table.hasByteOrderMark);
  EXPECT_EQ(table.records, 3);
  EXPECT_EQ(table.first, (std::vector<std::string>{"a", "b"}));
}

TEST(ReadTable, CountsWhatStandsInAColumnBelowTheFirstRecord) {
  const DataTable table = tableOf("a;b\n1;2,5\n1.5;x\n;1,234\n", {.delimiter = ';'});
  const ColumnCensus& a = table.columns[0];
  EXPECT_EQ(a.first, CellKind::text);
  EXPECT_EQ(a.count(CellKind::integer), 1);
  EXPECT_EQ(a.count(CellKind::withPoint), 1);
  EXPECT_EQ(a.count(CellKind::empty), 1);
  EXPECT_EQ(a.numbers(), 2);
  EXPECT_EQ(a.firstNotNumber->line, 4);
  const ColumnCensus& b = table.columns[1];
  EXPECT_EQ(b.count(CellKind::withComma), 1);
  EXPECT_EQ(b.count(CellKind::withGroupOrComma), 1);
  EXPECT_EQ(b.firstNotNumber->text, "x");
  EXPECT_EQ(b.firstNotNumber->line, 3);
}

TEST(ReadTable, RefusesALineWithAnotherNumberOfFields) {
  EXPECT_EQ(refusal([] { static_cast<void>(tableOf("a,b\n1,2\n3\n")); }),
            "1: data.csv, line 3: 1 field where line 1 has 2 fields: \"3\" / Mend the line, or name the right "
            "delimiter with --delimiter (now: comma).");
}

TEST(ReadTable, RefusesATextWithoutRows) {
  for (const char* text : {"", "\n\n", "\xEF\xBB\xBF"}) {
    EXPECT_EQ(refusal([&] { static_cast<void>(tableOf(text)); }),
              "1: data.csv holds no rows / Give it a line for each row, with numbers in it.");
  }
}

TEST(ReadTable, RefusesForeignEncodingsByName) {
  using namespace std::string_view_literals;
  EXPECT_EQ(refusal([] {
              static_cast<void>(
                  tableOf("\xFF\xFE"
                          "1\0\n\0"sv));
            }),
            "1: data.csv is in UTF-16 / Save it as a CSV file in UTF-8.");
  EXPECT_NE(refusal([] { static_cast<void>(tableOf("PK\x03\x04 and more")); }).find("zip archive"), std::string::npos);
  EXPECT_NE(refusal([] { static_cast<void>(tableOf("\xD0\xCF\x11\xE0 and more")); }).find("old binary kind"),
            std::string::npos);
}

TEST(ReadTable, NamesTheLineAndFieldOfBrokenQuoting) {
  EXPECT_EQ(refusal([] { static_cast<void>(tableOf("a,b\n1,\"x\" y\n", {.delimiter = ','})); }),
            "1: data.csv, line 2, field 2: text behind the closing quote in \"\"x\" y\" / Double the quotes inside a "
            "quoted field, or say --quote none.");
  EXPECT_EQ(refusal([] { static_cast<void>(tableOf("a,b\n1,\"x\n", {.delimiter = ','})); }),
            "1: data.csv, line 2, field 2: the quote that opens \"\"x␊\" is never closed / Close it, or say --quote "
            "none.");
  using namespace std::string_view_literals;
  EXPECT_EQ(refusal([] { static_cast<void>(tableOf("a,b\n1,x\0\n"sv, {.delimiter = ','})); }),
            "1: data.csv, line 2, field 2: a zero byte behind \"x\" / Save the file as a CSV file in UTF-8.");
}

TEST(ReadTable, AsksForTheDelimiterWhereItIsInDoubt) {
  EXPECT_EQ(refusal([] { static_cast<void>(tableOf("a,b;c\nd,e;f\n")); }),
            "1: data.csv: more than one character may be the delimiter / Say which with --delimiter comma, semicolon, "
            "tab or bar.");
}

TEST(ReadTable, ReadsOnBehindTheSampleThatItJudges) {
  std::string text = "a;b\n";
  while (text.size() < 600000) text += "1;2\n";
  const DataTable table = tableOf(text);
  EXPECT_EQ(table.text, text);
  EXPECT_EQ(table.dialect.delimiter, ';');
}

}  // namespace
}  // namespace mervane::cli
