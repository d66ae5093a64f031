#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <system_error>

#include "cli/interruption.h"
#include "cli/output_file.h"
#include "cli/problem.h"
#include "cli/text_display.h"
#include "hosts/book/file_permissions.h"

namespace mervane::cli {
namespace {

constexpr std::size_t bufferSize = 65536;

[[noreturn]] void raiseTrouble(const std::string& what, int error) {
  std::string advice = "Name another file with -o.";
  if (error == ENOSPC || error == EDQUOT || error == EFBIG) {
    advice = "Make room or name a file elsewhere with -o. What was there before is unchanged.";
  }
  throw Problem(ExitStatus::fileTrouble,
                "cannot write " + printable(what) + ": " + std::generic_category().message(error), advice);
}

/// A descriptor with a buffer in front of it.
class Stream {
 public:
  Stream(int descriptor, std::string name) : descriptor_(descriptor), name_(std::move(name)) {}
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;
  ~Stream() { close(); }

  void write(std::string_view bytes) {
    buffer_.append(bytes);
    if (buffer_.size() >= bufferSize) flush();
  }

  void flush() {
    std::string_view rest = buffer_;
    while (!rest.empty()) {
      const ssize_t count = ::write(descriptor_, rest.data(), rest.size());
      if (count < 0 && errno == EINTR) continue;
      if (count < 0 && errno == EPIPE && descriptor_ == STDOUT_FILENO) interruption::endByBrokenPipe();
      if (count < 0) raiseTrouble(name_, errno);
      rest.remove_prefix(static_cast<std::size_t>(count));
    }
    buffer_.clear();
  }

  void sync() {
    if (::fsync(descriptor_) != 0) raiseTrouble(name_, errno);
  }

  /// Some file systems tell only now that they have no room.
  void closeChecked() {
    const int descriptor = descriptor_;
    descriptor_ = -1;
    if (descriptor > STDERR_FILENO && ::close(descriptor) != 0) raiseTrouble(name_, errno);
  }

  [[nodiscard]] int descriptor() const noexcept { return descriptor_; }

 private:
  void close() noexcept {
    if (descriptor_ > STDERR_FILENO) static_cast<void>(::close(descriptor_));
    descriptor_ = -1;
  }

  int descriptor_;
  std::string name_;
  std::string buffer_;
};

/// Standard output, a device or a pipe.
class DirectFile : public OutputFile {
 public:
  DirectFile(int descriptor, std::string name) : stream_(descriptor, std::move(name)) {}
  void write(std::string_view bytes) override { stream_.write(bytes); }
  void flush() override { stream_.flush(); }
  void commit() override {
    stream_.flush();
    stream_.closeChecked();
  }

 private:
  Stream stream_;
};

bool isTaken(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0;
}

/// A new file beside the target, under a name of its own until it takes the target's place.
class ReplacingFile : public OutputFile {
 public:
  enum class Place { free, taken };

  ReplacingFile(int descriptor, std::string temporary, std::string target, Place place)
      : stream_(descriptor, target), temporary_(std::move(temporary)), target_(std::move(target)), place_(place) {
    interruption::guardFile(temporary_);
  }
  ReplacingFile(const ReplacingFile&) = delete;
  ReplacingFile& operator=(const ReplacingFile&) = delete;
  ~ReplacingFile() override {
    if (!isDone_) static_cast<void>(::unlink(temporary_.c_str()));
    interruption::releaseFile();
  }

  void write(std::string_view bytes) override { stream_.write(bytes); }
  void flush() override {}

  void commit() override {
    stream_.flush();
    stream_.sync();
    stream_.closeChecked();
    if (place_ == Place::free) {
      // A link never replaces anything. Not all file systems have links; a look before the rename is next best.
      if (::link(temporary_.c_str(), target_.c_str()) == 0) {
        syncDirectory();
        return;
      }
      if (errno == EEXIST || isTaken(target_)) raiseTrouble(target_, EEXIST);
    }
    if (::rename(temporary_.c_str(), target_.c_str()) != 0) raiseTrouble(target_, errno);
    isDone_ = true;
    syncDirectory();
  }

 private:
  /// Without this a power cut could bring the old name back. Not all file systems can do it, and the file is whole
  /// either way, so a failure is no reason to stop.
  void syncDirectory() const {
    const std::filesystem::path directory = std::filesystem::path(target_).parent_path();
    const int descriptor = ::open(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    static_cast<void>(::fsync(descriptor));
    static_cast<void>(::close(descriptor));
  }

  Stream stream_;
  std::string temporary_;
  std::string target_;
  Place place_;
  bool isDone_ = false;
};

std::optional<struct stat> statusOf(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return std::nullopt;
  return status;
}

std::string temporaryName(const std::string& target, int attempt) {
  const std::filesystem::path path(target);
  // A name at the length limit of the file system leaves no room for more.
  constexpr std::size_t keptLength = 200;
  const std::string name = path.filename().string().substr(0, keptLength);
  const std::string temporary = "." + name + ".mervane-" + decimal(::getpid()) + "-" + decimal(attempt) + ".tmp";
  return (path.parent_path() / temporary).string();
}

/// @param like whose owner and permissions the file gets
std::unique_ptr<OutputFile> openBeside(const std::string& target, const std::string& like, ReplacingFile::Place place) {
  constexpr int attempts = 100;
  for (int attempt = 1; attempt <= attempts; ++attempt) {
    const std::string temporary = temporaryName(target, attempt);
    constexpr mode_t everybody = 0666;
    const int descriptor = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, everybody);
    if (descriptor < 0 && errno == EEXIST) continue;
    if (descriptor < 0) raiseTrouble(target, errno);
    auto file = std::make_unique<ReplacingFile>(descriptor, temporary, target, place);
    if (const int error = hosts::takePermissions(descriptor, like); error != 0) raiseTrouble(target, error);
    return file;
  }
  raiseTrouble(target, EEXIST);
}

std::unique_ptr<OutputFile> openReplacing(const std::string& target, const std::optional<struct stat>& old) {
  // A file that may not be written is not replaced either, though its directory would allow it.
  if (old && ::access(target.c_str(), W_OK) != 0) raiseTrouble(target, errno);
  return openBeside(target, target, ReplacingFile::Place::taken);
}

}  // namespace

std::string resolvedPath(const std::string& path) {
  std::error_code error;
  const std::filesystem::path resolved = std::filesystem::weakly_canonical(path, error);
  return error ? path : resolved.string();
}

std::unique_ptr<OutputFile> openOutput(const std::string& path) {
  if (path == "-") return std::make_unique<DirectFile>(STDOUT_FILENO, "standard output");
  const std::string target = resolvedPath(path);
  const std::optional<struct stat> old = statusOf(target);
  if (old && S_ISDIR(old->st_mode)) raiseTrouble(path, EISDIR);
  if (!old || S_ISREG(old->st_mode)) return openReplacing(target, old);
  // Pipes and devices are opened under the name given: /dev/stdout leads to no path that could be opened again.
  const int descriptor = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
  if (descriptor < 0) raiseTrouble(path, errno);
  return std::make_unique<DirectFile>(descriptor, path);
}

std::unique_ptr<OutputFile> openNew(const std::string& path, const std::string& like) {
  return openBeside(path, like, ReplacingFile::Place::free);
}

void checkOutput(const std::string& path) {
  if (path == "-") return;
  const std::string target = resolvedPath(path);
  const std::optional<struct stat> old = statusOf(target);
  if (old && S_ISDIR(old->st_mode)) raiseTrouble(path, EISDIR);
  // A pipe would lose its reader by being opened and closed.
  if (old && !S_ISREG(old->st_mode)) return;
  static_cast<void>(openReplacing(target, old));
}

bool isSameFile(const std::string& left, const std::string& right) {
  if (left == right || resolvedPath(left) == resolvedPath(right)) return true;
  const auto one = statusOf(left);
  const auto other = statusOf(right);
  return one && other && one->st_dev == other->st_dev && one->st_ino == other->st_ino;
}

}  // namespace mervane::cli
