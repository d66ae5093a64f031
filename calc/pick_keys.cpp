#include "calc/pick_keys.h"

#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/sheet/XRangeSelectionChangeListener.hpp>
#include <cppuhelper/implbase1.hxx>

#include "calc/border.h"
#include "calc/window/window_listener.h"

namespace mervane::addin {

namespace {

/// Knows the range that the picker shows.
class PickedRange final : public cppu::WeakImplHelper1<star::sheet::XRangeSelectionChangeListener> {
 public:
  PickedRange(uno::Reference<star::frame::XDesktop2> desktop, const uno::Reference<star::frame::XFrame>& frame)
      : desktop_(std::move(desktop)), document_(frame->getController()->getModel(), uno::UNO_QUERY) {}
  void SAL_CALL descriptorChanged(const star::sheet::RangeSelectionEvent& event) override {
    text_ = event.RangeDescriptor;
    atBorder([&] {
      const uno::Reference<uno::XInterface> there(desktop_->getCurrentComponent(), uno::UNO_QUERY);
      isElsewhere_ = there.is() && there != document_;
    });
  }
  void SAL_CALL disposing(const star::lang::EventObject&) override {}
  [[nodiscard]] std::string text() const { return fromOffice(text_); }
  [[nodiscard]] bool isElsewhere() const { return isElsewhere_; }

 private:
  uno::Reference<star::frame::XDesktop2> desktop_;
  uno::Reference<uno::XInterface> document_;
  rtl::OUString text_;
  bool isElsewhere_ = false;
};

}  // namespace

class PickKeys::Work {
 public:
  Work(const Office& office, const uno::Reference<star::frame::XFrame>& frame,
       const uno::Reference<star::sheet::XRangeSelection>& picker, Ends ends)
      : desktop_(star::frame::Desktop::create(office.context)),
        picker_(picker),
        ends_(std::move(ends)),
        range_(new PickedRange(desktop_, frame)),
        listener_(
            new WindowListener({.resized = {}, .activated = {}, .key = [this](int key) { return pressed(key); }})),
        toolkit_(office.create<awt::XExtendedToolkit>("com.sun.star.awt.Toolkit")),
        keys_(office, listener_) {
    picker_->addRangeSelectionChangeListener(range_.get());
  }
  ~Work() {
    listener_->detach();
    atBorder([&] { picker_->removeRangeSelectionChangeListener(range_.get()); });
  }
  Work(const Work&) = delete;
  Work& operator=(const Work&) = delete;
  [[nodiscard]] bool isElsewhere() const { return range_->isElsewhere(); }

 private:
  bool pressed(int key) {
    const bool enter = key == awt::Key::RETURN;
    if ((!enter && key != awt::Key::ESCAPE) || (enter && range_->text().empty()) || !sheetHasKeyboard()) return false;
    const Ends ends = ends_;  // They may end this object.
    enter ? ends.entered(range_->text()) : ends.escaped();
    return true;
  }
  [[nodiscard]] bool sheetHasKeyboard() const {
    const uno::Reference<uno::XInterface> active(toolkit_->getActiveTopWindow(), uno::UNO_QUERY);
    const uno::Reference<star::frame::XFrames> frames(desktop_->getFrames(), uno::UNO_SET_THROW);
    for (sal_Int32 i = 0; i < frames->getCount(); ++i) {
      const uno::Reference<star::frame::XFrame> frame(frames->getByIndex(i), uno::UNO_QUERY_THROW);
      if (active == uno::Reference<uno::XInterface>(frame->getContainerWindow(), uno::UNO_QUERY)) return true;
    }
    return false;
  }

  uno::Reference<star::frame::XDesktop2> desktop_;
  uno::Reference<star::sheet::XRangeSelection> picker_;
  Ends ends_;
  rtl::Reference<PickedRange> range_;
  rtl::Reference<WindowListener> listener_;
  uno::Reference<awt::XExtendedToolkit> toolkit_;
  KeyWatch keys_;
};

PickKeys::PickKeys(const Office& office, const uno::Reference<star::frame::XFrame>& frame,
                   const uno::Reference<star::sheet::XRangeSelection>& picker, Ends ends)
    : work_(std::make_unique<Work>(office, frame, picker, std::move(ends))) {}
PickKeys::~PickKeys() = default;

bool PickKeys::isOfAnotherDocument() const {
  return work_->isElsewhere();
}

}  // namespace mervane::addin
