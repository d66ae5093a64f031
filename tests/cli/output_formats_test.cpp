#include "cli/output_formats.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "cli/column_selection.h"
#include "tests/cli/table_of.h"
#include "tests/cli/text_output.h"

namespace mervane::cli {
namespace {

/// What a format makes of a text whose rows get the cluster numbers 1, 2, 3, ...
class Written {
 public:
  explicit Written(std::string_view text, const DialectChoice& choice = {}, std::optional<bool> header = std::nullopt)
      : table_(tableOf(text, choice)), shape_(shapeOf(table_, header)) {
    for (std::int32_t row = 1; row <= shape_.rows; ++row) labels_.push_back(row);
    inputs_ = automaticColumns(table_, shape_, "Cluster").columns;
    mark_ = decimalMarkOf(table_, shape_, inputs_);
  }

  std::string delimited(char delimiter) {
    TextOutput out;
    writeDelimited(results(), delimiter, out);
    return out.text;
  }
  std::string json(bool onePerLine = false) {
    TextOutput out;
    writeJson(results(), onePerLine, out);
    return out.text;
  }
  std::string table() {
    TextOutput out;
    writeTable(results(), out);
    return out.text;
  }

 private:
  Results results() const { return {table_, shape_, inputs_, mark_, labels_, resultColumnName("Cluster", shape_)}; }

  DataTable table_;
  TableShape shape_;
  std::vector<std::size_t> inputs_;
  DecimalMark mark_ = DecimalMark::point;
  std::vector<std::int32_t> labels_;
};

TEST(WriteDelimited, AddsOneFieldAndTouchesNothingElse) {
  EXPECT_EQ(Written("a,\"b\"\n 1.50 ,\"x \"\"y\"\"\"\n2,z").delimited(','),
            "a,\"b\",Cluster\n 1.50 ,\"x \"\"y\"\"\",1\n2,z,2");
}

TEST(WriteDelimited, KeepsMarkLineEndsAndBlankLines) {
  EXPECT_EQ(Written("\xEF\xBB\xBF\r\na,b\r\n1,2\r\n\r\n3,4\n\n").delimited(','),
            "\xEF\xBB\xBF\r\na,b,Cluster\r\n1,2,1\r\n\r\n3,4,2\n\n");
}

TEST(WriteDelimited, KeepsASecondMarkAsTheBeginningOfTheFirstField) {
  EXPECT_EQ(Written("\xEF\xBB\xBF\xEF\xBB\xBFx,y\n1,2\n3,4\n").delimited(','),
            "\xEF\xBB\xBF\xEF\xBB\xBFx,y,Cluster\n1,2,1\n3,4,2\n");
}

TEST(WriteDelimited, KeepsBytesThatAreNoUtf8) {
  EXPECT_EQ(Written("a,b\n1,gr\xfc\xdf\n").delimited(','), "a,b,Cluster\n1,gr\xfc\xdf,1\n");
}

TEST(WriteDelimited, WithoutAHeaderAddsNone) {
  EXPECT_EQ(Written("5\n6\n").delimited(','), "5,1\n6,2\n");
}

TEST(WriteDelimited, AFieldOverSeveralLinesStaysWhole) {
  EXPECT_EQ(Written("a,b\n1,\"x\ny\"\n").delimited(','), "a,b,Cluster\n1,\"x\ny\",1\n");
}

TEST(WriteDelimited, AnotherDelimiterQuotesWhatNeedsIt) {
  EXPECT_EQ(Written("a;b\n1,5;x\n2,5;\"y;z\"\n").delimited(','), "a,b,Cluster\n\"1,5\",x,1\n\"2,5\",\"y;z\",2\n");
  EXPECT_EQ(Written("a,b\n1,5\" pipe\n").delimited('\t'), "a\tb\tCluster\n1\t\"5\"\" pipe\"\t1\n");
  EXPECT_EQ(Written("a,b\n1,'x,y'\n", {.delimiter = {}, .quote = '\''}).delimited(';'), "a;b;Cluster\n1;x,y;1\n");
}

TEST(ResultColumnName, IsNumberedWhereTheTableHasOneOfThatName) {
  EXPECT_EQ(resultColumnName("Cluster", {true, {"a"}, 1}), "Cluster");
  EXPECT_EQ(resultColumnName("Cluster", {true, {"a", "Cluster"}, 1}), "Cluster_2");
  EXPECT_EQ(resultColumnName("Cluster", {true, {"Cluster_2", "Cluster"}, 1}), "Cluster_3");
  EXPECT_EQ(Written("a,Cluster\n1,9\n").delimited(','), "a,Cluster,Cluster_2\n1,9,1\n");
}

TEST(DelimiterFor, KeepsThatOfTheInputWhereItCan) {
  EXPECT_EQ(delimiterFor(Format::csv, {';', '"'}, std::nullopt), ';');
  EXPECT_EQ(delimiterFor(Format::csv, {'\t', '"'}, std::nullopt), ',');
  EXPECT_EQ(delimiterFor(Format::tsv, {',', '"'}, std::nullopt), '\t');
  EXPECT_EQ(delimiterFor(Format::csv, {';', '"'}, '|'), '|');
}

TEST(WriteJson, GivesOneObjectForEachRow) {
  EXPECT_EQ(Written("a,b\n1.50,x\n\n2,y\n").json(),
            "[\n{\"a\":1.50,\"b\":\"x\",\"Cluster\":1},\n{\"a\":2,\"b\":\"y\",\"Cluster\":2}\n]\n");
  EXPECT_EQ(Written("a,b\n1.50,x\n2,y\n").json(true),
            "{\"a\":1.50,\"b\":\"x\",\"Cluster\":1}\n{\"a\":2,\"b\":\"y\",\"Cluster\":2}\n");
}

TEST(WriteJson, ClusteredNumbersAreNumbersHoweverTheyAreWritten) {
  EXPECT_EQ(Written("a;b\n1,5;+2\n0,5e1;007\n").json(true),
            "{\"a\":1.5,\"b\":2,\"Cluster\":1}\n{\"a\":5,\"b\":7,\"Cluster\":2}\n");
}

TEST(WriteJson, TextStaysTextWhereNotEveryCellIsANumber) {
  // A column of numbers that is not clustered by keeps its digits; a code with leading zeros is no number.
  EXPECT_EQ(Written("a,zip,n\n1,01234,5\n2,x,n/a\n").json(true),
            "{\"a\":1,\"zip\":\"01234\",\"n\":\"5\",\"Cluster\":1}\n"
            "{\"a\":2,\"zip\":\"x\",\"n\":\"n/a\",\"Cluster\":2}\n");
}

TEST(WriteJson, EscapesTextAndKeepsUnicode) {
  const std::string text = Written(
                               "\xEF\xBB\xBF"
                               "a,b\n1,\"q\"\"\\\n\tß\x01\"\n")
                               .json();
  const nlohmann::json parsed = nlohmann::json::parse(text);
  EXPECT_EQ(parsed[0]["b"], "q\"\\\n\tß\x01");
  EXPECT_EQ(parsed[0]["a"], 1);
}

TEST(WriteJson, RefusesTextThatIsNotUtf8) {
  EXPECT_EQ(refusal([] { static_cast<void>(Written("a,b\n1,x\n2,gr\xfc\xdf\n").json()); }),
            "1: data.csv, line 3, column b: \"gr\uFFFD\uFFFD\" is not UTF-8, which JSON has to be / Convert the file "
            "to UTF-8, or write csv or tsv, which keep the bytes as they are.");
}

TEST(JsonKeys, AreUniqueAndNeverEmpty) {
  EXPECT_EQ(jsonKeys({true, {"a", "", "a", "a_2"}, 1}, "Cluster"),
            (std::vector<std::string>{"a", "Column2", "a_3", "a_2", "Cluster"}));
  EXPECT_EQ(jsonKeys({false, {"", ""}, 1}, "Cluster"), (std::vector<std::string>{"Column1", "Column2", "Cluster"}));
}

TEST(WriteTable, AlignsTextLeftAndNumbersRight) {
  EXPECT_EQ(Written("name,height\nanna,1.75\nö,2\n").table(),
            "name  height  Cluster\n"
            "----  ------  -------\n"
            "anna    1.75        1\n"
            "ö          2        2\n");
}

TEST(WriteTable, NumbersColumnsWithoutAHeaderAndCutsLongText) {
  EXPECT_EQ(Written("5," + std::string(50, 'x') + "\n").table(),
            "1  2                                         Cluster\n"
            "-  ----------------------------------------  -------\n"
            "5  " +
                std::string(39, 'x') + "…        1\n");
}

TEST(FormatOfName, GoesByTheEnding) {
  EXPECT_EQ(formatOfName("a.CSV"), Format::csv);
  EXPECT_EQ(formatOfName("a.tab"), Format::tsv);
  EXPECT_EQ(formatOfName("a.json"), Format::json);
  EXPECT_EQ(formatOfName("a.jsonl"), Format::ndjson);
  EXPECT_EQ(formatOfName("a.txt"), Format::table);
  EXPECT_EQ(formatOfName("csv"), std::nullopt);
  EXPECT_EQ(formatOfName(""), std::nullopt);
}

}  // namespace
}  // namespace mervane::cli
