#pragma once

#include <cstdint>

#include "hosts/workbook/cell_address.h"
#include "mervane/variant.h"

namespace mervane::workbook {

class Book;

/// Range.Interior, Range.Font and Range.Borders(index). A property that differs over the cells reads as Null.
[[nodiscard]] Variant makeInterior(Book& book, const SheetArea& area);
[[nodiscard]] Variant makeFont(Book& book, const SheetArea& area);
/// @param index 7 left, 8 top, 9 bottom, 10 right, 11 inner verticals, 12 inner horizontals; others raise.
[[nodiscard]] Variant makeBorder(Book& book, const SheetArea& area, std::int32_t index);

}  // namespace mervane::workbook
