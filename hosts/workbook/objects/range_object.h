#pragma once

#include <cstdint>
#include <memory>

#include "hosts/workbook/cell_address.h"
#include "hosts/workbook/objects/arguments.h"
#include "spreadsheet/object.h"

namespace mervane::workbook {

class Book;
class Sheet;

/// A rectangle of cells, or its rows or columns as a collection.
class RangeObject final : public sheet::Object {
 public:
  enum class View : std::uint8_t { cells, rows, columns };

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
  [[nodiscard]] Variant ranged(std::int64_t row, std::int64_t column, std::int64_t rows, std::int64_t columns,
                               View view = View::cells) const;
  /// The same without a check.
  [[nodiscard]] Variant pooled(const CellArea& area, View view) const;
  /// One cell. OPTIMIZATION: nothing is asked for more often, so this does without what larger areas need.
  [[nodiscard]] Variant cell(std::int64_t row, std::int64_t column) const;
  [[nodiscard]] Variant item(Arguments arguments) const;
  /// The same for a single index and for ones that are no whole numbers yet.
  [[nodiscard]] Variant convertedItem(Arguments arguments) const;
  [[nodiscard]] Variant column(Arguments arguments) const;
  [[nodiscard]] Variant row(Arguments arguments) const;
  [[nodiscard]] Variant offset(Arguments arguments) const;
  [[nodiscard]] Variant resize(Arguments arguments) const;
  [[nodiscard]] std::int64_t count() const;
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

/// Goes through the cells of a range row by row, or through its rows or columns.
class RangeEnumerator final : public sheet::Object {
 public:
  RangeEnumerator(Book& book, std::int32_t sheet, const CellArea& area, RangeObject::View view)
      : book_(book), area_(area), sheet_(sheet), view_(view) {}
  Variant invoke(sheet::Access access, sheet::member::Id member, Arguments arguments) override;

 private:
  Book& book_;
  CellArea area_;
  std::int32_t sheet_;
  RangeObject::View view_;
  std::int64_t at_ = 0;
};

}  // namespace mervane::workbook
