#include "hosts/workbook/charts/drawing.h"

#include <algorithm>
#include <pugixml.hpp>

#include "hosts/charts/call.h"
#include "hosts/workbook/charts/namespaces.h"
#include "hosts/workbook/charts/read_chart.h"
#include "hosts/workbook/charts/write_chart.h"
#include "hosts/workbook/charts/xml_text.h"

namespace mervane::workbook::charts {
namespace {

// Kinds of shapes as the object model numbers them.
constexpr std::int32_t shapeIsAutoShape = 1;
constexpr std::int32_t shapeIsGroup = 6;
constexpr std::int32_t shapeIsPicture = 13;
constexpr std::int32_t shapeIsTextBox = 17;
constexpr std::int32_t shapeIsMixed = -2;

// Where the application puts a chart that is moved in from its own sheet is its own affair; here, near the corner.
constexpr double newChartLeft = 96.0;
constexpr double newChartTop = 60.0;

std::int32_t shapeType(std::string_view local, const pugi::xml_node& node) {
  if (local == "sp") {
    return attribute(child(child(node, "nvSpPr"), "cNvSpPr"), "txBox") == "1" ? shapeIsTextBox : shapeIsAutoShape;
  }
  if (local == "cxnSp") return shapeIsAutoShape;
  if (local == "grpSp") return shapeIsGroup;
  if (local == "pic") return shapeIsPicture;
  return shapeIsMixed;
}

bool isObjectName(std::string_view local) {
  return local == "sp" || local == "cxnSp" || local == "grpSp" || local == "pic" || local == "graphicFrame" ||
         local == "contentPart" || local == "AlternateContent";
}

/// The name in nvSpPr, nvPicPr or the like.
std::string shapeName(const pugi::xml_node& node) {
  for (const pugi::xml_node properties : node.children()) {
    if (localName(properties.name()).starts_with("nv")) return attribute(child(properties, "cNvPr"), "name");
  }
  return {};
}

/// Highest id of the shapes below, groups and alternatives included.
std::uint32_t highestId(const pugi::xml_node& root) {
  std::uint32_t highest = 1;
  pugi::xml_node node = root;
  while (node) {
    if (localName(node.name()) == "cNvPr") {
      for (const pugi::xml_attribute one : node.attributes()) {
        if (localName(one.name()) == "id") highest = std::max(highest, one.as_uint());
      }
    }
    if (node.first_child()) {
      node = node.first_child();
      continue;
    }
    while (node && node != root && !node.next_sibling()) node = node.parent();
    if (!node || node == root) break;
    node = node.next_sibling();
  }
  return highest;
}

/// UTF-8 as it is; another encoding is converted, with a declaration that fits.
std::string asUtf8(std::string text, const pugi::xml_document& document) {
  const auto first = text.empty() ? '\0' : text.front();
  const bool isWide = first == '\xFE' || first == '\xFF' || first == '\0' || (text.size() > 1 && text[1] == '\0');
  return isWide ? partText(document) : text;
}

bool isReferredTo(const Package& package, const std::string& part) {
  std::vector<std::string> sources = package.names();
  sources.emplace_back();
  return std::any_of(sources.begin(), sources.end(), [&](const std::string& source) {
    const std::vector<Relation> relations = package.relations(source);
    return std::any_of(relations.begin(), relations.end(),
                       [&](const Relation& one) { return !one.external && one.target == part; });
  });
}

}  // namespace

void removeWithSubParts(Package& package, const std::string& part) {
  if (!package.has(part) || isReferredTo(package, part)) return;
  const std::vector<Relation> relations = package.relations(part);
  package.remove(part);
  for (const Relation& relation : relations) {
    if (!relation.external) removeWithSubParts(package, relation.target);
  }
}

Drawing::Drawing(ChartHost& host, std::int32_t sheet) : host_(host), sheet_(sheet) {
  relation_ = host_.drawingRelation(sheet_);
  Package& package = host_.package();
  for (const Relation& relation : package.relations(host_.sheetPart(sheet_))) {
    if (!relation_.empty() && relation.id == relation_ && !relation.external) part_ = relation.target;
  }
  if (!part_.empty()) {
    if (!package.has(part_)) {
      refuse("The drawing of the sheet \"" + host_.sheetName(sheet_) + "\" is missing from the file: " + part_ + ".");
    }
    read(package.read(part_));
    return;
  }
  const Namespaces& namespaces = namespacesOf(package.isStrict());
  head_ = std::string("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n<xdr:wsDr xmlns:xdr=\"") +
          namespaces.sheetDrawing + "\" xmlns:a=\"" + namespaces.drawing + "\">";
  tail_ = "</xdr:wsDr>";
}

void Drawing::read(const std::string& bytes) {
  pugi::xml_document document;
  const pugi::xml_parse_result result =
      document.load_buffer(bytes.data(), bytes.size(), pugi::parse_default | pugi::parse_ws_pcdata);
  if (!result) refuse("The drawing part " + part_ + " is damaged: " + result.description() + ".");
  const std::string text = asUtf8(bytes, document);
  const ElementOutline outline = outlineOf(text);
  highestId_ = highestId(document.document_element());

  head_ = text.substr(0, outline.tagEnd);
  tail_ = text.substr(outline.contentEnd);
  if (!outline.hasEndTag) {
    head_.erase(head_.rfind('/'), 1);
    tail_ = "</" + outline.name + ">" + text.substr(outline.end);
  }
  std::size_t copied = outline.tagEnd;
  pugi::xml_node node = document.document_element().first_child();
  for (const ElementSpan& span : outline.children) {
    while (node && node.type() != pugi::node_element) node = node.next_sibling();
    if (isAnchorName(localName(span.name))) {
      const std::string anchorText = text.substr(span.begin, span.end - span.begin);
      if (const auto item = readItem(anchorText, node)) {
        if (span.begin > copied) segments_.emplace_back(text.substr(copied, span.begin - copied));
        segments_.emplace_back(item);
        items_.push_back(item);
        copied = span.end;
      }
    }
    node = node.next_sibling();
  }
  if (outline.contentEnd > copied) segments_.emplace_back(text.substr(copied, outline.contentEnd - copied));
}

std::shared_ptr<FileItem> Drawing::readItem(const std::string& anchorText, const pugi::xml_node& anchor) const {
  auto item = std::make_shared<FileItem>();
  item->xml = anchorText;
  item->anchor = readAnchor(anchor);
  for (const pugi::xml_node node : anchor.children()) {
    const std::string_view local = localName(node.name());
    if (!isObjectName(local)) continue;
    item->type = shapeType(local, node);
    item->name = shapeName(node);
    // NB: charts of newer kinds come as alternatives with a fallback; they are none of ours and stay as they are.
    if (local == "graphicFrame") readGraphicFrame(*item, node);
    return item;
  }
  return nullptr;
}

void Drawing::readGraphicFrame(FileItem& item, const pugi::xml_node& frame) const {
  const pugi::xml_node data = child(child(frame, "graphic"), "graphicData");
  const std::string uri = attribute(data, "uri");
  if (uri != transitionalNamespaces.chart && uri != strictNamespaces.chart) return;
  const std::string id = attribute(child(data, "chart"), "id");
  for (const Relation& relation : host_.package().relations(part_)) {
    if (relation.id != id || relation.external || !host_.package().has(relation.target)) continue;
    item.chart = readChart(host_, host_.package().read(relation.target));
    if (!item.chart) return;  // A damaged chart part is left alone.
    item.type = number::shapeIsChart;
    item.chart->sheet = sheet_;
    item.chart->name = item.name;
    item.chartPart = relation.target;
    item.relation = id;
  }
}

std::shared_ptr<FileItem> Drawing::itemOf(const Chart& chart) const {
  const auto found = std::find_if(items_.begin(), items_.end(),
                                  [&](const std::shared_ptr<FileItem>& item) { return item->chart.get() == &chart; });
  return found == items_.end() ? nullptr : *found;
}

Box Drawing::boxOf(const FileItem& item) const {
  return item.moved ? *item.moved : charts::boxOf(item.anchor, host_.geometry(sheet_));
}

void Drawing::nameNewChart(Chart& chart) const {
  for (int i = 1;; ++i) {
    const std::string name = "Chart " + std::to_string(i);
    if (std::none_of(items_.begin(), items_.end(), [&](const auto& item) { return item->name == name; })) {
      chart.name = name;
      return;
    }
  }
}

void Drawing::add(const std::shared_ptr<Chart>& chart) {
  nameNewChart(*chart);
  auto item = std::make_shared<FileItem>();
  item->name = chart->name;
  item->chart = chart;
  item->moved = Box{newChartLeft, newChartTop, defaultChartWidth, defaultChartHeight};
  segments_.emplace_back(item);
  items_.push_back(item);
  changed_ = true;
}

void Drawing::move(FileItem& item, const Box& box) {
  item.moved = box;
  changed_ = true;
}

void Drawing::remove(const std::shared_ptr<FileItem>& item) {
  item->deleted = true;
  if (item->chart) item->chart->deleted = true;
  std::erase(items_, item);
  std::erase_if(segments_, [&](const Segment& segment) {
    const auto* one = std::get_if<std::shared_ptr<FileItem>>(&segment);
    return one != nullptr && *one == item;
  });
  if (!item->chartPart.empty()) removed_.push_back(item);
  changed_ = true;
}

bool Drawing::holdsNothing() const {
  return std::all_of(segments_.begin(), segments_.end(), [](const Segment& segment) {
    const auto* between = std::get_if<std::string>(&segment);
    return between != nullptr && between->find_first_not_of(" \t\r\n") == std::string::npos;
  });
}

void Drawing::removeDeletedCharts() {
  Package& package = host_.package();
  for (const auto& item : removed_) {
    package.removeRelation(part_, item->relation);
    removeWithSubParts(package, item->chartPart);
  }
  removed_.clear();
}

void Drawing::writeCharts() {
  Package& package = host_.package();
  for (const auto& item : items_) {
    if (!item->chart || item->chart->foreign) continue;
    const Box box = boxOf(*item);
    const std::string content = chartPart(host_, *item->chart, {box.width, box.height}, package.isStrict());
    if (item->chartPart.empty()) item->chartPart = package.freeName("xl/charts/chart", ".xml");
    package.put(item->chartPart, content, chartContentType);
    if (item->relation.empty()) item->relation = package.addRelation(part_, "chart", item->chartPart);
    changed_ = true;
  }
}

std::string Drawing::newAnchor(const FileItem& item, std::uint32_t id) const {
  const Namespaces& namespaces = namespacesOf(host_.package().isStrict());
  const Anchor anchor = anchorFor(Anchor::Kind::twoCells, boxOf(item), host_.geometry(sheet_));
  pugi::xml_document document;
  pugi::xml_node node = document.append_child("xdr:twoCellAnchor");
  // The part may have other prefixes for the same addresses, so the anchor brings its own.
  node.append_attribute("xmlns:xdr") = namespaces.sheetDrawing;
  const auto point = [&](const char* name, const AnchorPoint& where) {
    pugi::xml_node corner = node.append_child(name);
    corner.append_child("xdr:col").text() = where.column;
    corner.append_child("xdr:colOff").text() = static_cast<long long>(where.columnOffset);
    corner.append_child("xdr:row").text() = where.row;
    corner.append_child("xdr:rowOff").text() = static_cast<long long>(where.rowOffset);
  };
  point("xdr:from", anchor.from);
  point("xdr:to", anchor.to);

  pugi::xml_node frame = node.append_child("xdr:graphicFrame");
  frame.append_attribute("macro") = "";
  pugi::xml_node properties = frame.append_child("xdr:nvGraphicFramePr");
  pugi::xml_node common = properties.append_child("xdr:cNvPr");
  common.append_attribute("id") = id;
  common.append_attribute("name") = printable(item.name).c_str();
  properties.append_child("xdr:cNvGraphicFramePr");
  pugi::xml_node transform = frame.append_child("xdr:xfrm");
  pugi::xml_node offset = transform.append_child("a:off");
  offset.append_attribute("x") = "0";
  offset.append_attribute("y") = "0";
  pugi::xml_node extent = transform.append_child("a:ext");
  extent.append_attribute("cx") = "0";
  extent.append_attribute("cy") = "0";
  transform.append_attribute("xmlns:a") = namespaces.drawing;
  pugi::xml_node graphic = frame.append_child("a:graphic");
  graphic.append_attribute("xmlns:a") = namespaces.drawing;
  pugi::xml_node data = graphic.append_child("a:graphicData");
  data.append_attribute("uri") = namespaces.chart;
  pugi::xml_node chart = data.append_child("c:chart");
  chart.append_attribute("xmlns:c") = namespaces.chart;
  chart.append_attribute("xmlns:r") = namespaces.relations;
  chart.append_attribute("r:id") = item.relation.c_str();
  node.append_child("xdr:clientData");

  const std::string text = partText(document);
  return text.substr(text.find('\n') + 1);
}

std::string Drawing::text() const {
  std::string text = head_;
  std::uint32_t id = highestId_;
  for (const Segment& segment : segments_) {
    if (const auto* between = std::get_if<std::string>(&segment)) {
      text += *between;
      continue;
    }
    const FileItem& item = *std::get<std::shared_ptr<FileItem>>(segment);
    if (item.xml.empty()) {
      text += newAnchor(item, ++id);
    } else if (item.moved) {
      text += movedAnchor(item.xml, anchorFor(item.anchor.kind, *item.moved, host_.geometry(sheet_)));
    } else {
      text += item.xml;
    }
  }
  return text + tail_;
}

void Drawing::write() {
  const bool hasOwn =
      std::any_of(items_.begin(), items_.end(), [](const auto& item) { return item->chart && !item->chart->foreign; });
  if (!changed_ && !hasOwn) return;
  Package& package = host_.package();
  const std::string& sheetPart = host_.sheetPart(sheet_);
  if (holdsNothing()) {
    if (part_.empty()) return;
    removeDeletedCharts();
    package.removeRelation(sheetPart, relation_);
    host_.setDrawingRelation(sheet_, {});
    removeWithSubParts(package, part_);
    part_.clear();
    relation_.clear();
    changed_ = false;
    return;
  }
  if (part_.empty()) {
    part_ = package.freeName("xl/drawings/drawing", ".xml");
    // The part must exist before relations can start from it.
    package.put(part_, head_ + tail_, drawingContentType);
    relation_ = package.addRelation(sheetPart, "drawing", part_);
    host_.setDrawingRelation(sheet_, relation_);
  }
  removeDeletedCharts();
  writeCharts();
  package.put(part_, text());
  changed_ = false;
}

}  // namespace mervane::workbook::charts
