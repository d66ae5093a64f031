#pragma once

#include "hosts/charts/chart_part.h"

namespace mervane::charts {

/// The category axis or the value axis of a chart.
class AxisObject : public ChartPart {
 public:
  AxisObject(std::shared_ptr<ChartStore> book, std::shared_ptr<Chart> chart, std::shared_ptr<Axis> axis)
      : ChartPart(std::move(book), std::move(chart)), axis_(std::move(axis)) {}

 private:
  Variant answer(const Call& call) override;
  Variant categoryMember(const Call& call);
  Variant valueMember(const Call& call);
  std::shared_ptr<Axis> axis_;
};

/// The labels along an axis.
class TickLabelsObject : public ChartPart {
 public:
  TickLabelsObject(std::shared_ptr<ChartStore> book, std::shared_ptr<Chart> chart, std::shared_ptr<Axis> axis)
      : ChartPart(std::move(book), std::move(chart)), axis_(std::move(axis)) {}

 private:
  Variant answer(const Call& call) override;
  std::shared_ptr<Axis> axis_;
};

/// The lines across the plot at an axis' major ticks. Raises while the axis has none.
class GridlinesObject : public ChartPart {
 public:
  GridlinesObject(std::shared_ptr<ChartStore> book, std::shared_ptr<Chart> chart, std::shared_ptr<Axis> axis)
      : ChartPart(std::move(book), std::move(chart)), axis_(std::move(axis)) {}

 private:
  Variant answer(const Call& call) override;
  std::shared_ptr<Axis> axis_;
};

}  // namespace mervane::charts
