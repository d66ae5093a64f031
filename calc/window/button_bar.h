#pragma once

#include <functional>
#include <string>
#include <vector>

#include "calc/window/control_listener.h"
#include "calc/window/dialog_shell.h"
#include "platform/option_item.h"

namespace mervane::addin {

/// Push buttons with pictures, one for each item of a bar but the spacers, in a row.
class ButtonBar {
 public:
  ButtonBar(DialogShell& shell, const platform::OptionItems& items, const rtl::OUString& pictures)
      : shell_(shell), items_(items), pictures_(pictures) {}
  ~ButtonBar() { detach(); }
  ButtonBar(const ButtonBar&) = delete;
  ButtonBar& operator=(const ButtonBar&) = delete;

  /// Adds the controls, before the dialog is opened. The first button is the one that Enter presses.
  /// @param captions with marked letters, in the order of the items
  void add(const std::vector<std::string>& captions, sal_Int16 firstTabIndex);
  void connect(std::function<void(const std::string& key)> pressed, std::function<void()> entered);
  void detach();
  /// Lays out what is in the bar now; a button whose item is gone is not seen. Spacers are passed over: their widths
  /// are for buttons of the design, and ours are as wide as their captions ask for.
  void place(int left, int top);
  /// What the buttons in the bar take now.
  [[nodiscard]] int width() const;
  [[nodiscard]] int height() const { return height_; }

 private:
  struct Button {
    std::string key;
    Control control;
    int width = 0;
    rtl::Reference<ControlListener> listener;
  };
  [[nodiscard]] int gap() const;

  DialogShell& shell_;
  const platform::OptionItems& items_;
  rtl::OUString pictures_;
  std::vector<Button> buttons_;
  int height_ = 0;
};

}  // namespace mervane::addin
