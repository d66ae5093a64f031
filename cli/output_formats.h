#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "cli/data_table.h"
#include "cli/table_header.h"

namespace mervane::cli {

class OutputFile;

enum class Format { csv, tsv, json, ndjson, table };

/// The format that a file name ends in: .csv, .tsv and .tab, .json, .ndjson and .jsonl, .txt (a table).
[[nodiscard]] std::optional<Format> formatOfName(const std::string& path);

/// A table and the cluster numbers that belong to its rows.
struct Results {
  const DataTable& table;
  const TableShape& shape;
  const std::vector<std::size_t>& inputs;  ///< the columns that were clustered, zero-based
  DecimalMark mark = DecimalMark::point;
  std::span<const std::int32_t> labels;  ///< one for each row
  std::string resultName;                ///< name of the column that is added
};

/// The name of the result column: the one wished for, with "_2", "_3" behind it where the table has one of that name.
[[nodiscard]] std::string resultColumnName(const std::string& wished, const TableShape& shape);

/// The delimiter that a format writes: the table's own for the delimited format that it is in already.
[[nodiscard]] char delimiterFor(Format format, const Dialect& dialect, std::optional<char> choice);

/// Delimited text. Where the delimiter is the table's own, every record is written back byte for byte with one field
/// added; otherwise fields are quoted that need it. Line ends, blank lines and the byte order mark stay.
void writeDelimited(const Results& results, char delimiter, OutputFile& out);

/// One array of objects, or one object on each line. A clustered column gives numbers; so does any other in which
/// every cell is a number in the notation of JSON, digit for digit; the rest gives strings. Columns without a name are
/// called "Column1", "Column2" by their position, and a name that occurs again gets "_2", "_3" behind it. Raises a
/// Problem with the status dataRefused for text that is not UTF-8.
void writeJson(const Results& results, bool onePerLine, OutputFile& out);

/// Columns of text for people, numbers to the right, long cells cut.
void writeTable(const Results& results, OutputFile& out);

/// The keys of a row's object, the result column last.
[[nodiscard]] std::vector<std::string> jsonKeys(const TableShape& shape, const std::string& resultName);
/// Refuses what writeJson could not write; to be told before a long run.
void requireUtf8(const DataTable& table, const TableShape& shape);

}  // namespace mervane::cli
