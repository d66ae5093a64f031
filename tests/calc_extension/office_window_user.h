#pragma once

#include <com/sun/star/awt/XWindowPeer.hpp>
#include <memory>

#include "calc/office.h"
#include "tests/conformance_windows/option_window_conformance.h"

namespace mervane::tests {

/// The office that the tests run in, and the window that dialogs stand before; set before the tests are run.
struct TestedOffice {
  addin::Office office;
  com::sun::star::uno::Reference<com::sun::star::awt::XWindowPeer> parent;
};
TestedOffice& testedOffice();

/// Plays a user on the office's option window from a thread beside the one that shows it.
[[nodiscard]] std::unique_ptr<OptionWindowUser> makeOfficeUser();

}  // namespace mervane::tests
