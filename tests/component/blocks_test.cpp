#include <cmath>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "tests/component/component_fixture.h"

namespace mervane {
namespace {

using testing::SizeIs;
using tests::grid;
using tests::RecordingEngine;

/// Runs the same script on an engine with blocks and on one without, and compares everything that a client can see.
class Blocks : public tests::ComponentTest {
 protected:
  struct Seen {
    std::vector<std::string> calls;
    std::vector<std::int32_t> outputs;
    std::vector<std::string> reports;
    std::vector<std::string> events;
    int blockCalls = 0;
  };
  using Script = std::function<void(Classifier3&, RecordingEngine&)>;

  Seen run(bool blocks, const Script& script, std::deque<std::string> answers = {}) {
    const auto network = std::make_shared<RecordingEngine>();
    network->offersBlocks = blocks;
    const auto object = make(network);
    Seen seen;
    object->addNextEpochSink([&](std::int32_t& epoch, double& rate, std::int32_t& radius) {
      seen.events.push_back(std::to_string(epoch) + " " + std::to_string(rate) + " " + std::to_string(radius));
    });
    dialog->reports.clear();
    dialog->answers = std::move(answers);
    script(*object, *network);
    seen.calls = network->calls;
    seen.outputs = object->Outputs().elements();
    seen.reports = dialog->reports;
    seen.blockCalls = network->blockCalls;
    return seen;
  }

  void expectSame(const Script& script, const std::deque<std::string>& answers = {}) {
    const Seen single = run(false, script, answers);
    const Seen blocks = run(true, script, answers);
    EXPECT_EQ(single.blockCalls, 0);
    EXPECT_GT(blocks.blockCalls, 0) << "nothing was compared";
    EXPECT_EQ(blocks.calls, single.calls);
    EXPECT_EQ(blocks.outputs, single.outputs);
    EXPECT_EQ(blocks.reports, single.reports);
    EXPECT_EQ(blocks.events, single.events);
  }

  /// Many rows, so that a pass is more than one block.
  static Array<double> manyRows(std::int32_t rows = 1300) {
    Array<double> array({Bounds{-3, rows - 4}, Bounds{2, 3}});
    for (std::size_t i = 0; i < array.elements().size(); ++i) {
      array.elements()[i] = std::fmod(static_cast<double>(i) * 0.7371, 11.0) - 3.0;
    }
    return array;
  }
};

TEST_F(Blocks, GiveTheCallsOfARunInEveryMode) {
  for (const bool convex : {true, false}) {
    for (const bool scaled : {true, false}) {
      expectSame([&](Classifier3& object, RecordingEngine&) {
        object.UseConvexCombination(convex);
        object.AutoScaleInputs(scaled);
        object.Inputs(manyRows());
        object.EpochCount(3);
        object.Run();
      });
    }
  }
}

TEST_F(Blocks, GiveTheCallsForEveryElementType) {
  const std::vector<Variant> arrays{grid<float>({{1.5F, 2.0F}, {0.1F, 7.0F}}),
                                    grid<std::int32_t>({{1, 2}, {-5, 7}}),
                                    grid<std::int16_t>({{1, 2}, {-5, 7}}),
                                    grid<std::uint8_t>({{1, 2}, {5, 7}}),
                                    grid<std::string>({{"1", "2"}, {"1.5", "7"}}),
                                    grid<Variant>({{Variant(1.0), Variant()}, {Variant(2.5F), Variant(true)}})};
  for (const Variant& array : arrays) {
    expectSame([&](Classifier3& object, RecordingEngine&) {
      object.Inputs(array);
      object.EpochCount(2);
      object.Run();
    });
  }
}

TEST_F(Blocks, FollowASinkThatChangesWhateverItLikesBetweenEpochs) {
  const Variant few(manyRows(7));
  const Variant more(manyRows(1100));
  expectSame([&](Classifier3& object, RecordingEngine&) {
    object.Inputs(few);
    object.EpochCount(12);
    object.addNextEpochSink([&](std::int32_t& epoch, double&, std::int32_t&) {
      switch (epoch) {
        case 1:
          object.AutoScaleInputs(false);
          break;
        case 2:
          object.Inputs(more);
          break;
        case 3:
          object.AutoScaleInputs(true);
          break;
        case 4:
          object.EpochCount(20);
          break;
        case 5:
          object.UseConvexCombination(false);
          break;
        case 6:
          object.UseConvexCombination(true);
          object.LearningRadius(9.0);
          break;
        case 7:
          epoch = 9;
          break;
        case 10:
          object.StopLearning();
          break;
        default:
          break;
      }
    });
    object.Run();
  });
}

TEST_F(Blocks, AreNotUsedForSamplesOfAnotherLengthThanTheNetworkWasBuiltFor) {
  const auto script = [](Classifier3& object, RecordingEngine&) {
    object.Inputs(grid<double>({{1.0, 2.0}, {3.0, 5.0}}));
    object.EpochCount(3);
    object.addNextEpochSink([&](std::int32_t& epoch, double&, std::int32_t&) {
      if (epoch == 2) object.Inputs(grid<double>({{1.0}, {4.0}, {2.0}}));
    });
    object.Run();
  };
  expectSame(script);
  EXPECT_EQ(run(true, script).blockCalls, 2) << "the first two passes; then one sample at a time";
}

TEST_F(Blocks, AreNotUsedWhereTheNetworkCouldNotBeBuilt) {
  const auto script = [](Classifier3& object, RecordingEngine& network) {
    network.failing = {1};
    object.Inputs(grid<double>({{1.0}, {3.0}}));
    object.EpochCount(2);
    object.Run();
  };
  const Seen single = run(false, script);
  const Seen blocks = run(true, script);
  EXPECT_EQ(blocks.blockCalls, 0);
  EXPECT_EQ(blocks.calls, single.calls);
}

TEST_F(Blocks, ARefusedSampleOfALargePassFailsAtItsPlaceWhateverTheAnswer) {
  for (const bool convex : {true, false}) {
    for (const std::deque<std::string>& answers : std::vector<std::deque<std::string>>{
             {"ABORT"}, {"RETRY"}, {"IGNORE"}, {"RETRY", "IGNORE"}, {"RETRY", "ABORT"}}) {
      for (const std::size_t sample : {std::size_t{0}, std::size_t{1023}, std::size_t{1024}, std::size_t{1299}}) {
        expectSame(
            [&](Classifier3& object, RecordingEngine& network) {
              object.UseConvexCombination(convex);
              object.Inputs(manyRows());
              object.EpochCount(2);
              std::size_t fed = 0;
              network.beforeCall = [&, sample](const std::string& call) {
                // In the first pass the chosen sample is refused, and once more where it is tried again.
                if (call.find("Inputs(") != std::string::npos && (fed++ == sample || fed == 2 * sample + 2)) {
                  throw Failure(99, "refused");
                }
              };
              object.Run();
            },
            answers);
      }
    }
  }
}

TEST_F(Blocks, ARefusedSampleAmongTheResultsFailsAtItsRowWhateverTheAnswer) {
  for (const std::deque<std::string>& answers : std::vector<std::deque<std::string>>{
           {"ABORT"}, {"RETRY"}, {"IGNORE"}, {"RETRY", "IGNORE"}, {"RETRY", "ABORT"}, {"IGNORE", "IGNORE"}}) {
    for (const std::size_t sample : {std::size_t{0}, std::size_t{1}, std::size_t{1024}, std::size_t{1298}}) {
      expectSame(
          [&](Classifier3& object, RecordingEngine& network) {
            object.Inputs(manyRows());
            object.EpochCount(1);
            std::size_t fed = 0;
            network.beforeCall = [&, sample](const std::string& call) {
              if (call.find("Inputs(") == std::string::npos) return;
              ++fed;
              if (fed == 1300 + sample + 1 || fed == 1300 + sample + 2) throw Failure(99, "refused");
            };
            object.Run();
          },
          answers);
    }
  }
}

TEST_F(Blocks, InputsReplacedWhileAFailureAmongTheResultsIsShownAreReadByTheRowsThatWereLeft) {
  const Array<double> moved({Bounds{2, 11}, Bounds{2, 3}}, manyRows(10).elements());
  // More rows, fewer rows, and rows that begin behind the one that failed.
  for (const Array<double>& other : {manyRows(20), manyRows(6), moved}) {
    for (const std::deque<std::string>& answers :
         std::vector<std::deque<std::string>>{{"IGNORE"}, {"RETRY"}, std::deque<std::string>(40, "IGNORE")}) {
      expectSame(
          [&](Classifier3& object, RecordingEngine& network) {
            object.Inputs(manyRows(10));
            object.EpochCount(1);
            std::size_t fed = 0;
            network.beforeCall = [&](const std::string& call) {
              if (call.find("Inputs(") != std::string::npos && ++fed == 10 + 3) throw Failure(99, "refused");
            };
            dialog->whileShown = [&](int showing) {
              if (showing == 1) object.Inputs(other);
            };
            object.Run();
            dialog->whileShown = nullptr;
          },
          answers);
    }
  }
}

TEST_F(Blocks, ARunOfDoublesWithoutScalingTakesTheClientsOwnArray) {
  const Variant array(manyRows(10));
  const double* const first = array.array().getIf<double>()->elements().data();
  const auto watching = std::make_shared<RecordingEngine>();
  watching->offersBlocks = true;
  const auto object = make(watching);
  object->UseConvexCombination(false);
  object->AutoScaleInputs(false);
  object->EpochCount(1);
  object->Inputs(array);
  object->Run();
  EXPECT_EQ(watching->lastBlock, first);
}

TEST_F(Blocks, AreUsedForEverySampleOfEveryPassAndOfTheResultsInEveryRun) {
  for (const bool convex : {true, false}) {
    for (const std::int32_t columns : {1, 2}) {
      const auto watching = std::make_shared<RecordingEngine>();
      watching->offersBlocks = true;
      const auto object = make(watching);
      object->UseConvexCombination(convex);
      object->EpochCount(2);
      Array<double> array({Bounds{5, 14}, Bounds{0, columns - 1}});
      array.elements()[3] = 1.0;
      object->Inputs(array);
      for (const int run : {1, 2}) {
        object->Run();
        EXPECT_EQ(watching->blockCalls, run * 3);
        EXPECT_EQ(watching->blockSamples, static_cast<std::size_t>(run * 3 * 10));
      }
    }
  }
}

TEST_F(Blocks, AreNotUsedInARunWhoseNetworkCouldNotBeBuiltAfterOneWhoseCould) {
  const auto watching = std::make_shared<RecordingEngine>();
  watching->offersBlocks = true;
  const auto object = make(watching);
  object->EpochCount(1);
  object->Inputs(grid<double>({{1.0}, {3.0}}));
  object->Run();
  EXPECT_EQ(watching->blockCalls, 2);
  watching->failing = {static_cast<int>(watching->calls.size()) + 1};
  object->Run();
  EXPECT_EQ(watching->blockCalls, 2);
}

TEST_F(Blocks, AreNotUsedForRowsWithoutColumnsOrArraysOfOneDimension) {
  const auto watching = std::make_shared<RecordingEngine>();
  watching->offersBlocks = true;
  const auto object = make(watching);
  object->EpochCount(1);
  object->Inputs(Array<double>({Bounds{1, 2}, Bounds{1, 0}}));
  object->Run();
  EXPECT_THAT(dialog->reports, testing::IsEmpty());
  EXPECT_THAT(watching->callsOf("SetConvexInputs("), SizeIs(4));

  static_cast<void>(tests::failureOf([&] { object->Inputs(Array<double>({Bounds{1, 1}})); }));
  object->EpochCount(0);
  dialog->answers.assign(10, "IGNORE");
  object->Run();
  // The column count in CreateNetwork, then that of the row's results; an empty sample is no failure.
  EXPECT_THAT(dialog->reports, SizeIs(2));
  EXPECT_EQ(watching->calls.back(), "GetWinner()");
  EXPECT_EQ(watching->blockCalls, 0);
}

}  // namespace
}  // namespace mervane
