#pragma once

#include <cstdint>
#include <memory>

#include "mervane/variant.h"
#include "spreadsheet/cell_address.h"

namespace mervane::calc {

class Session;

/// Range.Interior, Range.Font and Range.Borders(index). A property that differs over the cells reads as Null.
[[nodiscard]] Variant makeInterior(const std::shared_ptr<Session>& session, const sheet::SheetArea& area);
[[nodiscard]] Variant makeFont(const std::shared_ptr<Session>& session, const sheet::SheetArea& area);
/// @param index 7 left, 8 top, 9 bottom, 10 right, 11 inner verticals, 12 inner horizontals; others raise.
[[nodiscard]] Variant makeBorder(const std::shared_ptr<Session>& session, const sheet::SheetArea& area,
                                 std::int32_t index);

}  // namespace mervane::calc
