#include "hosts/workbook/cell_attachments.h"

#include <cstddef>
#include <optional>
#include <string>

#include "hosts/workbook/package.h"
#include "hosts/workbook/sheet.h"
#include "hosts/workbook/small_xml.h"

namespace mervane::workbook {

namespace {

constexpr std::int64_t mostSplitCells = 100'000;

}  // namespace

void moveHyperlinks(Sheet& sheet, const CellArea& area, std::int32_t keyColumn,
                    const std::vector<std::int32_t>& order) {
  pugi::xml_document document;
  if (!sheet.frame().load("hyperlinks", document)) return;
  std::vector<std::int32_t> newRows(order.size());
  for (std::size_t place = 0; place < order.size(); ++place) {
    newRows[static_cast<std::size_t>(order[place])] = area.firstRow + static_cast<std::int32_t>(place);
  }
  pugi::xml_node links = document.document_element();
  bool changed = false;
  for (pugi::xml_node link = links.first_child(); link;) {
    const pugi::xml_node next = link.next_sibling();
    const std::optional<CellArea> ref = parseArea(link.attribute("ref").value());
    const bool reachesOver = ref && ref->firstRow <= area.firstRow && ref->lastRow >= area.lastRow;
    const bool isOfKeys = ref && ref->firstColumn == keyColumn && ref->lastColumn == keyColumn;
    if (ref && ref->meets(area) && !reachesOver && !isOfKeys && ref->cells() <= mostSplitCells) {
      // One link over several cells becomes one for each, since the cells may come apart.
      for (std::int32_t row = ref->firstRow; row <= ref->lastRow; ++row) {
        for (std::int32_t column = ref->firstColumn; column <= ref->lastColumn; ++column) {
          const bool moves = column != keyColumn && area.contains(CellAddress{row, column});
          const CellAddress to{moves ? newRows[static_cast<std::size_t>(row - area.firstRow)] : row, column};
          links.insert_copy_before(link, link).attribute("ref") = a1(to).c_str();
        }
      }
      links.remove_child(link);
      changed = true;
    }
    link = next;
  }
  if (changed) sheet.frame().set("hyperlinks", printFragment(links));
}

std::vector<CellAddress> cellsWithComments(Sheet& sheet, const CellArea& area) {
  std::vector<CellAddress> cells;
  const Package& package = *sheet.shared().package;
  for (const Relation& relation : package.relations(sheet.part())) {
    if (relation.kind != "comments" || relation.external || !package.has(relation.target)) continue;
    pugi::xml_document document;
    loadXml(document, package.read(relation.target), relation.target);
    for (const pugi::xml_node& comment : childNamed(document.document_element(), "commentList").children()) {
      const std::optional<CellAddress> at = parseCell(comment.attribute("ref").value());
      if (at && area.contains(*at)) cells.push_back(*at);
    }
  }
  return cells;
}

}  // namespace mervane::workbook
