#include "calc/run_watch.h"

#include <chrono>
#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/XToolkitExperimental.hpp>
#include <com/sun/star/task/XStatusIndicatorFactory.hpp>
#include <optional>
#include <vector>

#include "calc/border.h"
#include "calc/references.h"
#include "calc/texts.h"
#include "calc/undo_step.h"
#include "calc/window/desk_lock.h"
#include "calc/window/window_listener.h"
#include "mervane/classifier3.h"

namespace mervane::addin {

namespace {

constexpr const char* undoTitle = "Clusterize";
constexpr std::chrono::milliseconds betweenLooks{100};

}  // namespace

class RunWatch::Work {
 public:
  Work(Office office, uno::Reference<star::frame::XFrame> frame, uno::Reference<star::frame::XModel> document,
       Classifier3& classifier)
      : office_(std::move(office)),
        frame_(std::move(frame)),
        document_(std::move(document)),
        classifier_(classifier),
        keys_(new WindowListener({.resized = {}, .activated = {}, .key = [this](int key) { return pressed(key); }})),
        sink_(classifier.addNextEpochSink([this](std::int32_t& epoch, double&, std::int32_t&) { epochDone(epoch); })) {}
  ~Work() {
    keys_->detach();
    classifier_.removeNextEpochSink(sink_);
    end({});
  }
  Work(const Work&) = delete;
  Work& operator=(const Work&) = delete;

  void begin();
  void end(const std::function<void()>& writeAll);
  [[nodiscard]] bool isRunning() const { return running_; }
  [[nodiscard]] bool wasStopped() const { return stopped_; }

 private:
  [[nodiscard]] std::vector<star::table::CellRangeAddress> writtenCells() const;
  void noteSorting();
  void epochDone(std::int32_t epoch);
  void look(std::int32_t epoch);
  bool pressed(int key);

  Office office_;
  uno::Reference<star::frame::XFrame> frame_;
  uno::Reference<star::frame::XModel> document_;
  Classifier3& classifier_;
  rtl::Reference<WindowListener> keys_;
  std::size_t sink_;
  bool running_ = false;
  bool stopped_ = false;
  /// The last epoch is over, and there is nothing left to stop.
  bool writing_ = false;
  std::chrono::steady_clock::time_point lastLook_;
  uno::Reference<star::task::XStatusIndicator> indicator_;
  std::unique_ptr<UndoStep> undo_;
  uno::Reference<awt::XToolkitExperimental> toolkit_;
  std::optional<KeyWatch> keyWatch_;
  /// No window takes keys and clicks, but Escape, which is read before it gets there.
  std::optional<DeskLock> lock_;
};

void RunWatch::Work::begin() {
  if (running_) return;
  running_ = true;
  stopped_ = false;
  writing_ = false;
  // Each of these is a comfort; the run goes on without any of them.
  atBorder([&] { undo_ = std::make_unique<UndoStep>(office_, document_, writtenCells(), undoTitle); });
  atBorder([&] {
    const uno::Reference<star::task::XStatusIndicatorFactory> factory(frame_, uno::UNO_QUERY_THROW);
    indicator_ = factory->createStatusIndicator();
    indicator_->start(toOffice(said(text::running)), classifier_.EpochCount());
  });
  atBorder([&] { toolkit_ = office_.create<awt::XToolkitExperimental>("com.sun.star.awt.Toolkit"); });
  atBorder([&] { keyWatch_.emplace(office_, keys_); });
  lock_.emplace(office_, nullptr);
  lastLook_ = std::chrono::steady_clock::now();
}

void RunWatch::Work::end(const std::function<void()>& writeAll) {
  if (!running_) return;
  struct Ending {
    Work& work;
    ~Ending() {
      work.keyWatch_.reset();
      work.undo_.reset();
      atBorder([&] {
        if (work.indicator_.is()) work.indicator_->end();
      });
      work.lock_.reset();
      work.indicator_.clear();
      work.running_ = false;
    }
  };
  const Ending ending{*this};
  if (writeAll) writeAll();
  atBorder([&] { noteSorting(); });
}

/// For the undo step: the component keeps the cluster numbers in the order that the rows had before.
void RunWatch::Work::noteSorting() {
  const auto inputs = rangeOf(document_, classifier_.CellInputs());
  if (!undo_ || !inputs) return;
  const Array<std::int32_t> clusters = classifier_.Outputs();
  undo_->mayHaveSorted(*inputs, {clusters.elements().begin(), clusters.elements().end()});
}

/// What a run writes at most: the rows of the input with one column more, five blocks of a row for each cluster under
/// them, and the listing.
std::vector<star::table::CellRangeAddress> RunWatch::Work::writtenCells() const {
  constexpr sal_Int32 blocks = 5;
  std::vector<star::table::CellRangeAddress> written;
  const auto inputs = rangeOf(document_, classifier_.CellInputs());
  const auto outputs = rangeOf(document_, classifier_.CellOutputs());
  if (!inputs || !outputs) return written;
  const sal_Int32 clusters = classifier_.Clusters();
  written.push_back({inputs->Sheet, inputs->StartColumn, inputs->StartRow, inputs->EndColumn + 1,
                     inputs->EndRow + blocks * clusters});
  written.push_back({outputs->Sheet, outputs->StartColumn, outputs->StartRow, outputs->StartColumn + clusters - 1,
                     outputs->StartRow + inputs->EndRow - inputs->StartRow});
  return written;
}

bool RunWatch::Work::pressed(int key) {
  // The error window and messages come with the run on, and have their own keys.
  if (!running_ || !lock_ || !lock_->hasKeyboard()) return false;
  if (key == awt::Key::ESCAPE && !stopped_ && !writing_) {
    stopped_ = true;
    classifier_.StopLearning();
    if (indicator_.is()) indicator_->setText(toOffice(said(text::stopped)));
  }
  return true;
}

void RunWatch::Work::epochDone(std::int32_t epoch) {
  const auto now = std::chrono::steady_clock::now();
  const bool last = epoch >= classifier_.EpochCount();
  if (!running_ || (!last && now - lastLook_ < betweenLooks)) return;
  atBorder([&] { look(epoch); });
  lastLook_ = std::chrono::steady_clock::now();
}

void RunWatch::Work::look(std::int32_t epoch) {
  if (indicator_.is()) {
    writing_ = epoch >= classifier_.EpochCount();
    if (writing_) indicator_->setText(toOffice(said(text::writing)));
    indicator_->setValue(epoch);
  }
  // What the user has pressed meanwhile.
  if (toolkit_.is()) toolkit_->processEventsToIdle();
}

RunWatch::RunWatch(const Office& office, const uno::Reference<star::frame::XFrame>& frame,
                   const uno::Reference<star::frame::XModel>& document, Classifier3& classifier)
    : work_(std::make_unique<Work>(office, frame, document, classifier)) {}
RunWatch::~RunWatch() = default;

void RunWatch::begin() {
  work_->begin();
}
void RunWatch::end(const std::function<void()>& writeAll) {
  work_->end(writeAll);
}
bool RunWatch::isRunning() const {
  return work_->isRunning();
}
bool RunWatch::wasStopped() const {
  return work_->wasStopped();
}

}  // namespace mervane::addin
