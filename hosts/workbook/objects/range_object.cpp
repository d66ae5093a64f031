#include "hosts/workbook/objects/range_object.h"

#include "hosts/objects/range_values.h"
#include "hosts/objects/sort_order.h"
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

sheet::ObjectRef RangeObject::make(Book& book, const SheetArea& area, View view) {
  if (!isOnSheet(area.area)) raise(runtime::applicationDefined);
  return std::allocate_shared<RangeObject>(PoolAllocator<RangeObject>(), book, area.sheet, area.area, view);
}

Sheet& RangeObject::sheet() const {
  return book_.sheet(sheet_);
}

Variant RangeObject::made(const hosts::RangeCells& cells) const {
  return Variant(sheet::ObjectRef(
      std::allocate_shared<RangeObject>(PoolAllocator<RangeObject>(), book_, sheet_, cells.area, cells.view)));
}

Variant RangeObject::cell(std::int64_t row, std::int64_t column) const {
  if (row < 1 || row > lastSheetRow || column < 1 || column > lastSheetColumn) raise(runtime::applicationDefined);
  const auto onlyRow = static_cast<std::int32_t>(row);
  const auto onlyColumn = static_cast<std::int32_t>(column);
  return made({{onlyRow, onlyColumn, onlyRow, onlyColumn}});
}

Variant RangeObject::item(Arguments arguments) const {
  if (arguments.size() == 2) {
    const std::int32_t* down = arguments[0].getIf<std::int32_t>();
    const std::int32_t* right = arguments[1].getIf<std::int32_t>();
    if (down != nullptr && right != nullptr) {
      return cell(std::int64_t{area_.firstRow} + *down - 1, std::int64_t{area_.firstColumn} + *right - 1);
    }
  }
  return made(cells().item(arguments));
}

Variant RangeObject::value() const {
  const bool isOneCell = area_.firstRow == area_.lastRow && area_.firstColumn == area_.lastColumn;
  return isOneCell ? sheet().value({area_.firstRow, area_.firstColumn}) : values();
}

Variant RangeObject::values() const {
  Sheet& target = sheet();
  return hosts::tableOf(area_, [&](CellAddress at) { return target.value(at); });
}

void RangeObject::setValue(const Variant& value) {
  Sheet& target = sheet();
  if (!value.isArray()) {
    hosts::requireBounded(area_);
    for (std::int32_t row = area_.firstRow; row <= area_.lastRow; ++row) {
      for (std::int32_t column = area_.firstColumn; column <= area_.lastColumn; ++column) {
        target.setValue({row, column}, value);
      }
    }
    return;
  }
  const hosts::AssignedArray values(value.array());
  for (std::int32_t row = 0; row < area_.rows(); ++row) {
    for (std::int32_t column = 0; column < area_.columns(); ++column) {
      target.setValue({area_.firstRow + row, area_.firstColumn + column}, values.at(row, column));
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
  const hosts::SortOrder order =
      hosts::sortOrder(arguments, {sheet_, area_}, [this](const Variant& key) { return book_.areaOf(key); });
  sortRows(sheet(), area_, order.column, order.descending);
}

void RangeObject::autoFit() {
  hosts::requireWholeColumns(area_);
  workbook::autoFit(sheet(), area_.firstColumn, area_.lastColumn);
}

Variant RangeObject::get(member::Id member, Arguments arguments) {
  switch (member) {
    case member::Cells:
      if (arguments.empty()) return made({area_, View::cells});
      return RangeObject(book_, sheet_, area_, View::cells).item(arguments);
    case member::Rows:
      return made(hosts::isGiven(arguments, 0) ? cells().row(arguments) : hosts::RangeCells{area_, View::rows});
    case member::Columns:
      return made(hosts::isGiven(arguments, 0) ? cells().column(arguments) : hosts::RangeCells{area_, View::columns});
    case member::Count:
      return cells().shownCount();
    case member::Column:
      return area_.firstColumn;
    case member::Offset:
      return made(cells().offset(arguments));
    case member::Resize:
      return made(cells().resize(arguments));
    case member::Interior:
      return makeInterior(book_, {sheet_, area_});
    case member::Font:
      return makeFont(book_, {sheet_, area_});
    case member::Borders:
      return makeBorder(book_, {sheet_, area_}, hosts::wholeArgument(arguments, 0));
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
      return made(cells().entireColumns());
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
      hosts::atMost(arguments, 0);
      toggleAutoFilter(book_, sheet(), area_);
      return true;
    case member::AutoFit:
      autoFit();
      return true;
    case member::NewEnum:
      return Variant(hosts::enumeratorOf(cells(), [&book = book_, sheet = sheet_](const hosts::RangeCells& one) {
        return Variant(make(book, {sheet, one.area}, one.view));
      }));
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
      const std::string code = hosts::textArgument(arguments, arguments.size() - 1);
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

}  // namespace mervane::workbook
