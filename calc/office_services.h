#pragma once

#include <com/sun/star/awt/XWindowPeer.hpp>
#include <functional>
#include <memory>
#include <string>

#include "calc/office.h"
#include "calc/window/option_window.h"
#include "platform/services.h"

namespace mervane::addin {

class DialogCloser;

/// What a session adds to the services of the machine.
struct OfficeDesk {
  Office office;
  /// The window of the document; dialogs and messages stand before it.
  uno::Reference<awt::XWindowPeer> parent;
  /// The pointer turns into the hourglass when all checks are passed and the run is about to begin.
  std::function<void()> runBegins;
  std::shared_ptr<DialogCloser> closer;
  EntryGate gate;
};

/// The language of the office's menus and dialogs, such as "de" or "en-US".
[[nodiscard]] std::string interfaceLocale(const Office& office);

/// The services of this machine with the office's windows, messages, beep and regional settings. What the dialog
/// remembers is kept in the same store as by the command line program.
[[nodiscard]] std::shared_ptr<platform::Services> officeServices(const OfficeDesk& desk);

}  // namespace mervane::addin
