#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/error_answers.h"
#include "cli/services.h"

namespace mervane {
class Classifier3;
class CompetitiveNetwork;
}  // namespace mervane

namespace mervane::cli {

class OutputFile;
class Talk;
class TrainingWatch;

/// The properties of the component that the command line sets; what is left out keeps the component's default.
struct NetworkOptions {
  std::optional<std::int32_t> clusters;
  std::optional<double> learningRate;
  std::optional<std::int32_t> epochs;
  std::optional<double> initialWeights;
  std::optional<double> learningRadius;
  std::optional<bool> convex;
  std::optional<bool> scale;
  std::optional<std::int32_t> activation;
};

struct ClusterRunOptions {
  NetworkOptions network;
  ErrorPolicy onError{ErrorPolicy::Answer::ask, 0};
  LogFiles logs;
  bool showProgress = true;
};

/// Samples and what the network made of them.
struct ClusterRun {
  std::vector<std::int32_t> labels;  ///< one for each row, 1 to clusters; 0 where a failure was ignored
  std::vector<double> samples;       ///< row-major, as the network saw them: scaled unless scaling is off
  std::vector<double> units;         ///< the weight vectors of the network, row-major; empty where they are not known
  std::size_t columns = 0;
  std::int32_t clusters = 0;
  std::int32_t epochs = 0;      ///< asked for
  std::int32_t epochsDone = 0;  ///< fewer where the training was interrupted
  bool wasStopped = false;
  bool scaled = true;
  double seconds = 0.0;  ///< spent in training and assigning
  std::int32_t ignoredFailures = 0;
};

/// A component with the built-in network, let go of in the right order, whatever happens. The thread has its services.
class OwnedClassifier {
 public:
  OwnedClassifier();
  OwnedClassifier(const OwnedClassifier&) = delete;
  OwnedClassifier& operator=(const OwnedClassifier&) = delete;
  ~OwnedClassifier();
  [[nodiscard]] Classifier3& operator*() const { return *object_; }

  /// What a finished run has made of the inputs.
  [[nodiscard]] ClusterRun outcome(const TrainingWatch& watch) const;

 private:
  std::shared_ptr<CompetitiveNetwork> engine_;
  std::shared_ptr<Classifier3> object_;
};

/// Sets the one property that the options dialog does not pass on. Raises a Problem with the status usage.
void setInitialWeights(Classifier3& classifier, const NetworkOptions& options);

/// Raises a Problem with the status engineFailure where a failure was answered with abort.
void requireNotAborted(const ErrorAnswers& answers);

/// Runs the component on the values, row-major.
///
/// Progress stands on the status line of `talk`; an interruption stops the training and keeps the results. Raises a
/// Problem with the status engineFailure where a failure was reported and answered with abort, and with the status
/// usage where the component refuses a property.
/// @param trace gets one line for each epoch; null for none.
[[nodiscard]] ClusterRun runClassifier(std::vector<double> values, std::size_t columns,
                                       const ClusterRunOptions& options, Talk& talk, OutputFile* trace);

}  // namespace mervane::cli
