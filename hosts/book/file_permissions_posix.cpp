#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "hosts/book/file_permissions.h"

namespace mervane::hosts {

int takePermissions(int descriptor, const std::filesystem::path& like) noexcept {
  struct stat old {};
  if (::stat(like.c_str(), &old) != 0) return errno == ENOENT ? 0 : errno;
  constexpr mode_t all = 07777;
  mode_t permissions = old.st_mode & all;
  constexpr uid_t sameOwner = static_cast<uid_t>(-1);
  if (::fchown(descriptor, old.st_uid, old.st_gid) != 0) {
    permissions &= ~mode_t{S_ISUID};
    if (::fchown(descriptor, sameOwner, old.st_gid) != 0) {
      constexpr unsigned groupAboveOthers = 3;
      const mode_t notForOthers = S_IRWXG & ~((permissions & S_IRWXO) << groupAboveOthers);
      permissions &= ~(notForOthers | S_ISGID);
    }
  }
  // Last, because a change of owner cuts them.
  return ::fchmod(descriptor, permissions) == 0 ? 0 : errno;
}

}  // namespace mervane::hosts
