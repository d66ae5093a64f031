#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/sheet/TableFilterField3.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>
#include <optional>

#include "calc/office.h"

namespace mervane::addin {

/// The filter of a sheet at one moment: whether its arrows are shown, around which cells, and what they filter by.
class FilterMemory {
 public:
  FilterMemory(uno::Reference<star::frame::XModel> document, sal_Int16 sheet);

  /// Rows that the filter hid are hidden again, so the contents must have been put back before.
  void restore() const;

 private:
  struct State {
    bool shown = false;
    star::table::CellRangeAddress cells;
    bool hasHeading = true;
    bool caseSensitive = false;
    bool byExpressions = false;
    uno::Sequence<star::sheet::TableFilterField3> fields;
  };
  [[nodiscard]] std::optional<State> look() const;

  uno::Reference<star::frame::XModel> document_;
  sal_Int16 sheet_;
  /// Nothing where the sheet never had a filter.
  std::optional<State> before_;
};

}  // namespace mervane::addin
