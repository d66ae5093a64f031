#include "tests/conformance/conformance_checks.h"

namespace mervane::tests {

namespace member = sheet::member;

namespace {

void boldIsSetAndTakenBackForTheseCellsAlone(Walk& walk) {
  walk.range("B2:C3").Font().Bold(true);
  for (const char* cell : {"B2", "C2", "B3", "C3"}) {
    walk.expectShown(walk.range(cell).Font(), member::Bold, Variant(true));
  }
  walk.expectShown(walk.range("D3").Font(), member::Bold, Variant(false));
  walk.expectShown(walk.range("B4").Font(), member::Bold, Variant(false));
  walk.range("C3").Font().Bold(false);
  walk.expectShown(walk.range("C3").Font(), member::Bold, Variant(false));
  walk.expectShown(walk.range("C2").Font(), member::Bold, Variant(true));
}

void aSolidFillTakesEachColourOfThePalette(Walk& walk) {
  const sheet::Range cell = walk.range("H9");
  walk.expectShown(cell.Interior(), member::ColorIndex, Variant(sheet::none));
  for (const std::int32_t index : {36, 50, 38, 39, 40, 10, 34, 16, 45, 41, 3, 5, 6, 14, 37, 35}) {
    SCOPED_TRACE(index);
    cell.Interior().Pattern(sheet::patternSolid);
    cell.Interior().ColorIndex(index);
    walk.expectShown(cell.Interior(), member::ColorIndex, Variant(index));
    walk.expectShown(cell.Interior(), member::Pattern, Variant(sheet::patternSolid));
  }
  walk.expectShown(walk.range("H10").Interior(), member::ColorIndex, Variant(sheet::none));
}

void aFillMayBeAnyColour(Walk& walk) {
  constexpr std::int32_t lightGrey = 0xEAEAEA;
  constexpr std::int32_t red = 0x0000FF;
  const sheet::Range cells = walk.range("H9:I10");
  cells.Interior().Color(lightGrey);
  walk.expectShown(walk.range("I10").Interior(), member::Color, Variant(lightGrey));
  cells.Interior().Color(red);
  walk.expectShown(walk.range("H9").Interior(), member::Color, Variant(red));
  walk.expectShown(walk.range("H9").Interior(), member::ColorIndex, Variant(3));
}

void aFillIsTakenAway(Walk& walk) {
  const sheet::Range cell = walk.range("H9");
  cell.Interior().ColorIndex(36);
  walk.expectShown(cell.Interior(), member::ColorIndex, Variant(36));
  cell.Interior().ColorIndex(sheet::none);
  walk.expectShown(cell.Interior(), member::ColorIndex, Variant(sheet::none));
}

void aColourThatThePaletteDoesNotHaveIsRefused(Walk& walk) {
  const sheet::Interior fill = walk.range("H9").Interior();
  fill.ColorIndex(56);
  expectRefusal([&] { fill.ColorIndex(57); });
  walk.expectShown(fill, member::ColorIndex, Variant(56));
}

void eachEdgeAndEachInnerLineTakesItsStyleWeightAndColour(Walk& walk) {
  const sheet::Range block = walk.range("H9:J11");
  for (const std::int32_t edge : {sheet::edgeLeft, sheet::edgeTop, sheet::edgeBottom, sheet::edgeRight,
                                  sheet::insideVertical, sheet::insideHorizontal}) {
    SCOPED_TRACE(edge);
    walk.expectAssignable(block.Borders(edge), "Border",
                          {{member::LineStyle, {Variant(sheet::lineContinuous)}},
                           {member::Weight, {Variant(sheet::weightMedium), Variant(sheet::weightThin)}},
                           {member::ColorIndex, {Variant(3), Variant(1)}}});
  }
  // The lines are those of the cells, the inner ones between each two of them.
  const auto style = [&](const char* cell, std::int32_t edge) {
    return walk.shown(walk.range(cell).Borders(edge), member::LineStyle);
  };
  EXPECT_EQ(style("H9", sheet::edgeTop), Variant(sheet::lineContinuous));
  EXPECT_EQ(style("J11", sheet::edgeRight), Variant(sheet::lineContinuous));
  EXPECT_EQ(style("I10", sheet::edgeLeft), Variant(sheet::lineContinuous));
  EXPECT_EQ(style("I10", sheet::edgeBottom), Variant(sheet::lineContinuous));
  EXPECT_EQ(style("L9", sheet::edgeTop), Variant(sheet::none));
}

void aLineIsTakenAway(Walk& walk) {
  const sheet::Border line = walk.range("H9:J11").Borders(sheet::edgeTop);
  line.LineStyle(sheet::lineContinuous);
  walk.expectShown(line, member::LineStyle, Variant(sheet::lineContinuous));
  line.LineStyle(sheet::none);
  walk.expectShown(line, member::LineStyle, Variant(sheet::none));
}

void anInnerLineThatTheCellsLackIsRefused(Walk& walk) {
  expectRefusal([&] { walk.range("H9").Borders(sheet::insideVertical).LineStyle(sheet::lineContinuous); });
  expectRefusal([&] { walk.range("H9:I9").Borders(sheet::insideHorizontal).LineStyle(sheet::lineContinuous); });
  walk.range("H9:I9").Borders(sheet::insideVertical).LineStyle(sheet::lineContinuous);
  walk.expectShown(walk.range("H9:I9").Borders(sheet::insideVertical), member::LineStyle,
                   Variant(sheet::lineContinuous));
}

void formatsLeaveValuesAlone(Walk& walk) {
  const std::vector<Variant> before = walk.values("A1:E6");
  const sheet::Range all = walk.range("A1:E6");
  all.Interior().Pattern(sheet::patternSolid);
  all.Interior().ColorIndex(36);
  all.Font().Bold(true);
  all.Borders(sheet::insideHorizontal).LineStyle(sheet::lineContinuous);
  walk.expectShown(walk.range("E4").Interior(), member::ColorIndex, Variant(36));
  EXPECT_EQ(walk.values("A1:E6"), before);
}

}  // namespace

std::vector<ConformanceCheck> cellFormatChecks() {
  return {
      {"BoldIsSetAndTakenBackForTheseCellsAlone", boldIsSetAndTakenBackForTheseCellsAlone},
      {"ASolidFillTakesEachColourOfThePalette", aSolidFillTakesEachColourOfThePalette},
      {"AFillMayBeAnyColour", aFillMayBeAnyColour},
      {"AFillIsTakenAway", aFillIsTakenAway},
      {"AColourThatThePaletteDoesNotHaveIsRefused", aColourThatThePaletteDoesNotHaveIsRefused},
      {"EachEdgeAndEachInnerLineTakesItsStyleWeightAndColour", eachEdgeAndEachInnerLineTakesItsStyleWeightAndColour},
      {"ALineIsTakenAway", aLineIsTakenAway},
      {"AnInnerLineThatTheCellsLackIsRefused", anInnerLineThatTheCellsLackIsRefused},
      {"FormatsLeaveValuesAlone", formatsLeaveValuesAlone},
  };
}

}  // namespace mervane::tests
