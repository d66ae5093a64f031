#include "cli/column_selection.h"

#include <algorithm>
#include <charconv>

#include "cli/problem.h"
#include "cli/text_display.h"

namespace mervane::cli {
namespace {

std::string folded(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  std::string lower(text);
  std::ranges::transform(lower, lower.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
  return lower;
}

[[noreturn]] void misuse(const std::string& message, const std::string& advice) {
  throw Problem(ExitStatus::usage, "--columns: " + message, advice);
}

std::string knownColumns(const TableShape& shape) {
  constexpr std::size_t shown = 12;
  if (!shape.hasHeader) {
    return "There is no header; name the columns by number, 1 to " +
           decimal(static_cast<long long>(shape.names.size())) + ".";
  }
  std::string list;
  for (std::size_t i = 0; i < std::min(shown, shape.names.size()); ++i) {
    list += (i == 0 ? "" : ", ") +
            (shape.names[i].empty() ? decimal(static_cast<long long>(i) + 1) : nameForMessage(shape.names[i]));
  }
  if (shape.names.size() > shown)
    list += ", and " + decimal(static_cast<long long>(shape.names.size() - shown)) + " more";
  return "The columns are " + list + ".";
}

/// The column of that name; none where there is none.
std::optional<std::size_t> columnNamed(const std::string& text, const TableShape& shape) {
  if (!shape.hasHeader || text.empty()) return std::nullopt;
  for (const bool exactly : {true, false}) {
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < shape.names.size(); ++i) {
      if (exactly ? shape.names[i] == text : folded(shape.names[i]) == folded(text)) found.push_back(i);
    }
    if (found.size() > 1) {
      misuse("the columns " + decimal(static_cast<long long>(found[0]) + 1) + " and " +
                 decimal(static_cast<long long>(found[1]) + 1) + " are both called " + quoted(text),
             "Name the one you mean by its number.");
    }
    if (found.size() == 1) return found[0];
  }
  return std::nullopt;
}

/// A whole number from 1 that the text is all of.
std::optional<std::size_t> ordinal(std::string_view text) {
  std::size_t number = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  if (text.empty() || result.ec != std::errc() || result.ptr != text.data() + text.size()) return std::nullopt;
  return number;
}

/// The columns of one text without commas. False where it fits no form.
bool addOne(const std::string& text, const TableShape& shape, std::vector<std::size_t>& columns) {
  if (const auto column = columnNamed(text, shape)) {
    columns.push_back(*column);
    return true;
  }
  const std::string bare = folded(text);
  const std::size_t dash = bare.find('-');
  const auto first = ordinal(std::string_view(bare).substr(0, dash));
  const auto last = dash == std::string::npos ? first : ordinal(std::string_view(bare).substr(dash + 1));
  if (!first || !last) return false;
  if (*first < 1 || *last > shape.names.size() || *first > *last) {
    misuse("there is no column " + bare, knownColumns(shape));
  }
  for (std::size_t number = *first; number <= *last; ++number) columns.push_back(number - 1);
  return true;
}

void addSeveral(const std::string& text, const TableShape& shape, std::vector<std::size_t>& columns) {
  if (addOne(text, shape, columns)) return;
  if (text.find(',') == std::string::npos) misuse("there is no column " + quoted(text), knownColumns(shape));
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find(',', begin), text.size());
    const std::string one = text.substr(begin, end - begin);
    if (!addOne(one, shape, columns)) misuse("there is no column " + quoted(one), knownColumns(shape));
    begin = end + 1;
  }
}

std::string adviceFor(const std::string& text, CellKind kind, DecimalMark mark) {
  if (kind == CellKind::empty) return "Fill the cell in, drop the row, or leave the column out with --columns.";
  if (isNumberKind(kind)) {
    return mark == DecimalMark::point ? "If its comma is a decimal mark, say --decimal comma."
                                      : "If its full stop is a decimal mark, say --decimal point.";
  }
  if (std::ranges::count(text, ',') + std::ranges::count(text, ' ') > 0 &&
      std::ranges::any_of(text, [](char c) { return c >= '0' && c <= '9'; })) {
    return "Write numbers without grouping, or leave the column out with --columns.";
  }
  return "Mend the cell, drop the row, or leave the column out with --columns.";
}

[[noreturn]] void refuseCell(const DataTable& table, const TableShape& shape, std::size_t column, const Field& field,
                             const std::string& text, DecimalMark mark, bool isOutOfRange) {
  const CellKind kind = kindOfCell(text);
  const std::string place =
      printable(table.name) + ", line " + decimal(field.line) + ", " + columnForMessage(shape, column) + ": ";
  if (isOutOfRange) {
    throw Problem(ExitStatus::dataRefused, place + quoted(text) + " is beyond the range of numbers",
                  "Numbers reach to about 1.8e308.");
  }
  throw Problem(ExitStatus::dataRefused,
                place + (kind == CellKind::empty ? "the cell is empty" : quoted(text) + " is not a number"),
                adviceFor(text, kind, mark));
}

}  // namespace

std::vector<std::size_t> namedColumns(const std::vector<std::string>& texts, const TableShape& shape) {
  std::vector<std::size_t> columns;
  for (const std::string& text : texts) addSeveral(text, shape, columns);
  for (auto one = columns.begin(); one != columns.end(); ++one) {
    if (std::find(columns.begin(), one, *one) != one) {
      misuse(columnForMessage(shape, *one) + " is named twice", "Name each column once.");
    }
  }
  return columns;
}

AutomaticColumns automaticColumns(const DataTable& table, const TableShape& shape, const std::string& resultName) {
  AutomaticColumns result;
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    const ColumnCensus& column = table.columns[i];
    const std::int64_t firstNumber = !shape.hasHeader && isNumberKind(column.first) ? 1 : 0;
    const std::int64_t numbers = column.numbers() + firstNumber;
    if (numbers == shape.rows) {
      if (shape.hasHeader && shape.names[i] == resultName) {
        result.remarks.push_back(
            columnForMessage(shape, i) +
            " is left out: it bears the name of the result; name it with --columns if it is meant");
      } else {
        result.columns.push_back(i);
      }
    } else if (numbers * 2 >= shape.rows) {
      const CellPlace place = !shape.hasHeader && !isNumberKind(column.first)
                                  ? CellPlace{table.firstLine, table.first[i]}
                                  : column.firstNotNumber.value_or(CellPlace{});
      const bool isEmpty = kindOfCell(place.text) == CellKind::empty;
      result.remarks.push_back(columnForMessage(shape, i) + " is left out: on line " + decimal(place.line) +
                               (isEmpty ? " it is empty" : " it holds " + quoted(place.text)));
    }
  }
  if (result.columns.empty()) {
    std::string advice = "Name the columns to use with --columns.";
    if (!result.remarks.empty()) advice = "The nearest: " + result.remarks.front() + ".";
    throw Problem(ExitStatus::dataRefused, printable(table.name) + " has no column of numbers", advice);
  }
  return result;
}

DecimalMark decimalMarkOf(const DataTable& table, const TableShape& shape, const std::vector<std::size_t>& columns) {
  std::optional<std::size_t> withPoint;
  std::optional<std::size_t> withComma;
  std::optional<std::size_t> doubtful;
  for (const std::size_t i : columns) {
    const ColumnCensus& column = table.columns[i];
    const auto holds = [&](CellKind kind) {
      return column.count(kind) > 0 || (!shape.hasHeader && column.first == kind);
    };
    if (holds(CellKind::withPoint) && !withPoint) withPoint = i;
    if (holds(CellKind::withComma) && !withComma) withComma = i;
    if (holds(CellKind::withGroupOrComma) && !doubtful) doubtful = i;
  }
  if (withPoint && (withComma || doubtful)) {
    throw Problem(ExitStatus::dataRefused,
                  printable(table.name) + ": " + columnForMessage(shape, *withPoint) +
                      " has numbers with a full stop, " + columnForMessage(shape, withComma ? *withComma : *doubtful) +
                      " with a comma",
                  "Say --decimal point or --decimal comma, and name the columns to use with --columns.");
  }
  if (withComma) return DecimalMark::comma;
  if (doubtful) {
    throw Problem(ExitStatus::dataRefused,
                  printable(table.name) + ": the commas of " + columnForMessage(shape, *doubtful) +
                      " may be decimal marks or may group thousands",
                  "Say --decimal comma if they are decimal marks; take them out if they are not.");
  }
  return DecimalMark::point;
}

std::vector<double> numbersOf(const DataTable& table, const TableShape& shape, const std::vector<std::size_t>& columns,
                              DecimalMark mark) {
  std::vector<double> numbers;
  numbers.reserve(static_cast<std::size_t>(shape.rows) * columns.size());
  bool isHeader = shape.hasHeader;
  std::string scratch;
  forEachRecord(table, [&](const Record& record) {
    if (record.isBlank()) return;
    if (isHeader) {
      isHeader = false;
      return;
    }
    for (const std::size_t column : columns) {
      const std::string_view text = fieldText(record.fields[column], scratch);
      const CellNumber number = numberOfCell(text, mark);
      if (number.outcome != CellNumber::Outcome::number) {
        refuseCell(table, shape, column, record.fields[column], std::string(text), mark,
                   number.outcome == CellNumber::Outcome::outOfRange);
      }
      numbers.push_back(number.value);
    }
  });
  return numbers;
}

}  // namespace mervane::cli
