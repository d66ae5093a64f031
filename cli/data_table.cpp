#include "cli/data_table.h"

#include "cli/problem.h"
#include "cli/text_display.h"

namespace mervane::cli {
namespace {

constexpr std::size_t sampleSize = 262144;

[[noreturn]] void refuse(const std::string& name, const std::string& what, const std::string& advice) {
  throw Problem(ExitStatus::dataRefused, printable(name) + what, advice);
}

std::string atLine(std::int64_t line) {
  return ", line " + decimal(line);
}

/// Refuses what is recognisably no text in UTF-8 before it is taken apart.
void refuseForeignEncodings(const std::string& head, const std::string& name) {
  const std::string advice = "Save it as a CSV file in UTF-8.";
  if (head.starts_with("\xFF\xFE") || head.starts_with("\xFE\xFF")) refuse(name, " is in UTF-16", advice);
  if (head.starts_with("PK\x03\x04")) {
    refuse(name, " is a zip archive, perhaps a workbook", "Name a workbook with the ending .xlsx, or " + advice);
  }
  if (head.starts_with("\xD0\xCF\x11\xE0")) refuse(name, " is a workbook of the old binary kind", advice);
}

[[noreturn]] void refuseMalformed(const CsvError& error, const std::string& name) {
  const std::string place = atLine(error.line()) + ", field " + decimal(static_cast<long long>(error.field())) + ": ";
  switch (error.kind()) {
    case CsvError::Kind::textAfterQuote:
      refuse(name, place + "text behind the closing quote in " + quoted(error.text()),
             "Double the quotes inside a quoted field, or say --quote none.");
    case CsvError::Kind::quoteNotClosed:
      refuse(name, place + "the quote that opens " + quoted(error.text()) + " is never closed",
             "Close it, or say --quote none.");
    case CsvError::Kind::zeroByte:
      break;
  }
  refuse(name, place + "a zero byte behind " + quoted(error.text()), "Save the file as a CSV file in UTF-8.");
}

char delimiterOf(const std::string& head, bool isWhole, const std::string& name, const DialectChoice& choice) {
  if (choice.delimiter) return *choice.delimiter;
  const std::optional<char> found = detectDelimiter(head, isWhole, choice.quote);
  if (!found) {
    refuse(name, ": more than one character may be the delimiter",
           "Say which with --delimiter comma, semicolon, tab or bar.");
  }
  return *found;
}

void takeFirst(DataTable& table, const Record& record) {
  table.firstLine = record.line;
  table.columns.resize(record.fields.size());
  std::string scratch;
  for (std::size_t i = 0; i < record.fields.size(); ++i) {
    const std::string_view text = fieldText(record.fields[i], scratch);
    table.first.emplace_back(text);
    table.firstIsJsonNumber.push_back(isJsonNumber(text));
    table.columns[i].first = kindOfCell(text);
  }
}

void count(DataTable& table, const Record& record, std::string& scratch) {
  for (std::size_t i = 0; i < record.fields.size(); ++i) {
    const std::string_view text = fieldText(record.fields[i], scratch);
    ColumnCensus& column = table.columns[i];
    const CellKind kind = kindOfCell(text);
    ++column.counts[static_cast<std::size_t>(kind)];
    if (isJsonNumber(text)) ++column.jsonNumbers;
    if (!isNumberKind(kind) && !column.firstNotNumber) {
      column.firstNotNumber = CellPlace{record.fields[i].line, std::string(text)};
    }
  }
}

void refuseUneven(const DataTable& table, const Record& record) {
  if (record.fields.size() == table.columns.size()) return;
  const auto fields = [](std::size_t number) { return counted(static_cast<long long>(number), "field", "fields"); };
  refuse(table.name,
         atLine(record.line) + ": " + fields(record.fields.size()) + " where line " + decimal(table.firstLine) +
             " has " + fields(table.columns.size()) + ": " + quoted(record.raw),
         "Mend the line, or name the right delimiter with --delimiter (now: " + delimiterName(table.dialect.delimiter) +
             ").");
}

}  // namespace

std::int64_t ColumnCensus::numbers() const {
  std::int64_t sum = 0;
  for (const std::int64_t one : counts) sum += one;
  return sum - others();
}

DataTable readTable(ByteSource& source, const std::string& name, const DialectChoice& choice) {
  const std::string head = readAtMost(source, sampleSize);
  refuseForeignEncodings(head, name);

  DataTable table;
  table.name = name;
  table.dialect.quote = choice.quote;
  table.dialect.delimiter = delimiterOf(head, head.size() < sampleSize, name, choice);

  PrefixedSource whole(head, source);
  CsvReader reader(whole, table.dialect);
  Record record;
  std::string scratch;
  try {
    while (reader.next(record)) {
      table.text.append(record.raw).append(record.terminator);
      if (record.isBlank()) continue;
      if (++table.records == 1) {
        takeFirst(table, record);
      } else {
        refuseUneven(table, record);
        count(table, record, scratch);
      }
    }
  } catch (const CsvError& error) {
    refuseMalformed(error, name);
  }
  table.hasByteOrderMark = reader.hadByteOrderMark();
  if (table.records == 0) refuse(name, " holds no rows", "Give it a line for each row, with numbers in it.");
  return table;
}

}  // namespace mervane::cli
