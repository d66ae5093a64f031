#include "cli/byte_source.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <system_error>

#include "cli/machine.h"
#include "cli/problem.h"
#include "cli/terminal.h"
#include "cli/text_display.h"

namespace mervane::cli {
namespace {

[[noreturn]] void raiseFileTrouble(const std::string& verb, const std::string& path, int error) {
  std::string advice = "Check the path.";
  if (error == EACCES || error == EPERM) advice = "You have no permission to read it.";
  if (error == EISDIR) advice = "Name a file in it.";
  throw Problem(ExitStatus::fileTrouble,
                "cannot " + verb + " " + printable(sourceName(path)) + ": " + std::generic_category().message(error),
                advice);
}

class FileSource : public ByteSource {
 public:
  FileSource(std::FILE* file, std::string path, bool owned) : file_(file), path_(std::move(path)), owned_(owned) {}
  FileSource(const FileSource&) = delete;
  FileSource& operator=(const FileSource&) = delete;
  ~FileSource() override {
    if (owned_) static_cast<void>(std::fclose(file_));
  }

  std::size_t read(std::span<char> buffer) override {
    errno = 0;
    const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), file_);
    if (count == 0 && std::ferror(file_) != 0) raiseFileTrouble("read", path_, errno);
    return count;
  }

 private:
  std::FILE* file_;
  std::string path_;
  bool owned_;
};

}  // namespace

std::size_t MemorySource::read(std::span<char> buffer) {
  const std::size_t count = std::min(buffer.size(), rest_.size());
  std::copy_n(rest_.data(), count, buffer.data());
  rest_.remove_prefix(count);
  return count;
}

std::size_t PrefixedSource::read(std::span<char> buffer) {
  const std::size_t count = prefix_.read(buffer);
  return count > 0 ? count : rest_.read(buffer);
}

std::unique_ptr<ByteSource> openSource(const std::string& path) {
  if (path == "-") {
    terminal::useBinary(stdin);
    return std::make_unique<FileSource>(stdin, path, false);
  }
  errno = 0;
  std::FILE* file = openForReading(path);
  if (file == nullptr) raiseFileTrouble("open", path, errno);
  return std::make_unique<FileSource>(file, path, true);
}

std::string sourceName(const std::string& path) {
  return path == "-" ? "standard input" : path;
}

std::string readAtMost(ByteSource& source, std::size_t count) {
  std::string text(count, '\0');
  std::size_t filled = 0;
  while (filled < count) {
    const std::size_t got = source.read(std::span(text).subspan(filled));
    if (got == 0) break;
    filled += got;
  }
  text.resize(filled);
  return text;
}

}  // namespace mervane::cli
