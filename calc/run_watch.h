#pragma once

#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <functional>
#include <memory>

#include "calc/office.h"

namespace mervane {
class Classifier3;
}

namespace mervane::addin {

/// One run as the user of the office sees it: progress in the status bar, Escape to stop, the document locked against
/// other hands while it lasts, and one undo step for all that it wrote.
class RunWatch {
 public:
  RunWatch(const Office& office, const uno::Reference<star::frame::XFrame>& frame,
           const uno::Reference<star::frame::XModel>& document, Classifier3& classifier);
  /// Ends a run that has not been ended, without a word.
  ~RunWatch();
  RunWatch(const RunWatch&) = delete;
  RunWatch& operator=(const RunWatch&) = delete;

  /// All checks are passed. Nothing happens while a run is on.
  void begin();
  /// @param writeAll brings what is still waiting into the document, inside the undo step
  void end(const std::function<void()>& writeAll);
  [[nodiscard]] bool isRunning() const;
  [[nodiscard]] bool wasStopped() const;

 private:
  class Work;
  std::unique_ptr<Work> work_;
};

}  // namespace mervane::addin
