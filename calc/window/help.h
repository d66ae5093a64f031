#pragma once

#include <com/sun/star/awt/XWindowPeer.hpp>

#include "calc/office.h"

namespace mervane::addin {

/// Opens the add-in's page about its dialog in the user's browser; where that fails, a message tells where it lies.
void openHelp(const Office& office, const uno::Reference<awt::XWindowPeer>& parent);

}  // namespace mervane::addin
