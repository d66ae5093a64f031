#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/byte_source.h"
#include "cli/cell_number.h"
#include "cli/csv_dialect.h"
#include "cli/csv_reader.h"

namespace mervane::cli {

/// A cell that a message can point at.
struct CellPlace {
  std::int64_t line = 0;
  std::string text;
};

/// What stands in one column, the first record left out: that may be a header, and it is kept apart.
struct ColumnCensus {
  static constexpr std::size_t kinds = 6;

  CellKind first = CellKind::empty;
  std::array<std::int64_t, kinds> counts{};  ///< by CellKind
  std::int64_t jsonNumbers = 0;
  std::optional<CellPlace> firstNotNumber;

  [[nodiscard]] std::int64_t count(CellKind kind) const { return counts[static_cast<std::size_t>(kind)]; }
  [[nodiscard]] std::int64_t numbers() const;
  [[nodiscard]] std::int64_t others() const { return count(CellKind::empty) + count(CellKind::text); }
};

/// A data file in memory: every byte of it, and a census of its columns.
struct DataTable {
  std::string name;  ///< for messages
  Dialect dialect;
  bool hasByteOrderMark = false;
  std::string text;                ///< the whole text behind the byte order mark
  std::int64_t records = 0;        ///< the blank lines not counted
  std::vector<std::string> first;  ///< the texts of the first record
  std::vector<bool> firstIsJsonNumber;
  std::int64_t firstLine = 0;
  std::vector<ColumnCensus> columns;
};

/// What the user has said about the form of the file; the rest is found out.
struct DialectChoice {
  std::optional<char> delimiter;
  std::optional<char> quote = '"';
};

/// Reads a source to its end. Raises a Problem with the status dataRefused for a text that is no table: nothing in it,
/// a wrong encoding, a quote never closed, a record with another number of fields than the first.
/// @param name of the source, for messages.
[[nodiscard]] DataTable readTable(ByteSource& source, const std::string& name, const DialectChoice& choice);

/// Visits every record of the table again, the blank ones too: visit(const Record&).
template <class Visit>
void forEachRecord(const DataTable& table, Visit visit) {
  MemorySource text(table.text);
  // The reader passes one mark; a second one is the beginning of the first field.
  PrefixedSource source(table.hasByteOrderMark ? "\xEF\xBB\xBF" : "", text);
  CsvReader reader(source, table.dialect);
  Record record;
  while (reader.next(record)) visit(record);
}

}  // namespace mervane::cli
