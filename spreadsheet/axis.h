#pragma once

#include <cstdint>

#include "spreadsheet/formats.h"

namespace mervane::sheet {

inline constexpr std::int32_t axisCategory = 1;
inline constexpr std::int32_t axisValue = 2;
inline constexpr std::int32_t axisGroupPrimary = 1;
inline constexpr std::int32_t scaleLinear = -4132;

class TickLabels : public Proxy {
 public:
  using Proxy::Proxy;
  sheet::Font Font() const { return get<sheet::Font>(member::Font); }
};

class Gridlines : public Proxy {
 public:
  using Proxy::Proxy;
  sheet::Border Border() const { return get<sheet::Border>(member::Border); }
};

class Axis : public Proxy {
 public:
  using Proxy::Proxy;
  sheet::TickLabels TickLabels() const { return get<sheet::TickLabels>(member::TickLabels); }
  Gridlines MajorGridlines() const { return get<Gridlines>(member::MajorGridlines); }
  void MinorUnitIsAuto(bool on) const { put(member::MinorUnitIsAuto, on); }
  void MajorUnitIsAuto(bool on) const { put(member::MajorUnitIsAuto, on); }
  void Crosses(std::int32_t where) const { put(member::Crosses, where); }
  void ReversePlotOrder(bool on) const { put(member::ReversePlotOrder, on); }
  void ScaleType(std::int32_t kind) const { put(member::ScaleType, kind); }
  void DisplayUnit(std::int32_t unit) const { put(member::DisplayUnit, unit); }
  void HasMajorGridlines(bool on) const { put(member::HasMajorGridlines, on); }
  void HasMinorGridlines(bool on) const { put(member::HasMinorGridlines, on); }
  std::int32_t TickLabelSpacing() const { return get<std::int32_t>(member::TickLabelSpacing); }
  void TickMarkSpacing(std::int32_t categories) const { put(member::TickMarkSpacing, categories); }
  void BaseUnitIsAuto(bool on) const { put(member::BaseUnitIsAuto, on); }
  void AxisBetweenCategories(bool on) const { put(member::AxisBetweenCategories, on); }
};

}  // namespace mervane::sheet
