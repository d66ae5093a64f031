#include "hosts/workbook/objects/format_objects.h"

#include <array>
#include <string>
#include <utility>

#include "hosts/objects/arguments.h"
#include "hosts/objects/numbers.h"
#include "hosts/workbook/auto_fit.h"
#include "hosts/workbook/book.h"
#include "hosts/workbook/objects/pool.h"
#include "hosts/workbook/refuse.h"
#include "spreadsheet/object.h"
#include "spreadsheet/palette.h"

namespace mervane::workbook {

namespace member = sheet::member;
using sheet::Access;

namespace {

using hosts::number::automatic;
using hosts::number::hairline;
using hosts::number::medium;
using hosts::number::none;
using hosts::number::thick;
using hosts::number::thin;

constexpr std::uint32_t firstPaletteNumber = 7;  // index 1 of the palette is the indexed colour 8
constexpr std::uint32_t windowBackground = 65;

std::uint32_t swapped(std::uint32_t color) {
  return ((color & 0xFFU) << 16) | (color & 0xFF00U) | ((color >> 16) & 0xFFU);
}

/// A colour of the palette. In a workbook with a palette of its own the number may mean another colour, and then the
/// colour itself is named.
ColorName paletteName(const Styles& styles, std::int32_t index) {
  if (index < 1 || index > sheet::paletteSize) {
    refuse("There is no colour " + std::to_string(index) + "; the palette has the colours 1 to 56.");
  }
  const std::uint32_t number = static_cast<std::uint32_t>(index) + firstPaletteNumber;
  if (styles.hasUsualColor(number)) return {ColorName::Kind::indexed, number};
  return {ColorName::Kind::rgb, sheet::paletteColor(index)};
}

/// What ColorIndex reads for a colour.
std::int32_t indexOf(const ColorName& color) {
  switch (color.kind) {
    case ColorName::Kind::indexed:
      return static_cast<std::int32_t>(color.value < 8 ? color.value + 1 : color.value - firstPaletteNumber);
    case ColorName::Kind::rgb:
      return sheet::nearestPaletteIndex(color.value);
    case ColorName::Kind::theme:
      refuse("The colour is one of the workbook's theme, which has no number in the palette.");
    case ColorName::Kind::none:
    case ColorName::Kind::automatic:
      break;
  }
  return automatic;
}

/// What Color reads: 0xBBGGRR.
double colorOf(const Styles& styles, const ColorName& color, std::uint32_t otherwise) {
  std::uint32_t rgb = otherwise;
  if (color.kind == ColorName::Kind::rgb) rgb = color.value;
  if (color.kind == ColorName::Kind::indexed) rgb = styles.indexedColor(color.value);
  if (color.kind == ColorName::Kind::theme) static_cast<void>(indexOf(color));
  return static_cast<double>(swapped(rgb));
}

constexpr std::array<std::pair<std::int32_t, const char*>, 18> patterns{{
    {hosts::number::solid, "solid"},
    {none, "none"},
    {-4125, "mediumGray"},
    {-4126, "darkGray"},
    {-4124, "lightGray"},
    {17, "gray125"},
    {18, "gray0625"},
    {-4128, "darkHorizontal"},
    {-4166, "darkVertical"},
    {-4121, "darkDown"},
    {-4162, "darkUp"},
    {9, "darkGrid"},
    {10, "darkTrellis"},
    {11, "lightHorizontal"},
    {12, "lightVertical"},
    {13, "lightDown"},
    {14, "lightUp"},
    {15, "lightGrid"},
}};

/// The style of the application and the weight that stand for each word of the format.
struct LineWord {
  const char* word;
  std::int32_t style;
  std::int32_t weight;
};
constexpr std::array<LineWord, 14> lineWords{{
    {"none", none, thin},
    {"thin", hosts::number::continuous, thin},
    {"hair", hosts::number::continuous, hairline},
    {"medium", hosts::number::continuous, medium},
    {"thick", hosts::number::continuous, thick},
    {"dashed", hosts::number::dash, thin},
    {"mediumDashed", hosts::number::dash, medium},
    {"dotted", hosts::number::dot, thin},
    {"double", hosts::number::doubled, thick},
    {"dashDot", hosts::number::dashDot, thin},
    {"mediumDashDot", hosts::number::dashDot, medium},
    {"dashDotDot", hosts::number::dashDotDot, thin},
    {"mediumDashDotDot", hosts::number::dashDotDot, medium},
    {"slantDashDot", hosts::number::slantDashDot, medium},
}};

const LineWord& lineWord(std::string_view word) {
  for (const LineWord& one : lineWords) {
    if (one.word == word) return one;
  }
  return lineWords.front();
}

/// The word that fits a style and a weight best; the style counts more.
const char* wordFor(std::int32_t style, std::int32_t weight) {
  const char* byStyle = nullptr;
  for (const LineWord& one : lineWords) {
    if (one.style != style) continue;
    if (one.weight == weight) return one.word;
    if (byStyle == nullptr) byStyle = one.word;
  }
  if (byStyle == nullptr) refuse("There is no line style " + std::to_string(style) + ".");
  return byStyle;
}

/// Calls the body with the format of every cell until it answers false.
template <class Body>
void eachStyle(Book& book, const SheetArea& area, Body&& body) {
  Sheet& sheet = book.sheet(area.sheet);
  for (std::int32_t row = area.area.firstRow; row <= area.area.lastRow; ++row) {
    for (std::int32_t column = area.area.firstColumn; column <= area.area.lastColumn; ++column) {
      if (!body(sheet.styleOf({row, column}))) return;
    }
  }
}

/// One value where all cells agree, Null where they do not.
template <class Read>
Variant common(Book& book, const SheetArea& area, Read&& read) {
  Variant value;
  bool isFirst = true;
  eachStyle(book, area, [&](std::uint32_t style) {
    Variant one = read(style);
    if (!isFirst && !(one == value)) {
      value = Null{};
      return false;
    }
    value = std::move(one);
    isFirst = false;
    return true;
  });
  return value;
}

class InteriorObject final : public sheet::Object {
 public:
  InteriorObject(Book& book, const SheetArea& area) : book_(book), area_(area) {}

  Variant invoke(Access access, member::Id member, hosts::Arguments arguments) override {
    if (access != Access::put) return get(member);
    Styles& styles = book_.shared().styles;
    const auto change = [&](auto&& edit) {
      book_.sheet(area_.sheet).restyle(area_.area, [&](std::uint32_t style) {
        FillFormat fill = styles.fill(style);
        edit(fill);
        return styles.withFill(style, fill);
      });
    };
    const auto solid = [](FillFormat& fill, const ColorName& color) {
      if (fill.pattern == "none" || fill.pattern == "gradient") fill = {"solid", {}, {}};
      // The colour of a solid fill is its fore colour; of any pattern it is the ground.
      (fill.pattern == "solid" ? fill.fore : fill.back) = color;
      if (fill.pattern == "solid" && fill.back.kind == ColorName::Kind::none) {
        fill.back = {ColorName::Kind::automatic, 64};
      }
    };
    switch (member) {
      case member::Pattern: {
        const std::string word = patternWord(hosts::wholeArgument(arguments, 0));
        change([&](FillFormat& fill) {
          if (word == "none") {
            fill = {};
          } else if (word == "solid" && fill.pattern != "solid") {
            fill = {word, {ColorName::Kind::automatic, windowBackground}, {ColorName::Kind::automatic, 64}};
          } else {
            fill.pattern = word;
          }
        });
        return {};
      }
      case member::ColorIndex: {
        const std::int32_t index = hosts::wholeArgument(arguments, 0);
        if (index == none || index == automatic) {
          change([](FillFormat& fill) { fill = {}; });
        } else {
          const ColorName color = paletteName(book_.shared().styles, index);
          change([&](FillFormat& fill) { solid(fill, color); });
        }
        return {};
      }
      case member::Color: {
        const auto value = static_cast<std::uint32_t>(hosts::wholeArgument(arguments, 0));
        if (value > 0xFFFFFFU) refuse("A colour lies between 0 and 16777215.");
        change([&](FillFormat& fill) { solid(fill, {ColorName::Kind::rgb, swapped(value)}); });
        return {};
      }
      case member::PatternColorIndex: {
        const std::int32_t index = hosts::wholeArgument(arguments, 0);
        const ColorName color = index == automatic || index == none ? ColorName{ColorName::Kind::automatic, 64}
                                                                    : paletteName(book_.shared().styles, index);
        change([&](FillFormat& fill) {
          if (fill.pattern != "none") (fill.pattern == "solid" ? fill.back : fill.fore) = color;
        });
        return {};
      }
      default:
        raise(runtime::memberNotSupported);
    }
  }

 private:
  static std::string patternWord(std::int32_t number) {
    if (number == automatic) return "none";
    for (const auto& [one, word] : patterns) {
      if (one == number) return word;
    }
    refuse("There is no fill pattern " + std::to_string(number) + ".");
  }

  Variant get(member::Id member) {
    const Styles& styles = book_.shared().styles;
    switch (member) {
      case member::Pattern:
        return common(book_, area_, [&](std::uint32_t style) -> Variant {
          for (const auto& [number, word] : patterns) {
            if (styles.fill(style).pattern == word) return number;
          }
          return hosts::number::solid;
        });
      case member::ColorIndex:
        return common(book_, area_, [&](std::uint32_t style) -> Variant {
          const FillFormat& fill = styles.fill(style);
          if (fill.pattern == "none") return none;
          return indexOf(fill.pattern == "solid" ? fill.fore : fill.back);
        });
      case member::Color:
        return common(book_, area_, [&](std::uint32_t style) -> Variant {
          const FillFormat& fill = styles.fill(style);
          return colorOf(styles, fill.pattern == "solid" ? fill.fore : fill.back, 0xFFFFFF);
        });
      case member::PatternColorIndex:
        return common(book_, area_, [&](std::uint32_t style) -> Variant {
          const FillFormat& fill = styles.fill(style);
          if (fill.pattern == "none") return none;
          return indexOf(fill.pattern == "solid" ? fill.back : fill.fore);
        });
      default:
        raise(runtime::memberNotSupported);
    }
  }

  Book& book_;
  SheetArea area_;
};

class FontObject final : public sheet::Object {
 public:
  FontObject(Book& book, const SheetArea& area) : book_(book), area_(area) {}

  Variant invoke(Access access, member::Id member, hosts::Arguments arguments) override {
    Styles& styles = book_.shared().styles;
    if (access == Access::put) {
      if (member != member::Bold) raise(runtime::memberNotSupported);
      const bool bold = hosts::truthArgument(arguments, 0);
      Sheet& target = book_.sheet(area_.sheet);
      target.fitCache().willChange(target, area_.area);
      target.restyle(area_.area, [&](std::uint32_t style) { return styles.withBold(style, bold); });
      return {};
    }
    switch (member) {
      case member::Bold:
        return common(book_, area_, [&](std::uint32_t style) -> Variant { return styles.isBold(style); });
      case member::Name:
        return common(book_, area_, [&](std::uint32_t style) -> Variant { return Variant(styles.fontName(style)); });
      case member::Size:
        return common(book_, area_, [&](std::uint32_t style) -> Variant { return styles.fontSize(style); });
      default:
        raise(runtime::memberNotSupported);
    }
  }

 private:
  Book& book_;
  SheetArea area_;
};

class BorderObject final : public sheet::Object {
 public:
  BorderObject(Book& book, const SheetArea& area, std::int32_t index) : book_(book), area_(area), index_(index) {}

  Variant invoke(Access access, member::Id member, hosts::Arguments arguments) override {
    if (access != Access::put) return get(member);
    const std::int32_t value = hosts::wholeArgument(arguments, 0);
    switch (member) {
      case member::LineStyle: {
        const std::int32_t style = value == automatic ? 1 : value;
        static_cast<void>(wordFor(style, thin));
        change([&](LineFormat& line) {
          line.style = wordFor(style, lineWord(line.style).weight);
          if (line.color.kind == ColorName::Kind::none) line.color = {ColorName::Kind::automatic, 64};
        });
        return {};
      }
      case member::Weight:
        if (value != hairline && value != thin && value != medium && value != thick) {
          refuse("There is no line weight " + std::to_string(value) + ".");
        }
        change([&](LineFormat& line) {
          const std::int32_t style = lineWord(line.style).style;
          line.style = wordFor(style == none ? 1 : style, value);
        });
        return {};
      case member::ColorIndex:
        change([&](LineFormat& line) {
          if (value == none) {
            line = {};
            return;
          }
          line.color = value == automatic ? ColorName{ColorName::Kind::automatic, 64}
                                          : paletteName(book_.shared().styles, value);
          if (line.style == "none") line.style = "thin";
        });
        return {};
      case member::Color:
        change([&](LineFormat& line) {
          line.color = {ColorName::Kind::rgb, swapped(static_cast<std::uint32_t>(value) & 0xFFFFFFU)};
          if (line.style == "none") line.style = "thin";
        });
        return {};
      default:
        raise(runtime::memberNotSupported);
    }
  }

 private:
  struct Stretch {
    CellArea area;
    Side side;
  };

  /// The cells whose sides make up this line. An inner line belongs to the cells on both sides of it.
  [[nodiscard]] std::vector<Stretch> stretches() const {
    const CellArea& area = area_.area;
    const auto lacksLine = [&]() -> std::vector<Stretch> {
      refuse("The cells " + a1(area) + " have no inner line of this kind.");
    };
    CellArea first = area;
    CellArea second = area;
    switch (index_) {
      case 7:
        first.lastColumn = first.firstColumn;
        return {{first, Side::left}};
      case 8:
        first.lastRow = first.firstRow;
        return {{first, Side::top}};
      case 9:
        first.firstRow = first.lastRow;
        return {{first, Side::bottom}};
      case 10:
        first.firstColumn = first.lastColumn;
        return {{first, Side::right}};
      case 11:
        if (area.columns() == 1) return lacksLine();
        --first.lastColumn;
        ++second.firstColumn;
        return {{first, Side::right}, {second, Side::left}};
      default:
        if (area.rows() == 1) return lacksLine();
        --first.lastRow;
        ++second.firstRow;
        return {{first, Side::bottom}, {second, Side::top}};
    }
  }

  template <class Edit>
  void change(Edit&& edit) {
    Styles& styles = book_.shared().styles;
    for (const Stretch& stretch : stretches()) {
      book_.sheet(area_.sheet).restyle(stretch.area, [&](std::uint32_t style) {
        LineFormat line = styles.line(style, stretch.side);
        edit(line);
        return styles.withLine(style, stretch.side, line);
      });
    }
  }

  Variant get(member::Id member) {
    const Styles& styles = book_.shared().styles;
    const Stretch stretch = stretches().front();
    const auto read = [&](auto&& one) {
      return common(book_, {area_.sheet, stretch.area},
                    [&](std::uint32_t style) -> Variant { return one(styles.line(style, stretch.side)); });
    };
    switch (member) {
      case member::LineStyle:
        return read([](const LineFormat& line) { return lineWord(line.style).style; });
      case member::Weight:
        return read([](const LineFormat& line) { return lineWord(line.style).weight; });
      case member::ColorIndex:
        return read([](const LineFormat& line) { return line.style == "none" ? none : indexOf(line.color); });
      default:
        raise(runtime::memberNotSupported);
    }
  }

  Book& book_;
  SheetArea area_;
  std::int32_t index_;
};

template <class T, class... Rest>
Variant pooled(Book& book, const SheetArea& area, Rest... rest) {
  return Variant(sheet::ObjectRef(std::allocate_shared<T>(PoolAllocator<T>(), book, area, rest...)));
}

}  // namespace

Variant makeInterior(Book& book, const SheetArea& area) {
  return pooled<InteriorObject>(book, area);
}
Variant makeFont(Book& book, const SheetArea& area) {
  return pooled<FontObject>(book, area);
}

Variant makeBorder(Book& book, const SheetArea& area, std::int32_t index) {
  if (index < 7 || index > 12) refuse("There is no border " + std::to_string(index) + "; they are numbered 7 to 12.");
  return pooled<BorderObject>(book, area, index);
}

}  // namespace mervane::workbook
