#pragma once

#include <optional>

#include "guard/facts.h"
#include "guard/plan.h"

namespace mervane::guard {

/// A first cell for the listing beside whatever stands on the sheet of the inputs, in their first row, with one column
/// free in between, so that neither listing nor charts touch anything. Nothing where that is beyond column ZZ.
[[nodiscard]] std::optional<CellAddress> proposedOutputs(const Plan& plan, BookFacts& book);

/// The plan with as little left out or moved as it takes to harm nothing that can be spared: the listing moves, the
/// rows stay unsorted, the filter stays as it is, blocks of statistics or charts are left out. What nothing helps
/// against, such as the loss of charts without a title, is still among the harms of the result.
/// @param withConsent whether only what is forbidden is to be avoided
[[nodiscard]] Plan sparingPlan(Plan plan, BookFacts& book, bool withConsent = false);

/// The same where nothing is left that it harms, and nothing otherwise.
[[nodiscard]] std::optional<Plan> harmlessPlan(const Plan& plan, BookFacts& book);

}  // namespace mervane::guard
