#pragma once

#include <cstdint>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "hosts/workbook/charts/model.h"
#include "hosts/workbook/geometry.h"

namespace mervane::workbook::charts {

/// How a thing is tied to its sheet.
struct Anchor {
  enum class Kind { twoCells, oneCell, absolute };
  Kind kind = Kind::twoCells;
  AnchorPoint from;         ///< of twoCells and oneCell
  AnchorPoint to;           ///< of twoCells
  std::int64_t left = 0;    ///< of absolute, EMU
  std::int64_t top = 0;     ///< of absolute, EMU
  std::int64_t width = 0;   ///< of oneCell and absolute, EMU
  std::int64_t height = 0;  ///< of oneCell and absolute, EMU
};

/// Whether an element of that local name is an anchor.
[[nodiscard]] bool isAnchorName(std::string_view local) noexcept;
[[nodiscard]] Anchor readAnchor(const pugi::xml_node& node);
[[nodiscard]] Box boxOf(const Anchor& anchor, const Geometry& geometry);
/// The anchor of a kind that covers the box. Sizes that the kind states are exact; corners in cells are exact where
/// the geometry is.
[[nodiscard]] Anchor anchorFor(Anchor::Kind kind, const Box& box, const Geometry& geometry);

/// The text of an anchor element with its place changed and every other byte kept.
[[nodiscard]] std::string movedAnchor(std::string_view xml, const Anchor& anchor);

}  // namespace mervane::workbook::charts
