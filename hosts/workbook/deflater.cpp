#include "hosts/workbook/deflater.h"

#include <zlib.h>

#include <array>
#include <utility>

#include "mervane/runtime_errors.h"

namespace mervane::workbook {

struct Deflater::Stream {
  z_stream z{};
  std::array<unsigned char, 65536> piece{};
};

Deflater::Deflater(int level) : stream_(std::make_unique<Stream>()) {
  constexpr int rawWindow = -15;  // a zip entry has no header of its own
  constexpr int memoryLevel = 9;
  if (deflateInit2(&stream_->z, level, Z_DEFLATED, rawWindow, memoryLevel, Z_DEFAULT_STRATEGY) != Z_OK) {
    raise(runtime::outOfMemory);
  }
  content_.crc = static_cast<std::uint32_t>(crc32(0, nullptr, 0));
}

Deflater::~Deflater() {
  deflateEnd(&stream_->z);
}

void Deflater::run(int flush) {
  z_stream& z = stream_->z;
  int result = Z_OK;
  do {
    z.next_out = stream_->piece.data();
    z.avail_out = static_cast<uInt>(stream_->piece.size());
    result = deflate(&z, flush);
    content_.bytes.append(reinterpret_cast<const char*>(stream_->piece.data()), stream_->piece.size() - z.avail_out);
  } while (z.avail_out == 0 || (flush == Z_FINISH && result == Z_OK));
}

void Deflater::append(std::string_view text) {
  constexpr std::size_t most = std::size_t{1} << 30;
  while (!text.empty()) {
    const std::string_view piece = text.substr(0, most);
    text.remove_prefix(piece.size());
    const auto* bytes = reinterpret_cast<const unsigned char*>(piece.data());
    content_.crc = static_cast<std::uint32_t>(crc32(content_.crc, bytes, static_cast<uInt>(piece.size())));
    content_.size += piece.size();
    stream_->z.next_in = const_cast<unsigned char*>(bytes);
    stream_->z.avail_in = static_cast<uInt>(piece.size());
    run(Z_NO_FLUSH);
  }
}

DeflatedContent Deflater::finish() {
  run(Z_FINISH);
  return std::move(content_);
}

}  // namespace mervane::workbook
