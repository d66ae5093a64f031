#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "engine/choose_kernel.h"
#include "engine/competitive_network.h"
#include "mervane/failure.h"
#include "tests/engine/presentations.h"

namespace mervane {
namespace {

using testing::HasSubstr;
using Numbers = std::vector<double>;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

std::string refusal(const std::function<void()>& call) {
  try {
    call();
  } catch (const Failure& failure) {
    return failure.description();
  }
  return "(taken)";
}

Numbers weightsOf(const CompetitiveNetwork& network) {
  return {network.weights().begin(), network.weights().end()};
}

/// Three units at (0, 0), (1, 1) and (2, 2).
void createThree(CompetitiveNetwork& network) {
  presentations::create(network, 3, 2, false);
  for (std::int32_t unit = 0; unit < 3; ++unit) {
    for (std::int32_t j = 0; j < 2; ++j) network.SetWeight(unit, 0, unit, j);
  }
  network.FinishWeightSetup();
  network.SetLearningRate(0.5);
  network.SetRadius(0);
}

/// Which refusal comes first, and that a refused call leaves everything as it was.
class NetworkProtocol : public testing::Test {
 protected:
  NetworkProtocol() { createThree(network); }

  CompetitiveNetwork network;
  const Numbers first{0.1, 0.0};
  const Numbers second{1.1, 1.0};
};

TEST(NetworkWithoutCreate, SaysWhichCallCameTooEarlyBeforeAnythingElseIsWrong) {
  CompetitiveNetwork network;
  std::vector<std::int32_t> winners(1);
  const Numbers sample{notANumber};
  EXPECT_THAT(refusal([&] { network.InitConvexWeights(); }), HasSubstr("before InitConvexWeights."));
  EXPECT_THAT(refusal([&] { network.SetLearningRate(notANumber); }), HasSubstr("before SetLearningRate."));
  EXPECT_THAT(refusal([&] { network.SetRadius(1); }), HasSubstr("before SetRadius."));
  EXPECT_THAT(refusal([&] { network.SetWeight(notANumber, 1, 9, 9); }), HasSubstr("before SetWeight."));
  EXPECT_THAT(refusal([&] { network.SetInputs(sample); }), HasSubstr("before SetInputs."));
  EXPECT_THAT(refusal([&] { network.SetConvexInputs(sample, notANumber, 1); }), HasSubstr("before SetConvexInputs."));
  EXPECT_THAT(refusal([&] { network.Propagate(); }), HasSubstr("before Propagate."));
  EXPECT_THAT(refusal([&] { network.GetWinner(); }), HasSubstr("before GetWinner."));
  EXPECT_THAT(refusal([&] { network.AdjustWeights(); }), HasSubstr("before AdjustWeights."));
  EXPECT_THAT(refusal([&] { network.learn(sample, -1); }), HasSubstr("before learn."));
  EXPECT_THAT(refusal([&] { network.learnConvex(sample, sample); }), HasSubstr("before learnConvex."));
  EXPECT_THAT(refusal([&] { network.classify(sample, winners); }), HasSubstr("before classify."));
  EXPECT_THAT(refusal([&] { (void)network.response(9); }), HasSubstr("before response."));
}

TEST_F(NetworkProtocol, TheFirstOfSeveralFaultsIsNamed) {
  const std::int32_t none[] = {0};
  EXPECT_THAT(refusal([&] { network.Create(1, 0, none, notANumber, 0); }), HasSubstr("at least one input"));
  EXPECT_THAT(refusal([&] { network.Create(1, 2, none, notANumber, 0); }), HasSubstr("at least one unit"));
  EXPECT_THAT(refusal([&] { network.SetWeight(notANumber, 1, 9, 9); }), HasSubstr("layer 1"));
  EXPECT_THAT(refusal([&] { network.SetWeight(notANumber, 0, 9, 9); }), HasSubstr("no weight (9, 9)"));
  EXPECT_THAT(refusal([&] { network.SetConvexInputs(Numbers{notANumber}, notANumber, 1); }), HasSubstr("layer 1"));
  EXPECT_THAT(refusal([&] { network.SetConvexInputs(Numbers{notANumber}, notANumber, 0); }), HasSubstr("factor"));
  EXPECT_THAT(refusal([&] { network.SetInputs(Numbers{notANumber}); }), HasSubstr("1 samples of 2 inputs"));
  EXPECT_THAT(refusal([&] { (void)network.response(9); }), HasSubstr("no response yet"));
  EXPECT_THAT(refusal([&] { network.learn(first, -1); }), HasSubstr("cannot be -1"));
  EXPECT_THAT(refusal([&] {
                network.learnConvex(Numbers{1.0, notANumber}, Numbers{notANumber});
              }),
              HasSubstr("factor"));
}

TEST_F(NetworkProtocol, TheLimitOfSizeItselfIsTooLarge) {
  const std::int32_t counts[] = {3};
  EXPECT_THAT(refusal([&] { network.Create(1, 2, counts, 0x1p240, 0); }), HasSubstr("1e72"));
  EXPECT_THAT(refusal([&] { network.SetWeight(-0x1p240, 0, 0, 0); }), HasSubstr("1e72"));
  EXPECT_THAT(refusal([&] { network.SetInputs(Numbers{0.0, 0x1p240}); }), HasSubstr("Value 2 of the sample"));
}

TEST_F(NetworkProtocol, ARefusedValueIsNotStored) {
  const Numbers before = weightsOf(network);
  EXPECT_NE(refusal([&] { network.SetWeight(notANumber, 0, 1, 1); }), "(taken)");
  EXPECT_EQ(weightsOf(network), before);
  EXPECT_NE(refusal([&] { network.SetLearningRate(notANumber); }), "(taken)");
  network.SetInputs(first);
  network.Propagate();
  network.AdjustWeights();
  network.SetLearningRate(0.5);
  EXPECT_EQ(network.weights()[0], 0.05) << "half of the way, at the rate that stood before";
}

TEST_F(NetworkProtocol, ARefusedSampleLeavesTheOneBeforeIt) {
  CompetitiveNetwork alike;
  presentations::create(alike, 2, 2, false);
  alike.SetLearningRate(0.5);
  alike.SetInputs(first);
  alike.Propagate();
  EXPECT_NE(refusal([&] { alike.SetInputs(Numbers{0.0, notANumber}); }), "(taken)");
  EXPECT_NE(refusal([&] { alike.SetConvexInputs(second, notANumber, 0); }), "(taken)");
  alike.AdjustWeights();
  alike.SetLearningRate(0.5);
  EXPECT_EQ(weightsOf(alike), (Numbers{0.1, 0.0, 0.1, 0.0}));
  CompetitiveNetwork fresh;
  createThree(fresh);
  EXPECT_NE(refusal([&] { fresh.SetConvexInputs(second, notANumber, 0); }), "(taken)");
  EXPECT_THAT(refusal([&] { fresh.Propagate(); }), HasSubstr("no sample"));
}

TEST_F(NetworkProtocol, ACallOutOfOrderChangesNothing) {
  const Numbers before = weightsOf(network);
  network.SetInputs(first);
  EXPECT_NE(refusal([&] { network.AdjustWeights(); }), "(taken)");
  network.SetLearningRate(0.5);
  EXPECT_EQ(weightsOf(network), before);

  network.SetInputs(first);
  network.Propagate();
  network.AdjustWeights();
  network.SetInputs(second);
  EXPECT_THAT(refusal([&] { network.GetWinner(); }), HasSubstr("no winner"));
  EXPECT_EQ(weightsOf(network), before) << "the epoch goes on";
}

TEST_F(NetworkProtocol, ABlockOfAnotherLengthOrOfFewerThanNoSamplesIsNotLearned) {
  const Numbers before = weightsOf(network);
  EXPECT_NE(refusal([&] { network.learn(second, -1); }), "(taken)");
  EXPECT_NE(refusal([&] { network.learn(second, 2); }), "(taken)");
  EXPECT_NE(refusal([&] { network.learn(Numbers{1.5, 1.5, 1.5}, 1); }), "(taken)");
  EXPECT_NE(refusal([&] { network.learnConvex(Numbers{1.5, 1.5, 1.5}, Numbers{1.0}); }), "(taken)");
  network.SetLearningRate(0.5);
  EXPECT_EQ(weightsOf(network), before);
}

TEST_F(NetworkProtocol, EachSetUpAsksForASampleAnew) {
  const std::function<void()> setUps[] = {[&] { createThree(network); }, [&] { network.FinishWeightSetup(); },
                                          [&] { network.InitConvexWeights(); }};
  for (const auto& setUp : setUps) {
    network.SetInputs(first);
    network.Propagate();
    setUp();
    EXPECT_THAT(refusal([&] { network.Propagate(); }), HasSubstr("no sample"));
    EXPECT_THAT(refusal([&] { network.GetWinner(); }), HasSubstr("no winner"));
  }
}

TEST_F(NetworkProtocol, ConvexWeightsForgetTheOnesSetBefore) {
  CompetitiveNetwork fresh;
  presentations::create(fresh, 3, 2, true);
  network.SetLearningRate(0.0);  // As a new network has it; the first rate of a training is the one that counts.
  network.InitConvexWeights();
  const Numbers values = presentations::samples(20, 2);
  for (CompetitiveNetwork* one : {&fresh, &network}) presentations::train(*one, values, 2, true, 10);
  EXPECT_EQ(weightsOf(network), weightsOf(fresh));
}

TEST_F(NetworkProtocol, ABlockThatWasLearnedLeavesNoSampleBehind) {
  network.SetInputs(first);
  network.Propagate();
  network.learn(second, 1);
  EXPECT_THAT(refusal([&] { network.AdjustWeights(); }), HasSubstr("nothing to learn"));
  EXPECT_THAT(refusal([&] { network.Propagate(); }), HasSubstr("no sample"));
}

TEST_F(NetworkProtocol, ABlockWhoseFirstSampleIsRefusedLeavesTheSampleBeforeIt) {
  network.SetInputs(second);
  network.Propagate();
  EXPECT_THAT(refusal([&] {
                network.learn(Numbers{0.0, notANumber, 0.0, 0.0}, 2);
              }),
              HasSubstr("Value 2 of the sample"));
  EXPECT_EQ(network.GetWinner(), 1);
}

TEST_F(NetworkProtocol, AFailureInABlockNamesTheValueWithinItsSample) {
  std::vector<std::int32_t> winners(3);
  const Numbers third{0.0, 0.0, 1.0, 1.0, 2.0, notANumber};
  EXPECT_THAT(refusal([&] { network.learn(third, 3); }), HasSubstr("Value 2 of the sample"));
  EXPECT_THAT(refusal([&] { network.classify(third, winners); }), HasSubstr("Value 2 of the sample"));
  EXPECT_EQ(winners[0], 0);
  EXPECT_EQ(winners[1], 1);
}

TEST_F(NetworkProtocol, AClassifiedBlockLeavesItsLastSampleAsSingleCallsWould) {
  CompetitiveNetwork single;
  createThree(single);
  const Numbers block{2.1, 2.0, 0.1, 0.0, 1.1, 1.0};
  std::vector<std::int32_t> winners(3);
  network.classify(block, winners);
  EXPECT_EQ(winners, (std::vector<std::int32_t>{2, 0, 1}));
  single.SetInputs(second);
  single.Propagate();
  for (CompetitiveNetwork* one : {&network, &single}) {
    EXPECT_EQ(one->GetWinner(), 1);
    EXPECT_EQ(one->response(0), single.response(0));
    one->AdjustWeights();
    one->SetLearningRate(0.5);
  }
  EXPECT_EQ(weightsOf(network), weightsOf(single));
  EXPECT_EQ(network.weights()[2], 1.0 + 0.5 * (1.1 - 1.0));
}

TEST_F(NetworkProtocol, TheResponseOfAUnitIsReckonedFromItsOwnWeights) {
  const std::int32_t counts[] = {3};
  network.Create(1, 2, counts, 0.0, 0);
  for (std::int32_t unit = 0; unit < 3; ++unit) {
    for (std::int32_t j = 0; j < 2; ++j) network.SetWeight(unit, 0, unit, j);
  }
  network.FinishWeightSetup();
  network.SetInputs(Numbers{3.0, 5.0});
  network.Propagate();
  // 3 and 5 from 0 and 0, from 1 and 1, from 2 and 2.
  EXPECT_EQ(network.response(0), -34.0);
  EXPECT_EQ(network.response(1), -20.0);
  EXPECT_EQ(network.response(2), -10.0);
}

#if defined(__x86_64__) || defined(__i386__)
TEST(ChosenKernel, IsTheWidestThatTheProcessorHasAndTheWorkFills) {
  const bool avx2 = __builtin_cpu_supports("avx2") != 0;
  const bool avx512 = __builtin_cpu_supports("avx512f") != 0;
  std::vector<std::string> available{"portable", "SSE2"};
  if (avx2) available.emplace_back("AVX2");
  if (avx512) available.emplace_back("AVX-512");
  std::vector<std::string> names;
  for (const engine::Kernel* kernel : engine::availableKernels()) names.emplace_back(kernel->name);
  EXPECT_EQ(names, available);

  const std::string small = avx2 ? "AVX2" : "SSE2";
  EXPECT_EQ(engine::chooseKernel(24, 16).name, avx512 ? "AVX-512" : small);
  EXPECT_EQ(engine::chooseKernel(23, 16).name, small);
  EXPECT_EQ(engine::chooseKernel(24, 15).name, small);
  EXPECT_EQ(engine::chooseKernel(1000, 1000).name, avx512 ? "AVX-512" : small);
}
#endif

}  // namespace
}  // namespace mervane
