#pragma once

#include <memory>
#include <string_view>

#include "hosts/workbook/package.h"

namespace mervane::workbook {

/// Packs text as it is printed, so that a large part is never in memory unpacked.
class Deflater {
 public:
  /// @param level 1, fastest, to 9, smallest.
  explicit Deflater(int level);
  ~Deflater();
  Deflater(const Deflater&) = delete;
  Deflater& operator=(const Deflater&) = delete;

  void append(std::string_view text);
  [[nodiscard]] DeflatedContent finish();

 private:
  struct Stream;
  void run(int flush);
  std::unique_ptr<Stream> stream_;
  DeflatedContent content_;
};

}  // namespace mervane::workbook
