#pragma once

#include <functional>
#include <memory>
#include <string>

#include "cli/cluster_run.h"
#include "cli/dialog_entries.h"
#include "hosts/book/open_book.h"

namespace mervane::cli {

/// The machine as a workbook run sees it, in force for this thread as long as the object lives.
class WorkbookServices {
 public:
  /// @param remembered with the user's regional settings and what the options dialog remembers
  WorkbookServices(Talk& talk, const ErrorPolicy& onError, bool remembered);
  ~WorkbookServices();
  WorkbookServices(const WorkbookServices&) = delete;
  WorkbookServices& operator=(const WorkbookServices&) = delete;

  [[nodiscard]] const ErrorAnswers& answers() const { return answers_; }

 private:
  friend class WorkbookSession;
  class KeptMessage;
  class WatchedScreen;
  class User;

  ErrorAnswers answers_;
  std::shared_ptr<KeptMessage> message_;
  std::shared_ptr<WatchedScreen> screen_;
  std::shared_ptr<User> user_;
  std::unique_ptr<ServicesInUse> inUse_;
};

/// Clusters a range of a workbook by the road of every other host: the entries go into the dialog's items, its
/// window, which nobody sees, presses "Clusterize", and ShowMainForm does the rest. The workbook is changed in memory.
class WorkbookSession {
 public:
  /// Called when all entries are made, before anything is clustered, with what the dialog holds then. Gives what is to
  /// be entered beyond that.
  using BeforeRun = std::function<DialogEntries(const HeldEntries& held)>;

  WorkbookSession(hosts::OpenBook& book, WorkbookServices& services, Talk& talk)
      : book_(book), services_(services), talk_(talk) {}

  /// Raises a Problem with the status usage for an entry that the dialog refuses, dataRefused where a check of the
  /// component refused the data (with the text of its message box), engineFailure where a failure was answered by
  /// abort; and whatever `beforeRun` raises.
  [[nodiscard]] ClusterRun run(const DialogEntries& entries, const ClusterRunOptions& options,
                               const BeforeRun& beforeRun, OutputFile* trace);

 private:
  [[noreturn]] void refuse(Classifier3& classifier);

  hosts::OpenBook& book_;
  WorkbookServices& services_;
  Talk& talk_;
};

}  // namespace mervane::cli
