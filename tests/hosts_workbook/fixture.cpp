#include "fixture.h"

#include <zip.h>

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <random>

namespace mervane::workbook::tests {

namespace {

constexpr const char* mainSpace = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
constexpr const char* relationSpace = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
constexpr const char* head = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";

std::string relations(const std::string& inside) {
  return std::string(head) + "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">" +
         inside + "</Relationships>";
}

std::string relation(const std::string& id, const std::string& kind, const std::string& target) {
  return "<Relationship Id=\"" + id + "\" Type=\"" + relationSpace + "/" + kind + "\" Target=\"" + target + "\"/>";
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
  std::random_device random;
  do {
    path_ = std::filesystem::temp_directory_path() / ("mervane-test-" + std::to_string(random()));
  } while (!std::filesystem::create_directory(path_));
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

Parts BookText::parts() const {
  const std::string types =
      std::string(head) +
      "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
      "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
      "<Default Extension=\"xml\" ContentType=\"application/xml\"/>"
      "<Override PartName=\"/xl/workbook.xml\" "
      "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml\"/>"
      "<Override PartName=\"/xl/worksheets/sheet1.xml\" "
      "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml\"/>" +
      contentTypes + "</Types>";
  Parts parts;
  parts.emplace_back("[Content_Types].xml", types);
  parts.emplace_back("_rels/.rels", relations(relation("rId1", "officeDocument", "xl/workbook.xml")));
  parts.emplace_back("xl/workbook.xml", std::string(head) + "<workbook xmlns=\"" + mainSpace + "\" xmlns:r=\"" +
                                            relationSpace + "\">" + workbookProperties +
                                            "<sheets><sheet name=\"Data\" sheetId=\"1\" r:id=\"rId1\"/></sheets>" +
                                            workbookExtra + "</workbook>");
  std::string workbook = relation("rId1", "worksheet", "worksheets/sheet1.xml") + workbookRelations;
  if (!sharedStrings.empty()) workbook += relation("rId2", "sharedStrings", "sharedStrings.xml");
  if (!styles.empty()) workbook += relation("rId3", "styles", "styles.xml");
  parts.emplace_back("xl/_rels/workbook.xml.rels", relations(workbook));
  if (!sharedStrings.empty()) {
    parts.emplace_back("xl/sharedStrings.xml",
                       std::string(head) + "<sst xmlns=\"" + mainSpace + "\">" + sharedStrings + "</sst>");
  }
  if (!styles.empty()) parts.emplace_back("xl/styles.xml", styles);
  parts.emplace_back("xl/worksheets/sheet1.xml", std::string(head) + "<worksheet xmlns=\"" + mainSpace +
                                                     "\" xmlns:r=\"" + relationSpace + "\"" + rootAttributes + ">" +
                                                     sheet + "</worksheet>");
  if (!sheetRelations.empty()) parts.emplace_back("xl/worksheets/_rels/sheet1.xml.rels", relations(sheetRelations));
  parts.insert(parts.end(), more.begin(), more.end());
  return parts;
}

void writeZip(const std::filesystem::path& path, const Parts& parts) {
  int error = 0;
  zip_t* archive = zip_open(path.string().c_str(), ZIP_CREATE | ZIP_TRUNCATE, &error);
  ASSERT_NE(archive, nullptr);
  for (const auto& [name, content] : parts) {
    zip_source_t* source = zip_source_buffer(archive, content.data(), content.size(), 0);
    ASSERT_GE(zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8), 0) << name;
  }
  ASSERT_EQ(zip_close(archive), 0) << zip_strerror(archive);
}

std::map<std::string, std::string> readZip(const std::filesystem::path& path) {
  std::map<std::string, std::string> parts;
  int error = 0;
  zip_t* archive = zip_open(path.string().c_str(), ZIP_RDONLY | ZIP_CHECKCONS, &error);
  if (archive == nullptr) {
    ADD_FAILURE() << path << " is no sound zip file: " << error;
    return parts;
  }
  for (zip_int64_t i = 0; i < zip_get_num_entries(archive, 0); ++i) {
    zip_stat_t stat;
    zip_stat_index(archive, static_cast<zip_uint64_t>(i), 0, &stat);
    std::string content(static_cast<std::size_t>(stat.size), '\0');
    zip_file_t* file = zip_fopen_index(archive, static_cast<zip_uint64_t>(i), 0);
    EXPECT_EQ(zip_fread(file, content.data(), content.size()), static_cast<zip_int64_t>(stat.size)) << stat.name;
    zip_fclose(file);
    EXPECT_TRUE(parts.emplace(stat.name, std::move(content)).second) << stat.name << " is there twice";
  }
  zip_discard(archive);
  return parts;
}

std::map<std::string, std::string> savedParts(const std::filesystem::path& path) {
  std::map<std::string, std::string> parts = readZip(path);
  if (whenSaved != nullptr) whenSaved(parts);
  return parts;
}

OpenBook::OpenBook(const BookText& text) : OpenBook(text.parts()) {}

OpenBook::OpenBook(const Parts& parts) {
  writeZip(path(), parts);
  host_ = WorkbookHost::open(path());
}

std::string OpenBook::text(const std::string& cell) {
  const Variant value = this->value(cell);
  const std::string* text = value.getIf<std::string>();
  if (text == nullptr) {
    ADD_FAILURE() << cell << " holds no text";
    return {};
  }
  return *text;
}

std::map<std::string, std::string> OpenBook::saved() {
  host_->save(folder_ / "saved.xlsx");
  return savedParts(folder_ / "saved.xlsx");
}

void OpenBook::reopen() {
  host_->save(folder_ / "again.xlsx");
  static_cast<void>(savedParts(folder_ / "again.xlsx"));
  host_ = WorkbookHost::open(folder_ / "again.xlsx");
}

}  // namespace mervane::workbook::tests
