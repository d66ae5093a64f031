#include <utility>

#include "cli/byte_source.h"
#include "cli/column_selection.h"
#include "cli/commands.h"
#include "cli/data_table.h"
#include "cli/outcome.h"
#include "cli/output_file.h"
#include "cli/output_formats.h"
#include "cli/problem.h"
#include "cli/report.h"
#include "cli/table_header.h"
#include "cli/target_file.h"
#include "cli/text_display.h"

namespace mervane::cli {
namespace {

const std::string standardOutput = "-";

std::string outputPath(const ClusterOptions& options) {
  return options.output.empty() ? standardOutput : options.output;
}

/// The format and, for delimited text, its delimiter.
Format formatFor(const ClusterOptions& options, const Dialect& dialect) {
  if (options.format) return *options.format;
  if (const auto format = formatOfName(options.output)) return *format;
  return dialect.delimiter == '\t' ? Format::tsv : Format::csv;
}

void refuseWorkbookFlags(const ClusterOptions& options) {
  if (options.workbookFlag.empty()) return;
  throw Problem(
      ExitStatus::usage,
      options.workbookFlag + " is for workbooks, and " + sourceName(options.input) + " is read as a data file",
      "The name of a workbook ends in .xlsx or .xlsm.");
}

void checkPaths(const ClusterOptions& options) {
  const bool isFile = !options.output.empty() && options.output != "-";
  const auto misuse = [](const std::string& message) {
    throw Problem(ExitStatus::usage, message, "Name another file for the trace.");
  };
  if (!options.trace.empty()) {
    if (options.trace == "-" && !isFile) misuse("--trace -: standard output gets the data already");
    if (isFile && isSameFile(options.trace, options.output)) misuse("--trace and -o name the same file");
    if (options.input != "-" && isSameFile(options.trace, options.input)) misuse("--trace names the input file");
    checkOutput(options.trace);
  }
  checkOutput(outputPath(options));
}

DataTable readInput(const ClusterOptions& options) {
  DialectChoice choice = options.dialect;
  // Such a name settles the delimiter; .csv does not.
  if (!choice.delimiter && formatOfName(options.input) == Format::tsv) choice.delimiter = '\t';
  const auto source = openSource(options.input);
  return readTable(*source, sourceName(options.input), choice);
}

/// What is to be clustered: columns, decimal mark.
struct Selection {
  std::vector<std::size_t> columns;
  DecimalMark mark = DecimalMark::point;
};

Selection select(const ClusterOptions& options, const DataTable& table, const TableShape& shape, Talk& talk) {
  Selection selection;
  if (options.columns.empty()) {
    AutomaticColumns automatic = automaticColumns(table, shape, options.resultName);
    selection.columns = std::move(automatic.columns);
    for (const std::string& remark : automatic.remarks) talk.warning(remark);
  } else {
    selection.columns = namedColumns(options.columns, shape);
  }
  selection.mark = options.decimal ? *options.decimal : decimalMarkOf(table, shape, selection.columns);
  return selection;
}

std::vector<std::string> columnNames(const TableShape& shape, const std::vector<std::size_t>& columns) {
  std::vector<std::string> names;
  for (const std::size_t column : columns) {
    const std::string& name = shape.names[column];
    names.push_back(name.empty() ? decimal(static_cast<long long>(column) + 1) : printable(name));
  }
  return names;
}

void tellFindings(const DataTable& table, const TableShape& shape, const Selection& selection, Talk& talk) {
  std::string list;
  for (const std::string& name : columnNames(shape, selection.columns)) list += (list.empty() ? "" : ", ") + name;
  talk.detail(printable(table.name) + ": " + counted(shape.rows, "row", "rows") + ", " +
              counted(static_cast<long long>(table.columns.size()), "column", "columns") + ", delimiter " +
              delimiterName(table.dialect.delimiter) + ", " + (shape.hasHeader ? "with" : "without") +
              " a header, decimal " + (selection.mark == DecimalMark::point ? "point" : "comma"));
  talk.detail("clustering by " + list);
}

void writeResults(const Results& results, Format format, const ClusterOptions& options, const TargetFile& target) {
  const auto out = openOutput(outputPath(options));
  switch (format) {
    case Format::csv:
    case Format::tsv:
      writeDelimited(results, delimiterFor(format, results.table.dialect, options.outputDelimiter), *out);
      break;
    case Format::json:
      writeJson(results, false, *out);
      break;
    case Format::ndjson:
      writeJson(results, true, *out);
      break;
    case Format::table:
      writeTable(results, *out);
      break;
  }
  target.requireUntouched();
  out->commit();
}

void tellWritten(const ClusterRun& run, const ClusterOptions& options, const Report& report, Talk& talk) {
  if (!options.output.empty() && options.output != "-") {
    talk.note(counted(report.rows, "row", "rows") + " in " + counted(run.clusters, "cluster", "clusters") +
              " written to " + printable(options.output));
  }
}

}  // namespace

ExitStatus clusterDataFile(const ClusterOptions& options, Talk& talk) {
  refuseWorkbookFlags(options);
  checkPaths(options);
  checkLogs(options.run.logs);
  const TargetFile target(options.output, options.force);
  const DataTable table = readInput(options);
  const TableShape shape = shapeOf(table, options.header);
  const Selection selection = select(options, table, shape, talk);
  const Format format = formatFor(options, table.dialect);
  if (format == Format::json || format == Format::ndjson) requireUtf8(table, shape);
  tellFindings(table, shape, selection, talk);

  const auto trace = options.trace.empty() ? nullptr : openOutput(options.trace);
  const ClusterRun run = runClassifier(numbersOf(table, shape, selection.columns, selection.mark),
                                       selection.columns.size(), options.run, talk, trace.get());
  talk.detail("trained in " + decimal(static_cast<long long>(run.seconds * 1000.0)) + " ms");
  if (trace) trace->commit();
  writeResults(
      {table, shape, selection.columns, selection.mark, run.labels, resultColumnName(options.resultName, shape)},
      format, options, target);

  Report report = countsOf(run, columnNames(shape, selection.columns), run.scaled);
  tellOutcome(run, report, talk);
  tellWritten(run, options, report, talk);
  tellReport(report, run, options.report, talk);
  return ExitStatus::done;
}

}  // namespace mervane::cli
