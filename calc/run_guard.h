#pragma once

#include <functional>
#include <string>

#include "guard/book_cells.h"
#include "guard/facts.h"
#include "platform/option_item.h"

namespace mervane::addin {

/// What there is to say against a run, as texts for a message; both empty: nothing.
struct Objections {
  /// Why the run is refused, whatever the user says.
  std::string refusal;
  /// What the run would remove or overwrite, and whether to go on with it.
  std::string question;
  /// What sorting would tear apart; to be asked like `question` where somebody is there to be asked.
  std::string tornApart;
};

/// Makes a sheet the active one, where a run looks for old charts and for a filter.
using ActivateSheet = std::function<void(const std::string& sheet)>;

/// Looks at what a run with these options would do to the document. The sheet of the inputs is made the active one
/// first. References that the component itself is about to refuse are left to it.
[[nodiscard]] Objections objectionsTo(const platform::OptionItems& options, guard::BookCells& cells,
                                      guard::BookFacts& facts, const ActivateSheet& activate);

}  // namespace mervane::addin
