#include "hosts/charts/axis_objects.h"

#include "hosts/charts/format_objects.h"

namespace mervane::charts {
namespace {

namespace member = sheet::member;

constexpr std::int32_t largestSpacing = 31999;

bool isSpacing(std::int32_t spacing) {
  return spacing >= 1 && spacing <= largestSpacing;
}

bool isCrossing(std::int32_t crosses) {
  return crosses == number::automatic || crosses == number::crossesAtMaximum || crosses == number::crossesAtMinimum;
}

bool isScale(std::int32_t scale) {
  return scale == number::linear || scale == number::logarithmic;
}

bool isDisplayUnit(std::int32_t unit) {
  return unit == number::none || (unit <= number::hundreds && unit >= number::trillions);
}

/// A unit or time base that only the automatic choice exists for.
Variant alwaysAutomatic(const Call& call, bool& slot) {
  if (call.isPut() && !call.assigned<bool>()) refuse("This unit is always chosen automatically.");
  return call.property(slot);
}

}  // namespace

Variant AxisObject::categoryMember(const Call& call) {
  switch (call.member()) {
    case member::TickMarkSpacing:
    case member::TickLabelSpacing: {
      std::int32_t& slot = call.member() == member::TickMarkSpacing ? axis_->tickMarkSpacing : axis_->tickLabelSpacing;
      Variant result = call.property(slot, isSpacing);
      if (call.isPut() && call.member() == member::TickLabelSpacing) axis_->labelSpacingSet = true;
      return result;
    }
    case member::BaseUnitIsAuto:
      return alwaysAutomatic(call, axis_->baseUnitIsAuto);
    case member::AxisBetweenCategories:
      return call.property(axis_->betweenCategories);
    default:
      refuseMember();
  }
}

Variant AxisObject::valueMember(const Call& call) {
  switch (call.member()) {
    case member::MajorUnitIsAuto:
      return alwaysAutomatic(call, axis_->majorUnitIsAuto);
    case member::MinorUnitIsAuto:
      return alwaysAutomatic(call, axis_->minorUnitIsAuto);
    case member::ScaleType:
      return call.property(axis_->scaleType, isScale);
    case member::DisplayUnit:
      return call.property(axis_->displayUnit, isDisplayUnit);
    default:
      refuseMember();
  }
}

Variant AxisObject::answer(const Call& call) {
  switch (call.member()) {
    case member::Type:
      return call.readOnly(axis_->type);
    case member::TickLabels:
      return call.readOnly(make<TickLabelsObject>(axis_));
    case member::Border:
      return call.readOnly(make<BorderObject>(std::shared_ptr<Line>(axis_, &axis_->border)));
    case member::HasMajorGridlines:
      return call.property(axis_->hasMajorGridlines);
    case member::HasMinorGridlines:
      return call.property(axis_->hasMinorGridlines);
    case member::MajorGridlines:
      if (!axis_->hasMajorGridlines) refuse("The axis has no major gridlines.");
      return call.readOnly(make<GridlinesObject>(axis_));
    case member::Crosses:
      return call.property(axis_->crosses, isCrossing);
    case member::ReversePlotOrder:
      return call.property(axis_->reversed);
    default:
      return axis_->type == number::categoryAxis ? categoryMember(call) : valueMember(call);
  }
}

Variant TickLabelsObject::answer(const Call& call) {
  if (call.member() != member::Font) refuseMember();
  return call.readOnly(make<FontObject>(std::shared_ptr<Font>(axis_, &axis_->tickLabels)));
}

Variant GridlinesObject::answer(const Call& call) {
  if (call.member() != member::Border) refuseMember();
  if (!axis_->hasMajorGridlines) refuse("The axis has no major gridlines.");
  return call.readOnly(make<BorderObject>(std::shared_ptr<Line>(axis_, &axis_->majorGridlines)));
}

}  // namespace mervane::charts
