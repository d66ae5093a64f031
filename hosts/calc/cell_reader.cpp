#include "hosts/calc/cell_reader.h"

#include <algorithm>
#include <com/sun/star/beans/PropertyState.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/beans/XPropertyState.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/table/XCell.hpp>

#include "hosts/calc/cell_error.h"
#include "hosts/calc/format_buffer.h"
#include "hosts/calc/number_formats.h"
#include "hosts/calc/sheet_facts.h"

namespace mervane::calc {

namespace {

Variant withKind(const Variant& value, NumberFormats& formats, sal_Int32 key) {
  const double* number = value.getIf<double>();
  if (number == nullptr) return value;
  switch (formats.kindOf(key)) {
    case NumberFormats::Kind::date:
      return Date{*number + formats.daysBehind()};
    case NumberFormats::Kind::truth:
      return *number != 0.0;
    case NumberFormats::Kind::plain:
      break;
  }
  return value;
}

}  // namespace

bool CellReader::isWaiting(std::int32_t sheet, CellAddress at) const {
  const auto found = columns_.find(keyOf(sheet, at.column));
  if (found == columns_.end()) return false;
  const auto row = static_cast<std::size_t>(at.row) - 1;
  return row < found->second.states.size() && found->second.states[row] == State::waiting;
}

bool CellReader::isKnown(const Column& column, std::size_t row) const {
  if (row >= column.states.size() || column.states[row] == State::unknown) return false;
  return column.states[row] != State::formula || column.generations[row] == generation_;
}

std::optional<Variant> CellReader::value(std::int32_t sheet, CellAddress at, bool valuesWait) {
  Column& column = columns_[keyOf(sheet, at.column)];
  const auto row = static_cast<std::size_t>(at.row) - 1;
  if (!isKnown(column, row)) {
    const bool wasFormula = row < column.states.size() && column.states[row] == State::formula;
    column.rowsAhead = wasFormula ? 1 : std::min(column.rowsAhead * 2, mostRowsAhead);
    fetch(sheet, at, column);
  }
  if (!isKnown(column, row)) return Variant();
  if (column.states[row] == State::formula && valuesWait) return std::nullopt;
  return column.values[row];
}

void CellReader::markWaiting(std::int32_t sheet, CellAddress at, bool isNumber) {
  Column& column = columns_[keyOf(sheet, at.column)];
  const auto row = static_cast<std::size_t>(at.row) - 1;
  if (isNumber && row >= column.arePlain.size()) column.arePlain.resize(row + 1);
  if (row < column.arePlain.size()) column.arePlain[row] = isNumber;
  if (row >= column.states.size()) {
    column.states.resize(std::max(row + 1, std::min(column.states.size() * 2, row + mostRowsAhead)));
    column.values.resize(column.states.size());
    column.generations.resize(column.states.size());
  }
  column.states[row] = State::waiting;
}

void CellReader::sorted(std::int32_t sheet, const CellArea& area, std::int32_t keyColumn) {
  for (std::int32_t number = area.firstColumn; number <= area.lastColumn; ++number) {
    const CellArea cells{area.firstRow, number, area.lastRow, number};
    if (number != keyColumn || !arePlain(sheet, cells)) forgetPlainNumbers(sheet, cells);
  }
}

bool CellReader::arePlain(std::int32_t sheet, const CellArea& cells) const {
  const auto found = columns_.find(keyOf(sheet, cells.firstColumn));
  if (found == columns_.end()) return false;
  const std::vector<bool>& marks = found->second.arePlain;
  if (marks.size() < static_cast<std::size_t>(cells.lastRow)) return false;
  return std::all_of(marks.begin() + cells.firstRow - 1, marks.begin() + cells.lastRow, [](bool mark) { return mark; });
}

void CellReader::forgetPlainNumbers(std::int32_t sheet, const CellArea& area) {
  for (std::int32_t number = area.firstColumn; number <= area.lastColumn; ++number) {
    const auto found = columns_.find(keyOf(sheet, number));
    if (found == columns_.end()) continue;
    std::vector<bool>& marks = found->second.arePlain;
    for (auto row = static_cast<std::size_t>(area.firstRow) - 1;
         row < std::min(marks.size(), static_cast<std::size_t>(area.lastRow)); ++row) {
      marks[row] = false;
    }
  }
}

void CellReader::reset(std::int32_t sheet, const CellArea& area, bool waitingToo) {
  for (auto& [key, column] : columns_) {
    const auto number = static_cast<std::int32_t>(key & 0xFFFFFFFFU);
    if (static_cast<std::int32_t>(key >> 32) != sheet || number < area.firstColumn || number > area.lastColumn)
      continue;
    const std::size_t end = std::min(column.states.size(), static_cast<std::size_t>(area.lastRow));
    for (auto row = static_cast<std::size_t>(area.firstRow) - 1; row < end; ++row) {
      if (waitingToo || column.states[row] != State::waiting) column.states[row] = State::unknown;
    }
  }
}

void CellReader::fetch(std::int32_t sheet, CellAddress at, Column& column) {
  session_.formats().write();  // they decide what a number is
  SheetFacts& facts = session_.facts();
  const CellAddress end = facts.end(sheet);
  if (at.row > end.row || at.column > end.column) return;
  const CellArea area{at.row, at.column, std::min(at.row + column.rowsAhead - 1, end.row), at.column};
  const uno::Reference<css::table::XCellRange> range = session_.rangeOf({sheet, area});
  const uno::Reference<css::sheet::XCellRangeData> data(range, uno::UNO_QUERY_THROW);
  const uno::Sequence<uno::Sequence<uno::Any>> rows = data->getDataArray();
  const auto count = static_cast<std::size_t>(rows.getLength());

  Block block(count);
  std::vector<State> states(count, State::value);
  for (const CellArea& formulas : facts.formulas(sheet)) {
    if (!formulas.meets(area)) continue;
    const auto from = static_cast<std::size_t>(std::max(formulas.firstRow, area.firstRow) - area.firstRow);
    const auto to = static_cast<std::size_t>(std::min(formulas.lastRow, area.lastRow) - area.firstRow);
    std::fill(states.begin() + static_cast<std::ptrdiff_t>(from), states.begin() + static_cast<std::ptrdiff_t>(to) + 1,
              State::formula);
  }
  bool hasNumbers = false;
  bool hasBlanks = false;
  for (std::size_t i = 0; i < count; ++i) {
    const uno::Any& cell = rows[static_cast<sal_Int32>(i)][0];
    double number = 0.0;
    rtl::OUString text;
    if (cell >>= number) {
      block[i] = number;
      hasNumbers = true;
    } else if (cell >>= text) {
      if (text.isEmpty()) {
        hasBlanks = true;
      }
      block[i] = Variant(fromOffice(text));
    } else {
      block[i] = ErrorValue{errorCodeOf(range->getCellByPosition(0, static_cast<sal_Int32>(i))->getError())};
    }
  }
  if (hasBlanks) {
    // An empty cell comes as an empty text; a formula may really give one.
    const uno::Reference<css::sheet::XCellRangesQuery> query(range, uno::UNO_QUERY_THROW);
    for (const auto& empty : query->queryEmptyCells()->getRangeAddresses()) {
      for (sal_Int32 row = empty.StartRow; row <= empty.EndRow; ++row) {
        block[static_cast<std::size_t>(row + 1 - area.firstRow)] = Variant();
      }
    }
  }
  const auto isPlain = [&](std::size_t i) {
    const auto row = static_cast<std::size_t>(area.firstRow) - 1 + i;
    return row < column.arePlain.size() && column.arePlain[row];
  };
  if (hasNumbers) takeKinds(sheet, area, states, block);
  for (std::size_t i = 0; i < count; ++i) {
    double number = 0.0;
    if (isPlain(i) && (rows[static_cast<sal_Int32>(i)][0] >>= number)) block[i] = number;
  }

  const auto first = static_cast<std::size_t>(area.firstRow) - 1;
  if (column.states.size() < first + count) {
    column.states.resize(first + count);
    column.values.resize(first + count);
    column.generations.resize(first + count);
  }
  for (std::size_t i = 0; i < count; ++i) {
    if (column.states[first + i] == State::waiting) continue;
    column.states[first + i] = states[i];
    column.generations[first + i] = generation_;
    column.values[first + i] = std::move(block[i]);
  }
}

void CellReader::takeKinds(std::int32_t sheet, const CellArea& area, const std::vector<State>& states, Block& block) {
  // A formula's own format may come from what it computes, which only the cell itself tells.
  const auto range = session_.rangeOf({sheet, area});
  Block formulas(block.size());
  bool hasFormulas = false;
  for (std::size_t i = 0; i < block.size(); ++i) {
    if (states[i] != State::formula || block[i].getIf<double>() == nullptr) continue;
    const uno::Reference<css::beans::XPropertySet> cell(range->getCellByPosition(0, static_cast<sal_Int32>(i)),
                                                        uno::UNO_QUERY_THROW);
    sal_Int32 key = 0;
    cell->getPropertyValue("NumberFormat") >>= key;
    formulas[i] = withKind(block[i], session_.numberFormats(), key);
    hasFormulas = true;
  }
  takeConstantKinds(sheet, area, area.firstRow, block);
  if (!hasFormulas) return;
  for (std::size_t i = 0; i < block.size(); ++i) {
    if (!formulas[i].isEmpty()) block[i] = std::move(formulas[i]);
  }
}

void CellReader::takeConstantKinds(std::int32_t sheet, const CellArea& part, std::int32_t firstRow, Block& block) {
  const auto begin = block.begin() + (part.firstRow - firstRow);
  const auto end = begin + part.rows();
  if (std::none_of(begin, end, [](const Variant& value) { return value.getIf<double>() != nullptr; })) return;
  const auto range = session_.rangeOf({sheet, part});
  const uno::Reference<css::beans::XPropertyState> state(range, uno::UNO_QUERY_THROW);
  if (part.rows() > 1 && state->getPropertyState("NumberFormat") == css::beans::PropertyState_AMBIGUOUS_VALUE) {
    CellArea upper = part;
    CellArea lower = part;
    upper.lastRow = part.firstRow + part.rows() / 2 - 1;
    lower.firstRow = upper.lastRow + 1;
    takeConstantKinds(sheet, upper, firstRow, block);
    takeConstantKinds(sheet, lower, firstRow, block);
    return;
  }
  sal_Int32 key = 0;
  const uno::Reference<css::beans::XPropertySet> properties(range, uno::UNO_QUERY_THROW);
  properties->getPropertyValue("NumberFormat") >>= key;
  NumberFormats& formats = session_.numberFormats();
  if (formats.kindOf(key) == NumberFormats::Kind::plain) return;
  for (auto cell = begin; cell != end; ++cell) *cell = withKind(*cell, formats, key);
}

}  // namespace mervane::calc
