#include "tests/hosts_workbook/part_order/part_order.h"

#include <algorithm>
#include <optional>
#include <pugixml.hpp>
#include <set>
#include <string_view>

#include "hosts/workbook/cell_address.h"
#include "tests/hosts_workbook/part_order/vocabulary.h"

namespace mervane::workbook::tests {

namespace {

std::string_view localName(const pugi::xml_node& node) {
  const std::string_view name = node.name();
  const std::size_t colon = name.find(':');
  return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

/// Content that other schemas describe.
bool isForeign(const pugi::xml_node& node) {
  return std::string_view(node.name()).starts_with("mc:") || localName(node) == "AlternateContent";
}

/// One word of a sequence taken apart.
struct Place {
  std::set<std::string, std::less<>> names;
  bool repeats = false;
};

Place placeOf(std::string_view word) {
  Place place;
  place.repeats = word.ends_with('*');
  if (place.repeats) word.remove_suffix(1);
  if (word.starts_with('(')) word = word.substr(1, word.size() - 2);
  while (!word.empty()) {
    const std::size_t bar = std::min(word.find('|'), word.size());
    place.names.emplace(word.substr(0, bar));
    word.remove_prefix(std::min(bar + 1, word.size()));
  }
  return place;
}

class Checker {
 public:
  Checker(std::string part, const Sequences& sequences) : part_(std::move(part)), sequences_(sequences) {}

  void check(const pugi::xml_node& element) {
    const std::string name(localName(element));
    if (name == "extLst" || isForeign(element)) return;
    auto sequence = sequences_.find(std::string(localName(element.parent())) + "/" + name);
    if (sequence == sequences_.end()) sequence = sequences_.find(name);
    if (sequence != sequences_.end()) checkChildren(element, sequence->second);
    for (const pugi::xml_node child : element.children()) {
      if (child.type() == pugi::node_element) check(child);
    }
  }
  void fault(const pugi::xml_node& at, const std::string& what) { faults_.push_back(part_ + ": " + at.path() + what); }
  [[nodiscard]] std::vector<std::string> faults() && { return std::move(faults_); }

 private:
  void checkChildren(const pugi::xml_node& element, const std::vector<std::string>& sequence) {
    std::size_t at = 0;
    bool taken = false;
    for (const pugi::xml_node child : element.children()) {
      if (child.type() != pugi::node_element || isForeign(child)) continue;
      const auto found = std::find_if(sequence.begin(), sequence.end(), [&](const std::string& word) {
        return placeOf(word).names.contains(localName(child));
      });
      if (found == sequence.end()) {
        fault(child, " has no place in its parent");
        continue;
      }
      const auto place = static_cast<std::size_t>(found - sequence.begin());
      if (place < at) {
        fault(child, " comes too late");
      } else if (place == at && taken && !placeOf(*found).repeats) {
        fault(child, " is there twice");
      } else {
        at = place;
        taken = true;
      }
    }
  }

  std::string part_;
  const Sequences& sequences_;
  std::vector<std::string> faults_;
};

/// Rows and cells ascend, and no cell is there twice.
void checkCells(Checker& checker, const pugi::xml_node& worksheet) {
  std::int32_t row = 0;
  for (const pugi::xml_node child : worksheet.children()) {
    if (localName(child) != "sheetData") continue;
    for (const pugi::xml_node line : child.children()) {
      const std::int32_t number = line.attribute("r").as_int(row + 1);
      if (number <= row) checker.fault(line, " number " + std::to_string(number) + " follows " + std::to_string(row));
      row = number;
      std::int32_t column = 0;
      for (const pugi::xml_node cell : line.children()) {
        if (localName(cell) != "c") continue;
        const auto address = parseCell(cell.attribute("r").value());
        const CellAddress at = address ? *address : CellAddress{row, column + 1};
        if (at.row != row || at.column <= column) {
          checker.fault(cell, " " + std::string(cell.attribute("r").value()) + " stands in the wrong place");
        }
        column = at.column;
      }
    }
  }
}

std::int32_t elements(const pugi::xml_node& list) {
  return static_cast<std::int32_t>(std::count_if(
      list.begin(), list.end(), [](const pugi::xml_node& one) { return one.type() == pugi::node_element; }));
}

pugi::xml_node childNamed(const pugi::xml_node& parent, std::string_view name) {
  for (const pugi::xml_node child : parent.children()) {
    if (localName(child) == name) return child;
  }
  return {};
}

/// Counts are those of the lists, and each format refers to entries that there are.
void checkStyles(Checker& checker, const pugi::xml_node& styles) {
  for (const char* name : {"numFmts", "fonts", "fills", "borders", "cellStyleXfs", "cellXfs", "cellStyles", "dxfs"}) {
    const pugi::xml_node list = childNamed(styles, name);
    if (list && list.attribute("count") && list.attribute("count").as_int() != elements(list)) {
      checker.fault(list, " counts wrongly");
    }
  }
  const auto checkIndex = [&](const pugi::xml_node& xf, const char* attribute, const char* list) {
    const std::int32_t index = xf.attribute(attribute).as_int();
    if (index < 0 || index >= std::max(elements(childNamed(styles, list)), 1)) {
      checker.fault(xf, std::string(" has a ") + attribute + " that there is none of");
    }
  };
  for (const char* name : {"cellStyleXfs", "cellXfs"}) {
    for (const pugi::xml_node xf : childNamed(styles, name).children()) {
      checkIndex(xf, "fontId", "fonts");
      checkIndex(xf, "fillId", "fills");
      checkIndex(xf, "borderId", "borders");
      if (std::string_view(name) == "cellXfs") checkIndex(xf, "xfId", "cellStyleXfs");
    }
  }
}

}  // namespace

std::vector<std::string> faultsOfPart(const std::string& name, const std::string& xml) {
  pugi::xml_document document;
  const pugi::xml_parse_result parsed = document.load_buffer(xml.data(), xml.size());
  if (!parsed) return {name + ": no XML, " + parsed.description()};
  const pugi::xml_node root = document.document_element();
  const std::string_view kind = localName(root);
  const bool isDrawing = kind == "chartSpace" || kind == "wsDr";
  const Sequences& sequences = isDrawing ? drawingSequences() : spreadsheetSequences();
  if (!sequences.contains(kind)) return {};
  Checker checker(name, sequences);
  checker.check(root);
  if (kind == "worksheet") checkCells(checker, root);
  if (kind == "styleSheet") checkStyles(checker, root);
  return std::move(checker).faults();
}

std::vector<std::string> faultsOfBook(const std::map<std::string, std::string>& parts) {
  std::vector<std::string> all;
  for (const auto& [name, content] : parts) {
    if (!name.ends_with(".xml")) continue;
    const std::vector<std::string> faults = faultsOfPart(name, content);
    all.insert(all.end(), faults.begin(), faults.end());
  }
  return all;
}

}  // namespace mervane::workbook::tests
