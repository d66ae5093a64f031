#include "hosts/calc/formula_notation.h"

#include <cstddef>

#include "spreadsheet/name_characters.h"

namespace mervane::calc {

namespace {

/// The end of a text or a quoted name, in which a doubled mark stands for one.
std::size_t behindQuote(std::string_view text, std::size_t at) {
  const char mark = text[at];
  for (++at; at < text.size(); ++at) {
    if (text[at] != mark) continue;
    if (at + 1 >= text.size() || text[at + 1] != mark) return at + 1;
    ++at;
  }
  return text.size();
}

std::size_t behindName(std::string_view text, std::size_t at, bool withStops) {
  while (at < text.size() && mervane::sheet::isNamePart(text[at]) && (withStops || text[at] != '.')) ++at;
  return at;
}

}  // namespace

std::string withMarkedSheets(std::string_view formula, const std::function<bool(std::string_view name)>& isSheet) {
  std::string result;
  const auto charAt = [&](std::size_t at) { return at < formula.size() ? formula[at] : '\0'; };
  bool isElsewhere = false;  // behind the name of another document
  for (std::size_t at = 0; at < formula.size();) {
    if (formula[at] == '"') {
      const std::size_t end = behindQuote(formula, at);
      result += formula.substr(at, end - at);
      at = end;
      continue;
    }
    const std::size_t begin = charAt(at) == '$' ? at + 1 : at;
    const bool isQuoted = charAt(begin) == '\'';
    const std::size_t end = isQuoted ? behindQuote(formula, begin) : behindName(formula, begin, false);
    const std::string_view name = formula.substr(begin, end - begin);
    if (isQuoted && charAt(end) == '#') {
      result += "[0]";
      isElsewhere = true;
      at = end + 1;
    } else if (end > begin && charAt(end) == '.' && (isQuoted || isElsewhere || isSheet(name))) {
      result += name;
      result += '!';
      isElsewhere = false;
      at = end + 1;
    } else {
      const std::size_t behind = isQuoted ? end : behindName(formula, begin, true);
      const std::size_t length = behind > at ? behind - at : 1;
      result += formula.substr(at, length);
      at += length;
    }
  }
  return result;
}

}  // namespace mervane::calc
