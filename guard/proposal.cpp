#include "guard/proposal.h"

#include <algorithm>

#include "guard/harms.h"
#include "guard/reference_limits.h"

namespace mervane::guard {

namespace {

constexpr std::int32_t freeColumns = 1;

/// The last column that anything on the sheet reaches into.
std::int32_t lastTakenColumn(const Plan& plan, BookFacts& book) {
  const SheetFacts facts = book.sheetFacts(plan.inputSheet);
  // The column right of the inputs takes the labels of the statistics.
  std::int32_t last = plan.inputs.lastColumn + 1;
  const auto reach = [&](const CellArea& area) { last = std::max(last, area.lastColumn); };
  if (facts.used) reach(*facts.used);
  for (const Drawing& drawing : facts.drawings) reach(drawing.covers);
  for (const Table& table : facts.tables) reach(table.area);
  for (const PivotTable& table : facts.pivotTables) reach(table.area);
  if (facts.filter) reach(facts.filter->area);
  // Merged cells and array formulas may be wider than the values that they hold.
  Plan beside = plan;
  beside.outputs.row = plan.inputs.firstRow;
  const CellArea rows = listingWithHeading(beside);
  for (;;) {
    const std::int32_t reached = last;
    const AreaFacts held =
        book.areaFacts(plan.inputSheet, {rows.firstRow, reached, rows.lastRow, reached + freeColumns + rows.columns()});
    for (const CellArea& area : held.merged) reach(area);
    for (const CellArea& area : held.arrays) reach(area);
    if (last == reached) return last;
  }
}

/// Leaves one thing out of the plan, or moves it, so that the harm is not done; false where that cannot be helped.
bool avoid(const Harm& harm, Plan& plan, BookFacts& book) {
  switch (harm.piece) {
    case Piece::oldCharts:
      return false;
    case Piece::sorting:
      plan.sort = false;
      return true;
    case Piece::filter:
      plan.autofilter = !plan.autofilter;
      return true;
    case Piece::newCharts:
      plan.charts = false;
      return true;
    case Piece::listing: {
      const auto free = proposedOutputs(plan, book);
      if (!free || (*free == plan.outputs && plan.outputSheet == plan.inputSheet)) return false;
      plan.outputs = *free;
      plan.outputSheet = plan.inputSheet;
      return true;
    }
    case Piece::statistics:
      // Those that no chart is drawn of go first.
      for (bool Plan::*block :
           {&Plan::averages, &Plan::minimums, &Plan::maximums, &Plan::weightedAverages, &Plan::weights}) {
        if (!(plan.*block)) continue;
        plan.*block = false;
        return true;
      }
      return false;
  }
  return false;
}

/// The facts of a book of which only the plan's outputs and switches change meanwhile: what a sort would tear apart
/// takes a look at every formula, and is the same each time.
class SameInputs final : public BookFacts {
 public:
  explicit SameInputs(BookFacts& book) : book_(book) {}

  SheetFacts sheetFacts(std::string_view sheet) override { return book_.sheetFacts(sheet); }
  AreaFacts areaFacts(std::string_view sheet, const CellArea& area) override { return book_.areaFacts(sheet, area); }
  SortingFacts sortingFacts(std::string_view sheet, const CellArea& rows) override {
    if (!sorting_) sorting_ = book_.sortingFacts(sheet, rows);
    return *sorting_;
  }

 private:
  BookFacts& book_;
  std::optional<SortingFacts> sorting_;
};

}  // namespace

std::optional<CellAddress> proposedOutputs(const Plan& plan, BookFacts& book) {
  const std::int32_t column = lastTakenColumn(plan, book) + freeColumns + 1;
  if (column > lastReferenceColumn) return std::nullopt;
  return CellAddress{plan.inputs.firstRow, column};
}

Plan sparingPlan(Plan plan, BookFacts& book, bool withConsent) {
  // Each piece of a plan can be left out once, and there are five blocks.
  constexpr int mostSteps = 12;
  SameInputs facts(book);
  for (int step = 0; step < mostSteps; ++step) {
    const std::vector<Harm> harms = harmsOf(plan, facts);
    const bool isBetter = std::ranges::any_of(
        harms, [&](const Harm& harm) { return (harm.isForbidden || !withConsent) && avoid(harm, plan, facts); });
    if (!isBetter) break;
  }
  return plan;
}

std::optional<Plan> harmlessPlan(const Plan& plan, BookFacts& book) {
  const Plan sparing = sparingPlan(plan, book);
  if (!harmsOf(sparing, book).empty()) return std::nullopt;
  return sparing;
}

}  // namespace mervane::guard
