#include "hosts/workbook/format_section.h"

#include <algorithm>
#include <vector>

namespace mervane::workbook {

namespace {

/// Where the part that begins at the place ends: a quoted word, a bracket, an escaped character, or one character.
std::size_t endOfPart(std::string_view code, std::size_t at) {
  const auto behind = [&](std::size_t close) { return close == std::string_view::npos ? code.size() : close + 1; };
  switch (code[at]) {
    case '"':
      return behind(code.find('"', at + 1));
    case '[':
      return behind(code.find(']', at + 1));
    case '\\':
    case '_':
    case '*':
      return std::min(at + 2, code.size());
    default:
      return at + 1;
  }
}

std::vector<std::string_view> sectionsOf(std::string_view code) {
  std::vector<std::string_view> sections;
  std::size_t begin = 0;
  for (std::size_t at = 0; at < code.size(); at = endOfPart(code, at)) {
    if (code[at] != ';') continue;
    sections.push_back(code.substr(begin, at - begin));
    begin = at + 1;
  }
  sections.push_back(code.substr(begin));
  return sections;
}

/// The text that a part stands for; nothing where it is a sign that is not followed here.
std::optional<std::string> literalOf(std::string_view part) {
  constexpr std::string_view shownAsTheyAre = " $-+()!^&'~{}<>=:";
  switch (part.front()) {
    case '"':
      return std::string(part.substr(1, part.size() - (part.size() > 1 && part.back() == '"' ? 2 : 1)));
    case '\\':
    case '_':  // NB: a blank as wide as the character behind it.
      return std::string(part.substr(1));
    case '*':
      return std::string();
    case '[': {
      // A currency is its sign and a language: [$€-407].
      if (!part.starts_with("[$")) return std::string();
      const std::string_view inside = part.substr(2);
      return std::string(inside.substr(0, inside.find_first_of("-]")));
    }
    default:
      break;
  }
  const auto byte = static_cast<unsigned char>(part.front());
  if (byte < 0x80 && shownAsTheyAre.find(part.front()) == std::string_view::npos) return std::nullopt;
  return std::string(part);
}

}  // namespace

std::optional<FormatSection> sectionFor(double value, std::string_view code) {
  const std::vector<std::string_view> sections = sectionsOf(code);
  FormatSection result;
  std::size_t which = 0;
  if (value < 0.0 && sections.size() >= 2) {
    which = 1;
    result.showsSign = false;
  } else if (value == 0.0 && sections.size() >= 3) {
    which = 2;
  }
  const std::string_view section = sections[which];
  bool inDigits = false;
  for (std::size_t at = 0; at < section.size();) {
    const std::size_t end = endOfPart(section, at);
    const std::string_view part = section.substr(at, end - at);
    at = end;
    if (part.size() == 1 && std::string_view("0#?,.").find(part.front()) != std::string_view::npos) {
      if (!result.digits.empty() && !inDigits) return std::nullopt;  // digits in several places, as in phone numbers
      result.digits += part.front() == '?' ? '0' : part.front();
      inDigits = true;
      continue;
    }
    inDigits = false;
    std::string& text = result.digits.empty() ? result.before : result.after;
    if (part == "%") {
      result.isPercent = true;
      text += '%';
      continue;
    }
    const std::optional<std::string> literal = literalOf(part);
    if (!literal) return std::nullopt;
    text += *literal;
  }
  return result;
}

}  // namespace mervane::workbook
