#pragma once

#include <cstdint>
#include <unordered_map>
#include <unordered_set>

#include "hosts/workbook/cell_address.h"

namespace mervane::workbook {

class Sheet;

/// How wide the contents of columns were when they were last fitted, so that fitting a long column again costs no more
/// than what was written since.
class FitCache {
 public:
  struct Entry {
    double widest = 0.0;  ///< pixels of text
    bool isKnown = false;
    std::unordered_set<std::int32_t> writtenRows;  ///< their cells are not in widest yet
  };
  /// To be called before a cell gets another value.
  void willChange(Sheet& sheet, CellAddress at);
  /// The same for an area whose formats change.
  void willChange(Sheet& sheet, const CellArea& area);
  /// Forgets all widths: cells were moved.
  void forget() { entries_.clear(); }
  [[nodiscard]] Entry& entry(std::int32_t column) { return entries_[column]; }

 private:
  std::unordered_map<std::int32_t, Entry> entries_;
};

/// Makes each column as wide as what its cells show. The width is an estimate by the widths of the default font's
/// letters, since the fonts themselves are not there; it errs on the wide side. Cells of merged areas and wrapped
/// lines do not count, a column without contents keeps its width.
void autoFit(Sheet& sheet, std::int32_t firstColumn, std::int32_t lastColumn);

}  // namespace mervane::workbook
