#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <optional>
#include <string>

#include "calc/office.h"
#include "guard/facts.h"

namespace mervane::addin {

/// What the selection proposes to be clustered: the selected range, or for one cell the block of numbers around it.
/// Results of an earlier run are no such numbers, and the next run is proposed to write over them; others begin beside
/// whatever stands on the sheet. Left out are up to two heading rows, and columns of texts, of dates and of numbers
/// that only count the rows.
struct Proposal {
  std::string inputs;
  /// Empty where there is no free column, or none could be looked for.
  std::string outputs;
};
/// Empty where the selection has no numbers.
[[nodiscard]] std::optional<Proposal> proposeFromSelection(const uno::Reference<star::frame::XModel>& document,
                                                           guard::BookFacts& facts);

}  // namespace mervane::addin
