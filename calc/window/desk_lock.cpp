#include "calc/window/desk_lock.h"

#include <algorithm>
#include <com/sun/star/frame/Desktop.hpp>

#include "calc/border.h"

namespace mervane::addin {

DeskLock::DeskLock(const Office& office, const uno::Reference<uno::XInterface>& spared) {
  atBorder([&] {
    toolkit_ = office.create<awt::XExtendedToolkit>("com.sun.star.awt.Toolkit");
    const uno::Reference<star::frame::XFrames> frames(star::frame::Desktop::create(office.context)->getFrames(),
                                                      uno::UNO_SET_THROW);
    for (sal_Int32 i = 0; i < frames->getCount(); ++i) {
      const uno::Reference<star::frame::XFrame> frame(frames->getByIndex(i), uno::UNO_QUERY_THROW);
      const uno::Reference<awt::XWindow2> window(frame->getContainerWindow(), uno::UNO_QUERY);
      if (!window.is() || uno::Reference<uno::XInterface>(window, uno::UNO_QUERY) == spared || !window->isEnabled()) {
        continue;
      }
      window->setEnable(false);
      windows_.push_back(window);
    }
  });
}

DeskLock::~DeskLock() {
  for (const auto& window : windows_) {
    atBorder([&] { window->setEnable(true); });  // It may be gone by now.
  }
}

bool DeskLock::hasKeyboard() const {
  // Nobody to ask; Escape must stop a run even so.
  if (!toolkit_.is()) return true;
  bool has = false;
  atBorder([&] {
    const uno::Reference<uno::XInterface> active(toolkit_->getActiveTopWindow(), uno::UNO_QUERY);
    has = !active.is() || std::ranges::any_of(windows_, [&](const auto& window) {
      return uno::Reference<uno::XInterface>(window, uno::UNO_QUERY) == active;
    });
  });
  return has;
}

}  // namespace mervane::addin
