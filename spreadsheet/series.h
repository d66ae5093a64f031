#pragma once

#include <cstdint>
#include <string>

#include "spreadsheet/range.h"

namespace mervane::sheet {

/// One point of a series, such as one column of a column chart.
class Point : public Proxy {
 public:
  using Proxy::Proxy;
  sheet::Border Border() const { return get<sheet::Border>(member::Border); }
  sheet::Interior Interior() const { return get<sheet::Interior>(member::Interior); }
  void Shadow(bool on) const { put(member::Shadow, on); }
  void InvertIfNegative(bool on) const { put(member::InvertIfNegative, on); }
};

/// The points of a series; enumerated, they are Point.
class Points : public Proxy {
 public:
  using Proxy::Proxy;
};

class Series : public Proxy {
 public:
  using Proxy::Proxy;
  std::string Formula() const { return get<std::string>(member::Formula); }
  void Name(const std::string& name) const { put(member::Name, name); }
  /// The category texts by reference.
  void XValues(const sheet::Range& cells) const { put(member::XValues, cells); }
  void Delete() const { call<void>(member::Delete); }
  sheet::Border Border() const { return get<sheet::Border>(member::Border); }
  sheet::Interior Interior() const { return get<sheet::Interior>(member::Interior); }
  void MarkerBackgroundColorIndex(std::int32_t index) const { put(member::MarkerBackgroundColorIndex, index); }
  void MarkerForegroundColorIndex(std::int32_t index) const { put(member::MarkerForegroundColorIndex, index); }
  void Smooth(bool on) const { put(member::Smooth, on); }
  void MarkerSize(std::int32_t points) const { put(member::MarkerSize, points); }
  void Shadow(bool on) const { put(member::Shadow, on); }
  sheet::Points Points() const { return call<sheet::Points>(member::Points); }
};

/// The series of a chart; enumerated, they are Series.
class SeriesCollection : public Proxy {
 public:
  using Proxy::Proxy;
  std::int32_t Count() const { return get<std::int32_t>(member::Count); }
  Series NewSeries() const { return call<Series>(member::NewSeries); }
};

}  // namespace mervane::sheet
