#include "calc/window/control_listener.h"

#include <com/sun/star/awt/XButton.hpp>
#include <com/sun/star/awt/XCheckBox.hpp>
#include <com/sun/star/awt/XListBox.hpp>
#include <com/sun/star/awt/XRadioButton.hpp>
#include <com/sun/star/awt/XScrollBar.hpp>
#include <com/sun/star/awt/XTextComponent.hpp>
#include <com/sun/star/awt/XWindow.hpp>

#include "calc/border.h"

namespace mervane::addin {

namespace {

/// A copy is called, since the call may end in detaching.
template <class Call, class... Values>
void hand(const std::function<Call>& event, Values... values) {
  if (!event) return;
  const std::function<Call> kept = event;
  atBorder([&] { kept(values...); });
}

}  // namespace

rtl::Reference<ControlListener> ControlListener::attach(const uno::Reference<awt::XControl>& control,
                                                        ControlEvents events) {
  const rtl::Reference<ControlListener> listener(new ControlListener(std::move(events)));
  const uno::Reference<awt::XWindow> window(control, uno::UNO_QUERY_THROW);
  window->addFocusListener(listener.get());
  if (listener->events_.touched) window->addMouseListener(listener.get());
  const uno::Reference<awt::XButton> button(control, uno::UNO_QUERY);
  if (button.is()) button->addActionListener(listener.get());
  const uno::Reference<awt::XCheckBox> box(control, uno::UNO_QUERY);
  if (box.is()) box->addItemListener(listener.get());
  const uno::Reference<awt::XRadioButton> radio(control, uno::UNO_QUERY);
  if (radio.is()) radio->addItemListener(listener.get());
  const uno::Reference<awt::XListBox> list(control, uno::UNO_QUERY);
  if (list.is()) list->addItemListener(listener.get());
  const uno::Reference<awt::XTextComponent> text(control, uno::UNO_QUERY);
  if (text.is()) text->addTextListener(listener.get());
  const uno::Reference<awt::XScrollBar> bar(control, uno::UNO_QUERY);
  if (bar.is()) bar->addAdjustmentListener(listener.get());
  return listener;
}

void ControlListener::actionPerformed(const awt::ActionEvent&) {
  hand(events_.pressed);
}
void ControlListener::itemStateChanged(const awt::ItemEvent& event) {
  hand(events_.switched, event.Selected != 0);
}
void ControlListener::textChanged(const awt::TextEvent&) {
  hand(events_.typed);
}
void ControlListener::focusGained(const awt::FocusEvent&) {
  hand(events_.entered);
}
void ControlListener::focusLost(const awt::FocusEvent&) {
  hand(events_.left);
}
void ControlListener::mousePressed(const awt::MouseEvent&) {
  hand(events_.touched);
}
void ControlListener::mouseReleased(const awt::MouseEvent&) {}
void ControlListener::mouseEntered(const awt::MouseEvent&) {}
void ControlListener::mouseExited(const awt::MouseEvent&) {}
void ControlListener::adjustmentValueChanged(const awt::AdjustmentEvent& event) {
  hand(events_.moved, static_cast<int>(event.Value));
}
void ControlListener::disposing(const star::lang::EventObject&) {
  detach();
}

}  // namespace mervane::addin
