#pragma once

#include "hosts/charts/chart_part.h"

namespace mervane::charts {

/// Whether a number is a palette index, automatic or none.
[[nodiscard]] bool isColorIndex(std::int32_t index) noexcept;

/// The line around or along a part of a chart.
class BorderObject : public ChartPart {
 public:
  BorderObject(std::shared_ptr<ChartStore> book, std::shared_ptr<Chart> chart, std::shared_ptr<Line> line)
      : ChartPart(std::move(book), std::move(chart)), line_(std::move(line)) {}

 private:
  Variant answer(const Call& call) override;
  std::shared_ptr<Line> line_;
};

/// The fill of a part of a chart.
class InteriorObject : public ChartPart {
 public:
  InteriorObject(std::shared_ptr<ChartStore> book, std::shared_ptr<Chart> chart, std::shared_ptr<Fill> fill)
      : ChartPart(std::move(book), std::move(chart)), fill_(std::move(fill)) {}

 private:
  Variant answer(const Call& call) override;
  std::shared_ptr<Fill> fill_;
};

/// The font of a part of a chart.
class FontObject : public ChartPart {
 public:
  FontObject(std::shared_ptr<ChartStore> book, std::shared_ptr<Chart> chart, std::shared_ptr<Font> font)
      : ChartPart(std::move(book), std::move(chart)), font_(std::move(font)) {}

 private:
  Variant answer(const Call& call) override;
  Variant style(const Call& call);
  std::shared_ptr<Font> font_;
};

}  // namespace mervane::charts
