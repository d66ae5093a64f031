#include "hosts/workbook/charts/chart_book.h"

#include "hosts/charts/call.h"
#include "hosts/workbook/charts/drawing.h"

namespace mervane::workbook::charts {
namespace {

std::string described(const Chart& chart) {
  return chart.title ? "chart \"" + chart.title->text + "\"" : std::string("chart without a title");
}

}  // namespace

ChartBook::ChartBook(ChartHost& host) : host_(&host) {}

ChartBook::~ChartBook() = default;

ChartHost& ChartBook::host() const {
  if (host_ == nullptr) refuse("The workbook of this chart has been closed.");
  return *host_;
}

void ChartBook::close() noexcept {
  host_ = nullptr;
  active_.reset();
  drawings_.clear();
}

std::shared_ptr<Chart> ChartBook::addChart() {
  active_ = std::make_shared<Chart>();
  active_->name = "Chart1";
  onOwnSheets_.push_back(active_);
  return active_;
}

void ChartBook::embed(const std::shared_ptr<Chart>& chart, std::int32_t sheet) {
  if (chart->sheet != Chart::ownSheet) refuse("The chart lies in a worksheet already.");
  host().requireUnprotectedObjects(sheet);
  drawing(sheet).add(chart);
  chart->sheet = sheet;
  std::erase(onOwnSheets_, chart);
  active_ = chart;
  host().activateSheet(sheet);
  host().note(described(*chart) + " is added to the sheet \"" + host().sheetName(sheet) + "\"");
}

void ChartBook::remove(const std::shared_ptr<Chart>& chart) {
  const auto item = drawing(chart->sheet).itemOf(*chart);
  if (!item) refuse("The chart has been deleted.");
  host().requireUnprotectedObjects(chart->sheet);
  drawing(chart->sheet).remove(item);
  if (active_ == chart) active_.reset();
  host().note(described(*chart) + " is deleted from the sheet \"" + host().sheetName(chart->sheet) + "\"");
}

void ChartBook::move(std::int32_t sheet, DrawingItem& item, const Box& box) {
  host().requireUnprotectedObjects(sheet);
  drawing(sheet).move(static_cast<FileItem&>(item), box);
}

std::vector<std::shared_ptr<DrawingItem>> ChartBook::items(std::int32_t sheet) {
  const auto& all = drawing(sheet).items();
  return {all.begin(), all.end()};
}

Box ChartBook::boxOf(std::int32_t sheet, const DrawingItem& item) {
  return drawing(sheet).boxOf(static_cast<const FileItem&>(item));
}

Drawing& ChartBook::drawing(std::int32_t sheet) {
  const auto known = drawings_.find(sheet);
  if (known != drawings_.end()) return *known->second;
  // A damaged drawing raises here and leaves no entry.
  auto drawing = std::make_unique<Drawing>(host(), sheet);
  return *drawings_.emplace(sheet, std::move(drawing)).first->second;
}

Box ChartBook::boxOf(const Chart& chart) {
  if (chart.sheet == Chart::ownSheet) return {0.0, 0.0, defaultChartWidth, defaultChartHeight};
  const auto item = drawing(chart.sheet).itemOf(chart);
  if (!item) refuse("The chart has been deleted.");
  return drawing(chart.sheet).boxOf(*item);
}

void ChartBook::write() {
  for (const auto& [sheet, drawing] : drawings_) drawing->write();
  for (const auto& chart : onOwnSheets_) {
    host().note(described(*chart) + " is not saved, because it was not moved into a worksheet");
  }
}

}  // namespace mervane::workbook::charts
