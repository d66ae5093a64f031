#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "hosts/book/save_watch.h"

namespace mervane::hosts {

/// The whole file. Raises fileNotFound or pathFileAccess, with the path in the text, and applicationDefined for a
/// file above the limit.
[[nodiscard]] std::string readFile(const std::filesystem::path& path, std::uint64_t limit);

/// Writes a new file beside the target, syncs it and renames it over the target, which keeps its permissions and,
/// where it is a symbolic link, stays one. Raises pathFileAccess, and whatever the watch raises; the target is then
/// what it was and nothing is left beside it.
void replaceFile(const std::filesystem::path& target, std::string_view bytes, const SaveWatch& watch = {});

/// The path as UTF-8, for texts.
[[nodiscard]] std::string shown(const std::filesystem::path& path);

}  // namespace mervane::hosts
