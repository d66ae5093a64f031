#include "tests/conformance/conformance_checks.h"

namespace mervane::tests {

namespace member = sheet::member;

namespace {

sheet::Chart anyChart(Walk& walk) {
  return walk.embeddedChart("B2:C6", sheet::chartLineWithMarkers, sheet::plotByRows);
}
sheet::Axis categories(const sheet::Chart& chart) {
  return chart.Axes(sheet::axisCategory, sheet::axisGroupPrimary);
}
sheet::Axis values(const sheet::Chart& chart) {
  return chart.Axes(sheet::axisValue, sheet::axisGroupPrimary);
}

void theTwoPrimaryAxesAreThereAndNoOther(Walk& walk) {
  const sheet::Chart chart = anyChart(walk);
  EXPECT_TRUE(categories(chart));
  EXPECT_TRUE(values(chart));
  constexpr std::int32_t secondaryGroup = 2;
  constexpr std::int32_t seriesAxis = 3;
  expectRefusal([&] { chart.Axes(sheet::axisValue, secondaryGroup).HasMajorGridlines(true); });
  expectRefusal([&] { chart.Axes(seriesAxis, sheet::axisGroupPrimary).HasMajorGridlines(true); });
}

void theValueAxisTakesEverySetting(Walk& walk) {
  walk.expectAssignable(values(anyChart(walk)), "Axis",
                        {{member::MinorUnitIsAuto, {true}},
                         {member::MajorUnitIsAuto, {true}},
                         {member::Crosses, {sheet::automatic}},
                         {member::ReversePlotOrder, {true, false}},
                         {member::ScaleType, {sheet::scaleLinear}},
                         {member::DisplayUnit, {sheet::none}},
                         {member::HasMajorGridlines, {false, true}},
                         {member::HasMinorGridlines, {true, false}}});
}

void theCategoryAxisTakesEverySetting(Walk& walk) {
  const sheet::Axis axis = categories(anyChart(walk));
  EXPECT_GE(axis.TickLabelSpacing(), 1);
  walk.expectAssignable(axis, "Axis",
                        {{member::TickMarkSpacing, {2, axis.TickLabelSpacing()}},
                         {member::BaseUnitIsAuto, {true}},
                         {member::Crosses, {sheet::automatic}},
                         {member::AxisBetweenCategories, {false, true}},
                         {member::ReversePlotOrder, {true, false}},
                         {member::HasMajorGridlines, {false, true}},
                         {member::HasMinorGridlines, {true, false}}});
}

void eachAxisHasGridlinesOfItsOwn(Walk& walk) {
  const sheet::Chart chart = anyChart(walk);
  categories(chart).HasMajorGridlines(true);
  values(chart).HasMajorGridlines(false);
  walk.expectShown(categories(chart), member::HasMajorGridlines, Variant(true));
  walk.expectShown(values(chart), member::HasMajorGridlines, Variant(false));
  values(chart).HasMajorGridlines(true);
  walk.expectAssignable(values(chart).MajorGridlines().Border(), "Border",
                        {{member::ColorIndex, {3, 48}},
                         {member::Weight, {sheet::weightHairline}},
                         {member::LineStyle, {sheet::lineContinuous}}});
  walk.expectAssignable(categories(chart).MajorGridlines().Border(), "Border",
                        {{member::ColorIndex, {48}},
                         {member::Weight, {sheet::weightHairline}},
                         {member::LineStyle, {sheet::lineDotted}}});
  walk.expectShown(values(chart).MajorGridlines().Border(), member::LineStyle, Variant(sheet::lineContinuous));
}

void theLabelsOfEachAxisHaveAFontOfTheirOwn(Walk& walk) {
  const sheet::Chart chart = anyChart(walk);
  const std::vector<Walk::Property> font = {
      {member::Name, {"Arial"}},      {member::Size, {12, 10}},           {member::Strikethrough, {false}},
      {member::Superscript, {false}}, {member::Subscript, {false}},       {member::OutlineFont, {false}},
      {member::Shadow, {false}},      {member::Underline, {sheet::none}}, {member::Background, {sheet::automatic}}};
  walk.expectAssignable(categories(chart).TickLabels().Font(), "Font", font);
  walk.expectAssignable(values(chart).TickLabels().Font(), "Font", font);
  categories(chart).TickLabels().Font().ColorIndex(11);
  values(chart).TickLabels().Font().ColorIndex(sheet::automatic);
  walk.expectShown(categories(chart).TickLabels().Font(), member::ColorIndex, Variant(11));
  walk.expectShown(values(chart).TickLabels().Font(), member::ColorIndex, Variant(sheet::automatic));
}

}  // namespace

std::vector<ConformanceCheck> axisChecks() {
  return {
      {"TheTwoPrimaryAxesAreThereAndNoOther", theTwoPrimaryAxesAreThereAndNoOther},
      {"TheValueAxisTakesEverySetting", theValueAxisTakesEverySetting},
      {"TheCategoryAxisTakesEverySetting", theCategoryAxisTakesEverySetting},
      {"EachAxisHasGridlinesOfItsOwn", eachAxisHasGridlinesOfItsOwn},
      {"TheLabelsOfEachAxisHaveAFontOfTheirOwn", theLabelsOfEachAxisHaveAFontOfTheirOwn},
  };
}

}  // namespace mervane::tests
