#pragma once

#include <com/sun/star/awt/XWindowPeer.hpp>

#include "calc/office.h"

namespace mervane::addin {

/// The folder with the pictures that suit the colours of a window: those for dark themes are in a folder of their own.
/// Empty where there are no pictures.
[[nodiscard]] rtl::OUString picturesFor(const Office& office, const uno::Reference<awt::XWindowPeer>& window);

}  // namespace mervane::addin
