#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>
#include <memory>
#include <vector>

#include "calc/office.h"

namespace mervane::addin {

class SheetMemory;

/// Everything that is written to some sheets while the object lives becomes one undo step. It is the only step then:
/// the office gives up the earlier ones, and there is no redo behind it.
class UndoStep {
 public:
  /// @param written what will be written at most
  UndoStep(const Office& office, const uno::Reference<star::frame::XModel>& document,
           const std::vector<star::table::CellRangeAddress>& written, const char* title);
  ~UndoStep();
  UndoStep(const UndoStep&) = delete;
  UndoStep& operator=(const UndoStep&) = delete;

  /// Rows may have been sorted by these numbers.
  /// @param cells the cells of the rows that hold what was sorted
  void mayHaveSorted(const star::table::CellRangeAddress& cells, const std::vector<std::int32_t>& keys);

 private:
  Office office_;
  uno::Reference<star::frame::XModel> document_;
  std::shared_ptr<SheetMemory> before_;
  rtl::OUString title_;
};

}  // namespace mervane::addin
