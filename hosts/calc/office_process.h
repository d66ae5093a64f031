#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>

namespace mervane::calc {

/// The process of an office and the one that watches over it.
///
/// The watcher stands between this program and the office: it waits at a pipe that this program alone keeps open, so
/// that it notices the end of this program however that comes, ends the office and clears its folder away.
class OfficeProcess {
 public:
  /// Raises where it cannot be started.
  explicit OfficeProcess(const std::string& pipe);
  OfficeProcess(const OfficeProcess&) = delete;
  OfficeProcess& operator=(const OfficeProcess&) = delete;
  ~OfficeProcess();

  /// Whether the office has ended by itself.
  [[nodiscard]] bool hasEnded();

  /// A folder that goes with the office; its profile is in it.
  [[nodiscard]] const std::filesystem::path& folder() const { return folder_; }
  /// The office's program.
  [[nodiscard]] static std::filesystem::path program();

 private:
  std::filesystem::path folder_;
  pid_t watcher_ = -1;
  int lifeline_ = -1;
};

}  // namespace mervane::calc
