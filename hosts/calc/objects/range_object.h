#pragma once

#include <cstdint>
#include <memory>

#include "hosts/calc/session.h"
#include "hosts/objects/range_cells.h"
#include "spreadsheet/object.h"

namespace mervane::calc {

using hosts::Arguments;

/// A rectangle of cells, or its rows or columns as a collection.
class RangeObject final : public sheet::Object {
 public:
  using View = hosts::RangeCells::View;

  RangeObject(std::shared_ptr<Session> session, const SheetArea& place, View view)
      : session_(std::move(session)), place_(place), view_(view) {}

  /// Raises applicationDefined for an area that is not on the sheet.
  [[nodiscard]] static Variant make(const std::shared_ptr<Session>& session, const SheetArea& area,
                                    View view = View::cells);

  Variant invoke(sheet::Access access, sheet::member::Id member, Arguments arguments) override;

  [[nodiscard]] const Session& session() const noexcept { return *session_; }
  [[nodiscard]] const SheetArea& place() const noexcept { return place_; }

 private:
  [[nodiscard]] const CellArea& area() const noexcept { return place_.area; }
  [[nodiscard]] Variant get(sheet::member::Id member, Arguments arguments);
  void put(sheet::member::Id member, Arguments arguments);
  [[nodiscard]] hosts::RangeCells cells() const noexcept { return {area(), view_}; }
  /// A range for cells that are on the sheet.
  [[nodiscard]] Variant made(const hosts::RangeCells& cells) const;
  [[nodiscard]] Variant value() const;
  void setValue(const Variant& value);
  [[nodiscard]] Variant formula() const;
  [[nodiscard]] Variant text() const;
  [[nodiscard]] Variant numberFormat() const;
  void setNumberFormat(const std::string& code);
  [[nodiscard]] double length(sheet::member::Id member) const;
  void sort(Arguments arguments);
  void autoFit();

  std::shared_ptr<Session> session_;
  SheetArea place_;
  View view_;
};

}  // namespace mervane::calc
