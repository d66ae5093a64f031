#include "hosts/calc/charts/chart_reference.h"

#include <com/sun/star/chart2/data/XRangeXMLConversion.hpp>

namespace mervane::calc {

namespace {

using Conversion = css::chart2::data::XRangeXMLConversion;

uno::Reference<Conversion> conversionOf(const Session& session) {
  return session.make<Conversion>("com.sun.star.chart2.data.DataProvider");
}

/// Cells in the notation of files, such as "$Sheet1.$A$1:$B$7" or "'My Sheet'.A1:'My Sheet'.B7".
std::optional<SheetArea> areaInFileNotation(const Session& session, std::string_view text) {
  // NB: no name of a sheet holds a colon.
  const std::size_t colon = text.find(':');
  const std::string_view first = text.substr(0, colon);
  std::string_view second = colon == std::string_view::npos ? std::string_view() : text.substr(colon + 1);
  const std::size_t dot = first.rfind('.');
  if (dot == std::string_view::npos) return std::nullopt;
  // The second corner may name the sheet again.
  if (const std::size_t again = second.rfind('.'); again != std::string_view::npos) second.remove_prefix(again + 1);
  std::string_view owner = first.substr(0, dot);
  if (owner.starts_with('$')) owner.remove_prefix(1);
  const std::string_view cell = first.substr(dot + 1);
  const auto reference = sheet::parseReference(std::string(owner) + "!" + std::string(cell));
  const auto sheet = reference ? session.sheetNamed(reference->sheet) : std::nullopt;
  if (!sheet) return std::nullopt;
  if (second.empty()) return SheetArea{*sheet, reference->area};
  const auto last = sheet::parseArea(second);
  if (!last) return std::nullopt;
  return SheetArea{*sheet, {reference->area.firstRow, reference->area.firstColumn, last->lastRow, last->lastColumn}};
}

}  // namespace

rtl::OUString chartReference(const Session& session, const SheetArea& area) {
  const std::string text = "$" + sheet::quotedSheetName(session.sheetName(area.sheet)) + "." + absoluteA1(area.area);
  return conversionOf(session)->convertRangeFromXML(toOffice(text));
}

std::optional<SheetArea> areaOfChartReference(const Session& session, std::string_view text) {
  if (const auto area = areaInFileNotation(session, text)) return area;
  return areaInFileNotation(session, fromOffice(conversionOf(session)->convertRangeToXML(toOffice(std::string(text)))));
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
