#include "cli/cluster_run.h"

#include <limits>
#include <memory>
#include <utility>

#include "cli/problem.h"
#include "cli/services.h"
#include "cli/talk.h"
#include "cli/text_display.h"
#include "cli/training_watch.h"
#include "engine/competitive_network.h"
#include "mervane/classifier3.h"
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
  const Bounds rowBounds{1, static_cast<std::int32_t>(rows)};
  const Bounds columnBounds{1, static_cast<std::int32_t>(columns)};
  return Array<double>({rowBounds, columnBounds}, std::move(values));
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

}  // namespace

void setInitialWeights(Classifier3& classifier, const NetworkOptions& options) {
  setProperty("--initial-weights", [&] {
    if (options.initialWeights) classifier.InitialWeights(*options.initialWeights);
  });
}

namespace {

void setProperties(Classifier3& classifier, const NetworkOptions& options) {
  if (options.clusters) classifier.Clusters(*options.clusters);
  setProperty("--learning-rate", [&] {
    if (options.learningRate) classifier.LearningRate(*options.learningRate);
  });
  setInitialWeights(classifier, options);
  if (options.epochs) classifier.EpochCount(*options.epochs);
  if (options.learningRadius) classifier.LearningRadius(*options.learningRadius);
  if (options.convex) classifier.UseConvexCombination(*options.convex);
  if (options.scale) classifier.AutoScaleInputs(*options.scale);
  if (options.activation) classifier.ActivationFunction(static_cast<enuActivationFunction>(*options.activation));
}

template <class T>
std::vector<double> widened(const Array<T>& array) {
  return {array.elements().begin(), array.elements().end()};
}

/// The samples as the network gets them in the end.
std::vector<double> seenSamples(const Classifier3& classifier) {
  const Variant inputs = classifier.Inputs();
  const auto* single = inputs.array().getIf<float>();
  std::vector<double> samples = single != nullptr ? widened(*single) : widened(*inputs.array().getIf<double>());
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

}  // namespace

OwnedClassifier::OwnedClassifier()
    : engine_(std::make_shared<CompetitiveNetwork>()),
      object_(Classifier3::create({.createEngine = [engine = engine_] { return engine; }})) {}

OwnedClassifier::~OwnedClassifier() {
  object_->UnloadfrmMain();
}

ClusterRun OwnedClassifier::outcome(const TrainingWatch& watch) const {
  ClusterRun run;
  run.columns = static_cast<std::size_t>(object_->GetColumnsCount());
  run.clusters = object_->Clusters();
  run.epochs = object_->EpochCount();
  run.epochsDone = watch.epochsDone();
  run.wasStopped = watch.wasStopped();
  run.scaled = object_->AutoScaleInputs();
  run.seconds = watch.seconds();
  run.labels = object_->Outputs().elements();
  run.samples = seenSamples(*object_);
  try {
    const auto weights = engine_->weights();
    run.units.assign(weights.begin(), weights.end());
  } catch (const Failure&) {
    run.units.clear();  // A failure that was ignored has left no network.
  }
  return run;
}

void requireNotAborted(const ErrorAnswers& answers) {
  if (answers.aborted() > 0) throw failedRun(answers.causeOfAbort());
}

ClusterRun runClassifier(std::vector<double> values, std::size_t columns, const ClusterRunOptions& options, Talk& talk,
                         OutputFile* trace) {
  ErrorAnswers answers(talk, options.onError);
  const ServicesInUse services(commandLineServices(answers));
  const OwnedClassifier owned;
  Classifier3& classifier = *owned;
  switchOnLogs(options.logs);

  const auto rows = static_cast<std::int64_t>(values.size() / columns);
  setProperties(classifier, options.network);
  classifier.Inputs(arrayOf(std::move(values), columns));

  TrainingWatch watch(classifier, talk, options.showProgress, trace);
  watch.begin(rows);
  {
    const ErrorAnswers::Run run(answers);
    classifier.Run();
  }
  watch.end();

  watch.requireTrace();
  requireNotAborted(answers);
  ClusterRun run = owned.outcome(watch);
  run.ignoredFailures = answers.ignored();
  return run;
}

}  // namespace mervane::cli
