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

/// Changes what is not done, rows below one another that are to be alike at once.
template <class IsDone, class Change>
void RowMemory::stretches(const Spreadsheet& sheet, IsDone isDone, Change change) const {
  const RowMemory now(sheet, static_cast<sal_Int32>(rows_.size()) - 1);
  const auto done = [&](std::size_t i) { return isDone(now.rows_[i], rows_[i]); };
  for (std::size_t first = 0; first < rows_.size();) {
    std::size_t next = first + 1;
    if (!done(first)) {
      while (next < rows_.size() && !done(next) && rows_[next] == rows_[first]) ++next;
      change(rowsOf(sheet, static_cast<sal_Int32>(first), static_cast<sal_Int32>(next) - 1), rows_[first]);
    }
    first = next;
  }
}

void RowMemory::restoreHeights(const Spreadsheet& sheet) const {
  const auto isAsHigh = [](const Row& now, const Row& before) { return now.height == before.height; };
  // NB: a row that was as high as its contents asked for is so again, and not fixed at what that was, where the office
  // comes to the same height.
  stretches(
      sheet, [&](const Row& now, const Row& before) { return isAsHigh(now, before) || !before.isAutomatic; },
      [](const Properties& rows, const Row&) { set(rows, "OptimalHeight", uno::Any(true)); });
  stretches(sheet, isAsHigh,
            [](const Properties& rows, const Row& before) { set(rows, "Height", uno::Any(before.height)); });
}

void RowMemory::restoreShown(const Spreadsheet& sheet) const {
  stretches(
      sheet, [](const Row& now, const Row& before) { return now.isVisible == before.isVisible; },
      [](const Properties& rows, const Row& before) { set(rows, "IsVisible", uno::Any(before.isVisible)); });
}

}  // namespace mervane::addin
