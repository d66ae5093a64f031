#include <gmock/gmock.h>

#include <cmath>

#include "tests/dialog/dialog_fixture.h"

namespace mervane::tests {

using platform::HeadlessOptionWindow;
using platform::WindowMeasure;
using testing::HasSubstr;

/// What is stored, and what becomes of what is found.
class Memory : public DialogTest {
 protected:
  void clusterize() {
    showing([](HeadlessOptionWindow& window) { window.press("CLASSIFY"); });
  }
};

TEST_F(Memory, ANewDialogFindsEveryOptionAsLeft) {
  showing([](HeadlessOptionWindow& window) {
    EXPECT_TRUE(window.edit("INPUTS", "Sheet1!B2:E151"));
    EXPECT_TRUE(window.edit("OUTPUTS", "Sheet1!G2"));
    EXPECT_TRUE(window.edit("CLUSTERS", "4"));
    EXPECT_TRUE(window.edit("LEARNINGRATE", "0.25"));
    EXPECT_TRUE(window.edit("EPOCHS", "250"));
    EXPECT_TRUE(window.edit("INITIALWEIGHTS", "0.125"));
    EXPECT_TRUE(window.edit("STARTLEARNINGRADIUS", "5"));
    window.choose("ACTIVATIONFUNCTION", "Hyperbolic tangent function");
    for (const char* key : {"USECONVEX", "SCALEVALUES", "AUTOFILTER", "AVERAGES", "MINIMUMS", "SETCOLORS",
                            "TABLETORANGE", "DATAGROUP", "OUTPUTGROUP", "SPLITMULTIPLE"}) {
      window.click(key);
    }
    window.press("CLASSIFY");
  });
  frmMain second;
  for (const platform::OptionItem& left : dialog.suiOptions()) {
    if (left.Key.empty()) continue;
    const platform::OptionItem& found = second.suiOptions().Item(left.Key);
    EXPECT_EQ(textOf(found.Value), textOf(left.Value)) << left.Key;
    EXPECT_EQ(found.Checked, left.Checked) << left.Key;
    EXPECT_EQ(found.Expanded, left.Expanded) << left.Key;
    EXPECT_EQ(found.SelectedCode, left.SelectedCode) << left.Key;
  }
  EXPECT_EQ(second.LearningRate(), "0.25");
}

TEST_F(Memory, ValuesAreStoredInTheirLiterals) {
  showing([](HeadlessOptionWindow& window) {
    window.click("SPLITMULTIPLE");
    window.click("DRAWCHARTS");
    window.click("NNPARAMSGROUP");
    window.press("CLASSIFY");
  });
  const MemoryKeyStore& store = *machine.keyStore;
  EXPECT_EQ(store.text(valuesPath, "INPUTS"), "");
  EXPECT_EQ(store.text(valuesPath, "CLUSTERS"), "3");
  EXPECT_EQ(store.text(valuesPath, "LEARNINGRATE"), "0.5");
  EXPECT_EQ(store.integer(valuesPath, "EPOCHS"), 100);
  EXPECT_EQ(store.text(valuesPath, "INITIALWEIGHTS"), "0.3");
  EXPECT_EQ(store.integer(valuesPath, "STARTLEARNINGRADIUS"), 3);
  EXPECT_EQ(store.text(valuesPath, "USECONVEX"), "1");
  EXPECT_EQ(store.text(valuesPath, "DRAWCHARTS"), "0");
  EXPECT_EQ(store.text(valuesPath, "ACTIVATIONFUNCTION"), "3");
  EXPECT_EQ(store.integer(valuesPath, "DATAGROUP"), 1);
  EXPECT_EQ(store.integer(valuesPath, "NNPARAMSGROUP"), 0);
  EXPECT_EQ(store.integer(valuesPath, "OUTPUTGROUP"), 0);
  EXPECT_EQ(store.integer(valuesPath, "OUTSPLIT"), 0);
  EXPECT_FALSE(store.text(valuesPath, "SPLITMULTIPLE").has_value());
  EXPECT_FALSE(store.text(valuesPath, "SPLITONE").has_value());
  EXPECT_FALSE(store.text(valuesPath, "DEFAULTS").has_value());
}

TEST_F(Memory, AFractionSurvivesThoughTheStoreKeepsNumbersWhole) {
  showing([](HeadlessOptionWindow& window) {
    EXPECT_TRUE(window.edit("LEARNINGRATE", "0.2"));
    window.press("CLASSIFY");
  });
  EXPECT_EQ(machine.keyStore->text(valuesPath, "LEARNINGRATE"), "0.2");
  EXPECT_EQ(dialog.LearningRate(), "0.2");
}

TEST_F(Memory, ASavedNumberStaysANumberInItsItem) {
  showing([](HeadlessOptionWindow& window) {
    EXPECT_TRUE(window.edit("LEARNINGRATE", "0.2"));
    EXPECT_TRUE(window.edit("CLUSTERS", "4"));
    window.press("CLASSIFY");
  });
  EXPECT_EQ(item("LEARNINGRATE").Value, Variant(0.2));
  EXPECT_EQ(item("CLUSTERS").Value, Variant(std::int32_t{4}));
}

TEST_F(Memory, ACodeSetFromOutsideIsStoredAsANumberAndFoundAgain) {
  dialog.ActivationFunction(ACTIVATE_FUNC_EXP);
  clusterize();
  EXPECT_EQ(machine.keyStore->integer(valuesPath, "ACTIVATIONFUNCTION"), 4);
  frmMain second;
  EXPECT_EQ(second.ActivationFunction(), ACTIVATE_FUNC_EXP);
  EXPECT_EQ(textOf(second.suiOptions().Item("ACTIVATIONFUNCTION").Value), "Log-Sigmoid Function");
}

TEST_F(Memory, StoredClustersOutsideTheOpenLimitsLoadAsThree) {
  for (const char* bad : {"1", "999", "", "many", "0", "-4", "99999999999"}) {
    machine.keyStore->putText(valuesPath, "CLUSTERS", bad);
    frmMain form;
    EXPECT_EQ(form.Clusters(), "3") << bad;
  }
  for (const char* good : {"2", "998"}) {
    machine.keyStore->putText(valuesPath, "CLUSTERS", good);
    frmMain form;
    EXPECT_EQ(form.Clusters(), good);
    EXPECT_EQ(form.suiOptions().Item("CLUSTERS").Value, Variant(good));
  }
  EXPECT_EQ(machine.screen->beeps, 0);
  EXPECT_TRUE(reports.empty());
}

TEST_F(Memory, AStoredTextThatPassesStaysThatText) {
  machine.keyStore->putText(valuesPath, "CLUSTERS", " 4.4 ");
  machine.keyStore->putText(valuesPath, "LEARNINGRATE", "2.5E-1");
  EXPECT_EQ(dialog.Clusters(), " 4.4 ");
  EXPECT_EQ(dialog.LearningRate(), "2.5E-1");
}

TEST_F(Memory, BadNumbersAreMendedSilentlyAndTheStoreIsNotTouched) {
  for (const char* key : {"LEARNINGRATE", "INITIALWEIGHTS", "EPOCHS", "STARTLEARNINGRADIUS", "CLUSTERS"}) {
    machine.keyStore->putText(valuesPath, key, "nonsense");
  }
  EXPECT_EQ(item("LEARNINGRATE").Value, Variant(0.5));
  EXPECT_EQ(item("INITIALWEIGHTS").Value, Variant(0.3));
  EXPECT_EQ(shown("EPOCHS"), "100");
  EXPECT_EQ(shown("STARTLEARNINGRADIUS"), "3");
  EXPECT_EQ(shown("CLUSTERS"), "3");
  EXPECT_EQ(machine.keyStore->text(valuesPath, "EPOCHS"), "nonsense");
  EXPECT_EQ(machine.screen->beeps, 0);
  EXPECT_TRUE(reports.empty());
}

TEST_F(Memory, AStoredCodeWithoutAChoiceKeepsTheDefaultsCaption) {
  machine.keyStore->putText(valuesPath, "ACTIVATIONFUNCTION", "9");
  EXPECT_EQ(static_cast<std::int32_t>(dialog.ActivationFunction()), 9);
  EXPECT_EQ(shown("ACTIVATIONFUNCTION"), "Zero-based Log-Sigmoid Function");
}

TEST_F(Memory, AStoredCodeBringsItsCaption) {
  machine.keyStore->putInteger(valuesPath, "ACTIVATIONFUNCTION", 1);
  EXPECT_EQ(shown("ACTIVATIONFUNCTION"), "Threshold function");
}

TEST_F(Memory, OnlyOneOpensAGroup) {
  machine.keyStore->putInteger(valuesPath, "DATAGROUP", 2);
  machine.keyStore->putInteger(valuesPath, "NNPARAMSGROUP", 0);
  machine.keyStore->putText(valuesPath, "OUTPUTGROUP", "1");
  EXPECT_FALSE(item("DATAGROUP").Expanded);
  EXPECT_FALSE(item("NNPARAMSGROUP").Expanded);
  EXPECT_TRUE(item("OUTPUTGROUP").Expanded);
}

TEST_F(Memory, AGroupStateThatIsNoNumberLeavesTheHeaderAsDesigned) {
  machine.keyStore->putText(valuesPath, "DATAGROUP", "open");
  machine.keyStore->putText(valuesPath, "OUTPUTGROUP", "open");
  EXPECT_TRUE(item("DATAGROUP").Expanded);
  EXPECT_FALSE(item("OUTPUTGROUP").Expanded);
}

TEST_F(Memory, AnUnknownLayoutLeavesTheRadioPairAsDesigned) {
  for (const std::int32_t layout : {5, -1, 2}) {
    machine.keyStore->putInteger(valuesPath, "OUTSPLIT", layout);
    frmMain form;
    EXPECT_TRUE(form.suiOptions().Item("SPLITONE").Checked);
    EXPECT_FALSE(form.suiOptions().Item("SPLITMULTIPLE").Checked);
  }
  machine.keyStore->putText(valuesPath, "OUTSPLIT", "wide");
  EXPECT_EQ(dialog.getOutputOption(), 1);
}

TEST_F(Memory, AStoredLayoutOfZeroMeansMultipleColumns) {
  machine.keyStore->putInteger(valuesPath, "OUTSPLIT", 0);
  EXPECT_TRUE(item("SPLITMULTIPLE").Checked);
  EXPECT_FALSE(item("SPLITONE").Checked);
}

TEST_F(Memory, AnyNumberButZeroInTheStoreReadsAsTrue) {
  machine.keyStore->putText(valuesPath, "USECONVEX", "-7");
  machine.keyStore->putText(valuesPath, "SCALEVALUES", "0");
  machine.keyStore->putInteger(valuesPath, "DRAWCHARTS", 32767);
  machine.keyStore->putText(valuesPath, "AVERAGES", "0.4");
  EXPECT_TRUE(dialog.UseConvex());
  EXPECT_FALSE(dialog.ScaleValues());
  EXPECT_TRUE(dialog.DrawCharts());
  EXPECT_FALSE(dialog.CalculateAverages());
  EXPECT_TRUE(reports.empty());
}

TEST_F(Memory, ACheckBoxThatCannotBeReadIsReportedAndComesOutFalse) {
  machine.keyStore->putText(valuesPath, "USECONVEX", "maybe");
  machine.keyStore->putInteger(valuesPath, "SETCOLORS", 32768);
  EXPECT_FALSE(dialog.UseConvex());
  EXPECT_FALSE(dialog.SetColors());
  EXPECT_TRUE(dialog.ScaleValues());
  ASSERT_EQ(reports.size(), 2U);
  EXPECT_THAT(reports[0], HasSubstr("Error: 13, (Type mismatch)"));
  EXPECT_THAT(reports[0], HasSubstr("in MervaneClass3.frmMain.GetBooleanSetting at line 0"));
  EXPECT_THAT(reports[0], HasSubstr("MervaneClass3.frmMain.GetBooleanSetting()\r\n"
                                    "                    MervaneClass3.frmMain.Form_Load()"));
  EXPECT_THAT(reports[1], HasSubstr("Error: 6, (Overflow)"));
}

TEST_F(Memory, ARetryReadsTheCheckBoxAgain) {
  machine.keyStore->putText(valuesPath, "USECONVEX", "maybe");
  answers = {"RETRY", "RETRY"};
  onReport = [&] {
    if (reports.size() == 2) machine.keyStore->putText(valuesPath, "USECONVEX", "1");
  };
  EXPECT_TRUE(dialog.UseConvex());
  EXPECT_EQ(reports.size(), 2U);
}

TEST_F(Memory, AnIgnoredCheckBoxComesOutFalse) {
  machine.keyStore->putText(valuesPath, "USECONVEX", "maybe");
  answers = {"IGNORE"};
  EXPECT_FALSE(dialog.UseConvex());
  EXPECT_EQ(reports.size(), 1U);
}

TEST_F(Memory, TheWindowComesBackWhereItWasEvenOffTheScreen) {
  machine.keyStore->putInteger(windowPath, "left", -90000);
  machine.keyStore->putInteger(windowPath, "top", 123456);
  machine.keyStore->putInteger(windowPath, "width", 5000);
  machine.keyStore->putInteger(windowPath, "height", 1);
  EXPECT_EQ(dialog.measure(WindowMeasure::left), -90000.0F);
  EXPECT_EQ(dialog.measure(WindowMeasure::top), 123456.0F);
  EXPECT_EQ(dialog.measure(WindowMeasure::width), 5000.0F);
  EXPECT_EQ(dialog.measure(WindowMeasure::height), 1.0F);
}

TEST_F(Memory, AWindowEdgeThatCannotBeReadStaysAsItIs) {
  const float designed = dialog.measure(WindowMeasure::width);
  dialog.Unload();
  machine.keyStore->putText(windowPath, "width", "broad");
  machine.keyStore->putInteger(windowPath, "left", 300);
  EXPECT_EQ(dialog.measure(WindowMeasure::width), designed);
  EXPECT_EQ(dialog.measure(WindowMeasure::left), 300.0F);
  EXPECT_TRUE(reports.empty());
}

TEST_F(Memory, WindowEdgesAreRoundedToWholeTwips) {
  dialog.setMeasure(WindowMeasure::left, 100.5F);
  dialog.setMeasure(WindowMeasure::top, 101.5F);
  clusterize();
  EXPECT_EQ(machine.keyStore->integer(windowPath, "left"), 100);
  EXPECT_EQ(machine.keyStore->integer(windowPath, "top"), 102);
}

TEST_F(Memory, ValuesOfForeignTypesAreTakenForMissing) {
  for (const char* key :
       {"INPUTS", "CLUSTERS", "LEARNINGRATE", "USECONVEX", "ACTIVATIONFUNCTION", "DATAGROUP", "OUTSPLIT"}) {
    machine.keyStore->put(MemoryKeyStore::user, valuesPath, key, 3, {1, 2, 3});
  }
  EXPECT_EQ(dialog.Inputs(), "");
  EXPECT_EQ(dialog.Clusters(), "3");
  EXPECT_EQ(dialog.LearningRate(), "0.5");
  EXPECT_TRUE(dialog.UseConvex());
  EXPECT_EQ(dialog.ActivationFunction(), ACTIVATE_FUNC_EXP05);
  EXPECT_TRUE(item("DATAGROUP").Expanded);
  EXPECT_EQ(dialog.getOutputOption(), 1);
  EXPECT_TRUE(reports.empty());
}

TEST_F(Memory, ATextWithoutItsEndLeavesTheItemAndFailsTheCheckBox) {
  machine.keyStore->put(MemoryKeyStore::user, valuesPath, "INPUTS", 1, {});
  machine.keyStore->put(MemoryKeyStore::user, valuesPath, "USECONVEX", 1, {});
  EXPECT_EQ(dialog.Inputs(), "");
  EXPECT_FALSE(dialog.UseConvex());
  ASSERT_EQ(reports.size(), 1U);
  EXPECT_THAT(reports[0], HasSubstr("CAppSettings component failure"));
}

TEST_F(Memory, AnotherLocalesNumbersAreStoredInItsOwnForm) {
  machine.services->locale = localeNamed("de-DE");
  showing([](HeadlessOptionWindow& window) {
    EXPECT_TRUE(window.edit("LEARNINGRATE", "0,2"));
    window.press("CLASSIFY");
  });
  EXPECT_EQ(machine.keyStore->text(valuesPath, "LEARNINGRATE"), "0,2");
  frmMain second;
  EXPECT_EQ(second.LearningRate(), "0,2");
}

}  // namespace mervane::tests
