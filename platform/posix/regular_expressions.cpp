#include "platform/posix/regular_expressions.h"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "mervane/failure.h"
#include "mervane/runtime_errors.h"

namespace mervane::posix {

namespace {

// Steps of backtracking and kibibytes of heap for one match; beyond them the match is given up.
constexpr std::uint32_t matchLimit = 20'000'000;
constexpr std::uint32_t heapLimit = 64 * 1024;

constexpr std::uint32_t ecmaScriptOptions = PCRE2_UTF | PCRE2_ALT_BSUX | PCRE2_MATCH_UNSET_BACKREF |
                                            PCRE2_ALLOW_EMPTY_CLASS | PCRE2_DOLLAR_ENDONLY | PCRE2_NEVER_BACKSLASH_C;

[[noreturn]] void fail(const std::string& what, int code) {
  std::array<PCRE2_UCHAR, 256> text{};
  pcre2_get_error_message(code, text.data(), text.size());
  throw Failure(runtime::applicationDefined.number,
                what + ": " + std::string(text.begin(), std::find(text.begin(), text.end(), PCRE2_UCHAR{0})), "RegExp");
}

const PCRE2_UCHAR* units(std::string_view text) {
  static constexpr PCRE2_UCHAR empty{};
  return text.empty() ? &empty : reinterpret_cast<const PCRE2_UCHAR*>(text.data());
}

/// The two letters whose other case is an ASCII letter: long s and the Kelvin sign. PCRE2 lets [A-Z] match them
/// where case is ignored, ECMAScript does not. They change places with noncharacters while matching.
constexpr std::array<std::pair<std::string_view, std::string_view>, 2> outlandishLetters{{
    {"\u017F", "\uFDD0"},
    {"\u212A", "\uFDD1"},
}};

void replaceAll(std::string& text, std::string_view from, std::string_view to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
}

std::string hidden(std::string text) {
  for (const auto& [letter, standIn] : outlandishLetters) replaceAll(text, letter, standIn);
  return text;
}

std::string shown(std::string text) {
  for (const auto& [letter, standIn] : outlandishLetters) replaceAll(text, standIn, letter);
  return text;
}

template <class T, void (*Free)(T*)>
struct Freed {
  void operator()(T* pointer) const { Free(pointer); }
};
template <class T, void (*Free)(T*)>
using Held = std::unique_ptr<T, Freed<T, Free>>;
using Code = Held<pcre2_code, pcre2_code_free>;
using MatchData = Held<pcre2_match_data, pcre2_match_data_free>;
using MatchContext = Held<pcre2_match_context, pcre2_match_context_free>;
using CompileContext = Held<pcre2_compile_context, pcre2_compile_context_free>;

template <class Pointer>
Pointer made(Pointer pointer) {
  if (pointer == nullptr) raise(runtime::outOfMemory);
  return pointer;
}

/// Where the match and its groups lie in the text; unset groups have the position npos.
using Spans = std::vector<std::pair<std::size_t, std::size_t>>;

std::string_view spanOf(std::string_view text, const Spans& spans, std::size_t group) {
  const auto [begin, end] = spans[group];
  return begin == std::string::npos ? std::string_view() : text.substr(begin, end - begin);
}

class RegularExpression final : public platform::RegularExpression {
 public:
  void Pattern(const std::string& pattern) override {
    pattern_ = pattern;
    code_.reset();
  }
  void IgnoreCase(bool on) override {
    ignoreCase_ = on;
    code_.reset();
  }
  void Global(bool on) override { global_ = on; }

  std::vector<Match> Execute(const std::string& text) override {
    const std::string subject = prepared(text);
    std::vector<Match> matches;
    for (const Spans& spans : search(subject)) {
      Match match{restored(spanOf(subject, spans, 0)), {}};
      for (std::size_t group = 1; group < spans.size(); ++group) {
        match.subMatches.push_back(restored(spanOf(subject, spans, group)));
      }
      matches.push_back(std::move(match));
    }
    return matches;
  }

  std::string Replace(const std::string& text, const std::string& replacement) override {
    const std::string subject = prepared(text);
    std::string result;
    std::size_t done = 0;
    for (const Spans& spans : search(subject)) {
      result += std::string_view(subject).substr(done, spans[0].first - done);
      appendReplacement(result, prepared(replacement), subject, spans);
      done = spans[0].second;
    }
    return restored(result.append(subject, done));
  }

 private:
  [[nodiscard]] std::string prepared(const std::string& text) const { return ignoreCase_ ? hidden(text) : text; }
  [[nodiscard]] std::string restored(std::string_view text) const {
    return ignoreCase_ ? shown(std::string(text)) : std::string(text);
  }

  void compile() {
    if (code_ != nullptr) return;
    // What stands at the start of a PCRE2 pattern as (*NAME) would be an error in ECMAScript and could lift the limits.
    if (pattern_.starts_with("(*")) {
      throw Failure(runtime::applicationDefined.number, "The pattern \"" + pattern_ + "\" is malformed", "RegExp");
    }
    const CompileContext context(made(pcre2_compile_context_create(nullptr)));
    pcre2_set_newline(context.get(), PCRE2_NEWLINE_ANYCRLF);
    const std::string pattern = prepared(pattern_);
    int error = 0;
    PCRE2_SIZE position = 0;
    const std::uint32_t options = ecmaScriptOptions | (ignoreCase_ ? std::uint32_t{PCRE2_CASELESS} : 0U);
    code_.reset(pcre2_compile(units(pattern), pattern.size(), options, &error, &position, context.get()));
    if (code_ == nullptr) fail("The pattern \"" + pattern_ + "\" is malformed", error);
    data_.reset(made(pcre2_match_data_create_from_pattern(code_.get(), nullptr)));
    context_.reset(made(pcre2_match_context_create(nullptr)));
    pcre2_set_match_limit(context_.get(), matchLimit);
    pcre2_set_heap_limit(context_.get(), heapLimit);
  }

  /// The first match, or with Global all matches that follow one another without overlap.
  std::vector<Spans> search(std::string_view subject) {
    compile();
    std::vector<Spans> found;
    std::size_t start = 0;
    std::uint32_t options = 0;
    while (start <= subject.size()) {
      const int result =
          pcre2_match(code_.get(), units(subject), subject.size(), start, options, data_.get(), context_.get());
      if (result == PCRE2_ERROR_NOMATCH) break;
      if (result < 0) fail("The text could not be matched with the pattern \"" + pattern_ + "\"", result);
      options = PCRE2_NO_UTF_CHECK;
      found.push_back(spans());
      if (!global_) break;
      const auto [begin, end] = found.back().front();
      start = end > begin ? end : nextCharacter(subject, end);
    }
    return found;
  }

  [[nodiscard]] Spans spans() const {
    const PCRE2_SIZE* offsets = pcre2_get_ovector_pointer(data_.get());
    const std::uint32_t count = pcre2_get_ovector_count(data_.get());
    Spans result;
    for (std::uint32_t i = 0; i < count; ++i) {
      const PCRE2_SIZE begin = offsets[2 * i];
      result.emplace_back(begin == PCRE2_UNSET ? std::string::npos : begin, offsets[2 * i + 1]);
    }
    return result;
  }

  static std::size_t nextCharacter(std::string_view text, std::size_t position) {
    ++position;
    while (position < text.size() && (static_cast<unsigned char>(text[position]) & 0xC0U) == 0x80U) ++position;
    return position;
  }

  static void appendReplacement(std::string& result, std::string_view replacement, std::string_view subject,
                                const Spans& spans) {
    const auto digit = [&](std::size_t at) -> std::size_t {
      const char one = at < replacement.size() ? replacement[at] : 'x';
      return one >= '0' && one <= '9' ? static_cast<std::size_t>(one - '0') : std::string::npos;
    };
    for (std::size_t at = 0; at < replacement.size(); ++at) {
      const char next = replacement[at] == '$' && at + 1 < replacement.size() ? replacement[at + 1] : '\0';
      if (next == '$') {
        result += '$';
        ++at;
      } else if (next == '&') {
        result += spanOf(subject, spans, 0);
        ++at;
      } else if (next >= '0' && next <= '9') {
        // Two digits are taken where there is such a group, else one; a number without a group stands for itself.
        const std::size_t one = digit(at + 1);
        const std::size_t second = digit(at + 2);
        const std::size_t two = second == std::string::npos ? 0 : one * 10 + second;
        if (two >= 1 && two < spans.size()) {
          result += spanOf(subject, spans, two);
          at += 2;
        } else if (one >= 1 && one < spans.size()) {
          result += spanOf(subject, spans, one);
          ++at;
        } else {
          result += '$';
        }
      } else {
        result += replacement[at];
      }
    }
  }

  std::string pattern_;
  bool ignoreCase_ = false;
  bool global_ = false;
  Code code_;
  MatchData data_;
  MatchContext context_;
};

}  // namespace

std::unique_ptr<platform::RegularExpression> RegularExpressions::create() {
  return std::make_unique<RegularExpression>();
}

}  // namespace mervane::posix
