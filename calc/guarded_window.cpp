#include "calc/guarded_window.h"

#include <utility>

namespace mervane::addin {

namespace {

using platform::OptionItems;
using platform::OptionWindowEvents;
using platform::UnloadMode;
using platform::WindowMeasure;

class GuardedWindow final : public platform::OptionWindow, private OptionWindowEvents {
 public:
  GuardedWindow(std::unique_ptr<platform::OptionWindow> window, MayRun mayRun)
      : window_(std::move(window)), mayRun_(std::move(mayRun)) {}

  void load(const std::string& caption, const OptionItems& options, const OptionItems& buttons,
            OptionWindowEvents& events) override {
    options_ = &options;
    events_ = &events;
    window_->load(caption, options, buttons, *this);
  }
  void itemsChanged() override { window_->itemsChanged(); }
  void show() override { window_->show(); }
  void hide() override { window_->hide(); }
  [[nodiscard]] float measure(WindowMeasure which) const override { return window_->measure(which); }
  void setMeasure(WindowMeasure which, float twips) override { window_->setMeasure(which, twips); }
  [[nodiscard]] float listWidth() const override { return window_->listWidth(); }

 private:
  [[nodiscard]] bool edited(const std::string& key, const std::string& text) override {
    return events_->edited(key, text);
  }
  void chosen(const std::string& key, const std::string& caption) override { events_->chosen(key, caption); }
  void browsed(const std::string& key) override { events_->browsed(key); }
  void clicked(const std::string& key) override { events_->clicked(key); }
  void buttonClicked(const std::string& key) override {
    if (key == "CLASSIFY" && !mayRun_(*options_)) return;
    events_->buttonClicked(key);
  }
  void resized() override { events_->resized(); }
  [[nodiscard]] bool closeRequested(UnloadMode mode) override { return events_->closeRequested(mode); }

  std::unique_ptr<platform::OptionWindow> window_;
  MayRun mayRun_;
  const OptionItems* options_ = nullptr;
  OptionWindowEvents* events_ = nullptr;
};

}  // namespace

std::unique_ptr<platform::OptionWindow> guardedWindow(std::unique_ptr<platform::OptionWindow> window, MayRun mayRun) {
  return std::make_unique<GuardedWindow>(std::move(window), std::move(mayRun));
}

}  // namespace mervane::addin
