#include "calc/window/button_bar.h"

#include <algorithm>
#include <com/sun/star/awt/FontWeight.hpp>
#include <com/sun/star/awt/ImagePosition.hpp>
#include <com/sun/star/awt/XButton.hpp>

namespace mervane::addin {

using platform::OptionItem;

namespace {
constexpr int gapBetween = 6;
constexpr const char* prefix = "bar.";
}  // namespace

void ButtonBar::add(const std::vector<std::string>& captions, sal_Int16 firstTabIndex) {
  std::size_t position = 0;
  for (const OptionItem& item : items_) {
    const std::string& caption = captions[position++];
    if (item.Caption.empty()) continue;
    const Properties button = shell_.add("UnoControlButtonModel", prefix + item.Key);
    set(button, "Label", uno::Any(toOffice(caption)));
    set(button, "TabIndex", uno::Any(firstTabIndex++));
    if (item.bold) set(button, "FontWeight", uno::Any(awt::FontWeight::BOLD));
    if (buttons_.empty()) set(button, "DefaultButton", uno::Any(true));
    if (!pictures_.isEmpty()) {
      setIfKnown(button, "ImageURL", uno::Any(pictures_ + "/" + toOffice(item.imageKey) + ".svg"));
      set(button, "ImagePosition", uno::Any(awt::ImagePosition::LeftCenter));
    }
    buttons_.push_back({.key = item.Key, .control = {}, .width = 0, .listener = {}});
  }
}

void ButtonBar::connect(std::function<void(const std::string& key)> pressed, std::function<void()> entered) {
  for (Button& button : buttons_) {
    button.control = shell_.control(prefix + button.key);
    const awt::Size wanted = DialogShell::preferredSize(button.control);
    button.width = std::max(wanted.Width + shell_.across(8), shell_.across(55));
    height_ = std::max(height_, static_cast<int>(wanted.Height));
    ControlEvents events;
    events.pressed = [pressed, key = button.key] { pressed(key); };
    events.entered = entered;
    button.listener = ControlListener::attach(button.control, events);
  }
}

void ButtonBar::detach() {
  for (Button& button : buttons_) {
    if (button.listener.is()) button.listener->detach();
    button.listener.clear();
  }
}

int ButtonBar::gap() const {
  return shell_.across(gapBetween);
}

void ButtonBar::place(int left, int top) {
  for (const Button& button : buttons_) {
    const bool seen = items_.Contains(button.key);
    show(button.control, seen);
    if (!seen) continue;
    addin::place(button.control, left, top, button.width, height_);
    left += button.width + gap();
  }
}

int ButtonBar::width() const {
  int width = 0;
  for (const Button& button : buttons_) {
    if (items_.Contains(button.key)) width += button.width + gap();
  }
  return std::max(width - gap(), 0);
}

}  // namespace mervane::addin
