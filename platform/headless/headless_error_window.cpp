#include "platform/headless/headless_error_window.h"

#include <utility>

namespace mervane::platform {

class HeadlessErrorWindow::Desk final : public View {
 public:
  explicit Desk(HeadlessErrorWindow& window) : window_(window) {}

  [[nodiscard]] const std::string& report() const override { return window_.report_; }
  [[nodiscard]] const OptionItems& title() const override { return *window_.title_; }
  [[nodiscard]] const OptionItems& buttons() const override { return *window_.buttons_; }
  void click(const std::string& key) override {
    if (window_.shown_) window_.events_->clicked(key);
  }
  void comeBack() override {
    if (window_.shown_) window_.events_->activated();
  }
  void resizeBar(float twips) override {
    window_.barWidth_ = twips;
    if (window_.shown_) window_.events_->resized();
  }

 private:
  HeadlessErrorWindow& window_;
};

void HeadlessErrorWindow::load(const std::string& /*caption*/, const OptionItems& title, const OptionItems& buttons,
                               ErrorWindowEvents& events) {
  title_ = &title;
  buttons_ = &buttons;
  events_ = &events;
}

void HeadlessErrorWindow::show() {
  shown_ = true;
  events_->activated();
  events_->resized();
  if (reader_) {
    Desk desk(*this);
    reader_(desk);
  }
  if (std::exchange(shown_, false)) events_->closed();
}

std::function<std::unique_ptr<ErrorWindow>()> headlessErrorWindows(HeadlessErrorWindow::Reader reader) {
  return [reader = std::move(reader)] { return std::make_unique<HeadlessErrorWindow>(reader); };
}

}  // namespace mervane::platform
