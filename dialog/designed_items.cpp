#include "dialog/designed_items.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace mervane::dialog {

namespace {

using platform::OptionItem;
using platform::OptionItems;
using platform::OptionKind;

/// What an item is born with besides its key and caption.
struct Design {
  std::int32_t position;
  const char* key;
  const char* caption;
  OptionKind kind;
  const char* value;      ///< null for none
  bool on;                ///< checked, or for a group header open
  std::int32_t ownWidth;  ///< pixels; 0 for an item that takes the list's width
};

constexpr auto header = OptionKind::groupHeader;
constexpr auto browse = OptionKind::editWithBrowse;
constexpr auto edit = OptionKind::edit;
constexpr auto choose = OptionKind::dropDown;
constexpr auto check = OptionKind::check;
constexpr auto radio = OptionKind::radio;

/// Positions that are missing here are spacers. NB: SPLITMULTIPLE follows its header without one.
constexpr Design designs[] = {
    // clang-format off
    {1,  "DATAGROUP",           "Data",                         header, nullptr, true,  0},
    {3,  "INPUTS",              "Inputs:",                      browse, "",      false, 301},
    {5,  "OUTPUTS",             "Outputs:",                     browse, "",      false, 309},
    {7,  "CLUSTERS",            "Clusters:",                    edit,   "3",     false, 309},
    {9,  "NNPARAMSGROUP",       "Neural network parameters",    header, nullptr, true,  0},
    {11, "LEARNINGRATE",        "Start learning rate:",         edit,   "0.5",   false, 358},
    {13, "EPOCHS",              "Epochs:",                      edit,   "100",   false, 304},
    {15, "INITIALWEIGHTS",      "Initial weights:",             edit,   "0.3",   false, 336},
    {17, "STARTLEARNINGRADIUS", "Start learning radius:",       edit,   "3",     false, 367},
    {19, "ACTIVATIONFUNCTION",  "Activation function:",         choose, "",      false, 360},
    {21, "USECONVEX",           "Use convex combination",       check,  nullptr, true,  260},
    {23, "SCALEVALUES",         "Scale values",                 check,  nullptr, true,  260},
    {25, "DEFAULTS",            "Set default values",           OptionKind::command, nullptr, false, 0},
    {27, "OUTPUTGROUP",         "Output formatting parameters", header, nullptr, false, 0},
    {28, "SPLITMULTIPLE",       "to multiple columns",          radio,  "0",     false, 0},
    {30, "SPLITONE",            "to one column",                radio,  "1",     true,  0},
    {32, "AUTOFILTER",          "Set autofilter",               check,  nullptr, true,  0},
    {34, "DRAWCHARTS",          "Draw charts",                  check,  nullptr, true,  0},
    {36, "AVERAGES",            "Calculate averages",           check,  nullptr, true,  0},
    {38, "WEIGHTEDAVERAGES",    "Calculate weighted averages",  check,  nullptr, true,  0},
    {40, "MINIMUMS",            "Calculate minimums",           check,  nullptr, true,  0},
    {42, "MAXIMUMS",            "Calculate maximums",           check,  nullptr, true,  0},
    {44, "CLUSTERWEIGHTS",      "Calculate cluster weight",     check,  nullptr, true,  0},
    {46, "SETCOLORS",           "Set colors",                   check,  nullptr, true,  0},
    {48, "SORTCLUSTERS",        "Sort by cluster",              check,  nullptr, true,  0},
    {50, "TABLETORANGE",        "Convert table to range",       check,  nullptr, true,  0},
    {52, "DLLVERSION",          "Mervane library version:",     OptionKind::staticLabel, nullptr, false, 0},
    // clang-format on
};

constexpr std::int32_t itemCount = 52;
constexpr std::int32_t firstOutputPosition = 27;

struct ChoiceDesign {
  const char* key;
  const char* caption;
  const char* code;
};

constexpr ChoiceDesign activationFunctions[] = {
    {"ZEROT", "Threshold function", "1"},
    {"TANH", "Hyperbolic tangent function", "2"},
    {"EXP05", "Zero-based Log-Sigmoid Function", "3"},
    {"EXP", "Log-Sigmoid Function", "4"},
};

std::int32_t heightOf(OptionKind kind) {
  switch (kind) {
    case OptionKind::groupHeader:
    case OptionKind::check:
    case OptionKind::radio:
      return 17;
    case OptionKind::spacer:
      return 2;
    case OptionKind::edit:
    case OptionKind::editWithBrowse:
    case OptionKind::dropDown:
      return 21;
    case OptionKind::command:
    case OptionKind::staticLabel:
      return 22;
    case OptionKind::choice:
      return 16;
  }
  return 0;
}

OptionItem spacer(std::int32_t position) {
  OptionItem item;
  item.kind = OptionKind::spacer;
  item.height = heightOf(item.kind);
  item.automaticHeight = false;
  item.textColour = platform::colourWindowText;
  // The two spacers that close the first two groups' leading parts stand at the margin.
  item.indent = position == 8 || position == 20 ? 0 : 1;
  return item;
}

std::vector<OptionItem> choices() {
  std::vector<OptionItem> items;
  for (const ChoiceDesign& design : activationFunctions) {
    OptionItem item;
    item.Key = design.key;
    item.Caption = design.caption;
    item.kind = OptionKind::choice;
    item.Value = design.code;
    item.indent = 1;
    item.height = heightOf(item.kind);
    item.textColour = platform::colourWindowText;
    items.push_back(std::move(item));
  }
  return items;
}

OptionItem designed(const Design& design) {
  OptionItem item;
  item.Key = design.key;
  item.Caption = design.caption;
  item.kind = design.kind;
  if (design.value != nullptr) item.Value = design.value;
  item.height = heightOf(design.kind);
  item.Width = static_cast<float>(design.ownWidth) * platform::twipsPerPixel;
  item.automaticWidth = design.ownWidth == 0;

  const bool isHeader = design.kind == OptionKind::groupHeader;
  const bool isCommand = design.kind == OptionKind::command;
  const bool isLabel = design.kind == OptionKind::staticLabel;
  item.indent = isHeader ? 0 : 1;
  item.bold = isHeader || isCommand;
  item.Expanded = isHeader && design.on;
  item.Checked = !isHeader && design.on;
  if (isCommand) {
    item.alignment = 0;
    item.imageKey = design.key;
  } else if (isLabel || (!isHeader && design.position < firstOutputPosition)) {
    item.alignment = 1;
  }
  if (isLabel) item.textColour = platform::colourGreyText;
  if (design.kind == OptionKind::dropDown) item.SubItems = choices();
  return item;
}

OptionItem button(const char* key, const char* caption, const char* imageKey, float pixels) {
  OptionItem item;
  item.Key = key;
  item.Caption = caption;
  item.imageKey = imageKey;
  item.height = heightOf(OptionKind::command);
  item.bold = true;
  item.Width = pixels * platform::twipsPerPixel;
  item.automaticWidth = false;
  return item;
}

}  // namespace

OptionItems designedOptions() {
  std::vector<OptionItem> items;
  const Design* next = std::begin(designs);
  for (std::int32_t position = 1; position <= itemCount; ++position) {
    if (next != std::end(designs) && next->position == position) {
      items.push_back(designed(*next++));
    } else {
      items.push_back(spacer(position));
    }
  }
  return OptionItems(std::move(items));
}

OptionItems designedButtons() {
  return OptionItems({button("CLASSIFY", "Clusterize", "classify", 81), button("CLOSE", "Close", "close", 55)});
}

}  // namespace mervane::dialog
