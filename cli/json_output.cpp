#include <algorithm>
#include <set>
#include <utility>

#include "cli/json_text.h"
#include "cli/output_file.h"
#include "cli/output_formats.h"
#include "cli/problem.h"
#include "cli/text_display.h"
#include "mervane/convert.h"

namespace mervane::cli {
namespace {

/// How the cells of a column are written.
enum class CellForm { digits, clustered, string };

std::vector<CellForm> formsOf(const Results& results) {
  std::vector<CellForm> forms;
  for (std::size_t i = 0; i < results.table.columns.size(); ++i) {
    const std::int64_t first = !results.shape.hasHeader && results.table.firstIsJsonNumber[i] ? 1 : 0;
    const bool isJson = results.table.columns[i].jsonNumbers + first == results.shape.rows;
    const bool isInput = std::ranges::find(results.inputs, i) != results.inputs.end();
    forms.push_back(isJson ? CellForm::digits : isInput ? CellForm::clustered : CellForm::string);
  }
  return forms;
}

std::string cellText(std::string_view text, CellForm form, DecimalMark mark) {
  if (form == CellForm::string) return jsonString(text);
  if (form == CellForm::digits || isJsonNumber(text)) return std::string(text);
  return formatExact(numberOfCell(text, mark).value);
}

}  // namespace

std::vector<std::string> jsonKeys(const TableShape& shape, const std::string& resultName) {
  std::vector<std::string> keys = shape.names;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    if (keys[i].empty()) keys[i] = "Column" + decimal(static_cast<long long>(i) + 1);
  }
  keys.push_back(resultName);
  std::set<std::string> used(keys.begin(), keys.end());
  std::set<std::string> seen;
  for (std::string& key : keys) {
    if (seen.insert(key).second) continue;
    std::string unique;
    int number = 2;
    do {
      unique = key + "_" + decimal(number++);
    } while (used.contains(unique));
    used.insert(unique);
    seen.insert(unique);
    key = unique;
  }
  return keys;
}

void requireUtf8(const DataTable& table, const TableShape& shape) {
  forEachRecord(table, [&](const Record& record) {
    if (isUtf8(record.raw)) return;
    std::string scratch;
    for (std::size_t i = 0; i < record.fields.size(); ++i) {
      const std::string_view text = fieldText(record.fields[i], scratch);
      if (isUtf8(text)) continue;
      throw Problem(ExitStatus::dataRefused,
                    printable(table.name) + ", line " + decimal(record.fields[i].line) + ", " +
                        columnForMessage(shape, i) + ": " + quoted(text) + " is not UTF-8, which JSON has to be",
                    "Convert the file to UTF-8, or write csv or tsv, which keep the bytes as they are.");
    }
  });
}

void writeJson(const Results& results, bool onePerLine, OutputFile& out) {
  requireUtf8(results.table, results.shape);
  const std::vector<CellForm> forms = formsOf(results);
  std::vector<std::string> keys;
  for (const std::string& key : jsonKeys(results.shape, results.resultName)) keys.push_back(jsonString(key) + ":");

  bool isHeader = results.shape.hasHeader;
  std::size_t row = 0;
  std::string scratch;
  std::string line;
  if (!onePerLine) out.write("[");
  forEachRecord(results.table, [&](const Record& record) {
    if (record.isBlank() || std::exchange(isHeader, false)) return;
    line = onePerLine ? "{" : row == 0 ? "\n{" : ",\n{";
    for (std::size_t i = 0; i < record.fields.size(); ++i) {
      line += keys[i] + cellText(fieldText(record.fields[i], scratch), forms[i], results.mark) + ",";
    }
    line += keys.back() + decimal(results.labels[row++]) + "}";
    if (onePerLine) line += "\n";
    out.write(line);
  });
  if (!onePerLine) out.write("\n]\n");
}

}  // namespace mervane::cli
