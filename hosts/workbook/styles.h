#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace mervane::workbook {

/// A colour as the format names it.
struct ColorName {
  enum class Kind { none, automatic, indexed, rgb, theme };
  Kind kind = Kind::none;
  std::uint32_t value = 0;  ///< number of the indexed or theme colour, or 0xRRGGBB
  friend bool operator==(const ColorName&, const ColorName&) = default;
};

struct FillFormat {
  std::string pattern = "none";  ///< the format's own word; "gradient" for a gradient
  ColorName fore;
  ColorName back;
  friend bool operator==(const FillFormat&, const FillFormat&) = default;
};

/// One line of a cell's border.
struct LineFormat {
  std::string style = "none";  ///< the format's own word
  ColorName color;
};

enum class Side : std::uint8_t { left, right, top, bottom };

/// The cell formats of a workbook. A format is a number; those of the file keep theirs. A change gives the number of
/// a format that differs in this alone; equal formats have one number. New fonts, fills, borders and formats reach the
/// file only where a cell that is written has them.
class Styles {
 public:
  /// @param content of the part, or empty for a workbook without one.
  void load(std::string_view content, std::string_view partName);

  /// Number of cell formats that the file has.
  [[nodiscard]] std::size_t fileCount() const noexcept { return formats_.original; }

  [[nodiscard]] const std::string& numberFormat(std::uint32_t style) const { return facts(style).numberFormat; }
  [[nodiscard]] bool isDate(std::uint32_t style) const { return facts(style).isDate; }
  [[nodiscard]] bool isBold(std::uint32_t style) const { return facts(style).isBold; }
  [[nodiscard]] bool isLocked(std::uint32_t style) const { return facts(style).isLocked; }
  /// Whether the cell's text counts as text whatever it looks like.
  [[nodiscard]] bool hasTextMark(std::uint32_t style) const { return facts(style).hasTextMark; }
  [[nodiscard]] const FillFormat& fill(std::uint32_t style) const { return facts(style).fill; }
  [[nodiscard]] const LineFormat& line(std::uint32_t style, Side side) const;
  [[nodiscard]] const std::string& fontName(std::uint32_t style) const { return facts(style).fontName; }
  [[nodiscard]] double fontSize(std::uint32_t style) const { return facts(style).fontSize; }
  /// The colour 0xRRGGBB of an indexed colour; the workbook may have a palette of its own.
  [[nodiscard]] std::uint32_t indexedColor(std::uint32_t number) const;
  /// Whether an indexed colour is the application's own. The palette of the workbook itself may be another, or a short
  /// one, which applications count in different ways.
  [[nodiscard]] bool hasUsualColor(std::uint32_t number) const;

  /// Raise applicationDefined where the workbook would have more formats than the application allows.
  [[nodiscard]] std::uint32_t withBold(std::uint32_t style, bool bold);
  [[nodiscard]] std::uint32_t withNumberFormat(std::uint32_t style, std::string_view code);
  [[nodiscard]] std::uint32_t withFill(std::uint32_t style, const FillFormat& fill);
  [[nodiscard]] std::uint32_t withLine(std::uint32_t style, Side side, const LineFormat& line);

  /// Begins a save: fileNumber then gives the numbers that the file will have.
  void beginSave();
  [[nodiscard]] std::uint32_t fileNumber(std::uint32_t style) {
    return style < formats_.original ? style : assignFormat(style);
  }
  /// Whether a format was asked for that the file does not have yet.
  [[nodiscard]] bool needsWriting() const noexcept { return !newFormats_.empty(); }
  /// The part with the new formats at the end of its tables.
  [[nodiscard]] std::string print() const;

 private:
  /// One list of the part: its items as texts, equal ones once.
  struct List {
    std::vector<std::string> items;
    std::size_t original = 0;
    std::unordered_map<std::string, std::uint32_t> numbers;
    std::unordered_map<std::uint32_t, std::uint32_t> assigned;  // at a save: number in the file
    std::vector<std::uint32_t> news;                            // at a save: in the order of assignment
    std::uint32_t add(std::string item);
    void read(const pugi::xml_node& list);
    void beginSave();
    std::uint32_t assign(std::uint32_t number);
  };
  struct Facts {
    std::string numberFormat;
    bool isDate = false;
    bool isBold = false;
    bool isLocked = true;
    bool hasTextMark = false;
    FillFormat fill;
    std::array<LineFormat, 4> lines;
    std::string fontName;
    double fontSize = 11.0;
  };

  /// A format and the fill that it is to get.
  struct FillChange {
    std::uint32_t style;
    FillFormat fill;
    friend bool operator==(const FillChange&, const FillChange&) = default;
  };
  struct FillChangeHash {
    [[nodiscard]] std::size_t operator()(const FillChange& change) const noexcept {
      // The colours of the clusters differ in their numbers, the rows in their old formats.
      return (std::size_t{change.style} * 31 + change.fill.fore.value) * 31 + change.fill.pattern.size();
    }
  };

  [[nodiscard]] const Facts& facts(std::uint32_t style) const {
    return style < facts_.size() && facts_[style] != nullptr ? *facts_[style] : makeFacts(style);
  }
  const Facts& makeFacts(std::uint32_t style) const;
  [[nodiscard]] Facts readFacts(std::uint32_t style) const;
  [[nodiscard]] std::uint32_t assignFormat(std::uint32_t style);
  [[nodiscard]] std::string tag(std::string_view name) const { return prefix_ + std::string(name); }
  [[nodiscard]] std::uint32_t withPart(std::uint32_t style, const char* attribute, const char* applied,
                                       std::uint32_t value);
  void writeColor(pugi::xml_node parent, const char* name, const ColorName& color) const;
  void appendNews(const pugi::xml_node& list, const List& from) const;

  mutable pugi::xml_document document_;
  std::string prefix_;
  List formats_;
  List fonts_;
  List fills_;
  List borders_;
  std::map<std::int32_t, std::string> numberFormats_;
  std::vector<std::int32_t> newNumberFormats_;
  std::vector<std::uint32_t> palette_;
  std::vector<std::uint32_t> newFormats_;
  std::unordered_map<FillChange, std::uint32_t, FillChangeHash> filled_;  // what withFill answered
  mutable std::vector<std::unique_ptr<Facts>> facts_;
};

}  // namespace mervane::workbook
