#include "hosts/book/torn_formulas.h"

#include <utility>

#include "spreadsheet/cell_address.h"

namespace mervane::hosts {

namespace {

using Form = FormulaReference::Form;

bool isOnRow(const FormulaReference& one, std::int32_t row) {
  return one.form != Form::columns && one.topRow() == row && one.bottomRow() == row;
}

}  // namespace

TornFormulas::TornFormulas(const sheet::CellArea& rows, ReachesSheet reachesSheet)
    : rows_(rows), borrowed_(rows.lastColumn), reachesSheet_(std::move(reachesSheet)) {
  --rows_.lastColumn;
}

void TornFormulas::lookAt(std::string_view sheet, bool isOnSheet, sheet::CellAddress at, std::string_view formula) {
  const bool isOnRows = isOnSheet && at.row >= rows_.firstRow && at.row <= rows_.lastRow;
  if (isOnRows && at.column == borrowed_) return;
  const bool isMoved = isOnRows && at.column < borrowed_;
  const auto isHarmed = [&](const FormulaReference& one) {
    if (isMoved) return comesApart(one, at.row);
    if (!(one.sheet.empty() ? isOnSheet : reachesSheet_(one.sheet))) return false;
    // Beside the rows, a formula that looks at its own row goes on doing so.
    return namesSomeRows(one) && !(isOnRows && isOnRow(one, at.row));
  };
  for (const FormulaReference& one : referencesIn(formula)) {
    if (!isHarmed(one)) continue;
    (isMoved ? moved_ : outside_)
        .add({sheet::quotedSheetName(sheet) + "!" + sheet::a1(at), "=" + std::string(formula)});
    return;
  }
}

void TornFormulas::lookAtName(std::string_view name, std::string_view reference) {
  for (const FormulaReference& one : referencesIn(reference)) {
    // What is not fixed depends on where the name is used.
    const bool isFixed = one.form == Form::columns || (one.first.fixedRow && one.second.fixedRow);
    if (!isFixed || one.sheet.empty() || !reachesSheet_(one.sheet) || !namesSomeRows(one)) continue;
    outside_.add({"the name " + std::string(name), "=" + std::string(reference)});
    return;
  }
}

/// Whether a reference of a formula that moves means other cells afterwards. Those of the own row go with it.
bool TornFormulas::comesApart(const FormulaReference& one, std::int32_t row) const {
  const bool isOwnSheet =
      one.sheet.empty() || (one.sheet.find(':') == std::string_view::npos && reachesSheet_(one.sheet));
  if (!isOwnSheet || one.form == Form::columns) return false;
  if (one.first.fixedRow && one.second.fixedRow) return namesSomeRows(one);
  return !isOnRow(one, row) || one.first.fixedRow || one.second.fixedRow;
}

/// Whether it reaches some of the cells that move, but not all rows of them.
bool TornFormulas::namesSomeRows(const FormulaReference& one) const {
  const sheet::CellArea area{one.topRow(), one.leftColumn(), one.bottomRow(), one.rightColumn()};
  return area.meets(rows_) && (area.firstRow > rows_.firstRow || area.lastRow < rows_.lastRow);
}

}  // namespace mervane::hosts
