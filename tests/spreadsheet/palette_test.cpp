#include "spreadsheet/palette.h"

#include <gtest/gtest.h>

#include "tests/hosts_workbook/charts/invoke.h"

namespace mervane::tests {
namespace {

using sheet::paletteColor;

TEST(Palette, BeginsWithTheEightPlainColours) {
  EXPECT_EQ(paletteColor(1), 0x000000U);
  EXPECT_EQ(paletteColor(2), 0xFFFFFFU);
  EXPECT_EQ(paletteColor(3), 0xFF0000U);
  EXPECT_EQ(paletteColor(6), 0xFFFF00U);
}

TEST(Palette, HoldsTheColoursOfChartsAndClusters) {
  EXPECT_EQ(paletteColor(17), 0x9999FFU);  // chart area
  EXPECT_EQ(paletteColor(24), 0xCCCCFFU);  // plot area
  EXPECT_EQ(paletteColor(48), 0x969696U);  // gridlines
  EXPECT_EQ(paletteColor(11), 0x000080U);  // category labels
  EXPECT_EQ(paletteColor(36), 0xFFFF99U);  // first cluster
  EXPECT_EQ(paletteColor(50), 0x339966U);  // second cluster
  EXPECT_EQ(paletteColor(56), 0x333333U);
}

TEST(Palette, RefusesIndexesThatItDoesNotHave) {
  EXPECT_EQ(numberRaisedBy([] { (void)paletteColor(0); }), runtime::subscriptOutOfRange.number);
  EXPECT_EQ(numberRaisedBy([] { (void)paletteColor(57); }), runtime::subscriptOutOfRange.number);
  EXPECT_EQ(numberRaisedBy([] { (void)paletteColor(-4105); }), runtime::subscriptOutOfRange.number);
}

}  // namespace
}  // namespace mervane::tests
