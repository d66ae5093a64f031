#pragma once

#include <filesystem>
#include <string>

namespace mervane::cli {

/// Between the program's own texts, which are UTF-8 everywhere, and what the machine's files are named with.
[[nodiscard]] inline std::filesystem::path toPath(const std::string& text) {
  return {std::u8string(text.begin(), text.end())};
}
[[nodiscard]] inline std::string toText(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

}  // namespace mervane::cli
