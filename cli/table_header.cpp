#include "cli/table_header.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "cli/problem.h"
#include "cli/text_display.h"

namespace mervane::cli {
namespace {

/// Words for a missing value; they stand where a number is missing and label nothing.
bool meansMissing(std::string_view text) {
  constexpr std::array words{"na", "n/a", "nan", "null", "none", "nil", "-", "?", "."};
  std::string lower(text);
  std::ranges::transform(lower, lower.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
  return std::ranges::find(words, lower) != words.end();
}

/// All numbers below the first record.
bool isNumericBelow(const ColumnCensus& column) {
  return column.numbers() > 0 && column.others() == 0;
}

/// Four figures each, in steps of one: the labels of a series of years as likely as anything.
bool looksLikeYears(const DataTable& table) {
  long previous = 0;
  int years = 0;
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    if (!isNumberKind(table.columns[i].first)) continue;
    const std::string& text = table.first[i];
    const bool fourDigits = text.size() == 4 && (text[0] == '1' || text[0] == '2') &&
                            std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
    if (!fourDigits) return false;
    long year = 0;
    for (const char c : text) year = year * 10 + (c - '0');
    if (years > 0 && year != previous + 1) return false;
    previous = year;
    ++years;
  }
  return years > 1;
}

[[noreturn]] void refuse(const DataTable& table) {
  throw Problem(ExitStatus::dataRefused,
                printable(table.name) + ", line " + decimal(table.firstLine) +
                    ": cannot tell whether this is a header or a row of data: " + quoted([&] {
                      std::string line;
                      for (const std::string& one : table.first) line += (line.empty() ? "" : ", ") + one;
                      return line;
                    }()),
                "Say --header or --no-header.");
}

}  // namespace

bool hasHeader(const DataTable& table, std::optional<bool> choice) {
  if (choice) return *choice;
  bool hasLabel = false;        // a word over a column of numbers
  bool hasNumberOnTop = false;  // a number over a column of numbers
  bool hasWord = false;
  bool hasNumber = false;
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    const ColumnCensus& column = table.columns[i];
    const bool isNumber = isNumberKind(column.first);
    const bool isWord = column.first == CellKind::text && !meansMissing(table.first[i]);
    hasWord = hasWord || !isNumber;
    hasNumber = hasNumber || isNumber;
    if (!isNumericBelow(column)) continue;
    hasLabel = hasLabel || isWord;
    hasNumberOnTop = hasNumberOnTop || isNumber;
  }
  if (hasLabel && hasNumberOnTop) refuse(table);
  if (hasLabel) return true;
  if (hasNumberOnTop && hasWord && looksLikeYears(table)) refuse(table);
  return !hasNumberOnTop && !hasNumber;
}

TableShape shapeOf(const DataTable& table, std::optional<bool> headerChoice) {
  TableShape shape;
  shape.hasHeader = hasHeader(table, headerChoice);
  shape.names = shape.hasHeader ? table.first : std::vector<std::string>(table.columns.size());
  shape.rows = table.records - (shape.hasHeader ? 1 : 0);
  if (shape.rows == 0) {
    throw Problem(ExitStatus::dataRefused, printable(table.name) + " holds a header and no row of data",
                  "Say --no-header if line " + decimal(table.firstLine) + " is data.");
  }
  return shape;
}

std::string columnForMessage(const TableShape& shape, std::size_t column) {
  const std::string& name = shape.names[column];
  return "column " + (name.empty() ? decimal(static_cast<long long>(column) + 1) : nameForMessage(name));
}

}  // namespace mervane::cli
