#pragma once

#include "cli/cluster_options.h"
#include "cli/exit_status.h"
#include "cli/sheets_options.h"

/// The commands. Each returns its exit status or raises a Problem.
namespace mervane::cli {

/// `mervane cluster`: dispatches on the kind of the input.
[[nodiscard]] ExitStatus cluster(const ClusterOptions& options, Talk& talk);
/// `mervane cluster` for delimited text.
[[nodiscard]] ExitStatus clusterDataFile(const ClusterOptions& options, Talk& talk);
/// `mervane cluster` for a workbook.
[[nodiscard]] ExitStatus clusterWorkbook(const ClusterOptions& options, Talk& talk);
/// `mervane sheets`.
[[nodiscard]] ExitStatus sheets(const SheetsOptions& options);

}  // namespace mervane::cli
