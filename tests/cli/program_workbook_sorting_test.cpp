// What a sort would tear apart is said before the run, and what it gives back is as it was.

#include <gtest/gtest.h>

#include <functional>

#include "hosts/workbook/workbook_host.h"
#include "tests/cli/made_book.h"
#include "tests/cli/program_run.h"

namespace mervane::cli {
namespace {

using workbook::WorkbookHost;

class WorkbookSorting : public testing::Test {
 protected:
  TestFolder folder;
  const std::string book = folder.file("book.xlsx");
  const std::string out = folder.file("out.xlsx");

  void SetUp() override {
    // Two groups that lie far apart, dealt in turn, so that sorting moves rows.
    MadeBook made{{{"x", "y"}, {"1", "2"}, {"8", "9"}, {"1", "3"}, {"9", "9"}}, {}};
    made.write(book);
  }
  /// Changes a part of the book.
  void change(const std::string& part, const std::function<void(std::string&)>& body) const {
    auto parts = workbook::tests::readZip(book);
    body(parts.at(part));
    workbook::tests::writeZip(book, {parts.begin(), parts.end()});
  }
  void changeSheet(const std::string& from, const std::string& to) const {
    change("xl/worksheets/sheet1.xml", [&](std::string& sheet) {
      const std::size_t at = sheet.find(from);
      ASSERT_NE(at, std::string::npos) << from << " in " << sheet;
      sheet.replace(at, from.size(), to);
    });
  }
  Outcome cluster(const std::vector<std::string>& more = {}) const {
    std::vector<std::string> all{"cluster", book, "-i", "Data!A2:B5", "--outputs", "Data!E2", "-k", "2", "-o", out};
    all.insert(all.end(), more.begin(), more.end());
    return runProgram(all);
  }
  std::string text(const std::string& cell) const {
    return WorkbookHost::open(out)->cellText("Data", *workbook::parseCell(cell));
  }
};

TEST_F(WorkbookSorting, RowsThatAreHiddenAreNotSortedWhateverIsGiven) {
  changeSheet("<row r=\"3\"", "<row r=\"3\" hidden=\"1\"");
  for (const std::vector<std::string>& leave : {std::vector<std::string>{}, {"--overwrite"}, {"--sort"}}) {
    const Outcome outcome = cluster(leave);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.err.find("sorting cannot move row 3 of \"Data\", which a filter or the user has hidden"),
              std::string::npos)
        << outcome.err;
    EXPECT_NE(outcome.err.find("--no-sort"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(out));
  }
  EXPECT_EQ(cluster({"--no-sort"}).status, 0);
  EXPECT_EQ(text("A3"), "8");
}

TEST_F(WorkbookSorting, FormulasThatNameOtherRowsTakeLeave) {
  changeSheet("</sheetData>", "<row r=\"40\"><c r=\"H40\"><f>SUM(A2:A5)</f><v>19</v></c></row></sheetData>");
  EXPECT_EQ(cluster().status, 0) << "all rows are named at once";
  std::filesystem::remove(out);
  changeSheet("SUM(A2:A5)", "SUM(A2:A3)");
  const Outcome outcome = cluster();
  EXPECT_EQ(outcome.status, 1);
  EXPECT_NE(outcome.err.find("sorting puts other rows where formulas from outside look: Data!H40 \"=SUM(A2:A3)\""),
            std::string::npos)
      << outcome.err;
  EXPECT_FALSE(std::filesystem::exists(out));
  EXPECT_EQ(cluster({"--overwrite"}).status, 0);
  EXPECT_EQ(cluster({"--no-sort", "--overwrite"}).status, 0);
}

TEST_F(WorkbookSorting, ADateColumnBesideTheInputsComesBackFromABookThatCountsFrom1904) {
  change("xl/workbook.xml",
         [](std::string& workbook) { workbook.insert(workbook.find("<sheets>"), "<workbookPr date1904=\"1\"/>"); });
  const auto dates = [&](const std::string& path) {
    std::vector<Variant> values;
    const auto opened = WorkbookHost::open(path);
    for (const char* cell : {"C2", "C3", "C4", "C5"}) {
      values.push_back(opened->cellValue("Data", *workbook::parseCell(cell)));
    }
    return values;
  };
  {
    const auto opened = WorkbookHost::open(book);
    const sheet::Application application(opened->application());
    for (const char* cell : {"C2", "C3", "C4", "C5"}) application.Range(cell).Value(Variant(Date{45000.0}));
    opened->save(book);
  }
  const std::vector<Variant> before = dates(book);
  ASSERT_EQ(before.front(), Variant(Date{45000.0}));
  ASSERT_EQ(cluster({"--overwrite"}).status, 0);
  EXPECT_EQ(dates(out), before);
  for (const char* cell : {"E2", "E5"}) EXPECT_EQ(text(cell).size(), 1U) << text(cell);
  EXPECT_NE(text("E2"), text("E5"));
}

}  // namespace
}  // namespace mervane::cli
