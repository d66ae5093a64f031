#include "hosts/charts/series_text.h"

#include "mervane/convert.h"

namespace mervane::charts {
namespace {

std::string inQuotes(const std::string& text) {
  std::string quoted = "\"";
  for (const char letter : text) {
    if (letter == '"') quoted += '"';
    quoted += letter;
  }
  return quoted + '"';
}

std::string errorText(std::int32_t code) {
  switch (code) {
    case 2000:
      return "#NULL!";
    case 2007:
      return "#DIV/0!";
    case 2015:
      return "#VALUE!";
    case 2023:
      return "#REF!";
    case 2029:
      return "#NAME?";
    case 2036:
      return "#NUM!";
    default:
      return "#N/A";
  }
}

}  // namespace

std::string shownName(const Chart& chart, std::size_t index) {
  const std::string& literal = chart.series[index]->name.literal;
  return literal.empty() ? "Series" + std::to_string(index + 1) : literal;
}

std::string nameOf(ChartCells& host, const Chart& chart, std::size_t index) {
  const DataSource& name = chart.series[index]->name;
  if (!name.area || !name.literal.empty()) return shownName(chart, index);
  return cellText(host, name.area->sheet, {name.area->area.firstRow, name.area->area.firstColumn});
}

std::string cellText(ChartCells& host, std::int32_t sheet, CellAddress cell) {
  const Variant value = host.cellValue(sheet, cell);
  if (const auto* error = value.getIf<ErrorValue>()) return errorText(error->code);
  if (const auto* truth = value.getIf<bool>()) return *truth ? "TRUE" : "FALSE";
  return toText(value, englishLocale());
}

std::string referenceText(ChartCells& host, const DataSource& source) {
  if (!source.area) return source.formula;
  return absoluteA1(host.sheetName(source.area->sheet), source.area->area);
}

std::string seriesFormula(ChartCells& host, const Series& series, std::size_t order) {
  std::string values = referenceText(host, series.values);
  if (values.empty() && series.literalValue) values = "{1}";
  if (values.empty()) return {};
  std::string name = referenceText(host, series.name);
  if (name.empty() && !series.name.literal.empty()) name = inQuotes(series.name.literal);
  return "=SERIES(" + name + "," + referenceText(host, series.categories) + "," + values + "," + std::to_string(order) +
         ")";
}

DataSource sourceOf(const ChartCells& host, const std::string& formula) {
  DataSource source;
  if (const auto reference = sheet::parseReference(formula); reference && reference->hasSheet) {
    if (const auto sheet = host.sheetNamed(reference->sheet)) {
      source.area = SheetArea{*sheet, reference->area};
      return source;
    }
  }
  source.formula = formula;
  return source;
}

}  // namespace mervane::charts
