#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "guard/refusal.h"
#include "hosts/book/open_book.h"

/// Where a run reads and writes, as far as the program itself has to know it.
namespace mervane::cli {

using guard::lastReferenceColumn;
using guard::lastReferenceRow;
using guard::referenceOf;

/// The one rectangular block of numbers on the active sheet, without columns that only count its rows.
[[nodiscard]] std::optional<hosts::OpenBook::Place> proposedInputs(hosts::OpenBook& book);

/// Columns beside the inputs that hold something in one of their rows.
struct Neighbours {
  std::vector<std::string> left;      ///< sorting moves them with the rows
  std::vector<std::string> right;     ///< sorting leaves them where they are
  std::vector<std::string> comments;  ///< cells whose comments stay behind when their rows move
};
/// @param listing columns that the run writes its listing to, which do not count; empty area for none.
[[nodiscard]] Neighbours neighboursOf(hosts::OpenBook& book, const hosts::OpenBook::Place& inputs,
                                      const std::optional<sheet::CellArea>& listing);

/// Sentences about what sorting does to them.
[[nodiscard]] std::vector<std::string> sortingWarnings(const Neighbours& neighbours);

}  // namespace mervane::cli
