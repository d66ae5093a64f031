#include "hosts/calc/sheet_facts.h"

#include <algorithm>
#include <com/sun/star/beans/PropertyState.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/beans/XPropertyState.hpp>
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
#include <utility>

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

CellArea common(const CellArea& a, const CellArea& b) {
  return {std::max(a.firstRow, b.firstRow), std::max(a.firstColumn, b.firstColumn), std::min(a.lastRow, b.lastRow),
          std::min(a.lastColumn, b.lastColumn)};
}

/// Upper and lower half, or left and right half of a single row.
std::pair<CellArea, CellArea> halvesOf(const CellArea& area) {
  CellArea first = area;
  CellArea second = area;
  if (area.rows() > 1) {
    first.lastRow = area.firstRow + area.rows() / 2 - 1;
    second.firstRow = first.lastRow + 1;
  } else {
    first.lastColumn = area.firstColumn + area.columns() / 2 - 1;
    second.firstColumn = first.lastColumn + 1;
  }
  return {first, second};
}

bool meetsAny(const std::vector<CellArea>& areas, const CellArea& area) {
  for (const CellArea& one : areas) {
    if (one.meets(area)) return true;
  }
  return false;
}

/// What is left of the areas outside of another one.
std::vector<CellArea> without(const std::vector<CellArea>& areas, const CellArea& gone) {
  std::vector<CellArea> left;
  for (CellArea rest : areas) {
    if (!rest.meets(gone)) {
      left.push_back(rest);
      continue;
    }
    // The rows above, the rows below, and of those between the cells at the left and at the right.
    if (rest.firstRow < gone.firstRow)
      left.push_back({rest.firstRow, rest.firstColumn, gone.firstRow - 1, rest.lastColumn});
    if (rest.lastRow > gone.lastRow)
      left.push_back({gone.lastRow + 1, rest.firstColumn, rest.lastRow, rest.lastColumn});
    rest.firstRow = std::max(rest.firstRow, gone.firstRow);
    rest.lastRow = std::min(rest.lastRow, gone.lastRow);
    if (rest.firstColumn < gone.firstColumn)
      left.push_back({rest.firstRow, rest.firstColumn, rest.lastRow, gone.firstColumn - 1});
    if (rest.lastColumn > gone.lastColumn)
      left.push_back({rest.firstRow, gone.lastColumn + 1, rest.lastRow, rest.lastColumn});
  }
  return left;
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
  if (facts.formulas && meetsAny(*facts.formulas, area)) facts.formulas = without(*facts.formulas, area);
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

void SheetFacts::addMerged(const CellArea& search, const SheetArea& area, std::vector<CellArea>& found) const {
  const uno::Reference<css::util::XMergeable> cells(session_.rangeOf({area.sheet, search}), uno::UNO_QUERY_THROW);
  if (!cells->getIsMerged()) return;
  if (search.cells() == 1) {
    const CellArea merged = mergedAround(area.sheet, {search.firstRow, search.firstColumn});
    if (merged.meets(area.area)) found.push_back(merged);
    return;
  }
  const auto [first, second] = halvesOf(search);
  addMerged(first, area, found);
  addMerged(second, area, found);
}

std::vector<CellArea> SheetFacts::mergedIn(const SheetArea& area) {
  std::vector<CellArea> found;
  // A merge counts where it begins, which may be above the area or left of it.
  if (hasMerged(area.sheet)) addMerged({1, 1, area.area.lastRow, area.area.lastColumn}, area, found);
  return found;
}

std::vector<CellArea> SheetFacts::arraysIn(const SheetArea& area) {
  std::vector<CellArea> found;
  for (const CellArea& formulas : formulas(area.sheet)) {
    if (!formulas.meets(area.area)) continue;
    const CellArea part = common(formulas, area.area);
    const uno::Reference<css::sheet::XCellRangeFormula> range(session_.rangeOf({area.sheet, part}),
                                                              uno::UNO_QUERY_THROW);
    std::int32_t row = part.firstRow;
    for (const auto& line : range->getFormulaArray()) {
      std::int32_t column = part.firstColumn;
      for (const rtl::OUString& formula : line) {
        const CellArea cell{row, column, row, column};
        // An array formula is shown in braces.
        if (formula.startsWith("{=") && !meetsAny(found, cell)) {
          const CellArea array = arrayAround(area.sheet, {row, column});
          if (array.cells() > 1) found.push_back(array);
        }
        ++column;
      }
      ++row;
    }
  }
  return found;
}

std::optional<CellAddress> SheetFacts::firstLocked(const SheetArea& area) {
  return isProtected(area.sheet) ? lockedIn(area) : std::nullopt;
}

std::optional<CellAddress> SheetFacts::lockedIn(const SheetArea& area) const {
  const uno::Reference<css::beans::XPropertyState> state(session_.rangeOf(area), uno::UNO_QUERY_THROW);
  if (state->getPropertyState("CellProtection") == css::beans::PropertyState_AMBIGUOUS_VALUE && area.area.cells() > 1) {
    const auto [first, second] = halvesOf(area.area);
    const auto found = lockedIn({area.sheet, first});
    return found ? found : lockedIn({area.sheet, second});
  }
  css::util::CellProtection protection;
  const uno::Reference<css::beans::XPropertySet> properties(state, uno::UNO_QUERY_THROW);
  properties->getPropertyValue("CellProtection") >>= protection;
  if (!protection.IsLocked) return std::nullopt;
  return CellAddress{area.area.firstRow, area.area.firstColumn};
}

std::vector<CellArea> SheetFacts::filledIn(const SheetArea& area) {
  std::vector<CellArea> found;
  for (const CellArea& one : filled(area.sheet)) {
    if (one.meets(area.area)) found.push_back(common(one, area.area));
  }
  return found;
}

void SheetFacts::requireMovable(const SheetArea& area) {
  const std::string rows = "The rows of " + a1(area.area) + " cannot be sorted: ";
  const std::vector<CellArea> merged = mergedIn(area);
  if (!merged.empty()) {
    refuse(rows + "the cells " + a1(merged.front()) + " are merged. Take the merge apart in the spreadsheet first.");
  }
  const std::vector<CellArea> arrays = arraysIn(area);
  if (!arrays.empty()) refuse(rows + a1(arrays.front()) + " holds an array formula.");
}

}  // namespace mervane::calc
