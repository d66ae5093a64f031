#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "cli/error_answers.h"

namespace mervane {
class NetworkEngine;
}

namespace mervane::cli {

class OutputFile;
class Talk;

/// The properties of the component that the command line sets; what is left out keeps the component's default.
struct NetworkOptions {
  std::int32_t clusters = 3;
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
  ErrorPolicy onError;
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
  double seconds = 0.0;  ///< spent in training and assigning
  std::int32_t ignoredFailures = 0;
};

/// Runs the component on the values, row-major.
///
/// Progress stands on the status line of `talk`; an interruption stops the training and keeps the results. Raises a
/// Problem with the status engineFailure where a failure was reported and answered with abort, and with the status
/// usage where the component refuses a property.
/// @param trace gets one line for each epoch; null for none.
[[nodiscard]] ClusterRun runClassifier(std::vector<double> values, std::size_t columns,
                                       const ClusterRunOptions& options, Talk& talk, OutputFile* trace);

}  // namespace mervane::cli
