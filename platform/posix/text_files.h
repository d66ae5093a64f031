#pragma once

#include <string>

#include "platform/text_files.h"

namespace mervane::posix {

/// Files of the file system. Texts go out as the UTF-8 that they are: there is no other code page here.
class TextFiles final : public platform::TextFiles {
 public:
  void append(const std::string& path, const std::string& text) override;
  void remove(const std::string& path) override;
};

}  // namespace mervane::posix
