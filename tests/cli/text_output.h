#pragma once

#include <string>
#include <string_view>

#include "cli/output_file.h"

namespace mervane::cli {

/// An output file in memory.
class TextOutput : public OutputFile {
 public:
  void write(std::string_view bytes) override { text.append(bytes); }
  void flush() override {}
  void commit() override {}

  std::string text;
};

}  // namespace mervane::cli
