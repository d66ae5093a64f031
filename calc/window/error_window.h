#pragma once

#include <com/sun/star/awt/XWindowPeer.hpp>
#include <memory>

#include "calc/office.h"
#include "platform/error_window.h"

namespace mervane::addin {

class DialogCloser;

/// A dialog of the office's toolkit: a title band, a report that can be read and copied, and a bar of buttons.
[[nodiscard]] std::unique_ptr<platform::ErrorWindow> createErrorWindow(const Office& office,
                                                                       const uno::Reference<awt::XWindowPeer>& parent,
                                                                       std::shared_ptr<DialogCloser> closer);

}  // namespace mervane::addin
