#pragma once

#include <com/sun/star/awt/XExtendedToolkit.hpp>
#include <com/sun/star/awt/XKeyHandler.hpp>
#include <com/sun/star/awt/XTopWindowListener.hpp>
#include <com/sun/star/awt/XWindowListener.hpp>
#include <cppuhelper/implbase3.hxx>
#include <functional>
#include <rtl/ref.hxx>

#include "calc/office.h"

namespace mervane::addin {

/// What a dialog's own window reports, and the keys of the whole office while the dialog listens to them.
struct WindowEvents {
  std::function<void()> resized;
  std::function<void()> activated;
  /// @return true: the key is used up, and nobody else gets it
  std::function<bool(int key)> key;
};

class WindowListener final
    : public cppu::WeakImplHelper3<awt::XTopWindowListener, awt::XWindowListener, awt::XKeyHandler> {
 public:
  explicit WindowListener(WindowEvents events) : events_(std::move(events)) {}
  void detach() { events_ = {}; }

  void SAL_CALL windowOpened(const star::lang::EventObject&) override {}
  void SAL_CALL windowClosing(const star::lang::EventObject&) override {}
  void SAL_CALL windowClosed(const star::lang::EventObject&) override {}
  void SAL_CALL windowMinimized(const star::lang::EventObject&) override {}
  void SAL_CALL windowNormalized(const star::lang::EventObject&) override {}
  void SAL_CALL windowActivated(const star::lang::EventObject& event) override;
  void SAL_CALL windowDeactivated(const star::lang::EventObject&) override {}
  void SAL_CALL windowResized(const awt::WindowEvent& event) override;
  void SAL_CALL windowMoved(const awt::WindowEvent&) override {}
  void SAL_CALL windowShown(const star::lang::EventObject&) override {}
  void SAL_CALL windowHidden(const star::lang::EventObject&) override {}
  sal_Bool SAL_CALL keyPressed(const awt::KeyEvent& event) override;
  sal_Bool SAL_CALL keyReleased(const awt::KeyEvent&) override { return false; }
  void SAL_CALL disposing(const star::lang::EventObject&) override { detach(); }

 private:
  WindowEvents events_;
};

/// Hands every key of the office to a listener first, for as long as the object lives.
class KeyWatch {
 public:
  KeyWatch(const Office& office, const rtl::Reference<WindowListener>& listener);
  ~KeyWatch();
  KeyWatch(const KeyWatch&) = delete;
  KeyWatch& operator=(const KeyWatch&) = delete;

 private:
  uno::Reference<awt::XExtendedToolkit> toolkit_;
  rtl::Reference<WindowListener> listener_;
};

}  // namespace mervane::addin
