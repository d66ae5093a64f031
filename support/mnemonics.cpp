#include "support/mnemonics.h"

#include <array>
#include <cstddef>
#include <optional>

namespace mervane {

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

}  // namespace mervane
