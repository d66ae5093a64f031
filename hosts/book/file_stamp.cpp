#include "hosts/book/file_stamp.h"

#include <system_error>

namespace mervane::hosts {

FileStamp FileStamp::of(const std::filesystem::path& path) {
  FileStamp stamp;
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return stamp;
  stamp.size = std::filesystem::file_size(path, error);
  if (error) return {};
  stamp.time = std::filesystem::last_write_time(path, error);
  if (error) return {};
  stamp.isThere = true;
  return stamp;
}

}  // namespace mervane::hosts
