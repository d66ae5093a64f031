#pragma once

#include <cstdint>

#include "spreadsheet/chart.h"

namespace mervane::sheet {

inline constexpr std::int32_t shapeTypeChart = 3;

/// What a shape draws; of a chart shape, the chart.
class DrawingObject : public Proxy {
 public:
  using Proxy::Proxy;
  sheet::Chart Chart() const { return get<sheet::Chart>(member::Chart); }
};

/// Whatever floats over the cells of a worksheet; positions and sizes in points.
class Shape : public Proxy {
 public:
  using Proxy::Proxy;
  std::int32_t Type() const { return get<std::int32_t>(member::Type); }
  sheet::DrawingObject DrawingObject() const { return get<sheet::DrawingObject>(member::DrawingObject); }
  void Left(double points) const { put(member::Left, points); }
  void Top(double points) const { put(member::Top, points); }
  void Width(double points) const { put(member::Width, points); }
  void Height(double points) const { put(member::Height, points); }
};

/// The shapes of a worksheet; enumerated, they are Shape.
class Shapes : public Proxy {
 public:
  using Proxy::Proxy;
};

}  // namespace mervane::sheet
