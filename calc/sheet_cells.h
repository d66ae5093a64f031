#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>
#include <string>
#include <vector>

#include "calc/office.h"

namespace mervane::addin {

/// The last row and column that a reference may name, 65535 and ZZ, counted from 0.
inline constexpr sal_Int32 lastReferenceRow = 65534;
inline constexpr sal_Int32 lastReferenceColumn = 701;

[[nodiscard]] uno::Reference<star::sheet::XSpreadsheet> sheetAt(const uno::Reference<star::frame::XModel>& document,
                                                                sal_Int16 position);
[[nodiscard]] star::table::CellRangeAddress addressOf(const uno::Reference<uno::XInterface>& range);
/// The block of filled cells around a range.
[[nodiscard]] star::table::CellRangeAddress regionAround(const uno::Reference<star::frame::XModel>& document,
                                                         const star::table::CellRangeAddress& range);
/// The part of a range that ends with the used cells of its sheet; a cell at least.
[[nodiscard]] star::table::CellRangeAddress usedPart(const uno::Reference<star::frame::XModel>& document,
                                                     star::table::CellRangeAddress range);

/// The cells of one range, read at once.
class SheetCells {
 public:
  SheetCells(const uno::Reference<star::frame::XModel>& document, const star::table::CellRangeAddress& range);

  /// Whether the cell holds a number that is no date and no time.
  [[nodiscard]] bool isNumber(sal_Int32 column, sal_Int32 row) const;
  [[nodiscard]] bool isNumericColumn(sal_Int32 column, sal_Int32 firstRow, sal_Int32 lastRow) const;
  /// The numbers of a column; of other cells 0.
  [[nodiscard]] std::vector<double> numbers(sal_Int32 column, sal_Int32 firstRow, sal_Int32 lastRow) const;
  /// Empty for a cell that holds no text.
  [[nodiscard]] std::string text(sal_Int32 column, sal_Int32 row) const;
  [[nodiscard]] const star::table::CellRangeAddress& range() const { return range_; }

 private:
  [[nodiscard]] const uno::Any& at(sal_Int32 column, sal_Int32 row) const {
    return rows_[row - range_.StartRow][column - range_.StartColumn];
  }

  star::table::CellRangeAddress range_;
  uno::Sequence<uno::Sequence<uno::Any>> rows_;
  /// Cells that show a date or a time.
  std::vector<star::table::CellRangeAddress> dates_;
};

}  // namespace mervane::addin
