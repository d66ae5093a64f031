#pragma once

#include <mutex>

#include "calc/window/dialog_shell.h"

namespace mervane::addin {

/// Ends whatever dialog is shown when its document goes, and keeps further ones from being shown. May be called from
/// any thread; the dialogs themselves act when their showing has returned.
class DialogCloser {
 public:
  /// @param shell what is shown now; null for nothing
  /// @return the one that was shown before
  DialogShell* showing(DialogShell* shell) {
    const std::lock_guard lock(mutex_);
    return std::exchange(shown_, shell);
  }
  /// What is shown now; null for nothing.
  [[nodiscard]] DialogShell* shown() const {
    const std::lock_guard lock(mutex_);
    return shown_;
  }
  void close() {
    const std::lock_guard lock(mutex_);
    closed_ = true;
    if (shown_ != nullptr) shown_->end();
  }
  [[nodiscard]] bool isClosed() const {
    const std::lock_guard lock(mutex_);
    return closed_;
  }

 private:
  mutable std::mutex mutex_;
  DialogShell* shown_ = nullptr;
  bool closed_ = false;
};

/// One showing of a dialog, known to its closer.
class KnownShowing {
 public:
  KnownShowing(DialogCloser* closer, DialogShell& shell)
      : closer_(closer), before_(closer == nullptr ? nullptr : closer->showing(&shell)) {}
  ~KnownShowing() {
    if (closer_ != nullptr) closer_->showing(before_);
  }
  KnownShowing(const KnownShowing&) = delete;
  KnownShowing& operator=(const KnownShowing&) = delete;

 private:
  DialogCloser* closer_;
  DialogShell* before_;
};

}  // namespace mervane::addin
