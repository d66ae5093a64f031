#include "hosts/workbook/sorting.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "hosts/workbook/auto_fit.h"
#include "hosts/workbook/case_fold.h"
#include "hosts/workbook/cell_attachments.h"
#include "hosts/workbook/formula_text.h"
#include "hosts/workbook/refuse.h"
#include "hosts/workbook/sheet.h"

namespace mervane::workbook {

namespace {

enum class Rank { number, text, boolean, error, empty };

struct Key {
  Rank rank = Rank::empty;
  double number = 0.0;
  std::string text;
};

Key keyOf(const Variant& value) {
  if (const double* number = value.getIf<double>()) return {Rank::number, *number, {}};
  if (const Date* date = value.getIf<Date>()) return {Rank::number, date->serial, {}};
  if (const std::string* text = value.getIf<std::string>()) return {Rank::text, 0.0, caseFolded(*text)};
  if (const bool* truth = value.getIf<bool>()) return {Rank::boolean, *truth ? 1.0 : 0.0, {}};
  if (value.getIf<ErrorValue>() != nullptr) return {Rank::error, 0.0, {}};
  return {};
}

int order(const Key& a, const Key& b) {
  if (a.rank != b.rank) return a.rank < b.rank ? -1 : 1;
  if (a.number != b.number) return a.number < b.number ? -1 : 1;
  return a.text.compare(b.text);
}

void requireSortable(Sheet& sheet, const CellArea& area) {
  sheet.requirePermission("sort", "sorting");
  const std::string rows = "The rows of " + a1(area) + " cannot be sorted: ";
  for (const CellArea& merged : sheet.mergedAreas()) {
    if (merged.meets(area)) {
      refuse(rows + "the cells " + a1(merged) + " are merged. Take the merge apart in the spreadsheet first.");
    }
  }
  for (const Formula& formula : sheet.cells().formulas) {
    if (!formula.area || !formula.area->meets(area)) continue;
    if (formula.isDataTable()) refuse(rows + a1(*formula.area) + " holds a what-if table.");
    if (formula.area->cells() > 1) refuse(rows + a1(*formula.area) + " holds an array formula.");
  }
  for (std::int32_t row = area.firstRow; row <= area.lastRow; ++row) {
    if (sheet.geometry().rowHeight(row) > 0.0) continue;
    refuse(rows + "row " + std::to_string(row) +
           " is hidden, by a filter or by hand. Show all rows in the spreadsheet first.");
  }
}

class RowMover {
 public:
  RowMover(Sheet& sheet, const CellArea& area, std::int32_t keyColumn)
      : sheet_(sheet), area_(area), keyColumn_(keyColumn) {}

  /// @param order the row that comes to each place, both counted from the first row of the area.
  void move(const std::vector<std::int32_t>& order) {
    CellStore& cells = sheet_.cells();
    for (const std::int32_t column : cells.columnsIn(area_)) moveColumn(column, order);
    cells.extras.merge(extras_);
  }

 private:
  static constexpr std::size_t noCell = SIZE_MAX;

  void moveColumn(std::int32_t column, const std::vector<std::int32_t>& order) {
    CellStore& cells = sheet_.cells();
    const std::vector<RowCell> taken = cells.takeColumn(column, area_.firstRow, area_.lastRow);
    positions_.assign(order.size(), noCell);
    for (std::size_t i = 0; i < taken.size(); ++i) {
      positions_[static_cast<std::size_t>(taken[i].row - area_.firstRow)] = i;
    }
    moved_.clear();
    for (std::size_t place = 0; place < order.size(); ++place) {
      const std::int32_t row = area_.firstRow + static_cast<std::int32_t>(place);
      const std::size_t position = positions_[static_cast<std::size_t>(order[place])];
      const RowCell* from = position == noCell ? nullptr : &taken[position];
      if (column == keyColumn_) {
        const RowCell* old = positions_[place] == noCell ? nullptr : &taken[positions_[place]];
        if (from != nullptr || old != nullptr) moved_.push_back({row, keyCell({row, column}, from, old)});
      } else if (from != nullptr) {
        moved_.push_back({row, from->cell});
        keepExtras(*from, column, row);
      }
      if (from != nullptr) adjust(*from, column, row);
    }
    cells.putColumn(column, moved_);
  }

  /// A cell of the key column: the value that comes there in the format that stands there.
  Cell keyCell(CellAddress at, const RowCell* from, const RowCell* old) {
    Cell cell;
    if (old != nullptr) {
      cell = old->cell;
    } else {
      cell.style = sheet_.styleOf(at);
    }
    cell.kind = from == nullptr ? CellKind::empty : from->cell.kind;
    cell.index = from == nullptr ? 0 : from->cell.index;
    cell.isPlainNumber = from != nullptr && from->cell.isPlainNumber;
    return cell;
  }

  void adjust(const RowCell& from, std::int32_t column, std::int32_t toRow) {
    if (from.cell.kind != CellKind::formula || from.row == toRow) return;
    Formula& formula = sheet_.cells().formulaOf(from.cell);
    formula.text = sortedFormula(formula.text, toRow - from.row, sheet_.name());
    if (formula.area) {
      // An array formula of a single cell names its own place.
      const std::string before = a1(*formula.area);
      formula.area = CellArea{toRow, column, toRow, column};
      const std::size_t at = formula.attributes.find("\"" + before + "\"");
      if (at != std::string::npos) formula.attributes.replace(at + 1, before.size(), a1(*formula.area));
    }
    sheet_.shared().formulasChanged = true;
  }

  void keepExtras(const RowCell& from, std::int32_t column, std::int32_t toRow) {
    if (!from.cell.hasExtras) return;
    auto node = sheet_.cells().extras.extract(CellStore::keyOf({from.row, column}));
    if (node.empty()) return;
    node.key() = CellStore::keyOf({toRow, column});
    extras_.insert(std::move(node));
  }

  Sheet& sheet_;
  CellArea area_;
  std::int32_t keyColumn_;
  std::vector<std::size_t> positions_;  ///< of the cell that each row has, among those taken out
  std::vector<RowCell> moved_;
  std::unordered_map<std::uint64_t, CellExtras> extras_;
};

}  // namespace

void sortRows(Sheet& sheet, const CellArea& area, std::int32_t keyColumn, bool descending) {
  requireSortable(sheet, area);
  std::vector<Key> keys;
  keys.reserve(static_cast<std::size_t>(area.rows()));
  for (std::int32_t row = area.firstRow; row <= area.lastRow; ++row)
    keys.push_back(keyOf(sheet.value({row, keyColumn})));

  std::vector<std::int32_t> places(keys.size());
  std::iota(places.begin(), places.end(), 0);
  std::stable_sort(places.begin(), places.end(), [&](std::int32_t a, std::int32_t b) {
    const Key& first = keys[static_cast<std::size_t>(a)];
    const Key& second = keys[static_cast<std::size_t>(b)];
    if (first.rank == Rank::empty || second.rank == Rank::empty) return order(first, second) < 0;
    return descending ? order(second, first) < 0 : order(first, second) < 0;
  });
  if (std::is_sorted(places.begin(), places.end())) return;

  sheet.separateFormulas();
  RowMover(sheet, area, keyColumn).move(places);
  moveHyperlinks(sheet, area, keyColumn, places);
  sheet.fitCache().forget();
  sheet.shared().valuesChanged = true;
  sheet.shared().notes.push_back("the rows of " + quotedSheetName(sheet.name()) + "!" + a1(area) +
                                 " change their order");
  sheet.markChanged();
}

}  // namespace mervane::workbook
