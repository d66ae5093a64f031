#pragma once

#include <string>

#include "platform/option_item.h"

namespace mervane::platform {

/// What happens in an error window. No call raises, and all come on the thread that shows the window.
class ErrorWindowEvents {
 public:
  /// The window has become the active one; comes for each return to it, the first showing included.
  virtual void activated() = 0;
  /// The bar has a new layout. Comes also once when the window is shown for the first time, behind `activated`, which
  /// may have taken an item out of the bar.
  virtual void resized() = 0;
  /// An item of the bar, the spacer included where the window reports clicks on it.
  virtual void clicked(const std::string& key) = 0;
  /// The close box; `show` ends behind it. A window that is not shown may be destroyed from within this call.
  virtual void closed() = 0;

 protected:
  ~ErrorWindowEvents() = default;
};

/// A modal window with a title band, a report that can be read, scrolled and copied, and a bar of buttons. One report
/// is shown in one window: it is made when its form is loaded and destroyed when that unloads.
class ErrorWindow {
 public:
  virtual ~ErrorWindow() = default;
  /// Comes once, before anything else. The items and the receiver outlive the window.
  virtual void load(const std::string& caption, const OptionItems& title, const OptionItems& buttons,
                    ErrorWindowEvents& events) = 0;
  /// Some item of the band or the bar has changed since the last call, or is gone.
  virtual void itemsChanged() = 0;
  /// @param text lines end in CR LF.
  virtual void setMessage(const std::string& text) = 0;
  /// Shows modally and returns when `hide` has been called or the close box pressed.
  virtual void show() = 0;
  /// May be called from within an event.
  virtual void hide() = 0;
  /// Present width of the bar in twips.
  [[nodiscard]] virtual float barWidth() const = 0;
};

}  // namespace mervane::platform
