#include "spreadsheet/member.h"

#include <array>
#include <cstddef>

#include "mervane/runtime_errors.h"

namespace mervane::sheet {

namespace {

// In the order of the enumeration.
constexpr auto names = std::to_array<std::string_view>({
    "ActiveChart",
    "ActiveSheet",
    "ActiveWorkbook",
    "Add",
    "ApplyDataLabels",
    "AutoFilter",
    "AutoFilterMode",
    "AutoFit",
    "AutoScaleFont",
    "Axes",
    "AxisBetweenCategories",
    "Background",
    "BaseUnitIsAuto",
    "Bold",
    "Border",
    "Borders",
    "Cells",
    "Chart",
    "ChartArea",
    "ChartObjects",
    "Charts",
    "ChartTitle",
    "ChartType",
    "Color",
    "ColorIndex",
    "Column",
    "Columns",
    "ConvertFormula",
    "Count",
    "Crosses",
    "Delete",
    "DisplayUnit",
    "DrawingObject",
    "EntireColumn",
    "Font",
    "FontStyle",
    "Formula",
    "HasLegend",
    "HasMajorGridlines",
    "HasMinorGridlines",
    "HasTitle",
    "Height",
    "Interior",
    "InvertIfNegative",
    "Item",
    "Left",
    "Legend",
    "LineStyle",
    "Location",
    "MajorGridlines",
    "MajorUnitIsAuto",
    "MarkerBackgroundColorIndex",
    "MarkerForegroundColorIndex",
    "MarkerSize",
    "MinorUnitIsAuto",
    "Name",
    "NewSeries",
    "NumberFormat",
    "Offset",
    "OutlineFont",
    "Pattern",
    "PatternColorIndex",
    "PlotArea",
    "Points",
    "Position",
    "Range",
    "ReferenceStyle",
    "Resize",
    "ReversePlotOrder",
    "Rows",
    "ScaleType",
    "ScreenUpdating",
    "Select",
    "SeriesCollection",
    "SetSourceData",
    "Shadow",
    "Shapes",
    "Size",
    "Smooth",
    "Sort",
    "Strikethrough",
    "Subscript",
    "Superscript",
    "Text",
    "TickLabels",
    "TickLabelSpacing",
    "TickMarkSpacing",
    "Top",
    "Type",
    "Underline",
    "Value",
    "Version",
    "Weight",
    "Width",
    "Worksheet",
    "Worksheets",
    "XValues",
    "NewEnum",
    "Next",
});
static_assert(names.size() == std::size_t{member::Next} + 1);
static_assert(names[member::ActiveChart] == "ActiveChart" && names[member::Interior] == "Interior" &&
              names[member::SeriesCollection] == "SeriesCollection" && names[member::NewEnum] == "NewEnum");

}  // namespace

std::string_view nameOf(member::Id id) {
  if (id >= names.size()) raise(runtime::memberNotSupported);
  return names[id];
}

bool usesEnglishLocale(member::Id id) {
  return id == member::ScreenUpdating || id == member::ReferenceStyle || id == member::ConvertFormula;
}

}  // namespace mervane::sheet
