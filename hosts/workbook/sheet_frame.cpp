#include "hosts/workbook/sheet_frame.h"

#include <algorithm>
#include <array>
#include <utility>

#include "hosts/workbook/small_xml.h"

namespace mervane::workbook {

namespace {

/// The children of a worksheet in the order of the format.
constexpr std::array<std::string_view, 40> order{"sheetPr",
                                                 "dimension",
                                                 "sheetViews",
                                                 "sheetFormatPr",
                                                 "cols",
                                                 "sheetData",
                                                 "sheetCalcPr",
                                                 "sheetProtection",
                                                 "protectedRanges",
                                                 "scenarios",
                                                 "autoFilter",
                                                 "sortState",
                                                 "dataConsolidate",
                                                 "customSheetViews",
                                                 "mergeCells",
                                                 "phoneticPr",
                                                 "conditionalFormatting",
                                                 "dataValidations",
                                                 "hyperlinks",
                                                 "printOptions",
                                                 "pageMargins",
                                                 "pageSetup",
                                                 "headerFooter",
                                                 "rowBreaks",
                                                 "colBreaks",
                                                 "customProperties",
                                                 "cellWatches",
                                                 "ignoredErrors",
                                                 "smartTags",
                                                 "drawing",
                                                 "legacyDrawing",
                                                 "legacyDrawingHF",
                                                 "drawingHF",
                                                 "picture",
                                                 "oleObjects",
                                                 "controls",
                                                 "webPublishItems",
                                                 "tableParts",
                                                 "extLst",
                                                 ""};

std::size_t rank(std::string_view name) {
  return static_cast<std::size_t>(std::find(order.begin(), order.end() - 1, name) - order.begin());
}

}  // namespace

const SheetFrame::Child* SheetFrame::find(std::string_view name) const {
  const auto found = std::find_if(children.begin(), children.end(), [&](const Child& one) { return one.name == name; });
  return found == children.end() ? nullptr : &*found;
}

bool SheetFrame::load(std::string_view name, pugi::xml_document& document) const {
  const Child* child = find(name);
  if (child == nullptr) return false;
  loadXml(document, child->raw, name);
  return true;
}

void SheetFrame::set(std::string_view name, std::string raw) {
  for (Child& child : children) {
    if (child.name == name) {
      child.raw = std::move(raw);
      return;
    }
  }
  // Elements that the format does not know stay where they are; the place is in front of the first known later one.
  const std::size_t own = rank(name);
  const auto later = std::find_if(children.begin(), children.end(), [&](const Child& one) {
    const std::size_t other = rank(one.name);
    return other + 1 < order.size() && other > own;
  });
  children.insert(later, Child{std::string(name), std::move(raw)});
}

void SheetFrame::remove(std::string_view name) {
  std::erase_if(children, [&](const Child& one) { return one.name == name; });
}

}  // namespace mervane::workbook
