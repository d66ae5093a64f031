#pragma once

#include "guard/facts.h"
#include "hosts/calc/session.h"

namespace mervane::calc {

/// Which formulas and names of the document would not mean the same cells after a sort of rows. Hidden rows are none of
/// them: the office's sort takes them along.
/// @param rows as a run sorts them: the last column is borrowed
[[nodiscard]] guard::SortingFacts sortingFacts(Session& session, const SheetArea& rows);

}  // namespace mervane::calc
