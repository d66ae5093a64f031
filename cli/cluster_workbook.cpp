#include <memory>
#include <utility>

#include "checks/refusal.h"
#include "cli/commands.h"
#include "cli/dry_run.h"
#include "cli/outcome.h"
#include "cli/output_file.h"
#include "cli/problem.h"
#include "cli/target_file.h"
#include "cli/terminal.h"
#include "cli/text_display.h"
#include "cli/workbook_file.h"
#include "cli/workbook_ranges.h"
#include "cli/workbook_rows.h"
#include "cli/workbook_session.h"
#include "dialog/remembered_options.h"
#include "mervane/convert.h"
#include "support/globals.h"

namespace mervane::cli {
namespace {

using hosts::OpenBook;

/// Whether the rows themselves are wanted on standard output.
bool wantsRows(const ClusterOptions& options) {
  return options.format.has_value() && !options.book.dryRun;
}

std::string targetOf(const ClusterOptions& options) {
  return options.book.inPlace ? options.input : options.output;
}

/// The spreadsheet opens no file whose name tells of another kind than its contents have.
void checkOutputName(const ClusterOptions& options) {
  if (isForCalc(options.input, options.book.host)) {
    if (options.output.empty() || isOfficeOutput(options.output)) return;
    throw Problem(
        ExitStatus::usage, "-o " + printable(options.output) + ": the result is a workbook",
        "Let the name end in .ods, .fods, .xlsx, .xlsm or .xls; with --format the rows go to standard output.");
  }
  const std::string ending = nameEndsIn(options.input, ".xlsm") ? ".xlsm" : ".xlsx";
  if (options.output.empty() || nameEndsIn(options.output, ending)) return;
  throw Problem(
      ExitStatus::usage,
      "-o " + printable(options.output) + ": the result is a workbook in " + ending + " form, as its source is",
      "Let the name end in " + ending + "; with --format the rows go to standard output.");
}

void checkUsage(const ClusterOptions& options) {
  const WorkbookOptions& book = options.book;
  const auto misuse = [](const std::string& message, const std::string& advice) {
    throw Problem(ExitStatus::usage, message, advice);
  };
  if (!options.dataFileFlag.empty()) {
    misuse(options.dataFileFlag + " is for data files, and " + printable(options.input) + " is a workbook",
           "Name the range with --inputs; mervane sheets lists what there is.");
  }
  if (book.inPlace && !options.output.empty()) misuse("-o and --in-place exclude each other", "Give one of them.");
  if (options.output == "-") misuse("-o -: a workbook is not written to standard output", "Name a file.");
  checkOutputName(options);
  if (options.output.empty() && !book.inPlace && !book.dryRun && !options.format) {
    misuse("there is nowhere to write to, and " + printable(options.input) + " is not touched without leave",
           "Give -o FILE for a new file, --in-place for this one, or --dry-run to see what would be written.");
  }
}

void checkPaths(const ClusterOptions& options) {
  const std::string target = targetOf(options);
  if (!options.trace.empty()) {
    if (options.trace == "-" && (options.book.dryRun || options.format)) {
      throw Problem(ExitStatus::usage, "--trace -: standard output is taken already", "Name a file for the trace.");
    }
    if (isSameFile(options.trace, options.input) || (!target.empty() && isSameFile(options.trace, target))) {
      throw Problem(ExitStatus::usage, "--trace names a workbook", "Name another file for the trace.");
    }
    checkOutput(options.trace);
  }
  checkLogs(options.run.logs);
  if (options.book.dryRun) return;
  if (!target.empty()) checkOutput(target);
  if (!options.book.backupSuffix.empty()) checkOutput(SafetyCopy::freeName(target, options.book.backupSuffix));
}

std::string rememberedText(const char* key) {
  for (const dialog::RememberedOption& option : dialog::rememberedOptions()) {
    if (option.key == key && option.value) return toText(*option.value, globals::locale());
  }
  return {};
}

/// The references that the user left out, proposed from what stands on the sheet.
class Proposal {
 public:
  Proposal(const ClusterOptions& options, OpenBook& book) : options_(options), book_(book) {}

  void complete(DialogEntries& entries, Talk& talk) {
    const bool remembered = options_.book.remembered;
    needsInputs_ = entries.inputs.empty() && (!remembered || rememberedText("INPUTS").empty());
    needsOutputs_ = entries.outputs.empty() && (!remembered || rememberedText("OUTPUTS").empty());
    if (!needsInputs_ && !needsOutputs_) return;
    if (needsInputs_) entries.inputs = inputs();
    if (needsOutputs_) {
      const std::string known = entries.inputs.empty() ? rememberedText("INPUTS") : entries.inputs;
      const auto place = book_.find(known);
      if (!place) return;  // The component's own check tells what is wrong with the inputs.
      entries.outputs = outputs(*place);
    }
    agree(entries, talk);
  }

 private:
  std::string inputs() {
    const auto place = proposedInputs(book_);
    if (place) return referenceOf(*place);
    throw Problem(ExitStatus::usage,
                  "--inputs is missing, and the sheet " + cli::quoted(book_.activeSheetName()) +
                      " has no one block of numbers to propose",
                  "Give --inputs with a reference such as Sheet1!A2:D151; mervane sheets lists what there is.");
  }
  std::string outputs(const OpenBook::Place& place) {
    const auto free = proposedOutputs(book_, place);
    if (free) return referenceOf(*free);
    throw Problem(ExitStatus::usage, "--outputs is missing, and there is no free column to propose",
                  "Give --outputs with the first cell of the listing, such as Sheet1!F2.");
  }
  void agree(const DialogEntries& entries, Talk& talk) const {
    std::string proposal = needsInputs_ ? "--inputs " + cli::quoted(entries.inputs) : std::string();
    if (needsOutputs_) proposal += (proposal.empty() ? "--outputs " : " --outputs ") + cli::quoted(entries.outputs);
    // A dry run does no harm.
    if (options_.book.yes || options_.book.dryRun) return talk.note("taking " + proposal);
    talk.note("proposed: " + proposal);
    const auto answer = terminal::askLine("Go on with that? [y/N] ");
    if (answer && (answer->starts_with('y') || answer->starts_with('Y'))) return;
    const bool both = needsInputs_ && needsOutputs_;
    throw Problem(ExitStatus::usage,
                  both ? "--inputs and --outputs are missing"
                       : std::string(needsInputs_ ? "--inputs" : "--outputs") + " is missing",
                  std::string("Give ") + (both ? "them" : "it") + ", or --yes to take " + proposal + ".");
  }

  const ClusterOptions& options_;
  OpenBook& book_;
  bool needsInputs_ = false;
  bool needsOutputs_ = false;
};

/// The columns of the listing; an area of no sheet where the reference is none.
std::optional<sheet::CellArea> listingArea(OpenBook& book, const OpenBook::Place& inputs, const std::string& outputs,
                                           const WorkbookOptions& options, std::int32_t clusters) {
  const auto place = book.find(outputs);
  if (!place || place->sheet != inputs.sheet) return std::nullopt;
  sheet::CellArea area = place->area;
  area.lastColumn = area.firstColumn + (options.output.oneColumn.value_or(true) ? 0 : clusters - 1);
  return area;
}

/// The work before and behind the run itself.
class WorkbookCommand {
 public:
  WorkbookCommand(const ClusterOptions& options, Talk& talk)

      : options_(options),
        talk_(talk),
        target_(options.book.dryRun ? std::string() : targetOf(options), options.force),
        book_(openWorkbook(options.input, options.book.host)) {}

  ExitStatus execute() {
    WorkbookServices services(talk_, options_.run.onError, options_.book.remembered);
    DialogEntries entries{options_.book.inputs, options_.book.outputs, options_.run.network, options_.book.output};
    readingWorkbook(options_.input, [&] { Proposal(options_, *book_).complete(entries, talk_); });
    const auto trace = options_.trace.empty() ? nullptr : openOutput(options_.trace);
    WorkbookSession session(*book_, services, talk_);
    const ClusterRun run = session.run(
        entries, options_.run,
        [&](const std::string& inputs, const std::string& outputs, bool sorts) {
          readingWorkbook(options_.input, [&] { prepare(inputs, outputs, sorts); });
        },
        trace.get());
    talk_.detail("clustered and laid out in " + decimal(static_cast<long long>(run.seconds * 1000.0)) + " ms");
    if (trace) trace->commit();
    Report report = countsOf(run, inputNames_, run.scaled);
    write(run);
    tellOutcome(run, report, talk_);
    tellWritten(run, report);
    tellReport(report, run, options_.report, talk_);
    return ExitStatus::done;
  }

 private:
  void prepare(const std::string& inputs, const std::string& outputs, bool sorts) {
    const auto place = book_->find(inputs);
    // What the component's own check is about to refuse needs no words here.
    if (!place || !checks::referenceTrouble(*book_, "--inputs", inputs).empty()) return;
    // A damaged sheet is trouble with the file and no failure of the run.
    static_cast<void>(book_->usedArea(place->sheet));
    if (const auto listing = book_->find(outputs)) static_cast<void>(book_->usedArea(listing->sheet));
    talk_.detail("clustering " + printable(inputs) + ", writing to " + printable(outputs));
    inputNames_ = columnNames(*book_, *place);
    for (std::string& name : inputNames_) name = printable(name);
    for (const std::string& loss : book_->cannotBeKept()) talk_.warning(loss);
    if (sorts) {
      const std::int32_t clusters = options_.run.network.clusters.value_or(1);
      const auto listing = listingArea(*book_, *place, outputs, options_.book, clusters);
      for (const std::string& warning : sortingWarnings(neighboursOf(*book_, *place, listing))) talk_.warning(warning);
    }
    if (wantsRows(options_)) rows_ = std::make_unique<WorkbookRows>(*book_, *place);
  }

  void write(const ClusterRun& run) {
    if (options_.book.dryRun) {
      const auto out = openOutput("-");
      writeDryRun(*book_, options_.format == Format::json, *out);
      out->commit();
      return;
    }
    const std::string target = targetOf(options_);
    if (!target.empty()) copy_ = saveWorkbook(*book_, target, target_, options_.book.backupSuffix);
    if (!rows_) return;
    const auto out = openOutput("-");
    const Dialect dialect{.delimiter = ','};
    rows_->write(*options_.format, delimiterFor(*options_.format, dialect, options_.outputDelimiter),
                 options_.resultName, run.labels, *out);
    out->commit();
  }

  void tellWritten(const ClusterRun& run, const Report& report) {
    const std::string target = targetOf(options_);
    if (options_.book.dryRun || target.empty()) return;
    talk_.note(counted(report.rows, "row", "rows") + " in " + counted(run.clusters, "cluster", "clusters") +
               " written to " + printable(target) +
               (copy_.empty() ? "" : "; the old file is kept as " + printable(copy_)));
  }

  const ClusterOptions& options_;
  Talk& talk_;
  TargetFile target_;  // NB: before the book, which is read once the file is watched.
  std::unique_ptr<OpenBook> book_;
  std::string copy_;
  std::vector<std::string> inputNames_;
  std::unique_ptr<WorkbookRows> rows_;
};

}  // namespace

ExitStatus clusterWorkbook(const ClusterOptions& options, Talk& talk) {
  checkUsage(options);
  checkPaths(options);
  return WorkbookCommand(options, talk).execute();
}

}  // namespace mervane::cli
