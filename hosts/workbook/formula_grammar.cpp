#include "hosts/workbook/formula_grammar.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "spreadsheet/name_characters.h"

namespace mervane::workbook {

namespace {

using sheet::isDigit;
using sheet::isLetter;

constexpr int deepestNesting = 64;  ///< what the application takes

/// Bytes of the letter, digit or mark of another script at the begin of the text; 0 for anything else.
std::size_t foreignNamePart(std::string_view text) {
  if (text.empty() || static_cast<unsigned char>(text.front()) < 0x80) return 0;
  utf8proc_int32_t character = -1;
  const utf8proc_ssize_t length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                                   static_cast<utf8proc_ssize_t>(text.size()), &character);
  if (length <= 0) return 0;
  const utf8proc_category_t category = utf8proc_category(character);
  const bool isPart = category >= UTF8PROC_CATEGORY_LU && category <= UTF8PROC_CATEGORY_NO;
  return isPart ? static_cast<std::size_t>(length) : 0;
}

/// Takes a formula apart from left to right. Every function answers whether the text goes on as a formula does.
class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {}

  bool formula() { return expression() && rest_.empty(); }

 private:
  [[nodiscard]] char next() const { return rest_.empty() ? '\0' : rest_.front(); }
  bool take(char c) {
    if (rest_.empty() || rest_.front() != c) return false;
    rest_.remove_prefix(1);
    return true;
  }
  bool skipBlanks() {
    const std::size_t count = std::min(rest_.find_first_not_of(" \t\r\n"), rest_.size());
    rest_.remove_prefix(count);
    return count > 0;
  }

  bool takeOperator() {
    for (const std::string_view one : {"<>", "<=", ">=", "+", "-", "*", "/", "^", "&", "=", "<", ">", ":"}) {
      if (!rest_.starts_with(one)) continue;
      rest_.remove_prefix(one.size());
      return true;
    }
    return false;
  }

  /// Operands with operators between. Blanks between two references stand for what they have in common.
  bool expression() {
    if (++depth_ > deepestNesting || !operand()) return false;
    for (;;) {
      const bool blanks = skipBlanks();
      if (rest_.empty() || std::string_view("),").find(next()) != std::string_view::npos) break;
      if (!takeOperator() && !(blanks && lastIsReference_ && mayBeginReference())) return false;
      if (!operand()) return false;
    }
    --depth_;
    return true;
  }

  bool operand() {
    do {
      skipBlanks();
    } while (take('+') || take('-') || take('@'));
    lastIsReference_ = false;
    if (!primary()) return false;
    while (take('%') || take('#')) {
    }
    return true;
  }

  [[nodiscard]] bool mayBeginReference() const {
    return isNameBegin() || std::string_view("$'[#(").find(next()) != std::string_view::npos;
  }
  [[nodiscard]] bool isNameBegin() const {
    const char c = next();
    return isLetter(c) || c == '_' || c == '\\' || c == '$' || foreignNamePart(rest_) > 0;
  }

  bool primary() {
    switch (next()) {
      case '"':
        return quoted('"');
      case '(':
        return parentheses();
      case '{':
        return constants();
      case '#':
        return error();
      case '\'':
        return quoted('\'') && take('!') && reference();
      case '[':
        return brackets() && (take('!') || isNameBegin() ? reference() : isReference());
      default:
        return isDigit(next()) || next() == '.' ? number() : reference();
    }
  }

  bool isReference() {
    lastIsReference_ = true;
    return true;
  }

  bool quoted(char mark) {
    take(mark);
    for (;;) {
      const std::size_t close = rest_.find(mark);
      if (close == std::string_view::npos) return false;
      rest_.remove_prefix(close + 1);
      if (!take(mark)) return true;  // Two of them stand for one.
    }
  }

  bool parentheses() {
    take('(');
    do {
      if (!expression()) return false;
    } while (take(','));
    return take(')') && isReference();
  }

  /// A table of constants; what they are is left to the application.
  bool constants() {
    take('{');
    while (!rest_.empty() && next() != '}') {
      if (next() != '"') {
        rest_.remove_prefix(1);
      } else if (!quoted('"')) {
        return false;
      }
    }
    return take('}');
  }

  /// A column of a table or another workbook; brackets nest, and an apostrophe marks those that do not count.
  bool brackets() {
    int open = 0;
    do {
      const char c = next();
      if (rest_.empty()) return false;
      rest_.remove_prefix(c == '\'' && rest_.size() > 1 ? 2 : 1);
      open += c == '[' ? 1 : c == ']' ? -1 : 0;
    } while (open > 0);
    return true;
  }

  /// An error value; behind the one of a lost sheet a cell may follow.
  bool error() {
    take('#');
    const auto isPart = [](char c) {
      return isLetter(c) || isDigit(c) || c == '/' || c == '!' || c == '?' || c == '_';
    };
    const auto end = std::ranges::find_if_not(rest_, isPart);
    const auto length = static_cast<std::size_t>(end - rest_.begin());
    rest_.remove_prefix(length);
    return length > 0 && isReference();
  }

  void digits() { rest_.remove_prefix(std::min(rest_.find_first_not_of("0123456789"), rest_.size())); }
  bool number() {
    const std::size_t before = rest_.size();
    digits();
    const bool hasPoint = take('.');
    digits();
    if (before - rest_.size() == (hasPoint ? 1U : 0U)) return false;
    if (next() == 'E' || next() == 'e') {
      rest_.remove_prefix(1);
      static_cast<void>(take('+') || take('-'));
      if (!isDigit(next())) return false;
      digits();
    }
    return !isNameBegin() || next() == '$';
  }

  /// A cell, a name, a function with its arguments, a table, or one of them behind the name of its sheet.
  bool reference() {
    if (next() == '#') return error();
    if (!isNameBegin()) return false;
    for (;;) {
      const std::size_t length = partLength();
      if (length == 0) break;
      rest_.remove_prefix(length);
    }
    if (take('!')) return reference();
    if (next() == '[') return brackets() && isReference();
    while (next() == '(') {
      if (!arguments()) return false;
    }
    return isReference();
  }
  [[nodiscard]] std::size_t partLength() const {
    const char c = next();
    if (rest_.empty()) return 0;
    if (c == '$' || (static_cast<unsigned char>(c) < 0x80 && sheet::isNamePart(c))) return 1;
    return foreignNamePart(rest_);
  }

  bool arguments() {
    take('(');
    for (;;) {
      skipBlanks();
      if (take(')')) return true;
      if (take(',')) continue;
      if (!expression()) return false;
      if (take(')')) return true;
      if (!take(',')) return false;
    }
  }

  std::string_view rest_;
  int depth_ = 0;
  bool lastIsReference_ = false;
};

}  // namespace

bool isFormulaText(std::string_view formula) {
  return Reader(formula).formula();
}

}  // namespace mervane::workbook
