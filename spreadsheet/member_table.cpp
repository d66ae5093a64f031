#include "spreadsheet/member_table.h"

#include <array>

namespace mervane::sheet {

namespace {

constexpr auto table = std::to_array<MemberUse>({
    {"Application", Access::get, member::Range, "reference", "Range"},
    {"Application", Access::get, member::ActiveWorkbook, "", "Workbook"},
    {"Application", Access::get, member::ActiveSheet, "", "Worksheet"},
    {"Application", Access::get, member::ActiveChart, "", "Chart"},
    {"Application", Access::get, member::Charts, "", "Charts"},
    {"Application", Access::get, member::Version, "", "String"},
    {"Application", Access::get, member::ReferenceStyle, "", "Long"},
    {"Application", Access::call, member::ConvertFormula, "formula, fromStyle, toStyle", "Variant"},
    {"Application", Access::put, member::ScreenUpdating, "on", ""},

    {"Workbook", Access::get, member::Worksheets, "", "Worksheets"},
    {"Workbook", Access::get, member::ActiveSheet, "", "Worksheet"},

    {"Worksheets", Access::get, member::Count, "", "Long"},
    {"Worksheets", Access::get, member::Item, "position or name", "Worksheet"},

    {"Worksheet", Access::get, member::Name, "", "String"},
    {"Worksheet", Access::get, member::Range, "reference", "Range"},
    {"Worksheet", Access::call, member::ChartObjects, "", "ChartObjects"},
    {"Worksheet", Access::get, member::Shapes, "", "Shapes"},
    {"Worksheet", Access::get, member::AutoFilterMode, "", "Boolean"},

    {"Range", Access::get, member::Cells, "row, column", "Range"},
    {"Range", Access::get, member::Item, "row, column", "Range"},
    {"Range", Access::get, member::Cells, "", "Range"},
    {"Range", Access::get, member::NewEnum, "", "Enumerator of Range"},
    {"Range", Access::get, member::Rows, "", "RangeParts"},
    {"Range", Access::get, member::Columns, "", "RangeParts"},
    {"Range", Access::get, member::Columns, "column", "Range"},
    {"Range", Access::get, member::Column, "", "Long"},
    {"Range", Access::get, member::Offset, "rows, columns", "Range"},
    {"Range", Access::get, member::Resize, "rows, columns", "Range"},
    {"Range", Access::get, member::Value, "", "Variant"},
    {"Range", Access::put, member::Value, "value", ""},
    {"Range", Access::put, member::NumberFormat, "format", ""},
    {"Range", Access::get, member::Font, "", "Font"},
    {"Range", Access::get, member::Interior, "", "Interior"},
    {"Range", Access::get, member::Borders, "edge", "Border"},
    {"Range", Access::call, member::Sort, "key, order", ""},
    {"Range", Access::call, member::AutoFilter, "", ""},
    {"Range", Access::call, member::AutoFit, "", ""},
    {"Range", Access::call, member::Select, "", ""},
    {"Range", Access::get, member::Left, "", "Double"},
    {"Range", Access::get, member::Top, "", "Double"},
    {"Range", Access::get, member::Width, "", "Double"},
    {"Range", Access::get, member::Worksheet, "", "Worksheet"},

    {"RangeParts", Access::get, member::Count, "", "Long"},
    {"RangeParts", Access::get, member::EntireColumn, "", "Range"},
    {"RangeParts", Access::get, member::NewEnum, "", "Enumerator of Range"},

    {"Font", Access::put, member::Bold, "value", ""},
    {"Font", Access::put, member::Name, "value", ""},
    {"Font", Access::put, member::Size, "value", ""},
    {"Font", Access::put, member::FontStyle, "value", ""},
    {"Font", Access::put, member::Strikethrough, "value", ""},
    {"Font", Access::put, member::Superscript, "value", ""},
    {"Font", Access::put, member::Subscript, "value", ""},
    {"Font", Access::put, member::OutlineFont, "value", ""},
    {"Font", Access::put, member::Shadow, "value", ""},
    {"Font", Access::put, member::Underline, "value", ""},
    {"Font", Access::put, member::ColorIndex, "value", ""},
    {"Font", Access::put, member::Background, "value", ""},

    {"Interior", Access::put, member::Pattern, "value", ""},
    {"Interior", Access::put, member::PatternColorIndex, "value", ""},
    {"Interior", Access::put, member::ColorIndex, "value", ""},
    {"Interior", Access::put, member::Color, "value", ""},

    {"Border", Access::put, member::LineStyle, "value", ""},
    {"Border", Access::put, member::Weight, "value", ""},
    {"Border", Access::put, member::ColorIndex, "value", ""},

    {"Charts", Access::call, member::Add, "", "Chart"},

    {"Chart", Access::get, member::HasTitle, "", "Boolean"},
    {"Chart", Access::put, member::HasTitle, "on", ""},
    {"Chart", Access::get, member::ChartTitle, "", "ChartTitle"},
    {"Chart", Access::get, member::HasLegend, "", "Boolean"},
    {"Chart", Access::put, member::HasLegend, "on", ""},
    {"Chart", Access::put, member::ChartType, "kind", ""},
    {"Chart", Access::call, member::Location, "where, sheetName", ""},
    {"Chart", Access::call, member::SetSourceData, "source, plotBy", ""},
    {"Chart", Access::call, member::SeriesCollection, "", "SeriesCollection"},
    {"Chart", Access::call, member::SeriesCollection, "index", "Series"},
    {"Chart", Access::call, member::ApplyDataLabels, "kind", ""},
    {"Chart", Access::call, member::Axes, "type, group", "Axis"},
    {"Chart", Access::get, member::ChartArea, "", "ChartArea"},
    {"Chart", Access::get, member::PlotArea, "", "PlotArea"},
    {"Chart", Access::get, member::Legend, "", "Legend"},

    {"ChartTitle", Access::get, member::Text, "", "String"},
    {"ChartTitle", Access::put, member::Text, "text", ""},
    {"ChartTitle", Access::get, member::Font, "", "Font"},
    {"ChartTitle", Access::put, member::Left, "points", ""},
    {"ChartTitle", Access::put, member::Top, "points", ""},
    {"ChartTitle", Access::put, member::AutoScaleFont, "on", ""},

    {"ChartArea", Access::get, member::Border, "", "Border"},
    {"ChartArea", Access::get, member::Interior, "", "Interior"},
    {"ChartArea", Access::get, member::Height, "", "Double"},
    {"ChartArea", Access::get, member::Width, "", "Double"},

    {"PlotArea", Access::get, member::Border, "", "Border"},
    {"PlotArea", Access::get, member::Interior, "", "Interior"},
    {"PlotArea", Access::put, member::Left, "points", ""},
    {"PlotArea", Access::put, member::Top, "points", ""},
    {"PlotArea", Access::put, member::Height, "points", ""},
    {"PlotArea", Access::get, member::Width, "", "Double"},
    {"PlotArea", Access::put, member::Width, "points", ""},

    {"Legend", Access::get, member::Border, "", "Border"},
    {"Legend", Access::get, member::Interior, "", "Interior"},
    {"Legend", Access::get, member::Font, "", "Font"},
    {"Legend", Access::put, member::Position, "where", ""},
    {"Legend", Access::put, member::Shadow, "on", ""},
    {"Legend", Access::put, member::Left, "points", ""},
    {"Legend", Access::put, member::Top, "points", ""},
    {"Legend", Access::get, member::Height, "", "Double"},
    {"Legend", Access::put, member::Height, "points", ""},
    {"Legend", Access::get, member::Width, "", "Double"},
    {"Legend", Access::put, member::Width, "points", ""},

    {"SeriesCollection", Access::get, member::Count, "", "Long"},
    {"SeriesCollection", Access::call, member::NewSeries, "", "Series"},
    {"SeriesCollection", Access::get, member::NewEnum, "", "Enumerator of Series"},

    {"Series", Access::get, member::Formula, "", "String"},
    {"Series", Access::put, member::Name, "name", ""},
    {"Series", Access::put, member::XValues, "cells", ""},
    {"Series", Access::call, member::Delete, "", ""},
    {"Series", Access::get, member::Border, "", "Border"},
    {"Series", Access::get, member::Interior, "", "Interior"},
    {"Series", Access::put, member::MarkerBackgroundColorIndex, "index", ""},
    {"Series", Access::put, member::MarkerForegroundColorIndex, "index", ""},
    {"Series", Access::put, member::Smooth, "on", ""},
    {"Series", Access::put, member::MarkerSize, "points", ""},
    {"Series", Access::put, member::Shadow, "on", ""},
    {"Series", Access::call, member::Points, "", "Points"},

    {"Points", Access::get, member::NewEnum, "", "Enumerator of Point"},

    {"Point", Access::get, member::Border, "", "Border"},
    {"Point", Access::get, member::Interior, "", "Interior"},
    {"Point", Access::put, member::Shadow, "on", ""},
    {"Point", Access::put, member::InvertIfNegative, "on", ""},

    {"Axis", Access::get, member::TickLabels, "", "TickLabels"},
    {"Axis", Access::get, member::MajorGridlines, "", "Gridlines"},
    {"Axis", Access::put, member::MinorUnitIsAuto, "value", ""},
    {"Axis", Access::put, member::MajorUnitIsAuto, "value", ""},
    {"Axis", Access::put, member::Crosses, "value", ""},
    {"Axis", Access::put, member::ReversePlotOrder, "value", ""},
    {"Axis", Access::put, member::ScaleType, "value", ""},
    {"Axis", Access::put, member::DisplayUnit, "value", ""},
    {"Axis", Access::put, member::HasMajorGridlines, "value", ""},
    {"Axis", Access::put, member::HasMinorGridlines, "value", ""},
    {"Axis", Access::get, member::TickLabelSpacing, "", "Long"},
    {"Axis", Access::put, member::TickMarkSpacing, "value", ""},
    {"Axis", Access::put, member::BaseUnitIsAuto, "value", ""},
    {"Axis", Access::put, member::AxisBetweenCategories, "value", ""},

    {"TickLabels", Access::get, member::Font, "", "Font"},

    {"Gridlines", Access::get, member::Border, "", "Border"},

    {"ChartObjects", Access::get, member::NewEnum, "", "Enumerator of ChartObject"},

    {"ChartObject", Access::get, member::Chart, "", "Chart"},
    {"ChartObject", Access::call, member::Delete, "", ""},

    {"Shapes", Access::get, member::NewEnum, "", "Enumerator of Shape"},

    {"Shape", Access::get, member::Type, "", "Long"},
    {"Shape", Access::get, member::DrawingObject, "", "DrawingObject"},
    {"Shape", Access::put, member::Left, "points", ""},
    {"Shape", Access::put, member::Top, "points", ""},
    {"Shape", Access::put, member::Width, "points", ""},
    {"Shape", Access::put, member::Height, "points", ""},

    {"DrawingObject", Access::get, member::Chart, "", "Chart"},

    {"Enumerator", Access::call, member::Next, "", "Variant"},
});

}  // namespace

std::span<const MemberUse> memberTable() {
  return table;
}

}  // namespace mervane::sheet
