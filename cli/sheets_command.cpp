#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/json_text.h"
#include "cli/output_file.h"
#include "cli/text_display.h"
#include "cli/workbook_file.h"
#include "cli/workbook_ranges.h"
#include "guard/proposed_numbers.h"

namespace mervane::cli {
namespace {

using hosts::OpenBook;

std::string headersText(const std::vector<std::string>& headers) {
  constexpr std::size_t mostColumns = 12;
  constexpr std::size_t mostCells = 24;
  std::string text;
  for (std::size_t i = 0; i < headers.size(); ++i) {
    if (i == mostColumns) return text + ", ...";
    text += (i == 0 ? "" : ", ") + (headers[i].empty() ? "-" : cutToWidth(headers[i], mostCells));
  }
  return text;
}

void writeText(OpenBook& book, OutputFile& out) {
  for (const OpenBook::SheetInfo& info : book.sheets()) {
    const std::string name = printable(sheet::quotedSheetName(info.name));
    if (!info.used) {
      out.write(name + (info.isActive ? " (active)" : "") + ": empty\n");
      continue;
    }
    out.write(name + "!" + sheet::a1(*info.used) + (info.isActive ? " (active)" : "") + ": " +
              counted(info.used->rows(), "row", "rows") + ", " + counted(info.used->columns(), "column", "columns") +
              "\n");
    out.write("    first row  " + headersText(info.headers) + "\n");
    if (const auto block = guard::proposedNumbers(book, info.name)) {
      out.write("    numbers    " + printable(referenceOf({info.name, *block})) + "\n");
    }
  }
}

std::string jsonOf(OpenBook& book, const OpenBook::SheetInfo& info) {
  std::string headers;
  for (const std::string& header : info.headers) headers += (headers.empty() ? "" : ",") + jsonString(header);
  const auto block = guard::proposedNumbers(book, info.name);
  return "{\"name\":" + jsonString(info.name) + ",\"active\":" + (info.isActive ? "true" : "false") +
         ",\"used\":" + (info.used ? jsonString(sheet::a1(*info.used)) : "null") + ",\"headers\":[" + headers +
         "],\"numbers\":" + (block ? jsonString(sheet::a1(*block)) : "null") + "}";
}

void writeJson(OpenBook& book, OutputFile& out) {
  std::string text;
  for (const OpenBook::SheetInfo& info : book.sheets()) {
    text += (text.empty() ? "[\n" : ",\n") + jsonOf(book, info);
  }
  out.write(text.empty() ? "[]\n" : text + "\n]\n");
}

}  // namespace

ExitStatus sheets(const SheetsOptions& options) {
  const auto book = openWorkbook(options.input, options.host);
  const auto out = openOutput("-");
  readingWorkbook(options.input, [&] { options.json ? writeJson(*book, *out) : writeText(*book, *out); });
  out->commit();
  return ExitStatus::done;
}

}  // namespace mervane::cli
