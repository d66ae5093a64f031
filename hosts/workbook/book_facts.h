#pragma once

#include <vector>

#include "guard/facts.h"
#include "hosts/workbook/cell_address.h"

namespace mervane::workbook {

class Book;
class Sheet;

/// What stands on the sheet. Raises where its drawing or a part of a table is damaged.
[[nodiscard]] guard::SheetFacts sheetFacts(Book& book, Sheet& sheet);
[[nodiscard]] std::vector<guard::PivotTable> pivotTablesOf(Sheet& sheet);
[[nodiscard]] guard::AreaFacts areaFacts(Sheet& sheet, const CellArea& area);

}  // namespace mervane::workbook
