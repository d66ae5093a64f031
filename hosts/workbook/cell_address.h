#pragma once

#include "spreadsheet/cell_address.h"

/// The names of cells and areas, which all hosts share.
namespace mervane::workbook {

using sheet::a1;
using sheet::absoluteA1;
using sheet::CellAddress;
using sheet::CellArea;
using sheet::columnLetters;
using sheet::isOnSheet;
using sheet::lastSheetColumn;
using sheet::lastSheetRow;
using sheet::parseArea;
using sheet::parseCell;
using sheet::parseReference;
using sheet::quotedSheetName;
using sheet::ReferenceText;
using sheet::SheetArea;

}  // namespace mervane::workbook
