#pragma once

#include <cstdint>

#include "hosts/charts/chart_part.h"

namespace mervane::charts {

/// More series than this the application does not take into one chart.
inline constexpr std::size_t mostSeries = 255;

/// The series of a chart, in drawing order.
class SeriesCollectionObject : public ChartPart {
 public:
  using ChartPart::ChartPart;
  /// The series at a position from 1, or of a name.
  [[nodiscard]] Variant item(const Variant& which) const;

 private:
  Variant answer(const Call& call) override;
};

class SeriesObject : public ChartPart {
 public:
  SeriesObject(std::shared_ptr<ChartStore> book, std::shared_ptr<Chart> chart, std::shared_ptr<Series> series)
      : ChartPart(std::move(book), std::move(chart)), series_(std::move(series)) {}

 private:
  Variant answer(const Call& call) override;
  Variant name(const Call& call);
  Variant categories(const Call& call);
  void remove();
  [[nodiscard]] std::size_t position() const;
  std::shared_ptr<Series> series_;
};

/// The points of one series.
class PointsObject : public ChartPart {
 public:
  PointsObject(std::shared_ptr<ChartStore> book, std::shared_ptr<Chart> chart, std::shared_ptr<Series> series)
      : ChartPart(std::move(book), std::move(chart)), series_(std::move(series)) {}
  /// @param index from 1
  [[nodiscard]] Variant item(std::int32_t index) const;

 private:
  Variant answer(const Call& call) override;
  std::shared_ptr<Series> series_;
};

/// One point. It has settings of its own from the first assignment on.
class PointObject : public ChartPart {
 public:
  PointObject(std::shared_ptr<ChartStore> book, std::shared_ptr<Chart> chart, std::shared_ptr<Series> series,
              std::int32_t index)
      : ChartPart(std::move(book), std::move(chart)), series_(std::move(series)), index_(index) {}

 private:
  Variant answer(const Call& call) override;
  std::shared_ptr<Series> series_;
  std::int32_t index_;
};

}  // namespace mervane::charts
