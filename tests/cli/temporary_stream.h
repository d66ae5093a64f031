#pragma once

#include <cstdio>
#include <string>

namespace mervane::cli {

/// A stream into a file without a name, whose content can be looked at.
class TemporaryStream {
 public:
  TemporaryStream() : file_(std::tmpfile()) {}
  ~TemporaryStream() { static_cast<void>(std::fclose(file_)); }
  TemporaryStream(const TemporaryStream&) = delete;
  TemporaryStream& operator=(const TemporaryStream&) = delete;

  [[nodiscard]] std::FILE* file() const { return file_; }
  [[nodiscard]] std::string text() const {
    static_cast<void>(std::fflush(file_));
    std::rewind(file_);
    std::string all;
    for (int c = std::fgetc(file_); c != EOF; c = std::fgetc(file_)) all += static_cast<char>(c);
    return all;
  }

 private:
  std::FILE* file_;
};

}  // namespace mervane::cli
