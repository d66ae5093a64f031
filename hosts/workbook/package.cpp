#include "hosts/workbook/package.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "hosts/workbook/file_bytes.h"
#include "hosts/workbook/file_kind.h"
#include "hosts/workbook/part_tables.h"
#include "hosts/workbook/refuse.h"
#include "hosts/workbook/zip_archive.h"

namespace mervane::workbook {

namespace {

constexpr std::string_view contentTypesName = "[Content_Types].xml";
constexpr std::string_view relationsType = "application/vnd.openxmlformats-package.relationships+xml";

std::string folded(std::string_view name) {
  std::string result(name);
  for (char& c : result) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return result;
}

/// Where a part's relations are kept: "xl/_rels/workbook.xml.rels" for "xl/workbook.xml".
std::string relationsNameOf(std::string_view part) {
  const std::size_t slash = part.rfind('/');
  const std::string_view folder = slash == std::string_view::npos ? std::string_view() : part.substr(0, slash + 1);
  const std::string_view file = slash == std::string_view::npos ? part : part.substr(slash + 1);
  return std::string(folder) + "_rels/" + std::string(file) + ".rels";
}

}  // namespace

/// One part: where the file has it, or what was put instead.
struct Part {
  std::string name;
  std::optional<std::size_t> entry;
  std::optional<std::string> content;
  std::optional<DeflatedContent> deflated;
};

struct Package::Data {
  std::filesystem::path path;
  PackageLimits limits;
  std::unique_ptr<ZipArchive> archive;
  std::map<std::string, Part> parts;  // by folded name
  std::vector<std::string> order;     // folded names
  std::vector<std::string> removed;   // names of entries as the file has them
  ContentTypes contentTypes;
  mutable std::map<std::string, RelationTable> relationTables;  // by folded part name, loaded at first use
  bool strict = false;

  [[nodiscard]] const Part* find(std::string_view name) const {
    const auto found = parts.find(folded(name));
    return found == parts.end() ? nullptr : &found->second;
  }

  [[nodiscard]] const Part& require(std::string_view name) const {
    const Part* part = find(name);
    if (part == nullptr) {
      refuse("The workbook \"" + shown(path) + "\" lacks its part \"" + std::string(name) +
             "\". Let the spreadsheet repair the file and save it anew.");
    }
    return *part;
  }

  Part& make(std::string_view name) {
    const std::string key = folded(name);
    const auto [place, isNew] = parts.try_emplace(key);
    if (isNew) {
      place->second.name = name;
      order.push_back(key);
    }
    return place->second;
  }

  void drop(std::string_view name) {
    const std::string key = folded(name);
    const auto found = parts.find(key);
    if (found == parts.end()) return;
    if (found->second.entry) removed.push_back(archive->entries()[*found->second.entry].name);
    parts.erase(found);
    order.erase(std::find(order.begin(), order.end(), key));
  }

  [[nodiscard]] RelationTable& relationsOf(std::string_view part) const {
    const auto [place, isNew] = relationTables.try_emplace(folded(part), std::string(part));
    if (isNew) {
      const std::string name = relationsNameOf(part);
      if (find(name) != nullptr) place->second.load(readPart(name), name);
    }
    return place->second;
  }

  [[nodiscard]] std::string readPart(std::string_view name) const;
  void stream(const Part& part, const std::function<void(std::string_view)>& sink) const;
};

void Package::Data::stream(const Part& part, const std::function<void(std::string_view)>& sink) const {
  if (part.content) {
    sink(*part.content);
    return;
  }
  if (!part.entry) refuse("The part \"" + part.name + "\" is packed for writing and cannot be read back.");
  const ZipArchive::Reader reader = archive->reader(*part.entry);
  std::vector<char> piece(std::size_t{128} * 1024);
  while (const std::size_t count = reader(piece.data(), piece.size())) sink({piece.data(), count});
}

std::string Package::Data::readPart(std::string_view name) const {
  const Part& part = require(name);
  if (part.content) return *part.content;
  if (part.deflated) refuse("The part \"" + part.name + "\" is packed for writing and cannot be read back.");
  if (part.entry && archive->entries()[*part.entry].size > limits.smallPart) {
    refuse("The part \"" + part.name + "\" of the workbook \"" + shown(path) + "\" is too large.");
  }
  std::string content;
  if (part.entry) content.reserve(static_cast<std::size_t>(archive->entries()[*part.entry].size));
  stream(part, [&](std::string_view piece) { content.append(piece); });
  return content;
}

std::unique_ptr<Package> Package::open(const std::filesystem::path& path, const PackageLimits& limits) {
  auto data = std::make_unique<Data>();
  data->path = path;
  data->limits = limits;
  std::string bytes = readFile(path, limits.totalSize);
  requireZip(bytes, shown(path));
  data->archive = std::make_unique<ZipArchive>(std::move(bytes), shown(path), limits);

  std::vector<std::string> names;
  const std::vector<ZipArchive::Entry>& entries = data->archive->entries();
  for (std::size_t i = 0; i < entries.size(); ++i) {
    std::string name = entries[i].name;
    if (name.empty() || name.back() == '/') continue;  // NB: folder entries are no parts; they are copied along.
    if (name.front() == '/') name.erase(0, 1);
    names.push_back(name);
    Part& part = data->make(name);
    if (part.entry) {
      refuse("The file \"" + shown(path) + "\" is damaged: it has the part \"" + name + "\" twice.");
    }
    part.entry = i;
  }
  const bool hasMimetype = data->find("mimetype") != nullptr;
  requireWorkbookParts(names, hasMimetype ? data->readPart("mimetype") : std::string(), shown(path));
  data->contentTypes.load(data->readPart(contentTypesName), contentTypesName);
  for (const Relation& relation : data->relationsOf("").all()) {
    if (relation.kind == "officeDocument") data->strict = relation.type.starts_with("http://purl.oclc.org/");
  }
  return std::unique_ptr<Package>(new Package(std::move(data)));
}

Package::Package(std::unique_ptr<Data> data) : data_(std::move(data)) {}
Package::~Package() = default;

const std::filesystem::path& Package::path() const noexcept {
  return data_->path;
}
bool Package::has(std::string_view name) const {
  return data_->find(name) != nullptr;
}
bool Package::isStrict() const noexcept {
  return data_->strict;
}

std::string_view Package::relationNamespace() const noexcept {
  return relationBase(data_->strict);
}

std::vector<std::string> Package::names() const {
  std::vector<std::string> result;
  for (const std::string& key : data_->order) result.push_back(data_->parts.at(key).name);
  return result;
}

std::string Package::read(std::string_view name) const {
  return data_->readPart(name);
}

void Package::stream(std::string_view name, const std::function<void(std::string_view)>& sink) const {
  data_->stream(data_->require(name), sink);
}

std::function<std::size_t(char* bytes, std::size_t size)> Package::pull(std::string_view name) const {
  const Part& part = data_->require(name);
  if (!part.content && part.entry && !part.deflated) return data_->archive->reader(*part.entry);
  return [content = read(name), at = std::size_t{0}](char* bytes, std::size_t size) mutable {
    const std::size_t count = std::min(size, content.size() - at);
    content.copy(bytes, count, at);
    at += count;
    return count;
  };
}

void Package::put(std::string_view name, std::string content, std::string_view contentType) {
  Part& part = data_->make(name);
  part.deflated.reset();
  part.content = std::move(content);
  if (!contentType.empty()) data_->contentTypes.set(part.name, contentType);
}

void Package::putDeflated(std::string_view name, DeflatedContent content) {
  Part& part = data_->make(name);
  part.content.reset();
  part.deflated = std::move(content);
}

void Package::remove(std::string_view name) {
  if (!has(name)) return;
  data_->contentTypes.drop(name);
  data_->contentTypes.drop(relationsNameOf(name));
  data_->relationTables.erase(folded(name));
  data_->drop(relationsNameOf(name));
  data_->drop(name);
}

std::string Package::freeName(std::string_view stem, std::string_view suffix) const {
  for (std::size_t number = 1;; ++number) {
    std::string name = std::string(stem) + std::to_string(number) + std::string(suffix);
    if (!has(name)) return name;
  }
}

std::string Package::contentType(std::string_view name) const {
  return data_->contentTypes.of(name);
}

std::vector<Relation> Package::relations(std::string_view part) const {
  return data_->relationsOf(part).all();
}

std::string Package::addRelation(std::string_view part, std::string_view kind, std::string_view target) {
  return data_->relationsOf(part).add(std::string(relationBase(data_->strict)) + "/" + std::string(kind), target);
}

void Package::removeRelation(std::string_view part, std::string_view id) {
  data_->relationsOf(part).remove(id);
}

void Package::save(const std::filesystem::path& target, const SaveWatch& watch) const {
  using Change = ZipArchive::Change;
  std::vector<Change> changes;
  // The tables that were changed are printed here and live until the archive is written.
  std::vector<std::unique_ptr<std::string>> printed;
  const auto store = [&](std::string name, std::string content) {
    printed.push_back(std::make_unique<std::string>(std::move(content)));
    changes.push_back({Change::Kind::stored, std::move(name), printed.back().get(), nullptr});
  };
  const auto entryName = [&](const Part& part) {
    return part.entry ? data_->archive->entries()[*part.entry].name : part.name;
  };
  const auto storedName = [&](const std::string& name) {
    const Part* part = data_->find(name);
    return part != nullptr ? entryName(*part) : name;
  };
  std::vector<std::string> removed = data_->removed;
  for (const std::string& key : data_->order) {
    const Part& part = data_->parts.at(key);
    if (part.content) {
      changes.push_back({Change::Kind::stored, entryName(part), &*part.content, nullptr});
    } else if (part.deflated) {
      changes.push_back({Change::Kind::deflated, entryName(part), nullptr, &*part.deflated});
    }
  }
  for (const auto& [part, table] : data_->relationTables) {
    if (!table.changed()) continue;
    const std::string name = relationsNameOf(table.part());
    if (!table.empty()) {
      // A file without relations of its parts, or with a type for each of them, need not have one for a new table.
      if (data_->contentTypes.of(name).empty()) data_->contentTypes.setForExtension("rels", relationsType);
      store(storedName(name), table.print());
    } else if (data_->find(name) != nullptr) {
      data_->contentTypes.drop(name);
      removed.push_back(storedName(name));
    }
  }
  if (data_->contentTypes.changed()) store(storedName(std::string(contentTypesName)), data_->contentTypes.print());
  for (std::string& name : removed) {
    // A part that was removed and put again is a replacement.
    const bool isBack =
        std::any_of(changes.begin(), changes.end(), [&](const Change& one) { return one.name == name; });
    if (!isBack) changes.push_back({Change::Kind::remove, std::move(name), nullptr, nullptr});
  }
  replaceFile(target, data_->archive->with(changes), watch);
}

}  // namespace mervane::workbook
