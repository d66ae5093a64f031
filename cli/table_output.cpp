#include <algorithm>
#include <utility>

#include "cli/output_file.h"
#include "cli/output_formats.h"
#include "cli/text_display.h"

namespace mervane::cli {
namespace {

constexpr std::size_t widestColumn = 40;

struct TableColumn {
  std::string name;
  std::size_t width = 1;
  bool isNumeric = false;
};

std::vector<TableColumn> columnsOf(const Results& results) {
  std::vector<TableColumn> columns;
  for (std::size_t i = 0; i < results.table.columns.size(); ++i) {
    const ColumnCensus& census = results.table.columns[i];
    const std::string& name = results.shape.names[i];
    const bool firstIsNumber = results.shape.hasHeader || isNumberKind(census.first);
    columns.push_back(
        {name.empty() ? decimal(static_cast<long long>(i) + 1) : name, 1, firstIsNumber && census.others() == 0});
  }
  columns.push_back({results.resultName, 1, true});
  return columns;
}

/// Calls visit(row, cells) for each row, the result in the last cell.
template <class Visit>
void forEachRow(const Results& results, Visit visit) {
  bool isHeader = results.shape.hasHeader;
  std::size_t row = 0;
  std::string scratch;
  std::vector<std::string> cells;
  forEachRecord(results.table, [&](const Record& record) {
    if (record.isBlank() || std::exchange(isHeader, false)) return;
    cells.clear();
    for (const Field& field : record.fields) cells.push_back(cutToWidth(fieldText(field, scratch), widestColumn));
    cells.push_back(decimal(results.labels[row++]));
    visit(cells);
  });
}

std::string lineOf(const std::vector<std::string>& cells, const std::vector<TableColumn>& columns) {
  std::string line;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const std::size_t width = displayWidth(cells[i]);
    const std::string padding(columns[i].width - std::min(columns[i].width, width), ' ');
    if (i > 0) line += "  ";
    line += columns[i].isNumeric ? padding + cells[i] : cells[i] + padding;
  }
  while (line.ends_with(' ')) line.pop_back();
  return line + "\n";
}

}  // namespace

void writeTable(const Results& results, OutputFile& out) {
  std::vector<TableColumn> columns = columnsOf(results);
  const auto widen = [&](const std::vector<std::string>& cells) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
      columns[i].width = std::max(columns[i].width, displayWidth(cells[i]));
    }
  };
  std::vector<std::string> names;
  std::vector<std::string> rules;
  for (TableColumn& column : columns) names.push_back(cutToWidth(column.name, widestColumn));
  widen(names);
  forEachRow(results, widen);
  for (const TableColumn& column : columns) rules.emplace_back(column.width, '-');
  out.write(lineOf(names, columns));
  out.write(lineOf(rules, columns));
  forEachRow(results, [&](const std::vector<std::string>& cells) { out.write(lineOf(cells, columns)); });
}

}  // namespace mervane::cli
