#pragma once

#include <com/sun/star/awt/XWindowPeer.hpp>
#include <functional>
#include <memory>
#include <string>

#include "calc/office.h"
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
  /// Turns a reference that the user has typed into one that the component reads; empty: it is taken as it stands.
  std::function<std::string(const std::string& typed)> readReference;
};

/// The services of this machine with the office's windows, messages, beep and regional settings. What the dialog
/// remembers is kept in the same store as by the command line program.
[[nodiscard]] std::shared_ptr<platform::Services> officeServices(const OfficeDesk& desk);

/// Shows a message before a window; the office's own exception where it cannot.
void showMessage(const OfficeDesk& desk, const std::string& title, const std::string& text);

}  // namespace mervane::addin
