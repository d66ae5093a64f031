#include "cli/output_file.h"
#include "cli/output_formats.h"
#include "cli/text_display.h"

namespace mervane::cli {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::string quotedField(std::string_view text) {
  std::string field = "\"";
  for (const char c : text) {
    if (c == '"') field += '"';
    field += c;
  }
  return field + '"';
}

bool needsQuotes(std::string_view text, char delimiter) {
  const char dangerous[] = {delimiter, '"', '\n', '\r'};
  return text.find_first_of(std::string_view(dangerous, sizeof dangerous)) != std::string_view::npos;
}

std::string fieldFor(std::string_view text, char delimiter) {
  return needsQuotes(text, delimiter) ? quotedField(text) : std::string(text);
}

/// A record under another delimiter. A field that is quoted already stays as it is.
void appendRecord(std::string& out, const Record& record, const Dialect& dialect, char delimiter) {
  std::string scratch;
  bool isFirst = true;
  for (const Field& field : record.fields) {
    if (!isFirst) out += delimiter;
    isFirst = false;
    if (field.isQuoted && dialect.quote == '"') {
      out += field.raw;
    } else {
      out += fieldFor(fieldText(field, scratch), delimiter);
    }
  }
}

}  // namespace

void writeDelimited(const Results& results, char delimiter, OutputFile& out) {
  const bool isSame = delimiter == results.table.dialect.delimiter;
  if (results.table.hasByteOrderMark) out.write(byteOrderMark);
  bool isHeader = results.shape.hasHeader;
  std::size_t row = 0;
  std::string line;
  forEachRecord(results.table, [&](const Record& record) {
    line.clear();
    if (!record.isBlank()) {
      if (isSame) {
        line += record.raw;
      } else {
        appendRecord(line, record, results.table.dialect, delimiter);
      }
      line += delimiter;
      line += isHeader ? fieldFor(results.resultName, delimiter) : decimal(results.labels[row]);
      if (!isHeader) ++row;
      isHeader = false;
    }
    line += record.terminator;
    out.write(line);
  });
}

}  // namespace mervane::cli
