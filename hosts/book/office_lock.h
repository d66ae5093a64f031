#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace mervane::hosts {

/// An office says by a file beside a document that it has the document open.
struct OfficeLock {
  std::filesystem::path file;  ///< that says so
  std::string who;             ///< has it open, as far as the file tells; may be empty
};

/// The lock of the document, or nothing. Two kinds are known: ".~lock.NAME#" and "~$NAME".
[[nodiscard]] std::optional<OfficeLock> officeLockOf(const std::filesystem::path& document);

}  // namespace mervane::hosts
