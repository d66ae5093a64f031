#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace mervane::cli {

class Talk;

/// What one line of progress tells.
struct ProgressState {
  std::int32_t epoch = 0;  ///< epochs finished
  std::int32_t epochs = 0;
  std::int64_t rows = 0;
  double seconds = 0.0;  ///< since the beginning of the training
};

/// A bar, the epochs, the rows learned a second, and the time that is left, in at most that many cells.
///
/// Both figures are means over the whole run so far, since each epoch costs the same; the time left counts the pass
/// that assigns the rows as one more epoch.
[[nodiscard]] std::string progressLine(const ProgressState& state, std::size_t width);

/// Shows the progress of a training on the status line, ten times a second at most.
class Progress {
 public:
  using Clock = std::chrono::steady_clock;

  /// @param talk outlives the progress. @param wanted false shows nothing at all.
  Progress(Talk& talk, bool wanted, std::int64_t rows, std::int32_t epochs);
  void begin();
  void epochDone(std::int32_t epoch);
  void end();

 private:
  Talk& talk_;
  bool isShown_;
  ProgressState state_;
  Clock::time_point begin_;
  std::optional<Clock::time_point> shown_;
};

}  // namespace mervane::cli
