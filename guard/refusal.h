#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "guard/book_cells.h"
#include "guard/reference_limits.h"

namespace mervane::guard {

/// What the user calls the two references, such as "--inputs".
struct ReferenceNames {
  std::string_view inputs;
  std::string_view outputs;
};

/// "Sheet1!B2:E151".
[[nodiscard]] std::string referenceOf(const BookCells::Place& place);

/// What is wrong with a reference text, as a sentence without a full stop that begins with what the user calls it and
/// says what to give instead; empty where the component takes it.
[[nodiscard]] std::string referenceTrouble(BookCells& book, std::string_view name, const std::string& reference);

/// Where the trouble lies that made the component refuse a run: a reference, a cell and its text, or a column. Empty
/// where nothing is found. The two references are those that the dialog held.
/// @param message what the component itself has said.
[[nodiscard]] std::string whyRefused(BookCells& book, const ReferenceNames& names, const std::string& message,
                                     const std::string& inputs, const std::string& outputs);

}  // namespace mervane::guard
