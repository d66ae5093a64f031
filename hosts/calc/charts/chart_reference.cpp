#include "hosts/calc/charts/chart_reference.h"

namespace mervane::calc {

rtl::OUString chartReference(const Session& session, const SheetArea& area) {
  return toOffice("$" + sheet::quotedSheetName(session.sheetName(area.sheet)) + "." + absoluteA1(area.area));
}

std::optional<SheetArea> areaOfChartReference(const Session& session, std::string_view text) {
  const std::size_t dot = text.rfind('.');
  if (dot == std::string_view::npos) return std::nullopt;
  std::string_view cells = text.substr(dot + 1);
  std::string_view owner = text.substr(0, dot);
  // The second corner may name the sheet again.
  const std::size_t colon = text.find(":$");
  if (colon != std::string_view::npos && colon < dot) {
    const std::size_t first = text.substr(0, colon).rfind('.');
    if (first == std::string_view::npos) return std::nullopt;
    owner = text.substr(0, first);
    const auto from = sheet::parseArea(text.substr(first + 1, colon - first - 1));
    const auto to = sheet::parseArea(cells);
    const auto reference = sheet::parseReference(std::string(owner.starts_with('$') ? owner.substr(1) : owner) + "!A1");
    const auto sheet = reference ? session.sheetNamed(reference->sheet) : std::nullopt;
    if (!from || !to || !sheet) return std::nullopt;
    return SheetArea{*sheet, {from->firstRow, from->firstColumn, to->lastRow, to->lastColumn}};
  }
  if (owner.starts_with('$')) owner.remove_prefix(1);
  const auto reference = sheet::parseReference(std::string(owner) + "!" + std::string(cells));
  const auto sheet = reference ? session.sheetNamed(reference->sheet) : std::nullopt;
  if (!sheet) return std::nullopt;
  return SheetArea{*sheet, reference->area};
}

rtl::OUString quotedText(const std::string& text) {
  std::string quoted = "\"";
  for (const char letter : text) {
    if (letter == '"') quoted += '"';
    quoted += letter;
  }
  return toOffice(quoted + '"');
}

}  // namespace mervane::calc
