#include <gmock/gmock.h>

#include "mervane/convert.h"
#include "tests/flow/desk.h"

namespace mervane::tests {
namespace {

using platform::HeadlessOptionWindow;
using testing::ElementsAre;
using testing::HasSubstr;

/// Every option that a user can see: what the items hold, and whether boxes are checked and groups open.
std::vector<std::string> optionsOf(const HeadlessOptionWindow& window) {
  std::vector<std::string> all;
  for (const platform::OptionItem& item : window.options()) {
    if (item.Key.empty()) continue;
    all.push_back(item.Key + " " + toText(item.Value, englishLocale()) + (item.Checked ? " checked" : "") +
                  (item.Expanded ? " open" : "") + " " + toText(item.SelectedCode, englishLocale()));
  }
  return all;
}

TEST(DialogLoop, BrowsesPicksBeepsClustersAndIsRememberedByTheNextDialog) {
  Desk desk;
  std::vector<std::string> left;
  {
    const auto classifier = desk.newComponent();
    desk.user->atNextShowing([](HeadlessOptionWindow& window) { window.browse("INPUTS"); });
    desk.user->atNextShowing([](HeadlessOptionWindow& window) { window.browse("OUTPUTS"); });
    desk.user->atNextShowing([&](HeadlessOptionWindow& window) {
      EXPECT_EQ(toText(window.options().Item("INPUTS").Value, englishLocale()), "Iris!B2:E151");
      EXPECT_EQ(toText(window.options().Item("OUTPUTS").Value, englishLocale()), "Iris!G2");
      EXPECT_EQ(desk.machine.screen->beeps, 0);
      EXPECT_FALSE(window.edit("CLUSTERS", "1"));
      EXPECT_EQ(desk.machine.screen->beeps, 1);
      EXPECT_TRUE(window.edit("CLUSTERS", "4"));
      EXPECT_TRUE(window.edit("LEARNINGRATE", "0.4"));
      EXPECT_TRUE(window.edit("EPOCHS", "50"));
      EXPECT_TRUE(window.edit("INITIALWEIGHTS", "0.2"));
      EXPECT_TRUE(window.edit("STARTLEARNINGRADIUS", "2"));
      window.choose("ACTIVATIONFUNCTION", "Hyperbolic tangent function");
      for (const char* key : {"USECONVEX", "OUTPUTGROUP", "SPLITMULTIPLE", "MINIMUMS", "SETCOLORS", "TABLETORANGE"}) {
        window.click(key);
      }
      left = optionsOf(window);
      window.press("CLASSIFY");
    });
    EXPECT_THAT(Desk::playLoop(*classifier), ElementsAre("INPUTS", "OUTPUTS", "CLOSE"));
    classifier->UnloadfrmMain();
  }
  EXPECT_EQ(desk.machine.screen->beeps, 1);
  EXPECT_TRUE(desk.reports.empty());
  EXPECT_TRUE(desk.machine.messageBox->shown.empty());
  // The results are in the workbook, and in its file once it is saved.
  desk.book->save(desk.file);
  const auto saved = workbook::WorkbookHost::open(desk.file);
  EXPECT_EQ(saved->cellText("Iris", {1, 10}), "Cluster 4");
  EXPECT_EQ(saved->cellText("Iris", {152, 6}), "Cluster 1 average");
  EXPECT_EQ(saved->cellText("Iris", {160, 6}), "Cluster 1 maximum");  // no minimums

  const auto next = desk.newComponent();
  desk.user->atNextShowing([&](HeadlessOptionWindow& window) {
    EXPECT_EQ(optionsOf(window), left);
    window.press("CLOSE");
  });
  EXPECT_EQ(next->ShowMainForm(), "CLOSE");
  EXPECT_EQ(desk.user->actsLeft(), 0U);
  next->UnloadfrmMain();
}

TEST(DialogLoop, BadDataAreToldInAMessageAndTheDialogComesBackAsItWas) {
  Desk desk;
  const auto classifier = desk.newComponent();
  desk.user->atNextShowing([](HeadlessOptionWindow& window) {
    EXPECT_TRUE(window.edit("INPUTS", "Iris!A2:E151"));
    EXPECT_TRUE(window.edit("OUTPUTS", "Iris!G2"));
    EXPECT_TRUE(window.edit("CLUSTERS", "5"));
    window.press("CLASSIFY");
  });
  desk.user->atNextShowing([](HeadlessOptionWindow& window) {
    EXPECT_EQ(toText(window.options().Item("CLUSTERS").Value, englishLocale()), "5");
    EXPECT_TRUE(window.edit("INPUTS", "Iris!B2:E151"));
    window.press("CLASSIFY");
  });
  EXPECT_THAT(Desk::playLoop(*classifier), ElementsAre("INVALIDDATA", "CLOSE"));
  ASSERT_EQ(desk.machine.messageBox->shown.size(), 1U);
  EXPECT_EQ(desk.machine.messageBox->shown[0].text, "mTools component failure");
  EXPECT_TRUE(desk.reports.empty());
  EXPECT_EQ(desk.book->cellText("Iris", {1, 7}), "Clusters");
  classifier->UnloadfrmMain();
}

/// Takes the workbook's file away at the moment at which the pointer becomes an hourglass.
class VanishingAtHourglass final : public platform::Screen {
 public:
  VanishingAtHourglass(std::filesystem::path from, std::filesystem::path to)
      : from_(std::move(from)), to_(std::move(to)) {}
  void pointer(std::int32_t shape) override {
    if (shape == pointerHourglass) std::filesystem::rename(from_, to_);
  }
  void beep() override {}

 private:
  std::filesystem::path from_;
  std::filesystem::path to_;
};

class VanishedWorkbook : public testing::Test {
 protected:
  void SetUp() override {
    desk.machine.services->screen = std::make_shared<VanishingAtHourglass>(desk.file, away);
    desk.user->habit([](HeadlessOptionWindow& window) {
      EXPECT_TRUE(window.edit("INPUTS", "Iris!B2:E151"));
      EXPECT_TRUE(window.edit("OUTPUTS", "Iris!G2"));
      window.press("CLASSIFY");
    });
  }

  Desk desk;
  std::filesystem::path away = desk.folder / "elsewhere.xlsx";
};

TEST_F(VanishedWorkbook, IsReportedAndRetrySucceedsAfterPuttingItBack) {
  desk.atReport = [&](platform::HeadlessErrorWindow::View& view) {
    std::filesystem::rename(away, desk.file);
    view.click("RETRY");
  };
  const auto classifier = desk.newComponent();
  EXPECT_EQ(classifier->ShowMainForm(), "CLOSE");
  ASSERT_EQ(desk.reports.size(), 1U);
  EXPECT_EQ(desk.reports[0],
            "3/14/2005 - 3:07:09 PM\r\n"
            "\tError: 1004, (The workbook has gone)\r\n"
            "\tin MervaneClass3.COutputFormatting.TotalRange at line 0\r\n"
            "\r\n"
            "The call stack is:\r\n"
            "                    MervaneClass3.COutputFormatting.TotalRange()\r\n"
            "                    MervaneClass3.Classifier3.StoreResultsToExcel()\r\n"
            "                    MervaneClass3.Classifier3.Classify()");
  EXPECT_EQ(desk.book->cellText("Iris", {1, 7}), "Clusters");
  EXPECT_EQ(desk.book->cellText("Iris", {166, 6}), "Cluster 3 weight (%)");
  classifier->UnloadfrmMain();
}

TEST_F(VanishedWorkbook, IsReportedOnceForEachProcedureThatIsAborted) {
  desk.atReport = [](platform::HeadlessErrorWindow::View& view) { view.click("ABORT"); };
  const auto classifier = desk.newComponent();
  EXPECT_EQ(classifier->ShowMainForm(), "CLOSE");
  ASSERT_FALSE(desk.reports.empty());
  EXPECT_THAT(desk.reports[0], HasSubstr("(The workbook has gone)"));
  EXPECT_TRUE(desk.book->written().empty());
  classifier->UnloadfrmMain();
}

TEST(DialogLoop, AWorkbookThatIsGoneAlreadyAtTheChecksIsRefusedByThem) {
  Desk desk;
  const std::filesystem::path away = desk.folder / "elsewhere.xlsx";
  const auto classifier = desk.newComponent();
  desk.user->atNextShowing([&](HeadlessOptionWindow& window) {
    EXPECT_TRUE(window.edit("INPUTS", "Iris!B2:E151"));
    EXPECT_TRUE(window.edit("OUTPUTS", "Iris!G2"));
    std::filesystem::rename(desk.file, away);
    window.press("CLASSIFY");
  });
  desk.user->atNextShowing([&](HeadlessOptionWindow& window) {
    std::filesystem::rename(away, desk.file);
    window.press("CLASSIFY");
  });
  EXPECT_THAT(Desk::playLoop(*classifier), ElementsAre("INVALIDDATA", "CLOSE"));
  EXPECT_EQ(desk.book->cellText("Iris", {1, 7}), "Clusters");
  classifier->UnloadfrmMain();
}

}  // namespace
}  // namespace mervane::tests
