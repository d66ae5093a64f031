#pragma once

#include <functional>
#include <memory>

#include "calc/office.h"

namespace mervane::tests {

/// Runs work on the office's main thread while that thread is in its event loop, and waits until it is done and the
/// office has nothing left to do.
void onMainThread(const addin::Office& office, const std::function<void()>& work);

/// Runs work on a thread of its own while the main thread, which calls this, goes on serving the office.
class BesideMainThread {
 public:
  BesideMainThread(const addin::Office& office, std::function<void()> work);
  ~BesideMainThread();
  BesideMainThread(const BesideMainThread&) = delete;
  BesideMainThread& operator=(const BesideMainThread&) = delete;

 private:
  struct Shared;
  addin::Office office_;
  std::shared_ptr<Shared> shared_;
};

}  // namespace mervane::tests
