#include <functional>
#include <map>
#include <memory>

#include "tests/dialog/dialog_fixture.h"

namespace mervane::tests {

using Accessors = DialogTest;

TEST_F(Accessors, TextsGoIntoTheirItemsAsTheyStand) {
  struct Row {
    const char* key;
    void (frmMain::*set)(const std::string&);
    std::string (frmMain::*get)();
  };
  const Row rows[] = {
      {"INPUTS", &frmMain::Inputs, &frmMain::Inputs},
      {"OUTPUTS", &frmMain::Outputs, &frmMain::Outputs},
      {"CLUSTERS", &frmMain::Clusters, &frmMain::Clusters},
      {"LEARNINGRATE", &frmMain::LearningRate, &frmMain::LearningRate},
      {"EPOCHS", &frmMain::Epochs, &frmMain::Epochs},
      {"INITIALWEIGHTS", &frmMain::InitialWeights, &frmMain::InitialWeights},
      {"STARTLEARNINGRADIUS", &frmMain::StartLearningRadius, &frmMain::StartLearningRadius},
  };
  for (const Row& row : rows) {
    (dialog.*row.set)("anything, even this");
    EXPECT_EQ(item(row.key).Value, Variant("anything, even this")) << row.key;
    EXPECT_EQ((dialog.*row.get)(), "anything, even this") << row.key;
  }
}

TEST_F(Accessors, ANumberInAnItemComesBackAsItsText) {
  EXPECT_EQ(item("LEARNINGRATE").Value, Variant(0.5));
  EXPECT_EQ(dialog.LearningRate(), "0.5");
  EXPECT_EQ(dialog.Epochs(), "100");
}

TEST_F(Accessors, ANumberInAnItemComesBackInTheUsersForm) {
  machine.services->locale = localeNamed("de-DE");
  EXPECT_EQ(dialog.LearningRate(), "0,5");
}

TEST_F(Accessors, CheckBoxesAreReadAndWrittenByTheirKeys) {
  const std::map<std::string, std::function<bool()>> getters = {
      {"USECONVEX", [&] { return dialog.UseConvex(); }},
      {"SCALEVALUES", [&] { return dialog.ScaleValues(); }},
      {"DRAWCHARTS", [&] { return dialog.DrawCharts(); }},
      {"AVERAGES", [&] { return dialog.CalculateAverages(); }},
      {"WEIGHTEDAVERAGES", [&] { return dialog.CalculateWeightedAverages(); }},
      {"MINIMUMS", [&] { return dialog.CalculateMinimums(); }},
      {"MAXIMUMS", [&] { return dialog.CalculateMaximums(); }},
      {"CLUSTERWEIGHTS", [&] { return dialog.CalculateClusterWeight(); }},
      {"SETCOLORS", [&] { return dialog.SetColors(); }},
      {"AUTOFILTER", [&] { return dialog.SetAutofilter(); }},
      {"SORTCLUSTERS", [&] { return dialog.SortByClusters(); }},
  };
  for (const auto& [changedKey, unused] : getters) {
    // The close box unloads, so the next turn begins with all of them checked.
    showing([&, turned = changedKey](auto& window) {
      window.click(turned);
      for (const auto& [key, get] : getters) EXPECT_EQ(get(), key != turned) << turned << " " << key;
    });
  }
  dialog.UseConvex(false);
  EXPECT_FALSE(item("USECONVEX").Checked);
  dialog.ScaleValues(false);
  EXPECT_FALSE(item("SCALEVALUES").Checked);
}

TEST_F(Accessors, SettingTheActivationFunctionStoresTheNumberAndShowsItsCaption) {
  dialog.ActivationFunction(ACTIVATE_FUNC_TANH);
  EXPECT_EQ(item("ACTIVATIONFUNCTION").SelectedCode, Variant(std::int32_t{2}));
  EXPECT_EQ(shown("ACTIVATIONFUNCTION"), "Hyperbolic tangent function");
  EXPECT_EQ(dialog.ActivationFunction(), ACTIVATE_FUNC_TANH);
}

TEST_F(Accessors, ACodeWithoutAChoiceIsKeptUnderTheOldCaption) {
  dialog.ActivationFunction(static_cast<enuActivationFunction>(77));
  EXPECT_EQ(static_cast<std::int32_t>(dialog.ActivationFunction()), 77);
  EXPECT_EQ(shown("ACTIVATIONFUNCTION"), "Zero-based Log-Sigmoid Function");
  dialog.ActivationFunction(ACTIVATE_FUNC_DEFAULT);
  EXPECT_EQ(dialog.ActivationFunction(), ACTIVATE_FUNC_DEFAULT);
}

TEST_F(Accessors, ACodeThatIsNoNumberFailsInTheCallersContext) {
  machine.keyStore->putText(valuesPath, "ACTIVATIONFUNCTION", "sigmoid");
  try {
    (void)dialog.ActivationFunction();
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.number(), runtime::typeMismatch.number);
  }
  EXPECT_TRUE(reports.empty());
}

TEST_F(Accessors, TheOutputLayoutLooksAtTheMultipleColumnsItemAlone) {
  EXPECT_EQ(dialog.getOutputOption(), 1);
  EXPECT_TRUE(dialog.SplitToOneColumn());
  showing([&](auto& window) {
    window.click("SPLITMULTIPLE");
    EXPECT_EQ(dialog.getOutputOption(), 0);
    EXPECT_FALSE(dialog.SplitToOneColumn());
  });
}

TEST_F(Accessors, WithNeitherRadioItemCheckedTheLayoutIsOneColumn) {
  // Such a state comes about where the store says nothing and the item is unchecked from outside.
  auto& one = const_cast<platform::OptionItem&>(item("SPLITONE"));
  one.Checked = false;
  EXPECT_EQ(dialog.getOutputOption(), 1);
}

TEST_F(Accessors, TheOwnerIsKeptUntilItIsTakenAway) {
  auto owner = std::make_shared<int>(1);
  dialog.Classifier(owner);
  EXPECT_EQ(dialog.Classifier(), owner);
  EXPECT_EQ(owner.use_count(), 2);
  dialog.Classifier(nullptr);
  EXPECT_EQ(owner.use_count(), 1);
  EXPECT_FALSE(dialog.IsLoaded());
}

TEST_F(Accessors, WithoutAWindowFactoryTheFirstUseFails) {
  machine.services->createOptionWindow = nullptr;
  EXPECT_THROW((void)dialog.Inputs(), Failure);
  EXPECT_FALSE(dialog.IsLoaded());
}

}  // namespace mervane::tests
