#include <windows.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <system_error>

#include "cli/interruption.h"
#include "cli/output_file.h"
#include "cli/paths.h"
#include "cli/problem.h"
#include "cli/text_display.h"

namespace mervane::cli {
namespace {

constexpr std::size_t bufferSize = 65536;
constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// The wording of every machine where the cause has one there, else the system's own.
std::string reason(DWORD error) {
  return std::system_category().default_error_condition(static_cast<int>(error)).message();
}

[[noreturn]] void raiseTrouble(const std::string& what, DWORD error) {
  std::string advice = "Name another file with -o.";
  if (error == ERROR_DISK_FULL || error == ERROR_HANDLE_DISK_FULL) {
    advice = "Make room or name a file elsewhere with -o. What was there before is unchanged.";
  } else if (error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION) {
    advice = "Close it in the program that has it open, or name another file with -o.";
  }
  throw Problem(ExitStatus::fileTrouble, "cannot write " + printable(what) + ": " + reason(error), advice);
}

[[noreturn]] void raiseFolder(const std::string& path) {
  throw Problem(ExitStatus::fileTrouble,
                "cannot write " + printable(path) + ": " + std::generic_category().message(EISDIR),
                "Name another file with -o.");
}

/// An open file of the system that closes itself.
class Handle {
 public:
  explicit Handle(HANDLE handle) : handle_(handle) {}
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() {
    if (isOpen()) CloseHandle(handle_);
  }
  [[nodiscard]] bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  [[nodiscard]] HANDLE get() const { return handle_; }
  [[nodiscard]] HANDLE release() {
    const HANDLE handle = handle_;
    handle_ = INVALID_HANDLE_VALUE;
    return handle;
  }

 private:
  HANDLE handle_;
};

/// A handle with a buffer in front of it.
class Stream {
 public:
  Stream(HANDLE handle, bool isOwned, std::string name) : handle_(handle), isOwned_(isOwned), name_(std::move(name)) {}
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
      DWORD count = 0;
      const auto wanted = static_cast<DWORD>(std::min<std::size_t>(rest.size(), bufferSize));
      if (WriteFile(handle_, rest.data(), wanted, &count, nullptr) == FALSE) fail(GetLastError());
      rest.remove_prefix(count);
    }
    buffer_.clear();
  }

  void sync() {
    if (FlushFileBuffers(handle_) == FALSE) raiseTrouble(name_, GetLastError());
  }

  void closeChecked() {
    if (!isOwned_) return;
    isOwned_ = false;
    if (CloseHandle(handle_) == FALSE) raiseTrouble(name_, GetLastError());
  }

 private:
  [[noreturn]] void fail(DWORD error) {
    const bool readerHasGone = error == ERROR_BROKEN_PIPE || error == ERROR_NO_DATA;
    if (readerHasGone && handle_ == GetStdHandle(STD_OUTPUT_HANDLE)) interruption::endByBrokenPipe();
    raiseTrouble(name_, error);
  }

  void close() noexcept {
    if (isOwned_) CloseHandle(handle_);
    isOwned_ = false;
  }

  HANDLE handle_;
  bool isOwned_;
  std::string name_;
  std::string buffer_;
};

/// Standard output, a device or a pipe.
class DirectFile : public OutputFile {
 public:
  DirectFile(HANDLE handle, bool isOwned, std::string name) : stream_(handle, isOwned, std::move(name)) {}
  void write(std::string_view bytes) override { stream_.write(bytes); }
  void flush() override { stream_.flush(); }
  void commit() override {
    stream_.flush();
    stream_.closeChecked();
  }

 private:
  Stream stream_;
};

/// A new file beside the target, under a name of its own until it takes the target's place.
class ReplacingFile : public OutputFile {
 public:
  enum class Place { free, absent, taken };  ///< what is absent may come to be there, and is replaced then

  ReplacingFile(HANDLE handle, std::string temporary, std::string target, Place place)
      : stream_(handle, true, target), temporary_(std::move(temporary)), target_(std::move(target)), place_(place) {
    interruption::guardFile(temporary_);
  }
  ReplacingFile(const ReplacingFile&) = delete;
  ReplacingFile& operator=(const ReplacingFile&) = delete;
  ~ReplacingFile() override {
    // Deleted while it is still open: it goes when the stream closes it.
    if (!isDone_) static_cast<void>(DeleteFileW(toPath(temporary_).c_str()));
    interruption::releaseFile();
  }

  void write(std::string_view bytes) override { stream_.write(bytes); }
  void flush() override {}

  void commit() override {
    stream_.flush();
    stream_.sync();
    stream_.closeChecked();
    takePlace();
    isDone_ = true;
  }

 private:
  void takePlace() const {
    const std::filesystem::path from = toPath(temporary_);
    const std::filesystem::path to = toPath(target_);
    // A replacing that fails half way may leave a file of the system's beside the old one, so it is asked first.
    if (place_ == Place::taken) {
      const Handle old(CreateFileW(to.c_str(), DELETE, shareAll, nullptr, OPEN_EXISTING, 0, nullptr));
      if (const DWORD error = GetLastError(); !old.isOpen() && error != ERROR_FILE_NOT_FOUND)
        raiseTrouble(target_, error);
    }
    // The first of these keeps who may read and write the old file; not all file systems have it.
    if (place_ == Place::taken &&
        ReplaceFileW(to.c_str(), from.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr) != FALSE) {
      return;
    }
    const DWORD replacing = place_ == Place::free ? 0 : MOVEFILE_REPLACE_EXISTING;
    if (MoveFileExW(from.c_str(), to.c_str(), replacing | MOVEFILE_WRITE_THROUGH) == FALSE) {
      raiseTrouble(target_, GetLastError());
    }
  }

  Stream stream_;
  std::string temporary_;
  std::string target_;
  Place place_;
  bool isDone_ = false;
};

/// Opened only to be asked about; folders too.
HANDLE opened(const std::filesystem::path& path) {
  return CreateFileW(path.c_str(), 0, shareAll, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

enum class Kind { absent, plain, folder, device };

Kind kindOf(const std::string& path) {
  const std::filesystem::path file = toPath(path);
  // A pipe would take the question for a reader.
  if (file.native().starts_with(LR"(\\.\)")) return Kind::device;
  const DWORD attributes = GetFileAttributesW(file.c_str());
  const Handle handle(opened(file));
  if (handle.isOpen() && GetFileType(handle.get()) != FILE_TYPE_DISK) return Kind::device;
  if (attributes == INVALID_FILE_ATTRIBUTES) return Kind::absent;
  return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? Kind::folder : Kind::plain;
}

std::string temporaryName(const std::string& target, int attempt) {
  const std::filesystem::path path = toPath(target);
  // A name at the length limit of the file system leaves no room for more.
  constexpr std::size_t keptLength = 200;
  std::filesystem::path temporary = L"." + path.filename().native().substr(0, keptLength);
  temporary += toPath(".mervane-" + decimal(GetCurrentProcessId()) + "-" + decimal(attempt) + ".tmp");
  return toText(path.parent_path() / temporary);
}

std::unique_ptr<OutputFile> openBeside(const std::string& target, ReplacingFile::Place place) {
  constexpr int attempts = 100;
  for (int attempt = 1; attempt <= attempts; ++attempt) {
    const std::string temporary = temporaryName(target, attempt);
    Handle handle(CreateFileW(toPath(temporary).c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                              CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    const DWORD error = GetLastError();
    if (!handle.isOpen() && error == ERROR_FILE_EXISTS) continue;
    if (!handle.isOpen()) raiseTrouble(target, error);
    return std::make_unique<ReplacingFile>(handle.release(), temporary, target, place);
  }
  raiseTrouble(target, ERROR_FILE_EXISTS);
}

std::unique_ptr<OutputFile> openReplacing(const std::string& target, bool isThere) {
  if (!isThere) return openBeside(target, ReplacingFile::Place::absent);
  // A file that may not be written is not replaced either, though its folder would allow it.
  const DWORD attributes = GetFileAttributesW(toPath(target).c_str());
  if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) raiseTrouble(target, ERROR_ACCESS_DENIED);
  {
    const Handle old(CreateFileW(toPath(target).c_str(), GENERIC_WRITE, shareAll, nullptr, OPEN_EXISTING, 0, nullptr));
    if (!old.isOpen()) raiseTrouble(target, GetLastError());
  }
  return openBeside(target, ReplacingFile::Place::taken);
}

/// The path of what is there, behind all links.
std::optional<std::filesystem::path> finalPath(const std::filesystem::path& path) {
  const Handle handle(opened(path));
  if (!handle.isOpen()) return std::nullopt;
  std::array<wchar_t, 32768> text{};
  const DWORD length = GetFinalPathNameByHandleW(handle.get(), text.data(), text.size(), VOLUME_NAME_DOS);
  if (length == 0 || length >= text.size()) return std::nullopt;
  std::wstring found(text.data(), length);
  // The prefix of unparsed paths is not what a user wrote.
  constexpr std::wstring_view share = LR"(\\?\UNC\)";
  constexpr std::wstring_view unparsed = LR"(\\?\)";
  if (found.starts_with(share)) return LR"(\\)" + found.substr(share.size());
  if (found.starts_with(unparsed)) found.erase(0, unparsed.size());
  return found;
}

}  // namespace

std::string resolvedPath(const std::string& path) {
  std::error_code error;
  const std::filesystem::path whole = std::filesystem::absolute(toPath(path), error);
  if (error) return path;
  if (const auto found = finalPath(whole)) return toText(*found);
  // What is not there yet has a folder that is.
  if (const auto folder = finalPath(whole.parent_path())) return toText(*folder / whole.filename());
  return toText(whole.lexically_normal());
}

std::unique_ptr<OutputFile> openOutput(const std::string& path) {
  if (path == "-") return std::make_unique<DirectFile>(GetStdHandle(STD_OUTPUT_HANDLE), false, "standard output");
  switch (kindOf(path)) {
    case Kind::folder:
      raiseFolder(path);
    case Kind::device: {
      Handle device(CreateFileW(toPath(path).c_str(), GENERIC_WRITE, shareAll, nullptr, OPEN_EXISTING, 0, nullptr));
      if (!device.isOpen()) raiseTrouble(path, GetLastError());
      return std::make_unique<DirectFile>(device.release(), true, path);
    }
    case Kind::absent:
      return openReplacing(resolvedPath(path), false);
    case Kind::plain:
      break;
  }
  return openReplacing(resolvedPath(path), true);
}

// A new file has the access rights of its folder, as every other there.
std::unique_ptr<OutputFile> openNew(const std::string& path, const std::string&) {
  return openBeside(path, ReplacingFile::Place::free);
}

void checkOutput(const std::string& path) {
  if (path == "-") return;
  const Kind kind = kindOf(path);
  if (kind == Kind::folder) raiseFolder(path);
  // A pipe would lose its reader by being opened and closed.
  if (kind == Kind::device) return;
  static_cast<void>(openReplacing(resolvedPath(path), kind == Kind::plain));
}

bool isSameFile(const std::string& left, const std::string& right) {
  if (left == right || resolvedPath(left) == resolvedPath(right)) return true;
  const Handle one(opened(toPath(left)));
  const Handle other(opened(toPath(right)));
  BY_HANDLE_FILE_INFORMATION first{};
  BY_HANDLE_FILE_INFORMATION second{};
  return one.isOpen() && other.isOpen() && GetFileInformationByHandle(one.get(), &first) != FALSE &&
         GetFileInformationByHandle(other.get(), &second) != FALSE &&
         first.dwVolumeSerialNumber == second.dwVolumeSerialNumber && first.nFileIndexHigh == second.nFileIndexHigh &&
         first.nFileIndexLow == second.nFileIndexLow;
}

}  // namespace mervane::cli
