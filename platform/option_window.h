#pragma once

#include <cstdint>
#include <string>

#include "platform/option_item.h"

namespace mervane::platform {

/// Why a window is about to go, as its owner is asked.
enum class UnloadMode : std::int32_t {
  userRequest = 0,  ///< the close box or the window's own menu
  ownCode = 1,
  sessionEnd = 2,
  taskManager = 3,
};

/// Place and size of a window, in twips of the screen; width and height are the outer ones.
enum class WindowMeasure { left, top, width, height };

/// What the user does in an option window. The receiver changes the items and says so by `itemsChanged` of the
/// window; the window itself knows no rule. No call raises, and all come on the thread that shows the window.
///
/// An open editor is finished, and reported, before any other action is reported.
class OptionWindowEvents {
 public:
  /// The user has finished typing in an edit item.
  /// @return false for a refused entry: the item keeps its earlier value, and the window shows it again.
  [[nodiscard]] virtual bool edited(const std::string& key, const std::string& text) = 0;
  /// A choice of a drop-down item has been made.
  virtual void chosen(const std::string& key, const std::string& caption) = 0;
  virtual void browsed(const std::string& key) = 0;
  /// Any item of the list, of whatever kind, has been clicked or activated by the keyboard. Check boxes, radio items
  /// and group headers are turned by the receiver, so the window only draws what the item then says.
  virtual void clicked(const std::string& key) = 0;
  /// An item of the button bar.
  virtual void buttonClicked(const std::string& key) = 0;
  /// The list has a new width. Comes also once when the window is shown for the first time.
  virtual void resized() = 0;
  /// The window is about to be closed.
  /// @return true: `show` ends, and the window is destroyed by its owner behind it; false: it stays. A window that is
  /// not shown may be destroyed from within this call.
  [[nodiscard]] virtual bool closeRequested(UnloadMode mode) = 0;

 protected:
  ~OptionWindowEvents() = default;
};

/// A modal window with a list of option items above a bar of buttons. It is made for one dialog and lives until that
/// dialog unloads. Its operations raise a Failure where the machine refuses.
class OptionWindow {
 public:
  virtual ~OptionWindow() = default;
  /// Comes once, before anything else. The items and the receiver outlive the window.
  virtual void load(const std::string& caption, const OptionItems& options, const OptionItems& buttons,
                    OptionWindowEvents& events) = 0;
  /// Some item of the list or the bar has changed since the last call; the window draws what they say now.
  virtual void itemsChanged() = 0;
  /// Shows modally and returns when `hide` has been called or a close request has been granted.
  virtual void show() = 0;
  /// May be called from within an event. The window stays as it is, unseen, for the next `show`.
  virtual void hide() = 0;
  [[nodiscard]] virtual float measure(WindowMeasure which) const = 0;
  /// Applied as it stands, on the screen or off it.
  virtual void setMeasure(WindowMeasure which, float twips) = 0;
  /// Present width of the option list in twips.
  [[nodiscard]] virtual float listWidth() const = 0;
};

}  // namespace mervane::platform
