#include "hosts/workbook/sheet_geometry.h"

#include <algorithm>
#include <cmath>

#include "hosts/workbook/cell_store.h"
#include "hosts/workbook/columns.h"
#include "hosts/workbook/sheet_frame.h"
#include "hosts/workbook/small_xml.h"

namespace mervane::workbook {

namespace {

constexpr double pointsPerPixel = 0.75;
constexpr double marginPixels = 5.0;  // two on each side and one for the gridline

}  // namespace

SheetGeometry::SheetGeometry(const CellStore& cells, const Columns& columns, const SheetFrame& frame,
                             std::int32_t digitPixels)
    : cells_(cells), columns_(columns), frame_(frame), digitPixels_(digitPixels) {}

void SheetGeometry::forget() noexcept {
  lefts_.clear();
  deviations_.clear();
  rowsRead_ = false;
}

double SheetGeometry::charactersFor(double textPixels, std::int32_t digitPixels) noexcept {
  const double pixels = std::ceil(textPixels) + marginPixels;
  return std::min(std::floor(pixels / digitPixels * 256.0) / 256.0, 255.0);
}

void SheetGeometry::readColumns() const {
  pugi::xml_document format;
  const pugi::xml_node node = frame_.load("sheetFormatPr", format) ? format.document_element() : pugi::xml_node();
  const double digit = digitPixels_;
  const auto pixelsOf = [&](double characters) {
    return std::trunc((256.0 * std::clamp(characters, 0.0, 255.0) + std::trunc(128.0 / digit)) / 256.0 * digit);
  };
  double defaultPixels = 0.0;
  if (const double given = realNumber(node.attribute("defaultColWidth"), -1.0); given >= 0.0) {
    defaultPixels = pixelsOf(given);
  } else {
    // The plain width is that of eight digits with their margins, rounded up to eight pixels.
    const double base = std::clamp(wholeNumber(node.attribute("baseColWidth"), 8), 0, 255);
    defaultPixels = std::ceil((base * digit + marginPixels) / 8.0) * 8.0;
  }
  lefts_.resize(static_cast<std::size_t>(lastSheetColumn) + 1);
  double left = 0.0;
  for (std::int32_t column = 1; column <= lastSheetColumn; ++column) {
    lefts_[static_cast<std::size_t>(column) - 1] = left;
    const Columns::Span* span = columns_.find(column);
    double pixels = defaultPixels;
    if (span != nullptr && span->width >= 0.0) pixels = pixelsOf(span->width);
    if (span != nullptr && span->hidden) pixels = 0.0;
    left += pixels * pointsPerPixel;
  }
  lefts_.back() = left;
}

void SheetGeometry::readRows() const {
  pugi::xml_document format;
  const pugi::xml_node node = frame_.load("sheetFormatPr", format) ? format.document_element() : pugi::xml_node();
  defaultHeight_ = std::clamp(realNumber(node.attribute("defaultRowHeight"), 15.0), 0.0, 409.5);
  if (isTrue(node.attribute("zeroHeight"))) defaultHeight_ = 0.0;
  double top = 0.0;
  std::int32_t next = 1;
  cells_.forEachRow([&](std::int32_t number, const Row& row) {
    const RowFormat& own = cells_.rowFormat(row.format);
    if (own.height < 0.0 && !own.hidden) return;
    const double height = own.hidden ? 0.0 : own.height;
    top += (number - next) * defaultHeight_ + height;
    next = number + 1;
    deviations_.push_back({number, top});
  });
  rowsRead_ = true;
}

double SheetGeometry::columnLeft(std::int32_t column) const {
  if (lefts_.empty()) readColumns();
  return lefts_[static_cast<std::size_t>(column) - 1];
}

double SheetGeometry::columnWidth(std::int32_t column) const {
  if (lefts_.empty()) readColumns();
  return lefts_[static_cast<std::size_t>(column)] - lefts_[static_cast<std::size_t>(column) - 1];
}

double SheetGeometry::rowTop(std::int32_t row) const {
  if (!rowsRead_) readRows();
  const auto after = std::lower_bound(deviations_.begin(), deviations_.end(), row,
                                      [](const Deviation& one, std::int32_t wanted) { return one.row < wanted; });
  if (after == deviations_.begin()) return (row - 1) * defaultHeight_;
  const Deviation& before = *(after - 1);
  return before.topAfter + (row - before.row - 1) * defaultHeight_;
}

double SheetGeometry::rowHeight(std::int32_t row) const {
  if (!rowsRead_) readRows();
  const Row* found = cells_.rowAt(row);
  if (found == nullptr || !found->exists) return defaultHeight_;
  const RowFormat& own = cells_.rowFormat(found->format);
  if (own.hidden) return 0.0;
  return own.height < 0.0 ? defaultHeight_ : own.height;
}

}  // namespace mervane::workbook
