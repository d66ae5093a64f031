#include "guard/harms.h"

#include <algorithm>
#include <utility>

#include "guard/text_display.h"
#include "guard/words.h"

namespace mervane::guard {

namespace {

/// How a sentence begins that says what a piece of the run would do.
std::string actorOf(Piece piece) {
  switch (piece) {
    case Piece::sorting:
      return "sorting";
    case Piece::listing:
      return "the listing";
    case Piece::statistics:
      return "the statistics";
    case Piece::oldCharts:
    case Piece::newCharts:
      return "the charts";
    case Piece::filter:
      return "the filter";
  }
  return {};
}

/// Merged cells of which more than the first one, which alone holds a value, would be written.
bool coversWritten(const CellArea& merged, const CellArea& written) {
  const CellArea first{merged.firstRow, merged.firstColumn, merged.firstRow, merged.firstColumn};
  const bool rowsMeetOnlyFirst = written.lastRow == merged.firstRow || merged.rows() == 1;
  const bool columnsMeetOnlyFirst = written.lastColumn == merged.firstColumn || merged.columns() == 1;
  return !written.meets(first) || !rowsMeetOnlyFirst || !columnsMeetOnlyFirst;
}

class Search {
 public:
  Search(const Plan& plan, BookFacts& book) : plan_(plan), book_(book), inputs_(book.sheetFacts(plan.inputSheet)) {
    outputs_ = onOneSheet() ? inputs_ : book.sheetFacts(plan.outputSheet);
  }

  std::vector<Harm> all() {
    overOwnCells();
    if (plan_.sort) sorting();
    written(Piece::listing, plan_.outputSheet, outputs_, listing(plan_), listingWithHeading(plan_));
    for (const CellArea& area : statistics(plan_)) written(Piece::statistics, plan_.inputSheet, inputs_, area, area);
    if (!statistics(plan_).empty()) formatsOfStatistics();
    if (inputs_.protection.allowsCharts) {
      oldCharts();
    } else if (drawsCharts(plan_)) {
      protectedFrom(Piece::newCharts, plan_.inputSheet, "charts");
    }
    filter();
    std::stable_partition(harms_.begin(), harms_.end(), [](const Harm& harm) { return harm.isForbidden; });
    return std::move(harms_);
  }

 private:
  [[nodiscard]] bool onOneSheet() const { return plan_.inputSheet == plan_.outputSheet; }
  /// Whether the table is the one that is clustered.
  [[nodiscard]] bool isOwn(const Table& table, const std::string& sheet) const {
    return sheet == plan_.inputSheet && table.area.contains(plan_.inputs);
  }

  Harm& add(HarmKind kind, Piece piece, bool isForbidden, const std::string& sheet, const CellArea& area,
            std::string text) {
    return harms_.emplace_back(Harm{kind, piece, isForbidden, sheet, area, 0, std::move(text)});
  }
  void protectedFrom(Piece piece, const std::string& sheet, const std::string& what) {
    add(HarmKind::protection, piece, true, sheet, plan_.inputs,
        "the sheet " + quoted(sheet) + " is protected and does not allow " + what);
  }
  void locked(Piece piece, const std::string& sheet, const AreaFacts& cells) {
    if (!cells.locked) return;
    const CellAddress at = *cells.locked;
    add(HarmKind::protection, piece, true, sheet, {at.row, at.column, at.row, at.column},
        actorOf(piece) + " would write to " + placeOf(sheet, at) + ", which is locked on a protected sheet");
  }

  void overOwnCells() {
    if (!onOneSheet()) return;
    const CellArea written = listingWithHeading(plan_);
    if (written.meets(plan_.inputs)) {
      add(HarmKind::inputs, Piece::listing, true, plan_.inputSheet, plan_.inputs,
          "the listing at " + placeOf(plan_.outputSheet, written) + " would overwrite the inputs " +
              placeOf(plan_.inputSheet, plan_.inputs));
    }
    for (const CellArea& area : statistics(plan_)) {
      if (!area.meets(written)) continue;
      add(HarmKind::listing, Piece::listing, false, plan_.outputSheet, written,
          "the statistics at " + placeOf(plan_.inputSheet, area) + " would overwrite the listing at " +
              placeOf(plan_.outputSheet, written));
      return;
    }
  }

  void sorting() {
    const std::string& sheet = plan_.inputSheet;
    const CellArea rows = sortedRows(plan_);
    if (!inputs_.protection.allowsSorting) protectedFrom(Piece::sorting, sheet, "sorting");
    for (const PivotTable& table : inputs_.pivotTables) {
      if (!table.area.meets(rows)) continue;
      add(HarmKind::pivotTable, Piece::sorting, true, sheet, table.area,
          "sorting would move cells of the pivot table " + quoted(table.name) + " at " + placeOf(sheet, table.area));
    }
    for (const Table& table : inputs_.tables) {
      if (!table.area.meets(rows) || isOwn(table, sheet)) continue;
      add(HarmKind::table, Piece::sorting, true, sheet, table.area,
          "sorting would move cells of the table " + quoted(table.name) + " at " + placeOf(sheet, table.area));
    }
    const AreaFacts cells = book_.areaFacts(sheet, rows);
    for (const CellArea& merged : cells.merged) {
      add(HarmKind::merged, Piece::sorting, true, sheet, merged,
          "sorting cannot move the merged cells " + placeOf(sheet, merged));
    }
    for (const CellArea& array : cells.arrays) {
      add(HarmKind::array, Piece::sorting, true, sheet, array,
          "sorting would tear apart the array formula in " + placeOf(sheet, array));
    }
    comingApart(rows);
    borrowedColumn();
  }

  /// Rows that the sort would not move, and formulas that would mean other cells than before.
  void comingApart(const CellArea& rows) {
    const std::string& sheet = plan_.inputSheet;
    const SortingFacts facts = book_.sortingFacts(sheet, rows);
    if (facts.hiddenRow) {
      add(HarmKind::hidden, Piece::sorting, true, sheet, rows,
          "sorting cannot move row " + std::to_string(*facts.hiddenRow) + " of " + quoted(sheet) +
              ", which a filter or the user has hidden");
    }
    if (facts.moved.count > 0) {
      add(HarmKind::formulas, Piece::sorting, false, sheet, rows,
          "sorting moves formulas that name cells of other rows, which are other cells afterwards: " +
              formulasText(facts.moved));
    }
    if (facts.outside.count > 0) {
      add(HarmKind::formulas, Piece::sorting, false, sheet, rows,
          "sorting puts other rows where formulas from outside look: " + formulasText(facts.outside));
    }
  }

  /// Its contents come back as values.
  void borrowedColumn() {
    const std::string& sheet = plan_.inputSheet;
    const CellArea column = scratchColumn(plan_);
    const AreaFacts cells = book_.areaFacts(sheet, column);
    locked(Piece::sorting, sheet, cells);
    if (cells.unknownFormula) {
      add(HarmKind::formulas, Piece::sorting, true, sheet, column,
          "sorting needs the value of the formula in " + placeOf(sheet, *cells.unknownFormula) +
              ", which was never computed");
    }
    // Where the listing stands in the same cells, they are overwritten anyway.
    if (onOneSheet() && listing(plan_).contains(column)) return;
    if (cells.formula) {
      add(HarmKind::formulas, Piece::sorting, false, sheet, column,
          "sorting would turn formulas of " + placeOf(sheet, column) + " into their values, " +
              sheet::a1(*cells.formula) + " first");
    }
    if (cells.equalsText) {
      add(HarmKind::formulas, Piece::sorting, false, sheet, column,
          "sorting would write the texts of " + placeOf(sheet, column) + " anew, and " + sheet::a1(*cells.equalsText) +
              ", which begins with an equals sign, would become a formula");
    }
  }

  /// @param needed cells without which the run fails, among all that it writes
  void written(Piece piece, const std::string& sheet, const SheetFacts& facts, const CellArea& needed,
               const CellArea& written) {
    const std::string actor = actorOf(piece);
    for (const PivotTable& table : facts.pivotTables) {
      if (!table.area.meets(written)) continue;
      add(HarmKind::pivotTable, piece, true, sheet, table.area,
          actor + " would overwrite cells of the pivot table " + quoted(table.name) + " at " +
              placeOf(sheet, table.area));
    }
    for (const Table& table : facts.tables) {
      if (!table.area.meets(written)) continue;
      CellArea totals = table.area;
      totals.firstRow = totals.lastRow;
      const bool meetsTotals = table.hasTotals && totals.meets(written);
      if (isOwn(table, sheet) && !meetsTotals) continue;
      add(HarmKind::table, piece, true, sheet, table.area,
          actor + " would overwrite " + (meetsTotals ? "the totals" : "cells") + " of the table " + quoted(table.name) +
              " at " + placeOf(sheet, table.area));
    }
    const AreaFacts cells = book_.areaFacts(sheet, needed);
    locked(piece, sheet, cells);
    for (const CellArea& merged : cells.merged) {
      if (!coversWritten(merged, needed)) continue;
      add(HarmKind::merged, piece, true, sheet, merged,
          actor + " would write to cells that are merged into " + placeOf(sheet, merged));
    }
    for (const CellArea& array : cells.arrays) {
      add(HarmKind::array, piece, true, sheet, array,
          actor + " would overwrite a part of the array formula in " + placeOf(sheet, array));
    }
    const AreaFacts all = needed == written ? cells : book_.areaFacts(sheet, written);
    if (all.filledCount == 0) return;
    add(HarmKind::cells, piece, false, sheet, written, actor + " would overwrite " + cellsText(sheet, written, all))
        .count = all.filledCount;
  }

  void formatsOfStatistics() {
    if (!inputs_.protection.allowsFormats) protectedFrom(Piece::statistics, plan_.inputSheet, "changes of formats");
    if (!inputs_.protection.allowsColumnWidths) {
      protectedFrom(Piece::statistics, plan_.inputSheet, "changes of column widths");
    }
  }

  /// Charts with one of the two titles are those of an earlier run; one without a title is deleted along with them.
  void oldCharts() {
    for (const Drawing& drawing : inputs_.drawings) {
      if (!drawing.isChart || drawing.title) continue;
      add(HarmKind::chart, Piece::oldCharts, false, plan_.inputSheet, drawing.covers,
          "the chart without a title at " + placeOf(plan_.inputSheet, drawing.covers) + " would be deleted");
    }
  }

  /// The run looks whether the sheet of the inputs has a filter, and then switches the one at the listing's heading.
  void filter() {
    const bool hasFilter = inputs_.filter.has_value();
    if (plan_.outputs.row == 1 || plan_.autofilter == hasFilter || !outputs_.protection.allowsFilters) return;
    const CellAddress heading{plan_.outputs.row - 1, plan_.outputs.column};
    for (const Table& table : outputs_.tables) {
      if (!table.area.contains(heading)) continue;
      if (table.hasArrows) filterGoes(table.area);
      return;
    }
    if (!outputs_.filter || isOfAnEarlierRun(heading)) return;
    filterGoes(outputs_.filter->area);
  }
  void filterGoes(const CellArea& area) {
    add(HarmKind::filter, Piece::filter, false, plan_.outputSheet, area,
        "the filter over " + placeOf(plan_.outputSheet, area) + " would go, and the rows that it hides would be shown");
  }
  /// Whether the filter lies over a listing that stands where this one will stand.
  [[nodiscard]] bool isOfAnEarlierRun(CellAddress heading) const {
    if (!outputs_.filter->area.contains(heading)) return false;
    const AreaFacts cells =
        book_.areaFacts(plan_.outputSheet, {heading.row, heading.column, heading.row, heading.column});
    return !cells.filled.empty() && (cells.filled[0].text == "Clusters" || cells.filled[0].text == "Cluster 1");
  }

  const Plan& plan_;
  BookFacts& book_;
  SheetFacts inputs_;
  SheetFacts outputs_;
  std::vector<Harm> harms_;
};

}  // namespace

std::vector<Harm> harmsOf(const Plan& plan, BookFacts& book) {
  return Search(plan, book).all();
}

bool isForbidden(const std::vector<Harm>& harms) {
  return std::ranges::any_of(harms, [](const Harm& harm) { return harm.isForbidden; });
}

}  // namespace mervane::guard
