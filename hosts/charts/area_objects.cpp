#include "hosts/charts/area_objects.h"

#include <optional>

#include "hosts/charts/format_objects.h"

namespace mervane::charts {
namespace {

namespace member = sheet::member;

Edge edgeOf(sheet::member::Id id) {
  switch (id) {
    case member::Left:
      return Edge::left;
    case member::Top:
      return Edge::top;
    case member::Width:
      return Edge::width;
    default:
      return Edge::height;
  }
}

double sideOf(const Box& box, Edge edge) {
  switch (edge) {
    case Edge::left:
      return box.left;
    case Edge::top:
      return box.top;
    case Edge::width:
      return box.width;
    case Edge::height:
      return box.height;
  }
  return 0.0;
}

Size sizeOf(const Box& box) {
  return {box.width, box.height};
}

/// Reads or assigns one of Left, Top, Width and Height of a part of a chart.
Variant frameMember(const Call& call, Frame& frame, const Box& now, Size size, bool keepsExtent) {
  const Edge edge = edgeOf(call.member());
  if (!call.isPut()) return sideOf(now, edge);
  assign(frame, edge, call.assigned<double>(), now, size, keepsExtent);
  return {};
}

bool isLegendPosition(std::int32_t position) {
  switch (position) {
    case number::legendTop:
    case number::legendBottom:
    case number::legendLeft:
    case number::legendRight:
    case number::legendCorner:
      return true;
    default:
      return false;
  }
}

}  // namespace

Variant ChartAreaObject::answer(const Call& call) {
  ChartArea& area = chart().area;
  switch (call.member()) {
    case member::Border:
      return call.readOnly(make<BorderObject>(part(area.border)));
    case member::Interior:
      return call.readOnly(make<InteriorObject>(part(area.interior)));
    case member::Shadow:
      return call.property(area.shadow);
    case member::Left:
    case member::Top:
      return call.readOnly(0.0);
    case member::Width:
      return call.readOnly(book().boxOf(chart()).width);
    case member::Height:
      return call.readOnly(book().boxOf(chart()).height);
    default:
      refuseMember();
  }
}

Variant PlotAreaObject::answer(const Call& call) {
  PlotArea& area = chart().plotArea;
  switch (call.member()) {
    case member::Border:
      return call.readOnly(make<BorderObject>(part(area.border)));
    case member::Interior:
      return call.readOnly(make<InteriorObject>(part(area.interior)));
    case member::Left:
    case member::Top:
    case member::Width:
    case member::Height: {
      const Size size = sizeOf(book().boxOf(chart()));
      return frameMember(call, area.frame, plotBox(chart(), size), size, false);
    }
    default:
      refuseMember();
  }
}

Variant LegendObject::position(const Call& call) {
  Legend& legend = chart().legend;
  Variant result = call.property(legend.position, isLegendPosition);
  // A place that was set by hand is given up for the named one; a size stays.
  if (call.isPut()) {
    legend.frame.left.reset();
    legend.frame.top.reset();
  }
  return result;
}

Variant LegendObject::answer(const Call& call) {
  if (!chart().hasLegend) refuse("The chart has no legend.");
  Legend& legend = chart().legend;
  switch (call.member()) {
    case member::Position:
      return position(call);
    case member::Border:
      return call.readOnly(make<BorderObject>(part(legend.border)));
    case member::Interior:
      return call.readOnly(make<InteriorObject>(part(legend.interior)));
    case member::Font:
      return call.readOnly(make<FontObject>(part(legend.font)));
    case member::Shadow:
      return call.property(legend.shadow);
    case member::Left:
    case member::Top:
    case member::Width:
    case member::Height: {
      const Size size = sizeOf(book().boxOf(chart()));
      return frameMember(call, legend.frame, legendBox(chart(), size), size, true);
    }
    default:
      refuseMember();
  }
}

Variant ChartTitleObject::answer(const Call& call) {
  if (chart().title != title_) refuse("The chart has no such title any more.");
  switch (call.member()) {
    case member::Text:
      if (!call.isPut()) return title_->text;
      title_->text = call.assigned<std::string>();
      return {};
    case member::AutoScaleFont:
      return call.property(title_->autoScaleFont);
    case member::Font:
      return call.readOnly(make<FontObject>(std::shared_ptr<Font>(title_, &title_->font)));
    case member::Left:
    case member::Top: {
      const Size size = sizeOf(book().boxOf(chart()));
      return frameMember(call, title_->frame, titleBox(chart(), size), size, true);
    }
    default:
      refuseMember();
  }
}

}  // namespace mervane::charts
