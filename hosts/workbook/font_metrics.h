#pragma once

#include <cstdint>
#include <string_view>

namespace mervane::workbook {

/// Width in pixels, at 96 to the inch, of the widest digit of a font: the unit in which column widths are counted.
[[nodiscard]] std::int32_t digitWidth(std::string_view fontName, double points) noexcept;

/// About how wide a text is, in pixels. Letters have their widths of the default font, scaled by the font's own
/// digit; those of other scripts count one digit and a half, wide ones of East Asia two.
[[nodiscard]] double textWidth(std::string_view text, std::string_view fontName, double points, bool bold) noexcept;

}  // namespace mervane::workbook
