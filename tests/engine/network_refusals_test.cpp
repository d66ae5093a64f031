#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "engine/competitive_network.h"
#include "mervane/failure.h"
#include "mervane/runtime_errors.h"

namespace mervane {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// The text of the failure that the call raises; empty where it raises none.
std::string refusal(const std::function<void()>& call) {
  try {
    call();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.number(), runtime::invalidProcedureCall.number);
    EXPECT_EQ(failure.source(), "MervaneEngine.CompetitiveNetwork");
    EXPECT_FALSE(failure.description().empty());
    return failure.description();
  }
  return {};
}

void create(CompetitiveNetwork& network, std::int32_t units, std::int32_t inputs) {
  const std::int32_t counts[] = {units};
  network.Create(1, inputs, counts, 0.3, 3);
}

TEST(NetworkRefusals, EveryCallBeforeCreateSaysThatThereIsNoNetwork) {
  CompetitiveNetwork network;
  const std::vector<double> sample{0.5};
  std::vector<std::int32_t> winners(1);
  const std::function<void()> calls[] = {
      [&] { network.GetWeightRows(); },
      [&] { network.GetWeightColumns(); },
      [&] { network.InitConvexWeights(); },
      [&] { network.FinishWeightSetup(); },
      [&] { network.SetLearningRate(0.5); },
      [&] { network.SetRadius(1); },
      [&] { network.SetWeight(0.5, 0, 0, 0); },
      [&] { network.SetInputs(sample); },
      [&] { network.SetConvexInputs(sample, 1.0, 0); },
      [&] { network.Propagate(); },
      [&] { network.GetWinner(); },
      [&] { network.AdjustWeights(); },
      [&] { network.learn(sample, 1); },
      [&] { network.learnConvex(sample, sample); },
      [&] { network.classify(sample, winners); },
      [&] { network.classifyConvex(sample, winners); },
      [&] { (void)network.response(0); },
      [&] { (void)network.weights(); },
  };
  for (const bool destroyed : {false, true}) {
    if (destroyed) {
      create(network, 2, 1);
      network.DestroyNetwork();
    }
    for (const auto& call : calls) EXPECT_THAT(refusal(call), testing::HasSubstr("There is no network. Call Create"));
  }
}

TEST(NetworkRefusals, DestroyNetworkIsHarmlessWithoutANetwork) {
  CompetitiveNetwork network;
  network.DestroyNetwork();
  network.DestroyNetwork();
}

TEST(NetworkRefusals, CreateRefusesSizesItCannotBuildAndKeepsTheOldNetwork) {
  CompetitiveNetwork network;
  create(network, 4, 3);
  const std::int32_t one[] = {2};
  const std::int32_t two[] = {2, 2};
  EXPECT_THAT(refusal([&] { create(network, 0, 3); }), testing::HasSubstr("at least one unit, not 0"));
  EXPECT_THAT(refusal([&] { create(network, -5, 3); }), testing::HasSubstr("at least one unit, not -5"));
  EXPECT_THAT(refusal([&] { create(network, 3, 0); }), testing::HasSubstr("at least one input, not 0"));
  EXPECT_THAT(refusal([&] { create(network, 3, -1); }), testing::HasSubstr("at least one input, not -1"));
  EXPECT_THAT(refusal([&] { create(network, 2147483647, 2147483647); }), testing::HasSubstr("Ask for fewer clusters"));
  EXPECT_THAT(refusal([&] { create(network, 16777217, 1); }), testing::HasSubstr("more than 16777216 weights"));
  EXPECT_THAT(refusal([&] { network.Create(2, 3, two, 0.3, 3); }), testing::HasSubstr("2 layers cannot be built"));
  EXPECT_THAT(refusal([&] { network.Create(0, 3, one, 0.3, 3); }), testing::HasSubstr("0 layers cannot be built"));
  EXPECT_THAT(refusal([&] { network.Create(1, 3, two, 0.3, 3); }), testing::HasSubstr("not 2"));
  EXPECT_THAT(refusal([&] { network.Create(1, 3, {}, 0.3, 3); }), testing::HasSubstr("not 0"));
  for (const double weight : {notANumber, infinity, -infinity, 1e200})
    EXPECT_THAT(refusal([&] { network.Create(1, 3, one, weight, 3); }), testing::HasSubstr("initial weight"));
  EXPECT_EQ(network.GetWeightRows(), 4);
  EXPECT_EQ(network.GetWeightColumns(), 3);
}

TEST(NetworkRefusals, SamplesOfAnotherLengthAreRefused) {
  CompetitiveNetwork network;
  create(network, 2, 3);
  for (const std::size_t length : {0U, 2U, 4U}) {
    const std::vector<double> sample(length);
    EXPECT_THAT(refusal([&] { network.SetInputs(sample); }), testing::HasSubstr("make 3 values, but"));
    EXPECT_THAT(refusal([&] { network.SetConvexInputs(sample, 0.5, 0); }), testing::HasSubstr("make 3 values, but"));
  }
}

TEST(NetworkRefusals, ValuesThatAreNotFiniteOrTooLargeAreNamed) {
  CompetitiveNetwork network;
  create(network, 2, 3);
  for (const double bad : {notANumber, infinity, -infinity}) {
    const std::vector<double> sample{0.1, 0.2, bad};
    EXPECT_THAT(refusal([&] { network.SetInputs(sample); }),
                testing::HasSubstr("Value 3 of the sample is not a finite number"));
    EXPECT_THAT(refusal([&] { network.SetConvexInputs(sample, 0.0, 0); }),
                testing::HasSubstr("Value 3 of the sample is not a finite number"));
  }
  EXPECT_THAT(refusal([&] {
                network.SetInputs(std::vector{0.1, -1e150, 0.2});
              }),
              testing::HasSubstr("Value 2 of the sample is larger than 1e72"));
}

TEST(NetworkRefusals, LargeValuesBelowTheLimitAreLearned) {
  CompetitiveNetwork network;
  create(network, 2, 1);
  network.FinishWeightSetup();
  for (int epoch = 0; epoch < 50; ++epoch) {
    network.SetLearningRate(epoch < 49 ? 0.5 - 0.01 * epoch : 0.0);
    network.learn(std::vector{-1e72, 1e72, -0.9e72, 0.9e72}, 4);
  }
  std::vector<std::int32_t> winners(4);
  network.classify(std::vector{-1e72, 1e72, -0.9e72, 0.9e72}, winners);
  EXPECT_EQ(winners[0], winners[2]);
  EXPECT_EQ(winners[1], winners[3]);
  EXPECT_NE(winners[0], winners[1]);
}

TEST(NetworkRefusals, ACallInTheWrongOrderSaysWhatHasToComeFirst) {
  CompetitiveNetwork network;
  create(network, 2, 1);
  EXPECT_THAT(refusal([&] { network.Propagate(); }), testing::HasSubstr("Call SetInputs"));
  EXPECT_THAT(refusal([&] { network.AdjustWeights(); }), testing::HasSubstr("Call Propagate"));
  EXPECT_THAT(refusal([&] { network.GetWinner(); }), testing::HasSubstr("Call Propagate"));
  EXPECT_THAT(refusal([&] { (void)network.response(0); }), testing::HasSubstr("Call Propagate"));
  network.SetInputs(std::vector{0.5});
  EXPECT_THAT(refusal([&] { network.AdjustWeights(); }), testing::HasSubstr("Call Propagate"));
  network.Propagate();
  EXPECT_THAT(refusal([&] { (void)network.response(2); }), testing::HasSubstr("no unit 2"));
  EXPECT_THAT(refusal([&] { (void)network.response(-1); }), testing::HasSubstr("no unit -1"));
  EXPECT_EQ(refusal([&] { network.GetWinner(); }), "");
}

TEST(NetworkRefusals, WeightsOutsideTheGridAndOtherLayersAreRefused) {
  CompetitiveNetwork network;
  create(network, 2, 3);
  EXPECT_THAT(refusal([&] { network.SetWeight(0.5, 0, 2, 0); }), testing::HasSubstr("no weight (2, 0)"));
  EXPECT_THAT(refusal([&] { network.SetWeight(0.5, 0, 0, 3); }), testing::HasSubstr("no weight (0, 3)"));
  EXPECT_THAT(refusal([&] { network.SetWeight(0.5, 0, -1, 0); }), testing::HasSubstr("no weight (-1, 0)"));
  EXPECT_THAT(refusal([&] { network.SetWeight(0.5, 0, 0, -1); }), testing::HasSubstr("no weight (0, -1)"));
  EXPECT_THAT(refusal([&] { network.SetWeight(0.5, 1, 0, 0); }), testing::HasSubstr("layer 1 does not exist"));
  EXPECT_THAT(refusal([&] {
                network.SetConvexInputs(std::vector{1.0, 2.0, 3.0}, 0.5, 1);
              }),
              testing::HasSubstr("layer 1 does not exist"));
  EXPECT_THAT(refusal([&] { network.SetWeight(notANumber, 0, 0, 0); }), testing::HasSubstr("finite"));
}

TEST(NetworkRefusals, RatesAndFactorsThatAreNotNumbersAreRefused) {
  CompetitiveNetwork network;
  create(network, 2, 1);
  for (const double rate : {notANumber, infinity, -infinity})
    EXPECT_THAT(refusal([&] { network.SetLearningRate(rate); }), testing::HasSubstr("learning rate"));
  EXPECT_THAT(refusal([&] { network.SetConvexInputs(std::vector{0.5}, notANumber, 0); }),
              testing::HasSubstr("convex factor"));
}

}  // namespace
}  // namespace mervane
