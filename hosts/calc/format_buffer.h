#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "hosts/calc/session.h"

namespace mervane::calc {

/// Formats of cells that wait to be set.
///
/// OPTIMIZATION: cells that get the same format are given it by one call, wherever they lie.
class FormatBuffer {
 public:
  enum class Property : std::uint8_t {
    fill,          ///< a colour, or -1 for none
    numberFormat,  ///< a key
    weight,        ///< of the font, in percent of the plain one
    solidFill      ///< cells without a fill get a white one
  };

  explicit FormatBuffer(Session& session) : session_(session) {}

  void set(const SheetArea& area, Property property, std::int32_t value);
  /// Whether the same area waits for a fill colour, so that it will have one.
  [[nodiscard]] bool willBeFilled(const SheetArea& area) const;
  /// Sets and drops all, even what could not be set.
  void write();

 private:
  struct Stretch {
    std::int32_t lastRow;
    std::int32_t value;
  };
  /// What waits for columns that begin and end alike, by first row.
  using Strip = std::map<std::int32_t, Stretch>;
  struct Columns {
    std::int32_t sheet;
    std::int32_t first;
    std::int32_t last;
    friend auto operator<=>(const Columns&, const Columns&) = default;
  };
  using Strips = std::map<Columns, Strip>;

  [[nodiscard]] Strips& strips(Property property) { return strips_[static_cast<std::size_t>(property)]; }
  [[nodiscard]] static bool meets(const Strip& strip, const CellArea& area);
  void write(Property property);
  void apply(std::int32_t sheet, Property property, std::int32_t value, const std::vector<CellArea>& areas);
  void makeSolid(const SheetArea& area);

  Session& session_;
  Strips strips_[4];
};

}  // namespace mervane::calc
