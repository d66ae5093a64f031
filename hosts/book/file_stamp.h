#pragma once

#include <cstdint>
#include <filesystem>

namespace mervane::hosts {

/// What tells whether somebody has written a file since: whether it is there, its length and its time. Links are
/// followed. What cannot be told counts as not there.
struct FileStamp {
  bool isThere = false;
  std::uintmax_t size = 0;
  std::filesystem::file_time_type time{};

  [[nodiscard]] static FileStamp of(const std::filesystem::path& path);
  [[nodiscard]] bool operator==(const FileStamp&) const = default;
};

}  // namespace mervane::hosts
