#include <memory>
#include <utility>

#include "cli/commands.h"
#include "cli/dry_run.h"
#include "cli/outcome.h"
#include "cli/output_file.h"
#include "cli/problem.h"
#include "cli/run_guard.h"
#include "cli/target_file.h"
#include "cli/text_display.h"
#include "cli/workbook_file.h"
#include "cli/workbook_ranges.h"
#include "cli/workbook_rows.h"
#include "cli/workbook_session.h"
#include "guard/refusal.h"

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

/// The work before and behind the run itself.
class WorkbookCommand {
 public:
  WorkbookCommand(const ClusterOptions& options, Talk& talk)
      : options_(options),
        talk_(talk),
        target_(options.book.dryRun ? std::string() : targetOf(options), options.force),
        book_(openWorkbook(options.input, options.book.host)),
        guard_(options, *book_, talk) {}

  ExitStatus execute() {
    WorkbookServices services(talk_, options_.run.onError, options_.book.remembered);
    const DialogEntries entries{options_.book.inputs, options_.book.outputs, options_.run.network,
                                options_.book.output};
    const auto trace = options_.trace.empty() ? nullptr : openOutput(options_.trace);
    WorkbookSession session(*book_, services, talk_);
    const ClusterRun run = session.run(
        entries, options_.run,
        [&](const HeldEntries& held) { return readingWorkbook(options_.input, [&] { return prepare(held); }); },
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
  DialogEntries prepare(const HeldEntries& held) {
    DialogEntries changes = guard_.look(held);
    const std::string& inputs = changes.inputs.empty() ? held.inputs : changes.inputs;
    const std::string& outputs = changes.outputs.empty() ? held.outputs : changes.outputs;
    const auto place = book_->find(inputs);
    // What the component's own check is about to refuse needs no words here.
    if (!place || !guard::referenceTrouble(*book_, "--inputs", inputs).empty()) return changes;
    talk_.detail("clustering " + printable(inputs) + ", writing to " + printable(outputs));
    inputNames_ = columnNames(*book_, *place);
    for (std::string& name : inputNames_) name = printable(name);
    for (const std::string& loss : book_->cannotBeKept()) talk_.warning(loss);
    if (changes.output.sort.value_or(held.plan.sort)) warnOfSorting(*place, outputs, held.plan);
    if (wantsRows(options_)) rows_ = std::make_unique<WorkbookRows>(*book_, *place);
    return changes;
  }

  void warnOfSorting(const OpenBook::Place& inputs, const std::string& outputs, const guard::Plan& plan) {
    std::optional<sheet::CellArea> listing;
    const auto place = book_->find(outputs);
    if (place && place->sheet == inputs.sheet) {
      listing = place->area;
      listing->lastColumn = listing->firstColumn + guard::listingColumns(plan) - 1;
    }
    for (const std::string& warning : sortingWarnings(neighboursOf(*book_, inputs, listing))) talk_.warning(warning);
  }

  void write(const ClusterRun& run) {
    if (options_.book.dryRun) {
      const auto out = openOutput("-");
      writeDryRun(*book_, guard_.harms(), options_.format == Format::json, *out);
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
  RunGuard guard_;
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
