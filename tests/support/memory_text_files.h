#pragma once

#include <map>
#include <string>

#include "platform/text_files.h"
#include "tests/support/call_script.h"

namespace mervane::tests {

/// Text files in memory, by the path as it was given.
class MemoryTextFiles : public platform::TextFiles {
 public:
  explicit MemoryTextFiles(std::shared_ptr<Journal> journal = nullptr) : script(std::move(journal)) {}

  void append(const std::string& path, const std::string& text) override;
  void remove(const std::string& path) override;

  [[nodiscard]] bool exists(const std::string& path) const { return files_.contains(path); }
  /// The empty text for a missing file.
  [[nodiscard]] std::string content(const std::string& path) const;
  [[nodiscard]] const std::map<std::string, std::string>& files() const noexcept { return files_; }

  CallScript script;

 private:
  std::map<std::string, std::string> files_;
};

}  // namespace mervane::tests
