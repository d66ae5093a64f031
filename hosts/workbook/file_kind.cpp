#include "hosts/workbook/file_kind.h"

#include <algorithm>

#include "hosts/workbook/refuse.h"
#include "mervane/letter_case.h"

namespace mervane::workbook {

namespace {

[[noreturn]] void notSupported(const std::string& fileName, const std::string& what) {
  refuse("The file \"" + fileName + "\" is " + what);
}

/// A name as compound files write those of their streams.
std::string utf16(std::string_view name) {
  std::string wide;
  for (const char c : name) {
    wide += c;
    wide += '\0';
  }
  return wide;
}

bool holds(std::string_view bytes, std::string_view what) {
  return bytes.find(what) != std::string_view::npos;
}

}  // namespace

void requireZip(std::string_view bytes, const std::string& fileName) {
  constexpr std::string_view compound("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8);
  constexpr std::string_view zip("PK\x03\x04", 4);
  constexpr std::string_view emptyZip("PK\x05\x06", 4);
  if (bytes.starts_with(zip) || bytes.starts_with(emptyZip)) return;
  if (bytes.empty()) notSupported(fileName, "empty.");
  if (bytes.starts_with(compound)) {
    if (holds(bytes, utf16("EncryptedPackage"))) {
      notSupported(fileName, "encrypted. Open it in the spreadsheet, take its password off and save it.");
    }
    if (holds(bytes, utf16("Workbook")) || holds(bytes, utf16("Book"))) {
      notSupported(fileName,
                   "a workbook of the old binary format (.xls). Open it in the spreadsheet and save it as .xlsx.");
    }
    notSupported(fileName, "no workbook but another compound document. A workbook in .xlsx or .xlsm form is needed.");
  }
  if (bytes.starts_with("<") || bytes.starts_with("\xEF\xBB\xBF<")) {
    notSupported(fileName, "XML or HTML, not a packed workbook. Open it in the spreadsheet and save it as .xlsx.");
  }
  notSupported(fileName, "no workbook. A file in .xlsx or .xlsm form is needed.");
}

void requireWorkbookParts(const std::vector<std::string>& names, std::string_view mimetype,
                          const std::string& fileName) {
  // Names of parts are compared without regard to case.
  const auto has = [&](std::string_view name) {
    const std::string wanted = lowered(name);
    return std::any_of(names.begin(), names.end(), [&](const std::string& one) { return lowered(one) == wanted; });
  };
  if (mimetype.starts_with("application/vnd.oasis.opendocument")) {
    notSupported(fileName, "an OpenDocument file (.ods). Open it in the spreadsheet and save it as .xlsx.");
  }
  if (has("xl/workbook.bin")) {
    notSupported(fileName, "a binary workbook (.xlsb). Open it in the spreadsheet and save it as .xlsx.");
  }
  if (has("word/document.xml") || has("ppt/presentation.xml")) {
    notSupported(fileName, "a text or a presentation, not a workbook.");
  }
  if (!has("[Content_Types].xml")) {
    notSupported(fileName, "a zip file but no workbook: it has no table of content types.");
  }
}

}  // namespace mervane::workbook
