#include "calc/window/window_listener.h"

#include "calc/border.h"

namespace mervane::addin {

void WindowListener::windowActivated(const star::lang::EventObject&) {
  if (!events_.activated) return;
  const auto activated = events_.activated;
  atBorder(activated);
}

void WindowListener::windowResized(const awt::WindowEvent&) {
  if (!events_.resized) return;
  const auto resized = events_.resized;
  atBorder(resized);
}

sal_Bool WindowListener::keyPressed(const awt::KeyEvent& event) {
  if (!events_.key) return false;
  const auto handle = events_.key;
  bool usedUp = false;
  atBorder([&] { usedUp = handle(event.KeyCode); });
  return usedUp;
}

// Key handlers are marked as outdated without anything in their place: a listener of a window cannot use up a key.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

KeyWatch::KeyWatch(const Office& office, const rtl::Reference<WindowListener>& listener)
    : toolkit_(office.create<awt::XExtendedToolkit>("com.sun.star.awt.Toolkit")), listener_(listener) {
  toolkit_->addKeyHandler(listener_.get());
}

KeyWatch::~KeyWatch() {
  atBorder([&] { toolkit_->removeKeyHandler(listener_.get()); });
}

#pragma GCC diagnostic pop

}  // namespace mervane::addin
