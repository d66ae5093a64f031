#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace mervane::workbook {

/// Loads a part that is held in memory as a whole. Raises applicationDefined, naming the part, for text that is no
/// well-formed XML and for a document type: its entities are no part of a workbook.
void loadXml(pugi::xml_document& document, std::string_view content, std::string_view partName);

/// The document as it is written: without added blanks, with the declaration that parts have.
[[nodiscard]] std::string printXml(const pugi::xml_document& document);
/// One element with all below it, without a declaration.
[[nodiscard]] std::string printFragment(const pugi::xml_node& node);

/// The name behind the namespace prefix.
[[nodiscard]] std::string_view localName(std::string_view name) noexcept;
[[nodiscard]] inline std::string_view localName(const pugi::xml_node& node) noexcept {
  return localName(node.name());
}
/// The prefix with its colon, or empty: what children of this element's namespace are named with.
[[nodiscard]] std::string prefixOf(const pugi::xml_node& node);
/// The first child with this local name, whatever its prefix.
[[nodiscard]] pugi::xml_node childNamed(const pugi::xml_node& parent, std::string_view name);
/// The attribute with this local name, whatever its prefix.
[[nodiscard]] pugi::xml_attribute attributeNamed(const pugi::xml_node& node, std::string_view name);
/// "1", "true" and "on" are true.
[[nodiscard]] bool isTrue(const pugi::xml_attribute& attribute, bool otherwise = false);
/// A whole number in the bounds, or the other value where the attribute is missing or no such number.
[[nodiscard]] std::int32_t wholeNumber(const pugi::xml_attribute& attribute, std::int32_t otherwise);
[[nodiscard]] double realNumber(const pugi::xml_attribute& attribute, double otherwise);

/// The text with & < > " and control characters written as the format wants them.
[[nodiscard]] std::string escaped(std::string_view text);
void appendEscaped(std::string& to, std::string_view text);
/// Texts of cells write characters that XML has no room for, and what looks like such a mark, as _xHHHH_.
[[nodiscard]] std::string escapedCellText(std::string_view text);
[[nodiscard]] std::string unescapedCellText(std::string_view text);
/// Whether the bytes are UTF-8 of characters that XML allows.
[[nodiscard]] bool isXmlText(std::string_view text) noexcept;

}  // namespace mervane::workbook
