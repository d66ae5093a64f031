#pragma once

#include <com/sun/star/awt/XExtendedToolkit.hpp>
#include <com/sun/star/awt/XWindow2.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <vector>

#include "calc/office.h"

namespace mervane::addin {

/// Windows of the office that take no keys, clicks and scrolling for as long as the object lives: those of all open
/// documents, further windows of one document among them. Dialogs before them are not touched. A window that is
/// disabled already is left to whoever has done so.
class DeskLock {
 public:
  /// @param spared the one window that stays as it is; null for none
  DeskLock(const Office& office, const uno::Reference<uno::XInterface>& spared);
  ~DeskLock();
  DeskLock(const DeskLock&) = delete;
  DeskLock& operator=(const DeskLock&) = delete;

  /// Whether one of the windows has the keyboard, or no window of the office.
  [[nodiscard]] bool hasKeyboard() const;

 private:
  uno::Reference<awt::XExtendedToolkit> toolkit_;
  std::vector<uno::Reference<awt::XWindow2>> windows_;
};

}  // namespace mervane::addin
