#include "platform/headless/headless_option_window.h"

#include <utility>

namespace mervane::platform {

namespace {
// The designed client area and the place of the list in it, in twips. A window without a frame is its client area.
constexpr float designedWidth = 4545.0F;
constexpr float designedHeight = 2055.0F;
constexpr float besideList = 120.0F;

std::size_t at(WindowMeasure which) {
  return static_cast<std::size_t>(which);
}
}  // namespace

void HeadlessOptionWindow::load(const std::string& caption, const OptionItems& options, const OptionItems& buttons,
                                OptionWindowEvents& events) {
  caption_ = caption;
  options_ = &options;
  buttons_ = &buttons;
  events_ = &events;
  measures_[at(WindowMeasure::width)] = designedWidth;
  measures_[at(WindowMeasure::height)] = designedHeight;
}

void HeadlessOptionWindow::show() {
  shown_ = true;
  if (!std::exchange(laidOut_, true)) events_->resized();
  if (!user_->acts_.empty()) {
    const HeadlessUser::Act act = std::move(user_->acts_.front());
    user_->acts_.pop_front();
    if (act) act(*this);
  }
  if (shown_ && user_->habit_) user_->habit_(*this);
  if (shown_) close();
  shown_ = false;
}

bool HeadlessOptionWindow::edit(const std::string& key, const std::string& text) {
  return shown_ && events_->edited(key, text);
}

void HeadlessOptionWindow::choose(const std::string& key, const std::string& caption) {
  if (shown_) events_->chosen(key, caption);
}

void HeadlessOptionWindow::browse(const std::string& key) {
  if (shown_) events_->browsed(key);
}

void HeadlessOptionWindow::click(const std::string& key) {
  if (shown_) events_->clicked(key);
}

void HeadlessOptionWindow::press(const std::string& buttonKey) {
  if (shown_) events_->buttonClicked(buttonKey);
}

void HeadlessOptionWindow::resize(float width, float height) {
  if (!shown_) return;
  setMeasure(WindowMeasure::width, width);
  setMeasure(WindowMeasure::height, height);
}

void HeadlessOptionWindow::move(float left, float top) {
  if (!shown_) return;
  setMeasure(WindowMeasure::left, left);
  setMeasure(WindowMeasure::top, top);
}

void HeadlessOptionWindow::close(UnloadMode mode) {
  if (shown_ && events_->closeRequested(mode)) shown_ = false;
}

float HeadlessOptionWindow::measure(WindowMeasure which) const {
  return measures_[at(which)];
}

void HeadlessOptionWindow::setMeasure(WindowMeasure which, float twips) {
  const float earlier = std::exchange(measures_[at(which)], twips);
  if (which == WindowMeasure::width && laidOut_ && earlier != twips) events_->resized();
}

float HeadlessOptionWindow::listWidth() const {
  return measure(WindowMeasure::width) - besideList;
}

std::function<std::unique_ptr<OptionWindow>()> headlessOptionWindows(std::shared_ptr<HeadlessUser> user) {
  return [user = std::move(user)] { return std::make_unique<HeadlessOptionWindow>(user); };
}

}  // namespace mervane::platform
