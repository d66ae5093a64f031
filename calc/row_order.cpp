#include "calc/row_order.h"

#include <algorithm>
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/table/TableSortField.hpp>
#include <com/sun/star/util/XSortable.hpp>
#include <numeric>

namespace mervane::addin {

namespace {

star::beans::PropertyValue argument(const char* name, const uno::Any& value) {
  return {rtl::OUString::createFromAscii(name), 0, value, star::beans::PropertyState_DIRECT_VALUE};
}

}  // namespace

std::vector<sal_Int32> inverse(const std::vector<sal_Int32>& places) {
  std::vector<sal_Int32> result(places.size());
  for (std::size_t i = 0; i < places.size(); ++i) {
    result[static_cast<std::size_t>(places[i])] = static_cast<sal_Int32>(i);
  }
  return result;
}

std::vector<sal_Int32> placesBySort(const std::vector<std::int32_t>& keys) {
  std::vector<sal_Int32> rows(keys.size());
  std::iota(rows.begin(), rows.end(), 0);
  std::ranges::stable_sort(rows, {}, [&](sal_Int32 row) { return keys[static_cast<std::size_t>(row)]; });
  return inverse(rows);
}

void moveRows(const uno::Reference<star::sheet::XSpreadsheet>& sheet, const RowOrder& order) {
  const star::table::CellRangeAddress& at = order.moved;
  // NB: cell by cell, since what is written as a block takes the comments of its cells away.
  for (std::size_t i = 0; i < order.places.size(); ++i) {
    sheet->getCellByPosition(at.EndColumn, at.StartRow + static_cast<sal_Int32>(i))->setValue(order.places[i]);
  }
  star::table::TableSortField field;
  field.Field = at.EndColumn - at.StartColumn;
  field.IsAscending = true;
  const star::beans::PropertyValue settings[] = {
      argument("SortFields", uno::Any(uno::Sequence<star::table::TableSortField>(&field, 1))),
      argument("IsSortColumns", uno::Any(false)), argument("ContainsHeader", uno::Any(false)),
      argument("BindFormatsToContent", uno::Any(true)), argument("IsUserListEnabled", uno::Any(false))};
  const uno::Reference<star::util::XSortable> rows(
      sheet->getCellRangeByPosition(at.StartColumn, at.StartRow, at.EndColumn, at.EndRow), uno::UNO_QUERY_THROW);
  rows->sort(uno::Sequence<star::beans::PropertyValue>(settings, 5));
}

}  // namespace mervane::addin
