#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace mervane::workbook {

/// What a sheet's part holds beside its cells: the children of its root element, each as the file writes it. Only the
/// children that are set are written anew; new ones go where the format's order wants them.
class SheetFrame {
 public:
  struct Child {
    std::string name;  ///< without the prefix
    std::string raw;   ///< with the blanks in front of it; of the cells only those blanks
  };

  std::string head;    ///< all up to the end of the root's start tag
  std::string tail;    ///< from the end of the last child on
  std::string prefix;  ///< of the main namespace, with its colon; mostly empty
  std::vector<Child> children;

  [[nodiscard]] const Child* find(std::string_view name) const;
  /// Loads one child as a tree, where the sheet has it. The tree's root element is the child.
  [[nodiscard]] bool load(std::string_view name, pugi::xml_document& document) const;
  /// Replaces the child or inserts it in its place.
  void set(std::string_view name, std::string raw);
  void remove(std::string_view name);
};

}  // namespace mervane::workbook
