#include "hosts/calc/charts/draw_axes.h"

#include <com/sun/star/chart/ChartAxisLabelPosition.hpp>
#include <com/sun/star/chart/ChartAxisPosition.hpp>
#include <com/sun/star/chart2/AxisOrientation.hpp>
#include <com/sun/star/chart2/AxisType.hpp>
#include <com/sun/star/chart2/TickmarkStyle.hpp>
#include <com/sun/star/chart2/XAxis.hpp>
#include <com/sun/star/chart2/data/XLabeledDataSequence.hpp>

#include "hosts/calc/charts/chart_format.h"
#include "hosts/calc/charts/chart_parts.h"
#include "hosts/calc/charts/chart_reference.h"

namespace mervane::calc {

namespace number = mervane::charts::number;
using mervane::charts::Axis;
using mervane::charts::Chart;

namespace {

using AxisRef = uno::Reference<css::chart2::XAxis>;

AxisRef axisOf(const Session& session, const uno::Reference<css::chart2::XCoordinateSystem>& system,
               sal_Int32 dimension) {
  AxisRef axis = system->getAxisByDimension(dimension, 0);
  if (!axis.is()) {
    axis = makeChartPart<css::chart2::XAxis>(session, "com.sun.star.chart2.Axis");
    system->setAxisByDimension(dimension, axis, 0);
  }
  return axis;
}

void drawGridlines(const AxisRef& axis, const Axis& model) {
  const Properties major(axis->getGridProperties(), uno::UNO_QUERY_THROW);
  setProperty(major, "Show", uno::Any(model.hasMajorGridlines));
  if (model.hasMajorGridlines) setLine(major, model.majorGridlines);
  for (const auto& minor : axis->getSubGridProperties()) {
    setProperty(minor, "Show", uno::Any(model.hasMinorGridlines));
  }
}

/// Where the axis crosses the other one, which says it.
void setCrossing(const Properties& part, std::int32_t crosses) {
  if (crosses == number::crossesAtMaximum)
    setProperty(part, "CrossoverPosition", uno::Any(css::chart::ChartAxisPosition_END));
  if (crosses == number::crossesAtMinimum) {
    setProperty(part, "CrossoverPosition", uno::Any(css::chart::ChartAxisPosition_START));
  }
}

void drawAxis(const AxisRef& axis, const Axis& model, const Axis& other) {
  const Properties part(axis, uno::UNO_QUERY_THROW);
  setProperty(part, "Show", uno::Any(true));
  setProperty(part, "DisplayLabels", uno::Any(true));
  setProperty(part, "MajorTickmarks", uno::Any(sal_Int32{css::chart2::TickmarkStyle::OUTER}));
  setProperty(part, "MinorTickmarks", uno::Any(sal_Int32{css::chart2::TickmarkStyle::NONE}));
  setCrossing(part, other.crosses);
  setLine(part, model.border);
  setFont(part, model.tickLabels);
  drawGridlines(axis, model);
}

void setDisplayUnit(const Properties& part, std::int32_t unit) {
  if (unit == number::none) return;
  setProperty(part, "DisplayUnits", uno::Any(true));
  setProperty(part, "BuiltInUnit", uno::Any(rtl::OUString::createFromAscii(mervane::charts::displayUnitName(unit))));
}

uno::Reference<css::chart2::data::XLabeledDataSequence> categoriesOf(
    const Session& session, const uno::Reference<css::chart2::data::XDataProvider>& provider, const Chart& chart) {
  if (chart.series.empty() || !chart.series.front()->categories.area) return {};
  const auto values = provider->createDataSequenceByRangeRepresentation(
      chartReference(session, *chart.series.front()->categories.area));
  if (!values.is()) refuse("The categories of a chart give it no data.");
  setProperty(Properties(values, uno::UNO_QUERY_THROW), "Role", uno::Any(rtl::OUString("categories")));
  const auto labeled =
      makeChartPart<css::chart2::data::XLabeledDataSequence>(session, "com.sun.star.chart2.data.LabeledDataSequence");
  labeled->setValues(values);
  return labeled;
}

css::chart2::AxisOrientation orientationOf(const Axis& model) {
  return model.reversed ? css::chart2::AxisOrientation_REVERSE : css::chart2::AxisOrientation_MATHEMATICAL;
}

}  // namespace

void drawAxes(const Session& session, const uno::Reference<css::chart2::data::XDataProvider>& provider,
              const uno::Reference<css::chart2::XCoordinateSystem>& system, const Chart& chart) {
  if (chart.category.tickMarkSpacing != 1 || chart.category.tickLabelSpacing != 1) {
    refuse("The office's charts have a mark and a label at every category.");
  }
  const AxisRef category = axisOf(session, system, 0);
  drawAxis(category, chart.category, chart.value);
  css::chart2::ScaleData scale = category->getScaleData();
  scale.AxisType = css::chart2::AxisType::CATEGORY;
  scale.AutoDateAxis = false;
  scale.Categories = categoriesOf(session, provider, chart);
  scale.Orientation = orientationOf(chart.category);
  scale.ShiftedCategoryPosition = chart.category.betweenCategories;
  category->setScaleData(scale);
  // Category labels stand at the low edge, not beside an axis that negative values put across the lines.
  setProperty(Properties(category, uno::UNO_QUERY_THROW), "LabelPosition",
              uno::Any(css::chart::ChartAxisLabelPosition_OUTSIDE_START));

  const AxisRef value = axisOf(session, system, 1);
  drawAxis(value, chart.value, chart.category);
  scale = value->getScaleData();
  scale.AxisType = css::chart2::AxisType::REALNUMBER;
  scale.Orientation = orientationOf(chart.value);
  if (chart.value.scaleType == number::logarithmic) {
    scale.Scaling = makeChartPart<css::chart2::XScaling>(session, "com.sun.star.chart2.LogarithmicScaling");
  }
  value->setScaleData(scale);
  setDisplayUnit(Properties(value, uno::UNO_QUERY_THROW), chart.value.displayUnit);
}

}  // namespace mervane::calc
