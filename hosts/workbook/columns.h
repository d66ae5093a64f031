#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace mervane::workbook {

class SheetFrame;

/// What a sheet says about its columns.
class Columns {
 public:
  struct Span {
    std::int32_t first = 1;
    std::int32_t last = 1;
    double width = -1.0;  ///< in characters; negative where the span has none of its own
    std::uint32_t style = 0;
    bool hidden = false;
    std::vector<std::pair<std::string, std::string>> others;  ///< attributes that are only kept
  };

  /// @param formatCount number of cell formats that the workbook has; a column may have none but these
  /// @param part name for messages
  void load(const SheetFrame& frame, std::size_t formatCount, const std::string& part);
  /// Null for a column that nothing is said about.
  [[nodiscard]] const Span* find(std::int32_t column) const noexcept;
  [[nodiscard]] const std::vector<Span>& spans() const noexcept { return spans_; }
  /// Gives one column a width of its own, in characters; a hidden one is shown again.
  void setFittedWidth(std::int32_t column, double width);
  [[nodiscard]] bool changed() const noexcept { return changed_; }
  /// The element, with the prefix.
  [[nodiscard]] std::string print(std::string_view prefix) const;

 private:
  std::vector<Span> spans_;
  bool changed_ = false;
};

}  // namespace mervane::workbook
