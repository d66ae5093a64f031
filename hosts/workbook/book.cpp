#include "hosts/workbook/book.h"

#include <algorithm>
#include <array>
#include <utility>

#include "hosts/workbook/case_fold.h"
#include "hosts/workbook/file_bytes.h"
#include "hosts/workbook/font_metrics.h"
#include "hosts/workbook/objects/range_object.h"
#include "hosts/workbook/refuse.h"
#include "hosts/workbook/sheet_view.h"
#include "hosts/workbook/small_xml.h"

namespace mervane::workbook {

Book::Book(std::unique_ptr<Package> package) : package_(std::move(package)) {
  shared_.package = package_.get();
  readWorkbook();
  charts_ = makeChartService(*this);
}

Book::~Book() = default;

std::string Book::partOfKind(std::string_view kind) const {
  for (const Relation& relation : package_->relations(workbookPart_)) {
    if (relation.kind == kind && !relation.external) return relation.target;
  }
  return {};
}

void Book::readWorkbook() {
  for (const Relation& relation : package_->relations("")) {
    if (relation.kind == "officeDocument") workbookPart_ = relation.target;
  }
  const std::string file = shown(package_->path());
  if (workbookPart_.empty())
    refuse("The file \"" + file + "\" is no workbook: nothing in it says where its sheets are.");
  loadXml(workbook_, package_->read(workbookPart_), workbookPart_);
  const pugi::xml_node root = workbook_.document_element();
  if (localName(root) != "workbook") refuse("The file \"" + file + "\" is no workbook.");
  shared_.from1904 = isTrue(childNamed(root, "workbookPr").attribute("date1904"));
  if (std::string_view(childNamed(root, "calcPr").attribute("refMode").value()) == "R1C1") referenceStyle = -4150;

  stylesPart_ = partOfKind("styles");
  // Some writers name a part of formats and leave it out.
  shared_.styles.load(package_->has(stylesPart_) ? package_->read(stylesPart_) : std::string(), stylesPart_);
  shared_.digitPixels = digitWidth(shared_.styles.fontName(0), shared_.styles.fontSize(0));
  shared_.texts.load(*package_, partOfKind("sharedStrings"));
  readSheets(root);
  if (sheets_.empty()) refuse("The workbook \"" + file + "\" has no worksheet.");
  readNames(root);
}

void Book::readSheets(const pugi::xml_node& root) {
  const std::vector<Relation> relations = package_->relations(workbookPart_);
  std::int32_t tab = 0;
  const std::int32_t activeTab =
      wholeNumber(childNamed(childNamed(root, "bookViews"), "workbookView").attribute("activeTab"), 0);
  for (const pugi::xml_node& node : childNamed(root, "sheets")) {
    if (localName(node) != "sheet") continue;
    const std::string_view id = attributeNamed(node, "id").value();
    const auto relation =
        std::find_if(relations.begin(), relations.end(), [&](const Relation& one) { return one.id == id; });
    // Sheets of charts, dialogs and old macros are kept but are no worksheets.
    if (relation != relations.end() && relation->kind == "worksheet" && package_->has(relation->target)) {
      const std::string part = caseFolded(relation->target);
      for (const auto& other : sheets_) {
        if (caseFolded(other->part()) != part) continue;
        refuse("The workbook \"" + shown(package_->path()) + "\" is damaged: its sheets \"" + other->name() +
               "\" and \"" + node.attribute("name").value() + "\" are the same part of the file.");
      }
      if (tab == activeTab) active_ = firstActive_ = sheetCount();
      sheets_.push_back(std::make_unique<Sheet>(shared_, node.attribute("name").value(), relation->target, tab));
      foldedNames_.push_back(caseFolded(sheets_.back()->name()));
    }
    ++tab;
  }
}

void Book::readNames(const pugi::xml_node& root) {
  for (const pugi::xml_node& node : childNamed(root, "definedNames")) {
    if (localName(node) != "definedName") continue;
    const std::string name = node.attribute("name").value();
    names_.push_back({name, caseFolded(name), node.text().get(), wholeNumber(node.attribute("localSheetId"), -1)});
  }
}

std::int32_t Book::positionOf(const Sheet& sheet) const {
  for (std::size_t i = 0; i < sheets_.size(); ++i) {
    if (sheets_[i].get() == &sheet) return static_cast<std::int32_t>(i);
  }
  return 0;
}

const std::string& Book::sheetName(std::int32_t position) const {
  return sheets_[static_cast<std::size_t>(position)]->name();
}

const std::string& Book::sheetPart(std::int32_t position) const {
  return sheets_[static_cast<std::size_t>(position)]->part();
}

std::optional<std::int32_t> Book::sheetNamed(std::string_view name) const {
  const auto found = std::find(foldedNames_.begin(), foldedNames_.end(), caseFolded(name));
  if (found == foldedNames_.end()) return std::nullopt;
  return static_cast<std::int32_t>(found - foldedNames_.begin());
}

SheetArea Book::resolve(std::string_view reference, std::int32_t sheetWithout) const {
  const auto fail = [&]() -> SheetArea {
    refuse("\"" + std::string(reference) + "\" names no cells of this workbook.");
  };
  while (reference.starts_with(' ')) reference.remove_prefix(1);
  while (reference.ends_with(' ')) reference.remove_suffix(1);
  if (const std::optional<ReferenceText> text = parseReference(reference)) {
    if (!text->hasSheet) return {sheetWithout, text->area};
    const std::optional<std::int32_t> sheet = sheetNamed(text->sheet);
    return sheet ? SheetArea{*sheet, text->area} : fail();
  }
  std::string_view name = reference;
  std::int32_t tab = sheets_[static_cast<std::size_t>(sheetWithout)]->tabPosition();
  if (const std::size_t mark = reference.rfind('!'); mark != std::string_view::npos) {
    name = reference.substr(mark + 1);
    // The sheet part is read by giving it a cell.
    const std::optional<ReferenceText> owner = parseReference(std::string(reference.substr(0, mark)) + "!A1");
    const std::optional<std::int32_t> sheet = owner ? sheetNamed(owner->sheet) : std::nullopt;
    if (!sheet) return fail();
    tab = sheets_[static_cast<std::size_t>(*sheet)]->tabPosition();
  }
  const std::string folded = caseFolded(name);
  const DefinedName* found = nullptr;
  for (const DefinedName& one : names_) {
    if (one.folded != folded) continue;
    if (one.tabPosition == tab || (one.tabPosition < 0 && found == nullptr)) found = &one;
  }
  if (found == nullptr) return fail();
  const std::optional<ReferenceText> target = parseReference(found->reference);
  const std::optional<std::int32_t> sheet = target && target->hasSheet ? sheetNamed(target->sheet) : std::nullopt;
  return sheet ? SheetArea{*sheet, target->area} : fail();
}

void Book::activateSheet(std::int32_t position) {
  if (position == active_) return;
  setTabSelected(sheet(active_), false);
  active_ = position;
  setTabSelected(sheet(active_), true);
  pugi::xml_node views = childNamed(workbook_.document_element(), "bookViews");
  pugi::xml_node view = childNamed(views, "workbookView");
  if (!view) {
    if (!views) views = inOrder("bookViews");
    view = views.append_child((prefixOf(views) + "workbookView").c_str());
  }
  pugi::xml_attribute tab = view.attribute("activeTab");
  if (!tab) tab = view.append_attribute("activeTab");
  tab = sheet(active_).tabPosition();
  workbookChanged_ = true;
}

bool Book::isHidden(std::int32_t position) const {
  const std::string& name = sheetName(position);
  for (const pugi::xml_node& node : childNamed(workbook_.document_element(), "sheets")) {
    if (name != node.attribute("name").value()) continue;
    const std::string_view state = node.attribute("state").value();
    return state == "hidden" || state == "veryHidden";
  }
  return false;
}

void Book::setTabSelected(Sheet& sheet, bool selected) {
  workbook::setTabSelected(sheet, selected);
}

void Book::select(const SheetArea& area) {
  if (area.sheet != active_) {
    refuse("The cells " + absoluteA1(sheetName(area.sheet), area.area) +
           " cannot be selected: their sheet is not the active one.");
  }
  workbook::select(sheet(area.sheet), area.area);
}

CellAddress Book::activeCell() {
  return workbook::activeCell(sheet(active_));
}

Variant Book::cellValue(std::int32_t position, CellAddress cell) {
  return sheet(position).valueOrEmpty(cell);
}

std::string Book::cellNumberFormat(std::int32_t position, CellAddress cell) {
  return shared_.styles.numberFormat(sheet(position).styleOf(cell));
}

const Geometry& Book::geometry(std::int32_t position) {
  return sheet(position).geometry();
}

std::optional<SheetArea> Book::areaOf(const Variant& range) const {
  if (!range.isObject()) return std::nullopt;
  const auto* object = dynamic_cast<const RangeObject*>(range.object().get());
  if (object == nullptr || &object->book() != this) return std::nullopt;
  return SheetArea{object->sheetPosition(), object->area()};
}

sheet::ObjectRef Book::rangeObject(const SheetArea& area) {
  return RangeObject::make(*this, area);
}

std::string Book::drawingRelation(std::int32_t position) {
  pugi::xml_document document;
  if (!sheet(position).frame().load("drawing", document)) return {};
  return attributeNamed(document.document_element(), "id").value();
}

void Book::setDrawingRelation(std::int32_t position, const std::string& id) {
  Sheet& target = sheet(position);
  if (id.empty()) {
    target.frame().remove("drawing");
  } else {
    // The prefix of relation ids is declared on the element itself, so that the root need not have it.
    target.frame().set("drawing", "<" + target.frame().prefix + "drawing xmlns:r=\"" +
                                      std::string(package_->relationNamespace()) + "\" r:id=\"" + escaped(id) + "\"/>");
  }
  target.markChanged();
}

void Book::requireUnprotectedObjects(std::int32_t position) {
  sheet(position).requirePermission("objects", "changes of charts");
}

void Book::note(std::string text) {
  shared_.notes.push_back(std::move(text));
}

bool Book::changed() const {
  return workbookChanged_ ||
         std::any_of(sheets_.begin(), sheets_.end(), [](const auto& one) { return one->changed(); });
}

}  // namespace mervane::workbook
