#include "platform/mnemonics.h"

#include <array>
#include <cstddef>
#include <optional>
#include <utility>

namespace mervane::platform {

namespace {

constexpr std::size_t letterCount = 26;

std::optional<std::size_t> letterOf(char character) {
  if (character >= 'a' && character <= 'z') return static_cast<std::size_t>(character - 'a');
  if (character >= 'A' && character <= 'Z') return static_cast<std::size_t>(character - 'A');
  return std::nullopt;
}

}  // namespace

std::vector<std::string> withMnemonics(const std::vector<std::string>& captions, char mark) {
  std::array<bool, letterCount> taken{};
  std::vector<std::string> marked;
  marked.reserve(captions.size());
  for (const std::string& caption : captions) {
    std::optional<std::size_t> chosen;
    for (const bool wordStartsOnly : {true, false}) {
      for (std::size_t at = 0; at < caption.size() && !chosen; ++at) {
        const auto letter = letterOf(caption[at]);
        const bool wordStart = at == 0 || caption[at - 1] == ' ';
        if (letter && !taken[*letter] && (wordStart || !wordStartsOnly)) chosen = at;
      }
    }
    std::string text = caption;
    if (chosen) {
      taken[*letterOf(caption[*chosen])] = true;
      text.insert(*chosen, 1, mark);
    }
    marked.push_back(std::move(text));
  }
  return marked;
}

MarkedCaptions markedCaptions(const OptionItems& buttons, const OptionItems& options, char mark) {
  std::vector<std::string> captions;
  for (const OptionItem& button : buttons) captions.push_back(button.Caption);
  for (const OptionItem& option : options) {
    captions.push_back(option.kind == OptionKind::staticLabel ? std::string() : option.Caption);
  }
  const std::vector<std::string> marked = withMnemonics(captions, mark);
  const auto firstOption = marked.begin() + buttons.Count();
  return {{marked.begin(), firstOption}, {firstOption, marked.end()}};
}

}  // namespace mervane::platform
