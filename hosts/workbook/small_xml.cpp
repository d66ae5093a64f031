#include "hosts/workbook/small_xml.h"

#include <charconv>
#include <cstdint>

#include "hosts/workbook/refuse.h"
#include "mervane/utf16.h"

namespace mervane::workbook {

namespace {

struct StringWriter : pugi::xml_writer {
  std::string text;
  void write(const void* data, std::size_t size) override { text.append(static_cast<const char*>(data), size); }
};

/// The value of an _xHHHH_ mark at the place, or -1.
std::int32_t markAt(std::string_view text, std::size_t at) {
  if (at + 7 > text.size() || text[at] != '_' || text[at + 1] != 'x' || text[at + 6] != '_') return -1;
  std::int32_t value = 0;
  const auto [end, error] = std::from_chars(text.data() + at + 2, text.data() + at + 6, value, 16);
  return error == std::errc{} && end == text.data() + at + 6 && value >= 0 ? value : -1;
}

}  // namespace

void loadXml(pugi::xml_document& document, std::string_view content, std::string_view partName) {
  const pugi::xml_parse_result result =
      document.load_buffer(content.data(), content.size(),
                           (pugi::parse_default | pugi::parse_ws_pcdata | pugi::parse_declaration | pugi::parse_pi |
                            pugi::parse_comments | pugi::parse_doctype));
  if (!result || !document.document_element()) {
    refuse("The part \"" + std::string(partName) + "\" of the workbook is no well-formed XML: " + result.description() +
           ", at byte " + std::to_string(result.offset) + ". Let the spreadsheet repair the file and save it anew.");
  }
  for (pugi::xml_node& node : document) {
    // The tree is written as UTF-8, whatever it was read from.
    if (node.type() == pugi::node_declaration && node.attribute("encoding")) node.attribute("encoding") = "UTF-8";
    if (node.type() == pugi::node_doctype) {
      refuse("The part \"" + std::string(partName) +
             "\" of the workbook declares a document type, which a workbook must not have. Open it in the spreadsheet "
             "and save it anew.");
    }
  }
}

std::string printXml(const pugi::xml_document& document) {
  StringWriter writer;
  const bool declared = document.first_child().type() == pugi::node_declaration;
  if (!declared) writer.text = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
  document.save(writer, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
  return writer.text;
}

std::string printFragment(const pugi::xml_node& node) {
  StringWriter writer;
  node.print(writer, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
  return writer.text;
}

std::string_view localName(std::string_view name) noexcept {
  const std::size_t colon = name.find(':');
  return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

std::string prefixOf(const pugi::xml_node& node) {
  const std::string_view name = node.name();
  const std::size_t colon = name.find(':');
  return colon == std::string_view::npos ? std::string() : std::string(name.substr(0, colon + 1));
}

pugi::xml_node childNamed(const pugi::xml_node& parent, std::string_view name) {
  for (const pugi::xml_node& child : parent) {
    if (child.type() == pugi::node_element && localName(child) == name) return child;
  }
  return {};
}

pugi::xml_attribute attributeNamed(const pugi::xml_node& node, std::string_view name) {
  for (const pugi::xml_attribute& attribute : node.attributes()) {
    const std::string_view full = attribute.name();
    if (localName(full) == name && !full.starts_with("xmlns")) return attribute;
  }
  return {};
}

bool isTrue(const pugi::xml_attribute& attribute, bool otherwise) {
  if (!attribute) return otherwise;
  const std::string_view value = attribute.value();
  return value == "1" || value == "true" || value == "on";
}

std::int32_t wholeNumber(const pugi::xml_attribute& attribute, std::int32_t otherwise) {
  const std::string_view text = attribute.value();
  std::int32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc{} && end == text.data() + text.size() && !text.empty() ? value : otherwise;
}

double realNumber(const pugi::xml_attribute& attribute, double otherwise) {
  const std::string_view text = attribute.value();
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc{} && end == text.data() + text.size() && !text.empty() ? value : otherwise;
}

void appendEscaped(std::string& to, std::string_view text) {
  for (const char c : text) {
    switch (c) {
      case '&':
        to += "&amp;";
        break;
      case '<':
        to += "&lt;";
        break;
      case '>':
        to += "&gt;";
        break;
      case '"':
        to += "&quot;";
        break;
      case '\t':
        to += "&#9;";
        break;
      case '\n':
        to += "&#10;";
        break;
      case '\r':
        to += "&#13;";
        break;
      default:
        to += c;
    }
  }
}

std::string escaped(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  appendEscaped(result, text);
  return result;
}

std::string escapedCellText(std::string_view text) {
  constexpr const char* digits = "0123456789ABCDEF";
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    if (c < 0x20 && c != '\t' && c != '\n') {
      result += "_x00";
      result += digits[c >> 4];
      result += digits[c & 15];
      result += '_';
    } else if (c == '_' && markAt(text, i) >= 0) {
      result += "_x005F_";
    } else if (c == '\n') {
      result += '\n';
    } else {
      appendEscaped(result, text.substr(i, 1));
    }
  }
  return result;
}

std::string unescapedCellText(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::int32_t code = text[i] == '_' ? markAt(text, i) : -1;
    // Halves of surrogate pairs cannot be written as UTF-8; such a mark stays as it is.
    if (code < 0 || (code >= 0xD800 && code < 0xE000)) {
      result += text[i];
    } else {
      appendUtf8(result, static_cast<char32_t>(code));
      i += 6;
    }
  }
  return result;
}

bool isXmlText(std::string_view text) noexcept {
  for (std::size_t i = 0; i < text.size();) {
    const auto c = static_cast<unsigned char>(text[i]);
    if (c < 0x80) {
      if (c < 0x20 && c != '\t' && c != '\n' && c != '\r') return false;
      ++i;
      continue;
    }
    const std::size_t length = c >= 0xF0 ? 4 : c >= 0xE0 ? 3 : 2;
    if (c < 0xC2 || c > 0xF4 || i + length > text.size()) return false;
    std::uint32_t code = c & (0xFFU >> (length + 1));
    for (std::size_t k = 1; k < length; ++k) {
      const auto next = static_cast<unsigned char>(text[i + k]);
      if ((next & 0xC0) != 0x80) return false;
      code = (code << 6) | (next & 0x3FU);
    }
    constexpr std::uint32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
    if (code < least[length] || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000) || code == 0xFFFE ||
        code == 0xFFFF) {
      return false;
    }
    i += length;
  }
  return true;
}

}  // namespace mervane::workbook
