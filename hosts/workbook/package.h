#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/workbook/file_bytes.h"

namespace mervane::workbook {

/// What a package may be at most. A file beyond these bounds is refused before its content is unpacked.
struct PackageLimits {
  std::uint64_t entries = 65535;
  std::uint64_t entrySize = std::uint64_t{4} << 30;    ///< bytes of one part, unpacked
  std::uint64_t totalSize = std::uint64_t{8} << 30;    ///< bytes of all parts, unpacked
  std::uint64_t smallPart = std::uint64_t{256} << 20;  ///< bytes of a part that is held in memory as a whole
  /// Unpacked bytes a packed byte may give, for a part above 64 MiB. Deflate cannot give more than 1032.
  std::uint64_t ratio = 500;
};

/// One relation of a part.
struct Relation {
  std::string id;
  std::string kind;    ///< the last segment of its type: "worksheet", "drawing", "chart", "styles", ...
  std::string type;    ///< the whole type as the file writes it
  std::string target;  ///< a part name, or the address as written where the relation is external
  bool external = false;
};

/// Content of a part that is deflated already, such as a large sheet printed straight into the compressor.
struct DeflatedContent {
  std::string bytes;
  std::uint64_t size = 0;  ///< unpacked
  std::uint32_t crc = 0;
};

/// The parts of an .xlsx or .xlsm file by name, their relations and content types.
///
/// A part name has no leading slash: "xl/worksheets/sheet1.xml". Names are compared without regard to ASCII case, as
/// the format wants it. Parts that nobody put or removed are copied byte for byte, still packed, when the package is
/// saved; so are the relations and content types where nothing was added or taken away.
/// Every function that names a missing or damaged part raises a Failure that says file and part.
class Package {
 public:
  /// Raises pathFileAccess or fileNotFound for a file that cannot be read, applicationDefined for one that is no
  /// workbook: encrypted, of an older or another format, damaged, or beyond the limits.
  [[nodiscard]] static std::unique_ptr<Package> open(const std::filesystem::path& path,
                                                     const PackageLimits& limits = {});
  ~Package();
  Package(const Package&) = delete;
  Package& operator=(const Package&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const noexcept;
  [[nodiscard]] bool has(std::string_view name) const;
  /// All part names in the order of the file, those put last.
  [[nodiscard]] std::vector<std::string> names() const;
  /// The whole content, as it was put or as the file has it.
  [[nodiscard]] std::string read(std::string_view name) const;
  /// The content in pieces, in order, without ever holding all of it.
  void stream(std::string_view name, const std::function<void(std::string_view)>& sink) const;

  /// The same the other way round: each call writes at most `size` next bytes and answers how many, 0 at the end.
  [[nodiscard]] std::function<std::size_t(char* bytes, std::size_t size)> pull(std::string_view name) const;

  /// Adds or replaces a part. The content type is registered where it is given and not the one in force.
  void put(std::string_view name, std::string content, std::string_view contentType = {});
  void putDeflated(std::string_view name, DeflatedContent content);
  /// Removes the part, its content type and its own relations; relations of others to it stay (see removeRelation).
  /// Nothing happens where the part is missing.
  void remove(std::string_view name);
  /// The first of stem1suffix, stem2suffix, ... that no part has: freeName("xl/charts/chart", ".xml").
  [[nodiscard]] std::string freeName(std::string_view stem, std::string_view suffix) const;

  /// Empty where none is registered.
  [[nodiscard]] std::string contentType(std::string_view name) const;

  /// Relations of a part; of the package itself for an empty name. A part without relations has none.
  [[nodiscard]] std::vector<Relation> relations(std::string_view part) const;
  /// Adds a relation of the kind ("drawing", "chart", ...) and answers its new id. The target is a part name.
  std::string addRelation(std::string_view part, std::string_view kind, std::string_view target);
  void removeRelation(std::string_view part, std::string_view id);

  /// Whether the file is of the strict form, whose namespaces have other addresses.
  [[nodiscard]] bool isStrict() const noexcept;
  /// The namespace of relation ids, "r:id", in this file's form.
  [[nodiscard]] std::string_view relationNamespace() const noexcept;

  /// Writes the package: a new file beside the target, synced, then renamed over it. The target may be the file that
  /// was opened. After a failure the target is what it was.
  void save(const std::filesystem::path& target, const SaveWatch& watch = {}) const;

 private:
  struct Data;
  explicit Package(std::unique_ptr<Data> data);
  std::unique_ptr<Data> data_;
};

}  // namespace mervane::workbook
