#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "mervane/runtime_errors.h"
#include "mervane/variant.h"

namespace mervane::platform {

/// What an item of an option list is. The codes are those of the list's template.
enum class OptionKind : std::int32_t {
  command = 0,  ///< a clickable caption with an image; the template gives it no code
  staticLabel = 108,
  check = 501,
  radio = 601,
  choice = 900,  ///< one choice of a drop-down item
  spacer = 1100,
  groupHeader = 1300,
  edit = 1400,
  editWithBrowse = 1408,
  dropDown = 1500,
};

/// Colours of the system, by index, that items are written in.
inline constexpr std::int32_t colourWindowText = 8;
inline constexpr std::int32_t colourGreyText = 17;
inline constexpr std::int32_t colourButtonText = 18;

/// A template counts pixels, a running window counts twips.
inline constexpr float twipsPerPixel = 15.0F;

/// One line of an option list or one field of a bar. A window draws it and never changes it.
struct OptionItem {
  /// Names the item; every use goes through it. Spacers of the option list have none.
  std::string Key;
  std::string Caption;
  OptionKind kind = OptionKind::command;
  /// Edit content, a text or a number; the caption of the current choice of a drop-down item; the code of a choice.
  Variant Value;
  /// State of a check box or a radio item.
  bool Checked = false;
  /// 0 for group headers, 1 for the items under them.
  std::int32_t indent = 0;
  /// Twips. For an item without automatic width it is the width of the field behind the caption.
  float Width = 0.0F;
  bool automaticWidth = true;
  /// Pixels.
  std::int32_t height = 0;
  bool automaticHeight = true;
  bool bold = false;
  std::optional<std::int32_t> alignment;
  /// The picture of the item; empty for none.
  std::string imageKey;
  std::int32_t textColour = colourButtonText;
  /// The choices of a drop-down item.
  std::vector<OptionItem> SubItems;
  /// Of a drop-down item: the `Value` of the current choice, a text or a number; empty until one is made.
  Variant SelectedCode;
  /// Of a group header: whether its items are seen.
  bool Expanded = false;
};

/// An ordered table of items with lookup by key and by position.
class OptionItems {
 public:
  OptionItems() = default;
  explicit OptionItems(std::vector<OptionItem> items) : items_(std::move(items)) {}

  /// Raises invalidProcedureCall where no item has that key. Keys are compared letter for letter.
  [[nodiscard]] OptionItem& Item(const std::string& key) { return items_[indexOf(key)]; }
  [[nodiscard]] const OptionItem& Item(const std::string& key) const { return items_[indexOf(key)]; }
  /// @param position from 1; raises subscriptOutOfRange otherwise.
  [[nodiscard]] OptionItem& Item(std::int32_t position) { return items_[indexOf(position)]; }
  [[nodiscard]] const OptionItem& Item(std::int32_t position) const { return items_[indexOf(position)]; }
  /// Takes an item out; raises invalidProcedureCall where no item has that key.
  void Remove(const std::string& key) { items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(indexOf(key))); }
  [[nodiscard]] std::int32_t Count() const noexcept { return static_cast<std::int32_t>(items_.size()); }
  [[nodiscard]] bool Contains(const std::string& key) const noexcept {
    return !key.empty() &&
           std::any_of(items_.begin(), items_.end(), [&](const OptionItem& item) { return item.Key == key; });
  }

  [[nodiscard]] auto begin() const noexcept { return items_.begin(); }
  [[nodiscard]] auto end() const noexcept { return items_.end(); }

 private:
  [[nodiscard]] std::size_t indexOf(const std::string& key) const {
    for (std::size_t i = 0; i < items_.size(); ++i) {
      if (items_[i].Key == key && !key.empty()) return i;
    }
    raise(runtime::invalidProcedureCall);
  }
  [[nodiscard]] std::size_t indexOf(std::int32_t position) const {
    if (position < 1 || position > Count()) raise(runtime::subscriptOutOfRange);
    return static_cast<std::size_t>(position) - 1;
  }

  std::vector<OptionItem> items_;
};

}  // namespace mervane::platform
