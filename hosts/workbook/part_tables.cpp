#include "hosts/workbook/part_tables.h"

#include <algorithm>
#include <utility>

#include "hosts/workbook/refuse.h"
#include "hosts/workbook/small_xml.h"

namespace mervane::workbook {

namespace {

bool sameName(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](char x, char y) { return lower(x) == lower(y); });
}

std::vector<std::string> segments(std::string_view path) {
  std::vector<std::string> result;
  while (!path.empty()) {
    const std::size_t slash = path.find('/');
    const std::string_view one = path.substr(0, slash);
    path.remove_prefix(slash == std::string_view::npos ? path.size() : slash + 1);
    if (one == "..") {
      if (!result.empty()) result.pop_back();
    } else if (!one.empty() && one != ".") {
      result.emplace_back(one);
    }
  }
  return result;
}

std::string joined(const std::vector<std::string>& parts, std::size_t from) {
  std::string result;
  for (std::size_t i = from; i < parts.size(); ++i) {
    if (!result.empty()) result += '/';
    result += parts[i];
  }
  return result;
}

std::string percentDecoded(std::string_view text) {
  const auto digit = [](char c) -> int {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
  };
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 2 < text.size() && digit(text[i + 1]) >= 0 && digit(text[i + 2]) >= 0) {
      result += static_cast<char>(digit(text[i + 1]) * 16 + digit(text[i + 2]));
      i += 2;
    } else {
      result += text[i];
    }
  }
  return result;
}

/// Some writers put the separators of their own system into names.
std::string withSlashes(std::string_view name) {
  std::string result(name);
  std::replace(result.begin(), result.end(), '\\', '/');
  return result;
}

/// A target as a part name: relative ones start at the folder of the part.
std::string resolved(std::string_view part, std::string_view asWritten) {
  const std::string target = withSlashes(asWritten);
  std::string path;
  if (!target.starts_with('/')) {
    const std::size_t slash = part.rfind('/');
    if (slash != std::string_view::npos) path = part.substr(0, slash + 1);
  }
  path += percentDecoded(target);
  return joined(segments(path), 0);
}

std::string relativeTo(std::string_view part, std::string_view target) {
  std::vector<std::string> from = segments(part);
  if (!from.empty()) from.pop_back();
  const std::vector<std::string> to = segments(target);
  std::size_t common = 0;
  while (common < from.size() && common + 1 < to.size() && from[common] == to[common]) ++common;
  std::string result;
  for (std::size_t i = common; i < from.size(); ++i) result += "../";
  return result + joined(to, common);
}

}  // namespace

std::string_view relationBase(bool strict) noexcept {
  return strict ? "http://purl.oclc.org/ooxml/officeDocument/relationships"
                : "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
}

void ContentTypes::load(std::string_view content, std::string_view tableName) {
  loadXml(document_, content, tableName);
}

pugi::xml_node ContentTypes::overrideOf(std::string_view part) const {
  for (const pugi::xml_node& node : document_.document_element()) {
    if (localName(node) != "Override") continue;
    if (sameName(joined(segments(withSlashes(node.attribute("PartName").value())), 0), part)) return node;
  }
  return {};
}

std::string ContentTypes::of(std::string_view part) const {
  if (const pugi::xml_node own = overrideOf(part)) return own.attribute("ContentType").value();
  const std::size_t dot = part.rfind('.');
  if (dot == std::string_view::npos) return {};
  return defaultOf(part.substr(dot + 1)).attribute("ContentType").value();
}

pugi::xml_node ContentTypes::defaultOf(std::string_view extension) const {
  for (const pugi::xml_node& node : document_.document_element()) {
    if (localName(node) == "Default" && sameName(node.attribute("Extension").value(), extension)) return node;
  }
  return {};
}

void ContentTypes::setForExtension(std::string_view extension, std::string_view type) {
  if (defaultOf(extension)) return;
  pugi::xml_node root = document_.document_element();
  // The spreadsheet puts these in front of the types of single parts.
  pugi::xml_node added = root.prepend_child((prefixOf(root) + "Default").c_str());
  added.append_attribute("Extension") = std::string(extension).c_str();
  added.append_attribute("ContentType") = std::string(type).c_str();
  changed_ = true;
}

void ContentTypes::set(std::string_view part, std::string_view type) {
  if (of(part) == type) return;
  pugi::xml_node own = overrideOf(part);
  if (!own) {
    pugi::xml_node root = document_.document_element();
    own = root.append_child((prefixOf(root) + "Override").c_str());
    own.append_attribute("PartName") = ("/" + std::string(part)).c_str();
    own.append_attribute("ContentType");
  }
  own.attribute("ContentType") = std::string(type).c_str();
  changed_ = true;
}

void ContentTypes::drop(std::string_view part) {
  if (const pugi::xml_node own = overrideOf(part)) {
    document_.document_element().remove_child(own);
    changed_ = true;
  }
}

std::string ContentTypes::print() const {
  return printXml(document_);
}

RelationTable::RelationTable(std::string part) : part_(std::move(part)) {
  document_.append_child("Relationships").append_attribute("xmlns") =
      "http://schemas.openxmlformats.org/package/2006/relationships";
}

void RelationTable::load(std::string_view content, std::string_view tableName) {
  document_.reset();
  loadXml(document_, content, tableName);
}

std::vector<Relation> RelationTable::all() const {
  std::vector<Relation> result;
  for (const pugi::xml_node& node : document_.document_element()) {
    if (localName(node) != "Relationship") continue;
    Relation relation;
    relation.id = node.attribute("Id").value();
    relation.type = node.attribute("Type").value();
    relation.kind = relation.type.substr(relation.type.rfind('/') + 1);
    relation.external = std::string_view(node.attribute("TargetMode").value()) == "External";
    const std::string_view target = node.attribute("Target").value();
    relation.target = relation.external ? std::string(target) : resolved(part_, target);
    result.push_back(std::move(relation));
  }
  return result;
}

std::string RelationTable::add(std::string_view type, std::string_view target) {
  const std::vector<Relation> existing = all();
  std::string id;
  for (std::size_t number = existing.size() + 1;; ++number) {
    id = "rId" + std::to_string(number);
    if (std::none_of(existing.begin(), existing.end(), [&](const Relation& one) { return one.id == id; })) break;
  }
  pugi::xml_node root = document_.document_element();
  pugi::xml_node node = root.append_child((prefixOf(root) + "Relationship").c_str());
  node.append_attribute("Id") = id.c_str();
  node.append_attribute("Type") = std::string(type).c_str();
  node.append_attribute("Target") = relativeTo(part_, target).c_str();
  changed_ = true;
  return id;
}

void RelationTable::remove(std::string_view id) {
  pugi::xml_node root = document_.document_element();
  for (const pugi::xml_node& node : root) {
    if (localName(node) == "Relationship" && id == node.attribute("Id").value()) {
      root.remove_child(node);
      changed_ = true;
      return;
    }
  }
}

bool RelationTable::empty() const {
  return all().empty();
}

std::string RelationTable::print() const {
  return printXml(document_);
}

}  // namespace mervane::workbook
