#include "tests/conformance/workbook_under_test.h"

#include <charconv>
#include <pugixml.hpp>

#include "hosts/workbook/cell_address.h"
#include "hosts/workbook/cell_error.h"
#include "mervane/convert.h"
#include "tests/support/real_regular_expressions.h"

namespace mervane::tests {

namespace {

namespace book = workbook::tests;

constexpr const char* space = "http://schemas.openxmlformats.org/";

std::string escaped(const std::string& text) {
  std::string result;
  for (const char c : text) {
    if (c == '&') {
      result += "&amp;";
    } else if (c == '<') {
      result += "&lt;";
    } else {
      result += c;
    }
  }
  return result;
}

std::string number(double value) {
  char text[32];
  return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

std::string cellXml(const std::string& place, const MadeCell& cell) {
  std::string attributes;
  std::string value;
  if (const auto* text = cell.value.getIf<std::string>()) {
    attributes = " t=\"inlineStr\"";
    value = "<is><t>" + escaped(*text) + "</t></is>";
  } else if (const auto* truth = cell.value.getIf<bool>()) {
    attributes = " t=\"b\"";
    value = *truth ? "<v>1</v>" : "<v>0</v>";
  } else if (const auto* error = cell.value.getIf<ErrorValue>()) {
    attributes = " t=\"e\"";
    value = "<v>" + std::string(workbook::errorText(error->code)) + "</v>";
  } else if (const auto* date = cell.value.getIf<Date>()) {
    attributes = " s=\"1\"";
    value = "<v>" + number(date->serial) + "</v>";
  } else if (!cell.value.isEmpty()) {
    value = "<v>" + number(toDouble(cell.value, englishLocale())) + "</v>";
  } else {
    return {};
  }
  const std::string formula = cell.formula.empty() ? "" : "<f>" + escaped(cell.formula.substr(1)) + "</f>";
  return "<c r=\"" + place + "\"" + attributes + ">" + formula + value + "</c>";
}

std::string sheetDataXml(const MadeSheet& sheet) {
  std::string data;
  for (std::size_t row = 0; row < sheet.rows.size(); ++row) {
    const auto line = static_cast<std::int32_t>(row) + 1;
    data += "<row r=\"" + std::to_string(line) + "\">";
    for (std::size_t column = 0; column < sheet.rows[row].size(); ++column) {
      data += cellXml(workbook::a1(workbook::CellAddress{line, static_cast<std::int32_t>(column) + 1}),
                      sheet.rows[row][column]);
    }
    data += "</row>";
  }
  return "<sheetData>" + data + "</sheetData>";
}

/// Two cell formats: the plain one and a date's.
std::string stylesXml() {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n<styleSheet xmlns=\"" + std::string(space) +
         "spreadsheetml/2006/main\"><fonts count=\"1\"><font><sz val=\"11\"/><name val=\"Calibri\"/></font></fonts>"
         "<fills count=\"2\"><fill><patternFill patternType=\"none\"/></fill><fill><patternFill "
         "patternType=\"gray125\"/></fill></fills><borders count=\"1\"><border><left/><right/><top/><bottom/>"
         "<diagonal/></border></borders><cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" "
         "borderId=\"0\"/></cellStyleXfs><cellXfs count=\"2\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" "
         "borderId=\"0\" xfId=\"0\"/><xf numFmtId=\"14\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\" "
         "applyNumberFormat=\"1\"/></cellXfs></styleSheet>";
}

book::Parts partsOf(const std::vector<MadeSheet>& sheets) {
  book::BookText text;
  text.sheet = sheetDataXml(sheets.front());
  text.styles = stylesXml();
  std::string entries = "<sheets><sheet name=\"" + escaped(sheets.front().name) + "\" sheetId=\"1\" r:id=\"rId1\"/>";
  for (std::size_t i = 1; i < sheets.size(); ++i) {
    const std::string number = std::to_string(i + 1);
    const std::string part = "worksheets/sheet" + number + ".xml";
    const std::string id = "rId10" + number;
    entries += "<sheet name=\"" + escaped(sheets[i].name) + "\" sheetId=\"" + number + "\" r:id=\"" + id + "\"/>";
    text.workbookRelations += "<Relationship Id=\"" + id + "\" Type=\"" + space +
                              "officeDocument/2006/relationships/worksheet\" Target=\"" + part + "\"/>";
    text.contentTypes += "<Override PartName=\"/xl/" + part +
                         "\" ContentType=\"application/"
                         "vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml\"/>";
    text.more.emplace_back("xl/" + part, "<worksheet xmlns=\"" + std::string(space) + "spreadsheetml/2006/main\">" +
                                             sheetDataXml(sheets[i]) + "</worksheet>");
  }
  book::Parts parts = text.parts();
  for (auto& [name, content] : parts) {
    if (name != "xl/workbook.xml") continue;
    const std::size_t begin = content.find("<sheets>");
    content.replace(begin, content.find("</sheets>") - begin, entries);
  }
  return parts;
}

}  // namespace

WorkbookUnderTest::WorkbookUnderTest(const std::vector<MadeSheet>& sheets) {
  book::writeZip(folder_ / "made.xlsx", partsOf(sheets));
  host_ = workbook::WorkbookHost::open(folder_ / "made.xlsx");
}

void WorkbookUnderTest::reopen() {
  const auto file = folder_ / ("saved" + std::to_string(++saves_) + ".xlsx");
  host_->save(file);
  static_cast<void>(book::savedParts(file));
  host_ = workbook::WorkbookHost::open(file);
}

std::map<std::string, std::string> WorkbookUnderTest::savedParts() {
  const auto file = folder_ / ("parts" + std::to_string(++saves_) + ".xlsx");
  host_->save(file);
  return book::savedParts(file);
}

std::string WorkbookUnderTest::selection() {
  const auto parts = savedParts();
  pugi::xml_document sheet;
  sheet.load_string(parts.at("xl/worksheets/sheet1.xml").c_str());
  const pugi::xml_node view = sheet.child("worksheet").child("sheetViews").child("sheetView");
  return view.child("selection").attribute("sqref").value();
}

bool WorkbookUnderTest::showsDataLabels() {
  for (const auto& [name, content] : savedParts()) {
    if (name.starts_with("xl/charts/chart") && content.find("<c:showVal val=\"1\"/>") != std::string::npos) return true;
  }
  return false;
}

const HostKind& workbookKind() {
  static const HostKind kind{
      "Workbook",
      [](const std::vector<MadeSheet>& sheets) -> std::unique_ptr<HostUnderTest> {
        return std::make_unique<WorkbookUnderTest>(sheets);
      },
      &realRegularExpressions,
  };
  return kind;
}

}  // namespace mervane::tests
