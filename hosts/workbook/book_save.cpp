// The saving half of Book: which parts are written anew and with what.

#include <algorithm>
#include <array>
#include <set>
#include <string_view>

#include "hosts/workbook/book.h"
#include "hosts/workbook/case_fold.h"
#include "hosts/workbook/sheet_writer.h"
#include "hosts/workbook/small_xml.h"

namespace mervane::workbook {

namespace {

constexpr std::string_view stylesType = "application/vnd.openxmlformats-officedocument.spreadsheetml.styles+xml";

/// The children of a workbook's root in the order of the format.
constexpr std::array<std::string_view, 19> order{"fileVersion",    "fileSharing",
                                                 "workbookPr",     "workbookProtection",
                                                 "bookViews",      "sheets",
                                                 "functionGroups", "externalReferences",
                                                 "definedNames",   "calcPr",
                                                 "oleSize",        "customWorkbookViews",
                                                 "pivotCaches",    "smartTagPr",
                                                 "smartTagTypes",  "webPublishing",
                                                 "fileRecoveryPr", "webPublishObjects",
                                                 "extLst"};

std::size_t rank(std::string_view name) {
  return static_cast<std::size_t>(std::find(order.begin(), order.end(), name) - order.begin());
}

void setAttribute(pugi::xml_node node, const char* name, const char* value) {
  pugi::xml_attribute attribute = node.attribute(name);
  if (!attribute) attribute = node.append_attribute(name);
  attribute = value;
}

}  // namespace

pugi::xml_node Book::inOrder(std::string_view name) {
  pugi::xml_node root = workbook_.document_element();
  if (pugi::xml_node found = childNamed(root, name)) return found;
  const std::string full = prefixOf(root) + std::string(name);
  for (const pugi::xml_node& child : root) {
    const std::size_t other = child.type() == pugi::node_element ? rank(localName(child)) : order.size();
    if (other < order.size() && other > rank(name)) return root.insert_child_before(full.c_str(), child);
  }
  return root.append_child(full.c_str());
}

void Book::setHiddenName(const Sheet& owner, std::string_view name, const std::string& reference) {
  const std::string tab = std::to_string(owner.tabPosition());
  pugi::xml_node list = childNamed(workbook_.document_element(), "definedNames");
  pugi::xml_node found;
  for (const pugi::xml_node& node : list) {
    if (name == node.attribute("name").value() && tab == node.attribute("localSheetId").value()) found = node;
  }
  if (reference.empty()) {
    if (!found) return;
    list.remove_child(found);
    // An empty list is not allowed.
    if (!list.first_child()) list.parent().remove_child(list);
  } else {
    if (!list) list = inOrder("definedNames");
    if (!found) {
      found = list.append_child((prefixOf(list) + "definedName").c_str());
      found.append_attribute("name") = std::string(name).c_str();
      found.append_attribute("localSheetId") = tab.c_str();
      found.append_attribute("hidden") = "1";
    }
    found.text().set(reference.c_str());
  }
  workbookChanged_ = true;
}

/// The names of a table's columns are its header cells; the spreadsheet takes a file where they differ for damaged.
void Book::syncTableHeaders(Sheet& owner) {
  for (TableArea& table : owner.tables()) {
    if (!table.headerWritten) continue;
    pugi::xml_document document;
    loadXml(document, package_->read(table.part), table.part);
    std::set<std::string> taken;
    std::int32_t column = table.area.firstColumn;
    for (const pugi::xml_node& node : childNamed(document.document_element(), "tableColumns")) {
      if (localName(node) != "tableColumn") continue;
      const CellAddress at{table.area.firstRow, column};
      std::string name = owner.shownText(at);
      if (name.empty()) name = "Column" + std::to_string(column - table.area.firstColumn + 1);
      const std::string wanted = name;
      for (int number = 2; !taken.insert(caseFolded(name)).second; ++number) name = wanted + std::to_string(number);
      const Variant now = owner.valueOrEmpty(at);
      if (now.getIf<std::string>() == nullptr || *now.getIf<std::string>() != name) owner.setValue(at, Variant(name));
      pugi::xml_attribute attribute = pugi::xml_node(node).attribute("name");
      attribute = name.c_str();
      ++column;
    }
    package_->put(table.part, printXml(document));
    table.headerWritten = false;
  }
}

void Book::writeSheets() {
  shared_.styles.beginSave();
  for (const std::unique_ptr<Sheet>& one : sheets_) {
    if (!one->changed()) continue;
    syncTableHeaders(*one);
    package_->putDeflated(one->part(), printSheet(*one));
  }
}

void Book::writeStyles() {
  if (!shared_.styles.needsWriting()) return;
  if (stylesPart_.empty()) {
    const std::size_t slash = workbookPart_.rfind('/');
    stylesPart_ = (slash == std::string::npos ? std::string() : workbookPart_.substr(0, slash + 1)) + "styles.xml";
    package_->addRelation(workbookPart_, "styles", stylesPart_);
  }
  package_->put(stylesPart_, shared_.styles.print(),
                package_->contentType(stylesPart_) == stylesType ? std::string_view() : stylesType);
}

void Book::writeWorkbook() {
  if (shared_.valuesChanged) {
    // Formulas that refer to what was written have old values. The spreadsheet computes them when it opens the file,
    // or, where the user has it calculate at a key only, says that they wait for the key.
    const pugi::xml_node calculation = inOrder("calcPr");
    const bool isManual = std::string_view(calculation.attribute("calcMode").value()) == "manual";
    setAttribute(calculation, isManual ? "calcCompleted" : "fullCalcOnLoad", isManual ? "0" : "1");
    workbookChanged_ = true;
  }
  if (shared_.formulasChanged) {
    for (const Relation& relation : package_->relations(workbookPart_)) {
      if (relation.kind != "calcChain") continue;
      package_->remove(relation.target);
      package_->removeRelation(workbookPart_, relation.id);
    }
  }
  if (workbookChanged_) package_->put(workbookPart_, printXml(workbook_));
}

void Book::save(const std::filesystem::path& target, const SaveWatch& watch) {
  // An application does not open on a sheet that it does not show.
  if (isHidden(active_)) activateSheet(firstActive_);
  charts_->write();
  writeSheets();
  writeStyles();
  writeWorkbook();
  package_->save(target, watch);
}

}  // namespace mervane::workbook
