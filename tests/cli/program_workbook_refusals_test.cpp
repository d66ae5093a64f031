#include <gtest/gtest.h>

#include <algorithm>

#include "hosts/workbook/workbook_host.h"
#include "tests/cli/made_book.h"
#include "tests/cli/program_run.h"

namespace mervane::cli {
namespace {

using workbook::WorkbookHost;

class WorkbookRefusals : public testing::Test {
 protected:
  TestFolder folder;
  const std::string book = folder.file("book.xlsx");
  const std::string out = folder.file("out.xlsx");

  Outcome cluster(const std::string& inputs, const std::string& outputs, const std::vector<std::string>& more = {}) {
    Start start;
    start.arguments = {"cluster", book, "--inputs", inputs, "--outputs", outputs, "-o", out};
    const std::vector<std::string> two{"-k", "2"};
    const bool tellsClusters = std::ranges::count(more, "-k") > 0;
    if (!tellsClusters) start.arguments.insert(start.arguments.end(), two.begin(), two.end());
    start.arguments.insert(start.arguments.end(), more.begin(), more.end());
    return runProgram(start);
  }
  void expectRefusal(const Outcome& outcome, const std::string& message, const std::string& where) {
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.err.find("mervane: error: " + message + "\n         " + where + "\n"), std::string::npos)
        << outcome.err;
    EXPECT_FALSE(std::filesystem::exists(out));
  }
};

TEST_F(WorkbookRefusals, NameTheCellThatIsNoNumber) {
  MadeBook{{{"1", "2"}, {"3", "n/a"}, {"5", "6"}}, {}}.write(book);
  expectRefusal(cluster("Data!A1:B3", "Data!D1"), "mTools component failure", "Data!B2: text \"n/a\" is not a number");
  MadeBook{{{"1", "2"}, {"#N/A", "n/a"}, {"5", "6"}}, {}}.write(book);
  expectRefusal(cluster("Data!A1:B3", "Data!D1"), "mTools component failure",
                "Data!A2: error \"#N/A\" is not a number, and neither is 1 cell behind it");
  MadeBook{{{"1", "2"}, {"3", "1e300"}}, {}}.write(book);
  const Outcome huge = cluster("Data!A1:B2", "Data!D1");
  EXPECT_EQ(huge.status, 1);
  EXPECT_NE(huge.err.find("is beyond the range of 32-bit numbers"), std::string::npos) << huge.err;
}

TEST_F(WorkbookRefusals, LookForBadCellsNoFurtherThanTheSheetIsUsed) {
  // All cells of this range would take a minute.
  MadeBook{{{"x", "2"}, {"3", "=1+1"}}, {}}.write(book);
  expectRefusal(cluster("Data!A1:ZZ65535", "Totals!D1"), "mTools component failure",
                "Data!A1: text \"x\" is not a number, and neither is 1 cell behind it");
}

TEST_F(WorkbookRefusals, SayThatAFormulaHasNoValue) {
  MadeBook{{{"1", "2"}, {"3", "=A1+1"}}, {}}.write(book);
  const Outcome outcome = cluster("Data!A1:B2", "Data!D1", {"--no-sort"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_NE(outcome.err.find("formula without a computed value"), std::string::npos) << outcome.err;
}

TEST_F(WorkbookRefusals, SayWhatTheFirstColumnHoldsThroughout) {
  MadeBook{{{"x", "y"}, {"5", "1"}, {"5", "2"}, {"5", "3"}, {"5", "4"}, {"5", "5"}}, {}}.write(book);
  expectRefusal(cluster("Data!A2:B6", "Data!D2"), "Cannot clusterize equal values",
                "first column A2:A6 holds 5 throughout");
  expectRefusal(cluster("Data!A2:B2", "Data!D2", {"--overwrite"}), "Cannot clusterize equal values",
                "the range A2:B2 has one row");
}

TEST_F(WorkbookRefusals, SayWhatIsWrongWithAReference) {
  MadeBook{{{"1", "2"}, {"3", "4"}}, {}}.write(book);
  const std::string message = "Invalid cell reference.";
  expectRefusal(cluster("Data!A1:B70000", "Data!D1"), message, "--inputs: row 70000 is above 65535");
  expectRefusal(cluster("Data!A1:B65536", "Data!D1"), message, "--inputs: row 65536 is above 65535");
  expectRefusal(cluster("Data!A0:B2", "Data!D1"), message, "--inputs: row 0 is below 1");
  expectRefusal(cluster("Date!A1:B2", "Data!D1"), message,
                "--inputs: there is no sheet \"Date\"; the nearest name is \"Data\"");
  expectRefusal(cluster("Data!A1:B2", "Total!D1"), message,
                "--outputs: there is no sheet \"Total\"; the nearest name is \"Totals\"");
  expectRefusal(cluster("Data!$A$1:$B$2", "Data!D1"), message,
                "--inputs: \"Data!$A$1:$B$2\" is not a reference such as Sheet1!A2:D151; give Data!A1:B2");
  expectRefusal(cluster("Data!A1:AAA2", "Data!D1"), message,
                "--inputs: \"Data!A1:AAA2\" is not a reference such as Sheet1!A2:D151; column AAA is beyond ZZ");
  expectRefusal(cluster("nonsense", "Data!D1"), message,
                "--inputs: \"nonsense\" is not a reference such as Sheet1!A2:D151");
  expectRefusal(cluster("Data!A1:B2", "D"), message, "--outputs: \"D\" is not a reference such as Sheet1!A2:D151");
}

TEST_F(WorkbookRefusals, OfferTheNumbersOfWholeRowsAndColumns) {
  MadeBook{{{"a title"}, {"x", "y"}, {"1", "2"}, {"3", "4"}}, {}}.write(book);
  expectRefusal(cluster("Data!A:B", "Data!D1"), "Invalid cell reference.",
                "--inputs: \"Data!A:B\" is not a reference such as Sheet1!A2:D151; give Data!A3:B4");
  expectRefusal(cluster("Data!3:4", "Data!D1"), "Invalid cell reference.",
                "--inputs: \"Data!3:4\" is not a reference such as Sheet1!A2:D151; give Data!A3:B4");
  expectRefusal(cluster("Totals!A:B", "Data!D1"), "Invalid cell reference.",
                "--inputs: \"Totals!A:B\" is not a reference such as Sheet1!A2:D151; row 1048576 is above 65535");
}

TEST_F(WorkbookRefusals, TheResultIsNamedAsTheKindOfWorkbookThatItIs) {
  MadeBook{{{"1", "2"}, {"3", "4"}}, {}}.write(book);
  for (const char* name : {"out.xlsm", "out.xls", "out.ods", "out.csv", "out"}) {
    const Outcome outcome = cluster("Data!A1:B2", "Data!D1", {"-o", folder.file(name)});
    EXPECT_EQ(outcome.status, 2) << name;
    EXPECT_NE(outcome.err.find("Let the name end in .xlsx;"), std::string::npos) << outcome.err;
    EXPECT_FALSE(std::filesystem::exists(folder.file(name)));
  }
  EXPECT_EQ(cluster("Data!A1:B2", "Data!D1", {"-o", folder.file("OUT.XLSX")}).status, 0);
}

TEST_F(WorkbookRefusals, KeepToTheLimitsOfTheDialog) {
  MadeBook{{{"1", "2"}, {"3", "4"}}, {}}.write(book);
  for (const std::vector<std::string>& flags : {std::vector<std::string>{"-k", "1"},
                                                {"-k", "999"},
                                                {"--epochs", "1"},
                                                {"--learning-rate", "0"},
                                                {"--learning-radius", "1"},
                                                {"--activation", "default"}}) {
    const Outcome outcome = cluster("Data!A1:B2", "Data!D1", flags);
    EXPECT_EQ(outcome.status, 2) << flags.front();
    EXPECT_NE(outcome.err.find("of a worksheet"), std::string::npos) << outcome.err;
  }
  EXPECT_FALSE(std::filesystem::exists(out));
}

TEST_F(WorkbookRefusals, FlagsOfOneKindOfInputAreRefusedForTheOther) {
  MadeBook{{{"1", "2"}, {"3", "4"}}, {}}.write(book);
  const Outcome columns = cluster("Data!A1:B2", "Data!D1", {"--columns", "1"});
  EXPECT_EQ(columns.status, 2);
  EXPECT_NE(columns.err.find("--columns is for data files"), std::string::npos) << columns.err;
  const Outcome sort = runProgram({"cluster", "-", "--no-sort"}, "1\n2\n");
  EXPECT_EQ(sort.status, 2);
  EXPECT_NE(sort.err.find("is for workbooks"), std::string::npos) << sort.err;
}

TEST_F(WorkbookRefusals, FilesThatAreNoWorkbooksAreFileTrouble) {
  folder.put("book.xlsx", "no zip at all");
  const Outcome outcome = cluster("Data!A1:B2", "Data!D1");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_NE(outcome.err.find("is no workbook"), std::string::npos) << outcome.err;
  std::filesystem::remove(book);
  EXPECT_EQ(cluster("Data!A1:B2", "Data!D1").status, 3);
}

TEST_F(WorkbookRefusals, ADamagedSheetIsFileTrouble) {
  MadeBook made{{{"1", "2"}, {"3", "4"}}, {}};
  made.totals = "<sheetData><row r=\"1\"><c r=\"damaged\"";
  made.write(book);
  const std::string advice = "\n         Let the spreadsheet repair the file and save it anew.\n";
  const std::vector<Outcome> outcomes{cluster("Totals!A1:B2", "Data!D1"), cluster("Data!A1:B2", "Totals!D1"),
                                      runProgram({"sheets", book}), runProgram({"sheets", book, "--format", "json"}),
                                      runProgram({"cluster", book, "-i", "Totals!A1:B2", "--dry-run"})};
  for (const Outcome& outcome : outcomes) {
    EXPECT_EQ(outcome.status, 3);
    EXPECT_NE(outcome.err.find(advice), std::string::npos) << outcome.err;
  }
}

TEST_F(WorkbookRefusals, AMissingFolderForTheOutputIsToldBeforeTheRun) {
  MadeBook{{{"1", "2"}, {"3", "4"}}, {}}.write(book);
  EXPECT_EQ(cluster("Data!A1:B2", "Data!D1", {"-o", folder.file("no/out.xlsx")}).status, 3);
}

TEST_F(WorkbookRefusals, MissingReferencesAreProposedAndTakenWithConsentOnly) {
  MadeBook{{{"x", "y"}, {"1", "2"}, {"3", "4"}}, {}}.write(book);
  const std::vector<std::string> bare{"cluster", book, "-k", "2", "-o", out};
  const Outcome refused = runProgram(bare);
  EXPECT_EQ(refused.status, 2);
  EXPECT_NE(refused.err.find("--inputs \"Data!A2:B3\" --outputs \"Data!E2\""), std::string::npos) << refused.err;
  EXPECT_FALSE(std::filesystem::exists(out));

  for (const auto& [answer, status] : {std::pair("n\n", 2), std::pair("y\n", 0)}) {
    Start start;
    start.arguments = bare;
    start.onTerminal = true;
    ProgramRun run(start);
    ASSERT_TRUE(run.waitForError("[y/N]"));
    run.type(answer);
    EXPECT_EQ(run.finish().status, status);
    EXPECT_EQ(std::filesystem::exists(out), status == 0);
  }
  std::filesystem::remove(out);
  EXPECT_EQ(runProgram({"cluster", book, "-k", "2", "-o", out, "--yes"}).status, 0);
  EXPECT_TRUE(std::filesystem::exists(out));
}

TEST_F(WorkbookRefusals, NoBlockOfNumbersMeansNoProposal) {
  MadeBook{{{"x", "y"}}, {}}.write(book);
  const Outcome outcome = runProgram({"cluster", book, "-o", out, "--yes"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_NE(outcome.err.find("has no one block of numbers to propose"), std::string::npos);
}

/// A text beside the inputs that looks like a formula and is none cannot be put back by sorting: the run itself fails.
class WorkbookFailures : public WorkbookRefusals {
 protected:
  void SetUp() override { MadeBook{{{"x", "y"}, {"1", "2", "&#61;1+"}, {"3", "4"}}, {}}.write(book); }
};

TEST_F(WorkbookFailures, AreReportedAndLeaveNothingSaved) {
  const Outcome outcome =
      cluster("Data!A2:B3", "Data!E2", {"--overwrite", "--log", folder.file("log"), "--on-error", "abort"});
  EXPECT_EQ(outcome.status, 4);
  EXPECT_NE(outcome.err.find("The call stack is:"), std::string::npos) << outcome.err;
  EXPECT_FALSE(std::filesystem::exists(out));
  EXPECT_NE(folder.get("log").find("The call stack is:"), std::string::npos);
}

TEST_F(WorkbookFailures, AreSavedWhereIgnored) {
  const Outcome outcome = cluster("Data!A2:B3", "Data!E2", {"--overwrite", "--on-error", "ignore"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_NE(outcome.err.find("ignored; the result may be wrong"), std::string::npos) << outcome.err;
  EXPECT_TRUE(std::filesystem::exists(out));
}

TEST_F(WorkbookFailures, AreAskedAboutOnATerminal) {
  Start start;
  start.arguments = {"cluster", book, "--inputs", "Data!A2:B3", "--outputs",  "Data!E2",
                     "-k",      "2",  "-o",       out,          "--overwrite"};
  start.onTerminal = true;
  ProgramRun run(start);
  ASSERT_TRUE(run.waitForError("[A]bort, [R]etry, [I]gnore?"));
  run.type("what\nr\na\na\na\na\na\na\n");
  const Outcome outcome = run.finish();
  EXPECT_EQ(outcome.status, 4);
  EXPECT_NE(outcome.err.find("trying again"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(out));
}

TEST_F(WorkbookRefusals, CallsAreLoggedLineByLine) {
  MadeBook{{{"x", "y"}, {"1", "2"}, {"3", "4"}}, {}}.write(book);
  EXPECT_EQ(cluster("Data!A2:B3", "Data!D2", {"--trace-calls", folder.file("calls")}).status, 0);
  const std::string calls = folder.get("calls");
  EXPECT_NE(calls.find(" --- Entered routine: MervaneClass3.Classifier3.Run\r\n"), std::string::npos);
  EXPECT_NE(calls.find(" --- Exited routine: MervaneClass3.Classifier3.Run\r\n"), std::string::npos);
  EXPECT_EQ(runProgram({"cluster", "-", "--clusters", "2", "--trace-calls", folder.file("data")}, "1\n2\n").status, 0);
  EXPECT_NE(folder.get("data").find("Entered routine: MervaneClass3.Classifier3.TrainNetwork"), std::string::npos);
  EXPECT_EQ(cluster("Data!A2:B3", "Data!E2", {"--overwrite", "--log", folder.file("no/log")}).status, 3);
}

class Settings : public WorkbookRefusals {
 protected:
  Outcome run(const std::vector<std::string>& arguments, const std::string& input = {}) {
    Start start;
    start.arguments = arguments;
    start.input = input;
    start.environment = {{"XDG_CONFIG_HOME", folder.file("config")}};
    return runProgram(start);
  }
};

TEST_F(Settings, AreSetListedAndForgotten) {
  EXPECT_EQ(run({"settings"}).out.find('='), std::string::npos);
  EXPECT_EQ(run({"settings", "set", "clusters", "5"}).status, 0);
  EXPECT_NE(run({"settings", "list"}).out.find("\nCLUSTERS=5\n"), std::string::npos);
  EXPECT_EQ(run({"settings", "set", "CLUSTERS", "1"}).status, 2);
  EXPECT_EQ(run({"settings", "set", "NONSENSE", "1"}).status, 2);
  EXPECT_EQ(run({"settings", "set", "CLUSTERS"}).status, 2);
  EXPECT_EQ(run({"settings", "clear"}).status, 0);
  EXPECT_EQ(run({"settings"}).out.find('='), std::string::npos);
}

TEST_F(Settings, TravelAsAFile) {
  EXPECT_EQ(run({"settings", "set", "EPOCHS", "250"}).status, 0);
  EXPECT_EQ(run({"settings", "export", folder.file("settings.json")}).status, 0);
  EXPECT_EQ(run({"settings", "clear"}).status, 0);
  EXPECT_EQ(run({"settings", "import", folder.file("settings.json")}).status, 0);
  EXPECT_NE(run({"settings"}).out.find("\nEPOCHS=250\n"), std::string::npos);
  // One bad value, and nothing is taken.
  EXPECT_EQ(run({"settings", "import", "-"}, R"({"values":{"CLUSTERS":"7","EPOCHS":"none"}})").status, 2);
  EXPECT_EQ(run({"settings"}).out.find("CLUSTERS=7"), std::string::npos);
  EXPECT_EQ(run({"settings", "import", "-"}, "no JSON").status, 1);
}

TEST_F(Settings, AreUsedAndKeptWithRememberedOnly) {
  MadeBook{{{"x", "y"}, {"1", "2"}, {"3", "4"}, {"8", "9"}}, {}}.write(book);
  EXPECT_EQ(run({"settings", "set", "INPUTS", "Data!A2:B4"}).status, 0);
  EXPECT_EQ(run({"settings", "set", "OUTPUTS", "Data!E2"}).status, 0);
  EXPECT_EQ(run({"settings", "set", "SORTCLUSTERS", "0"}).status, 0);
  const std::string before = run({"settings", "export"}).out;
  EXPECT_EQ(run({"cluster", book, "-o", out, "-q"}).status, 2);
  EXPECT_EQ(run({"cluster", book, "-i", "Data!A2:B4", "--outputs", "Data!G2", "-o", out, "-q"}).status, 0);
  EXPECT_EQ(run({"settings", "export"}).out, before);

  EXPECT_EQ(run({"cluster", book, "--remembered", "-k", "2", "-o", out, "-q"}).status, 0);
  EXPECT_EQ(WorkbookHost::open(out)->cellText("Data", {1, 5}), "Clusters");
  const std::string after = run({"settings"}).out;
  EXPECT_NE(after.find("\nCLUSTERS=2\n"), std::string::npos) << after;
  EXPECT_NE(after.find("\nSORTCLUSTERS=0\n"), std::string::npos) << after;
}

TEST_F(Settings, KeepThePlaceOfTheRealWindowThroughRunsWithoutOne) {
  MadeBook{{{"x", "y"}, {"1", "2"}, {"3", "4"}, {"8", "9"}}, {}}.write(book);
  EXPECT_EQ(run({"settings", "set", "LEFT", "1200"}).status, 0);
  const std::vector<std::string> clustering = {
      "cluster", book, "--remembered", "-i", "Data!A2:B4", "--outputs", "Data!G2", "-k", "2", "-o", out, "-q"};
  EXPECT_EQ(run(clustering).status, 0);
  const std::string after = run({"settings"}).out;
  EXPECT_NE(after.find("left=1200\n"), std::string::npos) << after;
  EXPECT_EQ(after.find("width="), std::string::npos) << after;
}

TEST_F(WorkbookRefusals, MoreClustersThanRowsAreRefusedBeforeTheRun) {
  MadeBook{{{"1", "2"}, {"3", "4.5"}, {"7", "6"}}, {}}.write(book);
  const Outcome outcome = cluster("Data!A1:B3", "Data!D1", {"-k", "4"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_NE(outcome.err.find("mervane: error: --clusters: 4 clusters cannot be made of 3 rows; give 2 to 3\n"),
            std::string::npos)
      << outcome.err;
  EXPECT_FALSE(std::filesystem::exists(out));
}

TEST_F(WorkbookRefusals, TheProposedNumbersAreWithoutColumnsThatCountTheRowsAndWithoutHeadings) {
  MadeBook{{{"No.", "length", "width", "note"},
            {"", "cm", "cm", ""},
            {"1", "5.5", "2", "a"},
            {"2", "3.5", "9", "b"},
            {"3", "4.5", "1", "c"}},
           {}}
      .write(book);
  Start start;
  start.arguments = {"cluster", book, "-k", "2", "-o", out, "--yes"};
  const Outcome outcome = runProgram(start);
  EXPECT_NE(outcome.err.find("Data!B3:C5"), std::string::npos) << outcome.err;
  start.arguments = {"sheets", book};
  EXPECT_NE(runProgram(start).out.find("numbers    Data!B3:C5\n"), std::string::npos);
}

}  // namespace
}  // namespace mervane::cli
