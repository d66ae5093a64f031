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
#include "hosts/objects/range_values.h"
#include "hosts/objects/sort_order.h"

namespace mervane::calc {

namespace member = sheet::member;
using sheet::Access;

Variant RangeObject::make(const std::shared_ptr<Session>& session, const SheetArea& area, View view) {
  if (!sheet::isOnSheet(area.area)) raise(runtime::applicationDefined);
  return Variant(sheet::ObjectRef(std::make_shared<RangeObject>(session, area, view)));
}

Variant RangeObject::made(const hosts::RangeCells& cells) const {
  return Variant(
      sheet::ObjectRef(std::make_shared<RangeObject>(session_, SheetArea{place_.sheet, cells.area}, cells.view)));
}

Variant RangeObject::value() const {
  if (area().cells() == 1) return session_->value(place_.sheet, {area().firstRow, area().firstColumn});
  return hosts::tableOf(area(), [&](CellAddress at) { return session_->value(place_.sheet, at); });
}

void RangeObject::setValue(const Variant& value) {
  hosts::requireBounded(area());
  std::optional<hosts::AssignedArray> values;
  if (value.isArray()) values.emplace(value.array());
  for (std::int32_t row = 0; row < area().rows(); ++row) {
    for (std::int32_t column = 0; column < area().columns(); ++column) {
      const CellAddress at{area().firstRow + row, area().firstColumn + column};
      if (values) {
        session_->setValue(place_.sheet, at, values->at(row, column));
      } else {
        session_->setValue(place_.sheet, at, value);
      }
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
  const hosts::SortOrder order =
      hosts::sortOrder(arguments, place_, [this](const Variant& key) { return session_->areaOf(key); });
  session_->settle();
  inOffice([&] { return "sort " + session_->place(place_.sheet, area()); },
           [&] {
             session_->facts().requireUnprotected(place_.sheet, "sorting");
             session_->facts().requireMovable(place_);
             css::table::TableSortField field;
             field.Field = order.column - area().firstColumn;
             field.IsAscending = !order.descending;
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
  session_->sorted(place_.sheet, area(), order.column);
}

void RangeObject::autoFit() {
  hosts::requireWholeColumns(area());
  session_->settle();
  inOffice("fit columns", [&] {
    session_->facts().requireUnprotected(place_.sheet, "changes of column widths");
    fitColumns(*session_, place_);
  });
}

Variant RangeObject::get(member::Id member, Arguments arguments) {
  switch (member) {
    case member::Item:
      return made(cells().item(arguments));
    case member::Value:
      return value();
    case member::Cells:
      return made(arguments.empty() ? hosts::RangeCells{area(), View::cells} : cells().cell(arguments));
    case member::Rows:
      return made(hosts::isGiven(arguments, 0) ? cells().row(arguments) : hosts::RangeCells{area(), View::rows});
    case member::Columns:
      return made(hosts::isGiven(arguments, 0) ? cells().column(arguments) : hosts::RangeCells{area(), View::columns});
    case member::Count:
      return cells().shownCount();
    case member::Column:
      return area().firstColumn;
    case member::Offset:
      return made(cells().offset(arguments));
    case member::Resize:
      return made(cells().resize(arguments));
    case member::Interior:
      return makeInterior(session_, place_);
    case member::Font:
      return makeFont(session_, place_);
    case member::Borders:
      return makeBorder(session_, place_, hosts::wholeArgument(arguments, 0));
    case member::NumberFormat:
      return numberFormat();
    case member::Formula:
      return formula();
    case member::Text:
      return text();
    case member::EntireColumn:
      return made(cells().entireColumns());
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
      hosts::atMost(arguments, 0);
      toggleAutoFilter(*session_, place_);
      return true;
    case member::AutoFit:
      autoFit();
      return true;
    case member::NewEnum:
      return Variant(
          hosts::enumeratorOf(cells(), [session = session_, sheet = place_.sheet](const hosts::RangeCells& one) {
            return make(session, {sheet, one.area}, one.view);
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
      const Variant target = made(cells().item(arguments.first(arguments.size() - 1)));
      static_cast<void>(target.object()->invoke(Access::put, member::Value, arguments.last(1)));
      return;
    }
    case member::NumberFormat:
      setNumberFormat(hosts::textArgument(arguments, arguments.size() - 1));
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
