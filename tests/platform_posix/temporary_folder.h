#pragma once

#include <stdlib.h>  // NOLINT(modernize-deprecated-headers): mkdtemp is POSIX.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace mervane::tests {

/// A folder of its own for one test, gone with all its files afterwards.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "mervane-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
    path_ = pattern;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] std::string file(const std::string& name) const { return (path_ / name).string(); }
  [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }

  static std::string contentOf(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  static void write(const std::string& file, const std::string& content) {
    std::ofstream(file, std::ios::binary) << content;
  }

 private:
  std::filesystem::path path_;
};

}  // namespace mervane::tests
