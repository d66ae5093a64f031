#include "cli/csv_reader.h"

#include <gtest/gtest.h>

namespace mervane::cli {
namespace {

using Rows = std::vector<std::vector<std::string>>;

/// All records of a text, by the texts of their fields.
Rows rowsOf(std::string_view text, const Dialect& dialect = {}, std::size_t block = CsvReader::usualBlock) {
  MemorySource source(text);
  CsvReader reader(source, dialect, block);
  Record record;
  Rows rows;
  std::string scratch;
  while (reader.next(record)) {
    rows.emplace_back();
    for (const Field& field : record.fields) rows.back().emplace_back(fieldText(field, scratch));
  }
  return rows;
}

/// Everything that the reader says was there, put together again.
std::string rebuilt(std::string_view text, std::size_t block) {
  MemorySource source(text);
  CsvReader reader(source, {}, block);
  Record record;
  std::string all;
  while (reader.next(record)) all.append(record.raw).append(record.terminator);
  return all;
}

std::vector<std::int64_t> linesOf(std::string_view text) {
  MemorySource source(text);
  CsvReader reader(source, {});
  Record record;
  std::vector<std::int64_t> lines;
  while (reader.next(record)) lines.push_back(record.line);
  return lines;
}

CsvError errorOf(std::string_view text, const Dialect& dialect = {}) {
  try {
    static_cast<void>(rowsOf(text, dialect));
  } catch (const CsvError& error) {
    return error;
  }
  ADD_FAILURE() << "the text was read: " << text;
  return {CsvError::Kind::zeroByte, 0, 0, {}};
}

TEST(CsvReader, SplitsLinesAtDelimiters) {
  EXPECT_EQ(rowsOf("a,b\n1,2\n"), (Rows{{"a", "b"}, {"1", "2"}}));
  EXPECT_EQ(rowsOf("a;b\n", {';', '"'}), (Rows{{"a", "b"}}));
  EXPECT_EQ(rowsOf("a\tb\n", {'\t', '"'}), (Rows{{"a", "b"}}));
}

TEST(CsvReader, EmptyTextHasNoRecord) {
  EXPECT_TRUE(rowsOf("").empty());
}

TEST(CsvReader, TheLastLineNeedsNoEnd) {
  EXPECT_EQ(rowsOf("a,b\n1,2"), (Rows{{"a", "b"}, {"1", "2"}}));
}

TEST(CsvReader, EmptyFieldsStandAtEveryPlace) {
  EXPECT_EQ(rowsOf(",a,,b,\n"), (Rows{{"", "a", "", "b", ""}}));
  EXPECT_EQ(rowsOf("a,"), (Rows{{"a", ""}}));
  EXPECT_EQ(rowsOf(","), (Rows{{"", ""}}));
}

TEST(CsvReader, TakesEveryKindOfLineEnd) {
  EXPECT_EQ(rowsOf("a\r\nb\rc\nd"), (Rows{{"a"}, {"b"}, {"c"}, {"d"}}));
  EXPECT_EQ(rowsOf("a\r\r\nb"), (Rows{{"a"}, {""}, {"b"}}));
}

TEST(CsvReader, KeepsAnEmptyLineAsABlankRecord) {
  MemorySource source("a\n\nb\n");
  CsvReader reader(source, {});
  Record record;
  ASSERT_TRUE(reader.next(record));
  EXPECT_FALSE(record.isBlank());
  ASSERT_TRUE(reader.next(record));
  EXPECT_TRUE(record.isBlank());
  EXPECT_EQ(record.terminator, "\n");
}

TEST(CsvReader, ALineOfAnEmptyQuotedFieldIsNotBlank) {
  MemorySource source("\"\"\n");
  CsvReader reader(source, {});
  Record record;
  ASSERT_TRUE(reader.next(record));
  EXPECT_FALSE(record.isBlank());
}

TEST(CsvReader, AQuotedFieldHoldsDelimitersAndLineEnds) {
  EXPECT_EQ(rowsOf("\"a,b\",\"c\nd\"\r\n\"e\r\nf\",g"), (Rows{{"a,b", "c\nd"}, {"e\r\nf", "g"}}));
}

TEST(CsvReader, ADoubledQuoteIsOneQuote) {
  EXPECT_EQ(rowsOf("\"say \"\"hi\"\"\",\"\"\"\",\"\"\n"), (Rows{{"say \"hi\"", "\"", ""}}));
}

TEST(CsvReader, AQuoteInsideAPlainFieldIsText) {
  EXPECT_EQ(rowsOf("5\" pipe,a\"\"b\n"), (Rows{{"5\" pipe", "a\"\"b"}}));
}

TEST(CsvReader, WithoutAQuoteCharacterQuotesAreText) {
  EXPECT_EQ(rowsOf("\"a,b\n", {',', std::nullopt}), (Rows{{"\"a", "b"}}));
}

TEST(CsvReader, TakesAnotherQuoteCharacter) {
  EXPECT_EQ(rowsOf("'a,b',\"c\n", {',', '\''}), (Rows{{"a,b", "\"c"}}));
}

TEST(CsvReader, PassesTheByteOrderMark) {
  MemorySource source("\xEF\xBB\xBF\"a\",b\n");
  CsvReader reader(source, {});
  Record record;
  ASSERT_TRUE(reader.next(record));
  EXPECT_EQ(record.raw, "\"a\",b");
  EXPECT_TRUE(reader.hadByteOrderMark());
}

TEST(CsvReader, AMarkAloneIsAnEmptyText) {
  EXPECT_TRUE(rowsOf("\xEF\xBB\xBF").empty());
}

TEST(CsvReader, HalfAMarkIsText) {
  EXPECT_EQ(rowsOf("\xEF\xBB"), (Rows{{"\xEF\xBB"}}));
}

TEST(CsvReader, CountsLinesAsAnEditorDoes) {
  EXPECT_EQ(linesOf("a\n\"b\nc\"\nd\r\n\"e\r\nf\rg\"\nh"), (std::vector<std::int64_t>{1, 2, 4, 5, 8}));
}

TEST(CsvReader, AFieldKnowsItsOwnLine) {
  MemorySource source("\"a\nb\",c\n");
  CsvReader reader(source, {});
  Record record;
  ASSERT_TRUE(reader.next(record));
  EXPECT_EQ(record.fields[0].line, 1);
  EXPECT_EQ(record.fields[1].line, 2);
}

TEST(CsvReader, RefusesTextBehindAClosingQuote) {
  const CsvError error = errorOf("a,b\n1,\"x\" y\n");
  EXPECT_EQ(error.kind(), CsvError::Kind::textAfterQuote);
  EXPECT_EQ(error.line(), 2);
  EXPECT_EQ(error.field(), 2U);
  EXPECT_EQ(error.text(), "\"x\" y");
}

TEST(CsvReader, RefusesAQuoteThatIsNeverClosedAndNamesWhereItOpens) {
  const CsvError error = errorOf("a,b\n1,2\n3,\"x\n\n\n");
  EXPECT_EQ(error.kind(), CsvError::Kind::quoteNotClosed);
  EXPECT_EQ(error.line(), 3);
  EXPECT_EQ(error.field(), 2U);
  EXPECT_EQ(error.text(), "\"x\n\n\n");
}

TEST(CsvReader, RefusesAZeroByteInPlainAndInQuotedFields) {
  using namespace std::string_view_literals;
  EXPECT_EQ(errorOf("a,b\0c\n"sv).kind(), CsvError::Kind::zeroByte);
  EXPECT_EQ(errorOf("a,\"b\0c\"\n"sv).kind(), CsvError::Kind::zeroByte);
}

TEST(CsvReader, BlockBordersMakeNoDifference) {
  const std::string text =
      "\xEF\xBB\xBF"
      "a,\"b \"\"q\"\", c\",d\r\n1,\"x\r\ny\",\r\r\n\n\"\",\"\"\n,5\" x,\"tail\"";
  const Rows expected = rowsOf(text);
  EXPECT_EQ(expected.size(), 6U);
  for (std::size_t block = 1; block <= text.size() + 1; ++block) {
    EXPECT_EQ(rowsOf(text, {}, block), expected) << "block of " << block;
    EXPECT_EQ(rebuilt(text, block), text.substr(3)) << "block of " << block;
  }
}

TEST(CsvReader, AFieldMayBeLongerThanABlock) {
  const std::string field(300000, 'x');
  EXPECT_EQ(rowsOf(field + ",\"" + field + "\"\n1,2\n", {}, 1000), (Rows{{field, field}, {"1", "2"}}));
}

}  // namespace
}  // namespace mervane::cli
