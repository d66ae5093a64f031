#include <string>
#include <tuple>
#include <vector>

#include "mervane/convert.h"
#include "support/globals.h"
#include "tests/component/component_fixture.h"

namespace mervane {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;
using tests::grid;

/// Rows 0, 10 and 5, scaled; two epochs.
const std::vector<double> samples{0.001, 0.999, 0.5};
constexpr int epochCount = 2;

std::int32_t winnerOf(double value) {
  return value > 0.25 ? (value > 0.75 ? 2 : 1) : 0;
}

/// A traced procedure as its statements, each of them the engine calls that it makes.
struct Procedure {
  std::string key;
  std::vector<std::vector<std::string>> statements;
};

std::string feeding(bool convex, double sample, double factor) {
  const std::string value = formatExact(sample);
  return convex ? "SetConvexInputs([" + value + "], " + formatExact(factor) + ", 0)" : "SetInputs([" + value + "])";
}

std::vector<Procedure> undisturbedRun(bool convex) {
  Procedure create{"MervaneClass3.Classifier3.CreateNetwork", {{"Create(1, 1, [3], 0.3, 3)"}}};
  if (convex) {
    create.statements.push_back({"InitConvexWeights()"});
  } else {
    create.statements.push_back({"GetWeightRows()", "GetWeightColumns()", "SetWeight(0.3, 0, 0, 0)",
                                 "GetWeightColumns()", "SetWeight(0.3, 0, 1, 0)", "FinishWeightSetup()"});
  }
  Procedure train{"MervaneClass3.Classifier3.TrainNetwork", {}};
  for (int epoch = 1; epoch <= epochCount; ++epoch) {
    train.statements.push_back({epoch == 1 ? "SetLearningRate(0.25)" : "SetLearningRate(0)"});
    train.statements.push_back({epoch == 1 ? "SetRadius(1)" : "SetRadius(0)"});
    std::vector<std::string> pass;
    for (int k = 0; k < 3; ++k) {
      const double factor = (epoch * 3 + k) / (epochCount / 3.0 * 3.0);
      pass.insert(pass.end(),
                  {feeding(convex, samples[static_cast<std::size_t>(k)], factor), "Propagate()", "AdjustWeights()"});
    }
    train.statements.push_back(pass);
  }
  Procedure store{"MervaneClass3.Classifier3.StoreResults", {}};
  for (const double sample : samples) {
    store.statements.push_back({feeding(convex, sample, 1.0)});
    store.statements.push_back({"Propagate()"});
    store.statements.push_back({"GetWinner()"});
  }
  return {create, train, store};
}

/// What a run has to do whose n-th engine call fails once.
struct Expected {
  std::vector<std::string> calls;
  std::vector<std::int32_t> outputs{-7, -7, -7};  ///< -7 stands for what was there before
  int events = 0;
  std::string failingProcedure;
};

Expected expectedRun(bool convex, int failing, const std::string& answer) {
  Expected expected;
  double current = 0.0;
  std::int32_t winner = 0;
  for (const Procedure& procedure : undisturbedRun(convex)) {
    bool aborted = false;
    for (std::size_t s = 0; s < procedure.statements.size() && !aborted; ++s) {
      for (bool again = true; again;) {
        again = false;
        for (const std::string& call : procedure.statements[s]) {
          expected.calls.push_back(call);
          if (static_cast<int>(expected.calls.size()) == failing) {
            expected.failingProcedure = procedure.key;
            again = answer == "RETRY";
            aborted = answer == "ABORT";
            break;
          }
          if (call.find("Inputs(") != std::string::npos) current = std::stod(call.substr(call.find('[') + 1));
          if (call == "GetWinner()") winner = winnerOf(current);
        }
      }
      if (aborted) break;
      if (procedure.key.ends_with("TrainNetwork") && s % 3 == 2) ++expected.events;
      if (procedure.key.ends_with("StoreResults") && s % 3 == 2) expected.outputs[s / 3] = winner + 1;
    }
  }
  return expected;
}

class EngineFailures : public tests::ComponentTest,
                       public testing::WithParamInterface<std::tuple<bool, bool, std::string>> {
 protected:
  EngineFailures() {
    classifier->Inputs(grid<double>({{0.0}, {10.0}, {5.0}}));
    classifier->EpochCount(epochCount);
    engine->weightRows = 2;
    engine->weightColumns = 1;
    engine->winner = [](const std::vector<double>& sample) { return winnerOf(sample.at(0)); };
    classifier->addNextEpochSink([this](std::int32_t&, double&, std::int32_t&) { ++events; });
  }

  int events = 0;
};

TEST_P(EngineFailures, EachCallInTurnFailsOnceWithTheOutcomeThatItsStatementAsksFor) {
  const auto& [convex, blocks, answer] = GetParam();
  std::size_t callsOfARun = 0;
  for (const Procedure& procedure : undisturbedRun(convex)) {
    for (const auto& statement : procedure.statements) callsOfARun += statement.size();
  }

  for (int failing = 1; static_cast<std::size_t>(failing) <= callsOfARun; ++failing) {
    const Expected expected = expectedRun(convex, failing, answer);
    // An engine with blocks fails in them by refusing a sample and in no other way.
    const std::string& failingCall = expected.calls[static_cast<std::size_t>(failing - 1)];
    const bool inBlocks = blocks && failingCall.find("etWeight") == std::string::npos;
    if (inBlocks && (failingCall == "Propagate()" || failingCall == "AdjustWeights()" || failingCall == "GetWinner()"))
      continue;

    tests::RecordingEngine& network = *engine;
    network.calls.clear();
    network.failing = {failing};
    network.offersBlocks = blocks;
    network.weightRows = 2;
    network.beforeCall = [&network](const std::string&) { network.weightRows = 2; };
    dialog->reports.clear();
    dialog->answers = {answer};
    events = 0;
    classifier->UseConvexCombination(convex);
    classifier->Inputs(classifier->Inputs());

    classifier->Run();

    SCOPED_TRACE("failing call " + std::to_string(failing) + ": " + failingCall);
    EXPECT_EQ(network.calls, expected.calls);
    EXPECT_EQ(events, expected.events);
    auto results = expected.outputs;
    for (std::int32_t& one : results) {
      if (one == -7) one = 0;
    }
    EXPECT_EQ(outputs(), results);
    ASSERT_THAT(dialog->reports, SizeIs(1));
    EXPECT_THAT(dialog->reports[0], HasSubstr("\tError: 4711, (refused: " + failingCall + ")\r\n\tin " +
                                              expected.failingProcedure + " at line 0\r\n"));
    EXPECT_THAT(dialog->reports[0], EndsWith("The call stack is:\r\n                    " + expected.failingProcedure +
                                             "()\r\n                    MervaneClass3.Classifier3.Run()"));
  }
}

INSTANTIATE_TEST_SUITE_P(AllAnswers, EngineFailures,
                         testing::Combine(testing::Bool(), testing::Bool(),
                                          testing::Values("ABORT", "RETRY", "IGNORE")),
                         [](const auto& parameters) {
                           return std::string(std::get<0>(parameters.param) ? "Convex" : "CellByCell") +
                                  (std::get<1>(parameters.param) ? "InBlocks" : "OneByOne") +
                                  std::get<2>(parameters.param);
                         });

class FailingRun : public tests::ComponentTest {
 protected:
  FailingRun() {
    classifier->Inputs(grid<double>({{0.0}, {10.0}, {5.0}}));
    classifier->EpochCount(1);
  }
};

TEST_F(FailingRun, ARunWithoutInputsFailsAtTheColumnCountInCreateNetwork) {
  const auto freshEngine = std::make_shared<tests::RecordingEngine>();
  const auto fresh = make(freshEngine);
  fresh->EpochCount(0);
  fresh->Run();
  EXPECT_THAT(freshEngine->calls, IsEmpty());
  ASSERT_THAT(dialog->reports, SizeIs(2)) << "the results fail at the same array";
  EXPECT_THAT(dialog->reports[0],
              HasSubstr("\tError: 13, (Type mismatch)\r\n\tin MervaneClass3.Classifier3.CreateNetwork"));
  EXPECT_THAT(dialog->reports[1],
              HasSubstr("\tError: 13, (Type mismatch)\r\n\tin MervaneClass3.Classifier3.StoreResults"));
}

TEST_F(FailingRun, AnIgnoredColumnCountIsPassedToTheEngineAsZero) {
  const auto freshEngine = std::make_shared<tests::RecordingEngine>();
  const auto fresh = make(freshEngine);
  fresh->EpochCount(1);
  dialog->answers = {"IGNORE", "IGNORE", "IGNORE"};
  fresh->Run();
  EXPECT_THAT(freshEngine->calls,
              ElementsAre("Create(1, 0, [3], 0.3, 3)", "InitConvexWeights()", "SetLearningRate(0)", "SetRadius(0)"));
  EXPECT_THAT(dialog->reports, SizeIs(3)) << "column count, the pass, the rows of the results";
  EXPECT_EQ(fresh->Outputs().dimensions(), 0);
}

TEST_F(FailingRun, AbortInCreateNetworkStillTrainsAndStores) {
  engine->failing = {1};
  classifier->Run();
  EXPECT_THAT(engine->callsOf("SetLearningRate("), SizeIs(1));
  EXPECT_THAT(engine->callsOf("GetWinner("), SizeIs(3));
}

TEST_F(FailingRun, RetryOfAFailingPassShowsAllItsSamplesAgain) {
  engine->failing = {9};  // The second sample's Propagate.
  dialog->answers = {"RETRY"};
  classifier->Run();
  EXPECT_THAT(engine->callsOf("SetConvexInputs("), SizeIs(2 + 3 + 3));
}

TEST_F(FailingRun, AbortInTheResultsLeavesTheRowsBehindAsTheyWere) {
  classifier->Run();
  const std::vector<std::int32_t> before = outputs();
  engine->winner = [](const std::vector<double>&) { return 40; };
  engine->calls.clear();
  int winners = 0;
  engine->beforeCall = [&](const std::string& call) {
    if (call == "GetWinner()" && ++winners == 2) throw Failure(1, "no winner");
  };
  classifier->Run();
  EXPECT_THAT(outputs(), ElementsAre(41, before[1], before[2]));
}

TEST_F(FailingRun, AnIgnoredWinnerLeavesTheOneOfTheRowBefore) {
  int winners = 0;
  engine->beforeCall = [&](const std::string& call) {
    if (call == "GetWinner()" && ++winners == 2) throw Failure(1, "no winner");
  };
  dialog->answers = {"IGNORE"};
  classifier->Run();
  EXPECT_THAT(outputs(), ElementsAre(1, 1, 2));
}

TEST_F(FailingRun, EveryFailureIsShownAnewUntilTheRetrySucceeds) {
  engine->failing = {1, 2, 3};
  dialog->answers = {"RETRY", "RETRY", "RETRY"};
  classifier->Run();
  EXPECT_THAT(dialog->reports, SizeIs(3));
  EXPECT_THAT(engine->callsOf("Create("), SizeIs(4));
  EXPECT_THAT(outputs(), ElementsAre(1, 3, 2));
}

TEST_F(FailingRun, AfterAnAbortLaterReportsListOnlyWhatHasBeenPushedSince) {
  engine->beforeCall = [](const std::string& call) {
    if (call == "SetRadius(0)" || call == "GetWinner()") throw Failure(1, call);
  };
  classifier->Run();
  ASSERT_THAT(dialog->reports, SizeIs(2));
  EXPECT_THAT(dialog->reports[0], EndsWith("\r\n                    MervaneClass3.Classifier3.TrainNetwork()\r\n"
                                           "                    MervaneClass3.Classifier3.Run()"));
  EXPECT_THAT(dialog->reports[1], EndsWith("The call stack is:\r\n"
                                           "                    MervaneClass3.Classifier3.StoreResults()"))
      << "the first abort emptied the stack, Run's own entry with it";
}

TEST_F(FailingRun, AFailureOfTheHandlingLeavesTheRunThroughItsCallers) {
  // The dialog fails for CreateNetwork's failure; Run handles the handler's own failure, and is told to go on.
  engine->failing = {1};
  dialog->script.failCall(1);
  dialog->answers = {"IGNORE"};
  classifier->Run();
  ASSERT_THAT(dialog->reports, SizeIs(1));
  EXPECT_THAT(dialog->reports[0], HasSubstr("(CErrorHandler component failure)"));
  EXPECT_THAT(dialog->reports[0], EndsWith("\r\n                    MervaneClass3.Classifier3.CreateNetwork()\r\n"
                                           "                    MervaneClass3.Classifier3.Run()"));
  EXPECT_THAT(engine->callsOf("InitConvexWeights("), IsEmpty()) << "CreateNetwork was left behind its failure";
  EXPECT_THAT(outputs(), ElementsAre(1, 1, 1)) << "the engine was never told how many units it has";
}

TEST_F(FailingRun, AHandlingThatKeepsFailingReachesTheClient) {
  engine->failing = {1};
  dialog->script.failAlways();
  EXPECT_THAT(tests::failureOf([&] { classifier->Run(); }),
              tests::IsFailure(-2147204100, "CErrorHandler component failure", "MervaneCls31.CErrorHandler"));
}

TEST_F(FailingRun, ARadiusBeyondTheIntegerRangeIsAnOverflowOfItsStatement) {
  classifier->LearningRadius(1e12);
  classifier->EpochCount(2);
  dialog->answers = {"IGNORE", "IGNORE"};
  std::vector<std::int32_t> radii;
  classifier->addNextEpochSink([&](std::int32_t&, double& rate, std::int32_t& radius) {
    radii.push_back(radius);
    EXPECT_EQ(rate, radii.size() == 1 ? 0.25 : 0.0);
  });
  classifier->Run();
  ASSERT_THAT(dialog->reports, SizeIs(2)) << "the engine's radius, then the event's; the last epoch's is 0";
  EXPECT_THAT(dialog->reports[0], HasSubstr("\tError: 6, (Overflow)\r\n\tin MervaneClass3.Classifier3.TrainNetwork"));
  EXPECT_THAT(engine->callsOf("SetRadius("), ElementsAre("SetRadius(0)"));
  EXPECT_THAT(radii, ElementsAre(0, 0)) << "the event is raised with what the failed step left";
}

TEST_F(FailingRun, AnEpochCountOfZeroInMidRunOverflowsTheRadius) {
  classifier->EpochCount(2);
  classifier->addNextEpochSink([this](std::int32_t&, double&, std::int32_t&) { classifier->EpochCount(0); });
  classifier->Run();
  EXPECT_THAT(engine->callsOf("SetLearningRate("), ElementsAre("SetLearningRate(0.25)", testing::_));
  ASSERT_THAT(dialog->reports, SizeIs(1));
  EXPECT_THAT(dialog->reports[0], HasSubstr("(Overflow)"));
}

TEST_F(FailingRun, ElementsThatDoNotConvertFailThePassBehindTheRowsThatDo) {
  for (const bool blocks : {false, true}) {
    engine->offersBlocks = blocks;
    engine->calls.clear();
    dialog->reports.clear();
    // The range of the column cannot be taken either; the array is in place all the same.
    static_cast<void>(tests::failureOf([&] {
      classifier->Inputs(grid<Variant>({{Variant(1.0)}, {Variant(2.0)}, {Variant("north")}}));
    }));
    dialog->answers = {"RETRY", "IGNORE", "IGNORE", "ABORT"};
    classifier->EpochCount(1);
    classifier->AutoScaleInputs(false);
    classifier->Run();
    EXPECT_THAT(engine->calls,
                ElementsAre("Create(1, 1, [3], 0.3, 3)", "InitConvexWeights()", "SetLearningRate(0)", "SetRadius(0)",
                            StartsWith("SetConvexInputs([1], "), "Propagate()", "AdjustWeights()",  //
                            StartsWith("SetConvexInputs([2], "), "Propagate()", "AdjustWeights()",  //
                            StartsWith("SetConvexInputs([1], "), "Propagate()", "AdjustWeights()",  // the retry
                            StartsWith("SetConvexInputs([2], "), "Propagate()", "AdjustWeights()",  //
                            "SetConvexInputs([1], 1, 0)", "Propagate()", "GetWinner()",             //
                            "SetConvexInputs([2], 1, 0)", "Propagate()", "GetWinner()",             //
                            "SetConvexInputs([], 1, 0)", "Propagate()", "GetWinner()"))
        << "an ignored sample is handed over as the empty one";
    ASSERT_THAT(dialog->reports, SizeIs(3));
    EXPECT_THAT(dialog->reports[0], HasSubstr("(Type mismatch)\r\n\tin MervaneClass3.Classifier3.TrainNetwork"));
    EXPECT_THAT(dialog->reports[2], HasSubstr("(Type mismatch)\r\n\tin MervaneClass3.Classifier3.StoreResults"));
    EXPECT_THAT(outputs(), ElementsAre(3, 3, 1));
  }
}

TEST_F(FailingRun, ResultsForRowsThatOutputsDoesNotHaveFailAtTheirStoring) {
  for (const bool blocks : {false, true}) {
    classifier->Inputs(grid<double>({{0.0}, {10.0}}));
    static_cast<void>(tests::failureOf([&] {
      classifier->Inputs(grid<Variant>({{Variant(0.0)}, {Variant(1.0)}, {Variant("north")}}, 2));
    }));
    engine->offersBlocks = blocks;
    engine->calls.clear();
    dialog->reports.clear();
    dialog->answers = {"ABORT"};
    classifier->AutoScaleInputs(false);
    classifier->EpochCount(0);
    engine->winner = [](const std::vector<double>&) { return 4; };
    classifier->Run();
    EXPECT_THAT(outputs(), ElementsAre(0, 5)) << "row 2 is there, row 3 is not";
    ASSERT_THAT(dialog->reports, SizeIs(1));
    EXPECT_THAT(dialog->reports[0], HasSubstr("\tError: 9, (Subscript out of range)\r\n"
                                              "\tin MervaneClass3.Classifier3.StoreResults"));
  }
}

TEST_F(FailingRun, AnObjectUnloadedInMidRunFailsAtItsNextEngineCall) {
  classifier->EpochCount(3);
  dialog->answers = {"ABORT", "ABORT"};
  classifier->addNextEpochSink([this](std::int32_t&, double&, std::int32_t&) { classifier->UnloadfrmMain(); });
  classifier->Run();
  EXPECT_EQ(engine->calls.back(), "DestroyNetwork()");
  ASSERT_THAT(dialog->reports, SizeIs(2));
  EXPECT_THAT(dialog->reports[0], HasSubstr("(Object variable or With block variable not set)\r\n"
                                            "\tin MervaneClass3.Classifier3.TrainNetwork"));
  EXPECT_THAT(dialog->reports[1], HasSubstr("\tin MervaneClass3.Classifier3.StoreResults"));
}

TEST_F(FailingRun, ATracingFileThatFailsIsAFailureOfTheProcedureThatTraces) {
  classifier->EpochCount(0);
  for (int failing = 1;; ++failing) {
    globals::errorHandler().Init(ehaErrorForm, "e.txt", true, true, tfLogFile, "t.txt");
    globals::errorHandler().CallStackClear();
    machine.textFiles->script.failCall(failing);
    dialog->reports.clear();
    dialog->answers = {"IGNORE"};
    engine->calls.clear();
    classifier->Run();
    if (!machine.textFiles->script.triggered()) {
      EXPECT_EQ(failing, 9) << "four procedures, each entered and left once";
      break;
    }
    ASSERT_THAT(dialog->reports, SizeIs(1)) << failing;
    EXPECT_THAT(dialog->reports[0], HasSubstr("(CErrorHandler component failure)")) << failing;
    EXPECT_THAT(engine->callsOf("Create("), SizeIs(1)) << failing;
    EXPECT_THAT(engine->callsOf("GetWinner("), SizeIs(3)) << failing;
  }
}

TEST_F(FailingRun, TracingWritesEachEntryAndExitOfARun) {
  globals::errorHandler().Init(ehaErrorForm, "e.txt", true, true, tfLogFile, "t.txt");
  classifier->Run();
  const std::string time = "3/14/2005 - 3:07:09 PM --- ";
  const std::string in = time + "Entered routine: MervaneClass3.Classifier3.";
  const std::string out = time + "Exited routine: MervaneClass3.Classifier3.";
  EXPECT_EQ(machine.textFiles->content("t.txt"), in + "Run\r\n" + in + "CreateNetwork\r\n" + out + "CreateNetwork\r\n" +
                                                     in + "TrainNetwork\r\n" + out + "TrainNetwork\r\n" + in +
                                                     "StoreResults\r\n" + out + "StoreResults\r\n" + out + "Run\r\n");
}

}  // namespace
}  // namespace mervane
