#include "cli/training_watch.h"

#include <string>

#include "cli/interruption.h"
#include "cli/output_file.h"
#include "cli/talk.h"
#include "cli/text_display.h"
#include "mervane/classifier3.h"
#include "mervane/convert.h"

namespace mervane::cli {

TrainingWatch::TrainingWatch(Classifier3& classifier, Talk& talk, bool showProgress, OutputFile* trace)
    : classifier_(classifier), talk_(talk), showProgress_(showProgress), trace_(trace) {
  if (trace_ != nullptr) trace_->write("epoch,learning_rate,radius\n");
  sink_ = classifier_.addNextEpochSink(
      [this](std::int32_t& epoch, double& rate, std::int32_t& radius) { epochDone(epoch, rate, radius); });
}

TrainingWatch::~TrainingWatch() {
  classifier_.removeNextEpochSink(sink_);
}

void TrainingWatch::begin(std::int64_t rows) {
  epochs_ = classifier_.EpochCount();
  progress_.emplace(talk_, showProgress_, rows, epochs_);
  interruption::beginLearning();
  begin_ = std::chrono::steady_clock::now();
  progress_->begin();
}

void TrainingWatch::end() {
  if (!begin_ || hasEnded_) return;
  hasEnded_ = true;
  progress_->end();
  seconds_ = std::chrono::duration<double>(std::chrono::steady_clock::now() - *begin_).count();
}

void TrainingWatch::requireTrace() const {
  if (traceTrouble_) throw *traceTrouble_;
}

std::int32_t TrainingWatch::epochsDone() const noexcept {
  // The epoch that a stop lets run to its end raises no event.
  return wasStopped_ && epochsDone_ < epochs_ ? epochsDone_ + 1 : epochsDone_;
}

void TrainingWatch::epochDone(std::int32_t epoch, double rate, std::int32_t radius) {
  epochsDone_ = epoch;
  try {
    if (trace_ != nullptr && !traceTrouble_) {
      trace_->write(decimal(epoch) + "," + formatExact(rate) + "," + decimal(radius) + "\n");
      trace_->flush();
    }
  } catch (const Problem& problem) {
    traceTrouble_ = problem;
    classifier_.StopLearning();
  }
  if (progress_) progress_->epochDone(epoch);
  if (interruption::requested() && !wasStopped_) {
    wasStopped_ = true;
    classifier_.StopLearning();
    talk_.note("stopping after the next epoch; press Ctrl-C again to leave without results");
  }
}

}  // namespace mervane::cli
