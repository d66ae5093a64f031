#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace mervane::workbook {

/// What one section of a number format's code puts around the digits: `_("$"* #,##0.00_)` has "($" in front and ")"
/// behind.
struct FormatSection {
  std::string before;
  std::string digits;  ///< the places and their marks: "#,##0.00"; empty where the section shows no number
  std::string after;
  bool isPercent = false;
  bool showsSign = true;  ///< false for a section of negative numbers, which says so in its own way
};

/// The section of the code that shows the value; nothing for fractions, exponents, texts and dates. Conditions in
/// brackets are not followed.
[[nodiscard]] std::optional<FormatSection> sectionFor(double value, std::string_view code);

}  // namespace mervane::workbook
