#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

#include "cli/problem.h"
#include "cli/progress.h"

namespace mervane {
class Classifier3;
}

namespace mervane::cli {

class OutputFile;
class Talk;

/// Follows a training: shows its progress, writes its trace, and stops it where the user interrupts.
class TrainingWatch {
 public:
  /// @param classifier, talk, trace outlive the watch. @param trace gets one line for each epoch; null for none.
  TrainingWatch(Classifier3& classifier, Talk& talk, bool showProgress, OutputFile* trace);
  ~TrainingWatch();
  TrainingWatch(const TrainingWatch&) = delete;
  TrainingWatch& operator=(const TrainingWatch&) = delete;

  /// Training is about to begin; an interruption stops it from now on.
  void begin(std::int64_t rows);
  /// Training is over. Does nothing where it has not begun or has been ended before.
  void end();
  /// Raises the Problem that writing the trace met, if any.
  void requireTrace() const;

  [[nodiscard]] bool hasBegun() const noexcept { return begin_.has_value(); }
  [[nodiscard]] bool wasStopped() const noexcept { return wasStopped_; }
  /// Epochs finished, the one that a stop let run to its end included.
  [[nodiscard]] std::int32_t epochsDone() const noexcept;
  /// Spent between `begin` and `end`.
  [[nodiscard]] double seconds() const noexcept { return seconds_; }

 private:
  void epochDone(std::int32_t epoch, double rate, std::int32_t radius);

  Classifier3& classifier_;
  Talk& talk_;
  bool showProgress_;
  OutputFile* trace_;
  std::size_t sink_ = 0;
  std::optional<Progress> progress_;
  std::optional<std::chrono::steady_clock::time_point> begin_;
  bool hasEnded_ = false;
  double seconds_ = 0.0;
  std::int32_t epochs_ = 0;
  std::int32_t epochsDone_ = 0;
  bool wasStopped_ = false;
  /// Kept until the training is over, because the component takes failures of its own kind only.
  std::optional<Problem> traceTrouble_;
};

}  // namespace mervane::cli
