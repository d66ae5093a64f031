#include <map>

#include "tests/dialog/dialog_fixture.h"

namespace mervane::tests {

using platform::HeadlessOptionWindow;

/// Entries are typed into a shown dialog, one after the other.
class Editing : public DialogTest {
 protected:
  struct Entry {
    const char* key;
    const char* text;
    Variant stored;  ///< empty for a refused entry
  };

  void type(std::initializer_list<Entry> entries) {
    showing([&](HeadlessOptionWindow& window) {
      for (const Entry& entry : entries) {
        const Variant before = item(entry.key).Value;
        const int beepsBefore = machine.screen->beeps;
        const bool refused = entry.stored.isEmpty();
        EXPECT_EQ(window.edit(entry.key, entry.text), !refused) << entry.key << " " << entry.text;
        EXPECT_EQ(machine.screen->beeps - beepsBefore, refused ? 1 : 0) << entry.key << " " << entry.text;
        EXPECT_EQ(item(entry.key).Value, refused ? before : entry.stored) << entry.key << " " << entry.text;
      }
    });
  }
};

TEST_F(Editing, ClustersAreWholeNumbersFromTwoTo998) {
  type({{"CLUSTERS", "2", std::int32_t{2}},
        {"CLUSTERS", "1", {}},
        {"CLUSTERS", "998", std::int32_t{998}},
        {"CLUSTERS", "999", {}},
        {"CLUSTERS", "0", {}},
        {"CLUSTERS", "-5", {}},
        {"CLUSTERS", "", {}},
        {"CLUSTERS", "three", {}}});
}

TEST_F(Editing, FractionsOfWholeNumberItemsAreRoundedBeforeTheyAreCompared) {
  type({{"CLUSTERS", "1.6", std::int32_t{2}},
        {"CLUSTERS", "1.4", {}},
        {"CLUSTERS", "1.5", std::int32_t{2}},
        {"CLUSTERS", "2.5", std::int32_t{2}},
        {"EPOCHS", "3.7", std::int32_t{4}},
        {"CLUSTERS", "998.4", std::int32_t{998}},
        {"CLUSTERS", "998.5", std::int32_t{998}},
        {"CLUSTERS", "998.6", {}}});
}

TEST_F(Editing, EpochsEndBelow99999) {
  type({{"EPOCHS", "99998", std::int32_t{99998}},
        {"EPOCHS", "99999", {}},
        {"EPOCHS", "2", std::int32_t{2}},
        {"EPOCHS", "1", {}},
        {"EPOCHS", "9999999999", {}}});
}

TEST_F(Editing, TheStartLearningRadiusHasTheLimitsOfTheClustersAndNoTieToThem) {
  type({{"CLUSTERS", "2", std::int32_t{2}},
        {"STARTLEARNINGRADIUS", "998", std::int32_t{998}},
        {"STARTLEARNINGRADIUS", "999", {}},
        {"STARTLEARNINGRADIUS", "1", {}},
        {"STARTLEARNINGRADIUS", "2", std::int32_t{2}}});
}

TEST_F(Editing, RatesLieStrictlyInsideTheirLimits) {
  for (const char* key : {"LEARNINGRATE", "INITIALWEIGHTS"}) {
    type({{key, "0.5", 0.5},
          {key, "0.00001", {}},
          {key, "0.99999", {}},
          {key, "0.000011", 0.000011},
          {key, "0.999989", 0.999989},
          {key, "0", {}},
          {key, "1", {}},
          {key, "", {}},
          {key, "fast", {}},
          {key, "1E-2", 0.01},
          {key, " .25 ", 0.25}});
  }
}

TEST_F(Editing, NumbersAreReadInTheUsersForm) {
  machine.services->locale = localeNamed("de-DE");
  type({{"LEARNINGRATE", "0,25", 0.25}, {"EPOCHS", "1.000", std::int32_t{1000}}});
  EXPECT_TRUE(reports.empty());
}

TEST_F(Editing, RangesTakeAnyTextWithoutALook) {
  type({{"INPUTS", "Sheet1!B2:C10", "Sheet1!B2:C10"}, {"OUTPUTS", "nonsense", "nonsense"}, {"INPUTS", "", ""}});
}

TEST_F(Editing, ARefusedEntryTouchesNeitherTheStoreNorAnotherItem) {
  showing([&](HeadlessOptionWindow& window) {
    std::map<std::string, Variant> before;
    for (const auto& one : window.options()) before[one.Key] = one.Value;
    EXPECT_FALSE(window.edit("CLUSTERS", "1"));
    for (const auto& one : window.options()) EXPECT_EQ(one.Value, before[one.Key]) << one.Key;
  });
  EXPECT_FALSE(machine.keyStore->hasKey(MemoryKeyStore::user, valuesPath));
}

TEST_F(Editing, AChoiceBringsItsCode) {
  showing([&](HeadlessOptionWindow& window) {
    window.choose("ACTIVATIONFUNCTION", "Threshold function");
    EXPECT_EQ(item("ACTIVATIONFUNCTION").SelectedCode, Variant("1"));
    window.choose("ACTIVATIONFUNCTION", "Log-Sigmoid Function");
    EXPECT_EQ(item("ACTIVATIONFUNCTION").SelectedCode, Variant("4"));
    EXPECT_EQ(dialog.ActivationFunction(), ACTIVATE_FUNC_EXP);
  });
}

TEST_F(Editing, ACaptionWithoutAChoiceChangesNoCode) {
  showing([&](HeadlessOptionWindow& window) {
    window.choose("ACTIVATIONFUNCTION", "Sine");
    EXPECT_EQ(item("ACTIVATIONFUNCTION").SelectedCode, Variant("3"));
  });
}

TEST_F(Editing, TheRadioPairSwitches) {
  showing([&](HeadlessOptionWindow& window) {
    window.click("SPLITMULTIPLE");
    EXPECT_TRUE(item("SPLITMULTIPLE").Checked);
    EXPECT_FALSE(item("SPLITONE").Checked);
    window.click("SPLITMULTIPLE");  // Again: the same state.
    EXPECT_TRUE(item("SPLITMULTIPLE").Checked);
    EXPECT_FALSE(item("SPLITONE").Checked);
    window.click("SPLITONE");
    EXPECT_FALSE(item("SPLITMULTIPLE").Checked);
    EXPECT_TRUE(item("SPLITONE").Checked);
  });
}

TEST_F(Editing, ClicksTurnCheckBoxesAndGroupsAndLeaveOtherItemsAlone) {
  showing([&](HeadlessOptionWindow& window) {
    window.click("SETCOLORS");
    EXPECT_FALSE(item("SETCOLORS").Checked);
    window.click("SETCOLORS");
    EXPECT_TRUE(item("SETCOLORS").Checked);
    window.click("OUTPUTGROUP");
    EXPECT_TRUE(item("OUTPUTGROUP").Expanded);
    window.click("DATAGROUP");
    EXPECT_FALSE(item("DATAGROUP").Expanded);
    for (const char* key : {"INPUTS", "CLUSTERS", "DLLVERSION", "ACTIVATIONFUNCTION"}) {
      const Variant before = item(key).Value;
      window.click(key);
      EXPECT_EQ(item(key).Value, before);
      EXPECT_FALSE(item(key).Checked);
      EXPECT_FALSE(item(key).Expanded);
    }
    EXPECT_TRUE(window.isShown());
  });
}

TEST_F(Editing, StatisticsAndChartsStayAvailableUnderBothLayouts) {
  showing([&](HeadlessOptionWindow& window) {
    for (const char* layout : {"SPLITMULTIPLE", "SPLITONE"}) {
      window.click(layout);
      for (const char* key : {"AVERAGES", "WEIGHTEDAVERAGES", "MINIMUMS", "MAXIMUMS", "CLUSTERWEIGHTS", "DRAWCHARTS"}) {
        EXPECT_TRUE(item(key).Checked);
        window.click(key);
        EXPECT_FALSE(item(key).Checked);
        window.click(key);
      }
    }
  });
}

TEST_F(Editing, DefaultsPutTheNetworkParametersBackAndNothingElse) {
  showing([&](HeadlessOptionWindow& window) {
    EXPECT_TRUE(window.edit("INPUTS", "A1:B9"));
    EXPECT_TRUE(window.edit("OUTPUTS", "D1"));
    EXPECT_TRUE(window.edit("CLUSTERS", "7"));
    EXPECT_TRUE(window.edit("LEARNINGRATE", "0.1"));
    EXPECT_TRUE(window.edit("EPOCHS", "9"));
    EXPECT_TRUE(window.edit("INITIALWEIGHTS", "0.9"));
    EXPECT_TRUE(window.edit("STARTLEARNINGRADIUS", "9"));
    window.choose("ACTIVATIONFUNCTION", "Threshold function");
    window.click("USECONVEX");
    window.click("SCALEVALUES");
    window.click("SPLITMULTIPLE");
    window.click("SETCOLORS");
    window.click("OUTPUTGROUP");

    window.click("DEFAULTS");

    EXPECT_EQ(item("LEARNINGRATE").Value, Variant(0.5));
    EXPECT_EQ(shown("EPOCHS"), "100");
    EXPECT_EQ(item("INITIALWEIGHTS").Value, Variant(0.3));
    EXPECT_EQ(shown("STARTLEARNINGRADIUS"), "3");
    EXPECT_TRUE(item("USECONVEX").Checked);
    EXPECT_TRUE(item("SCALEVALUES").Checked);
    EXPECT_EQ(item("ACTIVATIONFUNCTION").SelectedCode, Variant("3"));
    EXPECT_EQ(shown("ACTIVATIONFUNCTION"), "Zero-based Log-Sigmoid Function");

    EXPECT_EQ(shown("INPUTS"), "A1:B9");
    EXPECT_EQ(shown("OUTPUTS"), "D1");
    EXPECT_EQ(shown("CLUSTERS"), "7");
    EXPECT_TRUE(item("SPLITMULTIPLE").Checked);
    EXPECT_FALSE(item("SETCOLORS").Checked);
    EXPECT_TRUE(item("OUTPUTGROUP").Expanded);
    EXPECT_TRUE(window.isShown());
  });
  EXPECT_FALSE(machine.keyStore->hasKey(MemoryKeyStore::user, valuesPath));
}

TEST_F(Editing, TheWidthOfTenItemsFollowsTheList) {
  const std::map<std::string, float> constants = {
      {"INPUTS", 1485},    {"OUTPUTS", 1365},       {"CLUSTERS", 1365},           {"LEARNINGRATE", 630},
      {"EPOCHS", 1440},    {"INITIALWEIGHTS", 960}, {"STARTLEARNINGRADIUS", 495}, {"ACTIVATIONFUNCTION", 600},
      {"USECONVEX", 2100}, {"SCALEVALUES", 2100}};
  showing([&](HeadlessOptionWindow& window) {
    for (const float width : {4545.0F, 9000.0F, 600.0F}) {
      window.resize(width, 4000.0F);
      for (const auto& one : window.options()) {
        const auto own = constants.find(one.Key);
        const float expected = own == constants.end() ? 0.0F : window.listWidth() - own->second;
        EXPECT_EQ(one.Width, expected) << one.Key << " in " << width;
      }
    }
  });
}

TEST_F(Editing, EachDesignedWidthAndItsConstantAddUpToTheDesignedList) {
  // At a list of 6000 twips the rule gives every item its designed width.
  std::map<std::string, float> designed;
  for (const auto& one : dialog.suiOptions()) designed[one.Key] = one.Width;
  showing([&](HeadlessOptionWindow& window) {
    window.resize(window.measure(platform::WindowMeasure::width) + 6000.0F - window.listWidth(), 2055.0F);
    for (const auto& one : window.options()) EXPECT_EQ(one.Width, designed[one.Key]) << one.Key;
  });
}

TEST_F(Editing, EventsOnItemsOfAnotherKindDoNothing) {
  showing([&](HeadlessOptionWindow& window) {
    (void)window.edit("DATAGROUP", "5");
    EXPECT_TRUE(item("DATAGROUP").Value.isEmpty());
    window.choose("CLUSTERS", "5");
    EXPECT_EQ(shown("CLUSTERS"), "3");
    window.browse("CLUSTERS");
    EXPECT_TRUE(window.isShown());
    EXPECT_EQ(dialog.Tag(), "");
  });
}

TEST_F(Editing, EventsOnSpacersAndUnknownKeysDoNothing) {
  for (const char* key : {"", "NOSUCHITEM"}) {
    showing([&](HeadlessOptionWindow& window) {
      (void)window.edit(key, "5");
      window.choose(key, "5");
      window.browse(key);
      window.click(key);
      window.press(key);
      EXPECT_TRUE(window.isShown()) << key;
      window.press("CLOSE");
    });
    EXPECT_EQ(dialog.Tag(), "CLOSE") << key;
  }
  EXPECT_TRUE(reports.empty());
}

}  // namespace mervane::tests
