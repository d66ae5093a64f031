#include "cli/workbook_rows.h"

#include <algorithm>

#include "cli/byte_source.h"
#include "cli/output_file.h"
#include "cli/text_display.h"
#include "mervane/convert.h"
#include "support/globals.h"

namespace mervane::cli {
namespace {

using hosts::OpenBook;
using sheet::CellAddress;

std::string field(const std::string& text) {
  std::string quotedText = "\"";
  for (const char c : text) {
    if (c == '"') quotedText += '"';
    quotedText += c;
  }
  return quotedText + "\"";
}

/// A cell as a data file shows it: a number in full, anything else as the sheet shows it.
std::string cellField(OpenBook& book, const std::string& sheet, CellAddress at, bool isInput) {
  // A formula outside of the inputs need not have been computed.
  const Variant value = isInput ? book.cellValue(sheet, at) : book.cellValueOrEmpty(sheet, at);
  if (value.isEmpty()) return field({});
  if (const auto* number = value.getIf<double>()) return formatExact(*number);
  // The network takes a truth value for a number.
  if (isInput && value.getIf<bool>() != nullptr) return formatExact(toDouble(value, globals::locale()));
  return field(book.cellText(sheet, at));
}

}  // namespace

std::vector<std::string> columnNames(OpenBook& book, const OpenBook::Place& place) {
  std::vector<std::string> names;
  for (std::int32_t column = place.area.firstColumn; column <= place.area.lastColumn; ++column) {
    const CellAddress above{place.area.firstRow - 1, column};
    const bool isText = above.row >= 1 && book.cellValueOrEmpty(place.sheet, above).getIf<std::string>() != nullptr;
    const std::string text = isText ? book.cellText(place.sheet, above) : std::string();
    names.push_back(text.empty() ? sheet::columnLetters(column) : text);
  }
  return names;
}

WorkbookRows::WorkbookRows(OpenBook& book, const OpenBook::Place& inputs) {
  sheet::CellArea area = inputs.area;
  if (const auto used = book.usedArea(inputs.sheet)) {
    area.firstColumn = std::min(area.firstColumn, used->firstColumn);
    area.lastColumn = std::max(area.lastColumn, used->lastColumn);
  }
  inputNames_ = columnNames(book, inputs);
  for (const std::string& name : columnNames(book, {inputs.sheet, area})) {
    text_ += (text_.empty() ? "" : ",") + field(name);
  }
  text_ += '\n';
  for (std::int32_t row = area.firstRow; row <= area.lastRow; ++row) {
    for (std::int32_t column = area.firstColumn; column <= area.lastColumn; ++column) {
      const bool isInput = column >= inputs.area.firstColumn && column <= inputs.area.lastColumn;
      if (column > area.firstColumn) text_ += ',';
      text_ += cellField(book, inputs.sheet, {row, column}, isInput);
    }
    text_ += '\n';
  }
  for (std::int32_t column = inputs.area.firstColumn; column <= inputs.area.lastColumn; ++column) {
    inputs_.push_back(static_cast<std::size_t>(column - area.firstColumn));
  }
}

void WorkbookRows::write(Format format, char delimiter, const std::string& wishedName,
                         const std::vector<std::int32_t>& labels, OutputFile& out) const {
  MemorySource source(text_);
  const DataTable table = readTable(source, "the worksheet", {.delimiter = ','});
  const TableShape shape = shapeOf(table, true);
  const Results results{table, shape, inputs_, DecimalMark::point, labels, resultColumnName(wishedName, shape)};
  switch (format) {
    case Format::csv:
    case Format::tsv:
      writeDelimited(results, delimiter, out);
      break;
    case Format::json:
      writeJson(results, false, out);
      break;
    case Format::ndjson:
      writeJson(results, true, out);
      break;
    case Format::table:
      writeTable(results, out);
      break;
  }
}

}  // namespace mervane::cli
