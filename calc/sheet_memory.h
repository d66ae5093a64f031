#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "calc/office.h"
#include "calc/row_order.h"

namespace mervane::addin {

/// What stands on some sheets of a document at one moment: values, formulas, formats, column widths, heights of rows
/// and which of them are shown, the filter, and the charts. It can be put back later.
///
/// The office's own record of changes made by a program is not used: it leaves cells filled that were empty, and
/// crashes over charts. Putting back touches what has changed and nothing else. Rows that were sorted are moved back by
/// a sort, with all that belongs to them. Not remembered are links, formats of single letters within a cell, comments,
/// conditional formats and rules of validity, which matters where cells have been written over.
class SheetMemory {
 public:
  /// @param written what will be written at most; their sheets are remembered, whole
  SheetMemory(const Office& office, const uno::Reference<star::frame::XModel>& document,
              const std::vector<star::table::CellRangeAddress>& written);
  ~SheetMemory();
  SheetMemory(const SheetMemory&) = delete;
  SheetMemory& operator=(const SheetMemory&) = delete;

  /// Rows may have been sorted by these numbers since; looks whether they have been.
  /// @param cells the cells of the rows that hold what was sorted; the column beside them is of no account
  void mayHaveBeenSorted(const star::table::CellRangeAddress& cells, const std::vector<std::int32_t>& keys);

  /// The same cells as they are now, with the way back to them once this one has been restored.
  [[nodiscard]] std::shared_ptr<SheetMemory> ofNow() const;
  void restore() const;

 private:
  class Sheet;
  Office office_;
  uno::Reference<star::frame::XModel> document_;
  std::vector<star::table::CellRangeAddress> written_;
  std::vector<std::unique_ptr<Sheet>> remembered_;
  /// How rows have to be moved before anything else is put back.
  std::optional<RowOrder> order_;
};

}  // namespace mervane::addin
