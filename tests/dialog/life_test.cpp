#include <gmock/gmock.h>

#include "tests/dialog/dialog_fixture.h"

namespace mervane::tests {

using Life = DialogTest;
using platform::HeadlessOptionWindow;
using platform::UnloadMode;
using platform::WindowMeasure;
using testing::ElementsAre;
using testing::HasSubstr;

TEST_F(Life, TheDialogIsNotLoadedBeforeItsFirstUse) {
  EXPECT_FALSE(dialog.IsLoaded());
  EXPECT_EQ(dialog.Tag(), "");
  (void)dialog.Classifier();
  EXPECT_FALSE(dialog.IsLoaded());
  EXPECT_TRUE(machine.journal->entries().empty());
}

TEST_F(Life, TheFirstUseOfAnItemOrOfTheWindowLoadsIt) {
  const std::function<void(frmMain&)> uses[] = {
      [](frmMain& form) { (void)form.Inputs(); },
      [](frmMain& form) { form.Outputs("A1"); },
      [](frmMain& form) { (void)form.getOutputOption(); },
      [](frmMain& form) { (void)form.measure(WindowMeasure::left); },
      [](frmMain& form) { form.Hide(); },
  };
  for (const auto& use : uses) {
    frmMain form;
    use(form);
    EXPECT_TRUE(form.IsLoaded());
  }
}

TEST_F(Life, AFirstRunOnAnEmptyStoreShowsTheDefaults) {
  EXPECT_EQ(shown("INPUTS"), "");
  EXPECT_EQ(shown("OUTPUTS"), "");
  EXPECT_EQ(shown("CLUSTERS"), "3");
  EXPECT_EQ(shown("LEARNINGRATE"), "0.5");
  EXPECT_EQ(shown("EPOCHS"), "100");
  EXPECT_EQ(shown("INITIALWEIGHTS"), "0.3");
  EXPECT_EQ(shown("STARTLEARNINGRADIUS"), "3");
  EXPECT_EQ(shown("ACTIVATIONFUNCTION"), "Zero-based Log-Sigmoid Function");
  EXPECT_EQ(dialog.ActivationFunction(), ACTIVATE_FUNC_EXP05);
  for (const auto& one : dialog.suiOptions()) {
    if (one.kind == platform::OptionKind::check) {
      EXPECT_TRUE(one.Checked) << one.Key;
    }
  }
  EXPECT_TRUE(item("SPLITONE").Checked);
  EXPECT_FALSE(item("SPLITMULTIPLE").Checked);
  EXPECT_TRUE(item("DATAGROUP").Expanded);
  EXPECT_TRUE(item("NNPARAMSGROUP").Expanded);
  EXPECT_FALSE(item("OUTPUTGROUP").Expanded);
  EXPECT_TRUE(reports.empty());
  EXPECT_FALSE(machine.keyStore->hasKey(MemoryKeyStore::user, "Software"));
}

TEST_F(Life, TheVersionLineTellsMajorMinorAndRevision) {
  EXPECT_EQ(item("DLLVERSION").Caption, "Mervane Library Version: 3.0.57");
}

TEST_F(Life, TheWindowIsTitledAndTold) {
  showing([&](HeadlessOptionWindow& window) {
    EXPECT_EQ(window.caption(), "Mervane Kelvash");
    EXPECT_EQ(&window.options(), &dialog.suiOptions());
    EXPECT_EQ(&window.buttons(), &dialog.suiButtons());
    const int before = window.redraws();
    dialog.Inputs("A1:B2");
    EXPECT_GT(window.redraws(), before);
  });
}

TEST_F(Life, LoadingReadsTheStoreInItsOrder) {
  (void)dialog.Inputs();
  std::vector<std::string> opened;
  machine.keyStore->put(MemoryKeyStore::user, valuesPath, "unrelated", 4, {1, 0, 0, 0});
  machine.keyStore->put(MemoryKeyStore::user, windowPath, "unrelated", 4, {1, 0, 0, 0});
  machine.journal->clear();
  frmMain second;
  (void)second.Inputs();
  for (const std::string& entry : machine.journal->entries()) {
    constexpr std::string_view query = "keyStore.query ";
    if (entry.starts_with(query)) opened.push_back(entry.substr(query.size()));
  }
  EXPECT_THAT(opened, ElementsAre("left", "top", "width", "height", "INPUTS", "OUTPUTS", "CLUSTERS", "LEARNINGRATE",
                                  "EPOCHS", "INITIALWEIGHTS", "STARTLEARNINGRADIUS", "USECONVEX", "SCALEVALUES",
                                  "ACTIVATIONFUNCTION", "DATAGROUP", "NNPARAMSGROUP", "OUTPUTGROUP", "OUTSPLIT",
                                  "AUTOFILTER", "DRAWCHARTS", "AVERAGES", "WEIGHTEDAVERAGES", "MINIMUMS", "MAXIMUMS",
                                  "CLUSTERWEIGHTS", "SETCOLORS", "SORTCLUSTERS", "TABLETORANGE"));
}

TEST_F(Life, BetweenShowingsTheDialogStaysLoadedWithItsItemsAsLeft) {
  showing([](HeadlessOptionWindow& window) {
    window.click("SETCOLORS");
    EXPECT_TRUE(window.edit("EPOCHS", "44"));
    window.press("CLOSE");
  });
  EXPECT_TRUE(dialog.IsLoaded());
  showing([&](HeadlessOptionWindow& window) {
    EXPECT_FALSE(item("SETCOLORS").Checked);
    EXPECT_EQ(shown("EPOCHS"), "44");
    window.press("CLOSE");
  });
  // A new dialog knows only the store.
  frmMain other;
  EXPECT_TRUE(other.SetColors());
  EXPECT_EQ(other.Epochs(), "100");
}

TEST_F(Life, TheCloseBoxUnloadsAndTheNextUseLoadsFromTheStore) {
  machine.keyStore->putText(valuesPath, "EPOCHS", "55");
  showing([&](HeadlessOptionWindow& window) {
    EXPECT_TRUE(window.edit("EPOCHS", "44"));
    window.click("SETCOLORS");
    window.close();
    EXPECT_FALSE(window.isShown());
  });
  EXPECT_FALSE(dialog.IsLoaded());
  EXPECT_EQ(dialog.Tag(), "CLOSE");
  EXPECT_EQ(dialog.Epochs(), "55");
  EXPECT_TRUE(dialog.SetColors());
  EXPECT_TRUE(dialog.IsLoaded());
  EXPECT_EQ(dialog.Tag(), "CLOSE");
}

TEST_F(Life, TheOwnerIsLetGoAtTheUnloading) {
  auto owner = std::make_shared<int>(1);
  dialog.Classifier(owner);
  showing([](HeadlessOptionWindow& window) { window.close(); });
  EXPECT_EQ(owner.use_count(), 1);
  EXPECT_EQ(dialog.Classifier(), nullptr);
}

TEST_F(Life, OnlyTheUsersOwnCloseRequestSetsTheTag) {
  for (const UnloadMode mode : {UnloadMode::ownCode, UnloadMode::sessionEnd, UnloadMode::taskManager}) {
    frmMain form;
    showing(form, [](HeadlessOptionWindow& window) { window.browse("INPUTS"); });
    showing(form, [mode](HeadlessOptionWindow& window) { window.close(mode); });
    EXPECT_EQ(form.Tag(), "INPUTS");
    EXPECT_FALSE(form.IsLoaded());
  }
}

TEST_F(Life, UnloadingFromCodeLeavesTheTag) {
  showing([](HeadlessOptionWindow& window) { window.browse("OUTPUTS"); });
  dialog.Unload();
  EXPECT_FALSE(dialog.IsLoaded());
  EXPECT_EQ(dialog.Tag(), "OUTPUTS");
  dialog.Unload();  // Nothing is left to unload.
  EXPECT_FALSE(dialog.IsLoaded());
}

TEST_F(Life, UnloadingFromCodeEndsAShowing) {
  showing([&](HeadlessOptionWindow& window) {
    dialog.Unload();
    EXPECT_FALSE(window.isShown());
  });
  EXPECT_FALSE(dialog.IsLoaded());
}

TEST_F(Life, AShownDialogCannotBeShownAgain) {
  showing([&](HeadlessOptionWindow& window) {
    EXPECT_THROW(dialog.Show(), Failure);
    EXPECT_TRUE(window.isShown());
    window.press("CLOSE");
  });
  EXPECT_EQ(dialog.Tag(), "CLOSE");
}

TEST_F(Life, TwoDialogsShareNothingButTheStore) {
  frmMain other;
  dialog.Inputs("A1:A9");
  EXPECT_EQ(other.Inputs(), "");
  showing([](HeadlessOptionWindow& window) { window.press("CLASSIFY"); });
  EXPECT_EQ(other.Inputs(), "");
  frmMain third;
  EXPECT_EQ(third.Inputs(), "A1:A9");
}

TEST_F(Life, AFailureToCreateTheSettingsIsReportedAndTheDialogIsUsable) {
  machine.services->keyStore = nullptr;
  EXPECT_EQ(dialog.Clusters(), "3");
  EXPECT_EQ(dialog.Epochs(), "100");
  // Each of the twelve check boxes reports its own failure, under its own procedure; the texts are skipped.
  ASSERT_EQ(reports.size(), 12U);
  EXPECT_THAT(reports.front(), HasSubstr("CAppSettings component failure"));
  EXPECT_THAT(reports.front(), HasSubstr("in MervaneClass3.frmMain.GetBooleanSetting at line 0"));
}

TEST_F(Life, ACallStackAfterLoadingIsEmptyAgain) {
  (void)dialog.Inputs();
  EXPECT_EQ(globals::errorHandler().HandleError({}, Failure(1, "probe")), ehrAbort);
  ASSERT_EQ(reports.size(), 1U);
  EXPECT_THAT(reports.front(), HasSubstr("in Unknown at line 0"));
}

}  // namespace mervane::tests
