#include "hosts/book/file_bytes.h"

#include <cstdio>
#include <fstream>
#include <system_error>

#include "mervane/failure.h"
#include "mervane/runtime_errors.h"

#ifdef _WIN32
#include <io.h>
#include <process.h>
#else
#include <fcntl.h>
#include <unistd.h>

#include "hosts/book/file_permissions.h"
#endif

namespace mervane::hosts {

namespace {

[[noreturn]] void fileFailure(const RuntimeError& error, const std::string& text) {
  throw Failure(error.number, text);
}

std::string reason(int code) {
  return std::generic_category().message(code);
}

/// A file of the C library that closes itself.
class File {
 public:
  explicit File(const std::filesystem::path& path) {
#ifdef _WIN32
    file_ = _wfopen(path.c_str(), L"wxb");
#else
    file_ = std::fopen(path.c_str(), "wxb");
#endif
  }
  ~File() {
    close();
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  [[nodiscard]] bool isOpen() const {
    return file_ != nullptr;
  }
#ifndef _WIN32
  [[nodiscard]] int descriptor() const {
    return ::fileno(file_);
  }
#endif
  bool write(std::string_view bytes) {
    return std::fwrite(bytes.data(), 1, bytes.size(), file_) == bytes.size();
  }
  bool sync() {
    if (std::fflush(file_) != 0) return false;
#ifdef _WIN32
    return _commit(_fileno(file_)) == 0;
#else
    return ::fsync(::fileno(file_)) == 0;
#endif
  }
  bool close() {
    if (file_ == nullptr) return true;
    const bool closed = std::fclose(file_) == 0;
    file_ = nullptr;
    return closed;
  }

 private:
  std::FILE* file_ = nullptr;
};

int processId() {
#ifdef _WIN32
  return _getpid();
#else
  return static_cast<int>(::getpid());
#endif
}

/// A rename is on the disk once its folder is; where a file system cannot sync a folder the file itself is safe.
void syncFolder([[maybe_unused]] const std::filesystem::path& folder) {
#ifndef _WIN32
  const int descriptor = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY);
  if (descriptor < 0) return;
  ::fsync(descriptor);
  ::close(descriptor);
#endif
}

/// Says that a file is about to be made, and at its end that there is none any more.
class Announcement {
 public:
  Announcement(const SaveWatch& watch, const std::filesystem::path& path) : watch_(watch) {
    if (watch_.unfinished) watch_.unfinished(path);
  }
  ~Announcement() {
    if (watch_.unfinished) watch_.unfinished({});
  }
  Announcement(const Announcement&) = delete;
  Announcement& operator=(const Announcement&) = delete;

 private:
  const SaveWatch& watch_;
};

/// Removes an unfinished file, once it is there and unless it has become the target.
class Remover {
 public:
  explicit Remover(const std::filesystem::path& path) : path_(path) {}
  ~Remover() {
    std::error_code ignored;
    if (isNeeded) std::filesystem::remove(path_, ignored);
  }
  Remover(const Remover&) = delete;
  Remover& operator=(const Remover&) = delete;

  bool isNeeded = false;

 private:
  const std::filesystem::path& path_;
};

}  // namespace

std::string shown(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

std::string readFile(const std::filesystem::path& path, std::uint64_t limit) {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(path, error);
  if (!std::filesystem::exists(status)) {
    fileFailure(runtime::fileNotFound, "The file \"" + shown(path) + "\" does not exist.");
  }
  if (std::filesystem::is_directory(status)) {
    fileFailure(runtime::pathFileAccess, "\"" + shown(path) + "\" is a folder, not a workbook.");
  }
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  if (!error && size > limit)
    fileFailure(runtime::applicationDefined, "The file \"" + shown(path) + "\" is too large to be a workbook.");
  std::ifstream file(path, std::ios::binary);
  std::string bytes;
  if (file && !error) {
    bytes.resize(static_cast<std::size_t>(size));
    file.read(bytes.data(), static_cast<std::streamsize>(size));
  }
  if (error || !file || static_cast<std::uintmax_t>(file.gcount()) != size) {
    fileFailure(runtime::pathFileAccess, "The file \"" + shown(path) + "\" cannot be read.");
  }
  return bytes;
}

void replaceFile(const std::filesystem::path& target, std::string_view bytes, const SaveWatch& watch) {
  std::error_code error;
  std::filesystem::path place = target;
  // A link is followed, so that the file it names is the one replaced.
  if (std::filesystem::is_symlink(target, error)) place = std::filesystem::weakly_canonical(target, error);
  if (error) place = target;

  std::filesystem::path beside;
  for (int attempt = 0;; ++attempt) {
    beside = place;
    beside += ".new-" + std::to_string(processId()) + "-" + std::to_string(attempt);
    if (attempt == 100 || !std::filesystem::exists(beside, error)) break;
  }
  // Told before the file is there, so that at no moment it stands there with nobody knowing.
  const Announcement announcement(watch, beside);
  Remover remover(beside);
  const auto fail = [&](const std::string& why) {
    fileFailure(runtime::pathFileAccess,
                "The workbook cannot be written to \"" + shown(target) + "\": " + why + ". Nothing was changed.");
  };
  const std::filesystem::file_status status = std::filesystem::status(place, error);
  {
    File file(beside);
    if (!file.isOpen()) fail(reason(errno));
    remover.isNeeded = true;
    // Before it holds anything, so that nobody reads in it who may not read the target.
#ifdef _WIN32
    if (std::filesystem::exists(status)) std::filesystem::permissions(beside, status.permissions(), error);
#else
    static_cast<void>(takePermissions(file.descriptor(), place));
#endif
    if (!file.write(bytes) || !file.sync()) fail(reason(errno));
    if (!file.close()) fail(reason(errno));
  }
  if (std::filesystem::is_directory(status)) fail("it is a folder");
  if (watch.beforeReplacing) watch.beforeReplacing();
  std::filesystem::rename(beside, place, error);
  if (error) fail(error.message());
  remover.isNeeded = false;
  syncFolder(place.parent_path());
}

}  // namespace mervane::hosts
