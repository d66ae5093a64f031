#pragma once

#include <functional>
#include <string>
#include <vector>

#include "calc/window/control_listener.h"
#include "calc/window/dialog_shell.h"
#include "platform/option_item.h"

namespace mervane::addin {

/// The rows of an option window: one control, or a caption with a field, for each item of the list. It knows where
/// controls stand and what they show; what an action means is its window's affair.
class OptionRows {
 public:
  /// What the user does in a row; the item says which.
  struct Actions {
    /// A button, a check box, a radio item, a header, a caption.
    std::function<void(const platform::OptionItem& item)> clicked;
    std::function<void(const platform::OptionItem& item)> browsed;
    std::function<void(const platform::OptionItem& item, int choice)> chosen;
    std::function<void(const platform::OptionItem& item)> entered;
    std::function<void(const platform::OptionItem& item)> left;
  };

  OptionRows(DialogShell& shell, const platform::OptionItems& items, const rtl::OUString& pictures)
      : shell_(shell), items_(items), pictures_(pictures) {}
  ~OptionRows() { detach(); }
  OptionRows(const OptionRows&) = delete;
  OptionRows& operator=(const OptionRows&) = delete;

  /// Adds the controls to the dialog, before it is opened.
  /// @param captions of the items with marked letters, in the order of the items
  void add(const Properties& list, const std::vector<std::string>& captions);
  /// Finds the opened controls, measures them and begins to listen.
  void connect(const Control& list, Actions actions);
  void detach();

  /// Shows what the items say now. An open editor keeps what the user has typed so far.
  void refresh();
  /// Lays the rows out, scrolled by the given pixels; answers the height of all rows.
  int place(int width, int scrolled);

  /// Whether the user has typed in the item's field since it showed the item.
  [[nodiscard]] bool isModified(const platform::OptionItem& item) const;
  [[nodiscard]] std::string typedText(const platform::OptionItem& item) const;
  /// Shows the item again, whatever has been typed.
  void revert(const platform::OptionItem& item);
  void focus(const platform::OptionItem& item);
  /// Top of an item's row within all rows, and the row behind the item's group for a header.
  struct Extent {
    int top = 0;
    int bottom = 0;
  };
  [[nodiscard]] Extent extentOf(const platform::OptionItem& item) const;

  /// The first field that is seen; null where all groups with fields are closed.
  [[nodiscard]] const platform::OptionItem* firstField() const;
  /// The height of the highest row.
  [[nodiscard]] int rowHeight() const;
  /// The width in which every field has room for a reference.
  [[nodiscard]] int smallestWidth() const;

  /// The caption without the colon that only leads the eye to its field.
  [[nodiscard]] static std::string bareCaption(const platform::OptionItem& item);
  /// The text that a field shows for its item.
  [[nodiscard]] static std::string shownText(const platform::OptionItem& item);

 private:
  struct Row {
    const platform::OptionItem* item = nullptr;
    std::string name;
    std::string marked;
    Control caption;
    Control field;
    Control browse;
    int height = 0;
    int captionWidth = 0;
    int top = 0;
    int bottom = 0;
    bool modified = false;
    bool wasExpanded = false;
    std::vector<rtl::Reference<ControlListener>> listeners;
  };

  void addRow(const Properties& list, Row& row);
  void listen(Row& row, const Actions& actions);
  void showItem(Row& row);
  void showHeader(Row& row);
  Row* rowOf(const platform::OptionItem& item);
  [[nodiscard]] const Row* rowOf(const platform::OptionItem& item) const;

  DialogShell& shell_;
  const platform::OptionItems& items_;
  rtl::OUString pictures_;
  std::vector<Row> rows_;
  sal_Int16 tabIndex_ = 0;
  int captionColumn_ = 0;
  /// Controls report what we do to them as if the user had done it.
  bool refreshing_ = false;
};

}  // namespace mervane::addin
