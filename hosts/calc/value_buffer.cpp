#include "hosts/calc/value_buffer.h"

#include <algorithm>
#include <cmath>
#include <com/sun/star/beans/PropertyState.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/beans/XPropertyState.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XSheetOperation.hpp>
#include <com/sun/star/text/XTextRange.hpp>
#include <utility>

#include "hosts/calc/cell_error.h"
#include "hosts/calc/number_formats.h"
#include "hosts/calc/sheet_facts.h"
#include "mervane/runtime_errors.h"

namespace mervane::calc {

namespace {

constexpr std::size_t longestText = 32767;
constexpr std::size_t longestFormula = 8192;
constexpr std::int32_t errorDivision = 2007;
constexpr std::int32_t errorNumber = 2036;

OfficeValue number(double value) {
  if (std::isfinite(value)) return {OfficeValue::Kind::plain, uno::Any(value == 0.0 ? 0.0 : value)};
  const std::string_view formula = errorFormula(std::isnan(value) ? errorNumber : errorDivision);
  return {OfficeValue::Kind::formula, uno::Any(toOffice(formula))};
}

OfficeValue text(const std::string& value, const std::string& place) {
  const bool isFormula = value.size() > 1 && value.front() == '=';
  rtl::OUString units = toOffice(value);
  // Lengths count as the application counts them, in UTF-16 units.
  if (static_cast<std::size_t>(units.getLength()) > (value.starts_with('=') ? longestFormula : longestText)) {
    refuse("The text for " + place + " is longer than a cell can hold.");
  }
  if (isFormula) return {OfficeValue::Kind::formula, uno::Any(units)};
  // The office takes an empty text for no contents; a formula gives one that stays.
  if (units.isEmpty()) return {OfficeValue::Kind::formula, uno::Any(rtl::OUString("=\"\""))};
  return {OfficeValue::Kind::plain, uno::Any(units)};
}

}  // namespace

OfficeValue officeValue(const Variant& value, const std::string& place) {
  switch (value.kind()) {
    case Variant::Kind::empty:
    case Variant::Kind::null:
    case Variant::Kind::missing:
      return {OfficeValue::Kind::empty, {}};
    case Variant::Kind::boolean:
      return {OfficeValue::Kind::truth, uno::Any(*value.getIf<bool>() ? 1.0 : 0.0)};
    case Variant::Kind::int16:
      return number(*value.getIf<std::int16_t>());
    case Variant::Kind::int32:
      return number(*value.getIf<std::int32_t>());
    case Variant::Kind::single:
      return number(static_cast<double>(*value.getIf<float>()));
    case Variant::Kind::real:
      return number(*value.getIf<double>());
    case Variant::Kind::date:
      return {OfficeValue::Kind::date, uno::Any(value.getIf<Date>()->serial)};
    case Variant::Kind::text:
      return text(*value.getIf<std::string>(), place);
    case Variant::Kind::error:
      return {OfficeValue::Kind::formula, uno::Any(toOffice(errorFormula(value.getIf<ErrorValue>()->code)))};
    case Variant::Kind::array:
    case Variant::Kind::object:
      break;
  }
  raise(runtime::typeMismatch);
}

void ValueBuffer::add(std::int32_t sheet, CellAddress at, const uno::Any& value) {
  columns_[{sheet, at.column}].push_back({at.row, value});
}

std::vector<SheetArea> ValueBuffer::writeAll() {
  std::vector<SheetArea> written;
  const auto columns = std::exchange(columns_, {});
  for (auto [place, entries] : columns) writeColumn(place.first, place.second, entries, written);
  return written;
}

void ValueBuffer::writeColumn(std::int32_t sheet, std::int32_t column, std::vector<Entry>& entries,
                              std::vector<SheetArea>& written) {
  const auto byRow = [](const Entry& a, const Entry& b) { return a.row < b.row; };
  if (!std::is_sorted(entries.begin(), entries.end(), byRow)) std::stable_sort(entries.begin(), entries.end(), byRow);
  for (auto first = entries.begin(); first != entries.end();) {
    const std::int32_t firstRow = first->row;
    std::vector<uno::Any> values;
    const auto rowsSoFar = [&] { return static_cast<std::int32_t>(values.size()); };
    auto next = first;
    while (next != entries.end() && next->row <= firstRow + rowsSoFar()) {
      // NB: of several values for one cell the last one stays.
      auto last = next;
      while (last + 1 != entries.end() && (last + 1)->row == next->row) ++last;
      if (!values.empty() && values.front().hasValue() != last->value.hasValue()) break;
      values.push_back(last->value);
      next = last + 1;
    }
    const SheetArea place{sheet, {firstRow, column, firstRow + rowsSoFar() - 1, column}};
    written.push_back(place);
    try {
      inOffice([&] { return "write into " + session_.place(sheet, place.area); }, [&] { writeStretch(place, values); });
    } catch (const Failure& failure) {
      if (!failure_) failure_ = failure;
    }
    first = next;
  }
}

void ValueBuffer::writeStretch(const SheetArea& place, const std::vector<uno::Any>& values) {
  const auto cells = session_.rangeOf(place);
  if (!values.front().hasValue()) {
    using namespace css::sheet;  // NOLINT(google-build-using-namespace): the flags alone
    // Notes and formats stay.
    uno::Reference<XSheetOperation>(cells, uno::UNO_QUERY_THROW)
        ->clearContents(CellFlags::VALUE | CellFlags::DATETIME | CellFlags::STRING | CellFlags::FORMULA);
    return;
  }
  // What is written as a block takes the notes of its cells away, so those are written one by one.
  const std::vector<std::int32_t> noted = session_.facts().notedRows(place);
  std::size_t at = 0;
  const auto writeUpTo = [&](std::int32_t row) {
    const std::int32_t first = place.area.firstRow + static_cast<std::int32_t>(at);
    if (row > first)
      writeBlock({place.sheet, {first, place.area.firstColumn, row - 1, place.area.firstColumn}}, &values[at]);
    at = static_cast<std::size_t>(row - place.area.firstRow);
  };
  for (const std::int32_t row : noted) {
    writeUpTo(row);
    writeOne(cells->getCellByPosition(0, row - place.area.firstRow), values[at++]);
  }
  writeUpTo(place.area.lastRow + 1);
  dropTruthFormats(place);
}

void ValueBuffer::writeBlock(const SheetArea& place, const uno::Any* values) {
  uno::Sequence<uno::Sequence<uno::Any>> rows(place.area.rows());
  for (auto* row = rows.getArray(); row != rows.getArray() + rows.getLength(); ++row) {
    *row = uno::Sequence<uno::Any>(values++, 1);
  }
  uno::Reference<css::sheet::XCellRangeData>(session_.rangeOf(place), uno::UNO_QUERY_THROW)->setDataArray(rows);
}

void ValueBuffer::writeOne(const uno::Reference<css::table::XCell>& cell, const uno::Any& value) {
  double number = 0.0;
  if (value >>= number) return cell->setValue(number);
  rtl::OUString text;
  value >>= text;
  uno::Reference<css::text::XTextRange>(cell, uno::UNO_QUERY_THROW)->setString(text);
}

/// A truth value is a number in a format of its own here; a plain number that comes into its cell is none.
void ValueBuffer::dropTruthFormats(const SheetArea& area) {
  const auto range = session_.rangeOf(area);
  const uno::Reference<css::beans::XPropertyState> state(range, uno::UNO_QUERY_THROW);
  switch (state->getPropertyState("NumberFormat")) {
    case css::beans::PropertyState_DEFAULT_VALUE:
      return;
    case css::beans::PropertyState_DIRECT_VALUE: {
      const uno::Reference<css::beans::XPropertySet> properties(range, uno::UNO_QUERY_THROW);
      sal_Int32 key = 0;
      properties->getPropertyValue("NumberFormat") >>= key;
      if (session_.numberFormats().kindOf(key) == NumberFormats::Kind::truth)
        state->setPropertyToDefault("NumberFormat");
      return;
    }
    default:
      break;
  }
  if (area.area.rows() == 1) return;
  SheetArea upper = area;
  SheetArea lower = area;
  upper.area.lastRow = area.area.firstRow + area.area.rows() / 2 - 1;
  lower.area.firstRow = upper.area.lastRow + 1;
  dropTruthFormats(upper);
  dropTruthFormats(lower);
}

void ValueBuffer::raisePending() {
  if (const std::optional<Failure> failure = std::exchange(failure_, std::nullopt)) throw Failure(*failure);
}

}  // namespace mervane::calc
