#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "platform/option_item.h"
#include "platform/windows/window_tools.h"

namespace mervane::windows {

/// Push buttons with pictures, one for each item of a bar but the spacers, in a row. Each item has the width that it
/// says, from which its button leaves a little free.
class ButtonBar {
 public:
  /// @param firstId control number of the first button; each further one has the next number.
  ButtonBar(HWND parent, const Scale& scale, int firstId) : parent_(parent), scale_(scale), firstId_(firstId) {}

  /// Makes the controls anew from the items. A spacer moves the next button by its own width.
  /// @param marked one caption for each item, with its mnemonic.
  void fill(const platform::OptionItems& items, const std::vector<std::string>& marked, HFONT font);
  void place(int left, int top, int height);
  /// The key of a control number of the bar, or null.
  [[nodiscard]] const std::string* keyOf(int id) const;
  [[nodiscard]] HWND control(std::size_t index) const {
    return index < buttons_.size() ? buttons_[index].control : nullptr;
  }
  /// Paints a button that asks for it.
  void draw(const DRAWITEMSTRUCT& request) const;

 private:
  struct Button {
    HWND control;
    std::string key;
    std::string picture;
    float begin;  ///< twips from the left end of the bar
    float width;  ///< twips
  };

  HWND parent_;
  const Scale& scale_;
  int firstId_;
  std::vector<Button> buttons_;
};

}  // namespace mervane::windows
