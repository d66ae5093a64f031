#include "hosts/workbook/charts/xml_text.h"

#include <sstream>

#include "hosts/workbook/charts/model.h"

namespace mervane::workbook::charts {
namespace {

/// Walks the markup of a text, tag by tag.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : text_(text) {}

  enum class Tag { start, end, empty, none };

  /// The next tag of an element; comments, instructions, character data sections and texts are passed over.
  Tag next() {
    for (;;) {
      begin_ = text_.find('<', position_);
      if (begin_ == std::string_view::npos) return Tag::none;
      const std::string_view rest = text_.substr(begin_);
      if (rest.starts_with("<!--")) {
        position_ = after("-->", begin_ + 4);
      } else if (rest.starts_with("<![CDATA[")) {
        position_ = after("]]>", begin_ + 9);
      } else if (rest.starts_with("<?")) {
        position_ = after("?>", begin_ + 2);
      } else if (rest.starts_with("<!")) {
        position_ = after(">", begin_ + 2);
      } else {
        return tag(rest.starts_with("</"));
      }
    }
  }

  [[nodiscard]] std::size_t begin() const { return begin_; }
  [[nodiscard]] std::size_t end() const { return position_; }
  [[nodiscard]] std::string name() const {
    const std::size_t first = begin_ + 1;
    return std::string(text_.substr(first, text_.find_first_of(" \t\r\n/>", first) - first));
  }

 private:
  std::size_t after(std::string_view mark, std::size_t from) const {
    const std::size_t found = text_.find(mark, from);
    if (found == std::string_view::npos) refuse("A drawing part is damaged: a tag does not end.");
    return found + mark.size();
  }

  Tag tag(bool isEnd) {
    char quote = '\0';
    for (std::size_t i = begin_ + 1; i < text_.size(); ++i) {
      const char letter = text_[i];
      if (quote != '\0') {
        if (letter == quote) quote = '\0';
      } else if (letter == '"' || letter == '\'') {
        quote = letter;
      } else if (letter == '>') {
        position_ = i + 1;
        if (isEnd) return Tag::end;
        return text_[i - 1] == '/' ? Tag::empty : Tag::start;
      }
    }
    refuse("A drawing part is damaged: a tag does not end.");
  }

  std::string_view text_;
  std::size_t position_ = 0;
  std::size_t begin_ = 0;
};

}  // namespace

std::string_view localName(std::string_view name) noexcept {
  const std::size_t colon = name.find(':');
  return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

pugi::xml_node child(const pugi::xml_node& parent, std::string_view local) {
  for (const pugi::xml_node node : parent.children()) {
    if (node.type() == pugi::node_element && localName(node.name()) == local) return node;
  }
  return {};
}

std::string attribute(const pugi::xml_node& node, std::string_view local) {
  for (const pugi::xml_attribute one : node.attributes()) {
    if (localName(one.name()) == local) return one.value();
  }
  return {};
}

bool flag(const pugi::xml_node& parent, std::string_view local, bool otherwise) {
  const pugi::xml_node node = child(parent, local);
  if (!node) return otherwise;
  const std::string value = attribute(node, "val");
  return value.empty() || value == "1" || value == "true";
}

std::string printable(std::string_view text) {
  std::string kept;
  kept.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const bool isControl = byte < 0x20 && text[i] != '\t' && text[i] != '\n' && text[i] != '\r';
    // U+FFFE and U+FFFF are EF BF BE and EF BF BF.
    const std::string_view three = text.substr(i, 3);
    const bool isNoCharacter = three == "\xEF\xBF\xBE" || three == "\xEF\xBF\xBF";
    if (isNoCharacter) i += 2;
    if (!isControl && !isNoCharacter) kept += text[i];
  }
  return kept;
}

std::string partText(const pugi::xml_document& document) {
  std::ostringstream stream;
  stream << "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
  document.save(stream, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
  return stream.str();
}

ElementOutline outlineOf(std::string_view text) {
  ElementOutline outline;
  Scanner scanner(text);
  const Scanner::Tag first = scanner.next();
  if (first != Scanner::Tag::start && first != Scanner::Tag::empty) refuse("A drawing part is damaged: it is empty.");
  outline.name = scanner.name();
  outline.tagEnd = outline.contentEnd = outline.end = scanner.end();
  if (first == Scanner::Tag::empty) return outline;

  std::size_t depth = 1;
  for (;;) {
    const Scanner::Tag tag = scanner.next();
    if (tag == Scanner::Tag::none) refuse("A drawing part is damaged: an element does not end.");
    if (tag == Scanner::Tag::end) {
      if (--depth == 0) break;
      if (depth == 1) outline.children.back().end = scanner.end();
    } else {
      if (depth == 1) outline.children.push_back({scanner.name(), scanner.begin(), scanner.end()});
      if (tag == Scanner::Tag::start) ++depth;
    }
  }
  outline.hasEndTag = true;
  outline.contentEnd = scanner.begin();
  outline.end = scanner.end();
  return outline;
}

}  // namespace mervane::workbook::charts
