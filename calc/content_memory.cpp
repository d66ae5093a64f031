#include "calc/content_memory.h"

#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XCellRangeFormula.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSheetAnnotation.hpp>
#include <com/sun/star/sheet/XSheetAnnotationsSupplier.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XSheetOperation.hpp>
#include <com/sun/star/text/XTextRange.hpp>
#include <set>

namespace mervane::addin {

namespace {

namespace sheetapi = star::sheet;
using star::table::CellRangeAddress;
using Spreadsheet = uno::Reference<sheetapi::XSpreadsheet>;

constexpr sal_Int32 contents = sheetapi::CellFlags::VALUE | sheetapi::CellFlags::DATETIME |
                               sheetapi::CellFlags::STRING | sheetapi::CellFlags::FORMULA;

uno::Reference<star::table::XCellRange> rangeOf(const Spreadsheet& sheet, const CellRangeAddress& area) {
  return uno::Reference<star::table::XCellRange>(
      sheet->getCellRangeByPosition(area.StartColumn, area.StartRow, area.EndColumn, area.EndRow), uno::UNO_SET_THROW);
}

}  // namespace

/// Writes a column's cells from the top down, those side by side at once.
class ContentMemory::Writer {
 public:
  Writer(const Spreadsheet& sheet, const ContentMemory& before) : sheet_(sheet), before_(before) {
    const uno::Reference<sheetapi::XSheetAnnotationsSupplier> supplier(sheet, uno::UNO_QUERY_THROW);
    const uno::Reference<star::container::XIndexAccess> notes(supplier->getAnnotations(), uno::UNO_QUERY_THROW);
    for (sal_Int32 i = 0; i < notes->getCount(); ++i) {
      const uno::Reference<sheetapi::XSheetAnnotation> note(notes->getByIndex(i), uno::UNO_QUERY_THROW);
      notes_.insert(place(note->getPosition().Column, note->getPosition().Row));
    }
  }

  void add(sal_Int32 column, sal_Int32 row) {
    const Kind kind = before_.kindAt(column, row);
    // NB: values that are written as a block take the notes of their cells away.
    const bool alone = kind == Kind::formula || (kind == Kind::plain && notes_.count(place(column, row)) != 0);
    const bool joins = !alone && rows_ > 0 && column == column_ && row == firstRow_ + rows_ && kind == kind_;
    if (!joins) finish();
    if (alone) return writeAlone(column, row, kind);
    if (rows_++ > 0) return;
    column_ = column;
    firstRow_ = row;
    kind_ = kind;
  }

  void finish() {
    if (rows_ == 0) return;
    const sal_Int32 lastRow = firstRow_ + rows_ - 1;
    const auto cells = rangeOf(sheet_, {before_.area_.Sheet, column_, firstRow_, column_, lastRow});
    if (kind_ == Kind::nothing) {
      uno::Reference<sheetapi::XSheetOperation>(cells, uno::UNO_QUERY_THROW)->clearContents(contents);
    } else {
      uno::Sequence<uno::Sequence<uno::Any>> rows(rows_);
      auto* next = rows.getArray();
      for (sal_Int32 row = firstRow_; row <= lastRow; ++row) {
        *next++ = uno::Sequence<uno::Any>(&before_.valueAt(column_, row), 1);
      }
      uno::Reference<sheetapi::XCellRangeData>(cells, uno::UNO_QUERY_THROW)->setDataArray(rows);
    }
    rows_ = 0;
  }

 private:
  void writeAlone(sal_Int32 column, sal_Int32 row, Kind kind) {
    const uno::Reference<star::table::XCell> cell(sheet_->getCellByPosition(column, row), uno::UNO_SET_THROW);
    if (kind == Kind::formula) return cell->setFormula(*before_.formulaAt(column, row));
    double number = 0.0;
    if (before_.valueAt(column, row) >>= number) return cell->setValue(number);
    rtl::OUString text;
    before_.valueAt(column, row) >>= text;
    uno::Reference<star::text::XTextRange>(cell, uno::UNO_QUERY_THROW)->setString(text);
  }

  Spreadsheet sheet_;
  const ContentMemory& before_;
  std::set<std::int64_t> notes_;
  Kind kind_ = Kind::nothing;
  sal_Int32 column_ = 0;
  sal_Int32 firstRow_ = 0;
  sal_Int32 rows_ = 0;
};

ContentMemory::ContentMemory(const Spreadsheet& sheet, const CellRangeAddress& area) : area_(area) {
  values_ = uno::Reference<sheetapi::XCellRangeData>(rangeOf(sheet, area), uno::UNO_QUERY_THROW)->getDataArray();
  const uno::Reference<sheetapi::XCellRangesQuery> query(rangeOf(sheet, area), uno::UNO_QUERY_THROW);
  for (const CellRangeAddress& cells : query->queryContentCells(sheetapi::CellFlags::FORMULA)->getRangeAddresses()) {
    const uno::Reference<sheetapi::XCellRangeFormula> formulas(rangeOf(sheet, cells), uno::UNO_QUERY_THROW);
    const auto rows = formulas->getFormulaArray();
    for (sal_Int32 row = 0; row < rows.getLength(); ++row) {
      for (sal_Int32 column = 0; column < rows[row].getLength(); ++column) {
        formulas_.emplace(place(cells.StartColumn + column, cells.StartRow + row), rows[row][column]);
      }
    }
  }
}

std::int64_t ContentMemory::place(sal_Int32 column, sal_Int32 row) {
  constexpr std::int64_t mostRows = std::int64_t{1} << 24;
  return column * mostRows + row;
}

const rtl::OUString* ContentMemory::formulaAt(sal_Int32 column, sal_Int32 row) const {
  const auto found = formulas_.find(place(column, row));
  return found == formulas_.end() ? nullptr : &found->second;
}

const uno::Any& ContentMemory::valueAt(sal_Int32 column, sal_Int32 row) const {
  return values_[row - area_.StartRow][column - area_.StartColumn];
}

ContentMemory::Kind ContentMemory::kindAt(sal_Int32 column, sal_Int32 row) const {
  if (formulaAt(column, row) != nullptr) return Kind::formula;
  // An empty cell is told as an empty text.
  rtl::OUString text;
  const uno::Any& value = valueAt(column, row);
  if (!value.hasValue() || ((value >>= text) && text.isEmpty())) return Kind::nothing;
  return Kind::plain;
}

bool ContentMemory::holdsTheSameAs(const ContentMemory& other, sal_Int32 column, sal_Int32 row) const {
  const rtl::OUString* own = formulaAt(column, row);
  const rtl::OUString* others = other.formulaAt(column, row);
  if (own == nullptr && others == nullptr) return valueAt(column, row) == other.valueAt(column, row);
  return own != nullptr && others != nullptr && *own == *others;
}

bool ContentMemory::isMovedIn(const Spreadsheet& sheet, const CellRangeAddress& cells,
                              const std::vector<sal_Int32>& places) const {
  const auto now =
      uno::Reference<sheetapi::XCellRangeData>(rangeOf(sheet, cells), uno::UNO_QUERY_THROW)->getDataArray();
  for (std::size_t i = 0; i < places.size(); ++i) {
    const sal_Int32 row = cells.StartRow + static_cast<sal_Int32>(i);
    for (sal_Int32 column = cells.StartColumn; column <= cells.EndColumn; ++column) {
      if (now[places[i]][column - cells.StartColumn] != valueAt(column, row)) return false;
    }
  }
  return true;
}

void ContentMemory::restore(const Spreadsheet& sheet) const {
  const ContentMemory now(sheet, area_);
  Writer writer(sheet, *this);
  for (sal_Int32 column = area_.StartColumn; column <= area_.EndColumn; ++column) {
    for (sal_Int32 row = area_.StartRow; row <= area_.EndRow; ++row) {
      if (!holdsTheSameAs(now, column, row)) writer.add(column, row);
    }
  }
  writer.finish();
}

}  // namespace mervane::addin
