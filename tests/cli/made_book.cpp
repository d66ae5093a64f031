#include "tests/cli/made_book.h"

#include "hosts/workbook/cell_address.h"

namespace mervane::cli {
namespace {

std::string cellXml(const std::string& place, const std::string& content) {
  const std::string begin = "<c r=\"" + place + "\"";
  if (content.empty()) return {};
  if (content.starts_with('=')) return begin + "><f>" + content.substr(1) + "</f></c>";
  if (content.starts_with('#')) return begin + " t=\"e\"><v>" + content + "</v></c>";
  if (content.find_first_not_of("0123456789.-e+") == std::string::npos) return begin + "><v>" + content + "</v></c>";
  return begin + " t=\"inlineStr\"><is><t>" + content + "</t></is></c>";
}

}  // namespace

void MadeBook::write(const std::filesystem::path& path) const {
  using namespace workbook;  // NOLINT(google-build-using-namespace): for its addresses, in this function alone.
  std::string data;
  for (std::size_t row = 0; row < rows.size(); ++row) {
    const auto number = static_cast<std::int32_t>(row) + 1;
    data += "<row r=\"" + std::to_string(number) + "\">";
    for (std::size_t column = 0; column < rows[row].size(); ++column) {
      data += cellXml(a1(CellAddress{number, static_cast<std::int32_t>(column) + 1}), rows[row][column]);
    }
    data += "</row>";
  }
  const std::string space = "http://schemas.openxmlformats.org/";
  tests::BookText text;
  text.sheet = "<sheetData>" + data + "</sheetData>" + behindCells;
  text.contentTypes =
      "<Override PartName=\"/xl/worksheets/sheet2.xml\" ContentType=\"application/"
      "vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml\"/>";
  text.workbookRelations = "<Relationship Id=\"rId9\" Type=\"" + space +
                           "officeDocument/2006/relationships/worksheet\" Target=\"worksheets/sheet2.xml\"/>";
  text.more.emplace_back("xl/worksheets/sheet2.xml",
                         "<worksheet xmlns=\"" + space + "spreadsheetml/2006/main\">" + totals + "</worksheet>");
  if (inR1C1) text.workbookExtra = "<calcPr calcId=\"0\" refMode=\"R1C1\"/>";
  if (!comments.empty()) {
    std::string list;
    for (const std::string& cell : comments) list += "<comment ref=\"" + cell + "\" authorId=\"0\"/>";
    text.sheetRelations = "<Relationship Id=\"rId8\" Type=\"" + space +
                          "officeDocument/2006/relationships/comments\" Target=\"../comments1.xml\"/>";
    text.more.emplace_back(
        "xl/comments1.xml",
        "<comments xmlns=\"" + space + "spreadsheetml/2006/main\"><commentList>" + list + "</commentList></comments>");
  }
  tests::Parts parts = text.parts();
  for (auto& [name, content] : parts) {
    if (name != "xl/workbook.xml") continue;
    content.insert(content.find("</sheets>"), "<sheet name=\"Totals\" sheetId=\"2\" r:id=\"rId9\"/>");
  }
  tests::writeZip(path, parts);
}

}  // namespace mervane::cli
