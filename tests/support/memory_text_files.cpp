#include "tests/support/memory_text_files.h"

namespace mervane::tests {

void MemoryTextFiles::append(const std::string& path, const std::string& text) {
  script.enter("textFiles.append " + path);
  files_[path] += text;
}

void MemoryTextFiles::remove(const std::string& path) {
  script.enter("textFiles.remove " + path);
  if (files_.erase(path) == 0) raise(runtime::fileNotFound);
}

std::string MemoryTextFiles::content(const std::string& path) const {
  const auto found = files_.find(path);
  return found != files_.end() ? found->second : std::string();
}

}  // namespace mervane::tests
