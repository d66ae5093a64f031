#include "hosts/workbook/sorting.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "hosts/workbook/auto_fit.h"
#include "hosts/workbook/case_fold.h"
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
  for (const CellArea& merged : sheet.mergedAreas()) {
    if (merged.meets(area)) {
      refuse("The rows of " + a1(area) + " cannot be sorted: the cells " + a1(merged) +
             " are merged. Take the merge apart in the spreadsheet first.");
    }
  }
  for (const Formula& formula : sheet.cells().formulas) {
    if (formula.area && formula.area->cells() > 1 && formula.area->meets(area)) {
      refuse("The rows of " + a1(area) + " cannot be sorted: " + a1(*formula.area) + " holds an array formula.");
    }
  }
}

/// The cells of one row that lie inside the columns of the area.
std::pair<std::vector<Cell>::iterator, std::vector<Cell>::iterator> inside(Row& row, const CellArea& area) {
  const auto before = [](const Cell& cell, std::int32_t column) { return cell.column < column; };
  const auto first = std::lower_bound(row.cells.begin(), row.cells.end(), area.firstColumn, before);
  return {first, std::lower_bound(first, row.cells.end(), area.lastColumn + 1, before)};
}

class RowMover {
 public:
  RowMover(Sheet& sheet, const CellArea& area) : sheet_(sheet), area_(area) {}

  /// @param order the row that comes to each place, both counted from the first row of the area.
  void move(const std::vector<std::int32_t>& order) {
    takeOut();
    for (std::size_t place = 0; place < order.size(); ++place) {
      const auto from = static_cast<std::size_t>(order[place]);
      putIn(area_.firstRow + static_cast<std::int32_t>(place), area_.firstRow + order[place], starts_[from],
            starts_[from + 1]);
    }
    CellStore& cells = sheet_.cells();
    cells.extras.merge(extras_);
  }

 private:
  void takeOut() {
    CellStore& cells = sheet_.cells();
    for (std::int32_t row = area_.firstRow; row <= area_.lastRow; ++row) {
      starts_.push_back(moved_.size());
      if (cells.rowAt(row) == nullptr) continue;
      const auto [first, last] = inside(cells.makeRow(row), area_);
      moved_.insert(moved_.end(), first, last);
    }
    starts_.push_back(moved_.size());
  }

  void putIn(std::int32_t toRow, std::int32_t fromRow, std::size_t begin, std::size_t end) {
    CellStore& cells = sheet_.cells();
    if (begin == end && cells.rowAt(toRow) == nullptr) return;
    Row& row = cells.makeRow(toRow);
    const auto [first, last] = inside(row, area_);
    const auto from = moved_.begin() + static_cast<std::ptrdiff_t>(begin);
    const auto to = moved_.begin() + static_cast<std::ptrdiff_t>(end);
    if (toRow != fromRow) {
      for (auto cell = from; cell != to; ++cell) adjust(*cell, fromRow, toRow);
    } else {
      for (auto cell = from; cell != to; ++cell) keepExtras(*cell, fromRow, toRow);
    }
    if (end - begin == static_cast<std::size_t>(last - first)) {
      std::copy(from, to, first);
    } else {
      const auto place = row.cells.erase(first, last);
      row.cells.insert(place, from, to);
    }
  }

  void keepExtras(const Cell& cell, std::int32_t fromRow, std::int32_t toRow) {
    if (!cell.hasExtras) return;
    auto node = sheet_.cells().extras.extract(CellStore::keyOf({fromRow, cell.column}));
    if (node.empty()) return;
    node.key() = CellStore::keyOf({toRow, cell.column});
    extras_.insert(std::move(node));
  }

  void adjust(const Cell& cell, std::int32_t fromRow, std::int32_t toRow) {
    keepExtras(cell, fromRow, toRow);
    if (cell.kind != CellKind::formula) return;
    Formula& formula = sheet_.cells().formulas[cell.index];
    formula.text = rowMovedFormula(formula.text, fromRow, toRow);
    if (formula.area) {
      // An array formula of a single cell names its own place.
      const std::string before = a1(*formula.area);
      formula.area = CellArea{toRow, cell.column, toRow, cell.column};
      const std::size_t at = formula.attributes.find("\"" + before + "\"");
      if (at != std::string::npos) formula.attributes.replace(at + 1, before.size(), a1(*formula.area));
    }
    sheet_.shared().formulasChanged = true;
  }

  Sheet& sheet_;
  CellArea area_;
  std::vector<Cell> moved_;
  std::vector<std::size_t> starts_;
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
  RowMover(sheet, area).move(places);
  sheet.fitCache().forget();
  sheet.shared().valuesChanged = true;
  sheet.shared().notes.push_back("the rows of " + quotedSheetName(sheet.name()) + "!" + a1(area) +
                                 " change their order");
  sheet.markChanged();
}

}  // namespace mervane::workbook
