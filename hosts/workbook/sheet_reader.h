#pragma once

#include <string>

namespace mervane::workbook {

class CellStore;
class Package;
class SheetFrame;
class TextTable;

/// Reads a sheet's part, piece by piece, into its cells and its frame. Raises applicationDefined, naming the part and
/// the cell, for what is no sheet.
/// @param styleCount number of cell formats of the workbook; a cell's format beyond them is refused.
void readSheet(const Package& package, const std::string& part, std::size_t styleCount, TextTable& texts,
               CellStore& cells, SheetFrame& frame);

}  // namespace mervane::workbook
