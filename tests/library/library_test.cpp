#include "mervane/library.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "component/network_engine/network_engine.h"
#include "library/default_services.h"
#include "mervane/failure.h"
#include "support/globals.h"

namespace mervane {
namespace {

/// What happened to an engine, told also when it is gone.
struct EngineLog {
  int propagations = 0;
  int destroyed = 0;
  int failuresLeft = 0;
};

/// A network whose winner is the first input's parity. Its sample hand-over can be made to fail.
class ParityEngine final : public NetworkEngine {
 public:
  explicit ParityEngine(EngineLog& log) : log_(log) {}
  void Create(std::int32_t, std::int32_t, std::span<const std::int32_t>, double, std::int32_t) override {}
  std::int32_t GetWeightRows() override { return 0; }
  std::int32_t GetWeightColumns() override { return 0; }
  void InitConvexWeights() override {
    if (log_.failuresLeft == 0) return;
    --log_.failuresLeft;
    throw Failure(5, "no weights today");
  }
  void FinishWeightSetup() override {}
  void SetLearningRate(double) override {}
  void SetRadius(std::int32_t) override {}
  std::int32_t SetWeight(double, std::int32_t, std::int32_t, std::int32_t) override { return 0; }
  void SetInputs(std::span<const double> sample) override { winner_ = static_cast<std::int32_t>(sample[0]) % 2; }
  void SetConvexInputs(std::span<const double> sample, double, std::int32_t) override { SetInputs(sample); }
  void Propagate() override { ++log_.propagations; }
  std::int32_t GetWinner() override { return winner_; }
  void AdjustWeights() override {}
  void DestroyNetwork() override { ++log_.destroyed; }

 private:
  EngineLog& log_;
  std::int32_t winner_ = 0;
};

/// Each test begins on a thread without services and without a reader.
class Library : public testing::Test {
 protected:
  Library() { clean(); }
  ~Library() override { clean(); }

  EngineFactory parityEngine() {
    return [this] {
      auto engine = std::make_shared<ParityEngine>(log);
      lastEngine = engine;
      return engine;
    };
  }

  void collectReports(FailureAnswer answer) {
    readFailures([this, answer](const std::string& report) {
      reports.push_back(report);
      return answer;
    });
  }

  static Array<double> counted(std::int32_t rows) {
    Array<double> array({{1, rows}, {1, 1}});
    for (std::int32_t row = 1; row <= rows; ++row) array.at(row, 1) = row;
    return array;
  }

  EngineLog log;
  std::weak_ptr<ParityEngine> lastEngine;
  std::vector<std::string> reports;

 private:
  static void clean() {
    globals::release();
    readFailures({});
  }
};

TEST_F(Library, ClustersAnArrayWithTheBuiltInNetwork) {
  collectReports(FailureAnswer::abort);
  const auto classifier = createClassifier();
  Array<double> array({{0, 5}, {0, 0}});
  const double values[] = {1, 100, 2, 101, 3, 102};
  for (std::int32_t row = 0; row < 6; ++row) array.at(row, 0) = values[row];
  int epochs = 0;
  classifier->addNextEpochSink([&](std::int32_t&, double&, std::int32_t&) { ++epochs; });
  classifier->Clusters(2);
  classifier->Inputs(array);
  classifier->Run();
  EXPECT_EQ(epochs, 100);
  const Array<std::int32_t> outputs = classifier->Outputs();
  EXPECT_EQ(outputs.at(0), outputs.at(2));
  EXPECT_EQ(outputs.at(0), outputs.at(4));
  EXPECT_EQ(outputs.at(1), outputs.at(3));
  EXPECT_EQ(outputs.at(1), outputs.at(5));
  EXPECT_NE(outputs.at(0), outputs.at(1));
  EXPECT_TRUE(reports.empty());
}

TEST_F(Library, AProgramsOwnEngineIsUsed) {
  const auto classifier = createClassifier(parityEngine());
  classifier->AutoScaleInputs(false);
  classifier->EpochCount(2);
  classifier->Inputs(counted(4));
  classifier->Run();
  EXPECT_EQ(classifier->Outputs().elements(), (std::vector<std::int32_t>{2, 1, 2, 1}));
  EXPECT_EQ(log.propagations, 3 * 4);
}

TEST_F(Library, TheLastPointerToGoUnloadsEverything) {
  auto classifier = createClassifier(parityEngine());
  auto second = classifier;
  const std::weak_ptr<Classifier3> watched = classifier->weak_from_this();
  classifier.reset();
  EXPECT_EQ(log.destroyed, 0);
  EXPECT_FALSE(lastEngine.expired());
  second.reset();
  EXPECT_EQ(log.destroyed, 1);
  EXPECT_TRUE(lastEngine.expired());
  EXPECT_TRUE(watched.expired());
}

TEST_F(Library, AFailureInsideRunReachesTheReaderAndNobodyElse) {
  collectReports(FailureAnswer::abort);
  const auto classifier = createClassifier(parityEngine());
  classifier->Inputs(counted(2));
  log.failuresLeft = 1;
  EXPECT_NO_THROW(classifier->Run());
  ASSERT_EQ(reports.size(), 1U);
  EXPECT_NE(reports[0].find("Error: 5, (no weights today)\r\n"), std::string::npos) << reports[0];
  EXPECT_NE(reports[0].find("MervaneClass3.Classifier3.CreateNetwork()"), std::string::npos) << reports[0];
}

TEST_F(Library, RetryRunsTheFailingStatementAgain) {
  collectReports(FailureAnswer::retry);
  const auto classifier = createClassifier(parityEngine());
  classifier->AutoScaleInputs(false);
  classifier->Inputs(counted(2));
  log.failuresLeft = 3;
  classifier->Run();
  EXPECT_EQ(reports.size(), 3U);
  EXPECT_EQ(classifier->Outputs().elements(), (std::vector<std::int32_t>{2, 1}));
}

TEST_F(Library, WithoutAReaderAReportGoesToStandardErrorAndIsAnsweredByAbort) {
  const auto classifier = createClassifier(parityEngine());
  classifier->Inputs(counted(2));
  log.failuresLeft = 1;
  testing::internal::CaptureStderr();
  classifier->Run();
  const std::string printed = testing::internal::GetCapturedStderr();
  EXPECT_NE(printed.find("no weights today"), std::string::npos);
  EXPECT_EQ(log.failuresLeft, 0);
}

TEST_F(Library, AMissingEngineIsReportedAndTheClassifierStaysHarmless) {
  collectReports(FailureAnswer::ignore);
  const auto classifier = createClassifier(EngineFactory());
  EXPECT_EQ(reports.size(), 1U);
  classifier->Inputs(counted(2));
  EXPECT_EQ(classifier->Outputs().elements(), (std::vector<std::int32_t>{0, 0}));
}

TEST_F(Library, ServicesThatTheProgramHasSetStay) {
  const auto own = std::make_shared<platform::Services>(*library::defaultServices());
  globals::platform(own);
  const auto classifier = createClassifier();
  EXPECT_EQ(&globals::platform(), own.get());
}

TEST_F(Library, WithoutWindowsTheDialogRaisesToTheCaller) {
  collectReports(FailureAnswer::abort);
  const auto classifier = createClassifier(parityEngine());
  EXPECT_THROW(classifier->CellInputs("A1:B2"), Failure);
  EXPECT_THROW((void)classifier->ShowMainForm(), Failure);
}

}  // namespace
}  // namespace mervane
