#include "cli/outcome.h"

#include "cli/cluster_run.h"
#include "cli/talk.h"
#include "cli/text_display.h"

namespace mervane::cli {

void tellOutcome(const ClusterRun& run, const Report& report, Talk& talk) {
  if (run.wasStopped && run.epochsDone < run.epochs) {
    talk.warning("interrupted: the clusters are those after epoch " + decimal(run.epochsDone) + " of " +
                 decimal(run.epochs));
  }
  if (run.ignoredFailures > 0) {
    talk.warning(counted(run.ignoredFailures, "failure was", "failures were") + " ignored; the result may be wrong");
  }
  if (report.rowsWithoutCluster > 0) {
    talk.warning(counted(report.rowsWithoutCluster, "row has", "rows have") + " no cluster and got 0");
  }
  if (!report.emptyClusters.empty()) talk.warning(emptyClustersText(report.emptyClusters));
}

void tellReport(Report& report, const ClusterRun& run, ReportForm form, Talk& talk) {
  if (form == ReportForm::none) return;
  measure(report, run);
  talk.text(form == ReportForm::text ? reportText(report) : reportJson(report));
}

}  // namespace mervane::cli
