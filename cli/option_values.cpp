#include "cli/option_values.h"

#include <array>
#include <charconv>
#include <string_view>
#include <system_error>
#include <utility>

#include "cli/problem.h"
#include "cli/text_display.h"

namespace mervane::cli {
namespace {

[[noreturn]] void refuse(const std::string& option, const std::string& text, const std::string& advice) {
  throw Problem(ExitStatus::usage, option + ": " + quoted(text) + " will not do", advice);
}

template <class Value, std::size_t count>
std::optional<Value> wordIn(const std::array<std::pair<std::string_view, Value>, count>& words,
                            const std::string& text) {
  for (const auto& [word, value] : words) {
    if (text == word) return value;
  }
  return std::nullopt;
}

constexpr std::array<std::pair<std::string_view, char>, 6> delimiters{
    {{"comma", ','}, {"semicolon", ';'}, {"tab", '\t'}, {"\\t", '\t'}, {"bar", '|'}, {"space", ' '}}};
constexpr std::array<std::pair<std::string_view, DecimalMark>, 4> marks{{{".", DecimalMark::point},
                                                                         {"point", DecimalMark::point},
                                                                         {",", DecimalMark::comma},
                                                                         {"comma", DecimalMark::comma}}};
constexpr std::array<std::pair<std::string_view, Format>, 5> formats{{{"csv", Format::csv},
                                                                      {"tsv", Format::tsv},
                                                                      {"json", Format::json},
                                                                      {"ndjson", Format::ndjson},
                                                                      {"table", Format::table}}};
constexpr std::array<std::pair<std::string_view, std::int32_t>, 10> activations{{{"0", 0},
                                                                                 {"1", 1},
                                                                                 {"2", 2},
                                                                                 {"3", 3},
                                                                                 {"4", 4},
                                                                                 {"default", 0},
                                                                                 {"zerot", 1},
                                                                                 {"tanh", 2},
                                                                                 {"exp05", 3},
                                                                                 {"exp", 4}}};

std::optional<std::int32_t> wholeNumber(std::string_view text) {
  std::int32_t value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (text.empty() || result.ec != std::errc() || result.ptr != text.data() + text.size()) return std::nullopt;
  return value;
}

}  // namespace

char delimiterOption(const std::string& option, const std::string& text) {
  if (const auto found = wordIn(delimiters, text)) return *found;
  const bool usable = text.size() == 1 && text != "\n" && text != "\r" && text != "\"" &&
                      static_cast<unsigned char>(text[0]) < 0x80 && text[0] != '\0';
  if (!usable) refuse(option, text, "Give one character, or comma, semicolon, tab, bar or space.");
  return text[0];
}

std::optional<char> quoteOption(const std::string& text) {
  if (text == "none") return std::nullopt;
  const bool usable = text.size() == 1 && text != "\n" && text != "\r" && static_cast<unsigned char>(text[0]) < 0x80;
  if (!usable) refuse("--quote", text, "Give one character, or none.");
  return text[0];
}

DecimalMark decimalOption(const std::string& text) {
  if (const auto found = wordIn(marks, text)) return *found;
  refuse("--decimal", text, "Give point or comma.");
}

Format formatOption(const std::string& text) {
  if (const auto found = wordIn(formats, text)) return *found;
  refuse("--format", text, "Give csv, tsv, json, ndjson or table.");
}

ErrorPolicy onErrorOption(const std::string& text) {
  constexpr std::string_view retry = "retry:";
  if (text == "abort") return {};
  if (text == "ignore") return {ErrorPolicy::Answer::ignore, 0};
  if (text.starts_with(retry)) {
    const auto times = wholeNumber(std::string_view(text).substr(retry.size()));
    if (times && *times > 0) return {ErrorPolicy::Answer::retry, *times};
  }
  refuse("--on-error", text, "Give abort, ignore, or retry:N with the number of times, such as retry:3.");
}

ReportForm reportOption(const std::string& text) {
  if (text.empty()) return ReportForm::none;
  if (text == "text") return ReportForm::text;
  if (text == "json") return ReportForm::json;
  refuse("--report", text, "Give --report alone or --report=json.");
}

std::int32_t activationOption(const std::string& text) {
  if (const auto found = wordIn(activations, text)) return *found;
  refuse("--activation", text, "Give 0 to 4, or default, zerot, tanh, exp05 or exp.");
}

std::int32_t wholeOption(const std::string& option, const std::string& text, std::int32_t least) {
  const auto value = wholeNumber(text);
  if (!value || *value < least) refuse(option, text, "Give a whole number from " + decimal(least) + " to 2147483647.");
  return *value;
}

double numberOption(const std::string& option, const std::string& text) {
  const CellNumber number = numberOfCell(text, DecimalMark::point);
  if (number.outcome != CellNumber::Outcome::number) refuse(option, text, "Give a number, such as 2.5.");
  return number.value;
}

double fractionOption(const std::string& option, const std::string& text) {
  const double value = numberOption(option, text);
  if (!(value >= 0.0 && value < 1.0)) refuse(option, text, "Give a number from 0 to below 1.");
  return value;
}

}  // namespace mervane::cli
