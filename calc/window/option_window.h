#pragma once

#include <com/sun/star/awt/XWindowPeer.hpp>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "calc/office.h"
#include "platform/option_window.h"

namespace mervane::addin {

class DialogCloser;

/// What keeps a run from beginning.
struct Refusal {
  std::string key;  ///< the option that is to be changed
  std::string sentence;
};

/// What stands between the user's entries and the dialog's model; an empty function stands for nothing.
struct EntryGate {
  /// Makes the reference that the model is to get of what the user has typed.
  std::function<std::string(const std::string& typed)> readReference;
  /// Asked before the model gets to know that "Clusterize" has been pressed. A refusal is shown, and the user is back
  /// in the field that it names.
  std::function<std::optional<Refusal>(const platform::OptionItems& items)> refusalOf;
};

/// A dialog of the office's toolkit: a list of options that scrolls, above a bar of buttons.
/// @param parent the window that the dialog stands before; it cannot be used while the dialog is shown
[[nodiscard]] std::unique_ptr<platform::OptionWindow> createOptionWindow(const Office& office,
                                                                         const uno::Reference<awt::XWindowPeer>& parent,
                                                                         std::shared_ptr<DialogCloser> closer,
                                                                         EntryGate gate = {});

}  // namespace mervane::addin
