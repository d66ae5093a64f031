#include <limits>
#include <string>
#include <vector>

#include "mervane/convert.h"
#include "tests/component/component_fixture.h"

namespace mervane {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;
using tests::grid;

/// What one event reported.
struct Event {
  std::int32_t epoch;
  double rate;
  std::int32_t radius;
  friend bool operator==(const Event&, const Event&) = default;
};

class Training : public tests::ComponentTest {
 protected:
  Training() {
    classifier->Inputs(grid<double>({{0.0}, {10.0}}));
    classifier->addNextEpochSink([this](std::int32_t& epoch, double& rate, std::int32_t& radius) {
      events.push_back({epoch, rate, radius});
    });
  }

  std::vector<std::string> radii() { return engine->callsOf("SetRadius("); }
  std::vector<std::string> rates() { return engine->callsOf("SetLearningRate("); }
  /// How many epochs began.
  std::size_t epochs() { return rates().size(); }

  std::vector<Event> events;
};

TEST_F(Training, WholeRunInConvexModeMakesExactlyTheseCalls) {
  classifier->Inputs(grid<double>({{0.0, 5.0}, {10.0, 5.0}, {5.0, 7.0}}, 0, 7));
  classifier->Clusters(2);
  classifier->EpochCount(2);
  classifier->Run();
  EXPECT_THAT(
      engine->calls,
      ElementsAre(  //
          "Create(1, 2, [2], 0.3, 3)", "InitConvexWeights()",
          // Epoch 1: samples 3 to 5 of 6, over a third of 6.
          "SetLearningRate(0.25)", "SetRadius(1)",  //
          "SetConvexInputs([0.001 0.001], 1.5, 0)", "Propagate()", "AdjustWeights()",
          "SetConvexInputs([0.999 0.001], 2, 0)", "Propagate()", "AdjustWeights()",
          "SetConvexInputs([0.5 0.999], 2.5, 0)", "Propagate()", "AdjustWeights()",
          // Epoch 2 runs at rate and radius 0.
          "SetLearningRate(0)", "SetRadius(0)",  //
          "SetConvexInputs([0.001 0.001], 3, 0)", "Propagate()", "AdjustWeights()",
          "SetConvexInputs([0.999 0.001], 3.5, 0)", "Propagate()", "AdjustWeights()",
          "SetConvexInputs([0.5 0.999], 4, 0)", "Propagate()", "AdjustWeights()",
          // Results.
          "SetConvexInputs([0.001 0.001], 1, 0)", "Propagate()", "GetWinner()", "SetConvexInputs([0.999 0.001], 1, 0)",
          "Propagate()", "GetWinner()", "SetConvexInputs([0.5 0.999], 1, 0)", "Propagate()", "GetWinner()"));
  EXPECT_THAT(outputs(), ElementsAre(1, 2, 2));
  EXPECT_EQ(classifier->Outputs().lowerBound(1), 0);
}

TEST_F(Training, TheSameNumbersAsTextsReachTheEngineAlike) {
  const auto callsFor = [&](const Variant& inputs) {
    engine->calls.clear();
    classifier->Inputs(inputs);
    classifier->Run();
    return engine->calls;
  };
  const auto numbers = callsFor(grid<double>({{10.0, 0.5}, {9.0, 0.25}, {2.0, 100.0}}));
  EXPECT_EQ(callsFor(grid<std::string>({{"10", "0.5"}, {"9", "0.25"}, {"2", "100"}})), numbers);
  EXPECT_EQ(callsFor(grid<Variant>({{Variant("10"), Variant(0.5)},
                                    {Variant(9.0), Variant("0.25")},
                                    {Variant(std::int16_t{2}), Variant("1E2")}})),
            numbers);
}

TEST_F(Training, WholeRunInCellByCellModeMakesExactlyTheseCalls) {
  classifier->Inputs(grid<double>({{0.0, 5.0}, {0.5, 6.0}}));
  classifier->Clusters(2);
  classifier->EpochCount(1);
  classifier->InitialWeights(0.25);
  classifier->ActivationFunction(static_cast<enuActivationFunction>(-9));
  classifier->UseConvexCombination(false);
  classifier->AutoScaleInputs(false);
  classifier->Run();
  EXPECT_THAT(engine->calls,
              ElementsAre(                                                                       //
                  "Create(1, 2, [2], 0.25, -9)", "GetWeightRows()",                              //
                  "GetWeightColumns()", "SetWeight(0.25, 0, 0, 0)", "SetWeight(0.25, 0, 0, 1)",  //
                  "GetWeightColumns()", "SetWeight(0.25, 0, 1, 0)", "SetWeight(0.25, 0, 1, 1)",  //
                  "FinishWeightSetup()",                                                         //
                  "SetLearningRate(0)", "SetRadius(0)",                                          //
                  "SetInputs([0 5])", "Propagate()", "AdjustWeights()",                          //
                  "SetInputs([0.5 6])", "Propagate()", "AdjustWeights()",                        //
                  "SetInputs([0 5])", "Propagate()", "GetWinner()",                              //
                  "SetInputs([0.5 6])", "Propagate()", "GetWinner()"));
  EXPECT_THAT(outputs(), ElementsAre(1, 2));
}

TEST_F(Training, TheWeightGridIsWalkedByTheExtentsThatTheEngineTells) {
  classifier->UseConvexCombination(false);
  classifier->EpochCount(0);
  engine->beforeCall = [this](const std::string& call) {
    if (call == "GetWeightRows()") engine->weightRows = 2;
    if (call == "GetWeightColumns()") engine->weightColumns = engine->calls.size() == 3 ? 2 : 0;
  };
  classifier->Run();
  EXPECT_EQ(engine->calls[1], "GetWeightRows()");
  EXPECT_THAT(engine->callsOf("GetWeightColumns("), SizeIs(2)) << "once for each first index";
  EXPECT_THAT(engine->callsOf("SetWeight("), ElementsAre("SetWeight(0.3, 0, 0, 0)", "SetWeight(0.3, 0, 0, 1)"));
  EXPECT_THAT(engine->callsOf("FinishWeightSetup("), SizeIs(1));
}

TEST_F(Training, ModesDoNotMixTheirCalls) {
  classifier->EpochCount(3);
  classifier->Run();
  EXPECT_THAT(engine->callsOf("GetWeightRows"), IsEmpty());
  EXPECT_THAT(engine->callsOf("SetWeight"), IsEmpty());
  EXPECT_THAT(engine->callsOf("FinishWeightSetup"), IsEmpty());
  EXPECT_THAT(engine->callsOf("SetInputs"), IsEmpty());
  engine->calls.clear();
  classifier->UseConvexCombination(false);
  classifier->Run();
  EXPECT_THAT(engine->callsOf("InitConvexWeights"), IsEmpty());
  EXPECT_THAT(engine->callsOf("SetConvexInputs"), IsEmpty());
}

TEST_F(Training, RadiusOfTheDefaultsFallsWithTiesGoingToTheEvenNumber) {
  classifier->Run();
  const auto all = radii();
  ASSERT_THAT(all, SizeIs(100));
  for (std::size_t epoch = 1; epoch <= 100; ++epoch) {
    // Epoch 40 is the tie 1.5 and epoch 80 the tie 0.5.
    const char* const expected = epoch <= 40 ? "SetRadius(2)" : epoch <= 79 ? "SetRadius(1)" : "SetRadius(0)";
    EXPECT_EQ(all[epoch - 1], expected) << "epoch " << epoch;
  }
}

TEST_F(Training, RadiusOfTenEpochs) {
  classifier->EpochCount(10);
  classifier->Run();
  EXPECT_THAT(radii(), ElementsAre("SetRadius(2)", "SetRadius(2)", "SetRadius(2)", "SetRadius(2)", "SetRadius(1)",
                                   "SetRadius(1)", "SetRadius(1)", "SetRadius(0)", "SetRadius(0)", "SetRadius(0)"));
}

TEST_F(Training, ANegativeRadiusIsPassedOnAndRoundsToEvenToo) {
  classifier->LearningRadius(-3.0);
  classifier->EpochCount(100);
  classifier->Run();
  EXPECT_EQ(radii()[0], "SetRadius(-2)");
  EXPECT_EQ(radii()[39], "SetRadius(-2)");
  EXPECT_EQ(radii()[40], "SetRadius(-1)");
  EXPECT_EQ(radii()[79], "SetRadius(0)");
}

TEST_F(Training, RateFallsInAStraightLineToExactlyZero) {
  classifier->Run();
  const auto all = rates();
  ASSERT_THAT(all, SizeIs(100));
  EXPECT_EQ(all.front(), "SetLearningRate(0.495)");
  EXPECT_EQ(all[49], "SetLearningRate(0.25)");
  EXPECT_EQ(all.back(), "SetLearningRate(0)");
  for (std::int32_t epoch = 1; epoch <= 100; ++epoch) {
    EXPECT_EQ(all[static_cast<std::size_t>(epoch - 1)],
              "SetLearningRate(" + formatExact((1.0 - epoch / 100.0) * 0.5) + ")");
  }
}

TEST_F(Training, ConvexFactorRunsFromThreeOverTheEpochsToALittleAboveThree) {
  Array<double> rows({Bounds{1, 50}, Bounds{1, 1}});
  for (std::size_t i = 0; i < 50; ++i) rows.elements()[i] = static_cast<double>(i);
  classifier->Inputs(rows);
  classifier->Run();
  const auto samples = engine->callsOf("SetConvexInputs(");
  ASSERT_THAT(samples, SizeIs(101 * 50));
  EXPECT_EQ(samples.front(), "SetConvexInputs([0.001], " + formatExact(50.0 / (100 / 3.0 * 50.0)) + ", 0)");
  EXPECT_NEAR(50.0 / (100 / 3.0 * 50.0), 0.03, 1e-15);
  EXPECT_EQ(samples[99 * 50 + 49], "SetConvexInputs([0.999], " + formatExact(5049.0 / (100 / 3.0 * 50.0)) + ", 0)");
  EXPECT_NEAR(5049.0 / (100 / 3.0 * 50.0), 3.0294, 1e-12);
  EXPECT_THAT(samples.back(), HasSubstr(", 1, 0)")) << "results are read with the factor 1";
}

TEST_F(Training, NumeratorOfTheConvexFactorWrapsIn32Bits) {
  classifier->EpochCount(std::numeric_limits<std::int32_t>::max());
  classifier->addNextEpochSink([this](std::int32_t& epoch, double&, std::int32_t&) {
    if (epoch == 1)
      epoch = 0x40000000 - 1;  // The next epoch times two samples is 2^31.
    else
      classifier->StopLearning();
  });
  classifier->Run();
  const auto samples = engine->callsOf("SetConvexInputs(");
  const double denominator = 2147483647.0 / 3.0 * 2.0;
  EXPECT_EQ(samples.at(2), "SetConvexInputs([0.001], " + formatExact(-2147483648.0 / denominator) + ", 0)");
  EXPECT_EQ(samples.at(3), "SetConvexInputs([0.999], " + formatExact(-2147483647.0 / denominator) + ", 0)");
}

TEST_F(Training, NoEpochsAtAllStillCreateAndStore) {
  for (const std::int32_t count : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
    engine->calls.clear();
    classifier->EpochCount(count);
    classifier->Run();
    EXPECT_THAT(engine->calls, ElementsAre("Create(1, 1, [3], 0.3, 3)", "InitConvexWeights()",              //
                                           "SetConvexInputs([0.001], 1, 0)", "Propagate()", "GetWinner()",  //
                                           "SetConvexInputs([0.999], 1, 0)", "Propagate()", "GetWinner()"));
  }
  EXPECT_THAT(events, IsEmpty());
  EXPECT_THAT(outputs(), ElementsAre(1, 3));
}

TEST_F(Training, TheOnlyEpochOfOneHasRateAndRadiusZero) {
  classifier->EpochCount(1);
  classifier->Run();
  EXPECT_THAT(rates(), ElementsAre("SetLearningRate(0)"));
  EXPECT_THAT(radii(), ElementsAre("SetRadius(0)"));
  EXPECT_THAT(events, ElementsAre(Event{1, 0.0, 0}));
}

TEST_F(Training, EachEpochReportsItsOwnRateAndRadius) {
  classifier->Run();
  ASSERT_THAT(events, SizeIs(100));
  EXPECT_EQ(events[0], (Event{1, 0.495, 2}));
  EXPECT_EQ(events[99], (Event{100, 0.0, 0}));
  for (std::size_t i = 0; i < events.size(); ++i) {
    EXPECT_EQ(events[i].epoch, static_cast<std::int32_t>(i) + 1);
    EXPECT_EQ("SetLearningRate(" + formatExact(events[i].rate) + ")", rates()[i]);
    EXPECT_EQ("SetRadius(" + std::to_string(events[i].radius) + ")", radii()[i]);
  }
}

TEST_F(Training, AStopInTheEventOfAnEpochRunsOneMoreInFullWithoutItsEvent) {
  classifier->addNextEpochSink([this](std::int32_t& epoch, double&, std::int32_t&) {
    if (epoch == 4) classifier->StopLearning();
  });
  classifier->Run();
  EXPECT_EQ(epochs(), 5U);
  EXPECT_THAT(events, SizeIs(4));
  EXPECT_THAT(engine->callsOf("AdjustWeights("), SizeIs(10)) << "the last pass is whole";
  EXPECT_THAT(outputs(), ElementsAre(1, 3)) << "results are stored all the same";
}

TEST_F(Training, AStopBeforeRunIsForgotten) {
  classifier->StopLearning();
  classifier->EpochCount(3);
  classifier->Run();
  EXPECT_EQ(epochs(), 3U);
  EXPECT_THAT(events, SizeIs(3));
}

TEST_F(Training, AStopInTheLastEventIsForgottenByTheNextRun) {
  classifier->EpochCount(2);
  const std::size_t sink = classifier->addNextEpochSink([this](std::int32_t& epoch, double&, std::int32_t&) {
    if (epoch == 2) classifier->StopLearning();
  });
  classifier->Run();
  classifier->removeNextEpochSink(sink);
  classifier->Run();
  EXPECT_EQ(epochs(), 4U);
}

TEST_F(Training, ASinkThatSetsTheCounterToTheEpochCountEndsTraining) {
  classifier->addNextEpochSink([](std::int32_t& epoch, double&, std::int32_t&) {
    if (epoch == 3) epoch = 100;
  });
  classifier->Run();
  EXPECT_EQ(epochs(), 3U);
  EXPECT_THAT(outputs(), ElementsAre(1, 3));
}

TEST_F(Training, TheLoopGoesOnBehindTheCounterThatASinkAssigned) {
  classifier->EpochCount(10);
  bool moved = false;
  classifier->addNextEpochSink([&](std::int32_t& epoch, double&, std::int32_t&) {
    if (epoch == 6 && !moved) {
      epoch = 3;
      moved = true;
    } else if (epoch == 5 && moved) {
      epoch = 8;
    }
  });
  classifier->Run();
  std::vector<std::int32_t> order;
  for (const Event& event : events) order.push_back(event.epoch);
  EXPECT_THAT(order, ElementsAre(1, 2, 3, 4, 5, 6, 4, 5, 9, 10));
}

TEST_F(Training, ACounterAtTheEndOfThe32BitRangeEndsTraining) {
  classifier->EpochCount(std::numeric_limits<std::int32_t>::max());
  classifier->addNextEpochSink(
      [](std::int32_t& epoch, double&, std::int32_t&) { epoch = std::numeric_limits<std::int32_t>::max(); });
  classifier->Run();
  EXPECT_EQ(epochs(), 1U);
}

TEST_F(Training, ASinksAssignmentsToRateAndRadiusHaveNoEffect) {
  classifier->EpochCount(3);
  classifier->addNextEpochSink([](std::int32_t&, double& rate, std::int32_t& radius) {
    rate = 77.0;
    radius = 77;
  });
  classifier->Run();
  EXPECT_THAT(rates(),
              ElementsAre("SetLearningRate(" + formatExact((1.0 - 1.0 / 3.0) * 0.5) + ")",
                          "SetLearningRate(" + formatExact((1.0 - 2.0 / 3.0) * 0.5) + ")", "SetLearningRate(0)"));
  EXPECT_THAT(radii(), ElementsAre("SetRadius(2)", "SetRadius(1)", "SetRadius(0)"));
}

TEST_F(Training, ParametersChangedByASinkTakeEffectInTheNextScheduleComputation) {
  classifier->EpochCount(4);
  classifier->addNextEpochSink([this](std::int32_t& epoch, double&, std::int32_t&) {
    if (epoch == 1) {
      classifier->LearningRate(0.8);
      classifier->LearningRadius(12.0);
      classifier->Clusters(9);
      classifier->InitialWeights(0.9);
    }
  });
  classifier->Run();
  EXPECT_EQ(rates()[1], "SetLearningRate(0.4)");
  EXPECT_EQ(radii()[1], "SetRadius(5)");
  EXPECT_THAT(engine->callsOf("Create("), ElementsAre("Create(1, 1, [3], 0.3, 3)")) << "these wait for the next run";
  engine->calls.clear();
  classifier->Run();
  EXPECT_THAT(engine->callsOf("Create("), ElementsAre("Create(1, 1, [9], 0.9, 3)"));
}

TEST_F(Training, AnEpochCountChangedByASinkMovesTheScheduleAndNotTheLoopBound) {
  classifier->EpochCount(3);
  classifier->addNextEpochSink([this](std::int32_t& epoch, double&, std::int32_t&) {
    if (epoch == 1) classifier->EpochCount(4);
  });
  classifier->Run();
  EXPECT_EQ(epochs(), 3U);
  EXPECT_EQ(rates()[1], "SetLearningRate(0.25)");
  EXPECT_EQ(radii()[1], "SetRadius(1)") << "2 times 3 over 4.8 is 1.25";
  EXPECT_THAT(engine->callsOf("SetConvexInputs(").at(2), HasSubstr(", " + formatExact(4.0 / (4 / 3.0 * 2.0)) + ", 0)"));
}

TEST_F(Training, ASinkThatTurnsScalingOffSendsRawValuesFromTheNextEpochOn) {
  classifier->EpochCount(2);
  classifier->addNextEpochSink([this](std::int32_t&, double&, std::int32_t&) { classifier->AutoScaleInputs(false); });
  classifier->Run();
  const auto samples = engine->callsOf("SetConvexInputs(");
  EXPECT_THAT(samples.at(1), StartsWith("SetConvexInputs([0.999], "));
  EXPECT_THAT(samples.at(3), StartsWith("SetConvexInputs([10], "));
  EXPECT_THAT(samples.at(5), StartsWith("SetConvexInputs([10], "));
}

TEST_F(Training, ASinkThatSetsOtherInputsFeedsThemFromTheNextEpochOn) {
  classifier->EpochCount(2);
  classifier->addNextEpochSink([this](std::int32_t& epoch, double&, std::int32_t&) {
    if (epoch == 1) classifier->Inputs(grid<double>({{1.0}, {3.0}, {2.0}}));
  });
  classifier->Run();
  const auto samples = engine->callsOf("SetConvexInputs(");
  ASSERT_THAT(samples, SizeIs(2 + 3 + 3));
  EXPECT_THAT(samples.at(4), StartsWith("SetConvexInputs([0.5], "));
  EXPECT_THAT(outputs(), ElementsAre(1, 3, 2));
}

TEST_F(Training, ASinkThatLeavesConvexModeFeedsByTheOtherCall) {
  classifier->EpochCount(2);
  classifier->addNextEpochSink(
      [this](std::int32_t&, double&, std::int32_t&) { classifier->UseConvexCombination(false); });
  classifier->Run();
  EXPECT_THAT(engine->callsOf("SetConvexInputs("), SizeIs(2));
  EXPECT_THAT(engine->callsOf("SetInputs("), SizeIs(4));
}

TEST_F(Training, ASinkMayRunTheObjectAgain) {
  classifier->EpochCount(2);
  bool again = true;
  classifier->addNextEpochSink([&](std::int32_t&, double&, std::int32_t&) {
    if (again) {
      again = false;
      classifier->Run();
    }
  });
  classifier->Run();
  EXPECT_EQ(epochs(), 4U);
  EXPECT_THAT(events, SizeIs(4));
  EXPECT_THAT(outputs(), ElementsAre(1, 3));
}

TEST_F(Training, ASinkMayLetGoOfTheObject) {
  std::weak_ptr<Classifier3> watch = classifier;
  classifier->EpochCount(3);
  classifier->addNextEpochSink([this](std::int32_t& epoch, double&, std::int32_t&) {
    if (epoch == 2) {
      made.front()->UnloadfrmMain();
      made.clear();
      classifier.reset();
    }
  });
  classifier.get()->Run();
  EXPECT_TRUE(watch.expired());
  EXPECT_THAT(engine->callsOf("DestroyNetwork("), SizeIs(1));
}

TEST_F(Training, SinksAreCalledInTheOrderOfTheirAddingAndSeeTheSameCounter) {
  classifier->EpochCount(5);
  std::vector<std::string> order;
  const std::size_t first = classifier->addNextEpochSink([&](std::int32_t& epoch, double& rate, std::int32_t&) {
    order.push_back("first " + std::to_string(epoch));
    rate = -1.0;
    if (epoch == 2) epoch = 4;
  });
  classifier->addNextEpochSink([&](std::int32_t& epoch, double& rate, std::int32_t&) {
    order.push_back("second " + std::to_string(epoch));
    EXPECT_EQ(rate, -1.0) << "all sinks of one event share its arguments";
    if (epoch == 1) classifier->removeNextEpochSink(99);
  });
  classifier->Run();
  EXPECT_THAT(order, ElementsAre("first 1", "second 1", "first 2", "second 4", "first 5", "second 5"));
  classifier->removeNextEpochSink(first);
}

TEST_F(Training, ARemovedSinkHearsNothingMore) {
  classifier->EpochCount(3);
  int heard = 0;
  std::size_t sink = 0;
  sink = classifier->addNextEpochSink([&](std::int32_t&, double&, std::int32_t&) {
    ++heard;
    classifier->removeNextEpochSink(sink);
  });
  classifier->Run();
  EXPECT_EQ(heard, 1);
  EXPECT_THAT(events, SizeIs(3)) << "the other sink stays";
}

TEST_F(Training, ASinksFailureIsAFailureOfTheTraining) {
  classifier->EpochCount(3);
  classifier->addNextEpochSink([](std::int32_t& epoch, double&, std::int32_t&) {
    if (epoch == 2) throw Failure(17, "sink");
  });
  dialog->answers = {"RETRY", "IGNORE"};
  classifier->Run();
  ASSERT_THAT(dialog->reports, SizeIs(2));
  EXPECT_THAT(dialog->reports[0], HasSubstr("\tError: 17, (sink)\r\n\tin MervaneClass3.Classifier3.TrainNetwork"));
  std::vector<std::int32_t> order;
  for (const Event& event : events) order.push_back(event.epoch);
  EXPECT_THAT(order, ElementsAre(1, 2, 2, 3)) << "a retry raises the event again to all sinks";
}

TEST_F(Training, ASingleRowTrainsAndGivesOneResult) {
  classifier->Inputs(grid<double>({{7.0, 8.0}}));
  classifier->EpochCount(2);
  classifier->Run();
  EXPECT_THAT(engine->callsOf("SetConvexInputs("), Each(StartsWith("SetConvexInputs([0.001 0.001], ")));
  EXPECT_THAT(outputs(), ElementsAre(1));
}

TEST_F(Training, FewerRowsThanClustersRunLikeAnyOther) {
  classifier->Clusters(50);
  classifier->EpochCount(2);
  classifier->Run();
  EXPECT_THAT(engine->callsOf("Create("), ElementsAre("Create(1, 1, [50], 0.3, 3)"));
  EXPECT_THAT(outputs(), ElementsAre(1, 50));
}

TEST_F(Training, RunTwiceCreatesTwiceAndDestroysNever) {
  classifier->EpochCount(1);
  classifier->Run();
  classifier->Run();
  EXPECT_THAT(engine->callsOf("Create("), SizeIs(2));
  EXPECT_THAT(engine->callsOf("DestroyNetwork("), IsEmpty());
}

TEST_F(Training, ScalingPutsTheSmallestAndLargestValueOfEachColumnAtItsEnds) {
  classifier->Inputs(grid<double>({{-4.0, 7.0, 3.0}, {6.0, 7.0, 1.0}, {1.0, 7.0, 2.0}}));
  classifier->EpochCount(0);
  classifier->Run();
  EXPECT_THAT(engine->callsOf("SetConvexInputs("),
              ElementsAre("SetConvexInputs([0.001 0.001 0.999], 1, 0)", "SetConvexInputs([0.999 0.001 0.001], 1, 0)",
                          "SetConvexInputs([0.5 0.001 0.5], 1, 0)"));
}

TEST_F(Training, WithoutScalingRawValuesReachTheEngine) {
  classifier->Inputs(grid<double>({{-4.0, 7e300}, {6.0, 1.25}}));
  classifier->AutoScaleInputs(false);
  classifier->EpochCount(0);
  classifier->Run();
  EXPECT_THAT(engine->callsOf("SetConvexInputs("),
              ElementsAre("SetConvexInputs([-4 7e+300], 1, 0)", "SetConvexInputs([6 1.25], 1, 0)"));
}

TEST_F(Training, EveryElementTypeReachesTheEngineAsDoubles) {
  classifier->AutoScaleInputs(false);
  classifier->EpochCount(0);
  machine.services->locale.decimalSeparator = ",";
  machine.services->locale.groupSeparators = {"."};
  const auto samplesOf = [&](const Variant& array) {
    engine->calls.clear();
    classifier->Inputs(array);
    classifier->Run();
    return engine->callsOf("SetConvexInputs(");
  };
  EXPECT_THAT(samplesOf(grid<float>({{0.1F, 2.0F}})), ElementsAre("SetConvexInputs([0.10000000149011612 2], 1, 0)"));
  EXPECT_THAT(samplesOf(grid<std::int32_t>({{-3, 2}})), ElementsAre("SetConvexInputs([-3 2], 1, 0)"));
  EXPECT_THAT(samplesOf(grid<std::int16_t>({{-3, 2}})), ElementsAre("SetConvexInputs([-3 2], 1, 0)"));
  EXPECT_THAT(samplesOf(grid<std::uint8_t>({{200, 2}})), ElementsAre("SetConvexInputs([200 2], 1, 0)"));
  EXPECT_THAT(samplesOf(grid<std::string>({{"1,5", "2"}})), ElementsAre("SetConvexInputs([1.5 2], 1, 0)"));
  EXPECT_THAT(samplesOf(grid<Variant>({{Variant("1,5"), Variant(true), Variant(), Variant(std::int16_t{7})}})),
              ElementsAre("SetConvexInputs([1.5 -1 0 7], 1, 0)"));
}

TEST_F(Training, ValuesOutsideTheRangesOfTheirColumnAreFedUnscaled) {
  // The ranges end at an element that does not convert, but the rows behind it are inputs all the same.
  classifier->Inputs(grid<double>({{0.0}, {0.0}, {0.0}, {0.0}, {0.0}}));
  EXPECT_THROW(classifier->Inputs(grid<Variant>(
                   {{Variant(1.0)}, {Variant(3.0)}, {Variant("north")}, {Variant(9.0)}, {Variant(-4.0)}})),
               Failure);
  classifier->EpochCount(0);
  dialog->answers = {"IGNORE"};
  classifier->Run();
  EXPECT_THAT(engine->callsOf("SetConvexInputs("),
              ElementsAre("SetConvexInputs([0.001], 1, 0)", "SetConvexInputs([0.999], 1, 0)",
                          "SetConvexInputs([], 1, 0)", "SetConvexInputs([9], 1, 0)", "SetConvexInputs([-4], 1, 0)"));
}

TEST_F(Training, NoRunReachesBeyondTheInputsOfAnArrayWithoutRowsOrColumns) {
  classifier->Inputs(Array<double>({Bounds{1, 2}, Bounds{1, 0}}));
  classifier->EpochCount(1);
  classifier->Run();
  EXPECT_THAT(engine->callsOf("SetConvexInputs("), SizeIs(4));
  EXPECT_THAT(engine->callsOf("SetConvexInputs("), Each(StartsWith("SetConvexInputs([], ")));
  EXPECT_THAT(outputs(), ElementsAre(1, 1));
}

}  // namespace
}  // namespace mervane
