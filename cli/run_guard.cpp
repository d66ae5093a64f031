#include "cli/run_guard.h"

#include <algorithm>
#include <utility>

#include "cli/problem.h"
#include "cli/talk.h"
#include "cli/terminal.h"
#include "cli/text_display.h"
#include "cli/workbook_ranges.h"
#include "guard/cluster_count.h"
#include "guard/proposal.h"
#include "guard/refusal.h"

namespace mervane::cli {
namespace {

using guard::Harm;
using guard::Plan;
using hosts::OpenBook;

/// The switches of the dialog that a plan may leave out or change.
struct Switch {
  bool Plan::*planned;
  std::optional<bool> OutputSwitches::*entered;
  const char* flag;
};
constexpr Switch switches[] = {
    {&Plan::sort, &OutputSwitches::sort, "sort"},
    {&Plan::autofilter, &OutputSwitches::autofilter, "autofilter"},
    {&Plan::charts, &OutputSwitches::charts, "charts"},
    {&Plan::averages, &OutputSwitches::averages, "averages"},
    {&Plan::weightedAverages, &OutputSwitches::weightedAverages, "weighted-averages"},
    {&Plan::minimums, &OutputSwitches::minimums, "minimums"},
    {&Plan::maximums, &OutputSwitches::maximums, "maximums"},
    {&Plan::weights, &OutputSwitches::weights, "weights"},
};

OutputSwitches changedSwitches(const Plan& from, const Plan& to) {
  OutputSwitches changed;
  for (const Switch& one : switches) {
    if (from.*one.planned != to.*one.planned) changed.*one.entered = to.*one.planned;
  }
  return changed;
}

/// " --no-sort --no-averages"
std::string switchFlags(const Plan& from, const Plan& to) {
  std::string flags;
  for (const Switch& one : switches) {
    if (from.*one.planned == to.*one.planned) continue;
    flags += std::string(to.*one.planned ? " --" : " --no-") + one.flag;
  }
  return flags;
}

std::string outputsText(const Plan& plan) {
  const sheet::CellAddress at = plan.outputs;
  return referenceOf({plan.outputSheet, {at.row, at.column, at.row, at.column}});
}

/// A reference as it is to be typed: whole, however long the name of the sheet.
std::string typed(const std::string& reference) {
  return "\"" + printable(reference) + "\"";
}

/// The flags that make one plan of the other.
std::string flagsFor(const Plan& from, const Plan& to) {
  const bool moves = from.outputs != to.outputs || from.outputSheet != to.outputSheet;
  const std::string flags = (moves ? " --outputs " + typed(outputsText(to)) : std::string()) + switchFlags(from, to);
  return flags.empty() ? flags : flags.substr(1);
}

/// One harm a line.
std::string listed(const std::vector<Harm>& harms) {
  constexpr std::size_t most = 8;
  const std::string newLine = "\n         ";
  std::string text;
  for (std::size_t i = 0; i < std::min(most, harms.size()); ++i) text += newLine + printable(harms[i].text);
  return harms.size() > most ? text + newLine + "and " + decimal(static_cast<long long>(harms.size() - most)) + " more"
                             : text;
}

bool saysYes(const std::string& question) {
  const auto answer = terminal::askLine(question);
  return answer && (answer->starts_with('y') || answer->starts_with('Y'));
}

}  // namespace

DialogEntries RunGuard::look(const HeldEntries& held) {
  DialogEntries changes;
  if (held.inputs.empty()) changes.inputs = proposedInputsText();
  const std::string inputs = held.inputs.empty() ? changes.inputs : held.inputs;
  const auto place = book_.find(inputs);
  // What the component's own check is about to refuse needs no words here, and nobody's consent.
  const std::string& outputs = held.outputs.empty() ? inputs : held.outputs;
  if (!place || !guard::whyRefused(book_, {}, {}, inputs, outputs).empty()) return changes;
  // NB: the run looks for old charts and for a filter on whichever sheet is active.
  book_.activate(place->sheet);

  Plan plan = held.plan;
  plan.inputSheet = plan.outputSheet = place->sheet;
  plan.inputs = place->area;
  if (held.outputs.empty()) {
    const std::string flags = propose(plan);
    requireFittingClusterCount(plan);
    changes.outputs = outputsText(plan);
    changes.output = changedSwitches(held.plan, plan);
    const std::string inputsFlag = held.inputs.empty() ? "--inputs " + typed(inputs) + " " : std::string();
    agree(inputsFlag + flags, held.inputs.empty(), true);
  } else {
    if (held.inputs.empty()) agree("--inputs " + typed(inputs), true, false);
    const auto listing = book_.find(held.outputs);
    if (!listing) return changes;
    requireFittingClusterCount(plan);
    plan.outputSheet = listing->sheet;
    plan.outputs = {listing->area.firstRow, listing->area.firstColumn};
  }
  consent(plan);
  return changes;
}

std::string RunGuard::proposedInputsText() const {
  const auto place = proposedInputs(book_);
  if (place) return referenceOf(*place);
  throw Problem(ExitStatus::usage,
                "--inputs is missing, and the sheet " + cli::quoted(book_.activeSheetName()) +
                    " has no one block of numbers to propose",
                "Give --inputs with a reference such as Sheet1!A2:D151; mervane sheets lists what there is.");
}

std::string RunGuard::propose(Plan& plan) const {
  const auto free = guard::proposedOutputs(plan, book_);
  if (!free) {
    throw Problem(ExitStatus::usage, "--outputs is missing, and there is no free column to propose",
                  "Give --outputs with the first cell of the listing, such as Sheet1!F2.");
  }
  plan.outputs = *free;
  const Plan asWished = plan;
  plan = guard::sparingPlan(plan, book_, options_.book.overwrite);
  return "--outputs " + typed(outputsText(plan)) + switchFlags(asWished, plan);
}

void RunGuard::agree(const std::string& proposal, bool inputs, bool outputs) const {
  // A dry run does no harm.
  if (options_.book.yes || options_.book.dryRun) return talk_.note("taking " + proposal);
  talk_.note("proposed: " + proposal);
  if (saysYes("Go on with that? [y/N] ")) return;
  const bool both = inputs && outputs;
  throw Problem(
      ExitStatus::usage,
      both ? "--inputs and --outputs are missing" : std::string(inputs ? "--inputs" : "--outputs") + " is missing",
      std::string("Give ") + (both ? "them" : "it") + ", or --yes to take " + proposal + ".");
}

void RunGuard::requireFittingClusterCount(const Plan& plan) {
  const std::string trouble = guard::clusterCountTrouble(plan.clusters, plan.inputs.rows(), plan.charts);
  if (!trouble.empty()) throw Problem(ExitStatus::usage, "--clusters: " + trouble);
}

void RunGuard::consent(const Plan& plan) {
  harms_ = guard::harmsOf(plan, book_);
  if (guard::isForbidden(harms_)) refuse(plan);
  const bool isSaved = options_.book.inPlace || !options_.output.empty();
  if (harms_.empty() || options_.book.dryRun || !isSaved) return;
  for (const Harm& harm : harms_) {
    if (options_.book.overwrite || terminal::isTerminal(stdin)) talk_.warning(printable(harm.text));
  }
  if (options_.book.overwrite || saysYes("Let that go and run? [y/N] ")) return;
  refuse(plan);
}

void RunGuard::refuse(const Plan& plan) const {
  const bool isForbidden = guard::isForbidden(harms_);
  std::vector<Harm> told = harms_;
  // With leave to overwrite, only the others are in the way.
  if (options_.book.overwrite) std::erase_if(told, [](const Harm& harm) { return !harm.isForbidden; });
  const Plan sparing = guard::sparingPlan(plan, book_, options_.book.overwrite);
  const std::vector<Harm> left = guard::harmsOf(sparing, book_);
  const std::string instead = flagsFor(plan, sparing);
  if (isForbidden) {
    std::string advice = "Choose other cells, or change the sheet in the spreadsheet first.";
    if (!guard::isForbidden(left)) advice = "Do without it: " + instead + ".";
    throw Problem(ExitStatus::dataRefused, "the sheet does not allow that run:" + listed(told), advice);
  }
  const bool helps = left.empty() && !instead.empty();
  throw Problem(
      ExitStatus::dataRefused, "the run would remove or overwrite what is there:" + listed(told),
      helps ? "Give --overwrite to let it go, or do without: " + instead + "." : "Give --overwrite to let it go.");
}

}  // namespace mervane::cli
