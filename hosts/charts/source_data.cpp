#include "hosts/charts/source_data.h"

#include "hosts/charts/call.h"
#include "hosts/charts/series_objects.h"

namespace mervane::charts {
namespace {

bool isHeading(ChartCells& host, std::int32_t sheet, CellAddress cell) {
  const Variant value = host.cellValue(sheet, cell);
  return value.isText() || value.kind() == Variant::Kind::date;
}

/// Whether all cells of the line are headings; the corner may be empty.
bool isHeadingColumn(ChartCells& host, const SheetArea& source) {
  const CellArea& area = source.area;
  if (area.columns() < 2) return false;
  for (std::int32_t row = area.firstRow; row <= area.lastRow; ++row) {
    const bool isEmptyCorner =
        row == area.firstRow && area.rows() > 1 && host.cellValue(source.sheet, {row, area.firstColumn}).isEmpty();
    if (!isEmptyCorner && !isHeading(host, source.sheet, {row, area.firstColumn})) return false;
  }
  return true;
}

bool isHeadingRow(ChartCells& host, const SheetArea& source) {
  const CellArea& area = source.area;
  if (area.rows() < 2) return false;
  for (std::int32_t column = area.firstColumn; column <= area.lastColumn; ++column) {
    const bool isEmptyCorner = column == area.firstColumn && area.columns() > 1 &&
                               host.cellValue(source.sheet, {area.firstRow, column}).isEmpty();
    if (!isEmptyCorner && !isHeading(host, source.sheet, {area.firstRow, column})) return false;
  }
  return true;
}

DataSource cells(std::int32_t sheet, CellArea area) {
  DataSource source;
  source.area = SheetArea{sheet, area};
  return source;
}

}  // namespace

void takeSource(ChartCells& host, Chart& chart, const SheetArea& source, bool rowsAreSeries) {
  const std::int32_t sheet = source.sheet;
  const bool headingColumn = isHeadingColumn(host, source);
  const bool headingRow = isHeadingRow(host, source);
  CellArea body = source.area;
  if (headingColumn) ++body.firstColumn;
  if (headingRow) ++body.firstRow;

  const std::int32_t count = rowsAreSeries ? body.rows() : body.columns();
  if (static_cast<std::size_t>(count) > mostSeries) refuse("A chart takes at most 255 series.");
  while (chart.series.size() > static_cast<std::size_t>(count)) {
    chart.series.back()->deleted = true;
    chart.series.pop_back();
  }
  while (chart.series.size() < static_cast<std::size_t>(count)) chart.series.push_back(std::make_shared<Series>());

  for (std::int32_t i = 0; i < count; ++i) {
    Series& series = *chart.series[static_cast<std::size_t>(i)];
    series.literalValue = false;
    series.name = {};
    series.categories = {};
    const std::int32_t row = body.firstRow + i;
    const std::int32_t column = body.firstColumn + i;
    if (rowsAreSeries) {
      series.values = cells(sheet, {row, body.firstColumn, row, body.lastColumn});
      if (headingColumn) series.name = cells(sheet, {row, source.area.firstColumn, row, source.area.firstColumn});
      if (headingRow) {
        series.categories =
            cells(sheet, {source.area.firstRow, body.firstColumn, source.area.firstRow, body.lastColumn});
      }
    } else {
      series.values = cells(sheet, {body.firstRow, column, body.lastRow, column});
      if (headingRow) series.name = cells(sheet, {source.area.firstRow, column, source.area.firstRow, column});
      if (headingColumn) {
        series.categories =
            cells(sheet, {body.firstRow, source.area.firstColumn, body.lastRow, source.area.firstColumn});
      }
    }
  }
}

}  // namespace mervane::charts
