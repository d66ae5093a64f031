#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "checks/refusal.h"
#include "hosts/book/open_book.h"

/// Where a run reads and writes, as far as the program itself has to know it.
namespace mervane::cli {

using checks::lastReferenceColumn;
using checks::lastReferenceRow;
using checks::referenceOf;

/// The one rectangular block of numbers on the active sheet, without columns that only count its rows.
[[nodiscard]] std::optional<hosts::OpenBook::Place> proposedInputs(hosts::OpenBook& book);
/// A free cell beside the inputs for the listing: in their first row, one column apart from whatever stands on the
/// sheet. Nothing where that is beyond column ZZ, the last that a reference may name.
[[nodiscard]] std::optional<hosts::OpenBook::Place> proposedOutputs(hosts::OpenBook& book,
                                                                    const hosts::OpenBook::Place& inputs);

/// Columns beside the inputs that hold something in one of their rows.
struct Neighbours {
  std::vector<std::string> left;      ///< sorting moves them with the rows
  std::vector<std::string> right;     ///< sorting leaves them where they are
  std::vector<std::string> comments;  ///< cells whose comments stay behind when their rows move
  /// The column beside the inputs, which sorting needs for itself and puts back as values, where that changes
  /// something.
  std::string formulas;     ///< its letters where it holds formulas
  std::string equalsSigns;  ///< its letters where it holds texts that may become formulas
};
/// @param listing columns that the run writes its listing to, which do not count; empty area for none.
[[nodiscard]] Neighbours neighboursOf(hosts::OpenBook& book, const hosts::OpenBook::Place& inputs,
                                      const std::optional<sheet::CellArea>& listing);

/// Sentences about what sorting does to them.
[[nodiscard]] std::vector<std::string> sortingWarnings(const Neighbours& neighbours);

}  // namespace mervane::cli
