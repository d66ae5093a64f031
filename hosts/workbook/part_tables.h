#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/workbook/package.h"

namespace mervane::workbook {

/// The address that relation types begin with, and the namespace of relation ids.
[[nodiscard]] std::string_view relationBase(bool strict) noexcept;

/// The package's table of content types.
class ContentTypes {
 public:
  void load(std::string_view content, std::string_view tableName);
  /// The type of a part: its own, else that of its extension, else empty.
  [[nodiscard]] std::string of(std::string_view part) const;
  /// Registers a type of the part's own, unless it has this type already.
  void set(std::string_view part, std::string_view type);
  /// Registers a type for all parts whose names end so, unless such parts have one already.
  void setForExtension(std::string_view extension, std::string_view type);
  void drop(std::string_view part);
  [[nodiscard]] bool changed() const noexcept { return changed_; }
  [[nodiscard]] std::string print() const;

 private:
  [[nodiscard]] pugi::xml_node overrideOf(std::string_view part) const;
  [[nodiscard]] pugi::xml_node defaultOf(std::string_view extension) const;

  pugi::xml_document document_;
  bool changed_ = false;
};

/// The relations of one part. What the file says beside them is kept when they are written.
class RelationTable {
 public:
  explicit RelationTable(std::string part);
  void load(std::string_view content, std::string_view tableName);
  [[nodiscard]] const std::string& part() const noexcept { return part_; }
  [[nodiscard]] std::vector<Relation> all() const;
  /// Answers the new id; the target is written relative to the part.
  std::string add(std::string_view type, std::string_view target);
  void remove(std::string_view id);
  [[nodiscard]] bool changed() const noexcept { return changed_; }
  [[nodiscard]] bool empty() const;
  [[nodiscard]] std::string print() const;

 private:
  std::string part_;
  pugi::xml_document document_;
  bool changed_ = false;
};

}  // namespace mervane::workbook
