#include "hosts/workbook/objects/range_object.h"

#include <algorithm>

#include "hosts/workbook/auto_filter.h"
#include "hosts/workbook/auto_fit.h"
#include "hosts/workbook/book.h"
#include "hosts/workbook/objects/application_object.h"
#include "hosts/workbook/objects/format_objects.h"
#include "hosts/workbook/objects/pool.h"
#include "hosts/workbook/refuse.h"
#include "hosts/workbook/sorting.h"

namespace mervane::workbook {

namespace member = sheet::member;
using sheet::Access;

namespace {

constexpr std::int64_t mostValues = 20'000'000;
constexpr std::int32_t orderDescending = 2;

/// An index of a column may be its letters.
std::int64_t columnIndex(Arguments arguments, std::size_t position) {
  const Variant& value = given(arguments, position);
  if (const std::int32_t* exact = value.getIf<std::int32_t>()) return *exact;
  if (const std::string* letters = value.getIf<std::string>()) {
    if (const std::optional<CellAddress> cell = parseCell(*letters + "1")) return cell->column;
  }
  return toInt32(value, englishLocale());
}

}  // namespace

sheet::ObjectRef RangeObject::make(Book& book, const SheetArea& area, View view) {
  if (!isOnSheet(area.area)) raise(runtime::applicationDefined);
  return std::allocate_shared<RangeObject>(PoolAllocator<RangeObject>(), book, area.sheet, area.area, view);
}

Sheet& RangeObject::sheet() const {
  return book_.sheet(sheet_);
}

Variant RangeObject::ranged(std::int64_t row, std::int64_t column, std::int64_t rows, std::int64_t columns,
                            View view) const {
  if (rows < 1 || columns < 1 || !isOnSheet(row, column) || !isOnSheet(row + rows - 1, column + columns - 1)) {
    raise(runtime::applicationDefined);
  }
  const CellArea area{static_cast<std::int32_t>(row), static_cast<std::int32_t>(column),
                      static_cast<std::int32_t>(row + rows - 1), static_cast<std::int32_t>(column + columns - 1)};
  return pooled(area, view);
}

Variant RangeObject::pooled(const CellArea& area, View view) const {
  return Variant(
      sheet::ObjectRef(std::allocate_shared<RangeObject>(PoolAllocator<RangeObject>(), book_, sheet_, area, view)));
}

Variant RangeObject::cell(std::int64_t row, std::int64_t column) const {
  if (row < 1 || row > lastSheetRow || column < 1 || column > lastSheetColumn) raise(runtime::applicationDefined);
  const auto onlyRow = static_cast<std::int32_t>(row);
  const auto onlyColumn = static_cast<std::int32_t>(column);
  return pooled({onlyRow, onlyColumn, onlyRow, onlyColumn}, View::cells);
}

Variant RangeObject::item(Arguments arguments) const {
  if (arguments.size() == 2) {
    const std::int32_t* down = arguments[0].getIf<std::int32_t>();
    const std::int32_t* right = arguments[1].getIf<std::int32_t>();
    if (down != nullptr && right != nullptr) {
      return cell(std::int64_t{area_.firstRow} + *down - 1, std::int64_t{area_.firstColumn} + *right - 1);
    }
  }
  return convertedItem(arguments);
}

Variant RangeObject::convertedItem(Arguments arguments) const {
  atMost(arguments, 2);
  if (view_ == View::rows && !isGiven(arguments, 1)) return row(arguments);
  if (view_ == View::columns && !isGiven(arguments, 1)) return column(arguments);
  if (!isGiven(arguments, 1)) {
    // One index counts the cells row by row, and goes on below the range.
    const std::int64_t index = std::int64_t{wholeArgument(arguments, 0)} - 1;
    const std::int64_t width = area_.columns();
    const std::int64_t down = index >= 0 ? index / width : -((-index + width - 1) / width);
    return cell(area_.firstRow + down, area_.firstColumn + index - down * width);
  }
  const std::int64_t down = wholeArgument(arguments, 0);
  const std::int64_t right = columnIndex(arguments, 1);
  return cell(area_.firstRow + down - 1, area_.firstColumn + right - 1);
}

Variant RangeObject::column(Arguments arguments) const {
  const std::int64_t index = columnIndex(arguments, 0);
  return ranged(area_.firstRow, area_.firstColumn + index - 1, area_.rows(), 1, View::columns);
}

Variant RangeObject::row(Arguments arguments) const {
  const std::int64_t index = wholeArgument(arguments, 0);
  return ranged(area_.firstRow + index - 1, area_.firstColumn, 1, area_.columns(), View::rows);
}

Variant RangeObject::offset(Arguments arguments) const {
  atMost(arguments, 2);
  const std::int64_t down = isGiven(arguments, 0) ? wholeArgument(arguments, 0) : 0;
  const std::int64_t right = isGiven(arguments, 1) ? wholeArgument(arguments, 1) : 0;
  return ranged(area_.firstRow + down, area_.firstColumn + right, area_.rows(), area_.columns(), view_);
}

Variant RangeObject::resize(Arguments arguments) const {
  atMost(arguments, 2);
  const std::int64_t rows = isGiven(arguments, 0) ? wholeArgument(arguments, 0) : area_.rows();
  const std::int64_t columns = isGiven(arguments, 1) ? wholeArgument(arguments, 1) : area_.columns();
  return ranged(area_.firstRow, area_.firstColumn, rows, columns, view_);
}

std::int64_t RangeObject::count() const {
  switch (view_) {
    case View::rows:
      return area_.rows();
    case View::columns:
      return area_.columns();
    case View::cells:
      break;
  }
  return area_.cells();
}

Variant RangeObject::value() const {
  const bool isOneCell = area_.firstRow == area_.lastRow && area_.firstColumn == area_.lastColumn;
  return isOneCell ? sheet().value({area_.firstRow, area_.firstColumn}) : values();
}

Variant RangeObject::values() const {
  Sheet& target = sheet();
  if (area_.cells() > mostValues) raise(runtime::outOfMemory);
  Array<Variant> values({{1, area_.rows()}, {1, area_.columns()}});
  std::size_t at = 0;
  for (std::int32_t row = area_.firstRow; row <= area_.lastRow; ++row) {
    for (std::int32_t column = area_.firstColumn; column <= area_.lastColumn; ++column) {
      values.elements()[at++] = target.value({row, column});
    }
  }
  return Variant(std::move(values));
}

void RangeObject::setValue(const Variant& value) {
  Sheet& target = sheet();
  if (!value.isArray()) {
    if (area_.cells() > mostValues) raise(runtime::outOfMemory);
    for (std::int32_t row = area_.firstRow; row <= area_.lastRow; ++row) {
      for (std::int32_t column = area_.firstColumn; column <= area_.lastColumn; ++column) {
        target.setValue({row, column}, value);
      }
    }
    return;
  }
  const AnyArray& values = value.array();
  const bool isTable = values.dimensions() == 2;
  if (values.dimensions() != 1 && !isTable) raise(runtime::typeMismatch);
  // Cells that the array has no element for become #N/A.
  for (std::int32_t row = 0; row < area_.rows(); ++row) {
    for (std::int32_t column = 0; column < area_.columns(); ++column) {
      const std::int32_t across = values.lowerBound(isTable ? 2 : 1) + column;
      const std::int32_t down = isTable ? values.lowerBound(1) + row : 0;
      const bool has = across <= values.upperBound(isTable ? 2 : 1) && (!isTable || down <= values.upperBound(1));
      const Variant one = !has ? Variant(ErrorValue{2042}) : isTable ? values.at(down, across) : values.at(across);
      target.setValue({area_.firstRow + row, area_.firstColumn + column}, one);
    }
  }
}

Variant RangeObject::numberFormat() const {
  const auto format = [&](CellAddress at) { return book_.cellNumberFormat(sheet_, at); };
  std::string first = format({area_.firstRow, area_.firstColumn});
  for (std::int32_t row = area_.firstRow; row <= area_.lastRow; ++row) {
    for (std::int32_t column = area_.firstColumn; column <= area_.lastColumn; ++column) {
      if (format({row, column}) != first) return Null{};
    }
  }
  return Variant(std::move(first));
}

void RangeObject::sort(Arguments arguments) {
  atMost(arguments, 2);
  const Variant& key = given(arguments, 0);
  const std::optional<SheetArea> place = book_.areaOf(key);
  if (!place) raise(runtime::typeMismatch);
  if (place->sheet != sheet_ || place->area.firstColumn < area_.firstColumn ||
      place->area.firstColumn > area_.lastColumn) {
    refuse("The sort key " + a1(place->area) + " lies outside of the cells to sort, " + a1(area_) + ".");
  }
  const bool descending = isGiven(arguments, 1) && wholeArgument(arguments, 1) == orderDescending;
  sortRows(sheet(), area_, place->area.firstColumn, descending);
}

void RangeObject::autoFit() {
  if (area_.firstRow != 1 || area_.lastRow != lastSheetRow) {
    refuse("Only whole columns can be fitted to their contents.");
  }
  workbook::autoFit(sheet(), area_.firstColumn, area_.lastColumn);
}

Variant RangeObject::get(member::Id member, Arguments arguments) {
  switch (member) {
    case member::Cells:
      if (arguments.empty()) return ranged(area_.firstRow, area_.firstColumn, area_.rows(), area_.columns());
      return RangeObject(book_, sheet_, area_, View::cells).item(arguments);
    case member::Rows:
      if (isGiven(arguments, 0)) return row(arguments);
      return ranged(area_.firstRow, area_.firstColumn, area_.rows(), area_.columns(), View::rows);
    case member::Columns:
      if (isGiven(arguments, 0)) return column(arguments);
      return ranged(area_.firstRow, area_.firstColumn, area_.rows(), area_.columns(), View::columns);
    case member::Count:
      if (count() > INT32_MAX) raise(runtime::overflow);
      return static_cast<std::int32_t>(count());
    case member::Column:
      return area_.firstColumn;
    case member::Offset:
      return offset(arguments);
    case member::Resize:
      return resize(arguments);
    case member::Interior:
      return makeInterior(book_, {sheet_, area_});
    case member::Font:
      return makeFont(book_, {sheet_, area_});
    case member::Borders:
      return makeBorder(book_, {sheet_, area_}, wholeArgument(arguments, 0));
    case member::NumberFormat:
      return numberFormat();
    case member::Formula:
      if (area_.cells() != 1) raise(runtime::memberNotSupported);
      if (std::optional<std::string> formula = sheet().formula({area_.firstRow, area_.firstColumn}))
        return Variant(*formula);
      return value();
    case member::Text:
      if (area_.cells() != 1) return Null{};
      return Variant(sheet().shownText({area_.firstRow, area_.firstColumn}));
    case member::EntireColumn:
      return ranged(1, area_.firstColumn, lastSheetRow, area_.columns(), View::columns);
    case member::Worksheet:
      return makeWorksheet(book_, sheet_);
    case member::Left:
      return book_.geometry(sheet_).columnLeft(area_.firstColumn);
    case member::Top:
      return book_.geometry(sheet_).rowTop(area_.firstRow);
    case member::Width: {
      const Geometry& geometry = book_.geometry(sheet_);
      return geometry.columnLeft(area_.lastColumn) + geometry.columnWidth(area_.lastColumn) -
             geometry.columnLeft(area_.firstColumn);
    }
    case member::Height: {
      const Geometry& geometry = book_.geometry(sheet_);
      return geometry.rowTop(area_.lastRow) + geometry.rowHeight(area_.lastRow) - geometry.rowTop(area_.firstRow);
    }
    case member::Select:
      book_.select({sheet_, area_});
      return true;
    case member::Sort:
      sort(arguments);
      return true;
    case member::AutoFilter:
      // Criteria are not asked for by anything here, and none is better than a wrong one.
      atMost(arguments, 0);
      toggleAutoFilter(book_, sheet(), area_);
      return true;
    case member::AutoFit:
      autoFit();
      return true;
    case member::NewEnum:
      return Variant(sheet::ObjectRef(std::make_shared<RangeEnumerator>(book_, sheet_, area_, view_)));
    default:
      raise(runtime::memberNotSupported);
  }
}

void RangeObject::put(member::Id member, Arguments arguments) {
  if (arguments.empty()) raise(runtime::argumentNotOptional);
  switch (member) {
    case member::Value:
    case member::Formula:
      setValue(arguments.back());
      return;
    case member::Item:
    case member::Cells: {
      // Assigning to an item assigns to its value.
      const Variant cell = item(arguments.first(arguments.size() - 1));
      static_cast<void>(cell.object()->invoke(Access::put, member::Value, arguments.last(1)));
      return;
    }
    case member::NumberFormat: {
      const std::string code = textArgument(arguments, arguments.size() - 1);
      if (code.empty()) refuse("A number format cannot be empty; \"General\" is the plain one.");
      Styles& styles = book_.shared().styles;
      sheet().fitCache().willChange(sheet(), area_);
      sheet().restyle(area_, [&](std::uint32_t style) { return styles.withNumberFormat(style, code); });
      return;
    }
    default:
      raise(runtime::memberNotSupported);
  }
}

Variant RangeObject::invoke(Access access, member::Id member, Arguments arguments) {
  if (access != Access::put) {
    // OPTIMIZATION: nearly all calls are these two; they do not go through the long list of members.
    if (member == member::Value) return value();
    if (member == member::Item) return item(arguments);
    return get(member, arguments);
  }
  put(member, arguments);
  return {};
}

Variant RangeEnumerator::invoke(Access, member::Id member, Arguments) {
  if (member != member::Next) raise(runtime::memberNotSupported);
  CellArea one = area_;
  switch (view_) {
    case RangeObject::View::rows:
      if (at_ >= area_.rows()) return {};
      one.firstRow = one.lastRow = area_.firstRow + static_cast<std::int32_t>(at_);
      break;
    case RangeObject::View::columns:
      if (at_ >= area_.columns()) return {};
      one.firstColumn = one.lastColumn = area_.firstColumn + static_cast<std::int32_t>(at_);
      break;
    case RangeObject::View::cells:
      if (at_ >= area_.cells()) return {};
      one.firstRow = one.lastRow = area_.firstRow + static_cast<std::int32_t>(at_ / area_.columns());
      one.firstColumn = one.lastColumn = area_.firstColumn + static_cast<std::int32_t>(at_ % area_.columns());
      break;
  }
  ++at_;
  return Variant(RangeObject::make(book_, {sheet_, one}, view_));
}

}  // namespace mervane::workbook
