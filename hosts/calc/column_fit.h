#pragma once

#include "hosts/calc/session.h"

namespace mervane::calc {

/// Makes whole columns as wide as their contents need. Nothing may wait to be written.
///
/// OPTIMIZATION: the office lays out each cell of a column, which takes seconds for long ones. Of many plain numbers
/// only those with the most characters can be the widest, so some of these are laid out on a sheet that is there as
/// long as that takes. Columns where that cannot be told for sure are left to the office.
void fitColumns(Session& session, const SheetArea& columns);

}  // namespace mervane::calc
