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

std::vector<std::string> withMnemonics(const std::vector<std::string>& captions, char mark, std::size_t alone) {
  std::array<int, letterCount> owners{};
  std::array<bool, letterCount> isShared{};
  isShared.fill(true);
  std::vector<std::string> marked;
  marked.reserve(captions.size());
  for (const std::string& caption : captions) {
    const bool standsAlone = marked.size() < alone;
    std::optional<std::size_t> chosen;
    for (const bool wordStartsOnly : {true, false}) {
      for (std::size_t at = 0; at < caption.size() && !chosen; ++at) {
        const auto letter = letterOf(caption[at]);
        const bool wordStart = at == 0 || caption[at - 1] == ' ';
        if (letter && owners[*letter] == 0 && (wordStart || !wordStartsOnly)) chosen = at;
      }
    }
    const bool isFree = chosen.has_value();
    for (std::size_t at = 0; at < caption.size() && !isFree && !standsAlone; ++at) {
      const auto letter = letterOf(caption[at]);
      if (!letter || !isShared[*letter]) continue;
      if (!chosen || owners[*letter] < owners[*letterOf(caption[*chosen])]) chosen = at;
    }
    std::string text = caption;
    if (chosen) {
      const std::size_t letter = *letterOf(caption[*chosen]);
      ++owners[letter];
      isShared[letter] = !standsAlone;
      text.insert(*chosen, 1, mark);
    }
    marked.push_back(std::move(text));
  }
  return marked;
}

MarkedCaptions markedCaptions(const OptionItems& buttons, const OptionItems& options, char mark,
                              const std::vector<std::string>& ownButtons) {
  std::vector<std::string> captions;
  for (const OptionItem& button : buttons) captions.push_back(button.Caption);
  captions.insert(captions.end(), ownButtons.begin(), ownButtons.end());
  const std::size_t alone = captions.size();
  for (const OptionItem& option : options) {
    captions.push_back(option.kind == OptionKind::staticLabel ? std::string() : option.Caption);
  }
  const std::vector<std::string> marked = withMnemonics(captions, mark, alone);
  const auto firstOwn = marked.begin() + buttons.Count();
  const auto firstOption = marked.begin() + static_cast<std::ptrdiff_t>(alone);
  return {{marked.begin(), firstOwn}, {firstOwn, firstOption}, {firstOption, marked.end()}};
}

}  // namespace mervane::platform
