#include "mervane/array.h"

#include <array>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

#include "mervane/variant.h"
#include "tests/ground/raises.h"

namespace mervane {
namespace {

TEST(Array, EachDimensionHasBoundsOfItsOwn) {
  Array<double> array({{5, 7}, {3, 4}});
  EXPECT_EQ(array.dimensions(), 2);
  EXPECT_EQ(array.lowerBound(1), 5);
  EXPECT_EQ(array.upperBound(1), 7);
  EXPECT_EQ(array.lowerBound(2), 3);
  EXPECT_EQ(array.upperBound(2), 4);
  ASSERT_EQ(array.elements().size(), 6U);
  for (const double element : array.elements()) EXPECT_EQ(element, 0.0);
  array.at(6, 3) = 1.5;
  EXPECT_EQ(array.elements()[2], 1.5);  // Row-major.
}

TEST(Array, NegativeBoundsAndEmptyDimensionsAreFine) {
  Array<std::int32_t> array({{-2, 1}});
  array.at(-2) = 9;
  EXPECT_EQ(array.elements().front(), 9);
  EXPECT_EQ(Array<double>({{1, 0}}).elements().size(), 0U);
  EXPECT_EQ(Array<double>({{1, 0}, {1, 1000}}).elements().size(), 0U);
}

TEST(Array, AWrongIndexRaisesSubscriptOutOfRange) {
  Array<double> array({{1, 3}, {1, 2}});
  const std::pair<std::int32_t, std::int32_t> wrong[] = {{0, 1}, {4, 1}, {1, 0}, {1, 3}, {-1, -1}};
  for (const auto& [row, column] : wrong)
    expectRaises(runtime::subscriptOutOfRange, [&, r = row, c = column] { (void)array.at(r, c); });
  expectRaises(runtime::subscriptOutOfRange, [&] { (void)array.at(1); });
  for (const std::int32_t dimension : {0, 3, -1})
    expectRaises(runtime::subscriptOutOfRange, [&] { (void)array.lowerBound(dimension); });
}

TEST(Array, WithoutDimensionsNothingCanBeAsked) {
  const Array<double> none;
  EXPECT_EQ(none.dimensions(), 0);
  expectRaises(runtime::subscriptOutOfRange, [&] { (void)none.upperBound(1); });
  expectRaises(runtime::subscriptOutOfRange, [&] { (void)none.at(0); });
}

TEST(Array, ImpossibleBoundsAreRefused) {
  constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
  constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();
  expectRaises(runtime::invalidProcedureCall, [] { (void)Array<double>({{2, 0}}); });
  expectRaises(runtime::invalidProcedureCall, [] { (void)Array<double>({{highest, lowest}}); });
  expectRaises(runtime::outOfMemory, [] { (void)Array<double>({{lowest, highest}, {lowest, highest}}); });
}

TEST(Array, WhereTheMemoryDoesNotSufficeItIsAFailure) {
  struct Unaffordable {
    Unaffordable() { throw std::bad_alloc(); }
  };
  expectRaises(runtime::outOfMemory, [] { (void)Array<Unaffordable>({{1, 1}}); });
}

TEST(Array, MoreBytesThanTheMachineCanCountAreAFailure) {
  using Kilobyte = std::array<char, 1024>;
  constexpr std::int32_t most = std::numeric_limits<std::ptrdiff_t>::max() / sizeof(Kilobyte) >= (std::int64_t{1} << 40)
                                    ? std::numeric_limits<std::int32_t>::max()
                                    : 1 << 21;  // On a 32-bit machine: half a byte count too many.
  expectRaises(runtime::outOfMemory, [] { (void)Array<Kilobyte>({{1, most}, {1, 1024}}); });
}

TEST(Array, TakesElementsOverWhoseNumberIsThatOfTheBounds) {
  const Array<double> array({Bounds{1, 2}, Bounds{3, 4}}, {1.0, 2.0, 3.0, 4.0});
  EXPECT_EQ(array.at(2, 3), 3.0);
  const auto withElements = [](std::size_t count) {
    return [count] { (void)Array<double>({Bounds{1, 2}, Bounds{3, 4}}, std::vector<double>(count)); };
  };
  expectRaises(runtime::invalidProcedureCall, withElements(3));
  expectRaises(runtime::invalidProcedureCall, withElements(5));
}

// What elements() gives can change neither the number of the elements nor outlive a temporary array.
template <class T>
concept Resizable = requires(T elements) {
  elements.resize(1);
};
static_assert(!Resizable<decltype(std::declval<Array<double>&>().elements())>);
static_assert(!std::is_reference_v<decltype(std::declval<Array<double>>().elements())>);
static_assert(!std::is_reference_v<decltype(std::declval<Array<double>>().bounds())>);

TEST(Array, ElementsOfATemporaryOutliveIt) {
  const auto temporary = [] { return Array<double>({Bounds{1, 2}}, {1.5, 2.5}); };
  std::vector<double> seen;
  for (const double element : temporary().elements()) seen.push_back(element);
  EXPECT_EQ(seen, (std::vector<double>{1.5, 2.5}));
}

TEST(Array, WithItsElementsTakenAnArrayHasNoDimensions) {
  Array<double> array({Bounds{1, 2}}, {1.5, 2.5});
  EXPECT_EQ(std::move(array).elements(), (std::vector<double>{1.5, 2.5}));
  EXPECT_EQ(array.dimensions(), 0);  // NOLINT(bugprone-use-after-move): what is left is what is promised.
  expectRaises(runtime::subscriptOutOfRange, [&] { (void)array.at(1); });
}

TEST(AnyArray, ElementsComeOutWithTheirOwnKind) {
  Array<float> singles({{1, 1}, {1, 1}});
  singles.at(1, 1) = 0.1F;
  EXPECT_EQ(Variant(singles).array().at(1, 1), Variant(0.1F));
  Array<std::uint8_t> bytes({{0, 0}});
  bytes.at(0) = 200;
  EXPECT_EQ(Variant(bytes).array().at(0), Variant(std::int16_t{200}));
  Array<Variant> values({{0, 0}});
  values.at(0) = "text";
  EXPECT_EQ(Variant(values).array().at(0), Variant("text"));
}

TEST(AnyArray, AsksTheArrayItHolds) {
  const Variant value(Array<std::int32_t>({{5, 7}, {3, 4}}));
  const AnyArray& array = value.array();
  EXPECT_EQ(array.dimensions(), 2);
  EXPECT_EQ(array.lowerBound(2), 3);
  EXPECT_EQ(array.upperBound(1), 7);
  EXPECT_EQ(array.bounds(), (std::vector<Bounds>{{5, 7}, {3, 4}}));
  expectRaises(runtime::subscriptOutOfRange, [&] { (void)array.at(5); });
  expectRaises(runtime::subscriptOutOfRange, [&] { (void)array.lowerBound(3); });
}

}  // namespace
}  // namespace mervane
