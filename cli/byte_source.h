#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace mervane::cli {

/// Where bytes come from, one after the other, to the end.
class ByteSource {
 public:
  virtual ~ByteSource() = default;
  /// Fills the front of the buffer and returns how many bytes were put there; 0 means the end.
  virtual std::size_t read(std::span<char> buffer) = 0;
};

/// Bytes that lie in memory; whoever owns them keeps them.
class MemorySource : public ByteSource {
 public:
  explicit MemorySource(std::string_view bytes) : rest_(bytes) {}
  std::size_t read(std::span<char> buffer) override;

 private:
  std::string_view rest_;
};

/// First the bytes of a text already read, then those of another source.
class PrefixedSource : public ByteSource {
 public:
  PrefixedSource(std::string_view prefix, ByteSource& rest) : prefix_(prefix), rest_(rest) {}
  std::size_t read(std::span<char> buffer) override;

 private:
  MemorySource prefix_;
  ByteSource& rest_;
};

/// A file, or standard input for "-". Raises a Problem with the status fileTrouble where it cannot be opened or read.
[[nodiscard]] std::unique_ptr<ByteSource> openSource(const std::string& path);

/// The name of an input in a message: its path, or "standard input" for "-".
[[nodiscard]] std::string sourceName(const std::string& path);

/// Reads until the text holds that many bytes or the source ends.
[[nodiscard]] std::string readAtMost(ByteSource& source, std::size_t count);

}  // namespace mervane::cli
