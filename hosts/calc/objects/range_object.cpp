#include "hosts/calc/objects/range_object.h"

#include <com/sun/star/awt/Point.hpp>
#include <com/sun/star/awt/Size.hpp>
#include <com/sun/star/beans/PropertyState.hpp>
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/beans/XPropertyState.hpp>
#include <com/sun/star/table/TableSortField.hpp>
#include <com/sun/star/text/XTextRange.hpp>
#include <com/sun/star/util/XSortable.hpp>

#include "hosts/calc/auto_filter.h"
#include "hosts/calc/column_fit.h"
#include "hosts/calc/format_buffer.h"
#include "hosts/calc/number_formats.h"
#include "hosts/calc/objects/application_object.h"
#include "hosts/calc/objects/format_objects.h"
#include "hosts/calc/points.h"
#include "hosts/calc/sheet_facts.h"

namespace mervane::calc {

namespace member = sheet::member;
using sheet::Access;

namespace {

constexpr std::int64_t mostValues = 20'000'000;
constexpr std::int32_t orderDescending = 2;
constexpr std::int32_t errorNotAvailable = 2042;

/// An index of a column may be its letters.
std::int64_t columnIndex(Arguments arguments, std::size_t position) {
  const Variant& value = given(arguments, position);
  if (const std::int32_t* exact = value.getIf<std::int32_t>()) return *exact;
  if (const std::string* letters = value.getIf<std::string>()) {
    if (const std::optional<CellAddress> cell = sheet::parseCell(*letters + "1")) return cell->column;
  }
  return toInt32(value, englishLocale());
}

/// Goes through the cells of a range row by row, or through its rows or columns.
class RangeEnumerator final : public sheet::Object {
 public:
  RangeEnumerator(std::shared_ptr<Session> session, const SheetArea& place, RangeObject::View view)
      : session_(std::move(session)), place_(place), view_(view) {}

  Variant invoke(Access, member::Id member, Arguments) override {
    if (member != member::Next) raise(runtime::memberNotSupported);
    const CellArea& area = place_.area;
    SheetArea one = place_;
    const auto place = static_cast<std::int32_t>(at_);
    switch (view_) {
      case RangeObject::View::rows:
        if (at_ >= area.rows()) return {};
        one.area.firstRow = one.area.lastRow = area.firstRow + place;
        break;
      case RangeObject::View::columns:
        if (at_ >= area.columns()) return {};
        one.area.firstColumn = one.area.lastColumn = area.firstColumn + place;
        break;
      case RangeObject::View::cells:
        if (at_ >= area.cells()) return {};
        one.area.firstRow = one.area.lastRow = area.firstRow + static_cast<std::int32_t>(at_ / area.columns());
        one.area.firstColumn = one.area.lastColumn = area.firstColumn + static_cast<std::int32_t>(at_ % area.columns());
        break;
    }
    ++at_;
    return RangeObject::make(session_, one, view_);
  }

 private:
  std::shared_ptr<Session> session_;
  SheetArea place_;
  RangeObject::View view_;
  std::int64_t at_ = 0;
};

}  // namespace

Variant RangeObject::make(const std::shared_ptr<Session>& session, const SheetArea& area, View view) {
  if (!sheet::isOnSheet(area.area)) raise(runtime::applicationDefined);
  return Variant(sheet::ObjectRef(std::make_shared<RangeObject>(session, area, view)));
}

Variant RangeObject::ranged(std::int64_t row, std::int64_t column, std::int64_t rows, std::int64_t columns,
                            View view) const {
  if (rows < 1 || columns < 1 || !sheet::isOnSheet(row, column) ||
      !sheet::isOnSheet(row + rows - 1, column + columns - 1)) {
    raise(runtime::applicationDefined);
  }
  const CellArea area{static_cast<std::int32_t>(row), static_cast<std::int32_t>(column),
                      static_cast<std::int32_t>(row + rows - 1), static_cast<std::int32_t>(column + columns - 1)};
  return Variant(sheet::ObjectRef(std::make_shared<RangeObject>(session_, SheetArea{place_.sheet, area}, view)));
}

Variant RangeObject::item(Arguments arguments) const {
  if (view_ == View::rows && !isGiven(arguments, 1)) return row(arguments);
  if (view_ == View::columns && !isGiven(arguments, 1)) return column(arguments);
  return cell(arguments);
}

Variant RangeObject::cell(Arguments arguments) const {
  atMost(arguments, 2);
  if (!isGiven(arguments, 1)) {
    // One index counts the cells row by row, and goes on below the range.
    const std::int64_t index = std::int64_t{wholeArgument(arguments, 0)} - 1;
    const std::int64_t width = area().columns();
    const std::int64_t down = index >= 0 ? index / width : -((-index + width - 1) / width);
    return ranged(area().firstRow + down, area().firstColumn + index - down * width, 1, 1);
  }
  const std::int64_t down = wholeArgument(arguments, 0);
  return ranged(area().firstRow + down - 1, area().firstColumn + columnIndex(arguments, 1) - 1, 1, 1);
}

Variant RangeObject::column(Arguments arguments) const {
  return ranged(area().firstRow, area().firstColumn + columnIndex(arguments, 0) - 1, area().rows(), 1, View::columns);
}

Variant RangeObject::row(Arguments arguments) const {
  const std::int64_t index = wholeArgument(arguments, 0);
  return ranged(area().firstRow + index - 1, area().firstColumn, 1, area().columns(), View::rows);
}

Variant RangeObject::offset(Arguments arguments) const {
  atMost(arguments, 2);
  const std::int64_t down = isGiven(arguments, 0) ? wholeArgument(arguments, 0) : 0;
  const std::int64_t right = isGiven(arguments, 1) ? wholeArgument(arguments, 1) : 0;
  return ranged(area().firstRow + down, area().firstColumn + right, area().rows(), area().columns(), view_);
}

Variant RangeObject::resize(Arguments arguments) const {
  atMost(arguments, 2);
  const std::int64_t rows = isGiven(arguments, 0) ? wholeArgument(arguments, 0) : area().rows();
  const std::int64_t columns = isGiven(arguments, 1) ? wholeArgument(arguments, 1) : area().columns();
  return ranged(area().firstRow, area().firstColumn, rows, columns, view_);
}

std::int32_t RangeObject::count() const {
  std::int64_t count = area().cells();
  if (view_ == View::rows) count = area().rows();
  if (view_ == View::columns) count = area().columns();
  if (count > INT32_MAX) raise(runtime::overflow);
  return static_cast<std::int32_t>(count);
}

Variant RangeObject::value() const {
  if (area().cells() == 1) return session_->value(place_.sheet, {area().firstRow, area().firstColumn});
  if (area().cells() > mostValues) raise(runtime::outOfMemory);
  Array<Variant> values({{1, area().rows()}, {1, area().columns()}});
  std::size_t at = 0;
  for (std::int32_t row = area().firstRow; row <= area().lastRow; ++row) {
    for (std::int32_t column = area().firstColumn; column <= area().lastColumn; ++column) {
      values.elements()[at++] = session_->value(place_.sheet, {row, column});
    }
  }
  return Variant(std::move(values));
}

void RangeObject::setValue(const Variant& value) {
  if (area().cells() > mostValues) raise(runtime::outOfMemory);
  const AnyArray* values = value.isArray() ? &value.array() : nullptr;
  const bool isTable = values != nullptr && values->dimensions() == 2;
  if (values != nullptr && values->dimensions() != 1 && !isTable) raise(runtime::typeMismatch);
  for (std::int32_t row = 0; row < area().rows(); ++row) {
    for (std::int32_t column = 0; column < area().columns(); ++column) {
      const CellAddress at{area().firstRow + row, area().firstColumn + column};
      if (values == nullptr) {
        session_->setValue(place_.sheet, at, value);
        continue;
      }
      // Cells that the array has no element for become #N/A.
      const std::int32_t across = values->lowerBound(isTable ? 2 : 1) + column;
      const std::int32_t down = isTable ? values->lowerBound(1) + row : 0;
      const bool has = across <= values->upperBound(isTable ? 2 : 1) && (!isTable || down <= values->upperBound(1));
      const Variant one = !has      ? Variant(ErrorValue{errorNotAvailable})
                          : isTable ? values->at(down, across)
                                    : values->at(across);
      session_->setValue(place_.sheet, at, one);
    }
  }
}

Variant RangeObject::formula() const {
  if (area().cells() != 1) raise(runtime::memberNotSupported);
  session_->settleValues();
  const rtl::OUString formula =
      inOffice("tell a formula", [&] { return session_->rangeOf(place_)->getCellByPosition(0, 0)->getFormula(); });
  return formula.startsWith("=") ? Variant(fromOffice(formula)) : value();
}

Variant RangeObject::text() const {
  if (area().cells() != 1) return Null{};
  session_->settle();
  return inOffice("tell a cell's text", [&] {
    const uno::Reference<css::text::XTextRange> cell(session_->rangeOf(place_)->getCellByPosition(0, 0),
                                                     uno::UNO_QUERY_THROW);
    return Variant(fromOffice(cell->getString()));
  });
}

Variant RangeObject::numberFormat() const {
  session_->settle();
  return inOffice("tell a number format", [&]() -> Variant {
    const auto range = session_->rangeOf(place_);
    const uno::Reference<css::beans::XPropertyState> state(range, uno::UNO_QUERY_THROW);
    if (state->getPropertyState("NumberFormat") == css::beans::PropertyState_AMBIGUOUS_VALUE) return Null{};
    sal_Int32 key = 0;
    const uno::Reference<css::beans::XPropertySet> properties(range, uno::UNO_QUERY_THROW);
    properties->getPropertyValue("NumberFormat") >>= key;
    return Variant(session_->numberFormats().codeOf(key));
  });
}

void RangeObject::setNumberFormat(const std::string& code) {
  if (code.empty()) refuse("A number format cannot be empty; \"General\" is the plain one.");
  inOffice("set a number format", [&] {
    session_->facts().requireUnprotected(place_.sheet, "changes of formats");
    const sal_Int32 key = session_->numberFormats().keyOf(code);
    session_->formats().set(place_, FormatBuffer::Property::numberFormat, key);
  });
  // A number may be a date now, or none any more.
  session_->forgetKinds(place_.sheet, area());
}

double RangeObject::length(member::Id member) const {
  session_->settle();
  return inOffice("tell where cells lie", [&] {
    const uno::Reference<css::beans::XPropertySet> properties(session_->rangeOf(place_), uno::UNO_QUERY_THROW);
    css::awt::Point position;
    css::awt::Size size;
    properties->getPropertyValue("Position") >>= position;
    properties->getPropertyValue("Size") >>= size;
    switch (member) {
      case member::Left:
        return toPoints(position.X);
      case member::Top:
        return toPoints(position.Y);
      case member::Width:
        return toPoints(size.Width);
      default:
        return toPoints(size.Height);
    }
  });
}

void RangeObject::sort(Arguments arguments) {
  atMost(arguments, 2);
  const std::optional<SheetArea> key = session_->areaOf(given(arguments, 0));
  if (!key) raise(runtime::typeMismatch);
  if (key->sheet != place_.sheet || key->area.firstColumn < area().firstColumn ||
      key->area.firstColumn > area().lastColumn) {
    refuse("The sort key " + a1(key->area) + " lies outside of the cells to sort, " + a1(area()) + ".");
  }
  const bool descending = isGiven(arguments, 1) && wholeArgument(arguments, 1) == orderDescending;
  session_->settle();
  inOffice([&] { return "sort " + session_->place(place_.sheet, area()); },
           [&] {
             session_->facts().requireUnprotected(place_.sheet, "sorting");
             session_->facts().requireMovable(place_);
             css::table::TableSortField field;
             field.Field = key->area.firstColumn - area().firstColumn;
             field.IsAscending = !descending;
             field.IsCaseSensitive = false;
             const auto property = [](const char* name, const uno::Any& value) {
               return css::beans::PropertyValue(rtl::OUString::createFromAscii(name), 0, value,
                                                css::beans::PropertyState_DIRECT_VALUE);
             };
             const css::beans::PropertyValue settings[] = {
                 property("SortFields", uno::Any(uno::Sequence<css::table::TableSortField>(&field, 1))),
                 property("IsSortColumns", uno::Any(false)), property("ContainsHeader", uno::Any(false)),
                 property("BindFormatsToContent", uno::Any(true)), property("IsUserListEnabled", uno::Any(false))};
             const uno::Reference<css::util::XSortable> rows(session_->rangeOf(place_), uno::UNO_QUERY_THROW);
             rows->sort(uno::Sequence<css::beans::PropertyValue>(settings, 5));
           });
  session_->forgetValues(place_.sheet, area());
}

void RangeObject::autoFit() {
  if (area().firstRow != 1 || area().lastRow != sheet::lastSheetRow) {
    refuse("Only whole columns can be fitted to their contents.");
  }
  session_->settle();
  inOffice("fit columns", [&] {
    session_->facts().requireUnprotected(place_.sheet, "changes of column widths");
    fitColumns(*session_, place_);
  });
}

Variant RangeObject::get(member::Id member, Arguments arguments) {
  switch (member) {
    case member::Item:
      return item(arguments);
    case member::Value:
      return value();
    case member::Cells:
      return arguments.empty() ? same(View::cells) : cell(arguments);
    case member::Rows:
      return isGiven(arguments, 0) ? row(arguments) : same(View::rows);
    case member::Columns:
      return isGiven(arguments, 0) ? column(arguments) : same(View::columns);
    case member::Count:
      return count();
    case member::Column:
      return area().firstColumn;
    case member::Offset:
      return offset(arguments);
    case member::Resize:
      return resize(arguments);
    case member::Interior:
      return makeInterior(session_, place_);
    case member::Font:
      return makeFont(session_, place_);
    case member::Borders:
      return makeBorder(session_, place_, wholeArgument(arguments, 0));
    case member::NumberFormat:
      return numberFormat();
    case member::Formula:
      return formula();
    case member::Text:
      return text();
    case member::EntireColumn:
      return ranged(1, area().firstColumn, sheet::lastSheetRow, area().columns(), View::columns);
    case member::Worksheet:
      return makeWorksheet(session_, place_.sheet);
    case member::Left:
    case member::Top:
    case member::Width:
    case member::Height:
      return length(member);
    case member::Select:
      session_->select(place_);
      return true;
    case member::Sort:
      sort(arguments);
      return true;
    case member::AutoFilter:
      // Criteria are not asked for by anything here, and none is better than a wrong one.
      atMost(arguments, 0);
      toggleAutoFilter(*session_, place_);
      return true;
    case member::AutoFit:
      autoFit();
      return true;
    case member::NewEnum:
      return Variant(sheet::ObjectRef(std::make_shared<RangeEnumerator>(session_, place_, view_)));
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
      const Variant target = item(arguments.first(arguments.size() - 1));
      static_cast<void>(target.object()->invoke(Access::put, member::Value, arguments.last(1)));
      return;
    }
    case member::NumberFormat:
      setNumberFormat(textArgument(arguments, arguments.size() - 1));
      return;
    default:
      raise(runtime::memberNotSupported);
  }
}

Variant RangeObject::invoke(Access access, member::Id member, Arguments arguments) {
  session_->requireOpen();
  if (access != Access::put) return get(member, arguments);
  put(member, arguments);
  return {};
}

}  // namespace mervane::calc
