#pragma once

#include "guard/facts.h"
#include "hosts/workbook/cell_address.h"

namespace mervane::workbook {

class Book;
class Sheet;

/// What a sort of these rows would stop at, and which formulas and names of the workbook would not mean the same cells
/// afterwards. A sheet that cannot be read counts as one without formulas.
/// @param rows as sorted by a run: the last column is borrowed, and its formulas become values anyway.
[[nodiscard]] guard::SortingFacts sortingFacts(Book& book, Sheet& sheet, const CellArea& rows);

}  // namespace mervane::workbook
