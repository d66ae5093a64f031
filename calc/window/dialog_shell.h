#pragma once

#include <com/sun/star/awt/Rectangle.hpp>
#include <com/sun/star/awt/XControl.hpp>
#include <com/sun/star/awt/XControlContainer.hpp>
#include <com/sun/star/awt/XDialog2.hpp>
#include <com/sun/star/awt/XTopWindow.hpp>
#include <com/sun/star/awt/XWindow.hpp>
#include <com/sun/star/awt/XWindowPeer.hpp>
#include <com/sun/star/container/XNameContainer.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <optional>
#include <string>

#include "calc/office.h"

namespace mervane::addin {

using Control = uno::Reference<awt::XControl>;
using Properties = uno::Reference<star::beans::XPropertySet>;

/// A dialog of the office's toolkit: made empty, filled with controls, then opened unseen on its parent. Everything is
/// placed in pixels; designs drawn for a screen of 96 pixels an inch are scaled to the dialog's font.
class DialogShell {
 public:
  DialogShell(const Office& office, const std::string& title);
  ~DialogShell();
  DialogShell(const DialogShell&) = delete;
  DialogShell& operator=(const DialogShell&) = delete;

  // Before the opening.
  /// @param kind the service behind "com.sun.star.awt.", such as "UnoControlButtonModel"
  Properties add(const char* kind, const std::string& name) { return add(names_, kind, name); }
  /// A control in a container that has been added before.
  Properties add(const Properties& container, const char* kind, const std::string& name);
  void open(const uno::Reference<awt::XWindowPeer>& parent);

  // Behind it.
  [[nodiscard]] Control control(const std::string& name) const;
  [[nodiscard]] static Control controlIn(const Control& container, const std::string& name);
  [[nodiscard]] const uno::Reference<awt::XWindow>& window() const { return window_; }
  [[nodiscard]] uno::Reference<awt::XTopWindow> topWindow() const;
  [[nodiscard]] uno::Reference<awt::XWindowPeer> peer() const { return dialog_->getPeer(); }
  /// Whether it is the window of the office that keys go to.
  [[nodiscard]] bool hasKeyboard() const;

  [[nodiscard]] int across(int designPixels) const;
  [[nodiscard]] int down(int designPixels) const;
  [[nodiscard]] float twips(int pixels) const;
  /// Confined to what the toolkit's coordinates hold.
  [[nodiscard]] int fromTwips(float twips) const;
  /// What a control asks for to show its content.
  [[nodiscard]] static awt::Size preferredSize(const Control& control);

  /// Where the dialog stands; what has been asked for while it is not shown, since the toolkit tells that only of a
  /// shown one.
  [[nodiscard]] awt::Rectangle place() const;
  void moveAcross(int x);
  void moveDown(int y);
  void resize(int width, int height);
  /// Puts the dialog over the middle of its parent.
  void centre();
  /// Shows modally until `end` or until the user closes the dialog.
  void execute();
  void end();

 private:
  Properties add(const uno::Reference<star::container::XNameContainer>& container, const char* kind,
                 const std::string& name);

  uno::Reference<star::lang::XMultiServiceFactory> factory_;
  uno::Reference<star::container::XNameContainer> names_;
  uno::Reference<awt::XToolkit> toolkit_;
  Control dialog_;
  uno::Reference<awt::XWindow> window_;
  uno::Reference<awt::XWindow> parent_;
  std::optional<int> askedX_;
  std::optional<int> askedY_;
  bool executing_ = false;
  double pixelsPerInch_ = 96.0;
  /// Pixels of a hundred of the font's units.
  awt::Size hundredUnits_{150, 163};
};

/// Places a control; a size below nothing becomes nothing.
void place(const Control& control, int x, int y, int width, int height);
void show(const Control& control, bool seen);

}  // namespace mervane::addin
