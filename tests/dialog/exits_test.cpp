#include "tests/dialog/dialog_fixture.h"

namespace mervane::tests {

using platform::HeadlessOptionWindow;
using platform::WindowMeasure;

/// What each way out of a showing saves, sets and leaves behind.
class Exits : public DialogTest {
 protected:
  struct Outcome {
    bool valuesSaved;
    bool windowSaved;
    std::string tag;
    bool loaded;
    friend bool operator==(const Outcome&, const Outcome&) = default;
    friend void PrintTo(const Outcome& outcome, std::ostream* out) {
      *out << (outcome.valuesSaved ? "values " : "") << (outcome.windowSaved ? "window " : "") << outcome.tag
           << (outcome.loaded ? " loaded" : " unloaded");
    }
  };

  Outcome leave(platform::HeadlessUser::Act act) {
    showing([&](HeadlessOptionWindow& window) {
      EXPECT_TRUE(window.edit("EPOCHS", "44"));
      window.move(1500.0F, -300.0F);
      act(window);
      EXPECT_FALSE(window.isShown());
    });
    return {machine.keyStore->hasKey(MemoryKeyStore::user, valuesPath),
            machine.keyStore->hasKey(MemoryKeyStore::user, windowPath), dialog.Tag(), dialog.IsLoaded()};
  }
};

TEST_F(Exits, ClusterizeSavesEverythingAndHides) {
  EXPECT_EQ(leave([](auto& window) { window.press("CLASSIFY"); }), (Outcome{true, true, "CLASSIFY", true}));
  EXPECT_EQ(machine.keyStore->integer(valuesPath, "EPOCHS"), 44);
  EXPECT_EQ(machine.keyStore->integer(windowPath, "left"), 1500);
  EXPECT_EQ(machine.keyStore->integer(windowPath, "top"), -300);
}

TEST_F(Exits, CloseSavesTheWindowAloneAndHides) {
  EXPECT_EQ(leave([](auto& window) { window.press("CLOSE"); }), (Outcome{false, true, "CLOSE", true}));
}

TEST_F(Exits, BrowsingForInputsSavesNothingAndHides) {
  EXPECT_EQ(leave([](auto& window) { window.browse("INPUTS"); }), (Outcome{false, false, "INPUTS", true}));
}

TEST_F(Exits, BrowsingForOutputsSavesNothingAndHides) {
  EXPECT_EQ(leave([](auto& window) { window.browse("OUTPUTS"); }), (Outcome{false, false, "OUTPUTS", true}));
}

TEST_F(Exits, TheCloseBoxSavesNothingAndUnloads) {
  EXPECT_EQ(leave([](auto& window) { window.close(); }), (Outcome{false, false, "CLOSE", false}));
}

TEST_F(Exits, ABrowseBringsTheDialogBackWithAllItemsUntouched) {
  (void)leave([](auto& window) { window.browse("INPUTS"); });
  dialog.Inputs("Sheet1!A1:B9");
  showing([&](HeadlessOptionWindow& window) {
    EXPECT_EQ(shown("INPUTS"), "Sheet1!A1:B9");
    EXPECT_EQ(shown("EPOCHS"), "44");
    window.press("CLASSIFY");
  });
  EXPECT_EQ(machine.keyStore->text(valuesPath, "INPUTS"), "Sheet1!A1:B9");
}

TEST_F(Exits, TheCloseBoxAfterABrowseStillSaysCloseAndTheReferenceStaysUnsaved) {
  (void)leave([](auto& window) { window.browse("INPUTS"); });
  dialog.Inputs("Sheet1!A1:B9");
  showing([](HeadlessOptionWindow& window) { window.close(); });
  EXPECT_EQ(dialog.Tag(), "CLOSE");
  EXPECT_EQ(dialog.Inputs(), "");
}

TEST_F(Exits, EachExitOverwritesTheTag) {
  EXPECT_EQ(dialog.Tag(), "");
  (void)leave([](auto& window) { window.browse("OUTPUTS"); });
  EXPECT_EQ(dialog.Tag(), "OUTPUTS");
  (void)leave([](auto& window) { window.press("CLASSIFY"); });
  EXPECT_EQ(dialog.Tag(), "CLASSIFY");
  (void)leave([](auto& window) { window.press("CLOSE"); });
  EXPECT_EQ(dialog.Tag(), "CLOSE");
}

TEST_F(Exits, ClusterizeWritesTheStoreInItsOrderBeforeTheTagIsSet) {
  (void)dialog.Inputs();
  machine.journal->clear();
  showing([&](HeadlessOptionWindow& window) { window.press("CLASSIFY"); });
  std::vector<std::string> written;
  for (const std::string& entry : machine.journal->entries()) {
    constexpr std::string_view set = "keyStore.set ";
    if (entry.starts_with(set)) written.push_back(entry.substr(set.size()));
  }
  const std::vector<std::string> expected = {"INPUTS",
                                             "OUTPUTS",
                                             "CLUSTERS",
                                             "LEARNINGRATE",
                                             "EPOCHS",
                                             "INITIALWEIGHTS",
                                             "STARTLEARNINGRADIUS",
                                             "USECONVEX",
                                             "SCALEVALUES",
                                             "ACTIVATIONFUNCTION",
                                             "DATAGROUP",
                                             "NNPARAMSGROUP",
                                             "OUTPUTGROUP",
                                             "OUTSPLIT",
                                             "AUTOFILTER",
                                             "DRAWCHARTS",
                                             "AVERAGES",
                                             "WEIGHTEDAVERAGES",
                                             "MINIMUMS",
                                             "MAXIMUMS",
                                             "CLUSTERWEIGHTS",
                                             "SETCOLORS",
                                             "SORTCLUSTERS",
                                             "TABLETORANGE",
                                             "left",
                                             "top",
                                             "width",
                                             "height"};
  EXPECT_EQ(written, expected);
}

TEST_F(Exits, NoValueIsCheckedAgainOnTheWayOut) {
  dialog.Clusters("1");
  showing([](HeadlessOptionWindow& window) { window.press("CLASSIFY"); });
  EXPECT_EQ(machine.keyStore->text(valuesPath, "CLUSTERS"), "1");
  EXPECT_EQ(dialog.Tag(), "CLASSIFY");
  EXPECT_EQ(machine.screen->beeps, 0);
}

}  // namespace mervane::tests
