#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace mervane::workbook {

class Package;

/// The texts of a workbook's cells by number. The first ones are those of the shared table, in its order, so that
/// cells that hold them go on referring to it and the table's part is never changed; all later ones are
/// written inside their cells.
class TextTable {
 public:
  /// Loads the shared table. @param part empty where the workbook has none.
  void load(const Package& package, const std::string& part);

  [[nodiscard]] std::uint32_t sharedCount() const noexcept { return sharedCount_; }
  [[nodiscard]] std::uint32_t count() const noexcept { return static_cast<std::uint32_t>(texts_.size()); }
  [[nodiscard]] std::string_view text(std::uint32_t number) const { return texts_[number]; }
  /// The number of a text that is not of the shared table; equal texts have one number.
  std::uint32_t add(std::string_view text);
  /// A text whose runs have formats of their own, with the element as the file writes it.
  std::uint32_t addRich(std::string_view text, std::string element);
  /// That element, or empty.
  [[nodiscard]] std::string_view richElement(std::uint32_t number) const;

 private:
  std::string_view keep(std::string_view text);

  std::deque<std::string> blocks_;
  std::vector<std::string_view> texts_;
  std::uint32_t sharedCount_ = 0;
  std::unordered_map<std::string_view, std::uint32_t> added_;
  std::unordered_map<std::uint32_t, std::string> rich_;
};

}  // namespace mervane::workbook
