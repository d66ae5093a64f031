#include "hosts/calc/sheet_facts.h"

#include <algorithm>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeFormula.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSheetAnnotation.hpp>
#include <com/sun/star/sheet/XSheetAnnotationsSupplier.hpp>
#include <com/sun/star/sheet/XSheetCellCursor.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <com/sun/star/util/CellProtection.hpp>
#include <com/sun/star/util/XMergeable.hpp>
#include <com/sun/star/util/XProtectable.hpp>

#include "spreadsheet/cell_address.h"

namespace mervane::calc {

namespace {

CellArea areaOf(const css::table::CellRangeAddress& address) {
  return {address.StartRow + 1, address.StartColumn + 1, address.EndRow + 1, address.EndColumn + 1};
}

CellArea areaOf(const uno::Reference<css::sheet::XSheetCellCursor>& cursor) {
  const uno::Reference<css::sheet::XCellRangeAddressable> place(cursor, uno::UNO_QUERY_THROW);
  return areaOf(place->getRangeAddress());
}

bool meetsAny(const std::vector<CellArea>& areas, const CellArea& area) {
  for (const CellArea& one : areas) {
    if (one.meets(area)) return true;
  }
  return false;
}

}  // namespace

void SheetFacts::forgetContents(std::int32_t sheet) {
  Facts& facts = of(sheet);
  facts.end.reset();
  facts.formulas.reset();
  facts.filled.reset();
  facts.notes.reset();
}

void SheetFacts::plainValuesWritten(std::int32_t sheet, const CellArea& area) {
  Facts& facts = of(sheet);
  facts.end.reset();
  facts.filled.reset();
  // OPTIMIZATION: looking for formulas takes long, and rows are often written and read in turn.
  if (!facts.formulas) return;
  for (const CellArea& formulas : *facts.formulas) {
    if (formulas.meets(area)) return facts.formulas.reset();
  }
}

CellAddress SheetFacts::end(std::int32_t sheet) {
  std::optional<CellAddress>& end = of(sheet).end;
  if (!end) {
    const auto cursor = session_.sheetAt(sheet)->createCursor();
    const uno::Reference<css::sheet::XUsedAreaCursor> used(cursor, uno::UNO_QUERY_THROW);
    used->gotoEndOfUsedArea(false);
    const CellArea last = areaOf(cursor);
    end = CellAddress{last.lastRow, last.lastColumn};
  }
  return *end;
}

std::vector<CellArea> SheetFacts::withContents(std::int32_t sheet, sal_Int16 flags) const {
  const uno::Reference<css::sheet::XCellRangesQuery> query(session_.sheetAt(sheet), uno::UNO_QUERY_THROW);
  std::vector<CellArea> areas;
  for (const auto& address : query->queryContentCells(flags)->getRangeAddresses()) areas.push_back(areaOf(address));
  return areas;
}

const std::vector<CellArea>& SheetFacts::formulas(std::int32_t sheet) {
  std::optional<std::vector<CellArea>>& formulas = of(sheet).formulas;
  if (!formulas) formulas = withContents(sheet, css::sheet::CellFlags::FORMULA);
  return *formulas;
}

std::vector<std::int32_t> SheetFacts::notedRows(const SheetArea& area) {
  auto& notes = of(area.sheet).notes;
  if (!notes) {
    notes.emplace();
    const uno::Reference<css::sheet::XSheetAnnotationsSupplier> supplier(session_.sheetAt(area.sheet),
                                                                         uno::UNO_QUERY_THROW);
    const uno::Reference<css::container::XIndexAccess> all(supplier->getAnnotations(), uno::UNO_QUERY_THROW);
    for (sal_Int32 i = 0; i < all->getCount(); ++i) {
      const uno::Reference<css::sheet::XSheetAnnotation> note(all->getByIndex(i), uno::UNO_QUERY_THROW);
      const css::table::CellAddress at = note->getPosition();
      (*notes)[at.Column + 1].insert(at.Row + 1);
    }
  }
  const auto column = notes->find(area.area.firstColumn);
  if (column == notes->end()) return {};
  const std::set<std::int32_t>& rows = column->second;
  return {rows.lower_bound(area.area.firstRow), rows.upper_bound(area.area.lastRow)};
}

const std::vector<CellArea>& SheetFacts::filled(std::int32_t sheet) {
  using namespace css::sheet;  // NOLINT(google-build-using-namespace): the flags alone
  std::optional<std::vector<CellArea>>& filled = of(sheet).filled;
  if (!filled) {
    filled = withContents(sheet, CellFlags::VALUE | CellFlags::DATETIME | CellFlags::STRING | CellFlags::FORMULA);
  }
  return *filled;
}

bool SheetFacts::isFilled(std::int32_t sheet, const CellArea& area) {
  return meetsAny(filled(sheet), area);
}

std::optional<CellArea> SheetFacts::used(std::int32_t sheet) {
  std::optional<CellArea> used;
  for (const CellArea& one : filled(sheet)) {
    if (!used) used = one;
    used->firstRow = std::min(used->firstRow, one.firstRow);
    used->firstColumn = std::min(used->firstColumn, one.firstColumn);
    used->lastRow = std::max(used->lastRow, one.lastRow);
    used->lastColumn = std::max(used->lastColumn, one.lastColumn);
  }
  return used;
}

bool SheetFacts::isProtected(std::int32_t sheet) {
  std::optional<bool>& isProtected = of(sheet).isProtected;
  if (!isProtected) {
    const uno::Reference<css::util::XProtectable> protectable(session_.sheetAt(sheet), uno::UNO_QUERY_THROW);
    isProtected = protectable->isProtected();
  }
  return *isProtected;
}

bool SheetFacts::hasMerged(std::int32_t sheet) {
  std::optional<bool>& hasMerged = of(sheet).hasMerged;
  if (!hasMerged) {
    const uno::Reference<css::util::XMergeable> cells(session_.sheetAt(sheet), uno::UNO_QUERY_THROW);
    hasMerged = cells->getIsMerged();
  }
  return *hasMerged;
}

CellArea SheetFacts::mergedAround(std::int32_t sheet, CellAddress at) const {
  const uno::Reference<css::sheet::XSheetCellRange> cell(
      session_.rangeOf({sheet, {at.row, at.column, at.row, at.column}}), uno::UNO_QUERY_THROW);
  const auto cursor = session_.sheetAt(sheet)->createCursorByRange(cell);
  cursor->collapseToMergedArea();
  return areaOf(cursor);
}

CellArea SheetFacts::arrayAround(std::int32_t sheet, CellAddress at) const {
  const uno::Reference<css::sheet::XSheetCellRange> cell(
      session_.rangeOf({sheet, {at.row, at.column, at.row, at.column}}), uno::UNO_QUERY_THROW);
  const auto cursor = session_.sheetAt(sheet)->createCursorByRange(cell);
  cursor->collapseToCurrentArray();
  return areaOf(cursor);
}

void SheetFacts::requireWritable(std::int32_t sheet, CellAddress at) {
  const CellArea cell{at.row, at.column, at.row, at.column};
  if (isProtected(sheet)) {
    css::util::CellProtection protection;
    const uno::Reference<css::beans::XPropertySet> properties(session_.rangeOf({sheet, cell}), uno::UNO_QUERY_THROW);
    properties->getPropertyValue("CellProtection") >>= protection;
    if (protection.IsLocked) {
      refuse("The cell " + session_.place(sheet, cell) +
             " is on a protected sheet. Take the sheet's protection off in the spreadsheet first.");
    }
  }
  if (hasMerged(sheet)) {
    const CellArea merged = mergedAround(sheet, at);
    if (merged.firstRow != at.row || merged.firstColumn != at.column) {
      refuse("The cell " + session_.place(sheet, cell) + " is covered by the merged cells " + a1(merged) +
             ". Take the merge apart in the spreadsheet or choose other cells.");
    }
  }
  if (!meetsAny(formulas(sheet), cell)) return;
  const CellArea array = arrayAround(sheet, at);
  if (array.cells() > 1) {
    refuse("The cell " + session_.place(sheet, cell) + " is part of the array formula in " + a1(array) +
           ", which cannot be changed in part.");
  }
}

void SheetFacts::requireUnprotected(std::int32_t sheet, const std::string& action) {
  if (!isProtected(sheet)) return;
  refuse("The sheet " + sheet::quotedSheetName(session_.sheetName(sheet)) + " is protected and does not allow " +
         action + ". Take its protection off in the spreadsheet first.");
}

std::optional<CellArea> SheetFacts::mergeMeeting(const CellArea& search, const SheetArea& area) const {
  const uno::Reference<css::util::XMergeable> cells(session_.rangeOf({area.sheet, search}), uno::UNO_QUERY_THROW);
  if (!cells->getIsMerged()) return std::nullopt;
  if (search.cells() == 1) {
    const CellArea found = mergedAround(area.sheet, {search.firstRow, search.firstColumn});
    return found.meets(area.area) ? std::optional(found) : std::nullopt;
  }
  CellArea first = search;
  CellArea second = search;
  if (search.rows() > 1) {
    first.lastRow = search.firstRow + search.rows() / 2 - 1;
    second.firstRow = first.lastRow + 1;
  } else {
    first.lastColumn = search.firstColumn + search.columns() / 2 - 1;
    second.firstColumn = first.lastColumn + 1;
  }
  const std::optional<CellArea> found = mergeMeeting(first, area);
  return found ? found : mergeMeeting(second, area);
}

std::optional<CellArea> SheetFacts::arrayMeeting(const SheetArea& area) {
  for (const CellArea& formulas : formulas(area.sheet)) {
    if (!formulas.meets(area.area)) continue;
    const CellArea common{
        std::max(formulas.firstRow, area.area.firstRow), std::max(formulas.firstColumn, area.area.firstColumn),
        std::min(formulas.lastRow, area.area.lastRow), std::min(formulas.lastColumn, area.area.lastColumn)};
    const uno::Reference<css::sheet::XCellRangeFormula> range(session_.rangeOf({area.sheet, common}),
                                                              uno::UNO_QUERY_THROW);
    std::int32_t row = common.firstRow;
    for (const auto& line : range->getFormulaArray()) {
      std::int32_t column = common.firstColumn;
      for (const rtl::OUString& formula : line) {
        // An array formula is shown in braces.
        if (formula.startsWith("{=")) {
          const CellArea array = arrayAround(area.sheet, {row, column});
          if (array.cells() > 1) return array;
        }
        ++column;
      }
      ++row;
    }
  }
  return std::nullopt;
}

void SheetFacts::requireMovable(const SheetArea& area) {
  const std::string rows = "The rows of " + a1(area.area) + " cannot be sorted: ";
  if (hasMerged(area.sheet)) {
    // A merge counts where it begins, which may be above the area or left of it.
    const CellArea search{1, 1, area.area.lastRow, area.area.lastColumn};
    if (const auto merged = mergeMeeting(search, area)) {
      refuse(rows + "the cells " + a1(*merged) + " are merged. Take the merge apart in the spreadsheet first.");
    }
  }
  if (const auto array = arrayMeeting(area)) refuse(rows + a1(*array) + " holds an array formula.");
}

}  // namespace mervane::calc
