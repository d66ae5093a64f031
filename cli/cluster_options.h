#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/cluster_run.h"
#include "cli/data_table.h"
#include "cli/output_formats.h"
#include "cli/report.h"
#include "cli/talk.h"
#include "cli/workbook_options.h"

namespace mervane::cli {

/// What the command `cluster` was asked to do.
struct ClusterOptions {
  std::string input;
  std::string output;  ///< empty: standard output
  bool force = false;  ///< whether an output is written that an office has open
  std::optional<Format> format;
  std::optional<char> outputDelimiter;
  std::string resultName = "Cluster";

  DialectChoice dialect;
  std::optional<bool> header;
  std::optional<DecimalMark> decimal;
  std::vector<std::string> columns;

  WorkbookOptions book;
  /// The last flag given that is for data files alone, and for workbooks alone; empty for none.
  std::string dataFileFlag;
  std::string workbookFlag;

  ClusterRunOptions run;
  ReportForm report = ReportForm::none;
  std::string trace;  ///< empty: none
  Talk::Level level = Talk::Level::normal;
};

}  // namespace mervane::cli
