#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "platform/option_item.h"
#include "platform/windows/window_tools.h"

namespace mervane::windows {

/// The rows of an option window: one standard control, or a caption with a field, for each item of the list. It knows
/// where controls stand and what they show; what an action means is its window's affair.
class OptionList {
 public:
  /// What part of a row a control is.
  enum class Part { main, browse };
  struct Control {
    HWND window = nullptr;
    const platform::OptionItem* item = nullptr;
    Part part = Part::main;
  };

  /// @param marked one caption for each item, with its mnemonic.
  OptionList(HWND parent, const Scale& scale, const platform::OptionItems& items,
             const std::vector<std::string>& marked);

  /// Shows what the items say now. An open editor keeps what the user has typed so far.
  void refresh();
  /// Lays the rows out in an area of the parent, scrolled by the given pixels; answers the height of all rows.
  int place(int width, int scrolled);
  /// The control with a number, or one without an item.
  [[nodiscard]] Control controlOf(int id) const;
  /// The field of an item, or null.
  [[nodiscard]] HWND fieldOf(const std::string& key) const;
  /// The first field that can be seen and typed in, or null.
  [[nodiscard]] HWND firstEditor() const;
  /// The text that a field shows for its item.
  [[nodiscard]] static std::string shownText(const platform::OptionItem& item);
  /// Top of a control's row within all rows, and its height.
  [[nodiscard]] RECT rowOf(HWND control) const;
  void draw(const DRAWITEMSTRUCT& request) const;

 private:
  struct Row {
    const platform::OptionItem* item;
    std::string shown;  ///< the caption that the controls were last given
    HWND caption = nullptr;
    HWND field = nullptr;
    HWND browse = nullptr;
    int top = 0;
    int height = 0;
  };

  void addRow(const platform::OptionItem& item, const std::string& marked);
  HWND addControl(const wchar_t* className, const std::string& text, DWORD style, DWORD extendedStyle, bool bold);
  void drawBrowse(const DRAWITEMSTRUCT& request) const;

  HWND parent_;
  const Scale& scale_;
  const platform::OptionItems& items_;
  Font plain_;
  Font bold_;
  std::vector<Row> rows_;
  bool lastWasRadio_ = false;      ///< of the rows added so far
  std::vector<Control> controls_;  ///< by control number less the first one
};

}  // namespace mervane::windows
