#pragma once

#include <cstdint>
#include <string>

#include "spreadsheet/chart.h"
#include "spreadsheet/range.h"
#include "spreadsheet/shape.h"

namespace mervane::sheet {

/// Notations of references.
inline constexpr std::int32_t referenceStyleA1 = 1;
inline constexpr std::int32_t referenceStyleR1C1 = -4150;

class Worksheet : public Proxy {
 public:
  using Proxy::Proxy;
  std::string Name() const { return get<std::string>(member::Name); }
  /// @param reference in the application's notation, with or without the sheet.
  sheet::Range Range(const std::string& reference) const { return get<sheet::Range>(member::Range, reference); }
  sheet::ChartObjects ChartObjects() const { return call<sheet::ChartObjects>(member::ChartObjects); }
  sheet::Shapes Shapes() const { return get<sheet::Shapes>(member::Shapes); }
  /// Whether the filter arrows are shown.
  bool AutoFilterMode() const { return get<bool>(member::AutoFilterMode); }
};

inline Worksheet Range::Worksheet() const {
  return get<sheet::Worksheet>(member::Worksheet);
}

/// The worksheets of a workbook.
class Worksheets : public Proxy {
 public:
  using Proxy::Proxy;
  std::int32_t Count() const { return get<std::int32_t>(member::Count); }
  /// By position, from 1.
  Worksheet Item(std::int32_t position) const { return get<Worksheet>(member::Item, position); }
  /// By name, in whichever case; raises where there is none.
  Worksheet Item(const std::string& name) const { return get<Worksheet>(member::Item, name); }
};

class Workbook : public Proxy {
 public:
  using Proxy::Proxy;
  sheet::Worksheets Worksheets() const { return get<sheet::Worksheets>(member::Worksheets); }
  Worksheet ActiveSheet() const { return get<Worksheet>(member::ActiveSheet); }
};

class Application : public Proxy {
 public:
  using Proxy::Proxy;
  /// The range that a reference names, on the active sheet where it names none.
  sheet::Range Range(const std::string& reference) const { return get<sheet::Range>(member::Range, reference); }
  Workbook ActiveWorkbook() const { return get<Workbook>(member::ActiveWorkbook); }
  Worksheet ActiveSheet() const { return get<Worksheet>(member::ActiveSheet); }
  /// The active chart; an empty reference where there is none.
  Chart ActiveChart() const { return get<Chart>(member::ActiveChart); }
  sheet::Charts Charts() const { return get<sheet::Charts>(member::Charts); }
  /// Such as "16.0".
  std::string Version() const { return get<std::string>(member::Version); }
  /// The notation in which references are written: referenceStyleA1 or referenceStyleR1C1.
  std::int32_t ReferenceStyle() const { return get<std::int32_t>(member::ReferenceStyle); }
  /// The formula brought from one notation into another; an error value where it is none.
  Variant ConvertFormula(const std::string& formula, std::int32_t fromStyle, std::int32_t toStyle) const {
    return call<Variant>(member::ConvertFormula, formula, fromStyle, toStyle);
  }
  void ScreenUpdating(bool on) const { put(member::ScreenUpdating, on); }
};

}  // namespace mervane::sheet
