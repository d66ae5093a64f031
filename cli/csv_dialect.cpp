#include "cli/csv_dialect.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include "cli/byte_source.h"
#include "cli/cell_number.h"
#include "cli/csv_reader.h"

namespace mervane::cli {
namespace {

constexpr std::array candidates{',', ';', '\t', '|'};

/// What the sample looks like when one candidate divides it.
struct Trial {
  char delimiter = ',';
  bool occurs = false;
  bool isEven = false;  ///< all records have the same number of fields, two or more
  std::size_t columns = 0;
  std::size_t numericColumns = 0;
};

/// Reads all records of the sample but a last one that may be cut off. False where it is not well-formed.
template <class Visit>
bool visitRecords(std::string_view sample, bool isWhole, const Dialect& dialect, Visit visit) {
  MemorySource source(sample);
  CsvReader reader(source, dialect, std::max<std::size_t>(sample.size(), 1));
  Record record;
  std::size_t seen = 0;
  try {
    while (reader.next(record)) {
      seen += record.raw.size() + record.terminator.size();
      if (!isWhole && seen >= sample.size()) break;
      if (!record.isBlank()) visit(record);
    }
  } catch (const CsvError& error) {
    return !isWhole && error.kind() == CsvError::Kind::quoteNotClosed;
  }
  return true;
}

Trial tryDelimiter(std::string_view sample, bool isWhole, const Dialect& dialect) {
  Trial trial{.delimiter = dialect.delimiter};
  std::vector<bool> isNumeric;
  std::size_t records = 0;
  bool isEven = true;
  std::string scratch;
  const bool wellFormed = visitRecords(sample, isWhole, dialect, [&](const Record& record) {
    ++records;
    if (record.fields.size() > 1) trial.occurs = true;
    if (records == 1) {
      trial.columns = record.fields.size();
      isNumeric.assign(trial.columns, true);
    }
    isEven = isEven && record.fields.size() == trial.columns;
    if (!isEven || records == 1) return;  // The first record may be a header.
    for (std::size_t i = 0; i < trial.columns; ++i) {
      if (isNumeric[i]) isNumeric[i] = isNumberKind(kindOfCell(fieldText(record.fields[i], scratch)));
    }
  });
  trial.isEven = wellFormed && isEven && trial.columns > 1;
  if (records > 1) trial.numericColumns = static_cast<std::size_t>(std::ranges::count(isNumeric, true));
  return trial;
}

/// Whether the share of numeric columns is greater on the left.
bool isBetter(const Trial& left, const Trial& right) {
  return left.numericColumns * right.columns > right.numericColumns * left.columns;
}

std::optional<char> bestOf(const std::vector<Trial>& trials) {
  const Trial* best = &trials.front();
  for (const Trial& trial : trials) {
    if (isBetter(trial, *best)) best = &trial;
  }
  const auto isAsGood = [best](const Trial& trial) { return !isBetter(*best, trial); };
  if (std::ranges::count_if(trials, isAsGood) > 1) return std::nullopt;
  return best->delimiter;
}

}  // namespace

std::optional<char> detectDelimiter(std::string_view sample, bool isWhole, std::optional<char> quote) {
  std::vector<Trial> even;
  std::vector<Trial> occurring;
  for (const char candidate : candidates) {
    const Trial trial = tryDelimiter(sample, isWhole, {candidate, quote});
    if (trial.isEven) even.push_back(trial);
    if (trial.occurs) occurring.push_back(trial);
  }
  if (!even.empty()) return bestOf(even);
  if (occurring.empty()) return ',';
  if (occurring.size() > 1) return std::nullopt;
  return occurring.front().delimiter;
}

std::string delimiterName(char delimiter) {
  switch (delimiter) {
    case ',':
      return "comma";
    case ';':
      return "semicolon";
    case '\t':
      return "tab";
    case '|':
      return "bar";
    default:
      return std::string("\"") + delimiter + '"';
  }
}

}  // namespace mervane::cli
