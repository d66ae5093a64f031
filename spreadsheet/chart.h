#pragma once

#include <cstdint>
#include <string>

#include "spreadsheet/axis.h"
#include "spreadsheet/series.h"

namespace mervane::sheet {

inline constexpr std::int32_t chartLineWithMarkers = 65;
inline constexpr std::int32_t chartColumnClustered = 51;
inline constexpr std::int32_t locationAsObject = 2;
inline constexpr std::int32_t plotByRows = 1;
inline constexpr std::int32_t plotByColumns = 2;
inline constexpr std::int32_t labelsShowValue = 2;
inline constexpr std::int32_t legendAtTop = -4160;

class ChartTitle : public Proxy {
 public:
  using Proxy::Proxy;
  std::string Text() const { return get<std::string>(member::Text); }
  void Text(const std::string& text) const { put(member::Text, text); }
  sheet::Font Font() const { return get<sheet::Font>(member::Font); }
  void Left(double points) const { put(member::Left, points); }
  void Top(double points) const { put(member::Top, points); }
  void AutoScaleFont(bool on) const { put(member::AutoScaleFont, on); }
};

class ChartArea : public Proxy {
 public:
  using Proxy::Proxy;
  sheet::Border Border() const { return get<sheet::Border>(member::Border); }
  sheet::Interior Interior() const { return get<sheet::Interior>(member::Interior); }
  double Height() const { return get<double>(member::Height); }
  double Width() const { return get<double>(member::Width); }
};

class PlotArea : public Proxy {
 public:
  using Proxy::Proxy;
  sheet::Border Border() const { return get<sheet::Border>(member::Border); }
  sheet::Interior Interior() const { return get<sheet::Interior>(member::Interior); }
  void Left(double points) const { put(member::Left, points); }
  void Top(double points) const { put(member::Top, points); }
  void Height(double points) const { put(member::Height, points); }
  double Width() const { return get<double>(member::Width); }
  void Width(double points) const { put(member::Width, points); }
};

class Legend : public Proxy {
 public:
  using Proxy::Proxy;
  sheet::Border Border() const { return get<sheet::Border>(member::Border); }
  sheet::Interior Interior() const { return get<sheet::Interior>(member::Interior); }
  sheet::Font Font() const { return get<sheet::Font>(member::Font); }
  void Position(std::int32_t where) const { put(member::Position, where); }
  void Shadow(bool on) const { put(member::Shadow, on); }
  void Left(double points) const { put(member::Left, points); }
  void Top(double points) const { put(member::Top, points); }
  double Height() const { return get<double>(member::Height); }
  void Height(double points) const { put(member::Height, points); }
  double Width() const { return get<double>(member::Width); }
  void Width(double points) const { put(member::Width, points); }
};

/// A chart, on a sheet of its own or embedded in a worksheet. A part that it lacks raises.
class Chart : public Proxy {
 public:
  using Proxy::Proxy;
  bool HasTitle() const { return get<bool>(member::HasTitle); }
  void HasTitle(bool on) const { put(member::HasTitle, on); }
  sheet::ChartTitle ChartTitle() const { return get<sheet::ChartTitle>(member::ChartTitle); }
  bool HasLegend() const { return get<bool>(member::HasLegend); }
  void HasLegend(bool on) const { put(member::HasLegend, on); }
  void ChartType(std::int32_t kind) const { put(member::ChartType, kind); }
  /// Moves the chart into a worksheet. This reference is not to be used afterwards; the embedded chart is
  /// Application.ActiveChart.
  void Location(std::int32_t where, const std::string& sheetName) const {
    call<void>(member::Location, where, sheetName);
  }
  void SetSourceData(const sheet::Range& source, std::int32_t plotBy) const {
    call<void>(member::SetSourceData, source, plotBy);
  }
  sheet::SeriesCollection SeriesCollection() const { return call<sheet::SeriesCollection>(member::SeriesCollection); }
  /// One series, from 1.
  Series SeriesCollection(std::int32_t index) const { return call<Series>(member::SeriesCollection, index); }
  void ApplyDataLabels(std::int32_t kind) const { call<void>(member::ApplyDataLabels, kind); }
  Axis Axes(std::int32_t type, std::int32_t group) const { return call<Axis>(member::Axes, type, group); }
  sheet::ChartArea ChartArea() const { return get<sheet::ChartArea>(member::ChartArea); }
  sheet::PlotArea PlotArea() const { return get<sheet::PlotArea>(member::PlotArea); }
  sheet::Legend Legend() const { return get<sheet::Legend>(member::Legend); }
};

/// The charts that stand on sheets of their own.
class Charts : public Proxy {
 public:
  using Proxy::Proxy;
  /// Makes a new chart on a sheet of its own and makes it the active one.
  Chart Add() const { return call<Chart>(member::Add); }
};

/// A chart embedded in a worksheet.
class ChartObject : public Proxy {
 public:
  using Proxy::Proxy;
  sheet::Chart Chart() const { return get<sheet::Chart>(member::Chart); }
  void Delete() const { call<void>(member::Delete); }
};

/// The embedded charts of a worksheet; enumerated, they are ChartObject.
class ChartObjects : public Proxy {
 public:
  using Proxy::Proxy;
};

}  // namespace mervane::sheet
