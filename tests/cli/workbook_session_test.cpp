#include "cli/workbook_session.h"

#include <gtest/gtest.h>

#include "cli/problem.h"
#include "cli/talk.h"
#include "hosts/workbook/workbook_host.h"
#include "tests/cli/made_book.h"
#include "tests/cli/program_run.h"
#include "tests/cli/temporary_stream.h"

namespace mervane::cli {
namespace {

/// What ends a run over A1:B2 with the listing in D2. What is asked before a run stands before the session and is not
/// asked here.
Problem endOfRun(const MadeBook& made, std::string& said) {
  const TestFolder folder;
  const std::string path = folder.file("book.xlsx");
  made.write(path);
  const auto book = workbook::WorkbookHost::open(path);
  const TemporaryStream stream;
  Talk talk{stream.file()};
  WorkbookServices services(talk, {}, false);
  DialogEntries entries{"Data!A1:B2", "Data!D2", {}, {}};
  entries.network.clusters = 2;
  entries.network.epochs = 2;
  entries.output.sort = false;
  ClusterRunOptions options;
  options.showProgress = false;
  try {
    static_cast<void>(WorkbookSession(*book, services, talk)
                          .run(
                              entries, options, [](const HeldEntries&) { return DialogEntries(); }, nullptr));
  } catch (const Problem& problem) {
    said = stream.text();
    return problem;
  }
  ADD_FAILURE() << "the run came to its end";
  return {ExitStatus::done, ""};
}

void expectCause(const MadeBook& made, const std::string& cause) {
  std::string said;
  const Problem problem = endOfRun(made, said);
  EXPECT_EQ(problem.status(), ExitStatus::engineFailure);
  EXPECT_EQ(problem.message(), "the run failed; nothing is written");
  EXPECT_EQ(problem.advice(), cause);
  EXPECT_NE(said.find("(COutputFormatting component failure)"), std::string::npos) << said;
}

TEST(WorkbookSession, AFailingRunNamesTheCellAndTheReason) {
  MadeBook made{{{"1", "2"}, {"3", "4"}}, "<mergeCells count=\"1\"><mergeCell ref=\"D2:D3\"/></mergeCells>"};
  expectCause(
      made,
      "The cell Data!D3 is covered by the merged cells D2:D3. Take the merge apart in the spreadsheet or choose "
      "other cells.");
  made.behindCells = "<sheetProtection sheet=\"1\"/>";
  expectCause(made,
              "The cell Data!D2 is on a protected sheet. Take the sheet's protection off in the spreadsheet first.");
}

}  // namespace
}  // namespace mervane::cli
