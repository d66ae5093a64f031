#pragma once

#include <filesystem>

namespace mervane::hosts {

/// Gives an open file the owner, the group and the permissions of another file, as far as the process may: the owner
/// can be kept by the superuser only. Where the group cannot be kept either, the file's own group may do no more than
/// everybody, since what the other's group was allowed was not meant for it. Where there is no other file, nothing
/// changes. Not on Windows.
/// @return 0, or the number of the system's error
[[nodiscard]] int takePermissions(int descriptor, const std::filesystem::path& like) noexcept;

}  // namespace mervane::hosts
