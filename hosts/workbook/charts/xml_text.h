#pragma once

#include <cstddef>
#include <cstdint>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

/// Small helpers over XML texts and trees.
namespace mervane::workbook::charts {

/// The name without its prefix.
[[nodiscard]] std::string_view localName(std::string_view name) noexcept;
/// The first child element of that local name; an empty node where there is none, and for an empty parent.
[[nodiscard]] pugi::xml_node child(const pugi::xml_node& parent, std::string_view local);
/// The value of the attribute of that local name, or an empty text.
[[nodiscard]] std::string attribute(const pugi::xml_node& node, std::string_view local);
/// The `val` attribute of a child as a yes or no; `otherwise` where there is no such child. A child without the
/// attribute says yes.
[[nodiscard]] bool flag(const pugi::xml_node& parent, std::string_view local, bool otherwise);

/// The text without characters that an XML document cannot hold.
[[nodiscard]] std::string printable(std::string_view text);
/// A tree as a part's text: declaration, no indentation.
[[nodiscard]] std::string partText(const pugi::xml_document& document);

/// Where one child element stands in the text of its parent.
struct ElementSpan {
  std::string name;  ///< with prefix
  std::size_t begin = 0;
  std::size_t end = 0;  ///< one past its last character
};

/// The document element of a text and its child elements by position, so that a part can be changed in places and
/// kept byte for byte in all others.
struct ElementOutline {
  std::string name;
  std::size_t tagEnd = 0;      ///< one past the start tag
  std::size_t contentEnd = 0;  ///< where the end tag begins; equals tagEnd where the element has no end tag
  std::size_t end = 0;
  bool hasEndTag = false;
  std::vector<ElementSpan> children;
};

/// @param text well-formed UTF-8, which the caller has made sure of by parsing it. Raises for what is not.
[[nodiscard]] ElementOutline outlineOf(std::string_view text);

}  // namespace mervane::workbook::charts
