#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "tests/support/fake_sheet.h"

namespace mervane::tests {

/// A rectangle of cells of the in-memory host.
class FakeRange final : public sheet::Object, public Named {
 public:
  struct Place {
    std::int32_t row = 1;
    std::int32_t column = 1;
    std::int32_t rows = 1;
    std::int32_t columns = 1;
  };

  /// Raises where the place leaves the sheet.
  FakeRange(FakeSheet* host, std::shared_ptr<FakeWorksheet> sheet, Place place);

  /// "B2:D6" or "F2"; raises where it is none.
  [[nodiscard]] static Place placeOf(const std::string& address);
  [[nodiscard]] static std::string addressOf(const Place& place);

  Variant invoke(sheet::Access access, sheet::member::Id member, std::span<const Variant> arguments) override;
  [[nodiscard]] std::string name() const override { return addressOf(place_); }
  [[nodiscard]] const Place& place() const noexcept { return place_; }

 private:
  [[nodiscard]] sheet::ObjectRef at(const Place& place) const;
  [[nodiscard]] sheet::ObjectRef parts(bool columns) const;
  [[nodiscard]] sheet::ObjectRef font() const;
  [[nodiscard]] sheet::ObjectRef interior() const;
  [[nodiscard]] sheet::ObjectRef border(std::int32_t index) const;
  [[nodiscard]] Variant value(sheet::Access access, std::span<const Variant> arguments) const;
  void sort(const Variant& key) const;
  template <class Change>
  void eachCell(Change&& change) const;

  FakeSheet* host_;
  std::shared_ptr<FakeWorksheet> sheet_;
  Place place_;
};

}  // namespace mervane::tests
