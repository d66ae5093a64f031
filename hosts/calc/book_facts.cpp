#include "hosts/calc/book_facts.h"

#include <algorithm>
#include <com/sun/star/awt/Point.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XDataPilotTable.hpp>
#include <com/sun/star/sheet/XDataPilotTablesSupplier.hpp>

#include "hosts/calc/auto_filter.h"
#include "hosts/calc/charts/calc_charts.h"
#include "hosts/calc/points.h"
#include "hosts/calc/sheet_facts.h"
#include "hosts/calc/sorting_facts.h"
#include "hosts/charts/series_text.h"
#include "mervane/runtime_errors.h"

namespace mervane::calc {

namespace {

CellArea areaOf(const css::table::CellRangeAddress& at) {
  return {at.StartRow + 1, at.StartColumn + 1, at.EndRow + 1, at.EndColumn + 1};
}

CellArea common(const CellArea& a, const CellArea& b) {
  return {std::max(a.firstRow, b.firstRow), std::max(a.firstColumn, b.firstColumn), std::min(a.lastRow, b.lastRow),
          std::min(a.lastColumn, b.lastColumn)};
}

/// Where cells begin on their sheet.
class Places {
 public:
  Places(const Session& session, std::int32_t sheet) : session_(session), sheet_(sheet) {}

  /// The cell at a point of the sheet, in points.
  [[nodiscard]] CellAddress cellAt(double left, double top) const {
    const std::int32_t x = toHundredths(left);
    const std::int32_t y = toHundredths(top);
    return {lastAt(sheet::lastSheetRow,
                   [&](std::int32_t row) {
                     return of({row, 1}).Y <= y;
                   }),
            lastAt(sheet::lastSheetColumn, [&](std::int32_t column) {
              return of({1, column}).X <= x;
            })};
  }

 private:
  [[nodiscard]] css::awt::Point of(CellAddress at) const {
    const uno::Reference<css::beans::XPropertySet> cell(
        session_.sheetAt(sheet_)->getCellByPosition(at.column - 1, at.row - 1), uno::UNO_QUERY_THROW);
    css::awt::Point place;
    cell->getPropertyValue("Position") >>= place;
    return place;
  }
  template <class Begins>
  [[nodiscard]] static std::int32_t lastAt(std::int32_t count, Begins begins) {
    std::int32_t low = 1;
    for (std::int32_t high = count; low < high;) {
      const std::int32_t middle = low + (high - low + 1) / 2;
      if (begins(middle)) {
        low = middle;
      } else {
        high = middle - 1;
      }
    }
    return low;
  }

  const Session& session_;
  std::int32_t sheet_;
};

std::vector<guard::Drawing> drawingsOf(Session& session, std::int32_t sheet) {
  const Places places(session, sheet);
  std::vector<guard::Drawing> drawings;
  for (const auto& item : session.charts().items(sheet)) {
    const mervane::charts::Box box = session.charts().boxOf(sheet, *item);
    const CellAddress from = places.cellAt(box.left, box.top);
    const CellAddress to = places.cellAt(box.left + box.width, box.top + box.height);
    guard::Drawing drawing{item->chart != nullptr, std::nullopt, {from.row, from.column, to.row, to.column}};
    if (item->chart != nullptr && item->chart->title) drawing.title = item->chart->title->text;
    drawings.push_back(std::move(drawing));
  }
  return drawings;
}

/// Adds the first cells of the area, as many as are told at most.
void addFirst(const CellArea& area, std::vector<CellAddress>& cells) {
  std::size_t left = guard::AreaFacts::mostFilled;
  for (std::int32_t row = area.firstRow; row <= area.lastRow; ++row) {
    for (std::int32_t column = area.firstColumn; column <= area.lastColumn; ++column) {
      if (left-- == 0) return;
      cells.push_back({row, column});
    }
  }
}

/// The first text that begins with an equals sign and is no formula.
std::optional<CellAddress> equalsTextIn(Session& session, const SheetArea& area) {
  const uno::Reference<css::sheet::XCellRangeData> range(session.rangeOf(area), uno::UNO_QUERY_THROW);
  CellAddress at{area.area.firstRow, area.area.firstColumn};
  for (const auto& row : range->getDataArray()) {
    at.column = area.area.firstColumn;
    for (const uno::Any& cell : row) {
      rtl::OUString text;
      if ((cell >>= text) && text.getLength() > 1 && text[0] == '=') {
        const CellArea alone{at.row, at.column, at.row, at.column};
        const std::vector<CellArea>& formulas = session.facts().formulas(area.sheet);
        if (std::ranges::none_of(formulas, [&](const CellArea& one) { return one.meets(alone); })) return at;
      }
      ++at.column;
    }
    ++at.row;
  }
  return std::nullopt;
}

}  // namespace

std::vector<guard::PivotTable> pivotTablesOf(const Session& session, std::int32_t sheet) {
  const uno::Reference<css::sheet::XDataPilotTablesSupplier> supplier(session.sheetAt(sheet), uno::UNO_QUERY_THROW);
  const auto all = supplier->getDataPilotTables();
  std::vector<guard::PivotTable> tables;
  for (const rtl::OUString& name : all->getElementNames()) {
    const uno::Reference<css::sheet::XDataPilotTable> table(all->getByName(name), uno::UNO_QUERY_THROW);
    tables.push_back({fromOffice(name), areaOf(table->getOutputRange())});
  }
  return tables;
}

std::int32_t CalcFacts::position(std::string_view sheet) const {
  const std::optional<std::int32_t> found = session_->sheetNamed(sheet);
  if (!found) raise(runtime::subscriptOutOfRange);
  return *found;
}

guard::SheetFacts CalcFacts::sheetFacts(std::string_view sheet) {
  const std::int32_t owner = position(sheet);
  session_->settle();
  return inOffice("tell what a sheet holds", [&] {
    guard::SheetFacts facts;
    facts.used = session_->facts().used(owner);
    facts.drawings = drawingsOf(*session_, owner);
    facts.tables = tablesOf(*session_, owner);
    facts.pivotTables = pivotTablesOf(*session_, owner);
    facts.filter = filterOf(*session_, owner);
    // A protected sheet of the office allows nothing of what a run does.
    if (session_->facts().isProtected(owner)) facts.protection = {false, false, false, false, false};
    return facts;
  });
}

guard::AreaFacts CalcFacts::areaFacts(std::string_view sheet, const CellArea& area) {
  const std::int32_t owner = position(sheet);
  session_->settle();
  return inOffice("tell what cells hold", [&] {
    guard::AreaFacts facts;
    SheetFacts& known = session_->facts();
    std::vector<CellAddress> filled;
    for (const CellArea& part : known.filledIn({owner, area})) {
      facts.filledCount += part.cells();
      addFirst(part, filled);
      const auto text = equalsTextIn(*session_, {owner, part});
      if (text && (!facts.equalsText || *text < *facts.equalsText)) facts.equalsText = text;
    }
    std::ranges::sort(filled);
    if (filled.size() > guard::AreaFacts::mostFilled) filled.resize(guard::AreaFacts::mostFilled);
    for (const CellAddress& at : filled) {
      facts.filled.push_back({at, mervane::charts::cellText(*session_, owner, at)});
    }
    facts.locked = known.firstLocked({owner, area});
    facts.merged = known.mergedIn({owner, area});
    facts.arrays = known.arraysIn({owner, area});
    for (const CellArea& formulas : known.formulas(owner)) {
      if (!formulas.meets(area)) continue;
      const CellArea part = common(formulas, area);
      const CellAddress at{part.firstRow, part.firstColumn};
      if (!facts.formula || at < *facts.formula) facts.formula = at;
    }
    return facts;
  });
}

guard::SortingFacts CalcFacts::sortingFacts(std::string_view sheet, const CellArea& rows) {
  const std::int32_t owner = position(sheet);
  session_->settle();
  return inOffice("look through the formulas", [&] { return calc::sortingFacts(*session_, {owner, rows}); });
}

}  // namespace mervane::calc
