#include "hosts/workbook/utf16_source.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "mervane/utf16.h"

namespace mervane::workbook {

namespace {

constexpr std::size_t pieceSize = std::size_t{64} * 1024;
constexpr std::string_view utf8Declaration = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)";

class Utf8Source {
 public:
  explicit Utf8Source(ByteSource source) : source_(std::move(source)) {}

  std::size_t read(char* bytes, std::size_t size) {
    if (!isBegun_) begin();
    if (!isWide_ && at_ == ready_.size()) return source_(bytes, size);
    while (at_ == ready_.size() && !isAtEnd_) convert();
    const std::size_t count = std::min(size, ready_.size() - at_);
    ready_.copy(bytes, count, at_);
    at_ += count;
    return count;
  }

 private:
  /// Two bytes tell: a mark of the byte order, or a first "<" of one byte and one that is zero.
  void begin() {
    isBegun_ = true;
    std::array<char, 2> mark{};
    std::size_t count = 0;
    while (count < mark.size()) {
      const std::size_t more = source_(mark.data() + count, mark.size() - count);
      if (more == 0) break;
      count += more;
    }
    const std::string_view begin(mark.data(), count);
    using namespace std::string_view_literals;
    isWide_ = begin == "\xFF\xFE"sv || begin == "\xFE\xFF"sv || begin == "<\0"sv || begin == "\0<"sv;
    if (!isWide_) {
      ready_ = begin;
      return;
    }
    isBigEndian_ = begin == "\xFE\xFF"sv || begin == "\0<"sv;
    if (begin.find('<') != std::string_view::npos) pending_ = begin;
    while (ready_.size() < utf8Declaration.size() * 4 && !isAtEnd_) convert();
    if (!ready_.starts_with("<?xml ")) return;
    const std::size_t end = ready_.find("?>");
    if (end != std::string::npos) ready_.replace(0, end + 2, utf8Declaration);
  }

  void convert() {
    if (at_ == ready_.size()) {
      ready_.clear();
      at_ = 0;
    }
    std::array<char, pieceSize> piece{};
    const std::size_t count = source_(piece.data(), piece.size());
    if (count == 0) isAtEnd_ = true;
    pending_.append(piece.data(), count);
    std::size_t used = 0;
    while (pending_.size() - used >= 2) {
      const std::uint32_t first = unit(used);
      const bool isHigh = first >= 0xD800 && first < 0xDC00;
      if (isHigh && pending_.size() - used < 4 && !isAtEnd_) break;
      const std::uint32_t second = isHigh && pending_.size() - used >= 4 ? unit(used + 2) : 0;
      if (second >= 0xDC00 && second < 0xE000) {
        appendUtf8(ready_, static_cast<char32_t>(0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00)));
        used += 4;
      } else {
        appendUtf8(ready_, static_cast<char32_t>(first));
        used += 2;
      }
    }
    pending_.erase(0, used);
    // NB: half a character at the very end is passed on as a byte that is no UTF-8.
    if (isAtEnd_ && !pending_.empty()) ready_ += '\xFF';
    if (isAtEnd_) pending_.clear();
  }

  [[nodiscard]] std::uint32_t unit(std::size_t at) const {
    const auto first = static_cast<unsigned char>(pending_[at]);
    const auto second = static_cast<unsigned char>(pending_[at + 1]);
    return isBigEndian_ ? (std::uint32_t{first} << 8) | second : (std::uint32_t{second} << 8) | first;
  }

  ByteSource source_;
  std::string pending_;  // bytes not yet converted
  std::string ready_;    // UTF-8, handed out up to `at_`
  std::size_t at_ = 0;
  bool isBegun_ = false;
  bool isWide_ = false;
  bool isBigEndian_ = false;
  bool isAtEnd_ = false;
};

}  // namespace

ByteSource asUtf8(ByteSource source) {
  return [reader = std::make_shared<Utf8Source>(std::move(source))](char* bytes, std::size_t size) {
    return reader->read(bytes, size);
  };
}

}  // namespace mervane::workbook
