#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "hosts/objects/refuse.h"
#include "mervane/variant.h"
#include "spreadsheet/object.h"

namespace mervane::charts {

using hosts::refuse;
[[noreturn]] void refuseMember();

/// One use of a member: what is asked, with its arguments converted as automation converts them.
class Call {
 public:
  Call(sheet::Access access, sheet::member::Id member, std::span<const Variant> arguments)
      : access_(access), member_(member), arguments_(arguments) {}

  [[nodiscard]] sheet::member::Id member() const noexcept { return member_; }
  [[nodiscard]] bool isPut() const noexcept { return access_ == sheet::Access::put; }
  /// Whether an argument was given, counted from 0.
  [[nodiscard]] bool has(std::size_t index) const noexcept;
  /// Raises argumentNotOptional where it was left out.
  [[nodiscard]] const Variant& at(std::size_t index) const;
  [[nodiscard]] std::int32_t integer(std::size_t index) const;
  /// The value of an assignment.
  [[nodiscard]] const Variant& value() const;

  /// A property that is only stored: reads the slot, or assigns to it.
  Variant property(bool& slot) const;
  Variant property(std::int32_t& slot) const;
  /// The same for a property that takes only some numbers; `allowed` answers whether the number is one of them.
  template <class Allowed>
  Variant property(std::int32_t& slot, const Allowed& allowed) const {
    if (isPut() && !allowed(assigned<std::int32_t>())) refuse("The number is none that this property takes.");
    return property(slot);
  }
  /// A property that cannot be assigned, or a method that takes no part in assignments.
  Variant readOnly(Variant result) const;
  /// The assigned value, converted.
  template <class T>
  [[nodiscard]] T assigned() const;

 private:
  sheet::Access access_;
  sheet::member::Id member_;
  std::span<const Variant> arguments_;
};

template <>
bool Call::assigned<bool>() const;
template <>
std::int32_t Call::assigned<std::int32_t>() const;
template <>
double Call::assigned<double>() const;
template <>
std::string Call::assigned<std::string>() const;

/// An enumerator over elements that were collected beforehand, so that a collection may change meanwhile.
[[nodiscard]] sheet::ObjectRef enumeratorOf(std::vector<sheet::ObjectRef> elements);

}  // namespace mervane::charts
