#include "hosts/workbook/book_facts.h"

#include <algorithm>
#include <set>
#include <utility>

#include "hosts/workbook/book.h"
#include "hosts/workbook/package.h"
#include "hosts/workbook/sheet.h"
#include "hosts/workbook/small_xml.h"

namespace mervane::workbook {

namespace {

std::vector<guard::Drawing> drawingsOf(Book& book, const Sheet& sheet) {
  const std::int32_t position = book.positionOf(sheet);
  const Geometry& geometry = book.geometry(position);
  mervane::charts::ChartStore& store = book.charts().store();
  std::vector<guard::Drawing> drawings;
  for (const auto& item : store.items(position)) {
    const mervane::charts::Box box = store.boxOf(position, *item);
    const AnchorPoint from = geometry.anchorAt(box.left, box.top);
    const AnchorPoint to = geometry.anchorAt(box.left + box.width, box.top + box.height);
    guard::Drawing drawing{
        item->chart != nullptr, std::nullopt, {from.row + 1, from.column + 1, to.row + 1, to.column + 1}};
    if (item->chart != nullptr && item->chart->title) drawing.title = item->chart->title->text;
    drawings.push_back(std::move(drawing));
  }
  return drawings;
}

std::vector<guard::Table> tablesOf(Sheet& sheet) {
  std::vector<guard::Table> tables;
  for (const TableArea& table : sheet.tables()) {
    pugi::xml_document document;
    loadXml(document, sheet.shared().package->read(table.part), table.part);
    const pugi::xml_node root = document.document_element();
    tables.push_back({root.attribute("displayName").value(), table.area, table.hasHeader,
                      wholeNumber(root.attribute("totalsRowCount"), 0) > 0, !childNamed(root, "autoFilter").empty()});
  }
  return tables;
}

std::optional<guard::Filter> filterOf(Sheet& sheet) {
  pugi::xml_document document;
  if (!sheet.frame().load("autoFilter", document)) return std::nullopt;
  const pugi::xml_node root = document.document_element();
  const std::optional<CellArea> area = parseArea(root.attribute("ref").value());
  return guard::Filter{area.value_or(CellArea{}), !childNamed(root, "filterColumn").empty()};
}

std::optional<CellAddress> firstLocked(Sheet& sheet, const CellArea& area) {
  if (!sheet.isProtected()) return std::nullopt;
  for (std::int32_t row = area.firstRow; row <= area.lastRow; ++row) {
    for (std::int32_t column = area.firstColumn; column <= area.lastColumn; ++column) {
      const CellAddress at{row, column};
      if (sheet.shared().styles.isLocked(sheet.styleOf(at))) return at;
    }
  }
  return std::nullopt;
}

void keepFirst(std::optional<CellAddress>& first, CellAddress at) {
  if (!first || at < *first) first = at;
}

/// Whether a text of the cell would be taken for a formula if it were written.
bool looksLikeFormula(const Sheet& sheet, const Cell& cell) {
  if (cell.kind != CellKind::text || sheet.shared().styles.hasTextMark(cell.style)) return false;
  const std::string_view text = sheet.shared().texts.text(static_cast<std::uint32_t>(cell.index));
  return text.size() > 1 && text.front() == '=';
}

}  // namespace

std::vector<guard::PivotTable> pivotTablesOf(Sheet& sheet) {
  std::vector<guard::PivotTable> tables;
  const Package& package = *sheet.shared().package;
  for (const Relation& relation : package.relations(sheet.part())) {
    if (relation.kind != "pivotTable" || relation.external || !package.has(relation.target)) continue;
    pugi::xml_document document;
    loadXml(document, package.read(relation.target), relation.target);
    const pugi::xml_node root = document.document_element();
    const pugi::xml_node location = childNamed(root, "location");
    std::optional<CellArea> area = parseArea(location.attribute("ref").value());
    if (!area) continue;
    // The fields by which a whole table is filtered stand above it, with an empty row in between.
    const std::int32_t fields = wholeNumber(location.attribute("rowPageCount"), 0);
    if (fields > 0) area->firstRow = std::max(1, area->firstRow - fields - 1);
    tables.push_back({root.attribute("name").value(), *area});
  }
  return tables;
}

guard::SheetFacts sheetFacts(Book& book, Sheet& sheet) {
  guard::SheetFacts facts;
  facts.used = sheet.cells().usedArea(false);
  facts.drawings = drawingsOf(book, sheet);
  facts.tables = tablesOf(sheet);
  facts.pivotTables = pivotTablesOf(sheet);
  facts.filter = filterOf(sheet);
  facts.protection = {sheet.allows("sort"), sheet.allows("formatCells"), sheet.allows("formatColumns"),
                      sheet.allows("autoFilter"), sheet.allows("objects")};
  return facts;
}

guard::AreaFacts areaFacts(Sheet& sheet, const CellArea& area) {
  guard::AreaFacts facts;
  std::set<CellAddress> filled;
  const CellStore& cells = sheet.cells();
  cells.forEachCell(area, [&](std::int32_t row, std::int32_t column, const Cell& cell) {
    if (cell.kind == CellKind::empty) return true;
    const CellAddress at{row, column};
    ++facts.filledCount;
    filled.insert(at);
    if (filled.size() > guard::AreaFacts::mostFilled) filled.erase(std::prev(filled.end()));
    if (cell.kind == CellKind::formula) {
      keepFirst(facts.formula, at);
      if (cells.formulaOf(cell).cachedKind == CellKind::empty) keepFirst(facts.unknownFormula, at);
    } else if (looksLikeFormula(sheet, cell)) {
      keepFirst(facts.equalsText, at);
    }
    return true;
  });
  for (const CellAddress& at : filled) facts.filled.push_back({at, sheet.shownText(at)});
  facts.locked = firstLocked(sheet, area);
  std::ranges::copy_if(sheet.mergedAreas(), std::back_inserter(facts.merged),
                       [&](const CellArea& one) { return one.meets(area); });
  std::ranges::copy_if(sheet.arrays(), std::back_inserter(facts.arrays),
                       [&](const CellArea& one) { return one.meets(area); });
  return facts;
}

}  // namespace mervane::workbook
