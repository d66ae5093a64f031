#include "hosts/workbook/font_metrics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace mervane::workbook {

namespace {

/// Width of a digit as a share of the font's size, for common fonts; other ones take the last entry.
constexpr std::array<std::pair<std::string_view, double>, 17> digitShares{{
    {"Calibri", 0.507},
    {"Carlito", 0.507},
    {"Aptos Narrow", 0.500},
    {"Aptos", 0.561},
    {"Arial", 0.556},
    {"Helvetica", 0.556},
    {"Liberation Sans", 0.556},
    {"Cambria", 0.554},
    {"Times New Roman", 0.5},
    {"Liberation Serif", 0.5},
    {"Verdana", 0.636},
    {"DejaVu Sans", 0.636},
    {"Tahoma", 0.546},
    {"Segoe UI", 0.539},
    {"Courier New", 0.6},
    {"Consolas", 0.55},
    {"", 0.55},
}};

/// Widths of the characters from the blank to the tilde as shares of a digit's, after the default font.
constexpr std::array<double, 95> letterShares{
    0.446, 0.643, 0.791, 0.983, 1.000, 1.411, 1.346, 0.436, 0.598, 0.598, 0.983, 0.983, 0.493, 0.604, 0.498, 0.762,
    1.000, 1.000, 1.000, 1.000, 1.000, 1.000, 1.000, 1.000, 1.000, 1.000, 0.528, 0.528, 0.983, 0.983, 0.983, 0.914,
    1.765, 1.142, 1.073, 1.052, 1.214, 0.963, 0.906, 1.245, 1.229, 0.497, 0.629, 1.025, 0.829, 1.686, 1.274, 1.306,
    1.020, 1.306, 1.071, 0.906, 0.961, 1.266, 1.118, 1.755, 1.024, 0.961, 0.924, 0.605, 0.762, 0.605, 0.983, 0.983,
    0.574, 0.945, 1.036, 0.834, 1.036, 0.982, 0.602, 0.929, 1.036, 0.453, 0.472, 0.898, 0.453, 1.576, 1.036, 1.040,
    1.036, 1.036, 0.688, 0.771, 0.661, 1.036, 0.891, 1.410, 0.854, 0.893, 0.779, 0.620, 0.908, 0.620, 0.983};

double digitShare(std::string_view fontName) noexcept {
  for (const auto& [name, share] : digitShares) {
    if (name == fontName) return share;
  }
  return digitShares.back().second;
}

bool isWide(std::uint32_t code) noexcept {
  return (code >= 0x1100 && code < 0x1160) || (code >= 0x2E80 && code < 0xA4D0) || (code >= 0xAC00 && code < 0xD7A4) ||
         (code >= 0xF900 && code < 0xFB00) || (code >= 0xFE30 && code < 0xFE70) || (code >= 0xFF00 && code < 0xFF61) ||
         (code >= 0x1F300 && code < 0x1FA00) || code >= 0x20000;
}

}  // namespace

std::int32_t digitWidth(std::string_view fontName, double points) noexcept {
  return std::max(1, static_cast<std::int32_t>(std::floor(points * 96.0 / 72.0 * digitShare(fontName) + 0.5)));
}

double textWidth(std::string_view text, std::string_view fontName, double points, bool bold) noexcept {
  double line = 0.0;
  double widest = 0.0;
  for (std::size_t i = 0; i < text.size();) {
    const auto lead = static_cast<unsigned char>(text[i]);
    if (lead == '\n') {
      widest = std::max(widest, line);
      line = 0.0;
      ++i;
    } else if (lead < 0x80) {
      line += lead >= 0x20 && lead < 0x7F ? letterShares[lead - 0x20U] : 0.0;
      ++i;
    } else {
      const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
      std::uint32_t code = lead & (0xFFU >> (length + 1));
      for (std::size_t k = 1; k < length && i + k < text.size(); ++k) {
        code = (code << 6) | (static_cast<unsigned char>(text[i + k]) & 0x3FU);
      }
      line += isWide(code) ? 2.0 : code < 0x600 ? 1.1 : 1.5;
      i += length;
    }
  }
  const double digit = points * 96.0 / 72.0 * digitShare(fontName);
  return std::max(widest, line) * digit * (bold ? 1.06 : 1.0);
}

}  // namespace mervane::workbook
