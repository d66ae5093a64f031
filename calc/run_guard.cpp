#include "calc/run_guard.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "calc/texts.h"
#include "guard/harms.h"
#include "guard/proposal.h"
#include "guard/refusal.h"
#include "guard/text_display.h"
#include "mervane/convert.h"
#include "support/globals.h"

namespace mervane::addin {

namespace {

using guard::BookCells;
using guard::Harm;
using guard::Plan;
using platform::OptionItems;
using sheet::CellAddress;
using sheet::CellArea;

/// The check boxes of the dialog that say what is printed and drawn.
struct Switch {
  bool Plan::*planned;
  const char* key;
};
constexpr Switch switches[] = {
    {&Plan::sort, "SORTCLUSTERS"},      {&Plan::autofilter, "AUTOFILTER"},
    {&Plan::charts, "DRAWCHARTS"},      {&Plan::averages, "AVERAGES"},
    {&Plan::minimums, "MINIMUMS"},      {&Plan::maximums, "MAXIMUMS"},
    {&Plan::weights, "CLUSTERWEIGHTS"}, {&Plan::weightedAverages, "WEIGHTEDAVERAGES"},
};

std::string textOf(const OptionItems& options, const char* key) {
  return toText(options.Item(key).Value, globals::locale());
}

/// Whether the first column holds one number throughout, which is no data to the component. All cells are numbers.
bool isOneValue(BookCells& cells, const BookCells::Place& place) {
  const auto number = [&](std::int32_t row) {
    return toDouble(cells.cellValueOrEmpty(place.sheet, {row, place.area.firstColumn}), globals::locale());
  };
  const double first = number(place.area.firstRow);
  for (std::int32_t row = place.area.firstRow + 1; row <= place.area.lastRow; ++row) {
    if (number(row) != first) return false;
  }
  return true;
}

/// Nothing where the component itself is about to refuse the run.
std::optional<Plan> planOf(const OptionItems& options, BookCells& cells, const ActivateSheet& activate) {
  const std::string inputsText = textOf(options, "INPUTS");
  const std::string outputsText = textOf(options, "OUTPUTS");
  const auto inputs = cells.find(inputsText);
  if (!inputs) return std::nullopt;
  activate(inputs->sheet);
  if (!guard::whyRefused(cells, {}, {}, inputsText, outputsText).empty()) return std::nullopt;
  const auto outputs = cells.find(outputsText);
  if (!outputs || isOneValue(cells, *inputs)) return std::nullopt;
  Plan plan;
  plan.inputSheet = inputs->sheet;
  plan.inputs = inputs->area;
  plan.outputSheet = outputs->sheet;
  plan.outputs = {outputs->area.firstRow, outputs->area.firstColumn};
  plan.clusters = toInt32(options.Item("CLUSTERS").Value, globals::locale());
  plan.oneColumn = options.Item("SPLITONE").Checked;
  for (const Switch& one : switches) plan.*one.planned = options.Item(one.key).Checked;
  return plan;
}

/// What to change in the dialog so that the run harms nothing; empty where nothing helps, or where little of the run
/// would be left, as over the results of an earlier one.
std::string insteadOf(const OptionItems& options, const Plan& plan, guard::BookFacts& facts) {
  const auto harmless = guard::harmlessPlan(plan, facts);
  if (!harmless) return {};
  constexpr int mostChanges = 5;
  int changes = 0;
  std::string list;
  const auto add = [&](const std::string& change) {
    list += (list.empty() ? "" : ", ") + change;
    ++changes;
  };
  if (harmless->outputs != plan.outputs || harmless->outputSheet != plan.outputSheet) {
    const CellAddress at = harmless->outputs;
    add(said(text::withOutputs, {guard::referenceOf({harmless->outputSheet, {at.row, at.column, at.row, at.column}})}));
  }
  for (const Switch& one : switches) {
    if (plan.*one.planned == (*harmless).*one.planned) continue;
    add(said((*harmless).*one.planned ? text::withSwitch : text::withoutSwitch,
             {guard::quoted(options.Item(one.key).Caption)}));
  }
  return changes > mostChanges ? std::string() : list;
}

std::string listed(const std::vector<Harm>& harms, bool forbidden) {
  std::string text;
  for (const Harm& harm : harms) {
    if (harm.isForbidden == forbidden) text += "\n- " + guard::printable(harm.text);
  }
  return text;
}

/// The columns right of the inputs that hold something in their rows: sorting leaves them where they are.
std::string tornApart(const Plan& plan, guard::BookFacts& facts) {
  if (!plan.sort) return {};
  const auto used = facts.sheetFacts(plan.inputSheet).used;
  const CellArea listing = guard::listing(plan);
  std::string columns;
  for (std::int32_t column = plan.inputs.lastColumn + 1; used && column <= used->lastColumn; ++column) {
    const bool isListing =
        plan.inputSheet == plan.outputSheet && column >= listing.firstColumn && column <= listing.lastColumn;
    const CellArea beside{plan.inputs.firstRow, column, plan.inputs.lastRow, column};
    if (isListing || facts.areaFacts(plan.inputSheet, beside).filledCount == 0) continue;
    columns += (columns.empty() ? "" : ", ") + sheet::columnLetters(column);
  }
  if (columns.empty()) return {};
  const bool isOne = columns.find(',') == std::string::npos;
  return "\n- " + said(isOne ? text::tornColumn : text::tornColumns, {columns});
}

}  // namespace

Objections objectionsTo(const OptionItems& options, BookCells& cells, guard::BookFacts& facts,
                        const ActivateSheet& activate) {
  const auto plan = planOf(options, cells, activate);
  if (!plan) return {};
  const std::vector<Harm> harms = guard::harmsOf(*plan, facts);
  Objections objections;
  if (guard::isForbidden(harms)) {
    const std::string instead = insteadOf(options, *plan, facts);
    objections.refusal = said(text::notAllowed) + listed(harms, true) + "\n\n" +
                         (instead.empty() ? said(text::chooseOthers) : said(text::wouldGo, {instead}));
    return objections;
  }
  const std::string goOn = "\n\n" + said(text::goOn);
  const std::string torn = tornApart(*plan, facts);
  if (!harms.empty()) {
    const std::string instead = insteadOf(options, *plan, facts);
    objections.question = said(text::wouldRemove) + listed(harms, false) + torn +
                          (instead.empty() ? "" : "\n\n" + said(text::wouldHarmNothing, {instead})) + goOn;
  }
  if (!torn.empty()) {
    objections.tornApart = said(text::wouldTear) + torn + "\n\n" +
                           said(text::wouldNotTear, {guard::quoted(options.Item("SORTCLUSTERS").Caption)}) + goOn;
  }
  return objections;
}

}  // namespace mervane::addin
