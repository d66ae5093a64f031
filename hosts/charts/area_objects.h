#pragma once

#include "hosts/charts/chart_part.h"
#include "hosts/charts/layout.h"

namespace mervane::charts {

/// The whole of a chart. Its size is that of the chart in its sheet.
class ChartAreaObject : public ChartPart {
 public:
  using ChartPart::ChartPart;

 private:
  Variant answer(const Call& call) override;
};

/// The area that the series are drawn in, with its tick labels.
class PlotAreaObject : public ChartPart {
 public:
  using ChartPart::ChartPart;

 private:
  Variant answer(const Call& call) override;
};

/// The legend. Every member raises while the chart has none.
class LegendObject : public ChartPart {
 public:
  using ChartPart::ChartPart;

 private:
  Variant answer(const Call& call) override;
  Variant position(const Call& call);
};

/// The title. Every member raises while the chart has none.
class ChartTitleObject : public ChartPart {
 public:
  ChartTitleObject(std::shared_ptr<ChartStore> book, std::shared_ptr<Chart> chart, std::shared_ptr<Title> title)
      : ChartPart(std::move(book), std::move(chart)), title_(std::move(title)) {}

 private:
  Variant answer(const Call& call) override;
  std::shared_ptr<Title> title_;
};

}  // namespace mervane::charts
