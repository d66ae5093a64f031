#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "spreadsheet/cell_address.h"

namespace mervane::guard {

using sheet::CellAddress;
using sheet::CellArea;

/// What a run is about to do, as the options dialog says it, and where it will write.
struct Plan {
  std::string inputSheet;
  CellArea inputs;
  std::string outputSheet;
  CellAddress outputs;  ///< first cell of the listing, under its heading
  std::int32_t clusters = 3;

  bool oneColumn = true;
  bool sort = true;
  bool autofilter = true;
  bool charts = true;
  bool averages = true;
  bool weightedAverages = true;
  bool minimums = true;
  bool maximums = true;
  bool weights = true;
};

[[nodiscard]] std::int32_t listingColumns(const Plan& plan);
/// The listing without its heading.
[[nodiscard]] CellArea listing(const Plan& plan);
/// The same with the heading, which a listing in the first row does not have.
[[nodiscard]] CellArea listingWithHeading(const Plan& plan);
/// The cells of the statistics under the inputs: those of all blocks as wide as the inputs and their labels, then those
/// of the weights, which fill two columns only. Without what is not printed.
[[nodiscard]] std::vector<CellArea> statistics(const Plan& plan);
/// The column beside the inputs that sorting borrows and gives its values back.
[[nodiscard]] CellArea scratchColumn(const Plan& plan);
/// The rows that sorting moves: from the first column of the sheet to the scratch column.
[[nodiscard]] CellArea sortedRows(const Plan& plan);
/// Whether the plan makes a chart.
[[nodiscard]] bool drawsCharts(const Plan& plan);

}  // namespace mervane::guard
