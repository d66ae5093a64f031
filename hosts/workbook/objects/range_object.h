#pragma once

#include <cstdint>
#include <memory>

#include "hosts/objects/range_cells.h"
#include "hosts/workbook/cell_address.h"
#include "spreadsheet/object.h"

namespace mervane::workbook {

using hosts::Arguments;

class Book;
class Sheet;

/// A rectangle of cells, or its rows or columns as a collection.
class RangeObject final : public sheet::Object {
 public:
  using View = hosts::RangeCells::View;

  RangeObject(Book& book, std::int32_t sheet, const CellArea& area, View view)
      : book_(book), area_(area), sheet_(sheet), view_(view) {}

  /// Raises applicationDefined for an area that is not on the sheet.
  [[nodiscard]] static sheet::ObjectRef make(Book& book, const SheetArea& area, View view = View::cells);

  Variant invoke(sheet::Access access, sheet::member::Id member, Arguments arguments) override;

  [[nodiscard]] Book& book() const noexcept { return book_; }
  [[nodiscard]] std::int32_t sheetPosition() const noexcept { return sheet_; }
  [[nodiscard]] const CellArea& area() const noexcept { return area_; }
  [[nodiscard]] View view() const noexcept { return view_; }
  [[nodiscard]] Sheet& sheet() const;

 private:
  [[nodiscard]] Variant get(sheet::member::Id member, Arguments arguments);
  void put(sheet::member::Id member, Arguments arguments);
  [[nodiscard]] hosts::RangeCells cells() const noexcept { return {area_, view_}; }
  /// A range for cells that are on the sheet.
  [[nodiscard]] Variant made(const hosts::RangeCells& cells) const;
  /// One cell. OPTIMIZATION: nothing is asked for more often, so this does without what larger areas need.
  [[nodiscard]] Variant cell(std::int64_t row, std::int64_t column) const;
  [[nodiscard]] Variant item(Arguments arguments) const;
  [[nodiscard]] Variant value() const;
  [[nodiscard]] Variant values() const;
  void setValue(const Variant& value);
  [[nodiscard]] Variant numberFormat() const;
  void sort(Arguments arguments);
  void autoFit();

  Book& book_;
  CellArea area_;
  std::int32_t sheet_;
  View view_;
};

}  // namespace mervane::workbook
