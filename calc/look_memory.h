#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>
#include <map>
#include <vector>

#include "calc/office.h"

namespace mervane::addin {

/// How the cells of an area look at one moment: their styles and what is set on top of them.
class LookMemory {
 public:
  LookMemory(const uno::Reference<star::sheet::XSpreadsheet>& sheet, const star::table::CellRangeAddress& area);

  /// Sets or takes back only the properties that have come, gone or changed somewhere in the area. Merges, conditional
  /// formats and rules of validity are not touched.
  void restore(const uno::Reference<star::frame::XModel>& document,
               const uno::Reference<star::sheet::XSpreadsheet>& sheet) const;

 private:
  /// One look that some cells have.
  struct Look {
    uno::Sequence<star::table::CellRangeAddress> cells;
    rtl::OUString style;
    std::map<rtl::OUString, uno::Any> own;
  };
  [[nodiscard]] static Look lookOf(const uno::Reference<uno::XInterface>& cells);

  star::table::CellRangeAddress area_;
  std::vector<Look> looks_;
};

}  // namespace mervane::addin
