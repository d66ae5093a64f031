#include "tests/hosts_workbook/charts/test_book.h"

#include <unistd.h>

#include <cstdlib>
#include <pugixml.hpp>
#include <sstream>

#include "mervane/convert.h"
#include "mervane/failure.h"
#include "mervane/runtime_errors.h"

namespace mervane::tests {

namespace {

/// A folder of this process that goes when the process ends. MERVANE_KEEP_BOOKS keeps it for a look at its files.
struct TemporaryFolder {
  TemporaryFolder() { std::filesystem::create_directories(path); }
  ~TemporaryFolder() {
    std::error_code ignored;
    if (std::getenv("MERVANE_KEEP_BOOKS") == nullptr) std::filesystem::remove_all(path, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  const std::filesystem::path path =
      std::filesystem::temp_directory_path() / ("mervane-charts-" + std::to_string(getpid()));
};

pugi::xml_document parsed(const std::string& text) {
  pugi::xml_document document;
  document.load_buffer(text.data(), text.size(), pugi::parse_default | pugi::parse_ws_pcdata);
  return document;
}

std::vector<std::string> sharedTexts(const workbook::Package& package) {
  std::vector<std::string> texts;
  if (!package.has("xl/sharedStrings.xml")) return texts;
  const pugi::xml_document document = parsed(package.read("xl/sharedStrings.xml"));
  for (const pugi::xml_node item : document.child("sst").children("si"))
    texts.emplace_back(item.child("t").text().get());
  return texts;
}

}  // namespace

Variant TestRange::invoke(sheet::Access, sheet::member::Id, std::span<const Variant>) {
  raise(runtime::memberNotSupported);
}

std::filesystem::path bookPath(const std::string& name) {
  return std::filesystem::path(MERVANE_SOURCE_DIR) / "tests/hosts_workbook/charts/books" / name;
}

TestBook::TestBook(const std::filesystem::path& path) : package_(workbook::Package::open(path)) {
  readSheets();
  const std::vector<std::string> texts = sharedTexts(*package_);
  for (std::int32_t sheet = 0; sheet < sheetCount(); ++sheet) readCells(sheet, texts);
  service_ = workbook::makeChartService(*this);
}

void TestBook::readSheets() {
  const pugi::xml_document document = parsed(package_->read("xl/workbook.xml"));
  const std::vector<workbook::Relation> relations = package_->relations("xl/workbook.xml");
  for (const pugi::xml_node one : document.child("workbook").child("sheets").children("sheet")) {
    names_.emplace_back(one.attribute("name").value());
    for (const workbook::Relation& relation : relations) {
      if (relation.id == one.attribute("r:id").value()) parts_.push_back(relation.target);
    }
  }
}

void TestBook::readCells(std::int32_t sheet, const std::vector<std::string>& texts) {
  const pugi::xml_document document = parsed(package_->read(sheetPart(sheet)));
  for (const pugi::xml_node row : document.child("worksheet").child("sheetData").children("row")) {
    for (const pugi::xml_node cell : row.children("c")) {
      const std::string type = cell.attribute("t").value();
      const std::string text = cell.child("v").text().get();
      const workbook::CellAddress address = *workbook::parseCell(cell.attribute("r").value());
      if (type == "s") {
        setCell(sheet, address, texts.at(static_cast<std::size_t>(std::stoi(text))));
      } else if (type == "e") {
        setCell(sheet, address, ErrorValue{2042});
      } else if (!text.empty()) {
        setCell(sheet, address, *parseNumber(text, englishLocale()));
      }
    }
  }
}

std::vector<sheet::ChartObject> TestBook::chartObjects(std::int32_t sheet) {
  std::vector<sheet::ChartObject> all;
  sheet::forEach<sheet::ChartObject>(sheet::ChartObjects(service_->chartObjects(sheet)),
                                     [&](const sheet::ChartObject& one) { all.push_back(one); });
  return all;
}

std::vector<sheet::Shape> TestBook::shapes(std::int32_t sheet) {
  std::vector<sheet::Shape> all;
  sheet::forEach<sheet::Shape>(sheet::Shapes(service_->shapes(sheet)),
                               [&](const sheet::Shape& one) { all.push_back(one); });
  return all;
}

sheet::Range TestBook::range(std::int32_t sheet, const std::string& area) {
  return sheet::Range(rangeObject({sheet, *workbook::parseArea(area)}));
}

std::filesystem::path TestBook::save(const std::string& name) {
  service_->write();
  static const TemporaryFolder folder;
  package_->save(folder.path / name);
  return folder.path / name;
}

std::optional<std::int32_t> TestBook::sheetNamed(std::string_view name) const {
  for (std::size_t i = 0; i < names_.size(); ++i) {
    if (names_[i] == name) return static_cast<std::int32_t>(i);
  }
  return std::nullopt;
}

Variant TestBook::cellValue(std::int32_t sheet, workbook::CellAddress cell) {
  const auto found = cells_.find({sheet, cell});
  return found == cells_.end() ? Variant() : found->second;
}

std::optional<workbook::SheetArea> TestBook::areaOf(const Variant& range) const {
  if (!range.isObject()) return std::nullopt;
  const auto* one = dynamic_cast<const TestRange*>(range.object().get());
  if (one == nullptr) return std::nullopt;
  return one->area;
}

std::string TestBook::drawingRelation(std::int32_t sheet) {
  const pugi::xml_document document = parsed(package_->read(sheetPart(sheet)));
  return document.document_element().child("drawing").attribute("r:id").value();
}

void TestBook::setDrawingRelation(std::int32_t sheet, const std::string& id) {
  pugi::xml_document document = parsed(package_->read(sheetPart(sheet)));
  pugi::xml_node root = document.document_element();
  root.remove_child("drawing");
  if (!id.empty()) {
    root.append_child("drawing").append_attribute("r:id") = id.c_str();
    if (!root.attribute("xmlns:r")) {
      root.append_attribute("xmlns:r") = std::string(package_->relationNamespace()).c_str();
    }
  }
  std::ostringstream stream;
  document.save(stream, "", pugi::format_raw);
  package_->put(sheetPart(sheet), stream.str());
}

void TestBook::requireUnprotectedObjects(std::int32_t) {
  if (isProtected) throw Failure(runtime::applicationDefined.number, "The sheet is protected.");
}

}  // namespace mervane::tests
