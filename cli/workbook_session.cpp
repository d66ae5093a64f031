#include "cli/workbook_session.h"

#include <exception>
#include <optional>
#include <utility>

#include "cli/problem.h"
#include "cli/talk.h"
#include "cli/training_watch.h"
#include "dialog/store_without_places.h"
#include "guard/refusal.h"
#include "mervane/classifier3.h"
#include "mervane/failure.h"
#include "platform/headless/headless_option_window.h"
#include "spreadsheet/application.h"
#include "support/globals.h"

namespace mervane::cli {

/// A message box whose text is told when the run is over.
class WorkbookServices::KeptMessage final : public platform::MessageBox {
 public:
  Answer show(const std::string& text, Buttons buttons) override {
    text_ = text;
    return buttons == Buttons::ok ? Answer::ok : Answer::abort;
  }
  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  std::string text_;
};

/// The pointer turns into the hourglass when all checks are passed and the training is about to begin.
class WorkbookServices::WatchedScreen final : public platform::Screen {
 public:
  std::function<void()> atHourglass;

  void pointer(std::int32_t shape) override {
    if (shape == pointerHourglass && atHourglass) atHourglass();
  }
  void beep() override {}
};

class WorkbookServices::User final : public platform::HeadlessUser {};

WorkbookServices::WorkbookServices(Talk& talk, const ErrorPolicy& onError, bool remembered)
    : answers_(talk, onError),
      message_(std::make_shared<KeptMessage>()),
      screen_(std::make_shared<WatchedScreen>()),
      user_(std::make_shared<User>()) {
  const auto services = remembered ? rememberingServices(answers_) : commandLineServices(answers_);
  if (remembered) services->keyStore = dialog::storeWithoutPlaces(services->keyStore);
  services->messageBox = message_;
  services->screen = screen_;
  services->createOptionWindow = platform::headlessOptionWindows(user_);
  inUse_ = std::make_unique<ServicesInUse>(services);
}

WorkbookServices::~WorkbookServices() = default;

ClusterRun WorkbookSession::run(const DialogEntries& entries, const ClusterRunOptions& options,
                                const BeforeRun& beforeRun, OutputFile* trace) {
  const OwnedClassifier owned;
  Classifier3& classifier = *owned;
  switchOnLogs(options.logs);
  const sheet::ObjectRef application = book_.application();
  // Flags hold A1 references, whichever notation the workbook shows. The file keeps its own.
  const Variant notation[] = {Variant(sheet::referenceStyleA1)};
  static_cast<void>(application->invoke(sheet::Access::put, sheet::member::ReferenceStyle, notation));
  classifier.ExcelApplication(application);
  setInitialWeights(classifier, entries.network);

  TrainingWatch watch(classifier, talk_, options.showProgress, trace);
  services_.screen_->atHourglass = [&] { watch.begin(classifier.GetSamplesCount()); };
  // What is raised while the window is up would pass through the dialog; it is kept until that is down.
  std::exception_ptr trouble;
  services_.user_->atNextShowing([&](platform::HeadlessOptionWindow& window) {
    try {
      if (const auto refusal = enter(entries, window, globals::locale(), talk_)) throw *refusal;
      const DialogEntries changes = beforeRun(heldBy(window, globals::locale()));
      if (const auto refusal = enter(changes, window, globals::locale(), talk_)) throw *refusal;
      window.press("CLASSIFY");
    } catch (...) {
      trouble = std::current_exception();
    }
  });
  std::string result;
  {
    struct WatchNoMore {
      WorkbookServices::WatchedScreen& screen;
      ~WatchNoMore() { screen.atHourglass = nullptr; }
    };
    const WatchNoMore behind{*services_.screen_};
    const ErrorAnswers::Run run(services_.answers_);
    result = classifier.ShowMainForm();
  }
  watch.end();

  if (trouble) std::rethrow_exception(trouble);
  watch.requireTrace();
  requireNotAborted(services_.answers_);
  if (result == "INVALIDDATA") refuse(classifier);
  ClusterRun run = owned.outcome(watch);
  run.ignoredFailures = services_.answers_.ignored();
  return run;
}

void WorkbookSession::refuse(Classifier3& classifier) {
  const std::string where =
      guard::whyRefused(book_, {.inputs = "--inputs", .outputs = "--outputs"}, services_.message_->text(),
                        classifier.CellInputs(), classifier.CellOutputs());
  throw Problem(ExitStatus::dataRefused, services_.message_->text(), where);
}

}  // namespace mervane::cli
