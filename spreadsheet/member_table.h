#pragma once

#include <span>
#include <string_view>

#include "spreadsheet/object.h"

namespace mervane::sheet {

/// One way in which the system uses a host.
struct MemberUse {
  std::string_view object;  ///< the class in the object model, such as "Range"
  Access access;
  member::Id member;
  /// Arguments by name, parted by a comma and a space; of a put, the value is the last one. Empty for none.
  std::string_view arguments;
  /// What comes back: a class of the object model, "Boolean", "Long", "Double", "String", "Variant", or empty.
  std::string_view result;
};

/// Everything that the system asks of a host, and nothing more, in the order of the classes. A collection is
/// listed with NewEnum, which gives an "Enumerator of X"; that one answers Next with X.
[[nodiscard]] std::span<const MemberUse> memberTable();

}  // namespace mervane::sheet
