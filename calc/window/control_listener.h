#pragma once

#include <com/sun/star/awt/XActionListener.hpp>
#include <com/sun/star/awt/XAdjustmentListener.hpp>
#include <com/sun/star/awt/XControl.hpp>
#include <com/sun/star/awt/XFocusListener.hpp>
#include <com/sun/star/awt/XItemListener.hpp>
#include <com/sun/star/awt/XMouseListener.hpp>
#include <com/sun/star/awt/XTextListener.hpp>
#include <cppuhelper/implbase6.hxx>
#include <functional>
#include <rtl/ref.hxx>

#include "calc/office.h"

namespace mervane::addin {

/// What a control reports, as plain calls; those left empty are passed over.
struct ControlEvents {
  std::function<void()> pressed;                ///< a button
  std::function<void(bool selected)> switched;  ///< a check box, a radio button or a drop-down field
  std::function<void()> typed;                  ///< the text has changed, whoever changed it
  std::function<void()> entered;                ///< it has the keyboard now
  std::function<void()> left;                   ///< it has it no more
  std::function<void()> touched;                ///< a mouse button went down on it
  std::function<void(int value)> moved;         ///< a scroll bar
};

/// Hands the events of one control on for as long as it is not detached.
class ControlListener final
    : public cppu::WeakImplHelper6<awt::XActionListener, awt::XItemListener, awt::XTextListener, awt::XFocusListener,
                                   awt::XMouseListener, awt::XAdjustmentListener> {
 public:
  /// Listens to whatever of these events the control reports.
  static rtl::Reference<ControlListener> attach(const uno::Reference<awt::XControl>& control, ControlEvents events);
  /// Nothing is handed on behind this, also where the control still speaks.
  void detach() { events_ = {}; }

  void SAL_CALL actionPerformed(const awt::ActionEvent& event) override;
  void SAL_CALL itemStateChanged(const awt::ItemEvent& event) override;
  void SAL_CALL textChanged(const awt::TextEvent& event) override;
  void SAL_CALL focusGained(const awt::FocusEvent& event) override;
  void SAL_CALL focusLost(const awt::FocusEvent& event) override;
  void SAL_CALL mousePressed(const awt::MouseEvent& event) override;
  void SAL_CALL mouseReleased(const awt::MouseEvent& event) override;
  void SAL_CALL mouseEntered(const awt::MouseEvent& event) override;
  void SAL_CALL mouseExited(const awt::MouseEvent& event) override;
  void SAL_CALL adjustmentValueChanged(const awt::AdjustmentEvent& event) override;
  void SAL_CALL disposing(const star::lang::EventObject& source) override;

 private:
  explicit ControlListener(ControlEvents events) : events_(std::move(events)) {}

  ControlEvents events_;
};

}  // namespace mervane::addin
