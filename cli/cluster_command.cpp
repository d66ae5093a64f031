#include "cli/commands.h"
#include "cli/workbook_file.h"

namespace mervane::cli {

ExitStatus cluster(const ClusterOptions& options, Talk& talk) {
  return isWorkbookName(options.input) || options.book.host == BookHost::calc ? clusterWorkbook(options, talk)
                                                                              : clusterDataFile(options, talk);
}

}  // namespace mervane::cli
