#pragma once

#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/sheet/XRangeSelection.hpp>
#include <functional>
#include <memory>
#include <string>

#include "calc/office.h"

namespace mervane::addin {

/// What the office's picker does not tell: Enter and Escape while a sheet has the keyboard, as after a click into it,
/// which the picker reads in its own field alone; and whether the range is one of another document, since it can be
/// picked in the windows of all documents.
class PickKeys {
 public:
  /// What the user has pressed; for Enter with the range that is picked by then, as the picker writes it.
  struct Ends {
    std::function<void(const std::string& range)> entered;
    std::function<void()> escaped;
  };

  PickKeys(const Office& office, const uno::Reference<star::frame::XFrame>& frame,
           const uno::Reference<star::sheet::XRangeSelection>& picker, Ends ends);
  ~PickKeys();
  [[nodiscard]] bool isOfAnotherDocument() const;
  PickKeys(const PickKeys&) = delete;
  PickKeys& operator=(const PickKeys&) = delete;

 private:
  class Work;
  std::unique_ptr<Work> work_;
};

}  // namespace mervane::addin
