#include "cli/cluster_run.h"

#include <chrono>
#include <limits>
#include <memory>
#include <utility>

#include "cli/interruption.h"
#include "cli/output_file.h"
#include "cli/problem.h"
#include "cli/progress.h"
#include "cli/services.h"
#include "cli/talk.h"
#include "cli/text_display.h"
#include "engine/competitive_network.h"
#include "mervane/classifier3.h"
#include "mervane/convert.h"
#include "mervane/failure.h"

namespace mervane::cli {
namespace {

Array<double> arrayOf(std::vector<double> values, std::size_t columns) {
  const std::size_t rows = values.size() / columns;
  constexpr std::size_t most = std::numeric_limits<std::int32_t>::max();
  if (rows > most || columns > most) {
    throw Problem(ExitStatus::dataRefused, grouped(static_cast<long long>(rows)) + " rows are too many",
                  "Rows and columns are counted in 31 bits; take a part of the data.");
  }
  Array<double> array({{1, static_cast<std::int32_t>(rows)}, {1, static_cast<std::int32_t>(columns)}});
  array.elements() = std::move(values);
  return array;
}

template <class Set>
void setProperty(const char* flag, const Set& set) {
  try {
    set();
  } catch (const Failure& failure) {
    throw Problem(ExitStatus::usage, std::string(flag) + ": " + failure.description(),
                  "See mervane cluster --help for the range of values.");
  }
}

void setProperties(Classifier3& classifier, const NetworkOptions& options) {
  classifier.Clusters(options.clusters);
  setProperty("--learning-rate", [&] {
    if (options.learningRate) classifier.LearningRate(*options.learningRate);
  });
  setProperty("--initial-weights", [&] {
    if (options.initialWeights) classifier.InitialWeights(*options.initialWeights);
  });
  if (options.epochs) classifier.EpochCount(*options.epochs);
  if (options.learningRadius) classifier.LearningRadius(*options.learningRadius);
  if (options.convex) classifier.UseConvexCombination(*options.convex);
  if (options.scale) classifier.AutoScaleInputs(*options.scale);
  if (options.activation) classifier.ActivationFunction(static_cast<enuActivationFunction>(*options.activation));
}

/// The samples as the network gets them in the end.
std::vector<double> seenSamples(const Classifier3& classifier) {
  const Variant inputs = classifier.Inputs();
  std::vector<double> samples = inputs.array().getIf<double>()->elements();
  if (!classifier.AutoScaleInputs()) return samples;
  constexpr double low = 0.001;
  constexpr double high = 0.999;
  const std::int32_t columns = classifier.GetColumnsCount();
  for (std::int32_t column = 0; column < columns; ++column) {
    const double smallest = classifier.getMinValue(column);
    const double largest = classifier.getMaxValue(column);
    for (std::size_t i = static_cast<std::size_t>(column); i < samples.size(); i += static_cast<std::size_t>(columns)) {
      samples[i] = classifier.ScaleValue(samples[i], smallest, largest, low, high);
    }
  }
  return samples;
}

std::string traceLine(std::int32_t epoch, double rate, std::int32_t radius) {
  return decimal(epoch) + "," + formatExact(rate) + "," + decimal(radius) + "\n";
}

/// Lets go of the component in the right order, whatever happens.
class OwnedClassifier {
 public:
  explicit OwnedClassifier(const Classifier3::Environment& environment) : object_(Classifier3::create(environment)) {}
  OwnedClassifier(const OwnedClassifier&) = delete;
  OwnedClassifier& operator=(const OwnedClassifier&) = delete;
  ~OwnedClassifier() { object_->UnloadfrmMain(); }
  [[nodiscard]] Classifier3& operator*() const { return *object_; }

 private:
  std::shared_ptr<Classifier3> object_;
};

}  // namespace

ClusterRun runClassifier(std::vector<double> values, std::size_t columns, const ClusterRunOptions& options, Talk& talk,
                         OutputFile* trace) {
  ErrorAnswers answers(talk, options.onError);
  const ServicesInUse services(answers);
  const auto engine = std::make_shared<CompetitiveNetwork>();
  const OwnedClassifier owned({.createEngine = [&] { return engine; }});
  Classifier3& classifier = *owned;

  const auto rows = static_cast<std::int64_t>(values.size() / columns);
  setProperties(classifier, options.network);
  classifier.Inputs(arrayOf(std::move(values), columns));

  ClusterRun run;
  run.columns = columns;
  run.clusters = classifier.Clusters();
  run.epochs = classifier.EpochCount();
  Progress progress(talk, options.showProgress, rows, run.epochs);
  if (trace != nullptr) trace->write("epoch,learning_rate,radius\n");
  std::optional<Problem> traceTrouble;  // The component takes failures of its own kind only.

  classifier.addNextEpochSink([&](std::int32_t& epoch, double& rate, std::int32_t& radius) {
    run.epochsDone = epoch;
    try {
      if (trace != nullptr && !traceTrouble) {
        trace->write(traceLine(epoch, rate, radius));
        trace->flush();
      }
    } catch (const Problem& problem) {
      traceTrouble = problem;
      classifier.StopLearning();
    }
    progress.epochDone(epoch);
    if (interruption::requested() && !run.wasStopped) {
      run.wasStopped = true;
      classifier.StopLearning();
      talk.note("stopping after the next epoch; press Ctrl-C again to leave without results");
    }
  });

  interruption::beginLearning();
  const auto begin = std::chrono::steady_clock::now();
  progress.begin();
  classifier.Run();
  progress.end();
  run.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();

  if (traceTrouble) throw *traceTrouble;
  run.ignoredFailures = answers.ignored();
  if (answers.aborted() > 0) {
    throw Problem(ExitStatus::engineFailure, "the run failed; nothing is written",
                  "The report above says what failed. --on-error tells how to go on after a failure.");
  }
  // The epoch that a stop lets run to its end raises no event.
  if (run.wasStopped && run.epochsDone < run.epochs) ++run.epochsDone;
  run.labels = classifier.Outputs().elements();
  run.samples = seenSamples(classifier);
  try {
    const auto weights = engine->weights();
    run.units.assign(weights.begin(), weights.end());
  } catch (const Failure&) {
    run.units.clear();  // A failure that was ignored has left no network.
  }
  return run;
}

}  // namespace mervane::cli
