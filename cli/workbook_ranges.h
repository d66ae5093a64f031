#pragma once

#include <optional>
#include <string>
#include <vector>

#include "hosts/workbook/workbook_host.h"

/// Where a run reads and writes, as far as the program itself has to know it.
namespace mervane::cli {

/// "Sheet1!B2:E151".
[[nodiscard]] std::string referenceOf(const workbook::WorkbookHost::Place& place);

/// The one rectangular block of numbers on the active sheet.
[[nodiscard]] std::optional<workbook::WorkbookHost::Place> proposedInputs(workbook::WorkbookHost& book);
/// A free cell beside the inputs for the listing: in their first row, one column apart from whatever stands on the
/// sheet. Nothing where that is beyond column ZZ, the last that a reference may name.
[[nodiscard]] std::optional<workbook::WorkbookHost::Place> proposedOutputs(workbook::WorkbookHost& book,
                                                                           const workbook::WorkbookHost::Place& inputs);

/// Columns beside the inputs that hold something in one of their rows.
struct Neighbours {
  std::vector<std::string> left;   ///< sorting moves them with the rows
  std::vector<std::string> right;  ///< sorting leaves them where they are
};
/// @param listing columns that the run writes its listing to, which do not count; empty area for none.
[[nodiscard]] Neighbours neighboursOf(workbook::WorkbookHost& book, const workbook::WorkbookHost::Place& inputs,
                                      const std::optional<workbook::CellArea>& listing);

/// Sentences about what sorting does to them.
[[nodiscard]] std::vector<std::string> sortingWarnings(const Neighbours& neighbours);

}  // namespace mervane::cli
