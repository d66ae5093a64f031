#pragma once

#include <string>

namespace mervane::platform {

/// Text files by path; a relative path is taken from the process's current directory at that moment.
class TextFiles {
 public:
  virtual ~TextFiles() = default;
  /// Opens for appending, creating the file if it is missing, writes the text as it stands, closes.
  /// The text goes out in the system's 8-bit code page where the system has one. Raises a Failure.
  virtual void append(const std::string& path, const std::string& text) = 0;
  /// Raises a Failure where the file is missing or cannot be deleted.
  virtual void remove(const std::string& path) = 0;
};

}  // namespace mervane::platform
