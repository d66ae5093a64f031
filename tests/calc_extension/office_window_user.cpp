#include "tests/calc_extension/office_window_user.h"

#include <com/sun/star/accessibility/XAccessible.hpp>
#include <com/sun/star/accessibility/XAccessibleAction.hpp>
#include <com/sun/star/awt/XCheckBox.hpp>
#include <com/sun/star/awt/XListBox.hpp>
#include <com/sun/star/awt/XRadioButton.hpp>
#include <com/sun/star/awt/XTextComponent.hpp>
#include <com/sun/star/awt/XWindow2.hpp>
#include <deque>
#include <utility>

#include "calc/window/dialog_closer.h"
#include "calc/window/option_window.h"
#include "tests/calc_extension/main_thread.h"

namespace mervane::tests {

namespace {

namespace uno = com::sun::star::uno;
namespace awt = com::sun::star::awt;
namespace accessibility = com::sun::star::accessibility;
using addin::Control;
using addin::DialogShell;
using platform::OptionWindow;

class OfficeUser;

/// The office's window, with a user beside it for as long as it is shown.
class WindowWithUser final : public OptionWindow {
 public:
  WindowWithUser(OfficeUser& user, std::unique_ptr<OptionWindow> window) : user_(user), window_(std::move(window)) {}
  void load(const std::string& caption, const platform::OptionItems& options, const platform::OptionItems& buttons,
            platform::OptionWindowEvents& events) override {
    window_->load(caption, options, buttons, events);
  }
  void itemsChanged() override { window_->itemsChanged(); }
  void show() override;
  void hide() override { window_->hide(); }
  [[nodiscard]] float measure(platform::WindowMeasure which) const override { return window_->measure(which); }
  void setMeasure(platform::WindowMeasure which, float twips) override { window_->setMeasure(which, twips); }
  [[nodiscard]] float listWidth() const override { return window_->listWidth(); }

 private:
  OfficeUser& user_;
  std::unique_ptr<OptionWindow> window_;
};

class OfficeUser final : public OptionWindowUser {
 public:
  std::unique_ptr<OptionWindow> makeWindow() override {
    auto window = addin::createOptionWindow(testedOffice().office, testedOffice().parent, closer_);
    return std::make_unique<WindowWithUser>(*this, std::move(window));
  }
  void atNextShowing(std::function<void()> script) override { scripts_.push_back(std::move(script)); }

  void edit(const std::string& key, const std::string& text) override {
    act([&] {
      const uno::Reference<awt::XWindow> window(field(key), uno::UNO_QUERY_THROW);
      window->setFocus();
    });
    act([&] {
      const uno::Reference<awt::XTextComponent> editor(field(key), uno::UNO_QUERY_THROW);
      editor->setText(addin::toOffice(text));
    });
    // Typing is over when the keyboard goes elsewhere.
    act([&] {
      const uno::Reference<awt::XWindow> window(shell().control("bar.CLOSE"), uno::UNO_QUERY_THROW);
      window->setFocus();
    });
  }
  void choose(const std::string& key, const std::string& caption) override {
    act([&] {
      const uno::Reference<awt::XListBox> list(field(key)->getPeer(), uno::UNO_QUERY_THROW);
      list->selectItem(addin::toOffice(caption), true);
    });
  }
  void browse(const std::string& key) override {
    act([&] { press(field(key + ".browse")); });
  }
  void click(const std::string& key) override {
    act([&] { press(field(key)); });
  }
  void press(const std::string& buttonKey) override {
    act([&] { press(shell().control("bar." + buttonKey)); });
  }
  void dragWidth(float twips) override {
    act([&] { shell().resize(shell().fromTwips(twips), shell().place().Height); });
  }
  void pressCloseBox() override {
    act([&] { shell().end(); });
  }

  std::string shownText(const std::string& key) override {
    std::string text;
    act([&] {
      const uno::Reference<awt::XListBox> list(field(key), uno::UNO_QUERY);
      const uno::Reference<awt::XTextComponent> editor(field(key), uno::UNO_QUERY);
      text = addin::fromOffice(list.is() ? list->getSelectedItem() : editor->getText());
    });
    return text;
  }
  bool shownChecked(const std::string& key) override {
    bool checked = false;
    act([&] {
      const uno::Reference<awt::XCheckBox> box(field(key)->getPeer(), uno::UNO_QUERY);
      const uno::Reference<awt::XRadioButton> radio(field(key)->getPeer(), uno::UNO_QUERY);
      checked = box.is() ? box->getState() == 1 : radio->getState() != 0;
    });
    return checked;
  }
  bool shownAtAll(const std::string& key) override {
    bool seen = false;
    act([&] {
      const uno::Reference<awt::XWindow2> window(field(key)->getPeer(), uno::UNO_QUERY_THROW);
      seen = window->isVisible();
    });
    return seen;
  }

  /// One showing, beside the thread that shows.
  void play() {
    act([] {});
    if (!scripts_.empty()) {
      const std::function<void()> script = std::move(scripts_.front());
      scripts_.pop_front();
      script();
    }
    if (closer_->shown() != nullptr) pressCloseBox();
  }

 private:
  void act(const std::function<void()>& work) {
    onMainThread(testedOffice().office, [&] {
      if (closer_->shown() != nullptr) work();
    });
  }
  [[nodiscard]] DialogShell& shell() const { return *closer_->shown(); }
  [[nodiscard]] Control field(const std::string& name) const {
    return DialogShell::controlIn(shell().control("list"), name);
  }
  /// As an assistive tool presses it, which goes the way of a click.
  static void press(const Control& control) {
    const uno::Reference<accessibility::XAccessible> accessible(control->getPeer(), uno::UNO_QUERY_THROW);
    const uno::Reference<accessibility::XAccessibleAction> action(accessible->getAccessibleContext(),
                                                                  uno::UNO_QUERY_THROW);
    action->doAccessibleAction(0);
  }

  std::shared_ptr<addin::DialogCloser> closer_ = std::make_shared<addin::DialogCloser>();
  std::deque<std::function<void()>> scripts_;
};

void WindowWithUser::show() {
  const BesideMainThread user(testedOffice().office, [this] { user_.play(); });
  window_->show();
}

}  // namespace

TestedOffice& testedOffice() {
  static TestedOffice* const office = new TestedOffice;  // Not destroyed: the office is gone before static objects.
  return *office;
}

std::unique_ptr<OptionWindowUser> makeOfficeUser() {
  return std::make_unique<OfficeUser>();
}

INSTANTIATE_TEST_SUITE_P(Office, OptionWindowConformance, testing::Values(&makeOfficeUser));

}  // namespace mervane::tests
