#include "hosts/workbook/sheet_view.h"

#include <string>
#include <string_view>

#include "hosts/workbook/sheet.h"
#include "hosts/workbook/small_xml.h"

namespace mervane::workbook {

namespace {

void setAttribute(pugi::xml_node node, const char* name, const std::string& value) {
  pugi::xml_attribute attribute = node.attribute(name);
  if (!attribute) attribute = node.append_attribute(name);
  attribute = value.c_str();
}

/// The views of the sheet as a tree, with one view at least.
pugi::xml_node loadView(Sheet& sheet, pugi::xml_document& document) {
  const std::string& prefix = sheet.frame().prefix;
  if (!sheet.frame().load("sheetViews", document)) document.append_child((prefix + "sheetViews").c_str());
  pugi::xml_node views = document.document_element();
  pugi::xml_node view = childNamed(views, "sheetView");
  if (!view) {
    view = views.append_child((prefix + "sheetView").c_str());
    view.append_attribute("workbookViewId") = "0";
  }
  return view;
}

void store(Sheet& sheet, const pugi::xml_document& document) {
  sheet.frame().set("sheetViews", printFragment(document.document_element()));
  sheet.markChanged();
}

/// The selection of the pane that the cursor is in.
pugi::xml_node selectionOf(const pugi::xml_node& view) {
  const std::string_view pane = childNamed(view, "pane").attribute("activePane").value();
  for (const pugi::xml_node& node : view) {
    if (localName(node) != "selection") continue;
    const std::string_view own = node.attribute("pane").value();
    if (own == pane || (own.empty() && pane == "topLeft") || (pane.empty() && own == "topLeft")) return node;
  }
  return {};
}

}  // namespace

void select(Sheet& sheet, const CellArea& area) {
  pugi::xml_document document;
  pugi::xml_node view = loadView(sheet, document);
  pugi::xml_node selection = selectionOf(view);
  if (!selection) {
    // A selection stands behind the pane and other selections and in front of all else.
    pugi::xml_node before;
    for (const pugi::xml_node& child : view) {
      if (child.type() == pugi::node_element && localName(child) != "pane" && localName(child) != "selection") {
        before = child;
        break;
      }
    }
    const std::string name = sheet.frame().prefix + "selection";
    selection = before ? view.insert_child_before(name.c_str(), before) : view.append_child(name.c_str());
    const std::string pane = childNamed(view, "pane").attribute("activePane").value();
    if (!pane.empty()) selection.append_attribute("pane") = pane.c_str();
  }
  const std::string cell = a1(CellAddress{area.firstRow, area.firstColumn});
  const std::string cells = a1(area);
  if (cell == selection.attribute("activeCell").value() && cells == selection.attribute("sqref").value()) return;
  setAttribute(selection, "activeCell", cell);
  selection.remove_attribute("activeCellId");
  setAttribute(selection, "sqref", cells);
  store(sheet, document);
}

CellAddress activeCell(Sheet& sheet) {
  pugi::xml_document document;
  if (!sheet.frame().load("sheetViews", document)) return {};
  const pugi::xml_node selection = selectionOf(childNamed(document.document_element(), "sheetView"));
  return parseCell(selection.attribute("activeCell").value()).value_or(CellAddress{});
}

void setTabSelected(Sheet& sheet, bool selected) {
  pugi::xml_document document;
  pugi::xml_node view = loadView(sheet, document);
  if (selected) {
    setAttribute(view, "tabSelected", "1");
  } else if (!view.remove_attribute("tabSelected")) {
    return;
  }
  store(sheet, document);
}

}  // namespace mervane::workbook
