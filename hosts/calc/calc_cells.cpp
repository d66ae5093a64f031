#include "hosts/calc/calc_cells.h"

#include <com/sun/star/table/XCell.hpp>
#include <utility>

#include "hosts/book/numeric_blocks.h"
#include "hosts/calc/session.h"
#include "hosts/calc/sheet_facts.h"
#include "hosts/charts/series_text.h"
#include "mervane/runtime_errors.h"

namespace mervane::calc {

namespace {

bool isNumber(const Variant& value) {
  return value.getIf<double>() != nullptr;
}

}  // namespace

CalcCells::CalcCells(std::shared_ptr<Session> session) : session_(std::move(session)) {}

std::int32_t CalcCells::position(std::string_view sheet) const {
  const std::optional<std::int32_t> found = session_->sheetNamed(sheet);
  if (!found) raise(runtime::subscriptOutOfRange);
  return *found;
}

std::optional<CellArea> CalcCells::usedArea(std::string_view sheet) {
  const std::int32_t owner = position(sheet);
  return inOffice("tell what a sheet holds", [&] { return session_->facts().used(owner); });
}

std::vector<std::string> CalcCells::sheetNames() const {
  std::vector<std::string> names;
  for (std::int32_t sheet = 0; sheet < session_->sheetCount(); ++sheet) names.push_back(session_->sheetName(sheet));
  return names;
}

std::string CalcCells::activeSheetName() const {
  return session_->sheetName(session_->activeSheet());
}

std::optional<CalcCells::Place> CalcCells::find(std::string_view reference) const {
  try {
    const SheetArea area = session_->resolve(reference, session_->activeSheet());
    return Place{session_->sheetName(area.sheet), area.area};
  } catch (const Failure&) {
    return std::nullopt;
  }
}

std::string CalcCells::cellText(std::string_view sheet, CellAddress at) {
  return mervane::charts::cellText(*session_, position(sheet), at);
}

std::optional<std::string> CalcCells::cellFormula(std::string_view sheet, CellAddress at) {
  const std::int32_t owner = position(sheet);
  return inOffice("tell a formula", [&]() -> std::optional<std::string> {
    for (const CellArea& area : session_->facts().formulas(owner)) {
      if (!area.contains(at)) continue;
      return fromOffice(session_->sheetAt(owner)->getCellByPosition(at.column - 1, at.row - 1)->getFormula());
    }
    return std::nullopt;
  });
}

Variant CalcCells::cellValue(std::string_view sheet, CellAddress at) {
  return session_->value(position(sheet), at);
}

std::vector<CellAddress> CalcCells::commentedCells(std::string_view, const CellArea&) {
  return {};
}

std::optional<CellArea> CalcCells::numericBlock(std::string_view sheet) {
  const std::int32_t owner = position(sheet);
  const auto used = usedArea(sheet);
  if (!used) return std::nullopt;
  hosts::NumericBlocks blocks;
  for (std::int32_t row = used->firstRow; row <= used->lastRow; ++row) {
    for (std::int32_t column = used->firstColumn; column <= used->lastColumn; ++column) {
      if (!isNumber(session_->value(owner, {row, column}))) continue;
      std::int32_t last = column;
      while (last < used->lastColumn && isNumber(session_->value(owner, {row, last + 1}))) ++last;
      blocks.addRun(row, column, last);
      column = last;
    }
  }
  return blocks.largest();
}

}  // namespace mervane::calc
