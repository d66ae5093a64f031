// What a run would remove, overwrite or fail at is said before it begins.

#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>

#include "hosts/workbook/workbook_host.h"
#include "tests/cli/made_book.h"
#include "tests/cli/program_run.h"

namespace mervane::cli {
namespace {

using workbook::WorkbookHost;

class WorkbookGuard : public testing::Test {
 protected:
  TestFolder folder;
  const std::string book = folder.file("book.xlsx");
  const std::string out = folder.file("out.xlsx");
  MadeBook made{{{"x", "y"}, {"1", "2"}, {"1", "3"}, {"8", "9"}, {"9", "9"}}, {}};

  std::vector<std::string> arguments(const std::vector<std::string>& more = {}) const {
    std::vector<std::string> all{"cluster", book, "-i", "Data!A2:B5", "--outputs", "Data!E2", "-k", "2", "-o", out};
    all.insert(all.end(), more.begin(), more.end());
    return all;
  }
  Outcome cluster(const std::vector<std::string>& more = {}) const { return runProgram(arguments(more)); }
  std::string text(const std::string& cell, const std::string& sheet = "Data") const {
    return WorkbookHost::open(out)->cellText(sheet, *workbook::parseCell(cell));
  }
  void expectRefused(const Outcome& outcome, const std::string& lines) {
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.err.find(lines), std::string::npos) << outcome.err;
    EXPECT_FALSE(std::filesystem::exists(out));
  }
  /// Writes a finished book as the next input, its parts changed.
  void takeResult(const std::function<void(std::map<std::string, std::string>&)>& change) const {
    std::map<std::string, std::string> parts = workbook::tests::readZip(out);
    change(parts);
    workbook::tests::writeZip(book, {parts.begin(), parts.end()});
    std::filesystem::remove(out);
  }
  static std::size_t charts(const std::string& path) {
    std::size_t count = 0;
    for (const auto& [name, content] : workbook::tests::readZip(path)) count += name.starts_with("xl/charts/chart");
    return count;
  }
};

void replace(std::string& text, const std::string& from, const std::string& to) {
  const std::size_t at = text.find(from);
  ASSERT_NE(at, std::string::npos) << from;
  text.replace(at, from.size(), to);
}

/// Takes the title out of a chart.
void untitle(std::string& chart) {
  const std::size_t begin = chart.find("<c:title>");
  const std::size_t end = chart.find("</c:title>");
  ASSERT_NE(begin, std::string::npos);
  chart.erase(begin, end + 10 - begin);
  replace(chart, "<c:autoTitleDeleted val=\"0\"/>", "<c:autoTitleDeleted val=\"1\"/>");
}

TEST_F(WorkbookGuard, CellsUnderTheInputsAreNotOverwrittenWithoutLeave) {
  made.rows.push_back({"Total", "23"});
  made.write(book);
  expectRefused(cluster(),
                "mervane: error: the run would remove or overwrite what is there:\n"
                "         the statistics would overwrite 2 cells of Data!A6:C13: A6 \"Total\", B6 \"23\"\n"
                "         Give --overwrite to let it go, or do without: --no-averages --no-weighted-averages "
                "--no-minimums --no-maximums --no-weights.\n");
  const Outcome overwritten = cluster({"--overwrite"});
  EXPECT_EQ(overwritten.status, 0);
  EXPECT_NE(overwritten.err.find("warning: the statistics would overwrite 2 cells"), std::string::npos);
  EXPECT_EQ(text("C6"), "Cluster 1 average");
}

TEST_F(WorkbookGuard, WhatIsOfferedInsteadHarmsNothing) {
  made.rows.push_back({"Total", "23"});
  made.write(book);
  EXPECT_EQ(
      cluster({"--no-averages", "--no-weighted-averages", "--no-minimums", "--no-maximums", "--no-weights"}).status, 0);
  EXPECT_EQ(text("A6"), "Total");
}

TEST_F(WorkbookGuard, NoConsentIsAskedForToARunThatWillBeRefusedAnyway) {
  made.rows.push_back({"Total", "23"});
  made.write(book);
  const Outcome tooMany = cluster({"-k", "5"});
  EXPECT_EQ(tooMany.status, 2);
  EXPECT_EQ(tooMany.err, "mervane: error: --clusters: 5 clusters cannot be made of 4 rows; give 2 to 4\n");
  const Outcome heading = cluster({"-i", "Data!A1:B5"});
  EXPECT_EQ(heading.status, 1);
  EXPECT_NE(heading.err.find("Data!A1: text \"x\" is not a number"), std::string::npos) << heading.err;
  EXPECT_EQ(heading.err.find("overwrite"), std::string::npos) << heading.err;
}

TEST_F(WorkbookGuard, FlagsForALongSheetNameAreWholeSoThatTheyCanBeCopied) {
  made.write(book);
  std::map<std::string, std::string> parts = workbook::tests::readZip(book);
  replace(parts["xl/workbook.xml"], "name=\"Data\"", "name=\"L" + std::string(29, '\'') + "g\"");
  workbook::tests::writeZip(book, {parts.begin(), parts.end()});
  const std::string sheet = "'L" + std::string(58, '\'') + "g'";
  const Outcome outcome = runProgram({"cluster", book, "-k", "2", "--yes", "-o", out});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_NE(outcome.err.find("--inputs \"" + sheet + "!A2:B5\" --outputs \"" + sheet + "!E2\""), std::string::npos)
      << outcome.err;
  std::filesystem::remove(out);
  expectRefused(cluster({"-i", sheet + "!A2:B5", "--outputs", sheet + "!A2"}),
                "Do without it: --outputs \"" + sheet + "!E2\".\n");
}

TEST_F(WorkbookGuard, ATerminalIsAskedAboutTheList) {
  made.rows[3].insert(made.rows[3].end(), {"", "", "kept?"});
  made.write(book);
  for (const auto& [answer, status] : {std::pair("n\n", 1), std::pair("y\n", 0)}) {
    Start start;
    start.arguments = arguments();
    start.onTerminal = true;
    ProgramRun run(start);
    ASSERT_TRUE(run.waitForError("Let that go and run? [y/N]"));
    run.type(answer);
    const Outcome outcome = run.finish();
    EXPECT_EQ(outcome.status, status);
    EXPECT_NE(outcome.err.find("the listing would overwrite 1 cell of Data!E1:E5: E4 \"kept?\""), std::string::npos);
    EXPECT_EQ(std::filesystem::exists(out), status == 0);
  }
}

TEST_F(WorkbookGuard, ADryRunListsWhatWouldGo) {
  made.rows.push_back({"Total"});
  made.write(book);
  const Outcome outcome = cluster({"--dry-run"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_NE(outcome.out.find("It would remove or overwrite what is there, which takes --overwrite:\n"
                             "  the statistics would overwrite 1 cell of Data!A6:C13: A6 \"Total\"\n"),
            std::string::npos)
      << outcome.out;
  const auto json = nlohmann::json::parse(cluster({"--dry-run", "--format", "json"}).out);
  ASSERT_EQ(json["harms"].size(), 1U);
  EXPECT_EQ(json["harms"][0]["range"], "A6:C13");
  EXPECT_EQ(json["harms"][0]["cells"], 1);
}

TEST_F(WorkbookGuard, RowsForStandardOutputAloneTakeNoLeaveSinceNothingIsSaved) {
  made.rows.push_back({"Total"});
  made.write(book);
  EXPECT_EQ(runProgram({"cluster", book, "-i", "Data!A2:B5", "--outputs", "Data!E2", "-k", "2", "-f", "csv"}).status,
            0);
}

TEST_F(WorkbookGuard, ChartsWithoutATitleAreNotDeletedWithoutLeaveNotEvenWithoutNewCharts) {
  made.write(book);
  ASSERT_EQ(cluster().status, 0);
  takeResult([](auto& parts) { untitle(parts["xl/charts/chart1.xml"]); });
  const std::vector<std::string> elsewhere{"--outputs",     "Data!R2",       "--no-averages", "--no-weighted-averages",
                                           "--no-minimums", "--no-maximums", "--no-weights"};
  expectRefused(cluster(elsewhere), "         the chart without a title at Data!F");
  std::vector<std::string> withoutCharts = elsewhere;
  withoutCharts.emplace_back("--no-charts");
  expectRefused(cluster(withoutCharts), "would be deleted\n         Give --overwrite to let it go.\n");
  withoutCharts.emplace_back("--overwrite");
  EXPECT_EQ(cluster(withoutCharts).status, 0);
  EXPECT_EQ(charts(out), 0U);
}

TEST_F(WorkbookGuard, TheSheetOfTheInputsIsActiveBeforeAnythingHappens) {
  made.write(book);
  ASSERT_EQ(cluster().status, 0);
  ASSERT_EQ(charts(out), 2U);
  // Left on the other sheet, with that one's filter.
  takeResult([](auto& parts) {
    replace(parts["xl/workbook.xml"], "<sheets>", "<bookViews><workbookView activeTab=\"1\"/></bookViews><sheets>");
    replace(parts["xl/worksheets/sheet2.xml"], "<sheetData/>", "<sheetData/><autoFilter ref=\"A1:B2\"/>");
  });
  ASSERT_EQ(cluster({"--overwrite", "--no-autofilter", "--outputs", "E2"}).status, 0);
  EXPECT_EQ(charts(out), 2U);
  EXPECT_EQ(text("E1"), "Clusters");
  EXPECT_EQ(text("E1", "Totals"), "");
  std::map<std::string, std::string> parts = workbook::tests::readZip(out);
  EXPECT_NE(parts["xl/worksheets/sheet2.xml"].find("<autoFilter"), std::string::npos);
  EXPECT_EQ(parts["xl/worksheets/sheet1.xml"].find("<autoFilter"), std::string::npos);
  EXPECT_EQ(WorkbookHost::open(out)->activeSheetName(), "Data");
}

TEST_F(WorkbookGuard, ABookIsNotLeftOnAHiddenSheet) {
  made.write(book);
  std::map<std::string, std::string> parts = workbook::tests::readZip(book);
  replace(parts["xl/workbook.xml"], "name=\"Totals\"", "name=\"Totals\" state=\"hidden\"");
  replace(
      parts["xl/worksheets/sheet2.xml"], "<sheetData/>",
      "<sheetData><row r=\"1\"><c r=\"A1\"><v>1</v></c></row><row r=\"2\"><c r=\"A2\"><v>2</v></c></row></sheetData>");
  workbook::tests::writeZip(book, {parts.begin(), parts.end()});
  ASSERT_EQ(cluster({"-i", "Totals!A1:A2", "--outputs", "Totals!D1"}).status, 0);
  EXPECT_EQ(WorkbookHost::open(out)->activeSheetName(), "Data");
}

TEST_F(WorkbookGuard, AProtectedSheetIsRefusedBeforeTheRun) {
  made.behindCells = "<sheetProtection sheet=\"1\"/>";
  made.write(book);
  for (const std::vector<std::string>& flags : {std::vector<std::string>{}, {"--overwrite"}, {"--no-sort"}}) {
    expectRefused(cluster(flags), "the listing would write to Data!E2, which is locked on a protected sheet\n");
  }
  expectRefused(runProgram({"cluster", book, "--yes", "-o", out}),
                "mervane: error: the sheet does not allow that run:\n");
}

TEST_F(WorkbookGuard, MergedCellsAndArraysAndTheInputsThemselvesAreRefusedWithWhatWorksInstead) {
  made.behindCells = "<mergeCells><mergeCell ref=\"E3:E4\"/></mergeCells>";
  made.write(book);
  expectRefused(cluster(),
                "         the listing would write to cells that are merged into Data!E3:E4\n"
                "         Do without it: --outputs \"Data!G2\".\n");
  EXPECT_EQ(cluster({"--outputs", "Data!G2"}).status, 0);
  std::filesystem::remove(out);
  made.behindCells = "<mergeCells><mergeCell ref=\"C3:C4\"/></mergeCells>";
  made.write(book);
  expectRefused(cluster(),
                "         sorting cannot move the merged cells Data!C3:C4\n"
                "         Do without it: --no-sort.\n");
  EXPECT_EQ(cluster({"--no-sort"}).status, 0);
  std::filesystem::remove(out);
  made.behindCells.clear();
  made.write(book);
  expectRefused(cluster({"--outputs", "Data!B2"}),
                "         the listing at Data!B1:B5 would overwrite the inputs Data!A2:B5\n");
}

TEST_F(WorkbookGuard, AProposalLeavesOutWhatWouldDoHarm) {
  made.rows.push_back({"Total", "23"});
  made.behindCells = "<mergeCells><mergeCell ref=\"C3:C4\"/></mergeCells>";
  made.write(book);
  const Outcome outcome = runProgram({"cluster", book, "--yes", "-k", "2", "-o", out});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_NE(outcome.err.find("taking --inputs \"Data!A2:B5\" --outputs \"Data!E2\" --no-sort --no-averages "
                             "--no-weighted-averages --no-minimums --no-maximums --no-weights\n"),
            std::string::npos)
      << outcome.err;
  EXPECT_EQ(text("A6"), "Total");
  EXPECT_EQ(text("E1"), "Clusters");
}

TEST_F(WorkbookGuard, FormulasBesideTheInputsThatWereNeverComputedAreRefused) {
  made.rows[1].push_back("=A1");
  made.write(book);
  expectRefused(cluster({"--overwrite"}),
                "sorting needs the value of the formula in Data!C2, which was never computed");
  EXPECT_EQ(cluster({"--no-sort"}).status, 0);
}

TEST_F(WorkbookGuard, TextsBesideTheInputsThatWouldBecomeFormulasTakeLeave) {
  made.rows[1].push_back("&#61;x");
  made.write(book);
  expectRefused(cluster(),
                "C2, which begins with an equals sign, would become a formula\n"
                "         Give --overwrite to let it go, or do without: --no-sort.\n");
}

}  // namespace
}  // namespace mervane::cli
