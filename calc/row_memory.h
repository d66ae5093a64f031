#pragma once

#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <vector>

#include "calc/office.h"

namespace mervane::addin {

/// Which rows of a sheet are shown at one moment, and how high each is.
class RowMemory {
 public:
  /// @param lastRow zero-based, as in the office; rows below are not remembered
  RowMemory(const uno::Reference<star::sheet::XSpreadsheet>& sheet, sal_Int32 lastRow);

  /// Contents and the filter must have been put back before: both may show, hide and resize rows.
  void restore(const uno::Reference<star::sheet::XSpreadsheet>& sheet) const;

 private:
  struct Row {
    bool isVisible = true;
    bool isAutomatic = true;
    sal_Int32 height = 0;
    bool operator==(const Row&) const = default;
  };
  std::vector<Row> rows_;
};

}  // namespace mervane::addin
