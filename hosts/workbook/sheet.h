#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/workbook/cell_address.h"
#include "hosts/workbook/cell_store.h"
#include "hosts/workbook/columns.h"
#include "hosts/workbook/sheet_frame.h"
#include "hosts/workbook/sheet_geometry.h"
#include "hosts/workbook/styles.h"
#include "hosts/workbook/text_table.h"
#include "hosts/workbook/write_log.h"
#include "mervane/variant.h"

namespace mervane::workbook {

class Package;
class FitCache;

/// What the sheets of a workbook share.
struct BookShared {
  Package* package = nullptr;
  TextTable texts;
  Styles styles;
  bool from1904 = false;
  std::int32_t digitPixels = 7;
  bool valuesChanged = false;    ///< formulas elsewhere may have other values now
  bool formulasChanged = false;  ///< the chain of calculation no longer holds
  std::vector<std::string> notes;
};

/// A table of the sheet, with a part of its own.
struct TableArea {
  std::string part;
  CellArea area;
  bool hasHeader = true;
  bool headerWritten = false;
};

/// One worksheet: its cells and all that stands around them, read at the first question.
class Sheet {
 public:
  /// @param tabPosition zero-based, among all sheets of the workbook.
  Sheet(BookShared& shared, std::string name, std::string part, std::int32_t tabPosition);
  ~Sheet();

  [[nodiscard]] const std::string& name() const noexcept { return name_; }
  [[nodiscard]] const std::string& part() const noexcept { return part_; }
  [[nodiscard]] std::int32_t tabPosition() const noexcept { return tabPosition_; }
  [[nodiscard]] BookShared& shared() noexcept { return shared_; }
  [[nodiscard]] const BookShared& shared() const noexcept { return shared_; }

  [[nodiscard]] CellStore& cells() { return loaded(), cells_; }
  [[nodiscard]] SheetFrame& frame() { return loaded(), frame_; }
  [[nodiscard]] Columns& columns() { return loaded(), columns_; }
  [[nodiscard]] SheetGeometry& geometry() { return loaded(), geometry_; }
  [[nodiscard]] std::vector<TableArea>& tables() { return loaded(), tables_; }
  [[nodiscard]] const WriteLog& log() const noexcept { return log_; }
  [[nodiscard]] FitCache& fitCache();
  [[nodiscard]] bool isLoaded() const noexcept { return loaded_; }

  /// As Range.Value gives it: empty, number, text, boolean, error, or a date where the number format is one of dates
  /// and the number was not written as a plain one just before. Otherwise numbers that are put into cells of dates for
  /// a while, as a sort by clusters does, would come back as dates, by 1462 days later where days count from 1904.
  /// Raises applicationDefined, naming the cell, for a formula that has no computed value.
  [[nodiscard]] Variant value(CellAddress at);
  /// The same, but such a formula is empty.
  [[nodiscard]] Variant valueOrEmpty(CellAddress at);
  /// The formula with its equals sign; nothing for a cell that has none.
  [[nodiscard]] std::optional<std::string> formula(CellAddress at);
  /// About what the cell shows.
  [[nodiscard]] std::string shownText(CellAddress at);

  /// Writes as Range.Value does: a text that begins with an equals sign becomes a formula, a date gives the cell a date
  /// format where it has none. An infinite number becomes #DIV/0!, a not-a-number #NUM!.
  /// Raises applicationDefined, and changes nothing, for a cell that is protected, covered by a merged one or part of
  /// an array formula, and for a text that a cell cannot hold.
  void setValue(CellAddress at, const Variant& value);

  /// The cell's format: its own, else that of its row, else that of its column.
  [[nodiscard]] std::uint32_t styleOf(CellAddress at);
  /// Gives each cell of the area the format that the function makes of its old one.
  template <class Change>
  void restyle(const CellArea& area, Change&& change) {
    requireFormatting(area);
    std::uint32_t lastOld = noStyle;
    std::uint32_t lastNew = 0;
    for (std::int32_t row = area.firstRow; row <= area.lastRow; ++row) {
      for (std::int32_t column = area.firstColumn; column <= area.lastColumn; ++column) {
        Cell& cell = makeCell({row, column});
        if (cell.style != lastOld) {
          lastOld = cell.style;
          lastNew = change(cell.style);
        }
        cell.style = lastNew;
        cell.isPlainNumber = false;
      }
    }
    markChanged();
  }

  [[nodiscard]] const std::vector<CellArea>& mergedAreas() { return loaded(), merged_; }
  [[nodiscard]] bool isProtected() { return loaded(), isProtected_; }
  /// The areas of array formulas and data tables of several cells.
  [[nodiscard]] const std::vector<CellArea>& arrays() { return loaded(), arrays_; }
  /// Whether a protected sheet allows what the attribute of the protection element, such as "sort", is about.
  [[nodiscard]] bool allows(const char* permission);
  /// Raise applicationDefined where a protected sheet does not allow it. The permission is the attribute of the
  /// protection element, such as "sort".
  void requirePermission(const char* permission, const std::string& action);
  void requireFormatting(const CellArea& area);
  /// Gives every member of a shared formula its own text, so that members can be moved and overwritten.
  void separateFormulas();

  void markChanged() noexcept { changed_ = true; }
  [[nodiscard]] bool changed() const noexcept { return changed_; }
  /// "Sheet1!C7".
  [[nodiscard]] std::string place(CellAddress at) const;

 private:
  static constexpr std::uint32_t noStyle = 0xFFFFFFFFU;

  void loaded() {
    if (!loaded_) load();
  }
  void load();
  void readSurroundings();
  [[nodiscard]] bool isDate(const Cell& cell) const { return !cell.isPlainNumber && shared_.styles.isDate(cell.style); }
  [[nodiscard]] Variant valueOf(CellKind kind, double number, std::uint64_t index, bool asDate) const;
  [[nodiscard]] Variant cachedValue(CellAddress at, const Cell& formulaCell) const;
  [[nodiscard]] Cell& makeCell(CellAddress at);
  void requireWritable(CellAddress at);
  void forgetOld(CellAddress at, Cell& cell);
  void putText(CellAddress at, Cell& cell, const std::string& text);
  void putNumber(Cell& cell, double number);

  BookShared& shared_;
  std::string name_;
  std::string part_;
  std::int32_t tabPosition_;
  bool loaded_ = false;
  bool changed_ = false;
  CellStore cells_;
  SheetFrame frame_;
  Columns columns_;
  SheetGeometry geometry_;
  std::vector<CellArea> merged_;
  std::int32_t tallestMerge_ = 0;
  std::vector<CellArea> arrays_;
  std::vector<TableArea> tables_;
  bool isProtected_ = false;
  bool isSeparated_ = false;
  WriteLog log_;
  std::unique_ptr<FitCache> fitCache_;
};

}  // namespace mervane::workbook
