#pragma once

#include <com/sun/star/awt/XWindowPeer.hpp>
#include <functional>
#include <memory>
#include <string>

#include "calc/office.h"
#include "platform/option_window.h"

namespace mervane::addin {

class DialogCloser;

/// Makes the reference that the dialog's model is to get of what the user has typed.
using ReferenceReader = std::function<std::string(const std::string& typed)>;

/// A dialog of the office's toolkit: a list of options that scrolls, above a bar of buttons.
/// @param parent the window that the dialog stands before; it cannot be used while the dialog is shown
[[nodiscard]] std::unique_ptr<platform::OptionWindow> createOptionWindow(const Office& office,
                                                                         const uno::Reference<awt::XWindowPeer>& parent,
                                                                         std::shared_ptr<DialogCloser> closer,
                                                                         ReferenceReader readReference = {});

}  // namespace mervane::addin
