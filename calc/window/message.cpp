#include "calc/window/message.h"

#include <com/sun/star/awt/XMessageBoxFactory.hpp>

namespace mervane::addin {

namespace {
constexpr const char* productName = "Mervane";
}

sal_Int16 showMessage(const Office& office, const uno::Reference<awt::XWindowPeer>& parent, awt::MessageBoxType type,
                      const std::string& text, sal_Int32 buttons) {
  const auto factory = office.create<awt::XMessageBoxFactory>("com.sun.star.awt.Toolkit");
  const uno::Reference<awt::XMessageBox> box(
      factory->createMessageBox(parent, type, buttons, rtl::OUString::createFromAscii(productName), toOffice(text)),
      uno::UNO_SET_THROW);
  return box->execute();
}

}  // namespace mervane::addin
