#include "calc/texts.h"

namespace mervane::addin {

namespace {
Language spoken = Language::english;
}

Language languageOf(const std::string& locale) {
  const bool isGerman = locale == "de" || locale.starts_with("de-") || locale.starts_with("de_");
  return isGerman ? Language::german : Language::english;
}

void speak(Language language) {
  spoken = language;
}

Language spokenLanguage() {
  return spoken;
}

std::string said(const Text& text, const std::vector<std::string>& parts) {
  const std::string pattern = spoken == Language::german ? text.german : text.english;
  std::string sentence;
  for (std::size_t at = 0; at < pattern.size(); ++at) {
    const std::size_t part = pattern[at] == '%' && at + 1 < pattern.size() && pattern[at + 1] > '0'
                                 ? static_cast<std::size_t>(pattern[at + 1] - '1')
                                 : parts.size();
    if (part >= parts.size()) {
      sentence += pattern[at];
      continue;
    }
    sentence += parts[part];
    ++at;
  }
  return sentence;
}

}  // namespace mervane::addin
