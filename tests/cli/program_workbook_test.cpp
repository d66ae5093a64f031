#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>

#include "hosts/workbook/workbook_host.h"
#include "tests/cli/made_book.h"
#include "tests/cli/program_run.h"

namespace mervane::cli {
namespace {

using workbook::WorkbookHost;

const std::string iris = MERVANE_EXAMPLES "/iris.xlsx";
const std::vector<std::string> asTyped{"cluster",   iris,      "--inputs",   "Iris!B2:E151",
                                       "--outputs", "Iris!G2", "--clusters", "3"};

std::vector<std::string> with(std::vector<std::string> arguments, const std::vector<std::string>& more) {
  arguments.insert(arguments.end(), more.begin(), more.end());
  return arguments;
}

std::string bytesOf(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// Numbers in two clear groups, a name left of them and a remark right of them.
MadeBook twoGroups() {
  MadeBook book;
  book.rows = {{"Name", "x", "y", "", "Remark"}};
  for (int i = 0; i < 6; ++i) {
    const std::string base = i % 2 == 0 ? "1" : "9";
    book.rows.push_back({"row" + std::to_string(i), base + "." + std::to_string(i), base, "", "about " + base});
  }
  return book;
}

class ProgramWorkbook : public testing::Test {
 protected:
  TestFolder folder;
  const std::string book = folder.file("book.xlsx");
  const std::string out = folder.file("out.xlsx");

  std::string text(const std::string& path, const std::string& cell, const std::string& sheet = "Data") {
    return WorkbookHost::open(path)->cellText(sheet, *workbook::parseCell(cell));
  }
  Outcome clusterGroups(const std::vector<std::string>& more) {
    return runProgram(with({"cluster", book, "--inputs", "Data!B2:C7", "--outputs", "Data!G2", "-k", "2"}, more));
  }
};

void expectGoodIris(const std::string& result) {
  const std::string command = "/usr/bin/python3 " MERVANE_TESTS "/check_iris_result.py " + iris + " " + result;
  EXPECT_EQ(std::system(command.c_str()), 0);  // NOLINT(concurrency-mt-unsafe): the test has one thread.
}

TEST_F(ProgramWorkbook, LeavesSortedRowsListingBlocksAndTwoChartsAlsoWhenRunOnItsOwnOutput) {
  EXPECT_EQ(runProgram(with(asTyped, {"-o", out})).status, 0);
  expectGoodIris(out);
  const std::string again = folder.file("again.xlsx");
  EXPECT_EQ(runProgram({"cluster", out, "--inputs", "Iris!B2:E151", "--outputs", "Iris!G2", "-o", again, "--overwrite"})
                .status,
            0);
  expectGoodIris(again);
}

TEST_F(ProgramWorkbook, DoesNotTouchTheFileWithoutLeave) {
  twoGroups().write(book);
  const std::string before = bytesOf(book);
  const Outcome outcome = clusterGroups({});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_NE(outcome.err.find("Give -o FILE for a new file, --in-place for this one"), std::string::npos);
  EXPECT_EQ(bytesOf(book), before);
  EXPECT_EQ(folder.entries(), std::vector<std::string>{"book.xlsx"});
}

TEST_F(ProgramWorkbook, InPlaceWritesTheFileItselfAndKeepsACopyWhereAsked) {
  twoGroups().write(book);
  const std::string before = bytesOf(book);
  EXPECT_EQ(clusterGroups({"--in-place=.bak"}).status, 0);
  EXPECT_EQ(text(book, "G1"), "Clusters");
  EXPECT_EQ(bytesOf(book + ".bak"), before);
  EXPECT_EQ(clusterGroups({"--in-place", "--overwrite"}).status, 0);
  EXPECT_EQ(folder.entries(), (std::vector<std::string>{"book.xlsx", "book.xlsx.bak"}));
}

TEST_F(ProgramWorkbook, SaysBeforehandThatASignatureWillNotHold) {
  workbook::tests::BookText signedBook;
  signedBook.sheet =
      "<sheetData><row r=\"1\"><c r=\"A1\"><v>1</v></c></row><row r=\"2\"><c r=\"A2\"><v>2</v></c></row></sheetData>";
  auto parts = signedBook.parts();
  for (auto& [name, content] : parts) {
    if (name != "_rels/.rels") continue;
    content.insert(content.rfind("</"),
                   "<Relationship Id=\"rId9\" Target=\"_xmlsignatures/origin.sigs\" "
                   "Type=\"http://schemas.openxmlformats.org/package/2006/relationships/digital-signature/origin\"/>");
  }
  const std::vector<std::string> command{"cluster", book, "--inputs", "Data!A1:A2", "--outputs", "Data!D2", "-k", "2"};
  const std::string warning = "the workbook is signed, and the signature does not hold";
  workbook::tests::writeZip(book, parts);
  EXPECT_NE(runProgram(with(command, {"-o", out})).err.find(warning), std::string::npos);
  EXPECT_NE(runProgram(with(command, {"--dry-run"})).err.find(warning), std::string::npos);
  workbook::tests::writeZip(book, signedBook.parts());
  EXPECT_EQ(runProgram(with(command, {"-o", out})).err.find(warning), std::string::npos);
}

TEST_F(ProgramWorkbook, ADryRunTellsOfHiddenColumnsThatWouldBeShown) {
  workbook::tests::BookText hidden;
  hidden.sheet =
      "<cols><col min=\"1\" max=\"1\" width=\"9\" hidden=\"1\"/></cols>"
      "<sheetData><row r=\"1\"><c r=\"A1\"><v>1</v></c></row><row r=\"2\"><c r=\"A2\"><v>2</v></c></row></sheetData>";
  workbook::tests::writeZip(book, hidden.parts());
  const std::vector<std::string> command{"cluster", book,         "--inputs", "Data!A1:A2", "--outputs",
                                         "Data!D2", "--clusters", "2",        "--dry-run"};
  const std::string told = runProgram(command).out;
  const std::string note = "the hidden column A of the sheet \"Data\" is shown";
  EXPECT_NE(told.find(note), std::string::npos) << told;
  EXPECT_EQ(told.find(note), told.rfind(note)) << "once, though each block fits the column again";
}

TEST_F(ProgramWorkbook, OutputAndInPlaceExcludeEachOther) {
  twoGroups().write(book);
  EXPECT_EQ(clusterGroups({"--in-place", "-o", out}).status, 2);
  EXPECT_EQ(clusterGroups({"-o", "-"}).status, 2);
  EXPECT_EQ(clusterGroups({"-o", folder.file("out.csv")}).status, 2);
  EXPECT_EQ(clusterGroups({"--in-place=a/b"}).status, 2);
}

TEST_F(ProgramWorkbook, EachOutputOptionHasAFlagThatSwitchesItOff) {
  twoGroups().write(book);
  const auto labels = [&](const std::vector<std::string>& flags) {
    EXPECT_EQ(clusterGroups(with({"-o", out, "-q"}, flags)).status, 0);
    std::vector<std::string> found;
    for (int row = 8; row <= 18; ++row) {
      const std::string label = text(out, "D" + std::to_string(row));
      if (label.starts_with("Cluster 1 ")) found.push_back(label.substr(10));
    }
    return found;
  };
  using Labels = std::vector<std::string>;
  EXPECT_EQ(labels({}), (Labels{"average", "weighted average (%)", "minimum", "maximum", "weight (%)"}));
  EXPECT_EQ(labels({"--no-averages"}), (Labels{"weighted average (%)", "minimum", "maximum", "weight (%)"}));
  EXPECT_EQ(labels({"--no-weighted-averages"}), (Labels{"average", "minimum", "maximum", "weight (%)"}));
  EXPECT_EQ(labels({"--no-minimums"}), (Labels{"average", "weighted average (%)", "maximum", "weight (%)"}));
  EXPECT_EQ(labels({"--no-maximums"}), (Labels{"average", "weighted average (%)", "minimum", "weight (%)"}));
  EXPECT_EQ(labels({"--no-weights"}), (Labels{"average", "weighted average (%)", "minimum", "maximum"}));

  const auto parts = [&](const std::vector<std::string>& flags) {
    EXPECT_EQ(clusterGroups(with({"-o", out, "-q"}, flags)).status, 0);
    return workbook::tests::readZip(out);
  };
  EXPECT_TRUE(parts({}).contains("xl/charts/chart1.xml"));
  EXPECT_FALSE(parts({"--no-charts"}).contains("xl/charts/chart1.xml"));
  EXPECT_NE(parts({})["xl/worksheets/sheet1.xml"].find("<autoFilter"), std::string::npos);
  EXPECT_EQ(parts({"--no-autofilter"})["xl/worksheets/sheet1.xml"].find("<autoFilter"), std::string::npos);
  EXPECT_NE(parts({})["xl/styles.xml"].find("patternType=\"solid\""), std::string::npos);

  EXPECT_EQ(text(out, "A3"), "row2");  // sorted: the even rows are one group
  static_cast<void>(parts({"--no-sort"}));
  EXPECT_EQ(text(out, "A3"), "row1");
  static_cast<void>(parts({"--multiple-columns"}));
  EXPECT_EQ(text(out, "G1"), "Cluster 1");
  EXPECT_EQ(text(out, "H1"), "Cluster 2");
}

TEST_F(ProgramWorkbook, TakesReferencesAsTypedFromAWorkbookThatShowsRowsAndColumnsByNumber) {
  MadeBook made = twoGroups();
  made.inR1C1 = true;
  made.write(book);
  // In the workbook's own notation C2 would be the whole second column.
  const Outcome outcome = runProgram(
      {"cluster", book, "--inputs", "Data!C2:C7", "--outputs", "Data!R2", "-k", "2", "--no-sort", "-o", out});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(text(out, "R1"), "Clusters");
  EXPECT_EQ(text(out, "D8"), "Cluster 1 average");
}

TEST_F(ProgramWorkbook, WarnsOfColumnsThatSortingTearsFromTheirPlaces) {
  twoGroups().write(book);
  const Outcome sorted = clusterGroups({"-o", out});
  EXPECT_NE(sorted.err.find("moves the cells of column A, left of the inputs"), std::string::npos);
  EXPECT_NE(sorted.err.find("leaves the cells of column E, right of the inputs, where they are"), std::string::npos);
  EXPECT_NE(sorted.err.find("--no-sort"), std::string::npos);
  EXPECT_EQ(clusterGroups({"-o", out, "--no-sort"}).err.find("sorting"), std::string::npos);
}

TEST_F(ProgramWorkbook, FormulasOutsideOfTheRangeNeedNoValue) {
  MadeBook made = twoGroups();
  made.rows[0][1] = "=A1";
  made.rows[2][4] = "=1+1";
  made.write(book);
  const Outcome outcome = clusterGroups({"-o", out, "--format", "csv", "--report"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out.substr(0, outcome.out.find('\n')), R"("Name","B","y","D","Remark",Cluster)");
  EXPECT_NE(outcome.out.find("\n\"row1\",9.1,9,\"\",\"\","), std::string::npos) << outcome.out;
}

TEST_F(ProgramWorkbook, ReadsNoOtherSheetThanThatOfTheRange) {
  MadeBook made = twoGroups();
  made.totals = "<sheetData><row r=\"1\"><c r=\"damaged\"";
  made.write(book);
  const Outcome outcome = clusterGroups({"-o", out, "--format", "csv"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(text(out, "G1"), "Clusters");
  EXPECT_EQ(runProgram({"sheets", book}).status, 3);
}

TEST_F(ProgramWorkbook, WarnsOfCommentsThatSortingLeavesBehind) {
  MadeBook made = twoGroups();
  made.comments = {"A3", "C7", "E2", "B1"};
  made.write(book);
  EXPECT_NE(clusterGroups({"--dry-run"}).err.find("leaves the comments of A3 and C7 where they are"),
            std::string::npos);
  EXPECT_EQ(clusterGroups({"--dry-run", "--no-sort"}).err.find("comments"), std::string::npos);
  made.comments = {"A2", "A3", "A4", "A5", "A6", "A7", "B2"};
  made.write(book);
  EXPECT_NE(clusterGroups({"--dry-run"}).err.find("comments of A2, A3, A4, A5, A6 and 2 other cells where"),
            std::string::npos);
}

TEST_F(ProgramWorkbook, DryRunListsCellsChartsAndMovedRowsAndWritesNothing) {
  MadeBook made = twoGroups();
  made.rows.push_back({"", "old"});
  made.write(book);
  const std::string before = bytesOf(book);
  const Outcome outcome = clusterGroups({"--dry-run"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_NE(outcome.out.find("Nothing is saved."), std::string::npos);
  EXPECT_NE(outcome.out.find("B8 \"old\""), std::string::npos) << outcome.out;
  EXPECT_NE(outcome.out.find("Data!G1:G7"), std::string::npos) << outcome.out;
  EXPECT_NE(outcome.out.find("chart \"Clusters profiles\" is added"), std::string::npos);
  EXPECT_NE(outcome.out.find("change their order"), std::string::npos);
  EXPECT_EQ(bytesOf(book), before);
  EXPECT_EQ(folder.entries(), std::vector<std::string>{"book.xlsx"});
  const auto json = nlohmann::json::parse(clusterGroups({"--dry-run", "--format", "json"}).out);
  EXPECT_EQ(json["blocks"][0]["sheet"], "Data");
  EXPECT_EQ(json["notes"].size(), 3U);
}

TEST_F(ProgramWorkbook, FormatWritesTheRowsInTheirOldOrderAsDataFilesDo) {
  twoGroups().write(book);
  const std::string before = bytesOf(book);
  const Outcome outcome = clusterGroups({"--format", "json"});
  EXPECT_EQ(outcome.status, 0);
  const auto rows = nlohmann::json::parse(outcome.out);
  ASSERT_EQ(rows.size(), 6U);
  EXPECT_EQ(rows[1]["Name"], "row1");
  EXPECT_EQ(rows[1]["x"], 9.1);
  EXPECT_EQ(rows[1]["Remark"], "about 9");
  for (std::size_t i = 2; i < rows.size(); ++i) EXPECT_EQ(rows[i]["Cluster"], rows[i - 2]["Cluster"]);
  EXPECT_NE(rows[0]["Cluster"], rows[1]["Cluster"]);
  EXPECT_EQ(bytesOf(book), before);
}

TEST_F(ProgramWorkbook, ReportTellsTheSameAsForTheDataFile) {
  const auto reportOf = [](const Outcome& outcome) {
    const std::size_t begin = outcome.err.find('{');
    return begin == std::string::npos ? nlohmann::json() : nlohmann::json::parse(outcome.err.substr(begin));
  };
  const auto sheet = reportOf(runProgram(with(asTyped, {"-o", out, "-q", "--report=json"})));
  const auto file = reportOf(runProgram({"cluster", MERVANE_EXAMPLES "/iris.csv", "-q", "--report=json"}));
  EXPECT_EQ(sheet["sizes"], file["sizes"]);
  EXPECT_EQ(sheet["rows"], 150);
  EXPECT_EQ(sheet["columns"], (std::vector<std::string>{"Sepal length", "Sepal width", "Petal length", "Petal width"}));
}

TEST_F(ProgramWorkbook, CtrlCStopsTheTrainingAndWritesTheResults) {
  Start start;
  start.arguments = with(asTyped, {"-o", out, "--epochs", "99998", "--trace", folder.file("trace")});
  start.errOnTerminal = true;
  ProgramRun run(start);
  ASSERT_TRUE(run.waitForError("epoch"));
  run.send(SIGINT);
  const Outcome outcome = run.finish();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_NE(outcome.err.find("interrupted: the clusters are those after epoch"), std::string::npos);
  EXPECT_EQ(text(out, "G1", "Iris"), "Clusters");
}

TEST_F(ProgramWorkbook, SheetsListsUsedRangesAndHeaders) {
  twoGroups().write(book);
  const Outcome outcome = runProgram({"sheets", book});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out,
            "Data!A1:E7 (active): 7 rows, 5 columns\n"
            "    first row  Name, x, y, -, Remark\n"
            "    numbers    Data!B2:C7\n"
            "Totals: empty\n");
  const auto json = nlohmann::json::parse(runProgram({"sheets", "--format", "json", book}).out);
  EXPECT_EQ(json[0]["used"], "A1:E7");
  EXPECT_EQ(json[0]["headers"][1], "x");
  EXPECT_TRUE(json[1]["used"].is_null());
  EXPECT_EQ(runProgram({"sheets", folder.file("none.xlsx")}).status, 3);
  EXPECT_EQ(runProgram({"sheets"}).status, 2);
}

}  // namespace
}  // namespace mervane::cli
