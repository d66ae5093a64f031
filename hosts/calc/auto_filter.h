#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "guard/facts.h"
#include "hosts/calc/session.h"

namespace mervane::calc {

/// Whether the sheet has filter arrows that belong to no table.
[[nodiscard]] bool hasAutoFilter(Session& session, std::int32_t sheet);

/// Whether any of the cells may have an arrow, of a table or of none.
[[nodiscard]] bool hasFilterArrows(const Session& session, const SheetArea& area);

/// The filter of the sheet itself, where it has one.
[[nodiscard]] std::optional<guard::Filter> filterOf(const Session& session, std::int32_t sheet);
/// The tables of the sheet, which are named database ranges.
[[nodiscard]] std::vector<guard::Table> tablesOf(const Session& session, std::int32_t sheet);

/// Switches the arrows on if they are off and off if they are on. An area in a table, a named database range, switches
/// that one's. Otherwise one cell stands for the block of filled cells around it, as far as that leaves tables, pivot
/// tables and merged cells alone; raises where there is none.
void toggleAutoFilter(Session& session, const SheetArea& area);

}  // namespace mervane::calc
