#include <cmath>
#include <limits>

#include "mervane/convert.h"
#include "tests/ground/raises.h"

namespace mervane {
namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(Round, TiesGoToTheEvenNeighbour) {
  const struct {
    double value;
    std::int32_t expected;
  } cases[] = {
      {0.0, 0},
      {-0.0, 0},
      {0.5, 0},
      {1.5, 2},
      {2.5, 2},
      {3.5, 4},
      {4.5, 4},
      {-0.5, 0},
      {-1.5, -2},
      {-2.5, -2},
      {-3.5, -4},
      {2.4, 2},
      {2.6, 3},
      {-2.4, -2},
      {-2.6, -3},
      {1e9, 1000000000},
      {0.49999999999999994, 0},   // Adding one half and cutting off would give 1.
      {-0.49999999999999994, 0},  // The same below 0.
      {2147483646.5, 2147483646},
      {2147483645.5, 2147483646},
      {-2147483647.5, -2147483648},
  };
  for (const auto& one : cases) EXPECT_EQ(roundToInt32(one.value), one.expected) << one.value;
}

TEST(Round, TheRangeIsThatOfTheRoundedValue) {
  EXPECT_EQ(roundToInt32(2147483647.0), 2147483647);
  EXPECT_EQ(roundToInt32(2147483647.49), 2147483647);
  EXPECT_EQ(roundToInt32(-2147483648.0), -2147483647 - 1);
  EXPECT_EQ(roundToInt32(-2147483648.5), -2147483647 - 1);  // The tie goes to the even end of the range.
  EXPECT_EQ(roundToInt16(32767.49), 32767);
  EXPECT_EQ(roundToInt16(-32768.5), -32768);
}

TEST(Round, OutsideTheRangeRaisesOverflow) {
  for (const double value :
       {2147483647.5, 2147483648.0, -2147483648.6, -2147483649.0, 1e10, -1e300, infinity, -infinity})
    expectRaises(runtime::overflow, [&] { (void)roundToInt32(value); });
  for (const double value : {32767.5, 32768.0, -32768.51, 65536.0, 1e300})
    expectRaises(runtime::overflow, [&] { (void)roundToInt16(value); });
}

TEST(Round, ANotANumberRaisesOverflow) {
  expectRaises(runtime::overflow, [] { (void)roundToInt32(notANumber); });
  expectRaises(runtime::overflow, [] { (void)roundToInt16(-notANumber); });
}

}  // namespace
}  // namespace mervane
