#include "hosts/workbook/charts/write_data.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "hosts/charts/series_text.h"
#include "hosts/workbook/charts/write_format.h"
#include "mervane/convert.h"

namespace mervane::workbook::charts {
namespace {

/// The cells of one row or column, or of a rectangle row by row.
std::vector<CellAddress> cellsOf(const CellArea& area) {
  std::vector<CellAddress> cells;
  for (std::int32_t row = area.firstRow; row <= area.lastRow; ++row) {
    for (std::int32_t column = area.firstColumn; column <= area.lastColumn; ++column) cells.push_back({row, column});
  }
  return cells;
}

bool isNumber(const Variant& value) {
  switch (value.kind()) {
    case Variant::Kind::int16:
    case Variant::Kind::int32:
    case Variant::Kind::single:
    case Variant::Kind::real:
    case Variant::Kind::date:
      return true;
    default:
      return false;
  }
}

/// A value as a chart plots it: a text counts as zero, an empty cell and an error are missing.
std::optional<double> plotted(const Variant& value) {
  if (value.isEmpty() || value.kind() == Variant::Kind::error) return std::nullopt;
  if (value.isText()) return 0.0;
  if (const auto* truth = value.getIf<bool>()) return *truth ? 1.0 : 0.0;
  const auto* date = value.getIf<Date>();
  const double number = date != nullptr ? date->serial : toDouble(value, englishLocale());
  if (!std::isfinite(number)) return std::nullopt;
  return number;
}

/// `c:pt`
void pt(pugi::xml_node parent, std::size_t index, const std::string& text) {
  pugi::xml_node node = parent.append_child("c:pt");
  node.append_attribute("idx") = static_cast<unsigned>(index);
  appendText(node, "c:v", text);
}

void ptCount(pugi::xml_node parent, std::size_t count) {
  appendValue(parent, "c:ptCount", std::to_string(count).c_str());
}

/// `c:numCache`
void numCache(pugi::xml_node parent, ChartHost& host, const SheetArea& source) {
  pugi::xml_node node = parent.append_child("c:numCache");
  const std::vector<CellAddress> cells = cellsOf(source.area);
  appendText(node, "c:formatCode", host.cellNumberFormat(source.sheet, cells.front()));
  ptCount(node, cells.size());
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (const auto number = plotted(host.cellValue(source.sheet, cells[i]))) pt(node, i, formatExact(*number));
  }
}

/// `c:strCache`
void strCache(pugi::xml_node parent, ChartHost& host, const SheetArea& source) {
  pugi::xml_node node = parent.append_child("c:strCache");
  const std::vector<CellAddress> cells = cellsOf(source.area);
  ptCount(node, cells.size());
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const std::string text = cellText(host, source.sheet, cells[i]);
    if (!text.empty()) pt(node, i, text);
  }
}

/// `c:numRef`
void numRef(pugi::xml_node parent, ChartHost& host, const DataSource& source) {
  pugi::xml_node node = parent.append_child("c:numRef");
  appendText(node, "c:f", referenceText(host, source));
  numCache(node, host, *source.area);
}

/// `c:strRef`
void strRef(pugi::xml_node parent, ChartHost& host, const DataSource& source) {
  pugi::xml_node node = parent.append_child("c:strRef");
  appendText(node, "c:f", referenceText(host, source));
  strCache(node, host, *source.area);
}

/// `c:numLit` with the one value of a series that has not been given any.
void numLit(pugi::xml_node parent) {
  pugi::xml_node node = parent.append_child("c:numLit");
  appendText(node, "c:formatCode", "General");
  ptCount(node, 1);
  pt(node, 0, "1");
}

bool holdsOnlyNumbers(ChartHost& host, const SheetArea& source) {
  const std::vector<CellAddress> cells = cellsOf(source.area);
  return std::all_of(cells.begin(), cells.end(),
                     [&](CellAddress cell) { return isNumber(host.cellValue(source.sheet, cell)); });
}

}  // namespace

void tx(pugi::xml_node parent, ChartHost& host, const Series& series) {
  if (series.name.empty()) return;
  pugi::xml_node node = parent.append_child("c:tx");
  if (series.name.area) {
    strRef(node, host, series.name);
  } else {
    appendText(node, "c:v", series.name.literal);
  }
}

void cat(pugi::xml_node parent, ChartHost& host, const Series& series) {
  if (!series.categories.area) return;
  pugi::xml_node node = parent.append_child("c:cat");
  if (holdsOnlyNumbers(host, *series.categories.area)) {
    numRef(node, host, series.categories);
  } else {
    strRef(node, host, series.categories);
  }
}

void val(pugi::xml_node parent, ChartHost& host, const Series& series) {
  if (!series.values.area && !series.literalValue) return;
  pugi::xml_node node = parent.append_child("c:val");
  if (series.values.area) {
    numRef(node, host, series.values);
  } else {
    numLit(node);
  }
}

std::string valueFormat(ChartHost& host, const Chart& chart) {
  if (chart.series.empty() || !chart.series.front()->values.area) return "General";
  const SheetArea& values = *chart.series.front()->values.area;
  return host.cellNumberFormat(values.sheet, {values.area.firstRow, values.area.firstColumn});
}

bool holdsErrors(ChartHost& host, const Chart& chart) {
  return std::any_of(chart.series.begin(), chart.series.end(), [&](const std::shared_ptr<Series>& series) {
    if (!series->values.area) return false;
    const std::vector<CellAddress> cells = cellsOf(series->values.area->area);
    return std::any_of(cells.begin(), cells.end(), [&](CellAddress cell) {
      return host.cellValue(series->values.area->sheet, cell).kind() == Variant::Kind::error;
    });
  });
}

}  // namespace mervane::workbook::charts
