#include "hosts/charts/format_objects.h"

#include "spreadsheet/palette.h"

namespace mervane::charts {
namespace {

namespace member = sheet::member;

/// The application's font where a chart names none.
constexpr const char* defaultFontName = "Calibri";
constexpr double defaultFontSize = 10.0;
constexpr double smallestFont = 1.0;
constexpr double largestFont = 409.0;

bool isLineStyle(std::int32_t style) {
  switch (style) {
    case number::continuous:
    case number::dash:
    case number::dashDot:
    case number::dashDotDot:
    case number::dot:
    case number::none:
    case number::automatic:
      return true;
    default:
      return false;
  }
}

bool isWeight(std::int32_t weight) {
  return weight == number::hairline || weight == number::thin || weight == number::medium || weight == number::thick;
}

bool isPattern(std::int32_t pattern) {
  return pattern == number::solid || pattern == number::none || pattern == number::automatic;
}

bool isUnderline(std::int32_t underline) {
  return underline == number::none || underline == number::singleUnderline || underline == number::doubleUnderline;
}

bool isBackground(std::int32_t background) {
  constexpr std::int32_t transparent = 2;
  constexpr std::int32_t opaque = 3;
  return background == number::automatic || background == transparent || background == opaque;
}

}  // namespace

bool isColorIndex(std::int32_t index) noexcept {
  return index == number::automatic || index == number::none || (index >= 1 && index <= sheet::paletteSize);
}

Variant BorderObject::answer(const Call& call) {
  switch (call.member()) {
    case member::ColorIndex: {
      Variant result = call.property(line_->colorIndex, isColorIndex);
      // A line without a colour is no line.
      if (call.isPut() && line_->colorIndex == number::none) line_->style = number::none;
      return result;
    }
    case member::Weight: {
      std::int32_t weight = line_->weight.value_or(number::thin);
      Variant result = call.property(weight, isWeight);
      if (call.isPut()) {
        line_->weight = weight;
        // A weight makes a line visible that there was none of.
        if (line_->style == number::none) line_->style = number::continuous;
      }
      return result;
    }
    case member::LineStyle:
      return call.property(line_->style, isLineStyle);
    default:
      refuseMember();
  }
}

Variant InteriorObject::answer(const Call& call) {
  switch (call.member()) {
    case member::ColorIndex: {
      Variant result = call.property(fill_->colorIndex, isColorIndex);
      if (call.isPut()) {
        if (fill_->colorIndex == number::none) {
          fill_->pattern = number::none;
        } else if (fill_->pattern == number::none || fill_->colorIndex != number::automatic) {
          fill_->pattern = fill_->colorIndex == number::automatic ? number::automatic : number::solid;
        }
      }
      return result;
    }
    case member::PatternColorIndex:
      return call.property(fill_->patternColorIndex, isColorIndex);
    case member::Pattern: {
      Variant result = call.property(fill_->pattern, isPattern);
      if (call.isPut() && fill_->pattern != number::none && fill_->colorIndex == number::none) {
        fill_->colorIndex = number::automatic;
      }
      return result;
    }
    default:
      refuseMember();
  }
}

Variant FontObject::style(const Call& call) {
  if (!call.isPut()) {
    const bool bold = font_->bold.value_or(false);
    const bool italic = font_->italic.value_or(false);
    if (bold) return italic ? "Bold Italic" : "Bold";
    return italic ? "Italic" : "Regular";
  }
  const std::string style = call.assigned<std::string>();
  if (style != "Regular" && style != "Bold" && style != "Italic" && style != "Bold Italic") {
    refuse("A font style is Regular, Bold, Italic or Bold Italic.");
  }
  font_->bold = style.starts_with("Bold");
  font_->italic = style.ends_with("Italic");
  return {};
}

Variant FontObject::answer(const Call& call) {
  switch (call.member()) {
    case member::Name:
      if (!call.isPut()) return font_->name.empty() ? std::string(defaultFontName) : font_->name;
      if (call.assigned<std::string>().empty()) refuse("A font needs a name.");
      font_->name = call.assigned<std::string>();
      return {};
    case member::Size: {
      if (!call.isPut()) return font_->size > 0.0 ? font_->size : defaultFontSize;
      const double size = call.assigned<double>();
      if (!(size >= smallestFont && size <= largestFont)) refuse("A font size is 1 to 409 points.");
      font_->size = size;
      return {};
    }
    case member::FontStyle:
      return style(call);
    case member::Bold: {
      bool bold = font_->bold.value_or(false);
      Variant result = call.property(bold);
      if (call.isPut()) font_->bold = bold;
      return result;
    }
    case member::Superscript: {
      Variant result = call.property(font_->superscript);
      if (call.isPut() && font_->superscript) font_->subscript = false;
      return result;
    }
    case member::Subscript: {
      Variant result = call.property(font_->subscript);
      if (call.isPut() && font_->subscript) font_->superscript = false;
      return result;
    }
    case member::Strikethrough:
      return call.property(font_->strikethrough);
    case member::OutlineFont:
    case member::Shadow:
      // The texts of a chart part cannot be drawn so.
      if (call.isPut() && call.assigned<bool>()) refuse("A chart's text has no outline and no shadow.");
      return call.isPut() ? Variant() : Variant(false);
    case member::Underline:
      return call.property(font_->underline, isUnderline);
    case member::ColorIndex:
      return call.property(font_->colorIndex, isColorIndex);
    case member::Background:
      return call.property(font_->background, isBackground);
    default:
      refuseMember();
  }
}

}  // namespace mervane::charts
