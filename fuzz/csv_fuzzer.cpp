#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/column_selection.h"
#include "cli/csv_reader.h"
#include "cli/data_table.h"
#include "cli/output_file.h"
#include "cli/output_formats.h"
#include "cli/problem.h"
#include "cli/table_header.h"
#include "fuzz/require.h"

namespace mervane::cli {
namespace {

using Rows = std::vector<std::vector<std::string>>;

struct Reading {
  Rows rows;
  std::string bytes;
  std::optional<CsvError::Kind> error;
  std::int64_t errorLine = 0;
  friend bool operator==(const Reading&, const Reading&) = default;
};

Reading readAll(std::string_view text, const Dialect& dialect, std::size_t block) {
  MemorySource source(text);
  CsvReader reader(source, dialect, block);
  Record record;
  Reading reading;
  std::string scratch;
  try {
    while (reader.next(record)) {
      if (reading.bytes.empty() && reader.hadByteOrderMark()) reading.bytes = "\xEF\xBB\xBF";
      reading.bytes.append(record.raw).append(record.terminator);
      if (record.isBlank()) continue;
      MERVANE_REQUIRE(!record.fields.empty());
      reading.rows.emplace_back();
      for (const Field& field : record.fields) reading.rows.back().emplace_back(fieldText(field, scratch));
    }
  } catch (const CsvError& error) {
    reading.error = error.kind();
    reading.errorLine = error.line();
  }
  return reading;
}

class TextOutput : public OutputFile {
 public:
  void write(std::string_view bytes) override { text.append(bytes); }
  void flush() override {}
  void commit() override {}

  std::string text;
};

/// Block borders change nothing, and what was read is all that there was.
void checkReader(std::string_view text, const Dialect& dialect) {
  const Reading whole = readAll(text, dialect, CsvReader::usualBlock);
  MERVANE_REQUIRE(readAll(text, dialect, 1) == whole);
  MERVANE_REQUIRE(readAll(text, dialect, 7) == whole);
  const bool isMarkAlone = text == "\xEF\xBB\xBF";
  if (!whole.error && !isMarkAlone) MERVANE_REQUIRE(whole.bytes == text);
}

/// A table that is taken gives finite numbers, and its fields come back under another delimiter.
void checkTable(std::string_view text) {
  MemorySource source(text);
  const DataTable table = readTable(source, "text", {});
  const TableShape shape = shapeOf(table, std::nullopt);
  const AutomaticColumns automatic = automaticColumns(table, shape, "Cluster");
  const DecimalMark mark = decimalMarkOf(table, shape, automatic.columns);
  const std::vector<double> numbers = numbersOf(table, shape, automatic.columns, mark);
  const auto rows = static_cast<std::size_t>(shape.rows);
  MERVANE_REQUIRE(numbers.size() == rows * automatic.columns.size());
  for (const double number : numbers) MERVANE_REQUIRE(number - number == 0.0);

  const std::vector<std::int32_t> labels(rows, 7);
  const std::string name = resultColumnName("Cluster", shape);
  Rows expected = readAll(text, table.dialect, CsvReader::usualBlock).rows;
  for (auto& row : expected) row.emplace_back("7");
  if (shape.hasHeader) expected.front().back() = name;
  for (const char delimiter : {table.dialect.delimiter, ',', '\t'}) {
    TextOutput out;
    writeDelimited({table, shape, automatic.columns, mark, labels, name}, delimiter, out);
    MERVANE_REQUIRE(readAll(out.text, {delimiter, '"'}, CsvReader::usualBlock).rows == expected);
  }
}

}  // namespace
}  // namespace mervane::cli

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace mervane::cli;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  for (const char delimiter : {',', ';', '\t'}) checkReader(text, {delimiter, '"'});
  checkReader(text, {',', std::nullopt});
  try {
    checkTable(text);
  } catch (const Problem& problem) {
    MERVANE_REQUIRE(problem.status() == ExitStatus::dataRefused);
    MERVANE_REQUIRE(!problem.message().empty());
  }
  return 0;
}
