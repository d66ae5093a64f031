#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace mervane::cli {

/// A file in the making. What was written counts only once `commit` has returned. Every member but the destructor
/// raises a Problem with the status fileTrouble.
class OutputFile {
 public:
  virtual ~OutputFile() = default;
  virtual void write(std::string_view bytes) = 0;
  /// Passes on what has been written, where somebody could read it before `commit`.
  virtual void flush() = 0;
  virtual void commit() = 0;
};

/// Standard output for "-". For any other path a new file beside the old one, which takes its place, content synced,
/// with `commit`: whatever goes wrong before, the old file stays whole. The new file has the permissions of the old
/// one, on Windows the access rights of its folder; where the path is a symbolic link, the file that it leads to is
/// replaced. What is no plain file, such as a device or a pipe, is written to directly.
[[nodiscard]] std::unique_ptr<OutputFile> openOutput(const std::string& path);

/// A new file with the permissions of another one, on Windows with the access rights of its folder. With `commit` it
/// takes the path, unless something has come to stand there meanwhile.
[[nodiscard]] std::unique_ptr<OutputFile> openNew(const std::string& path, const std::string& like);

/// Raises what openOutput would raise for the path, and leaves no trace; to be told before a long run, not after it.
void checkOutput(const std::string& path);

/// Whether both paths lead to the same existing file, or are the same text.
[[nodiscard]] bool isSameFile(const std::string& left, const std::string& right);

/// Every directory entry on the way of the path made definite: the path of the file itself behind all links.
[[nodiscard]] std::string resolvedPath(const std::string& path);

}  // namespace mervane::cli
