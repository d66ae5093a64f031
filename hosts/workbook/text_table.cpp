#include "hosts/workbook/text_table.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "hosts/workbook/package.h"
#include "hosts/workbook/refuse.h"
#include "hosts/workbook/small_xml.h"
#include "hosts/workbook/xml_scanner.h"

namespace mervane::workbook {

namespace {

constexpr std::size_t blockSize = std::size_t{1} << 20;

}  // namespace

std::string_view TextTable::keep(std::string_view text) {
  // A block never grows beyond what it reserved, so the views into it hold.
  if (blocks_.empty() || blocks_.back().capacity() - blocks_.back().size() < text.size()) {
    blocks_.emplace_back().reserve(std::max(blockSize, text.size()));
  }
  std::string& block = blocks_.back();
  const std::size_t at = block.size();
  block.append(text);
  return std::string_view(block).substr(at);
}

void TextTable::load(const Package& package, const std::string& part) {
  if (part.empty() || !package.has(part)) return;
  XmlScanner scanner(package.pull(part), part);
  using Token = XmlScanner::Token;
  std::string text;
  bool inText = false;
  std::size_t phonetic = 0;  // depth at which a reading aid began; its texts are no part of the value
  for (Token token = scanner.next(); token != Token::end; token = scanner.next()) {
    if (token == Token::text) {
      if (inText && phonetic == 0) scanner.appendText(text);
      continue;
    }
    const std::string_view name = localName(scanner.name());
    if (token == Token::startTag) {
      if (name == "si" && scanner.depth() == 2) text.clear();
      if (name == "t") inText = true;
      if (name == "rPh" && phonetic == 0) phonetic = scanner.depth();
    } else {
      if (name == "t") inText = false;
      if (name == "rPh" && scanner.depth() + 1 == phonetic) phonetic = 0;
      if (name == "si" && scanner.depth() == 1) {
        texts_.push_back(keep(text.find("_x") == std::string::npos ? text : unescapedCellText(text)));
      }
    }
  }
  sharedCount_ = count();
}

std::uint32_t TextTable::add(std::string_view text) {
  const auto found = added_.find(text);
  if (found != added_.end()) return found->second;
  const std::uint32_t number = count();
  texts_.push_back(keep(text));
  added_.emplace(texts_.back(), number);
  return number;
}

std::uint32_t TextTable::addRich(std::string_view text, std::string element) {
  const std::uint32_t number = count();
  texts_.push_back(keep(text));
  rich_.emplace(number, std::move(element));
  return number;
}

std::string_view TextTable::richElement(std::uint32_t number) const {
  const auto found = rich_.find(number);
  return found == rich_.end() ? std::string_view() : std::string_view(found->second);
}

}  // namespace mervane::workbook
