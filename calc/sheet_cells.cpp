#include "calc/sheet_cells.h"

#include <algorithm>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XSheetCellCursor.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XUniqueCellFormatRangesSupplier.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <com/sun/star/util/NumberFormat.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>

namespace mervane::addin {

using star::table::CellRangeAddress;
using Document = uno::Reference<star::frame::XModel>;
using Sheet = uno::Reference<star::sheet::XSpreadsheet>;

namespace {

bool showsDates(const Document& document, const uno::Reference<star::beans::XPropertySet>& cells) {
  sal_Int32 key = 0;
  cells->getPropertyValue("NumberFormat") >>= key;
  const uno::Reference<star::util::XNumberFormatsSupplier> supplier(document, uno::UNO_QUERY_THROW);
  sal_Int16 type = 0;
  supplier->getNumberFormats()->getByKey(key)->getPropertyValue("Type") >>= type;
  return (type & star::util::NumberFormat::DATETIME) != 0;
}

}  // namespace

Sheet sheetAt(const Document& document, sal_Int16 position) {
  const uno::Reference<star::sheet::XSpreadsheetDocument> book(document, uno::UNO_QUERY_THROW);
  const uno::Reference<star::container::XIndexAccess> sheets(book->getSheets(), uno::UNO_QUERY_THROW);
  return Sheet(sheets->getByIndex(position), uno::UNO_QUERY_THROW);
}

CellRangeAddress addressOf(const uno::Reference<uno::XInterface>& range) {
  const uno::Reference<star::sheet::XCellRangeAddressable> addressable(range, uno::UNO_QUERY_THROW);
  return addressable->getRangeAddress();
}

/// The block of filled cells around a range.
CellRangeAddress regionAround(const Document& document, const CellRangeAddress& range) {
  const Sheet sheet = sheetAt(document, range.Sheet);
  const uno::Reference<star::sheet::XSheetCellRange> start(
      sheet->getCellRangeByPosition(range.StartColumn, range.StartRow, range.EndColumn, range.EndRow),
      uno::UNO_QUERY_THROW);
  const auto cursor = sheet->createCursorByRange(start);
  cursor->collapseToCurrentRegion();
  return addressOf(cursor);
}

CellRangeAddress usedPart(const Document& document, CellRangeAddress range) {
  const Sheet sheet = sheetAt(document, range.Sheet);
  const auto cursor = sheet->createCursor();
  const uno::Reference<star::sheet::XUsedAreaCursor> used(cursor, uno::UNO_QUERY_THROW);
  used->gotoEndOfUsedArea(false);
  const CellRangeAddress end = addressOf(cursor);
  range.EndRow = std::clamp(range.EndRow, range.StartRow, std::max(end.EndRow, range.StartRow));
  range.EndColumn = std::clamp(range.EndColumn, range.StartColumn, std::max(end.EndColumn, range.StartColumn));
  return range;
}

SheetCells::SheetCells(const Document& document, const CellRangeAddress& range) : range_(range) {
  const Sheet sheet = sheetAt(document, range.Sheet);
  const uno::Reference<star::sheet::XCellRangeData> data(
      sheet->getCellRangeByPosition(range.StartColumn, range.StartRow, range.EndColumn, range.EndRow),
      uno::UNO_QUERY_THROW);
  rows_ = data->getDataArray();
  const uno::Reference<star::sheet::XUniqueCellFormatRangesSupplier> supplier(data, uno::UNO_QUERY_THROW);
  const auto formats = supplier->getUniqueCellFormatRanges();
  for (sal_Int32 i = 0; i < formats->getCount(); ++i) {
    const uno::Reference<star::sheet::XSheetCellRanges> cells(formats->getByIndex(i), uno::UNO_QUERY_THROW);
    if (!showsDates(document, uno::Reference<star::beans::XPropertySet>(cells, uno::UNO_QUERY_THROW))) continue;
    for (const CellRangeAddress& one : cells->getRangeAddresses()) dates_.push_back(one);
  }
}

bool SheetCells::isNumber(sal_Int32 column, sal_Int32 row) const {
  if (at(column, row).getValueTypeClass() != uno::TypeClass_DOUBLE) return false;
  return std::ranges::none_of(dates_, [&](const CellRangeAddress& one) {
    return column >= one.StartColumn && column <= one.EndColumn && row >= one.StartRow && row <= one.EndRow;
  });
}

bool SheetCells::isNumericColumn(sal_Int32 column, sal_Int32 firstRow, sal_Int32 lastRow) const {
  for (sal_Int32 row = firstRow; row <= lastRow; ++row) {
    if (!isNumber(column, row)) return false;
  }
  return true;
}

std::vector<double> SheetCells::numbers(sal_Int32 column, sal_Int32 firstRow, sal_Int32 lastRow) const {
  std::vector<double> numbers;
  for (sal_Int32 row = firstRow; row <= lastRow; ++row) {
    double number = 0.0;
    at(column, row) >>= number;
    numbers.push_back(number);
  }
  return numbers;
}

std::string SheetCells::text(sal_Int32 column, sal_Int32 row) const {
  rtl::OUString text;
  at(column, row) >>= text;
  return fromOffice(text);
}

}  // namespace mervane::addin
