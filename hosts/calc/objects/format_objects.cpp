#include "hosts/calc/objects/format_objects.h"

#include <com/sun/star/awt/FontWeight.hpp>
#include <com/sun/star/beans/PropertyState.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/beans/XPropertyState.hpp>
#include <com/sun/star/table/TableBorder2.hpp>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "hosts/calc/format_buffer.h"
#include "hosts/calc/objects/border_line.h"
#include "hosts/calc/session.h"
#include "hosts/calc/sheet_facts.h"
#include "hosts/objects/arguments.h"
#include "hosts/objects/numbers.h"
#include "spreadsheet/object.h"
#include "spreadsheet/palette.h"

namespace mervane::calc {

namespace member = sheet::member;
using sheet::Access;

namespace {

using SessionRef = std::shared_ptr<Session>;

using hosts::number::automatic;
using hosts::number::none;

constexpr std::int32_t noFill = -1;
constexpr std::int32_t white = 0xFFFFFF;
constexpr std::int32_t largestColor = 0xFFFFFF;

/// Between 0xBBGGRR of the object model and 0xRRGGBB of the office.
std::int32_t swapped(std::int32_t color) {
  return ((color & 0xFF) << 16) | (color & 0xFF00) | ((color >> 16) & 0xFF);
}

std::int32_t paletteColor(std::int32_t index) {
  if (index < 1 || index > sheet::paletteSize) {
    refuse("There is no colour " + std::to_string(index) + "; the palette has the colours 1 to 56.");
  }
  return static_cast<std::int32_t>(sheet::paletteColor(index));
}

/// The palette has some colours twice; the index that a colour was last asked for by is the one that is meant.
/// @param otherwise the index of a colour that was never asked for; 0 for the nearest one
std::int32_t indexOf(const std::map<std::int32_t, std::int32_t>& askedFor, std::int32_t rgb, std::int32_t otherwise) {
  const auto known = askedFor.find(rgb);
  if (known != askedFor.end()) return known->second;
  return otherwise != 0 ? otherwise : sheet::nearestPaletteIndex(static_cast<std::uint32_t>(rgb));
}

/// A property that all cells of the area agree on; nothing where they do not.
uno::Any common(Session& session, const SheetArea& area, const rtl::OUString& name) {
  session.settle();
  return inOffice("tell a format", [&] {
    const auto range = session.rangeOf(area);
    const uno::Reference<css::beans::XPropertyState> state(range, uno::UNO_QUERY_THROW);
    if (state->getPropertyState(name) == css::beans::PropertyState_AMBIGUOUS_VALUE) return uno::Any();
    const uno::Reference<css::beans::XPropertySet> properties(range, uno::UNO_QUERY_THROW);
    return properties->getPropertyValue(name);
  });
}

void requireFormatting(Session& session, const SheetArea& area) {
  inOffice("change formats", [&] { session.facts().requireUnprotected(area.sheet, "changes of formats"); });
}

class InteriorObject final : public sheet::Object {
 public:
  InteriorObject(SessionRef session, const SheetArea& area) : session_(std::move(session)), area_(area) {}

  Variant invoke(Access access, member::Id member, hosts::Arguments arguments) override {
    session_->requireOpen();
    if (access != Access::put) return get(member);
    const std::int32_t value = hosts::wholeArgument(arguments, 0);
    requireFormatting(*session_, area_);
    switch (member) {
      case member::Pattern:
        pattern(value);
        return {};
      case member::ColorIndex:
        if (value == none || value == automatic) {
          fill(noFill);
        } else {
          fill(paletteColor(value));
          session_->fillColors[paletteColor(value)] = value;
        }
        return {};
      case member::Color:
        if (value < 0 || value > largestColor) refuse("A colour lies between 0 and 16777215.");
        fill(swapped(value));
        return {};
      case member::PatternColorIndex:
        // A fill here has no pattern, and of a solid one this colour is not seen; only its absence can be had.
        if (value != automatic && value != none) {
          static_cast<void>(paletteColor(value));
          refuse("A fill of cells has no second colour here.");
        }
        return {};
      default:
        raise(runtime::memberNotSupported);
    }
  }

 private:
  void fill(std::int32_t color) { session_->formats().set(area_, FormatBuffer::Property::fill, color); }

  void pattern(std::int32_t number) {
    if (number == none || number == automatic) return fill(noFill);
    if (number != hosts::number::solid) refuse("A fill of cells is solid or none here; there is no pattern.");
    if (!session_->formats().willBeFilled(area_)) {
      session_->formats().set(area_, FormatBuffer::Property::solidFill, white);
    }
  }

  Variant get(member::Id member) {
    const uno::Any value = common(*session_, area_, "CellBackColor");
    std::int32_t color = 0;
    const bool agreed = value >>= color;
    switch (member) {
      case member::Pattern:
        if (!agreed) return Null{};
        return color == noFill ? none : hosts::number::solid;
      case member::ColorIndex:
        if (!agreed) return Null{};
        return color == noFill ? none : indexOf(session_->fillColors, color, 0);
      case member::Color:
        if (!agreed) return Null{};
        return static_cast<double>(swapped(color == noFill ? white : color));
      case member::PatternColorIndex:
        if (!agreed) return Null{};
        return color == noFill ? none : automatic;
      default:
        raise(runtime::memberNotSupported);
    }
  }

  SessionRef session_;
  SheetArea area_;
};

class FontObject final : public sheet::Object {
 public:
  FontObject(SessionRef session, const SheetArea& area) : session_(std::move(session)), area_(area) {}

  Variant invoke(Access access, member::Id member, hosts::Arguments arguments) override {
    session_->requireOpen();
    if (access == Access::put) {
      if (member != member::Bold) raise(runtime::memberNotSupported);
      const bool bold = hosts::truthArgument(arguments, 0);
      requireFormatting(*session_, area_);
      const float weight = bold ? css::awt::FontWeight::BOLD : css::awt::FontWeight::NORMAL;
      session_->formats().set(area_, FormatBuffer::Property::weight, static_cast<std::int32_t>(weight));
      return {};
    }
    switch (member) {
      case member::Bold: {
        float weight = 0.0F;
        if (!(common(*session_, area_, "CharWeight") >>= weight)) return Null{};
        return weight > css::awt::FontWeight::NORMAL;
      }
      case member::Name: {
        rtl::OUString name;
        if (!(common(*session_, area_, "CharFontName") >>= name)) return Null{};
        return Variant(fromOffice(name));
      }
      case member::Size: {
        float size = 0.0F;
        if (!(common(*session_, area_, "CharHeight") >>= size)) return Null{};
        return static_cast<double>(size);
      }
      default:
        raise(runtime::memberNotSupported);
    }
  }

 private:
  SessionRef session_;
  SheetArea area_;
};

class BorderObject final : public sheet::Object {
 public:
  BorderObject(SessionRef session, const SheetArea& area, std::int32_t index)
      : session_(std::move(session)), area_(area), index_(index) {}

  Variant invoke(Access access, member::Id member, hosts::Arguments arguments) override {
    session_->requireOpen();
    requireLine();
    if (access != Access::put) return get(member);
    const std::int32_t value = hosts::wholeArgument(arguments, 0);
    session_->settle();
    // What no line can be is refused before anything is changed. A line that differs along the cells begins anew.
    LineFormat line = read().value_or(LineFormat());
    assign(line, member, value);
    requireFormatting(*session_, area_);
    inOffice([&] { return "change the borders of " + session_->place(area_.sheet, area_.area); },
             [&] {
               css::table::TableBorder2 borders;
               const Slot slot = slotOf(borders);
               slot.line = line.line();
               slot.isValid = true;
               properties()->setPropertyValue("TableBorder2", uno::Any(borders));
             });
    return {};
  }

 private:
  /// One of the lines of a range, and whether it is one.
  struct Slot {
    css::table::BorderLine2& line;
    sal_Bool& isValid;
  };

  [[nodiscard]] Slot slotOf(css::table::TableBorder2& borders) const {
    switch (index_) {
      case 7:
        return {borders.LeftLine, borders.IsLeftLineValid};
      case 8:
        return {borders.TopLine, borders.IsTopLineValid};
      case 9:
        return {borders.BottomLine, borders.IsBottomLineValid};
      case 10:
        return {borders.RightLine, borders.IsRightLineValid};
      case 11:
        return {borders.VerticalLine, borders.IsVerticalLineValid};
      default:
        return {borders.HorizontalLine, borders.IsHorizontalLineValid};
    }
  }

  void requireLine() const {
    const bool has = index_ == 11 ? area_.area.columns() > 1 : index_ != 12 || area_.area.rows() > 1;
    if (!has) refuse("The cells " + a1(area_.area) + " have no inner line of this kind.");
  }

  [[nodiscard]] uno::Reference<css::beans::XPropertySet> properties() const {
    return {session_->rangeOf(area_), uno::UNO_QUERY_THROW};
  }

  /// The line as it is; nothing where it differs along the cells.
  [[nodiscard]] std::optional<LineFormat> read() const {
    return inOffice("tell a border", [&]() -> std::optional<LineFormat> {
      css::table::TableBorder2 borders;
      properties()->getPropertyValue("TableBorder2") >>= borders;
      const Slot slot = slotOf(borders);
      if (!slot.isValid) return std::nullopt;
      return LineFormat(slot.line);
    });
  }

  void assign(LineFormat& line, member::Id member, std::int32_t value) const {
    switch (member) {
      case member::LineStyle:
        line.style(value);
        return;
      case member::Weight:
        line.weight(value);
        return;
      case member::ColorIndex:
        if (value == none) {
          line = {};
        } else {
          line.color(value == automatic ? 0 : paletteColor(value));
          session_->lineColors[line.color()] = value;
        }
        return;
      case member::Color:
        line.color(swapped(value & largestColor));
        return;
      default:
        raise(runtime::memberNotSupported);
    }
  }

  Variant get(member::Id member) {
    session_->settle();
    const std::optional<LineFormat> line = read();
    if (!line) return Null{};
    switch (member) {
      case member::LineStyle:
        return line->style();
      case member::Weight:
        return line->weight();
      case member::ColorIndex:
        if (line->style() == none) return none;
        return indexOf(session_->lineColors, line->color(), line->color() == 0 ? automatic : 0);
      default:
        raise(runtime::memberNotSupported);
    }
  }

  SessionRef session_;
  SheetArea area_;
  std::int32_t index_;
};

}  // namespace

Variant makeInterior(const SessionRef& session, const SheetArea& area) {
  return Variant(sheet::ObjectRef(std::make_shared<InteriorObject>(session, area)));
}

Variant makeFont(const SessionRef& session, const SheetArea& area) {
  return Variant(sheet::ObjectRef(std::make_shared<FontObject>(session, area)));
}

Variant makeBorder(const SessionRef& session, const SheetArea& area, std::int32_t index) {
  if (index < 7 || index > 12) refuse("There is no border " + std::to_string(index) + "; they are numbered 7 to 12.");
  return Variant(sheet::ObjectRef(std::make_shared<BorderObject>(session, area, index)));
}

}  // namespace mervane::calc
