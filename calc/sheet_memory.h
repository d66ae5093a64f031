#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>
#include <memory>
#include <vector>

#include "calc/office.h"

namespace mervane::addin {

/// What stands on some sheets of a document at one moment: values, formulas, formats, column widths, the filter and
/// which charts there are. It can be put back later.
///
/// The office's own record of changes made by a program is not used: it leaves cells filled that were empty, and
/// crashes over charts. Putting back touches what has changed and nothing else. Not remembered are links, formats of
/// single letters within a cell, notes, conditional formats and rules of validity, which matters where rows have been
/// sorted; and what a chart looks like: charts that have come are taken away, ones that have gone do not come back.
class SheetMemory {
 public:
  /// @param written what will be written at most; their sheets are remembered, whole
  SheetMemory(const uno::Reference<star::frame::XModel>& document,
              const std::vector<star::table::CellRangeAddress>& written);
  ~SheetMemory();
  SheetMemory(const SheetMemory&) = delete;
  SheetMemory& operator=(const SheetMemory&) = delete;

  void restore() const;

 private:
  class Sheet;
  uno::Reference<star::frame::XModel> document_;
  std::vector<std::unique_ptr<Sheet>> remembered_;
};

}  // namespace mervane::addin
