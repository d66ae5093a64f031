#pragma once

#include "cli/report.h"

namespace mervane::cli {

class Talk;
struct ClusterRun;

/// Warns of what a finished run left to be desired: an interruption, ignored failures, rows without a cluster, empty
/// clusters.
void tellOutcome(const ClusterRun& run, const Report& report, Talk& talk);
/// Adds the measures to the report and tells it in the form asked for.
void tellReport(Report& report, const ClusterRun& run, ReportForm form, Talk& talk);

}  // namespace mervane::cli
