#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "cli/cell_number.h"
#include "cli/data_table.h"
#include "cli/table_header.h"

namespace mervane::cli {

/// The columns that the user names, in the order named.
///
/// Each text is a name of the header, a number from 1, a range of numbers such as 2-5, or several of these with commas
/// between. A text that is a column's name as it stands is taken as that, also where it looks like a number or holds
/// commas; a name may differ in case where only one column then fits. Raises a Problem with the status usage for a
/// column that there is not, one that is named twice, and a name that several columns bear.
[[nodiscard]] std::vector<std::size_t> namedColumns(const std::vector<std::string>& texts, const TableShape& shape);

struct AutomaticColumns {
  std::vector<std::size_t> columns;
  /// Sentences about columns that were left out though they look as if they were meant.
  std::vector<std::string> remarks;
};

/// The columns that hold numbers in every row, except one that bears the name of the result column: that is what an
/// earlier run has appended. Raises a Problem with the status dataRefused where there is none.
[[nodiscard]] AutomaticColumns automaticColumns(const DataTable& table, const TableShape& shape,
                                                const std::string& resultName);

/// The decimal mark of the columns given: the full stop unless they hold decimal commas.
///
/// Raises a Problem with the status dataRefused where both occur, and where all that there is are numbers like
/// 1,234, which may be grouped.
[[nodiscard]] DecimalMark decimalMarkOf(const DataTable& table, const TableShape& shape,
                                        const std::vector<std::size_t>& columns);

/// The numbers of the columns given, row by row. Raises a Problem with the status dataRefused that names the line, the
/// column and the text of the first cell that is none.
[[nodiscard]] std::vector<double> numbersOf(const DataTable& table, const TableShape& shape,
                                            const std::vector<std::size_t>& columns, DecimalMark mark);

}  // namespace mervane::cli
