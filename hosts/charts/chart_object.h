#pragma once

#include "hosts/charts/chart_part.h"

namespace mervane::charts {

/// A chart, on a sheet of its own or in a worksheet.
class ChartObject : public ChartPart {
 public:
  using ChartPart::ChartPart;

 private:
  Variant answer(const Call& call) override;
  Variant hasTitle(const Call& call);
  Variant type(const Call& call);
  Variant location(const Call& call);
  Variant axis(const Call& call);
  void applyDataLabels(const Call& call);
  void setSourceData(const Call& call);
};

}  // namespace mervane::charts
