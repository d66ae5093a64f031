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

  /// Contents must have been put back before, which may resize rows. A row that is resized is shown.
  void restoreHeights(const uno::Reference<star::sheet::XSpreadsheet>& sheet) const;
  /// Heights and the filter must have been put back before.
  void restoreShown(const uno::Reference<star::sheet::XSpreadsheet>& sheet) const;

 private:
  struct Row {
    bool isVisible = true;
    bool isAutomatic = true;
    sal_Int32 height = 0;
    bool operator==(const Row&) const = default;
  };
  template <class IsDone, class Change>
  void stretches(const uno::Reference<star::sheet::XSpreadsheet>& sheet, IsDone isDone, Change change) const;

  std::vector<Row> rows_;
};

}  // namespace mervane::addin
