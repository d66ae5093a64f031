#include "platform/posix/text_files.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "mervane/failure.h"
#include "mervane/runtime_errors.h"

namespace mervane::posix {

namespace {

[[noreturn]] void refuse(const std::string& doing, const std::string& path, int reason) {
  const RuntimeError& error = reason == ENOENT ? runtime::fileNotFound : runtime::pathFileAccess;
  throw Failure(error.number, "Cannot " + doing + " \"" + path + "\": " + std::strerror(reason));
}

}  // namespace

void TextFiles::append(const std::string& path, const std::string& text) {
  constexpr const char* doing = "append to";
  constexpr mode_t readableByAll = 0666;  // As far as the user's mask lets.
  const int file = open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, readableByAll);
  if (file < 0) refuse(doing, path, errno);
  int reason = 0;
  for (std::size_t written = 0; written < text.size() && reason == 0;) {
    const ssize_t count = write(file, text.data() + written, text.size() - written);
    if (count >= 0) {
      written += static_cast<std::size_t>(count);
    } else if (errno != EINTR) {
      reason = errno;
    }
  }
  if (close(file) != 0 && reason == 0) reason = errno;
  if (reason != 0) refuse(doing, path, reason);
}

void TextFiles::remove(const std::string& path) {
  if (unlink(path.c_str()) != 0) refuse("delete", path, errno);
}

}  // namespace mervane::posix
