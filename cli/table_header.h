#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/data_table.h"

namespace mervane::cli {

/// Whether the first record names the columns.
///
/// Yes where a column is numbers throughout but for a word at its top and no column of numbers begins with a number;
/// and where no cell of the file is a number at all. No where columns of numbers begin with a number. Raises a Problem
/// with the status dataRefused where both readings are good: words and numbers that could both be labels, or a row
/// of years over columns of numbers.
/// @param choice what the user has said; it decides alone.
[[nodiscard]] bool hasHeader(const DataTable& table, std::optional<bool> choice);

/// The rows and columns of a table, once it is known what its first record is.
struct TableShape {
  bool hasHeader = false;
  std::vector<std::string> names;  ///< one for each column; empty texts without a header
  std::int64_t rows = 0;
};

/// Raises a Problem with the status dataRefused for a table that has a header and nothing below it.
[[nodiscard]] TableShape shapeOf(const DataTable& table, std::optional<bool> headerChoice);

/// How a message calls a column: "column height", or "column 3" where it has no name.
/// @param column zero-based.
[[nodiscard]] std::string columnForMessage(const TableShape& shape, std::size_t column);

}  // namespace mervane::cli
