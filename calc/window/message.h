#pragma once

#include <com/sun/star/awt/MessageBoxButtons.hpp>
#include <com/sun/star/awt/MessageBoxType.hpp>
#include <com/sun/star/awt/XWindowPeer.hpp>
#include <string>

#include "calc/office.h"

namespace mervane::addin {

/// Shows a message of the product's before a window and waits for an answer; the office's own exception where it
/// cannot.
sal_Int16 showMessage(const Office& office, const uno::Reference<awt::XWindowPeer>& parent, awt::MessageBoxType type,
                      const std::string& text, sal_Int32 buttons = awt::MessageBoxButtons::BUTTONS_OK);

}  // namespace mervane::addin
