#include "hosts/workbook/charts/anchor.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "hosts/workbook/charts/xml_text.h"

namespace mervane::workbook::charts {
namespace {

constexpr double emu = static_cast<double>(emuPerPoint);

std::int64_t toEmu(double points) {
  return std::llround(points * emu);
}

std::int64_t integer(const std::string& text) {
  std::int64_t value = 0;
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  if (first != std::string::npos) std::from_chars(text.data() + first, text.data() + text.size(), value);
  return value;
}

std::int64_t childInteger(const pugi::xml_node& parent, std::string_view local) {
  return integer(child(parent, local).text().get());
}

AnchorPoint readPoint(const pugi::xml_node& node) {
  constexpr std::int64_t widestSheet = lastSheetColumn - 1;
  constexpr std::int64_t longestSheet = lastSheetRow - 1;
  AnchorPoint point;
  point.column = static_cast<std::int32_t>(std::clamp<std::int64_t>(childInteger(node, "col"), 0, widestSheet));
  point.columnOffset = childInteger(node, "colOff");
  point.row = static_cast<std::int32_t>(std::clamp<std::int64_t>(childInteger(node, "row"), 0, longestSheet));
  point.rowOffset = childInteger(node, "rowOff");
  return point;
}

std::string element(const std::string& prefix, const char* name, std::int64_t value) {
  const std::string tag = prefix + name;
  return "<" + tag + ">" + std::to_string(value) + "</" + tag + ">";
}

std::string pointText(const std::string& prefix, const std::string& tag, const AnchorPoint& point) {
  return "<" + tag + ">" + element(prefix, "col", point.column) + element(prefix, "colOff", point.columnOffset) +
         element(prefix, "row", point.row) + element(prefix, "rowOff", point.rowOffset) + "</" + tag + ">";
}

std::string pairText(const std::string& tag, const char* first, std::int64_t firstValue, const char* second,
                     std::int64_t secondValue) {
  return "<" + tag + " " + first + "=\"" + std::to_string(firstValue) + "\" " + second + "=\"" +
         std::to_string(secondValue) + "\"/>";
}

/// What stands in place of one child of an anchor; empty where the child stays.
std::string replacement(const std::string& tag, const Anchor& anchor) {
  const std::string_view local = localName(tag);
  const std::string prefix = tag.substr(0, tag.size() - local.size());
  if (local == "from") return pointText(prefix, tag, anchor.from);
  if (local == "to") return pointText(prefix, tag, anchor.to);
  if (local == "pos") return pairText(tag, "x", anchor.left, "y", anchor.top);
  if (local == "ext") return pairText(tag, "cx", anchor.width, "cy", anchor.height);
  return {};
}

}  // namespace

bool isAnchorName(std::string_view local) noexcept {
  return local == "twoCellAnchor" || local == "oneCellAnchor" || local == "absoluteAnchor";
}

Anchor readAnchor(const pugi::xml_node& node) {
  Anchor anchor;
  const std::string_view local = localName(node.name());
  anchor.kind = local == "oneCellAnchor"    ? Anchor::Kind::oneCell
                : local == "absoluteAnchor" ? Anchor::Kind::absolute
                                            : Anchor::Kind::twoCells;
  anchor.from = readPoint(child(node, "from"));
  anchor.to = readPoint(child(node, "to"));
  anchor.left = integer(attribute(child(node, "pos"), "x"));
  anchor.top = integer(attribute(child(node, "pos"), "y"));
  anchor.width = integer(attribute(child(node, "ext"), "cx"));
  anchor.height = integer(attribute(child(node, "ext"), "cy"));
  return anchor;
}

Box boxOf(const Anchor& anchor, const Geometry& geometry) {
  Box box;
  if (anchor.kind == Anchor::Kind::absolute) {
    box.left = static_cast<double>(anchor.left) / emu;
    box.top = static_cast<double>(anchor.top) / emu;
  } else {
    box.left = geometry.leftOf(anchor.from);
    box.top = geometry.topOf(anchor.from);
  }
  if (anchor.kind == Anchor::Kind::twoCells) {
    box.width = std::max(0.0, geometry.leftOf(anchor.to) - box.left);
    box.height = std::max(0.0, geometry.topOf(anchor.to) - box.top);
  } else {
    box.width = static_cast<double>(anchor.width) / emu;
    box.height = static_cast<double>(anchor.height) / emu;
  }
  return box;
}

Anchor anchorFor(Anchor::Kind kind, const Box& box, const Geometry& geometry) {
  Anchor anchor;
  anchor.kind = kind;
  anchor.from = geometry.anchorAt(box.left, box.top);
  anchor.to = geometry.anchorAt(box.left + box.width, box.top + box.height);
  anchor.left = toEmu(box.left);
  anchor.top = toEmu(box.top);
  anchor.width = toEmu(box.width);
  anchor.height = toEmu(box.height);
  return anchor;
}

std::string movedAnchor(std::string_view xml, const Anchor& anchor) {
  const ElementOutline outline = outlineOf(xml);
  std::string moved;
  std::size_t copied = 0;
  for (const ElementSpan& span : outline.children) {
    const std::string text = replacement(span.name, anchor);
    if (text.empty()) continue;
    moved += xml.substr(copied, span.begin - copied);
    moved += text;
    copied = span.end;
  }
  moved += xml.substr(copied);
  return moved;
}

}  // namespace mervane::workbook::charts
