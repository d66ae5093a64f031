#pragma once

#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "calc/office.h"

namespace mervane::addin {

/// What stands in the cells of an area at one moment: numbers, texts and formulas.
class ContentMemory {
 public:
  ContentMemory(const uno::Reference<star::sheet::XSpreadsheet>& sheet, const star::table::CellRangeAddress& area);

  /// Whether these cells stand elsewhere by now, row by row.
  /// @param cells cells of the area
  /// @param places the new place of each row among them, from 0
  [[nodiscard]] bool isMovedIn(const uno::Reference<star::sheet::XSpreadsheet>& sheet,
                               const star::table::CellRangeAddress& cells, const std::vector<sal_Int32>& places) const;

  /// Writes the cells that hold something else by now, and no others: what is not remembered, such as links, formats
  /// of single letters and array formulas, stays wherever nothing has changed.
  void restore(const uno::Reference<star::sheet::XSpreadsheet>& sheet) const;

 private:
  class Writer;
  enum class Kind { nothing, plain, formula };

  [[nodiscard]] static std::int64_t place(sal_Int32 column, sal_Int32 row);
  [[nodiscard]] const rtl::OUString* formulaAt(sal_Int32 column, sal_Int32 row) const;
  [[nodiscard]] const uno::Any& valueAt(sal_Int32 column, sal_Int32 row) const;
  [[nodiscard]] Kind kindAt(sal_Int32 column, sal_Int32 row) const;
  [[nodiscard]] bool holdsTheSameAs(const ContentMemory& other, sal_Int32 column, sal_Int32 row) const;

  star::table::CellRangeAddress area_;
  uno::Sequence<uno::Sequence<uno::Any>> values_;
  /// Formulas by `place`; the results of formulas are in the values too and are of no use there.
  std::unordered_map<std::int64_t, rtl::OUString> formulas_;
};

}  // namespace mervane::addin
