#pragma once

#include "hosts/charts/call.h"
#include "hosts/charts/layout.h"
#include "hosts/charts/model.h"
#include "hosts/charts/series_text.h"

/// The chart model, which all hosts share, under the names of this folder.
namespace mervane::workbook::charts {

using mervane::charts::Axis;
using mervane::charts::Box;
using mervane::charts::cellText;
using mervane::charts::Chart;
using mervane::charts::DataSource;
using mervane::charts::defaultChartHeight;
using mervane::charts::defaultChartWidth;
using mervane::charts::displayUnitName;
using mervane::charts::Fill;
using mervane::charts::Font;
using mervane::charts::Frame;
using mervane::charts::Legend;
using mervane::charts::legendBox;
using mervane::charts::Line;
using mervane::charts::Marker;
using mervane::charts::nameOf;
using mervane::charts::Point;
using mervane::charts::referenceText;
using mervane::charts::refuse;
using mervane::charts::Series;
using mervane::charts::seriesFormula;
using mervane::charts::shownName;
using mervane::charts::Size;
using mervane::charts::sourceOf;
using mervane::charts::Title;
namespace number = mervane::charts::number;

}  // namespace mervane::workbook::charts
