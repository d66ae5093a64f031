#include <cmath>
#include <limits>

#include "mervane/published_errors.h"
#include "mervane/runtime_errors.h"
#include "tests/component/component_fixture.h"

namespace mervane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using tests::failureOf;
using tests::grid;
using tests::IsFailure;

constexpr std::int32_t smallest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();

auto isInvalidArgument() {
  return IsFailure(-2147203703, "Invalid argument", "MervaneCls31.Classifier3");
}
auto isSubscriptError() {
  return IsFailure(9, "Subscript out of range", "");
}

class Properties : public tests::ComponentTest {};

TEST_F(Properties, OfAFreshObjectHoldTheDefaults) {
  EXPECT_EQ(classifier->Clusters(), 3);
  EXPECT_EQ(classifier->InitialWeights(), 0.3);
  EXPECT_EQ(classifier->LearningRadius(), 3.0);
  EXPECT_EQ(classifier->LearningRate(), 0.5);
  EXPECT_EQ(classifier->EpochCount(), 100);
  EXPECT_TRUE(classifier->UseConvexCombination());
  EXPECT_TRUE(classifier->AutoScaleInputs());
  EXPECT_EQ(classifier->ActivationFunction(), ACTIVATE_FUNC_EXP05);
  EXPECT_TRUE(classifier->Inputs().isEmpty());
  EXPECT_EQ(classifier->Outputs().dimensions(), 0);
  EXPECT_EQ(classifier->ExcelApplication(), nullptr);
}

TEST_F(Properties, RateAndStartWeightTakeZeroAndAllBelowOne) {
  for (const double value : {0.0, -0.0, 0.3, 0.999999}) {
    classifier->LearningRate(value);
    EXPECT_EQ(classifier->LearningRate(), value);
    classifier->InitialWeights(value);
    EXPECT_EQ(classifier->InitialWeights(), value);
  }
}

TEST_F(Properties, RateAndStartWeightRefuseEverythingElseAndKeepTheOldValue) {
  for (const double value : {1.0, -0.1, 1.5, -1e-300, std::numeric_limits<double>::infinity(),
                             -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_THAT(failureOf([&] { classifier->LearningRate(value); }), isInvalidArgument()) << value;
    EXPECT_THAT(failureOf([&] { classifier->InitialWeights(value); }), isInvalidArgument()) << value;
  }
  EXPECT_EQ(classifier->LearningRate(), 0.5);
  EXPECT_EQ(classifier->InitialWeights(), 0.3);
  EXPECT_THAT(dialog->reports, IsEmpty()) << "a refusal goes straight to the caller";
}

TEST_F(Properties, TheOthersTakeAnyValueOfTheirType) {
  for (const std::int32_t value : {0, -5, smallest, largest}) {
    classifier->Clusters(value);
    EXPECT_EQ(classifier->Clusters(), value);
    classifier->EpochCount(value);
    EXPECT_EQ(classifier->EpochCount(), value);
    classifier->ActivationFunction(static_cast<enuActivationFunction>(value));
    EXPECT_EQ(classifier->ActivationFunction(), value);
  }
  for (const double value : {0.0, -7.5, 1.0, 1e300}) {
    classifier->LearningRadius(value);
    EXPECT_EQ(classifier->LearningRadius(), value);
  }
  classifier->UseConvexCombination(false);
  EXPECT_FALSE(classifier->UseConvexCombination());
  EXPECT_TRUE(classifier->AutoScaleInputs());
  classifier->AutoScaleInputs(false);
  EXPECT_FALSE(classifier->AutoScaleInputs());
}

TEST_F(Properties, RateAndRadiusAreNotConfused) {
  classifier->LearningRadius(7.0);
  EXPECT_EQ(classifier->LearningRate(), 0.5);
  classifier->LearningRate(0.25);
  EXPECT_EQ(classifier->LearningRadius(), 7.0);
}

TEST_F(Properties, ErrorCodesAreThePublishedNumbers) {
  EXPECT_EQ(eErr_InvalidArgument, -2147203703);
  EXPECT_EQ(eErr_InvalidReference, -2147203701);
  EXPECT_EQ(eErr_CompareNameSheet, -2147203700);
  EXPECT_EQ(eErr_ClearRange, -2147203699);
  EXPECT_EQ(eErr_NotDigit, -2147203698);
  EXPECT_EQ(eErr_RangeIntersect, -2147203697);
  EXPECT_EQ(eErr_RepeatedInputs, -2147203696);
  EXPECT_EQ(eErr_ErrLearningRate, -2147203695);
  EXPECT_EQ(eErr_ErrInitialWeights, -2147203694);
  EXPECT_EQ(eErr_NoDigit, -2147203693);
  EXPECT_EQ(eErr_CategoriesCount, -2147203692);
  EXPECT_EQ(eErr_Table, -2147203691);
  EXPECT_EQ(eErr_InputAndOutputAreNotSame, -2147203690);
}

TEST_F(Properties, EachErrorCodeHasItsFixedText) {
  std::vector<std::pair<std::int32_t, std::string>> texts;
  for (const PublishedError& error : published::all) texts.emplace_back(error.number, error.description);
  EXPECT_THAT(
      texts,
      ElementsAre(Pair(-2147203703, "Invalid argument"), Pair(-2147203701, "Invalid cell reference."),
                  Pair(-2147203700, "Input and output ranges must be on the same spreadsheet."),
                  Pair(-2147203699, "The clusterization output will be placed to the range "),
                  Pair(-2147203698, "Only numbers are allowed for clusterization"),
                  Pair(-2147203697, "Cannot clusterize intersecting ranges"),
                  Pair(-2147203696, "Cannot clusterize equal values"),
                  Pair(-2147203695, "Please, specify learning rate between 0 and 1"),
                  Pair(-2147203694, "Please, specify initial weights between 0 and 1"),
                  Pair(-2147203693, "Cells must contain only numbers"),
                  Pair(-2147203692, "Please, specify Number of clusters between 1 and 254"),
                  Pair(-2147203691,
                       "The data that you have in the spreadsheet is in the format of a table and can\xE2\x80\x99t be "
                       "analyzed by Kelvash if it is not converted into the normal range of cells format. Do you "
                       "want to convert the table to range and continue (the data and appearance won\xE2\x80\x99t be "
                       "changed)?"),
                  Pair(-2147203690, "Input and output ranges are not the same")));
}

TEST_F(Properties, APublishedErrorIsRaisedWithItsTextAndTheSourceGiven) {
  EXPECT_THAT(failureOf([] { raise(published::rangeIntersect); }),
              IsFailure(eErr_RangeIntersect, "Cannot clusterize intersecting ranges", ""));
  EXPECT_THAT(failureOf([] { raise(published::noDigit, "Host.Sheet"); }),
              IsFailure(eErr_NoDigit, "Cells must contain only numbers", "Host.Sheet"));
}

// Inputs.

TEST_F(Properties, InputsRefusesWhatIsNoArrayAndKeepsEverything) {
  classifier->Inputs(grid<double>({{1.0}, {2.0}}));
  classifier->Run();
  const Variant before = classifier->Inputs();
  const auto results = outputs();
  for (const Variant& value : {Variant(), Variant(3.5), Variant("text"), Variant(true), Variant(Null{})}) {
    EXPECT_THAT(failureOf([&] { classifier->Inputs(value); }), isInvalidArgument());
  }
  EXPECT_EQ(classifier->Inputs(), before);
  EXPECT_EQ(outputs(), results);
  EXPECT_EQ(classifier->getMaxValue(0), 2.0);
}

TEST_F(Properties, InputsGivesOutputsTheBoundsOfTheRowsFilledWithZero) {
  classifier->Inputs(grid<double>({{1.0, 2.0}, {3.0, 4.0}, {5.0, 6.0}}, 5, 0));
  EXPECT_EQ(classifier->Outputs().lowerBound(1), 5);
  EXPECT_EQ(classifier->Outputs().upperBound(1), 7);
  EXPECT_THAT(outputs(), ElementsAre(0, 0, 0));
}

TEST_F(Properties, SettingInputsAgainDropsEarlierResults) {
  classifier->Inputs(grid<double>({{1.0}, {2.0}}));
  classifier->Run();
  EXPECT_THAT(outputs(), ElementsAre(1, 3));
  classifier->Inputs(classifier->Inputs());
  EXPECT_THAT(outputs(), ElementsAre(0, 0));
}

TEST_F(Properties, InputsIsGivenBackAsTheSameArray) {
  const Variant array(grid<double>({{1.0}, {2.0}}));
  classifier->Inputs(array);
  EXPECT_EQ(classifier->Inputs(), array) << "arrays are shared, not copied";
}

TEST_F(Properties, ColumnRangesDescribeTheRawValuesByZeroBasedPosition) {
  classifier->Inputs(grid<double>({{4.0, -1.0}, {2.0, 9.0}, {3.0, 5.0}}, -1, 3));
  EXPECT_EQ(classifier->getMinValue(0), 2.0);
  EXPECT_EQ(classifier->getMaxValue(0), 4.0);
  EXPECT_EQ(classifier->getMinValue(1), -1.0);
  EXPECT_EQ(classifier->getMaxValue(1), 9.0);
}

TEST_F(Properties, ThePositionBehindTheLastColumnHoldsZero) {
  classifier->Inputs(grid<double>({{4.0, 8.0}, {2.0, 7.0}}));
  EXPECT_EQ(classifier->getMaxValue(2), 0.0);
  EXPECT_EQ(classifier->getMinValue(2), 0.0);
  EXPECT_THAT(failureOf([&] { static_cast<void>(classifier->getMaxValue(3)); }), isSubscriptError());
  EXPECT_THAT(failureOf([&] { static_cast<void>(classifier->getMinValue(-1)); }), isSubscriptError());
}

TEST_F(Properties, ColumnRangesBeforeAnyInputsRaiseTheArrayError) {
  EXPECT_THAT(failureOf([&] { static_cast<void>(classifier->getMaxValue(0)); }), isSubscriptError());
  EXPECT_THAT(failureOf([&] { static_cast<void>(classifier->getMinValue(0)); }), isSubscriptError());
}

TEST_F(Properties, AColumnOfEqualValuesHasEqualRangeEndsWithoutComplaint) {
  classifier->Inputs(grid<double>({{4.0}, {4.0}}));
  EXPECT_EQ(classifier->getMinValue(0), 4.0);
  EXPECT_EQ(classifier->getMaxValue(0), 4.0);
}

TEST_F(Properties, ANotANumberInTheFirstRowStaysBecauseNothingComparesWithIt) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  classifier->Inputs(grid<double>({{nan, 1.0}, {2.0, nan}}));
  EXPECT_NE(classifier->getMaxValue(0), classifier->getMaxValue(0));
  EXPECT_EQ(classifier->getMaxValue(1), 1.0);
}

TEST_F(Properties, ElementsOfAnyTypeAreRangedAsDoubles) {
  const auto expectRange = [&](const Variant& array) {
    classifier->Inputs(array);
    EXPECT_EQ(classifier->getMinValue(0), 1.0);
    EXPECT_EQ(classifier->getMaxValue(0), 3.0);
  };
  expectRange(grid<float>({{2.0F}, {1.0F}, {3.0F}}));
  expectRange(grid<std::int32_t>({{2}, {1}, {3}}));
  expectRange(grid<std::int16_t>({{2}, {1}, {3}}));
  expectRange(grid<std::uint8_t>({{2}, {1}, {3}}));
  expectRange(grid<Variant>({{Variant(2.0)}, {Variant(std::int16_t{1})}, {Variant(3.0F)}}));
  expectRange(grid<Variant>({{Variant(2.0)}, {Variant(std::int32_t{3})}, {Variant(1.0)}}));
}

TEST_F(Properties, EmptyAndBooleanElementsCountAsTheirNumbers) {
  classifier->Inputs(grid<Variant>({{Variant(2.0), Variant(true)}, {Variant(), Variant(false)}}));
  EXPECT_EQ(classifier->getMinValue(0), 0.0);
  EXPECT_EQ(classifier->getMinValue(1), -1.0);
  EXPECT_EQ(classifier->getMaxValue(1), 0.0);
}

TEST_F(Properties, ATextInTheFirstRowIsConvertedUnderTheUsersLocale) {
  machine.services->locale.decimalSeparator = ",";
  machine.services->locale.groupSeparators = {"."};
  classifier->Inputs(grid<std::string>({{"1,5"}}));
  EXPECT_EQ(classifier->getMinValue(0), 1.5);
}

TEST_F(Properties, TextsAreRangedByTheirNumbersAndNotByTheirCharacters) {
  const auto expectRange = [&](const Variant& array) {
    classifier->Inputs(array);
    EXPECT_EQ(classifier->getMinValue(0), 2.0);
    EXPECT_EQ(classifier->getMaxValue(0), 10.0);
  };
  expectRange(grid<std::string>({{"10"}, {"9"}, {"2"}}));
  expectRange(grid<std::string>({{"9"}, {"2"}, {"10"}}));
  expectRange(grid<Variant>({{Variant("10")}, {Variant("9")}, {Variant("2")}}));
  expectRange(grid<Variant>({{Variant(9.0)}, {Variant("10")}, {Variant(std::int16_t{2})}}));
  expectRange(grid<Variant>({{Variant("9")}, {Variant(10.0)}, {Variant("2")}}));
  machine.services->locale.decimalSeparator = ",";
  machine.services->locale.groupSeparators = {"."};
  expectRange(grid<Variant>({{Variant("9,5")}, {Variant(10.0)}, {Variant("2,0")}}));
}

TEST_F(Properties, ATextInALaterRowThatDoesNotConvertRaisesTheConversionError) {
  const Variant bad(grid<std::string>({{"1"}, {"2"}, {"north"}}));
  EXPECT_THAT(failureOf([&] { classifier->Inputs(bad); }), IsFailure(13, "Type mismatch", ""));
  EXPECT_EQ(classifier->Inputs(), bad);
}

TEST_F(Properties, AnElementThatDoesNotConvertRaisesWithTheNewArrayInPlace) {
  classifier->Inputs(grid<double>({{1.0}, {2.0}}));
  const Variant bad(grid<Variant>({{Variant("north")}, {Variant(2.0)}, {Variant(3.0)}}));
  EXPECT_THAT(failureOf([&] { classifier->Inputs(bad); }), IsFailure(13, "Type mismatch", ""));
  EXPECT_EQ(classifier->Inputs(), bad);
  EXPECT_THAT(outputs(), ElementsAre(0, 0)) << "the results keep the shape that they had";
}

TEST_F(Properties, AOneDimensionalArrayRaisesTheArrayErrorAfterItHasReplacedTheOldOne) {
  classifier->Inputs(grid<double>({{1.0}, {2.0}}));
  const Variant line(Array<double>({Bounds{1, 3}}));
  EXPECT_THAT(failureOf([&] { classifier->Inputs(line); }), isSubscriptError());
  EXPECT_EQ(classifier->Inputs(), line);
  EXPECT_EQ(classifier->getMaxValue(0), 2.0) << "the ranges are untouched";
  EXPECT_THAT(outputs(), ElementsAre(0, 0));
}

TEST_F(Properties, AnArrayOfThreeDimensionsRaisesTheArrayErrorAtItsFirstElement) {
  const Variant cube(Array<double>({Bounds{1, 2}, Bounds{1, 2}, Bounds{1, 2}}));
  EXPECT_THAT(failureOf([&] { classifier->Inputs(cube); }), isSubscriptError());
  EXPECT_EQ(classifier->Inputs(), cube);
}

TEST_F(Properties, AnArrayWithoutRowsRaisesTheArrayErrorAtItsFirstElement) {
  EXPECT_THAT(failureOf([&] { classifier->Inputs(Array<double>({Bounds{1, 0}, Bounds{1, 2}})); }), isSubscriptError());
}

TEST_F(Properties, AnArrayWithoutColumnsHasOnlyTheExtraPosition) {
  classifier->Inputs(Array<double>({Bounds{1, 2}, Bounds{1, 0}}));
  EXPECT_EQ(classifier->getMaxValue(0), 0.0);
  EXPECT_THAT(outputs(), ElementsAre(0, 0));
}

// Extents and scaling.

TEST_F(Properties, CountsFollowTheBoundsOfBothDimensions) {
  classifier->Inputs(grid<double>({{1.0, 2.0}, {3.0, 4.0}, {5.0, 6.0}}, 0, 3));
  EXPECT_EQ(classifier->GetSamplesCount(), 3);
  EXPECT_EQ(classifier->GetColumnsCount(), 2);
  EXPECT_EQ(classifier->Outputs().lowerBound(1), 0);
  EXPECT_EQ(classifier->Outputs().upperBound(1), 2);
}

TEST_F(Properties, CountsOfBoundsAtTheEndsOfTheIndexRangeAreRight) {
  classifier->Inputs(grid<double>({{1.0}, {2.0}}, largest - 1, smallest));
  EXPECT_EQ(classifier->GetSamplesCount(), 2);
  EXPECT_EQ(classifier->GetColumnsCount(), 1);
}

TEST_F(Properties, CountsWithoutInputsRaiseTheRunTimesErrorToTheCaller) {
  EXPECT_THAT(failureOf([&] { static_cast<void>(classifier->GetSamplesCount()); }), IsFailure(13, "Type mismatch", ""));
  EXPECT_THAT(failureOf([&] { static_cast<void>(classifier->GetColumnsCount()); }), IsFailure(13, "Type mismatch", ""));
}

TEST_F(Properties, ColumnCountOfAOneDimensionalArrayRaisesTheArrayError) {
  static_cast<void>(failureOf([&] { classifier->Inputs(Array<double>({Bounds{1, 3}})); }));
  EXPECT_EQ(classifier->GetSamplesCount(), 3);
  EXPECT_THAT(failureOf([&] { static_cast<void>(classifier->GetColumnsCount()); }), isSubscriptError());
}

TEST_F(Properties, ScaleValueMapsLinearly) {
  EXPECT_EQ(classifier->ScaleValue(5, 0, 10, 0, 1), 0.5);
  EXPECT_EQ(classifier->ScaleValue(0, 0, 10, 0.001, 0.999), 0.001);
  EXPECT_EQ(classifier->ScaleValue(10, 0, 10, 0.001, 0.999), 0.999);
  EXPECT_EQ(classifier->ScaleValue(5, 0, 10, 1, 0), 0.5) << "a reversed destination is as good as any";
}

TEST_F(Properties, ScaleValueLeavesAloneWhatLiesOutsideTheSource) {
  EXPECT_EQ(classifier->ScaleValue(11, 0, 10, 0, 1), 11);
  EXPECT_EQ(classifier->ScaleValue(-1, 0, 10, 0, 1), -1);
  EXPECT_EQ(classifier->ScaleValue(5, 10, 0, 0, 1), 5) << "a reversed source has no inside";
  EXPECT_EQ(classifier->ScaleValue(11, 0, 10, 7, 7), 11) << "also for a destination of one point";
}

TEST_F(Properties, ScaleValueGivesTheLowerEndForARangeOfOnePoint) {
  EXPECT_EQ(classifier->ScaleValue(5, 5, 5, 0.001, 0.999), 0.001);
  EXPECT_EQ(classifier->ScaleValue(5, 0, 10, 7, 7), 7);
}

TEST_F(Properties, ScaleValueKeepsTheOrderOfItsOperations) {
  // Both scaled sides first, 5 x 0.998 over 13 or 5 times 0.998 over 13, give 0.38484615384615384.
  EXPECT_EQ(classifier->ScaleValue(5, 0, 13, 0.001, 0.999), 0.3848461538461539);
}

TEST_F(Properties, ScaleValueGivesADestinationOfOnePointWhateverTheSourceIs) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(classifier->ScaleValue(5, -infinity, infinity, 7, 7), 7);
}

TEST_F(Properties, AnEqualValueDoesNotTakeThePlaceOfARangesEnd) {
  classifier->Inputs(grid<double>({{0.0}, {-0.0}}));
  EXPECT_FALSE(std::signbit(classifier->getMinValue(0)));
  EXPECT_FALSE(std::signbit(classifier->getMaxValue(0)));
}

TEST_F(Properties, AnArrayWithoutRowsAndColumnsIsTakenBecauseNoElementIsAskedFor) {
  classifier->Inputs(Array<double>({Bounds{1, 0}, Bounds{1, 0}}));
  EXPECT_EQ(classifier->GetSamplesCount(), 0);
  EXPECT_EQ(classifier->GetColumnsCount(), 0);
  EXPECT_EQ(classifier->getMaxValue(0), 0.0);
}

}  // namespace
}  // namespace mervane
