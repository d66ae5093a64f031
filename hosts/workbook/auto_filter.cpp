#include "hosts/workbook/auto_filter.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "hosts/objects/current_region.h"
#include "hosts/workbook/book.h"
#include "hosts/workbook/book_facts.h"
#include "hosts/workbook/package.h"
#include "hosts/workbook/refuse.h"
#include "hosts/workbook/sheet.h"
#include "hosts/workbook/small_xml.h"

namespace mervane::workbook {

namespace {

constexpr std::string_view hiddenName = "_xlnm._FilterDatabase";

bool isFilled(Sheet& sheet, const CellArea& area) {
  return !sheet.cells().forEachCell(
      area, [](std::int32_t, std::int32_t, const Cell& cell) { return cell.kind == CellKind::empty; });
}

void showRows(Sheet& sheet, const CellArea& area) {
  CellStore& cells = sheet.cells();
  for (std::int32_t row = cells.nextRow(area.firstRow); row <= area.lastRow; row = cells.nextRow(row + 1)) {
    Row& one = cells.makeRow(row);
    RowFormat format = cells.rowFormat(one.format);
    if (!format.hidden) continue;
    for (const std::string_view hidden : {" hidden=\"1\"", " hidden=\"true\""}) {
      const std::size_t at = format.attributes.find(hidden);
      if (at != std::string::npos) format.attributes.erase(at, hidden.size());
    }
    format.hidden = false;
    one.format = cells.addRowFormat(std::move(format));
  }
  sheet.geometry().forget();
}

/// Marks the sheet as one whose filter hides rows, or takes the mark away.
void clearFilterMode(Sheet& sheet) {
  pugi::xml_document document;
  if (!sheet.frame().load("sheetPr", document)) return;
  if (!document.document_element().remove_attribute("filterMode")) return;
  sheet.frame().set("sheetPr", printFragment(document.document_element()));
}

void switchOff(Book& book, Sheet& sheet) {
  pugi::xml_document document;
  static_cast<void>(sheet.frame().load("autoFilter", document));
  const pugi::xml_node filter = document.document_element();
  const std::optional<CellArea> area = parseArea(filter.attribute("ref").value());
  if (area && childNamed(filter, "filterColumn")) showRows(sheet, *area);
  sheet.frame().remove("autoFilter");
  clearFilterMode(sheet);
  book.setHiddenName(sheet, hiddenName, "");
}

void switchOn(Book& book, Sheet& sheet, CellArea area) {
  const std::string& prefix = sheet.frame().prefix;
  sheet.frame().set("autoFilter", "<" + prefix + "autoFilter ref=\"" + a1(area) + "\"/>");
  book.setHiddenName(sheet, hiddenName, absoluteA1(sheet.name(), area));
}

void toggleTable(Sheet& sheet, const TableArea& table) {
  Package& package = *sheet.shared().package;
  pugi::xml_document document;
  loadXml(document, package.read(table.part), table.part);
  pugi::xml_node root = document.document_element();
  if (const pugi::xml_node filter = childNamed(root, "autoFilter")) {
    if (childNamed(filter, "filterColumn")) showRows(sheet, table.area);
    root.remove_child(filter);
  } else {
    pugi::xml_node added = root.prepend_child((prefixOf(root) + "autoFilter").c_str());
    CellArea area = table.area;
    area.lastRow -= std::clamp(wholeNumber(root.attribute("totalsRowCount"), 0), 0, area.rows() - 1);
    added.append_attribute("ref") = a1(area).c_str();
  }
  package.put(table.part, printXml(document));
}

/// What a filter of the sheet must not overlap: an application would take such a file for damaged, and strip the table.
std::vector<CellArea> barriers(Sheet& sheet) {
  std::vector<CellArea> areas = sheet.mergedAreas();
  for (const TableArea& table : sheet.tables()) areas.push_back(table.area);
  for (const guard::PivotTable& table : pivotTablesOf(sheet)) areas.push_back(table.area);
  return areas;
}

}  // namespace

bool hasAutoFilter(Sheet& sheet) {
  return sheet.frame().find("autoFilter") != nullptr;
}

void toggleAutoFilter(Book& book, Sheet& sheet, const CellArea& area) {
  sheet.requirePermission("autoFilter", "filters");
  for (const TableArea& table : sheet.tables()) {
    if (!table.area.contains(area)) continue;
    toggleTable(sheet, table);
    sheet.markChanged();
    return;
  }
  if (hasAutoFilter(sheet)) {
    switchOff(book, sheet);
  } else {
    CellArea whole = area;
    if (area.cells() == 1) {
      whole = hosts::currentRegion(
          area, [&](const CellArea& cells) { return isFilled(sheet, cells); }, barriers(sheet));
      // Rows and columns that only a corner brought in and that hold nothing are left out again.
      while (whole.rows() > 1 &&
             !isFilled(sheet, {whole.firstRow, whole.firstColumn, whole.firstRow, whole.lastColumn})) {
        ++whole.firstRow;
      }
    }
    if (!isFilled(sheet, whole)) {
      refuse("The filter cannot be switched on at " + quotedSheetName(sheet.name()) + "!" + a1(area) +
             ": there is no table around it.");
    }
    switchOn(book, sheet, whole);
  }
  sheet.markChanged();
}

}  // namespace mervane::workbook
