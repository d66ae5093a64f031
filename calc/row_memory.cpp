#include "calc/row_memory.h"

#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>

namespace mervane::addin {

namespace {

using Properties = uno::Reference<star::beans::XPropertySet>;
using Spreadsheet = uno::Reference<star::sheet::XSpreadsheet>;

/// Some rows, to be changed at once.
Properties rowsOf(const Spreadsheet& sheet, sal_Int32 first, sal_Int32 last) {
  const uno::Reference<star::table::XColumnRowRange> range(sheet->getCellRangeByPosition(0, first, 0, last),
                                                           uno::UNO_QUERY_THROW);
  return {range->getRows(), uno::UNO_QUERY_THROW};
}

}  // namespace

RowMemory::RowMemory(const Spreadsheet& sheet, sal_Int32 lastRow) {
  const uno::Reference<star::table::XColumnRowRange> range(sheet, uno::UNO_QUERY_THROW);
  const uno::Reference<star::container::XIndexAccess> rows(range->getRows(), uno::UNO_QUERY_THROW);
  rows_.resize(static_cast<std::size_t>(lastRow) + 1);
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const Properties row(rows->getByIndex(static_cast<sal_Int32>(i)), uno::UNO_QUERY_THROW);
    row->getPropertyValue("IsVisible") >>= rows_[i].isVisible;
    row->getPropertyValue("OptimalHeight") >>= rows_[i].isAutomatic;
    row->getPropertyValue("Height") >>= rows_[i].height;
  }
}

void RowMemory::restore(const Spreadsheet& sheet) const {
  const RowMemory now(sheet, static_cast<sal_Int32>(rows_.size()) - 1);
  // Rows below one another that change alike are changed at once.
  const auto stretches = [&](const auto& isDone, const auto& change) {
    for (std::size_t first = 0; first < rows_.size();) {
      std::size_t next = first + 1;
      if (!isDone(first)) {
        while (next < rows_.size() && !isDone(next) && rows_[next] == rows_[first]) ++next;
        change(rowsOf(sheet, static_cast<sal_Int32>(first), static_cast<sal_Int32>(next) - 1), rows_[first]);
      }
      first = next;
    }
  };
  stretches([&](std::size_t i) { return now.rows_[i].height == rows_[i].height; },
            [](const Properties& rows, const Row& row) { set(rows, "Height", uno::Any(row.height)); });
  // NB: a row that was as high as its contents asked for is so again, and not fixed at what that was.
  stretches([&](std::size_t i) { return now.rows_[i].height == rows_[i].height || !rows_[i].isAutomatic; },
            [](const Properties& rows, const Row& row) { set(rows, "OptimalHeight", uno::Any(row.isAutomatic)); });
  stretches([&](std::size_t i) { return now.rows_[i].isVisible == rows_[i].isVisible; },
            [](const Properties& rows, const Row& row) { set(rows, "IsVisible", uno::Any(row.isVisible)); });
}

}  // namespace mervane::addin
