#include "component/convex_schedule.h"
#include "tests/component/component_fixture.h"

namespace mervane {
namespace {

using tests::grid;

/// The schedule's last bits. Its operations are done in the order written; each case here is one in which any other
/// order of the same operations gives another double.
class Schedule : public tests::ComponentTest {
 protected:
  std::vector<std::string> callsOfRun(const std::string& beginning, std::int32_t epochs) {
    classifier->EpochCount(epochs);
    classifier->Run();
    return engine->callsOf(beginning);
  }
};

TEST_F(Schedule, TheRadiusIsAProductOverAProduct) {
  classifier->Inputs(grid<double>({{0.0}, {10.0}}));
  classifier->LearningRadius(4.5);
  // 2 x 4.5 is exactly 9, and 3 x 1.2 a hair below 3.6: the quotient is a hair above the tie 2.5. One division after
  // the other, or the quotient of the counts first, gives 2.5 and so 2.
  EXPECT_EQ(callsOfRun("SetRadius(", 3).front(), "SetRadius(3)");
  // 18 over a hair less than 7.2. Three times the quotient of 6 and that is 2.5 again.
  engine->calls.clear();
  classifier->LearningRadius(6.0);
  EXPECT_EQ(callsOfRun("SetRadius(", 6)[2], "SetRadius(3)");
}

TEST_F(Schedule, TheRateIsAShareOfOneTimesTheStartRate) {
  classifier->Inputs(grid<double>({{0.0}, {10.0}}));
  classifier->LearningRate(0.7);
  // 4 / 5 is a hair above 0.8, so what is left of 1 is a hair below 0.2. 0.7 less 0.56 would be 0.14.
  EXPECT_EQ(callsOfRun("SetLearningRate(", 5)[3], "SetLearningRate(0.13999999999999996)");
}

TEST_F(Schedule, TheConvexFactorsDenominatorIsAThirdOfTheEpochsTimesTheSamples) {
  classifier->Inputs(grid<double>({{0.0}, {1.0}, {2.0}, {3.0}, {4.0}}));
  // A third is a hair below 1 / 3, five of them a hair below 5 / 3. 5 samples over 3 would be 5 / 3, and the factor 3.
  for (const bool blocks : {false, true}) {
    engine->offersBlocks = blocks;
    engine->calls.clear();
    EXPECT_EQ(callsOfRun("SetConvexInputs(", 1).front(), "SetConvexInputs([0.001], 3.0000000000000004, 0)");
  }
}

TEST_F(Schedule, FactorsAreWrittenForTheSamplesOfTheBlockAndNoFurther) {
  std::vector<double> factors(4, -1.0);
  ConvexSchedule(1, 5, 3).fill(std::span(factors).first(3), 1);
  EXPECT_EQ(factors, (std::vector{6.0 / 5.0, 7.0 / 5.0, 8.0 / 5.0, -1.0}));
}

TEST_F(Schedule, AValueOutsideTheRangeOfItsColumnReachesTheEngineAsItIs) {
  // The ranges date from when the array was set; with another decimal separator its texts are other numbers.
  classifier->Inputs(grid<std::string>({{"1"}, {"1.5"}, {"2"}}));
  machine.services->locale.decimalSeparator = ",";
  machine.services->locale.groupSeparators = {"."};
  for (const bool blocks : {false, true}) {
    engine->offersBlocks = blocks;
    engine->calls.clear();
    EXPECT_THAT(callsOfRun("SetConvexInputs(", 0),
                testing::ElementsAre("SetConvexInputs([0.001], 1, 0)", "SetConvexInputs([15], 1, 0)",
                                     "SetConvexInputs([0.999], 1, 0)"));
  }
}

}  // namespace
}  // namespace mervane
