#pragma once

#include <com/sun/star/table/BorderLine2.hpp>
#include <cstdint>

namespace mervane::calc {

/// One border line of cells in the numbers of the object model, over the office's own.
class LineFormat {
 public:
  LineFormat() = default;
  explicit LineFormat(const com::sun::star::table::BorderLine2& line) : line_(line) {}
  [[nodiscard]] const com::sun::star::table::BorderLine2& line() const { return line_; }

  [[nodiscard]] std::int32_t style() const;
  [[nodiscard]] std::int32_t weight() const;
  [[nodiscard]] std::int32_t color() const { return line_.Color; }

  /// Raises for a style that there is none of. A line that gets one where there was none is thin.
  void style(std::int32_t style);
  /// Raises for a weight that there is none of. A line that gets one where there was none is continuous.
  void weight(std::int32_t weight);
  /// @param rgb 0xRRGGBB. A line that gets one where there was none is thin and continuous.
  void color(std::int32_t rgb);

 private:
  [[nodiscard]] bool isNone() const { return line_.LineWidth == 0; }
  void setWidth(std::int32_t weight);

  com::sun::star::table::BorderLine2 line_;
};

}  // namespace mervane::calc
