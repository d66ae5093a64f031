#pragma once

#include <cstdint>
#include <memory>

#include "hosts/calc/objects/arguments.h"
#include "hosts/calc/session.h"
#include "spreadsheet/object.h"

namespace mervane::calc {

/// A rectangle of cells, or its rows or columns as a collection.
class RangeObject final : public sheet::Object {
 public:
  enum class View : std::uint8_t { cells, rows, columns };

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
  [[nodiscard]] Variant ranged(std::int64_t row, std::int64_t column, std::int64_t rows, std::int64_t columns,
                               View view = View::cells) const;
  [[nodiscard]] Variant same(View view) const { return make(session_, place_, view); }
  [[nodiscard]] Variant item(Arguments arguments) const;
  [[nodiscard]] Variant cell(Arguments arguments) const;
  [[nodiscard]] Variant column(Arguments arguments) const;
  [[nodiscard]] Variant row(Arguments arguments) const;
  [[nodiscard]] Variant offset(Arguments arguments) const;
  [[nodiscard]] Variant resize(Arguments arguments) const;
  [[nodiscard]] std::int32_t count() const;
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
