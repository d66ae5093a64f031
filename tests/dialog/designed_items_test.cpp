#include "dialog/designed_items.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "mervane/failure.h"
#include "mervane/runtime_errors.h"

namespace mervane::tests {

using platform::OptionItem;
using platform::OptionItems;
using platform::OptionKind;

TEST(DesignedItems, FiftyTwoItemsStandInTheirOrderWithSpacersBetween) {
  const OptionItems items = dialog::designedOptions();
  ASSERT_EQ(items.Count(), 52);
  const std::vector<std::string> keys = {"DATAGROUP",
                                         "-",
                                         "INPUTS",
                                         "-",
                                         "OUTPUTS",
                                         "-",
                                         "CLUSTERS",
                                         "-",
                                         "NNPARAMSGROUP",
                                         "-",
                                         "LEARNINGRATE",
                                         "-",
                                         "EPOCHS",
                                         "-",
                                         "INITIALWEIGHTS",
                                         "-",
                                         "STARTLEARNINGRADIUS",
                                         "-",
                                         "ACTIVATIONFUNCTION",
                                         "-",
                                         "USECONVEX",
                                         "-",
                                         "SCALEVALUES",
                                         "-",
                                         "DEFAULTS",
                                         "-",
                                         "OUTPUTGROUP",
                                         "SPLITMULTIPLE",
                                         "-",
                                         "SPLITONE",
                                         "-",
                                         "AUTOFILTER",
                                         "-",
                                         "DRAWCHARTS",
                                         "-",
                                         "AVERAGES",
                                         "-",
                                         "WEIGHTEDAVERAGES",
                                         "-",
                                         "MINIMUMS",
                                         "-",
                                         "MAXIMUMS",
                                         "-",
                                         "CLUSTERWEIGHTS",
                                         "-",
                                         "SETCOLORS",
                                         "-",
                                         "SORTCLUSTERS",
                                         "-",
                                         "TABLETORANGE",
                                         "-",
                                         "DLLVERSION"};
  for (std::int32_t position = 1; position <= 52; ++position) {
    const OptionItem& item = items.Item(position);
    const std::string& key = keys[static_cast<std::size_t>(position) - 1];
    EXPECT_EQ(item.Key, key == "-" ? "" : key) << position;
    EXPECT_EQ(item.kind == OptionKind::spacer, key == "-") << position;
  }
}

TEST(DesignedItems, EveryItemHasItsKindCaptionAndDesignValue) {
  struct Row {
    const char* key;
    OptionKind kind;
    const char* caption;
    Variant value;
    bool checked;
  };
  const std::vector<Row> rows = {
      {"DATAGROUP", OptionKind::groupHeader, "Data", {}, false},
      {"INPUTS", OptionKind::editWithBrowse, "Inputs:", "", false},
      {"OUTPUTS", OptionKind::editWithBrowse, "Outputs:", "", false},
      {"CLUSTERS", OptionKind::edit, "Clusters:", "3", false},
      {"NNPARAMSGROUP", OptionKind::groupHeader, "Neural network parameters", {}, false},
      {"LEARNINGRATE", OptionKind::edit, "Start learning rate:", "0.5", false},
      {"EPOCHS", OptionKind::edit, "Epochs:", "100", false},
      {"INITIALWEIGHTS", OptionKind::edit, "Initial weights:", "0.3", false},
      {"STARTLEARNINGRADIUS", OptionKind::edit, "Start learning radius:", "3", false},
      {"ACTIVATIONFUNCTION", OptionKind::dropDown, "Activation function:", "", false},
      {"USECONVEX", OptionKind::check, "Use convex combination", {}, true},
      {"SCALEVALUES", OptionKind::check, "Scale values", {}, true},
      {"DEFAULTS", OptionKind::command, "Set default values", {}, false},
      {"OUTPUTGROUP", OptionKind::groupHeader, "Output formatting parameters", {}, false},
      {"SPLITMULTIPLE", OptionKind::radio, "to multiple columns", "0", false},
      {"SPLITONE", OptionKind::radio, "to one column", "1", true},
      {"AUTOFILTER", OptionKind::check, "Set autofilter", {}, true},
      {"DRAWCHARTS", OptionKind::check, "Draw charts", {}, true},
      {"AVERAGES", OptionKind::check, "Calculate averages", {}, true},
      {"WEIGHTEDAVERAGES", OptionKind::check, "Calculate weighted averages", {}, true},
      {"MINIMUMS", OptionKind::check, "Calculate minimums", {}, true},
      {"MAXIMUMS", OptionKind::check, "Calculate maximums", {}, true},
      {"CLUSTERWEIGHTS", OptionKind::check, "Calculate cluster weight", {}, true},
      {"SETCOLORS", OptionKind::check, "Set colors", {}, true},
      {"SORTCLUSTERS", OptionKind::check, "Sort by cluster", {}, true},
      {"TABLETORANGE", OptionKind::check, "Convert table to range", {}, true},
      {"DLLVERSION", OptionKind::staticLabel, "Mervane library version:", {}, false},
  };
  const OptionItems items = dialog::designedOptions();
  for (const Row& row : rows) {
    const OptionItem& item = items.Item(row.key);
    EXPECT_EQ(item.kind, row.kind) << row.key;
    EXPECT_EQ(item.Caption, row.caption) << row.key;
    EXPECT_EQ(item.Value, row.value) << row.key;
    EXPECT_EQ(item.Checked, row.checked) << row.key;
    EXPECT_TRUE(item.SelectedCode.isEmpty()) << row.key;
  }
  EXPECT_TRUE(items.Item("DATAGROUP").Expanded);
  EXPECT_TRUE(items.Item("NNPARAMSGROUP").Expanded);
  EXPECT_FALSE(items.Item("OUTPUTGROUP").Expanded);
}

TEST(DesignedItems, KindsHaveTheCodesOfTheTemplate) {
  EXPECT_EQ(static_cast<int>(OptionKind::groupHeader), 1300);
  EXPECT_EQ(static_cast<int>(OptionKind::spacer), 1100);
  EXPECT_EQ(static_cast<int>(OptionKind::edit), 1400);
  EXPECT_EQ(static_cast<int>(OptionKind::editWithBrowse), 1408);
  EXPECT_EQ(static_cast<int>(OptionKind::dropDown), 1500);
  EXPECT_EQ(static_cast<int>(OptionKind::choice), 900);
  EXPECT_EQ(static_cast<int>(OptionKind::check), 501);
  EXPECT_EQ(static_cast<int>(OptionKind::radio), 601);
  EXPECT_EQ(static_cast<int>(OptionKind::staticLabel), 108);
}

TEST(DesignedItems, HeightsFollowTheKind) {
  const OptionItems items = dialog::designedOptions();
  for (const OptionItem& item : items) {
    switch (item.kind) {
      case OptionKind::groupHeader:
      case OptionKind::check:
      case OptionKind::radio:
        EXPECT_EQ(item.height, 17) << item.Key;
        break;
      case OptionKind::spacer:
        EXPECT_EQ(item.height, 2);
        break;
      case OptionKind::edit:
      case OptionKind::editWithBrowse:
      case OptionKind::dropDown:
        EXPECT_EQ(item.height, 21) << item.Key;
        break;
      default:
        EXPECT_EQ(item.height, 22) << item.Key;
    }
  }
}

TEST(DesignedItems, OnlyHeadersAndTwoSpacersStandAtTheMargin) {
  const OptionItems items = dialog::designedOptions();
  for (std::int32_t position = 1; position <= items.Count(); ++position) {
    const OptionItem& item = items.Item(position);
    const bool atMargin = item.kind == OptionKind::groupHeader || position == 8 || position == 20;
    EXPECT_EQ(item.indent, atMargin ? 0 : 1) << position;
  }
}

TEST(DesignedItems, TenItemsKeepAWidthOfTheirOwnInTwips) {
  const std::map<std::string, float> widths = {{"INPUTS", 301},
                                               {"OUTPUTS", 309},
                                               {"CLUSTERS", 309},
                                               {"LEARNINGRATE", 358},
                                               {"EPOCHS", 304},
                                               {"INITIALWEIGHTS", 336},
                                               {"STARTLEARNINGRADIUS", 367},
                                               {"ACTIVATIONFUNCTION", 360},
                                               {"USECONVEX", 260},
                                               {"SCALEVALUES", 260}};
  for (const OptionItem& item : dialog::designedOptions()) {
    const auto own = widths.find(item.Key);
    EXPECT_EQ(item.automaticWidth, own == widths.end()) << item.Key;
    if (own != widths.end()) {
      EXPECT_EQ(item.Width, own->second * 15) << item.Key;
    }
  }
}

TEST(DesignedItems, SpacersAloneHaveNoAutomaticHeight) {
  for (const OptionItem& item : dialog::designedOptions()) {
    EXPECT_EQ(item.automaticHeight, item.kind != OptionKind::spacer) << item.Key;
    for (const OptionItem& choice : item.SubItems) EXPECT_TRUE(choice.automaticHeight) << choice.Key;
  }
}

TEST(DesignedItems, LooksAreThoseOfTheTemplate) {
  const OptionItems items = dialog::designedOptions();
  const std::set<std::string> alignedRight = {"INPUTS",
                                              "OUTPUTS",
                                              "CLUSTERS",
                                              "LEARNINGRATE",
                                              "EPOCHS",
                                              "INITIALWEIGHTS",
                                              "STARTLEARNINGRADIUS",
                                              "ACTIVATIONFUNCTION",
                                              "USECONVEX",
                                              "SCALEVALUES",
                                              "DLLVERSION"};
  for (const OptionItem& item : items) {
    const bool header = item.kind == OptionKind::groupHeader;
    EXPECT_EQ(item.bold, header || item.Key == "DEFAULTS") << item.Key;
    if (alignedRight.contains(item.Key)) {
      EXPECT_EQ(item.alignment, 1) << item.Key;
    } else if (item.Key == "DEFAULTS") {
      EXPECT_EQ(item.alignment, 0);
    } else {
      EXPECT_FALSE(item.alignment.has_value()) << item.Key;
    }
    EXPECT_EQ(item.imageKey, item.Key == "DEFAULTS" ? "DEFAULTS" : "");
    const std::int32_t colour = item.kind == OptionKind::spacer ? 8 : item.Key == "DLLVERSION" ? 17 : 18;
    EXPECT_EQ(item.textColour, colour) << item.Key;
  }
}

TEST(DesignedItems, FourActivationFunctionsCanBeChosen) {
  const OptionItem function = dialog::designedOptions().Item("ACTIVATIONFUNCTION");
  ASSERT_EQ(function.SubItems.size(), 4U);
  const char* keys[] = {"ZEROT", "TANH", "EXP05", "EXP"};
  const char* captions[] = {"Threshold function", "Hyperbolic tangent function", "Zero-based Log-Sigmoid Function",
                            "Log-Sigmoid Function"};
  for (std::size_t i = 0; i < 4; ++i) {
    const OptionItem& choice = function.SubItems[i];
    EXPECT_EQ(choice.Key, keys[i]);
    EXPECT_EQ(choice.Caption, captions[i]);
    EXPECT_EQ(choice.Value, Variant(std::to_string(i + 1)));
    EXPECT_EQ(choice.kind, OptionKind::choice);
    EXPECT_EQ(choice.height, 16);
    EXPECT_EQ(choice.textColour, 8);
  }
}

TEST(DesignedItems, TheBarHasTwoBoldButtons) {
  const OptionItems bar = dialog::designedButtons();
  ASSERT_EQ(bar.Count(), 2);
  const OptionItem& classify = bar.Item(1);
  EXPECT_EQ(classify.Key, "CLASSIFY");
  EXPECT_EQ(classify.Caption, "Clusterize");
  EXPECT_EQ(classify.imageKey, "classify");
  EXPECT_EQ(classify.Width, 81 * 15);
  const OptionItem& close = bar.Item("CLOSE");
  EXPECT_EQ(close.Caption, "Close");
  EXPECT_EQ(close.imageKey, "close");
  EXPECT_EQ(close.Width, 55 * 15);
  for (const OptionItem& item : bar) {
    EXPECT_EQ(item.height, 22);
    EXPECT_TRUE(item.bold);
  }
}

TEST(OptionItems, AnUnknownKeyFails) {
  OptionItems items = dialog::designedOptions();
  for (const char* key : {"NOSUCHITEM", "inputs", ""}) {
    try {
      (void)items.Item(key);
      ADD_FAILURE() << key;
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.number(), runtime::invalidProcedureCall.number);
    }
  }
}

TEST(OptionItems, PositionsCountFromOne) {
  const OptionItems items = dialog::designedOptions();
  EXPECT_EQ(items.Item(1).Key, "DATAGROUP");
  EXPECT_EQ(items.Item(52).Key, "DLLVERSION");
  EXPECT_THROW((void)items.Item(0), Failure);
  EXPECT_THROW((void)items.Item(53), Failure);
}

TEST(OptionItems, ARemovedItemIsGoneAndCannotBeRemovedAgain) {
  OptionItems items = dialog::designedButtons();
  items.Remove("CLASSIFY");
  EXPECT_EQ(items.Count(), 1);
  EXPECT_FALSE(items.Contains("CLASSIFY"));
  EXPECT_THROW(items.Remove("CLASSIFY"), Failure);
  EXPECT_EQ(items.Item(1).Key, "CLOSE");
}

}  // namespace mervane::tests
