#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/workbook/package.h"

namespace mervane::workbook {

/// A zip file in memory. Raises applicationDefined for one that is damaged or beyond the limits.
class ZipArchive {
 public:
  struct Entry {
    std::string name;  ///< with forward slashes
    std::uint64_t size = 0;
    std::uint64_t packedSize = 0;
  };
  /// What is written instead of, or beside, the entries that the archive has.
  struct Change {
    enum class Kind { remove, stored, deflated };
    Kind kind = Kind::remove;
    std::string name;
    const std::string* content = nullptr;       ///< for stored: to be deflated on the way
    const DeflatedContent* deflated = nullptr;  ///< for deflated: taken as it is
  };
  /// The next bytes of an entry; writes at most `size` of them and answers how many, 0 at the end.
  using Reader = std::function<std::size_t(char* bytes, std::size_t size)>;

  /// @param fileName for the texts of failures.
  ZipArchive(std::string bytes, std::string fileName, const PackageLimits& limits);
  ~ZipArchive();
  ZipArchive(const ZipArchive&) = delete;
  ZipArchive& operator=(const ZipArchive&) = delete;

  [[nodiscard]] const std::vector<Entry>& entries() const noexcept { return entries_; }
  /// Unpacks an entry by its position; its checksum is tested at the end.
  [[nodiscard]] Reader reader(std::size_t index) const;

  /// The archive with the changes made. Entries without a change keep their packed bytes.
  [[nodiscard]] std::string with(const std::vector<Change>& changes) const;

 private:
  struct Handle;
  [[noreturn]] void damaged(std::string_view entry) const;

  std::string bytes_;
  std::string fileName_;
  std::vector<Entry> entries_;
  std::unique_ptr<Handle> handle_;
};

}  // namespace mervane::workbook
