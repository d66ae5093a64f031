#include "hosts/workbook/xml_scanner.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "hosts/workbook/refuse.h"
#include "hosts/workbook/small_xml.h"
#include "hosts/workbook/utf16_source.h"
#include "mervane/letter_case.h"
#include "mervane/utf16.h"

namespace mervane::workbook {

namespace {

constexpr std::size_t firstWindow = std::size_t{256} * 1024;
constexpr std::size_t largestToken = std::size_t{64} * 1024 * 1024;
constexpr std::size_t deepest = 256;

constexpr bool isBlank(char c) {
  return c == ' ' || c == '\n' || c == '\t' || c == '\r';
}

/// Whether the XML declaration names an encoding that UTF-8 is or holds, or none.
bool declaresUtf8(std::string_view declaration) {
  const std::size_t name = declaration.find("encoding");
  if (name == std::string_view::npos) return true;
  const std::size_t open = declaration.find_first_of("\"'", name);
  const std::size_t close = open == std::string_view::npos ? open : declaration.find(declaration[open], open + 1);
  if (close == std::string_view::npos) return false;
  const std::string encoding = lowered(declaration.substr(open + 1, close - open - 1));
  return encoding == "utf-8" || encoding == "utf8" || encoding == "us-ascii" || encoding == "ascii";
}

}  // namespace

XmlScanner::XmlScanner(Source source, std::string partName)

    : source_(asUtf8(std::move(source))), partName_(std::move(partName)), window_(firstWindow) {
  checkBegin();
}

void XmlScanner::malformed(std::string_view what) const {
  refuse("The part \"" + partName_ + "\" of the workbook is no well-formed XML: " + std::string(what) +
         ". Let the spreadsheet repair the file and save it anew.");
}

void XmlScanner::checkBegin() {
  while (end_ < 4 && refill()) {
  }
  const std::string_view begin(window_.data(), end_);
  if (begin.starts_with("\xEF\xBB\xBF")) at_ = 3;
  if (begin.starts_with("\xFE\xFF") || begin.starts_with("\xFF\xFE") || begin.find('\0') < 4) {
    malformed("it is not written in UTF-8");
  }
}

/// Slides the window to the current token and reads more behind it; false where the part ends.
bool XmlScanner::refill() {
  if (sourceAtEnd_) return false;
  if (tokenBegin_ > 0) {
    if (capturing_) {
      if (captureFrom_ < tokenBegin_) captured_.append(window_.data() + captureFrom_, tokenBegin_ - captureFrom_);
      captureFrom_ = std::max(captureFrom_, tokenBegin_) - tokenBegin_;
      if (captured_.size() > largestToken * 4) malformed("it holds too much beside its cells");
    }
    std::memmove(window_.data(), window_.data() + tokenBegin_, end_ - tokenBegin_);
    at_ -= tokenBegin_;
    end_ -= tokenBegin_;
    tokenBegin_ = 0;
  }
  if (end_ == window_.size()) {
    if (window_.size() >= largestToken) malformed("a tag or text has no end");
    window_.resize(window_.size() * 2);
  }
  const std::size_t count = source_(window_.data() + end_, window_.size() - end_);
  if (count == 0) {
    sourceAtEnd_ = true;
    return false;
  }
  end_ += count;
  return true;
}

/// Distance from the token's begin to the text, read on as far as needed.
std::size_t XmlScanner::find(std::string_view what, std::size_t from) {
  for (;;) {
    const std::string_view bytes(window_.data() + tokenBegin_, end_ - tokenBegin_);
    const std::size_t place = bytes.find(what, from);
    if (place != std::string_view::npos) return place;
    if (!refill()) malformed("it breaks off");
  }
}

XmlScanner::Token XmlScanner::next() {
  if (pendingEnd_) {
    pendingEnd_ = false;
    tokenBegin_ = at_;
    pop(name_);
    return Token::endTag;
  }
  for (;;) {
    tokenBegin_ = at_;
    if (at_ == end_ && !refill()) {
      if (!depths_.empty() || !rootSeen_) malformed("it breaks off");
      return Token::end;
    }
    if (window_[at_] != '<') {
      scanText();
      if (!depths_.empty()) return Token::text;
      if (!std::all_of(text_.begin(), text_.end(), isBlank)) malformed("it has text outside its root element");
      continue;
    }
    while (end_ - tokenBegin_ < 2) {
      if (!refill()) malformed("it breaks off");
    }
    switch (window_[tokenBegin_ + 1]) {
      case '/':
        scanEndTag();
        return Token::endTag;
      case '?': {
        const std::size_t length = find("?>", 2) + 2;
        const std::string_view mark(window_.data() + tokenBegin_, length);
        if (mark.starts_with("<?xml ") && !declaresUtf8(mark)) malformed("it is not written in UTF-8");
        at_ = tokenBegin_ + length;
        continue;
      }
      case '!':
        if (scanDeclaration()) return Token::text;
        continue;
      default:
        scanStartTag();
        return Token::startTag;
    }
  }
}

void XmlScanner::scanText() {
  std::size_t length = 0;
  for (;;) {
    const char* from = window_.data() + tokenBegin_ + length;
    const void* mark = std::memchr(from, '<', end_ - tokenBegin_ - length);
    if (mark != nullptr) {
      length = static_cast<std::size_t>(static_cast<const char*>(mark) - (window_.data() + tokenBegin_));
      break;
    }
    length = end_ - tokenBegin_;
    if (!refill()) break;
  }
  isLiteral_ = false;
  text_ = {window_.data() + tokenBegin_, length};
  at_ = tokenBegin_ + length;
}

/// Comments, literal sections and what a workbook must not have; true where it is a text.
bool XmlScanner::scanDeclaration() {
  while (end_ - tokenBegin_ < 9 && refill()) {
  }
  const std::string_view bytes(window_.data() + tokenBegin_, end_ - tokenBegin_);
  if (bytes.starts_with("<!--")) {
    at_ = tokenBegin_;
    const std::size_t length = find("-->", 4) + 3;
    at_ = tokenBegin_ + length;
    return false;
  }
  if (bytes.starts_with("<![CDATA[") && !depths_.empty()) {
    const std::size_t length = find("]]>", 9) + 3;
    text_ = {window_.data() + tokenBegin_ + 9, length - 12};
    isLiteral_ = true;
    at_ = tokenBegin_ + length;
    return true;
  }
  malformed("it declares a document type or the like, which a workbook must not have");
}

void XmlScanner::scanStartTag() {
  std::size_t length = 1;
  char quote = 0;
  for (;;) {
    const std::size_t available = end_ - tokenBegin_;
    const char* bytes = window_.data() + tokenBegin_;
    for (; length < available; ++length) {
      const char c = bytes[length];
      if (quote != 0) {
        if (c == quote) quote = 0;
      } else if (c == '"' || c == '\'') {
        quote = c;
      } else if (c == '>') {
        break;
      }
      if (c == '<') malformed("a tag holds another one");
    }
    if (length < available) break;
    if (!refill()) malformed("it breaks off");
  }
  at_ = tokenBegin_ + length + 1;
  std::string_view inside(window_.data() + tokenBegin_ + 1, length - 1);
  pendingEnd_ = inside.ends_with('/');
  if (pendingEnd_) inside.remove_suffix(1);
  std::size_t nameLength = 0;
  while (nameLength < inside.size() && !isBlank(inside[nameLength])) ++nameLength;
  name_ = inside.substr(0, nameLength);
  attributes_ = inside.substr(nameLength);
  if (name_.empty() || name_.find_first_of("\"'=&") != std::string_view::npos) malformed("a tag has no name");
  if (depths_.empty()) {
    if (rootSeen_) malformed("it has more than one root element");
    rootSeen_ = true;
  }
  if (depths_.size() == deepest) malformed("its elements are nested too deeply");
  depths_.push_back(openNames_.size());
  openNames_.append(name_);
}

void XmlScanner::scanEndTag() {
  const std::size_t length = find(">", 2);
  std::string_view inside(window_.data() + tokenBegin_ + 2, length - 2);
  while (!inside.empty() && isBlank(inside.back())) inside.remove_suffix(1);
  at_ = tokenBegin_ + length + 1;
  name_ = inside;
  pop(name_);
}

void XmlScanner::pop(std::string_view name) {
  if (depths_.empty() || std::string_view(openNames_).substr(depths_.back()) != name) {
    malformed("an end tag does not match its start tag");
  }
  openNames_.resize(depths_.back());
  depths_.pop_back();
}

bool XmlScanner::nextAttribute(std::string_view& rest, std::string_view& name, std::string_view& rawValue) const {
  std::size_t at = 0;
  const auto skipBlanks = [&] {
    while (at < rest.size() && isBlank(rest[at])) ++at;
  };
  skipBlanks();
  if (at == rest.size()) return false;
  const std::size_t nameBegin = at;
  while (at < rest.size() && rest[at] != '=' && !isBlank(rest[at])) ++at;
  name = rest.substr(nameBegin, at - nameBegin);
  skipBlanks();
  if (at == rest.size() || rest[at] != '=' || name.empty()) malformed("an attribute has no value");
  ++at;
  skipBlanks();
  if (at == rest.size() || (rest[at] != '"' && rest[at] != '\'')) malformed("an attribute's value has no quotes");
  const std::size_t close = rest.find(rest[at], at + 1);
  if (close == std::string_view::npos) malformed("an attribute's value has no end");
  rawValue = rest.substr(at + 1, close - at - 1);
  rest.remove_prefix(close + 1);
  return true;
}

void XmlScanner::appendText(std::string& to) const {
  if (isLiteral_) {
    if (!isXmlText(text_)) malformed("it holds characters that are not allowed");
    to += text_;
  } else {
    appendResolved(to, text_);
  }
}

std::string XmlScanner::resolved(std::string_view raw) const {
  std::string text;
  appendResolved(text, raw);
  return text;
}

void XmlScanner::appendResolved(std::string& to, std::string_view raw) const {
  if (!isXmlText(raw)) malformed("it holds characters that are not allowed");
  for (std::size_t at = 0; at < raw.size();) {
    if (raw[at] == '\r') {
      // XML turns every form of line end into a line feed.
      to += '\n';
      at += (at + 1 < raw.size() && raw[at + 1] == '\n') ? std::size_t{2} : std::size_t{1};
      continue;
    }
    if (raw[at] != '&') {
      const std::size_t next = std::min(raw.find_first_of("&\r", at), raw.size());
      to += raw.substr(at, next - at);
      at = next;
      continue;
    }
    const std::size_t close = raw.find(';', at);
    const std::string_view name = close == std::string_view::npos ? "" : raw.substr(at + 1, close - at - 1);
    if (name == "amp") {
      to += '&';
    } else if (name == "lt") {
      to += '<';
    } else if (name == "gt") {
      to += '>';
    } else if (name == "quot") {
      to += '"';
    } else if (name == "apos") {
      to += '\'';
    } else if (name.size() >= 2 && name.size() <= 9 && name[0] == '#') {
      const bool hexadecimal = name[1] == 'x';
      std::uint32_t code = 0;
      std::size_t digits = 0;
      for (const char c : name.substr(hexadecimal ? 2 : 1)) {
        const int digit = c >= '0' && c <= '9'   ? c - '0'
                          : c >= 'a' && c <= 'f' ? c - 'a' + 10
                          : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                                 : 99;
        if (digit >= (hexadecimal ? 16 : 10) || code > 0x10FFFF) malformed("it holds a character that is none");
        code = code * (hexadecimal ? 16U : 10U) + static_cast<std::uint32_t>(digit);
        ++digits;
      }
      std::string character;
      if (code <= 0x10FFFF) appendUtf8(character, code);
      if (digits == 0 || character.empty() || !isXmlText(character)) malformed("it holds a character that is none");
      to += character;
    } else {
      malformed("it uses an entity that XML does not have");
    }
    at = close + 1;
  }
}

void XmlScanner::skipElement() {
  const std::size_t outside = depth() - 1;
  // What is passed over is written again later, so it must be sound as well.
  const auto checkAttributes = [&] {
    std::string_view rest = attributes_;
    std::string_view attribute;
    std::string_view value;
    while (nextAttribute(rest, attribute, value)) {
    }
  };
  checkAttributes();
  while (depth() > outside) {
    const Token token = next();
    if (token == Token::end) return;
    if (token == Token::startTag) checkAttributes();
  }
}

void XmlScanner::beginCapture() {
  capturing_ = true;
  captureFrom_ = at_;
  captured_.clear();
}

std::string XmlScanner::takeCapture(bool withToken) {
  const std::size_t until = withToken ? at_ : tokenBegin_;
  if (until > captureFrom_) captured_.append(window_.data() + captureFrom_, until - captureFrom_);
  capturing_ = false;
  return std::exchange(captured_, {});
}

}  // namespace mervane::workbook
