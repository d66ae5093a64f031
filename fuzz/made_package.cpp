#include "fuzz/made_package.h"

#include <zlib.h>

#include <cstdint>

namespace mervane::fuzz {

namespace {

constexpr std::uint32_t localHeader = 0x04034b50;
constexpr std::uint32_t centralHeader = 0x02014b50;
constexpr std::uint32_t endOfDirectory = 0x06054b50;
constexpr std::uint32_t version = 20;

void append(std::string& bytes, std::uint32_t value, int count) {
  for (int i = 0; i < count; ++i) bytes += static_cast<char>((value >> (8 * i)) & 0xFFU);
}

/// What the local and the central header of an entry have in common.
std::string entryFields(std::string_view name, std::string_view content) {
  const auto size = static_cast<std::uint32_t>(content.size());
  const auto* data = reinterpret_cast<const Bytef*>(content.data());
  std::string fields;
  append(fields, version, 2);
  append(fields, 0, 2);     // no flags
  append(fields, 0, 2);     // stored
  append(fields, 0, 2);     // time
  append(fields, 0x21, 2);  // the first day that can be told
  append(fields, static_cast<std::uint32_t>(crc32(0, data, size)), 4);
  append(fields, size, 4);
  append(fields, size, 4);
  append(fields, static_cast<std::uint32_t>(name.size()), 2);
  append(fields, 0, 2);
  return fields;
}

const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
const std::string format = "http://schemas.openxmlformats.org/";
const std::string mainSpace =
    " xmlns=\"" + format + "spreadsheetml/2006/main\" xmlns:r=\"" + format + "officeDocument/2006/relationships\"";

std::string relations(const std::vector<std::pair<std::string, std::string>>& kindsAndTargets) {
  std::string text = declaration + "<Relationships xmlns=\"" + format + "package/2006/relationships\">";
  int id = 0;
  for (const auto& [kind, target] : kindsAndTargets) {
    text += "<Relationship Id=\"rId" + std::to_string(++id) + "\" Type=\"" + format +
            "officeDocument/2006/relationships/" + kind + "\" Target=\"" + target + "\"/>";
  }
  return text + "</Relationships>";
}

std::string contentTypes() {
  const std::string application = "application/vnd.openxmlformats-officedocument.";
  std::string text = declaration + "<Types xmlns=\"" + format +
                     "package/2006/content-types\"><Default Extension=\"rels\" "
                     "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
                     "<Default Extension=\"xml\" ContentType=\"application/xml\"/>";
  for (const auto& [part, type] :
       std::vector<std::pair<std::string, std::string>>{{"workbook.xml", "spreadsheetml.sheet.main"},
                                                        {"worksheets/sheet1.xml", "spreadsheetml.worksheet"},
                                                        {"sharedStrings.xml", "spreadsheetml.sharedStrings"},
                                                        {"styles.xml", "spreadsheetml.styles"},
                                                        {"tables/table1.xml", "spreadsheetml.table"},
                                                        {"drawings/drawing1.xml", "drawing"},
                                                        {"charts/chart1.xml", "drawingml.chart"}}) {
    text += "<Override PartName=\"/xl/" + part + "\" ContentType=\"" + application + type + "+xml\"/>";
  }
  return text + "</Types>";
}

std::string sheet() {
  return declaration + "<worksheet" + mainSpace +
         "><dimension ref=\"A1:C4\"/><sheetViews><sheetView workbookViewId=\"0\"/></sheetViews><cols><col min=\"1\" "
         "max=\"1\" width=\"12\"/></cols><sheetData><row r=\"1\"><c r=\"A1\" t=\"s\"><v>0</v></c><c r=\"B1\" "
         "t=\"s\"><v>1</v></c></row><row r=\"2\"><c r=\"A2\"><v>3</v></c><c r=\"B2\" s=\"1\"><v>45000</v></c><c "
         "r=\"C2\"><f>A2*2</f><v>6</v></c></row><row r=\"3\"><c r=\"A3\"><v>1</v></c><c r=\"B3\" "
         "t=\"b\"><v>1</v></c><c r=\"C3\" t=\"e\"><v>#N/A</v></c></row><row r=\"4\"><c r=\"A4\"><v>2</v></c><c "
         "r=\"B4\" t=\"inlineStr\"><is><t>x</t></is></c></row></sheetData><drawing r:id=\"rId1\"/><tableParts "
         "count=\"1\"><tablePart r:id=\"rId2\"/></tableParts></worksheet>";
}

std::string styles() {
  return declaration + "<styleSheet" + mainSpace +
         "><fonts count=\"1\"><font><sz val=\"11\"/><name val=\"Calibri\"/></font></fonts><fills count=\"2\"><fill>"
         "<patternFill patternType=\"none\"/></fill><fill><patternFill patternType=\"gray125\"/></fill></fills>"
         "<borders count=\"1\"><border><left/><right/><top/><bottom/><diagonal/></border></borders><cellXfs "
         "count=\"2\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/><xf numFmtId=\"14\" fontId=\"0\" "
         "fillId=\"0\" borderId=\"0\" applyNumberFormat=\"1\"/></cellXfs></styleSheet>";
}

std::string drawing() {
  return declaration + "<xdr:wsDr xmlns:xdr=\"" + format + "drawingml/2006/spreadsheetDrawing\" xmlns:a=\"" + format +
         "drawingml/2006/main\"><xdr:twoCellAnchor><xdr:from><xdr:col>4</xdr:col><xdr:colOff>0</xdr:colOff><xdr:row>1"
         "</xdr:row><xdr:rowOff>0</xdr:rowOff></xdr:from><xdr:to><xdr:col>9</xdr:col><xdr:colOff>0</xdr:colOff>"
         "<xdr:row>9</xdr:row><xdr:rowOff>0</xdr:rowOff></xdr:to><xdr:graphicFrame macro=\"\"><xdr:nvGraphicFramePr>"
         "<xdr:cNvPr id=\"2\" name=\"Chart 1\"/><xdr:cNvGraphicFramePr/></xdr:nvGraphicFramePr><xdr:xfrm><a:off "
         "x=\"0\" "
         "y=\"0\"/><a:ext cx=\"0\" cy=\"0\"/></xdr:xfrm><a:graphic><a:graphicData uri=\"" +
         format + "drawingml/2006/chart\"><c:chart xmlns:c=\"" + format + "drawingml/2006/chart\" xmlns:r=\"" + format +
         "officeDocument/2006/relationships\" r:id=\"rId1\"/></a:graphicData></a:graphic></xdr:graphicFrame>"
         "<xdr:clientData/></xdr:twoCellAnchor></xdr:wsDr>";
}

std::string chart() {
  return declaration + "<c:chartSpace xmlns:c=\"" + format + "drawingml/2006/chart\" xmlns:a=\"" + format +
         "drawingml/2006/main\"><c:chart><c:title><c:tx><c:rich><a:bodyPr/><a:p><a:r><a:t>Clusters weights</a:t></a:r>"
         "</a:p></c:rich></c:tx></c:title><c:plotArea><c:layout/><c:lineChart><c:grouping val=\"standard\"/><c:ser>"
         "<c:idx val=\"0\"/><c:order val=\"0\"/><c:val><c:numRef><c:f>Sheet1!$A$2:$A$4</c:f></c:numRef></c:val></c:ser>"
         "<c:axId val=\"1\"/><c:axId val=\"2\"/></c:lineChart></c:plotArea></c:chart></c:chartSpace>";
}

}  // namespace

const Parts& soundParts() {
  static const Parts parts = {
      {"[Content_Types].xml", contentTypes()},
      {"_rels/.rels", relations({{"officeDocument", "xl/workbook.xml"}})},
      {"xl/workbook.xml",
       declaration + "<workbook" + mainSpace +
           "><sheets><sheet name=\"Sheet1\" sheetId=\"1\" r:id=\"rId1\"/></sheets><definedNames><definedName "
           "name=\"Block\">Sheet1!$A$2:$A$4</definedName></definedNames></workbook>"},
      {"xl/_rels/workbook.xml.rels",
       relations(
           {{"worksheet", "worksheets/sheet1.xml"}, {"sharedStrings", "sharedStrings.xml"}, {"styles", "styles.xml"}})},
      {"xl/worksheets/sheet1.xml", sheet()},
      {"xl/worksheets/_rels/sheet1.xml.rels",
       relations({{"drawing", "../drawings/drawing1.xml"}, {"table", "../tables/table1.xml"}})},
      {"xl/sharedStrings.xml", declaration + "<sst" + mainSpace +
                                   " count=\"2\" uniqueCount=\"2\"><si><t>Name</t></si><si><r><t>Le</t></r><r><t>ngth"
                                   "</t></r></si></sst>"},
      {"xl/styles.xml", styles()},
      {"xl/tables/table1.xml",
       declaration + "<table" + mainSpace +
           " id=\"1\" name=\"T\" displayName=\"T\" ref=\"A1:B4\"><autoFilter ref=\"A1:B4\"/><tableColumns count=\"2\">"
           "<tableColumn id=\"1\" name=\"Name\"/><tableColumn id=\"2\" name=\"Length\"/></tableColumns></table>"},
      {"xl/drawings/drawing1.xml", drawing()},
      {"xl/drawings/_rels/drawing1.xml.rels", relations({{"chart", "../charts/chart1.xml"}})},
      {"xl/charts/chart1.xml", chart()},
  };
  return parts;
}

std::string zipOf(const Parts& parts) {
  std::string bytes;
  std::string directory;
  for (const auto& [name, content] : parts) {
    const std::string fields = entryFields(name, content);
    append(directory, centralHeader, 4);
    append(directory, version, 2);
    directory += fields;
    append(directory, 0, 2);  // no comment
    append(directory, 0, 2);  // disk
    append(directory, 0, 2);  // attributes
    append(directory, 0, 4);
    append(directory, static_cast<std::uint32_t>(bytes.size()), 4);
    directory += name;
    append(bytes, localHeader, 4);
    bytes += fields + name + content;
  }
  const auto start = static_cast<std::uint32_t>(bytes.size());
  bytes += directory;
  append(bytes, endOfDirectory, 4);
  append(bytes, 0, 4);
  for (int i = 0; i < 2; ++i) append(bytes, static_cast<std::uint32_t>(parts.size()), 2);
  append(bytes, static_cast<std::uint32_t>(directory.size()), 4);
  append(bytes, start, 4);
  append(bytes, 0, 2);
  return bytes;
}

}  // namespace mervane::fuzz
